#pragma once

#include "selection/HandStrengthSelection.h"

#include <QWidget>

#include <vector>

class QComboBox;
class QGridLayout;
class QLabel;
namespace Utils {
namespace UI {
class NoPaintFilter;
}
} // namespace Utils

// The "Hand Strength" tab of the hand selection dialog's range selectors: combo boxes that
// state a hand strength (a hand value with up to two levels of detail, a flush draw with its
// strength and hole cards, a straight draw with its hole cards), each with a comparator.
//
// A combo box that does not apply to what is chosen keeps its place in the layout but shows
// nothing (a NoPaintFilter swallows its paint events) and takes no input. Each item carries
// its enumeration value as user data.
class HandStrengthSelectorTab : public QWidget {
    Q_OBJECT

public:
    explicit HandStrengthSelectorTab(QWidget* parent = nullptr);

    // The hands of `hands` (the input range as single hands) that have the chosen strength
    // on `board`, at once and on the calling thread; `board` and `deadCards` are the one-bit
    // card masks of those cards. No flop, no hands.
    std::vector<BoardType> select(const std::vector<BoardType>& hands,
                                  const std::vector<BoardType>& board,
                                  const std::vector<BoardType>& deadCards) const;
    // The request the combo boxes state.
    HandStrengthSelection selection() const;
    // Whether a combo box applies (is shown) now.
    bool isApplied(const QComboBox* combo) const;

    QComboBox* handValue;
    QComboBox* handValueComparator;
    QComboBox* handValueDetail;
    QComboBox* flushDraw;
    QComboBox* straightDraw;
    QComboBox* flushDrawComparator;
    QComboBox* straightDrawComparator;
    QComboBox* flushDrawStrength;
    QComboBox* flushDrawStrengthComparator;
    QComboBox* handValueDetail2;
    QComboBox* handValueDetailComparator;
    QComboBox* handValueDetail2Comparator;
    QComboBox* flushDrawCardNumber;
    QComboBox* flushDrawCardNumberComparator;
    QComboBox* straightDrawCardNumber;
    QComboBox* straightDrawCardNumberComparator;
    QLabel* handValueLabel;
    QLabel* flushDrawLabel;
    QLabel* straightDrawLabel;

public slots:
    // Fills the detail combos for the hand value.
    void onHandValueChange();
    // Fills the second detail combo for the detail.
    void onHandValueDetailChange();
    // Show or hide the combos that depend on the draw.
    void onFlushDrawChange();
    void onStraightDrawChange();

private:
    QComboBox* makeCombo(const char* name);
    void apply(QComboBox* combo, bool applied);

    Utils::UI::NoPaintFilter* noPaint;
};
