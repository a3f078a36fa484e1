#include "BoardTabsTestSupport.h"

#include "Range/HandRangeElementConversion.h"
#include "selection/HandRangeHover.h"
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
#include <memory>

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

::testing::AssertionResult hoverShows(HandRangeHover& hover, const Range::HandRange& range,
                                      const std::string& board, const std::string& deadCards) {
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
    const QImage shown = hover.grab().toImage();
    const QImage expected = reference.grab().toImage();
    if (shown != expected)
        return ::testing::AssertionFailure() << "the hand table pictures differ";
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
