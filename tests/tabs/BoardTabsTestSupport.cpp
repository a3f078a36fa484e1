#include "BoardTabsTestSupport.h"

#include "Range/HandRangeElementConversion.h"
#include "selection/HandRangeHover.h"
#include "selection/HandSelectionTable.h"
#include "tabs/BoardEvaluationTab.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/BoardHitsBar.h"
#include "tabs/HandStrengthLabel.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QSettings>
#include <QTest>
#include <QTextDocument>
#include <QTimer>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <sstream>

namespace {

// The evaluator's one-time preparation, before the first test calls into it.
class EvaluatorPreparation : public ::testing::Environment {
public:
    void SetUp() override { initializeAllBoardsBeforeCalculation(); }
};

const ::testing::Environment* const preparation =
    ::testing::AddGlobalTestEnvironment(new EvaluatorPreparation);

const BoardHitEvaluationTable::Row* rowOf(const BoardEvaluationTab& tab,
                                          const HandStrengthKey& key) {
    return tab.table() == nullptr ? nullptr : tab.table()->rowOf(key);
}

void poll(const std::function<QWidget*()>& find, const std::function<void(QWidget*)>& body,
          int triesLeft) {
    QWidget* widget = find();
    if (widget != nullptr && widget->isVisible()) {
        body(widget);
        return;
    }
    if (triesLeft > 0)
        QTimer::singleShot(20, [find, body, triesLeft] { poll(find, body, triesLeft - 1); });
}

} // namespace

namespace BoardTabsTestSupport {

bool waitFor(const std::function<bool()>& done) {
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return done();
}

HandStrengthLabel* captionOf(const BoardEvaluationTab& tab, const HandStrengthKey& key) {
    const BoardHitEvaluationTable::Row* row = rowOf(tab, key);
    return row == nullptr ? nullptr : row->caption;
}

std::vector<QStringList> textsOf(const BoardEvaluationTab& tab, const HandStrengthKey& key) {
    std::vector<QStringList> texts;
    if (const BoardHitEvaluationTable::Row* row = rowOf(tab, key)) {
        for (BoardHitsBar* bar : row->bars)
            texts.push_back(bar->texts());
    }
    return texts;
}

std::vector<BoardHitsBar*> barsOf(const BoardEvaluationTab& tab, const HandStrengthKey& key) {
    const BoardHitEvaluationTable::Row* row = rowOf(tab, key);
    return row == nullptr ? std::vector<BoardHitsBar*>() : row->bars;
}

QStringList shownNames(const BoardEvaluationTab& tab) {
    QStringList names;
    for (const BoardHitEvaluationTable::Row& row : tab.table()->rows()) {
        QTextDocument document;
        document.setHtml(row.caption->text());
        names << document.toPlainText().trimmed().remove(QChar(0xfffc)).trimmed();
    }
    return names;
}

void clickCaption(HandStrengthLabel* caption, int x, Qt::MouseButton button) {
    ASSERT_NE(caption, nullptr);
    QTest::mouseClick(caption, button, Qt::NoModifier, QPoint(x, caption->height() / 2));
}

void expand(BoardEvaluationTab& tab, const HandStrengthKey& key) {
    HandStrengthLabel* caption = captionOf(tab, key);
    ASSERT_NE(caption, nullptr);
    const int x = tab.table()->showsTicks()
                      ? BoardHitEvaluationTable::treeZoneBeginWithTicks + 8
                      : BoardHitEvaluationTable::treeZoneBeginWithoutTicks + 8;
    clickCaption(caption, x);
}

QString percentText(double fraction) {
    return QString::number(fraction * 100.0, 'f', 2) + QStringLiteral(" %");
}

QString hitText(unsigned int count, unsigned int of) {
    const float fraction = count == 0 ? 0.0f : static_cast<float>(count) / static_cast<float>(of);
    return percentText(static_cast<double>(fraction)) + QStringLiteral(" (%1)").arg(count);
}

std::vector<unsigned long long> masksOf(const Range::HandRange& range) {
    std::vector<unsigned long long> masks;
    for (const Range::Element& element : range)
        Range::handsOfElement(element.values, element.suits, masks);
    std::sort(masks.begin(), masks.end());
    return masks;
}

Range::HandRange rangeOfMasks(const std::vector<unsigned long long>& masks) {
    Range::HandRange range;
    for (unsigned long long mask : masks)
        range.insert(Range::elementOfHand(mask), true);
    return range;
}

namespace {

// Single-card bits of a list of card masks, sorted: the dead cards as a set.
std::vector<unsigned long long> cardSet(const std::vector<unsigned long long>& masks) {
    std::vector<unsigned long long> cards;
    for (unsigned long long mask : masks)
        for (unsigned long long rest = mask; rest != 0; rest &= rest - 1)
            cards.push_back(rest & (~rest + 1));
    std::sort(cards.begin(), cards.end());
    cards.erase(std::unique(cards.begin(), cards.end()), cards.end());
    return cards;
}

// Two-card hands as "AdKd AhKh".
std::string handsText(const std::vector<unsigned long long>& hands) {
    std::string text;
    for (unsigned long long hand : hands)
        text += (text.empty() ? "" : " ") + Range::elementToText(Range::elementOfHand(hand));
    return text.empty() ? "(none)" : text;
}

// One-bit card masks, in hexadecimal.
std::string cardsText(const std::vector<unsigned long long>& cards) {
    std::ostringstream text;
    text << std::hex;
    for (unsigned long long card : cards)
        text << "0x" << card << ' ';
    return cards.empty() ? "(none)" : text.str();
}

// Hands of `of` that `without` lacks.
std::vector<unsigned long long> missing(const std::vector<unsigned long long>& of,
                                        const std::vector<unsigned long long>& without) {
    std::vector<unsigned long long> result;
    std::set_difference(of.begin(), of.end(), without.begin(), without.end(),
                        std::back_inserter(result));
    return result;
}

} // namespace

::testing::AssertionResult hoverShows(HandRangeHover& hover, const Range::HandRange& range,
                                      const std::string& board, const std::string& deadCards) {
    // The hands, suit for suit, of the range the hover's table shows.
    const std::vector<unsigned long long> shown = masksOf(hover.shownRange());
    const std::vector<unsigned long long> expected = masksOf(range);
    if (shown != expected)
        return ::testing::AssertionFailure()
               << "the table shows " << shown.size() << " hands, expected " << expected.size()
               << "; not expected: " << handsText(missing(shown, expected))
               << "; missing: " << handsText(missing(expected, shown));
    const HandSelectionTable* table = hover.handTable();
    if (table == nullptr || table->handRange() != &hover.shownRange())
        return ::testing::AssertionFailure() << "the table does not show the hover's range";
    if (!table->isReadOnly())
        return ::testing::AssertionFailure() << "the table is editable";
    std::vector<unsigned long long> dead = Range::cardsOfText(board);
    for (unsigned long long card : Range::cardsOfText(deadCards))
        dead.push_back(card);
    if (cardSet(table->deadCardMasks()) != cardSet(dead) ||
        cardSet(hover.shownDeadCards()) != cardSet(dead))
        return ::testing::AssertionFailure()
               << "the table's dead cards are " << cardsText(cardSet(table->deadCardMasks()))
               << ", expected " << cardsText(cardSet(dead));

    // The numbers, against a hover of the expected range made beside it.
    HandRangeHover reference(range, board, Range::cardsOfText(deadCards), hover.parentWidget());
    reference.setShowSuits(hover.showsSuits());
    // Shown as the tab shows its hovers, so that both are polished and laid out alike.
    reference.setAttribute(Qt::WA_ShowWithoutActivating);
    reference.move(hover.pos());
    reference.show();
    QApplication::processEvents();
    const std::vector<std::pair<QLabel*, QLabel*>> values = {
        {hover.combinationsValue(), reference.combinationsValue()},
        {hover.combinationsDiscountedValue(), reference.combinationsDiscountedValue()},
        {hover.percentValue(), reference.percentValue()},
        {hover.percentDiscountedValue(), reference.percentDiscountedValue()},
        {hover.parentPortionValue(), reference.parentPortionValue()},
        {hover.parentPortionDiscountedValue(), reference.parentPortionDiscountedValue()}};
    for (const auto& pair : values) {
        if (pair.first->text() != pair.second->text())
            return ::testing::AssertionFailure()
                   << pair.first->objectName().toStdString() << " shows \""
                   << pair.first->text().toStdString() << "\", expected \""
                   << pair.second->text().toStdString() << "\"";
    }
    if (hover.showsParentRows() != reference.showsParentRows())
        return ::testing::AssertionFailure() << "the parent rows differ";
    if (hover.size() != reference.size())
        return ::testing::AssertionFailure()
               << "size " << hover.width() << "x" << hover.height() << ", expected "
               << reference.width() << "x" << reference.height();
    if (hover.grab().toImage() != reference.grab().toImage())
        return ::testing::AssertionFailure() << "the pictures differ";
    return ::testing::AssertionSuccess();
}

void writeHideOption(const char* group, bool value) {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.beginGroup(QLatin1String(group));
    settings.setValue(QStringLiteral("removeEmptyLinesFromBoardEvaluationTabs"), value);
}

void clearHideOption() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.remove(QStringLiteral("optionMenu"));
    settings.remove(QStringLiteral("optionmenu"));
}

void whenModalShows(const std::function<void(QWidget*)>& body) {
    QTimer::singleShot(
        20, [body] { poll([] { return QApplication::activeModalWidget(); }, body, 500); });
}

void whenPopupShows(const std::function<void(QWidget*)>& body) {
    QTimer::singleShot(
        20, [body] { poll([] { return QApplication::activePopupWidget(); }, body, 500); });
}

} // namespace BoardTabsTestSupport
