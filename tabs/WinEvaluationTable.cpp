#include "tabs/WinEvaluationTable.h"

#include "handstrength/HandGroup.h"
#include "tabs/BoardHitsBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMovie>

const QColor WinEvaluationTable::winColor(0x2e, 0x9a, 0x58);
const QColor WinEvaluationTable::splitColor(0xf2, 0xb1, 0x34);
const QColor WinEvaluationTable::lossColor(0xd9, 0x6a, 0x5f);

WinEvaluationTable::WinEvaluationTable(QWidget* parent) : BoardHitEvaluationTable(parent) {
    movie = new QMovie(QStringLiteral(":loading.gif"), QByteArray(), this);
}

void WinEvaluationTable::setResults(std::vector<std::optional<DetailWinEvaluations>> results) {
    groupResults = std::move(results);
}

void WinEvaluationTable::setCalculating(bool calculating) {
    running = calculating;
    if (calculating)
        movie->start();
    else
        movie->stop();
}

void WinEvaluationTable::shares(const DetailWinEvaluation& record, float& win, float& split,
                                float& loss) {
    const double total = static_cast<double>(record.wins) + static_cast<double>(record.ties) +
                         static_cast<double>(record.losses);
    if (!(total > 0.0)) {
        win = split = loss = -1.0f;
        return;
    }
    win = static_cast<float>(record.wins / total);
    split = static_cast<float>(record.ties / total);
    loss = static_cast<float>(record.losses / total);
}

QString WinEvaluationTable::captionHeader() const {
    return QStringLiteral("&nbsp;Hand Strength");
}

int WinEvaluationTable::barStyle() const {
    return static_cast<int>(BoardHitsBar::Style::WinSplitLoss);
}

std::vector<QWidget*> WinEvaluationTable::makeHeaderCells(QWidget* parent) {
    auto* header = new BoardHitsBar(BoardHitsBar::Style::WinSplitLoss,
                                    QStringList{QStringLiteral("Win"), QStringLiteral("Split"),
                                                QStringLiteral("Loss"), QStringLiteral("Wins Bar")},
                                    parent);
    header->setObjectName(QStringLiteral("numbersHeader"));
    header->setHeaderColors({winColor.darker(115), splitColor.darker(130), lossColor.darker(120),
                             QColor(0x5b, 0x64, 0x70)});
    return {header};
}

QWidget* WinEvaluationTable::makeStatusWidget(QWidget* parent) {
    auto* status = new QWidget(parent);
    status->setObjectName(QStringLiteral("calculating"));
    auto* layout = new QHBoxLayout(status);
    layout->setContentsMargins(4, 2, 0, 2);
    layout->setSpacing(0);
    auto* movieLabel = new QLabel(status);
    movieLabel->setMovie(movie);
    auto* text = new QLabel(QStringLiteral("&nbsp;&nbsp;Calculating..."), status);
    text->setObjectName(QStringLiteral("calculatingText"));
    text->setTextFormat(Qt::RichText);
    layout->addWidget(movieLabel);
    layout->addWidget(text);
    layout->addStretch(1);
    return status;
}

const DetailWinEvaluation* WinEvaluationTable::recordOf(std::size_t groupIndex,
                                                        std::size_t index) const {
    if (groupIndex >= groupResults.size() || !groupResults[groupIndex])
        return nullptr;
    const DetailWinEvaluations& records = *groupResults[groupIndex];
    return index < records.size() ? &records[index] : nullptr;
}

bool WinEvaluationTable::rowHasHits(const HandGroup& group, std::size_t, std::size_t index) const {
    return group.rows[index].combinations1 > 0;
}

std::vector<BoardHitEvaluationTable::BarValues>
WinEvaluationTable::rowValues(const HandGroup&, std::size_t groupIndex, std::size_t index,
                              unsigned int) const {
    BarValues values;
    if (const DetailWinEvaluation* record = recordOf(groupIndex, index))
        shares(*record, values.fraction1, values.fraction2, values.fraction3);
    values.color = winColor;
    return {values};
}
