#include "handhistory/ui/ChooseHandDialog.h"

#include "handhistory/HandHistoryPaste.h"
#include "handhistory/HandHistoryText.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

QString text(const std::string& windows1252) {
    return QString::fromStdString(HandHistoryText::toUtf8(windows1252));
}

// "AhKd" as "Ah Kd", the board the same way.
QString spaced(const std::string& cards) {
    QString out;
    for (std::size_t i = 0; i + 1 < cards.size(); i += 2) {
        if (!out.isEmpty())
            out += ' ';
        out += QString::fromStdString(cards.substr(i, 2));
    }
    return out;
}

} // namespace

ChooseHandDialog::ChooseHandDialog(const HandHistoryPaste& paste, QWidget* parent)
    : QDialog(parent), rows(paste.readHands()) {
    setWindowTitle(tr("Choose a Hand"));
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    auto* layout = new QVBoxLayout(this);
    auto* label =
        new QLabel(tr("The clipboard holds %1 hands. Which one should become the new scenario?")
                       .arg(rows.size()),
                   this);
    label->setWordWrap(true);
    layout->addWidget(label);

    list = new QTableWidget(static_cast<int>(rows.size()), 4, this);
    list->setObjectName("handList");
    list->setHorizontalHeaderLabels({tr("Hand"), tr("Stakes"), tr("Hero's Cards"), tr("Board")});
    list->verticalHeader()->setVisible(false);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->horizontalHeader()->setStretchLastSection(true);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const HandHistoryPaste::Hand& hand = paste.hands()[rows[row]];
        const QString hero = hand.record.hero.empty()
                                 ? tr("(no hero)")
                                 : text(hand.record.hero) + "  " + spaced(hand.record.holeCards);
        const QString cells[] = {hand.number.empty() ? QString::number(row + 1) : text(hand.number),
                                 text(HandHistoryPaste::stakesOf(hand.record)), hero,
                                 hand.record.board.empty() ? tr("(no flop)")
                                                           : spaced(hand.record.board)};
        for (int column = 0; column < 4; ++column)
            list->setItem(static_cast<int>(row), column, new QTableWidgetItem(cells[column]));
    }
    list->resizeColumnsToContents();
    if (!rows.empty())
        list->selectRow(static_cast<int>(rows.size()) - 1);
    layout->addWidget(list);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Import"));
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(list, &QTableWidget::cellDoubleClicked, this, [this] { accept(); });
    resize(640, 360);
}

std::size_t ChooseHandDialog::chosenHand() const {
    const int row = list->currentRow();
    if (row < 0 || row >= static_cast<int>(rows.size()))
        return rows.empty() ? 0 : rows.back();
    return rows[static_cast<std::size_t>(row)];
}
