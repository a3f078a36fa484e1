#include "selection/EquityRangeSelectorTab.h"

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "selection/EquityRangeSelector.h"

#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

EquityRangeSelectorTab::EquityRangeSelectorTab(ThreadPool* pool, QWidget* parent)
    : QWidget(parent), equitySelector(new EquityRangeSelector(pool, this)) {
    equityLowerBound = makeBound("equityLowerBound", 0.0);
    equityUpperBound = makeBound("equityUpperBound", 100.0);
    percentileLowerBound = makeBound("percentileLowerBound", 0.0);
    percentileUpperBound = makeBound("percentileUpperBound", 100.0);
    otherRange = new QLineEdit(this);
    otherRange->setObjectName(QStringLiteral("otherRange"));
    otherRange->setPlaceholderText(QStringLiteral("any hand"));
    otherRange->setToolTip(QStringLiteral("The range the hands are rated against; empty for any "
                                          "hand"));

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(2, 2, 2, 2);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(4);
    grid->addWidget(new QLabel(QStringLiteral("Only Hands with Equity"), this), 0, 0);
    grid->addWidget(equityLowerBound, 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("to"), this), 0, 2);
    grid->addWidget(equityUpperBound, 0, 3);
    grid->addWidget(new QLabel(QStringLiteral("Only Best (rated by Equity)"), this), 1, 0);
    grid->addWidget(percentileLowerBound, 1, 1);
    grid->addWidget(new QLabel(QStringLiteral("to"), this), 1, 2);
    grid->addWidget(percentileUpperBound, 1, 3);
    grid->addWidget(new QLabel(QStringLiteral("Against:"), this), 2, 0);
    grid->addWidget(otherRange, 2, 1, 1, 3);
    auto* note = new QLabel(
        QStringLiteral("Please note: These calculations may take a while for wide postflop "
                       "ranges."),
        this);
    note->setObjectName(QStringLiteral("equityNote"));
    note->setWordWrap(true);
    note->setStyleSheet(QStringLiteral("color: #5b6470;"));
    grid->addWidget(note, 3, 0, 1, 4);
    grid->setRowStretch(4, 1);
    grid->setColumnStretch(0, 1);

    connect(equitySelector, &EquityRangeSelector::calculationFinished, this,
            &EquityRangeSelectorTab::selectionCalculationFinished);
}

QDoubleSpinBox* EquityRangeSelectorTab::makeBound(const char* name, double value) {
    auto* box = new QDoubleSpinBox(this);
    box->setObjectName(QString::fromLatin1(name));
    box->setRange(0.0, 100.0);
    box->setDecimals(2);
    box->setSuffix(QStringLiteral(" %"));
    box->setValue(value);
    return box;
}

bool EquityRangeSelectorTab::startCalculation(const std::string& rangeText,
                                              const std::string& otherText,
                                              const std::string& board,
                                              const std::string& deadCards) {
    // The second test compares with the lower equity bound, as it always has.
    if (!(equityUpperBound->value() >= equityLowerBound->value()) ||
        !(percentileUpperBound->value() >= equityLowerBound->value()))
        return false;
    if (rangeText.empty() || otherText.empty())
        return false;
    equitySelector->start(rangeText, otherText, board, deadCards,
                          static_cast<float>(equityLowerBound->value() / 100.0),
                          static_cast<float>(equityUpperBound->value() / 100.0),
                          static_cast<float>(percentileLowerBound->value() / 100.0),
                          static_cast<float>(percentileUpperBound->value() / 100.0));
    return true;
}

void EquityRangeSelectorTab::abort() {
    equitySelector->abort();
}

bool EquityRangeSelectorTab::isRunning() const {
    return equitySelector->isRunning();
}

std::string EquityRangeSelectorTab::otherRangeText() const {
    const std::string typed = otherRange->text().trimmed().toStdString();
    if (typed.empty())
        return Range::HandRangeStringReader(Range::HandRange(true)).technicalText();
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree(typed);
    return Range::HandRangeStringReader(range).technicalText();
}

void EquityRangeSelectorTab::setOtherRange(const QString& text) {
    otherRange->setText(text);
}
