#pragma once

#include "Range/HandRange.h"

#include <QString>
#include <QStringList>
#include <VelmaraEvaluatorBase.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

class BoardEvaluationTab;
class BoardHitsBar;
class HandRangeHover;
class HandStrengthLabel;
class QWidget;

namespace BoardTabsTestSupport {

// Processes events until `done` holds or ten seconds passed.
bool waitFor(const std::function<bool()>& done);

// The caption of the first shown row of `key`, or null.
HandStrengthLabel* captionOf(const BoardEvaluationTab& tab, const HandStrengthKey& key);
// The number texts of each bar of the first shown row of `key`; empty when there is no row.
std::vector<QStringList> textsOf(const BoardEvaluationTab& tab, const HandStrengthKey& key);
// The bars of that row.
std::vector<BoardHitsBar*> barsOf(const BoardEvaluationTab& tab, const HandStrengthKey& key);
// Names of all shown rows, in order.
QStringList shownNames(const BoardEvaluationTab& tab);

// A left click on the caption at x (vertically centred).
void clickCaption(HandStrengthLabel* caption, int x, Qt::MouseButton button = Qt::LeftButton);
// Expands a collapsed row by a click on its tree marker.
void expand(BoardEvaluationTab& tab, const HandStrengthKey& key);

// "12.34 % (56)" as the tables write it, from a fraction computed in single precision as
// the schema does.
QString hitText(unsigned int count, unsigned int of);
QString percentText(double fraction);

// The two-bit card masks of a range, sorted.
std::vector<unsigned long long> masksOf(const Range::HandRange& range);
// The range holding exactly the hands of `masks` (two-bit card masks).
Range::HandRange rangeOfMasks(const std::vector<unsigned long long>& masks);

// Whether `hover` shows `range` with `board` and `deadCards` (card texts): its read-only
// table holds exactly the hands of `range`, suit for suit, with the board and dead cards as
// its dead cards; and it shows what a hover made of `range` shows: the same numbers, the
// same parent rows and, pixel for pixel, the same picture. That reference is made beside
// `hover`, under the same parent, so that both are styled alike.
::testing::AssertionResult hoverShows(HandRangeHover& hover, const Range::HandRange& range,
                                      const std::string& board, const std::string& deadCards);

// Writes the option "removeEmptyLinesFromBoardEvaluationTabs" under a settings group.
void writeHideOption(const char* group, bool value);
void clearHideOption();

// Runs `body` with the next modal dialog once it shows (for dialogs opened with exec()).
void whenModalShows(const std::function<void(QWidget*)>& body);
// Runs `body` with the next popup menu once it shows.
void whenPopupShows(const std::function<void(QWidget*)>& body);

} // namespace BoardTabsTestSupport

#include <ostream>

// Readable failure messages for texts.
inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}
