#pragma once

#include "selection/HandStrengthSelection.h"

#include <QWidget>

#include <string>
#include <vector>

class EquityRangeSelector;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class ThreadPool;

// The "Equity / Range %" tab of the hand selection dialog's range selectors: hands of a
// range by their equity against another range, within equity bounds and within the best
// share of the hands so rated. The calculation runs in the background; the result comes
// through selectionCalculationFinished().
class EquityRangeSelectorTab : public QWidget {
    Q_OBJECT

public:
    // `pool` may be null: the selector then uses a pool of its own.
    explicit EquityRangeSelectorTab(ThreadPool* pool, QWidget* parent = nullptr);

    // Starts rating the hands of `rangeText` (technical text) against `otherText` on `board`
    // with `deadCards`. Nothing starts, and false is returned, unless the upper equity bound
    // is at least the lower one and the upper percentile bound is at least the lower equity
    // bound, or when either range is empty.
    bool startCalculation(const std::string& rangeText, const std::string& otherText,
                          const std::string& board, const std::string& deadCards);
    void abort();
    bool isRunning() const;

    // The range to rate against, as technical text: the range typed into the "Against:"
    // field, or every hand when the field is empty; empty when the field holds no hand.
    std::string otherRangeText() const;
    // Fills the "Against:" field (compact or free range text).
    void setOtherRange(const QString& text);

    EquityRangeSelector* selector() const { return equitySelector; }

    QDoubleSpinBox* equityLowerBound;
    QDoubleSpinBox* equityUpperBound;
    QDoubleSpinBox* percentileLowerBound;
    QDoubleSpinBox* percentileUpperBound;
    QLineEdit* otherRange;

signals:
    void selectionCalculationFinished(std::vector<BoardType> hands);

private:
    QDoubleSpinBox* makeBound(const char* name, double value);

    EquityRangeSelector* equitySelector;
};
