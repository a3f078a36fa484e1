#include "selection/CardPictures.h"

#include <QHash>

namespace {
const QPixmap& sheet() {
    static const QPixmap pixmap(QStringLiteral(":/cards/cards.png"));
    return pixmap;
}
} // namespace

QPixmap CardPictures::card(int value, unsigned int suit) {
    if (value < 0 || value > 12 || suit < 1 || suit > 4) {
        return QPixmap();
    }
    static QHash<int, QPixmap> cache;
    const int key = value * 8 + static_cast<int>(suit);
    auto found = cache.constFind(key);
    if (found != cache.constEnd()) {
        return found.value();
    }
    const QPixmap picture = sheet().copy(value * CardWidth, static_cast<int>(suit - 1) * CardHeight,
                                         CardWidth, CardHeight);
    cache.insert(key, picture);
    return picture;
}

QPixmap CardPictures::tableFaces() {
    static const QPixmap pixmap(QStringLiteral(":/cards/cardTable.png"));
    return pixmap;
}
