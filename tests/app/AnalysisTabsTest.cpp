// The analysis tabs inside the main window: only the visible tab hears of new inputs, a tab
// that comes into view catches up, the rows' offers reach the players' ranges, and the hand
// selection dialog opened by the select buttons. Expected numbers are computed here with the
// evaluator, independently of the tabs.

#include "MainWindowDriver.h"

#include "Range/GroupColor.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "Range/TreeRangeNode.h"
#include "app/Quorvane.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/ui/HandGroupSchemaSelection.h"
#include "selection/BoardCardsWidget.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionDialog.h"
#include "selection/ManagedHandRangeLine.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/BoardHitsBar.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/EquityTableTab.h"
#include "tabs/TwoPlayerBoardHitsTab.h"
#include "tabs/WinEvaluationTab.h"
#include "ui_HandSelectionDialog.h"
#include "ui_Quorvane.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>

// Readable failure messages for texts.
inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}

namespace {

const QString range1Text = QStringLiteral("QQ+,AKs");
const QString range2Text = QStringLiteral("JJ-22,AQs+");
const std::string flop = "Ah7d2c";
const HandStrengthKey onePair(0x80, 0);
const HandStrengthKey highCard(0x100, 0);

enum TabIndex { BoardHits = 0, TwoPlayerBoardHits = 1, WinEvaluation = 2, EquityTables = 3 };

std::string technical(const QString& text) {
    return MainWindowDriver::technical(text.toStdString());
}

std::vector<unsigned long long> masksOf(const Range::HandRange& range) {
    std::vector<unsigned long long> masks;
    for (const Range::Element& element : range)
        Range::handsOfElement(element.values, element.suits, masks);
    std::sort(masks.begin(), masks.end());
    return masks;
}

// One player's (or with `range2` both players') hits of `key` on the board, by the evaluator.
struct Hits {
    unsigned long long total = 0;
    int combinations1 = 0;
    int combinations2 = 0;
};

Hits hitsOf(const HandStrengthKey& key, const std::string& range1, const std::string& range2,
            const std::string& board) {
    DetailHandEvaluations evaluations;
    evaluations.details.emplace_back();
    evaluations.details.back().key = key;
    if (range2.empty())
        getHitEvaluationForOnePlayer(range1, board, "", evaluations);
    else
        getHitEvaluationClassical(range1, range2, board, "", evaluations);
    return {evaluations.total, evaluations.details[0].combinations1,
            evaluations.details[0].combinations2};
}

// "12.34 % (56)" as a one-player table writes a root row's share of all combinations.
QString hitText(int count, unsigned long long total) {
    const float fraction =
        count == 0 ? 0.0f : static_cast<float>(count) / static_cast<float>(total);
    return BoardHitsBar::percentText(fraction) + QStringLiteral(" (%1)").arg(count);
}

// The number texts of the first bar of the row of `key`; empty without such a row.
QStringList rowTexts(const BoardEvaluationTab& tab, const HandStrengthKey& key,
                     std::size_t bar = 0) {
    const BoardHitEvaluationTable::Row* row = tab.table()->rowOf(key);
    if (row == nullptr || row->bars.size() <= bar)
        return {};
    return row->bars[bar]->texts();
}

// Runs `act` on the next modal dialog of type T once it is open.
template <class T>
void onNextDialog(std::function<void(T*)> act, int limitMs = 10000) {
    QTimer::singleShot(0, [act, limitMs] {
        MainWindowDriver::waitUntil(
            [] { return qobject_cast<T*>(QApplication::activeModalWidget()) != nullptr; }, limitMs);
        if (auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget()))
            act(dialog);
        else
            ADD_FAILURE() << "no dialog of the expected type opened";
    });
}

class AnalysisTabs : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
        driver = std::make_unique<MainWindowDriver>();
        ui = driver->window().form();
    }

    void typeInputs() {
        driver->typeRange(1, range1Text);
        driver->typeRange(2, range2Text);
        driver->typeFlop(QString::fromStdString(flop));
    }

    std::unique_ptr<MainWindowDriver> driver;
    Ui::QuorvaneClass* ui = nullptr;
};

TEST_F(AnalysisTabs, TheFourPagesAreTheRealTabs) {
    EXPECT_NE(qobject_cast<BoardHitsTab*>(ui->tabWidget->widget(BoardHits)), nullptr);
    EXPECT_NE(qobject_cast<TwoPlayerBoardHitsTab*>(ui->tabWidget->widget(TwoPlayerBoardHits)),
              nullptr);
    EXPECT_NE(qobject_cast<WinEvaluationTab*>(ui->tabWidget->widget(WinEvaluation)), nullptr);
    EXPECT_NE(qobject_cast<EquityTableTab*>(ui->tabWidget->widget(EquityTables)), nullptr);
    EXPECT_TRUE(ui->selectPlayer1RangeButton->isEnabled());
    EXPECT_TRUE(ui->selectPlayer2RangeButton->isEnabled());
}

TEST_F(AnalysisTabs, TypedInputsFillTheVisibleBoardHitsTab) {
    ui->tabWidget->setCurrentIndex(BoardHits);
    typeInputs();
    BoardHitsTab* tab = ui->boardHitsTab;
    EXPECT_EQ(tab->lastRange1(), technical(range1Text));
    EXPECT_EQ(tab->lastRange2(), technical(range2Text));
    EXPECT_EQ(tab->lastBoard(), flop);

    // "QQ+,AKs" on Ah7d2c: pairs are KK, QQ and the three AKs left; AA makes a set.
    const Hits pairs = hitsOf(onePair, technical(range1Text), "", flop);
    ASSERT_EQ(pairs.total, 18u);
    ASSERT_EQ(pairs.combinations1, 15);
    EXPECT_EQ(rowTexts(*tab, onePair), QStringList{hitText(15, 18)});
    // No high card in this range: the row is hidden (the option defaults to on).
    EXPECT_EQ(tab->table()->rowOf(highCard), nullptr);

    // Player 2 in "Range:" evaluates the other range at once.
    tab->rangeSelection()->setCurrentIndex(1);
    EXPECT_EQ(tab->selectedPlayer(), 2);
    const Hits pairs2 = hitsOf(onePair, technical(range2Text), "", flop);
    EXPECT_EQ(rowTexts(*tab, onePair), QStringList{hitText(pairs2.combinations1, pairs2.total)});
    EXPECT_NE(pairs2.combinations1, pairs.combinations1);
}

TEST_F(AnalysisTabs, AbsolutePercentagesEvaluateAgainTheSameInputs) {
    ui->tabWidget->setCurrentIndex(BoardHits);
    typeInputs();
    BoardHitsTab* tab = ui->boardHitsTab;
    const std::size_t before = tab->calculationsStarted();
    const unsigned int equityBefore = driver->window().currentEquityHandle().getId();
    tab->absolutePercentages()->setChecked(true);
    // The window refreshes on the flag: the tab evaluates again and so does the headline.
    EXPECT_GT(tab->calculationsStarted(), before);
    EXPECT_GT(driver->window().currentEquityHandle().getId(), equityBefore);
    EXPECT_EQ(rowTexts(*tab, onePair), QStringList{hitText(15, 18)});
}

TEST_F(AnalysisTabs, HiddenTabsHearNothingAndCatchUpWhenShown) {
    // The window opens on the graphs: the board tabs are hidden while the inputs are typed.
    ASSERT_EQ(ui->tabWidget->currentIndex(), 7);
    const std::size_t boardHitsStarted = ui->boardHitsTab->calculationsStarted();
    typeInputs();
    EXPECT_TRUE(ui->boardHitsTab->lastRange1().empty());
    EXPECT_TRUE(ui->twoPlayerBoardHitsTab->lastRange1().empty());
    EXPECT_TRUE(ui->winEvaluationTab->lastRange1().empty());
    EXPECT_TRUE(ui->equityTableTab->getAllEvaluations().empty());
    EXPECT_EQ(ui->boardHitsTab->calculationsStarted(), boardHitsStarted);

    // Two Player Board Hits: both ranges with the removal of each other's cards.
    ui->tabWidget->setCurrentIndex(TwoPlayerBoardHits);
    TwoPlayerBoardHitsTab* two = ui->twoPlayerBoardHitsTab;
    EXPECT_EQ(two->lastRange1(), technical(range1Text));
    EXPECT_EQ(two->lastRange2(), technical(range2Text));
    EXPECT_EQ(two->lastBoard(), flop);
    const Hits both = hitsOf(onePair, technical(range1Text), technical(range2Text), flop);
    ASSERT_GT(both.combinations1, 0);
    ASSERT_GT(both.combinations2, 0);
    const QStringList player1 = rowTexts(*two, onePair, 0);
    const QStringList player2 = rowTexts(*two, onePair, 1);
    ASSERT_FALSE(player1.isEmpty());
    ASSERT_FALSE(player2.isEmpty());
    EXPECT_TRUE(player1[0].endsWith(QStringLiteral("(%1)").arg(both.combinations1)))
        << player1[0].toStdString();
    EXPECT_TRUE(player2[0].endsWith(QStringLiteral("(%1)").arg(both.combinations2)))
        << player2[0].toStdString();
    // The one-player tab is still hidden and still knows nothing.
    EXPECT_TRUE(ui->boardHitsTab->lastRange1().empty());

    // Win Evaluation: the showdowns of each hand strength, as the evaluator has them.
    ui->tabWidget->setCurrentIndex(WinEvaluation);
    WinEvaluationTab* win = ui->winEvaluationTab;
    EXPECT_EQ(win->lastRange1(), technical(range1Text));
    ASSERT_TRUE(MainWindowDriver::waitUntil([win] { return !win->isCalculating(); }, 60000));
    ASSERT_FALSE(win->results().empty());
    bool someShowdowns = false;
    for (const std::optional<DetailWinEvaluations>& group : win->results()) {
        ASSERT_TRUE(group.has_value());
        DetailWinEvaluations expected;
        for (const DetailWinEvaluation& row : *group)
            expected.emplace_back(row.key, row.name);
        volatile bool stop = false;
        getDetailWinEvaluation(technical(range1Text), technical(range2Text), flop, "", expected,
                               stop);
        ASSERT_EQ(expected.size(), group->size());
        for (std::size_t index = 0; index < expected.size(); ++index) {
            const DetailWinEvaluation& shown = (*group)[index];
            EXPECT_EQ(shown.wins, expected[index].wins) << shown.name;
            EXPECT_EQ(shown.ties, expected[index].ties) << shown.name;
            EXPECT_EQ(shown.losses, expected[index].losses) << shown.name;
            someShowdowns = someShowdowns || expected[index].wins > 0;
        }
    }
    EXPECT_TRUE(someShowdowns);
    ASSERT_FALSE(win->table()->rows().empty());

    // Back on Board Hits: it catches up with the inputs typed while it was hidden.
    ui->tabWidget->setCurrentIndex(BoardHits);
    EXPECT_EQ(ui->boardHitsTab->lastRange1(), technical(range1Text));
    EXPECT_EQ(rowTexts(*ui->boardHitsTab, onePair), QStringList{hitText(15, 18)});
}

TEST_F(AnalysisTabs, TheTabsWorkOnTheWindowsPoolsOnceShown) {
    ui->tabWidget->setCurrentIndex(BoardHits);
    // The window's schema pool holds the user's schemas: one stored before the window starts
    // is offered by the tab. Stored here, read by a second window.
    HandGroupSchemaData mine = *driver->window().handGroupSchemaPool().find("Standard");
    mine.name = "Mine";
    HandGroupSchemaPool stored;
    ASSERT_TRUE(stored.add(mine));
    stored.save();
    MainWindowDriver second;
    Ui::QuorvaneClass* secondUi = second.window().form();
    ASSERT_NE(second.window().handGroupSchemaPool().find("Mine"), nullptr);
    secondUi->tabWidget->setCurrentIndex(BoardHits);
    QComboBox* schemas = secondUi->boardHitsTab->schemaSelection();
    EXPECT_GE(schemas->findText(QStringLiteral("Mine")), 0);
}

TEST_F(AnalysisTabs, TheSchemaPoolsAreSavedWhenTheWindowCloses) {
    HandGroupSchemaData mine = *driver->window().handGroupSchemaPool().find("Standard");
    mine.name = "Kept";
    ASSERT_TRUE(driver->window().handGroupSchemaPool().add(mine));
    HandGroupSchemaPool before;
    before.load();
    EXPECT_EQ(before.find("Kept"), nullptr);
    ASSERT_TRUE(driver->window().close());
    HandGroupSchemaPool after;
    after.load();
    EXPECT_NE(after.find("Kept"), nullptr);
    EXPECT_NE(after.find("Standard"), nullptr);
}

TEST_F(AnalysisTabs, ARowsNewGroupOfferAddsAColouredGroupWithTheRowsHands) {
    ui->tabWidget->setCurrentIndex(BoardHits);
    typeInputs();
    BoardHitsTab* tab = ui->boardHitsTab;
    const Range::HandRange offered = tab->rangeOfRow(onePair, 1);
    ASSERT_EQ(offered.combinationCount(), 15u);

    std::unique_ptr<QMenu> menu(tab->createContextMenu(onePair, &driver->window()));
    QAction* newGroup = nullptr;
    for (QAction* action : menu->actions()) {
        if (action->text() == QStringLiteral("Use As New Player1 Group"))
            newGroup = action;
    }
    ASSERT_NE(newGroup, nullptr);
    onNextDialog<QInputDialog>([](QInputDialog* dialog) {
        dialog->setTextValue(QStringLiteral("Pairs"));
        dialog->accept();
    });
    newGroup->trigger();

    Range::Tree& groups = driver->window().player1Groups();
    ASSERT_EQ(groups.count(), 2u);
    const Range::TreeRangeNode* group = groups.rangeNode(1);
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->name, "Pairs");
    EXPECT_EQ(masksOf(group->handRange), masksOf(offered));
    EXPECT_TRUE(group->color.usesColor);
    EXPECT_EQ(group->color, Range::GroupColor::standardColors()[0]);
    // The full range is untouched, the line lists the group, and the file is changed.
    EXPECT_EQ(masksOf(groups.handRange(0)), masksOf([] {
                  Range::HandRange full;
                  Range::HandRangeStringManipulator(full).setFree("QQ+,AKs");
                  return full;
              }()));
    EXPECT_EQ(ui->player1Range->count(), 2);
    EXPECT_TRUE(ui->player1Range->itemText(1).startsWith(QStringLiteral("<b>Pairs:</b>")));
    EXPECT_FALSE(driver->window().isSaved());

    // A cancelled name dialog still adds the group; the window numbers it, and it gets the
    // next free colour.
    onNextDialog<QInputDialog>([](QInputDialog* dialog) { dialog->reject(); });
    newGroup->trigger();
    ASSERT_EQ(groups.count(), 3u);
    EXPECT_EQ(groups.rangeNode(2)->name, "Group 2");
    EXPECT_EQ(groups.rangeNode(2)->color, Range::GroupColor::standardColors()[1]);
}

TEST_F(AnalysisTabs, ARowsOverwriteOfferReplacesTheOtherPlayersRange) {
    ui->tabWidget->setCurrentIndex(BoardHits);
    typeInputs();
    BoardHitsTab* tab = ui->boardHitsTab;
    const Range::HandRange offered = tab->rangeOfRow(onePair, 1);
    std::unique_ptr<QMenu> menu(tab->createContextMenu(onePair, &driver->window()));
    QAction* overwrite = nullptr;
    for (QAction* action : menu->actions()) {
        if (action->text() == QStringLiteral("Overwrite Current Player2 Range/Group"))
            overwrite = action;
    }
    ASSERT_NE(overwrite, nullptr);
    overwrite->trigger();
    EXPECT_EQ(masksOf(driver->window().player2Groups().handRange(0)), masksOf(offered));
    // The tab, visible, was told the new range at once.
    EXPECT_EQ(tab->lastRange2(),
              Range::HandRangeStringReader(driver->window().player2Groups().handRange(0))
                  .technicalText());
    ASSERT_TRUE(driver->waitForEquity());
    const LongedEvaluation expected =
        MainWindowDriver::exactEquity(technical(range1Text), tab->lastRange2(), flop, "");
    const double equity = (static_cast<double>(expected.wins1) + expected.ties * 0.5) /
                          static_cast<double>(expected.total) * 100.0;
    EXPECT_EQ(driver->equityLabel(1)->text(), QString::number(equity, 'f', 2) + " %");
}

TEST_F(AnalysisTabs, TheWinTabsRowsOfferTheirHandsToo) {
    ui->tabWidget->setCurrentIndex(WinEvaluation);
    typeInputs();
    WinEvaluationTab* tab = ui->winEvaluationTab;
    ASSERT_TRUE(MainWindowDriver::waitUntil([tab] { return !tab->isCalculating(); }, 60000));
    const Range::HandRange offered = tab->rangeOfRow(onePair, 1);
    ASSERT_EQ(offered.combinationCount(), 15u);
    std::unique_ptr<QMenu> menu(tab->createContextMenu(onePair, &driver->window()));
    QAction* overwrite = nullptr;
    for (QAction* action : menu->actions()) {
        if (action->text() == QStringLiteral("Overwrite Current Player1 Range/Group"))
            overwrite = action;
    }
    ASSERT_NE(overwrite, nullptr);
    overwrite->trigger();
    EXPECT_EQ(masksOf(driver->window().player1Groups().handRange(0)), masksOf(offered));
    EXPECT_EQ(tab->lastRange1(), Range::HandRangeStringReader(offered).technicalText());
}

TEST_F(AnalysisTabs, AGroupBeyondTheSixteenColoursIsRefusedWithAMessage) {
    Range::HandRange aces;
    Range::HandRangeStringManipulator(aces).setFree("AA");
    for (int index = 0; index < 16; ++index)
        driver->window().onNewPlayer1Group("", aces);
    Range::Tree& groups = driver->window().player1Groups();
    ASSERT_EQ(groups.count(), 17u);
    QString warning;
    onNextDialog<QMessageBox>([&warning](QMessageBox* box) {
        warning = box->text();
        box->accept();
    });
    driver->window().onNewPlayer1Group("One too many", aces);
    EXPECT_EQ(warning, QStringLiteral("All colors in use."));
    EXPECT_EQ(groups.count(), 17u);
}

TEST_F(AnalysisTabs, TheEquityTableFillsForTheCurrentInputs) {
    typeInputs();
    ui->tabWidget->setCurrentIndex(EquityTables);
    EquityTableTab* table = ui->equityTableTab;
    EXPECT_EQ(table->getThreadPool(), &driver->window().pool());
    ASSERT_TRUE(MainWindowDriver::waitUntil(
        [table] { return !table->isCalculating() && !table->getAllEvaluations().empty(); }, 60000));
    const auto expectEvaluatorsRecords = [table](const std::string& board) {
        volatile bool stop = false;
        const WinEvaluationsByHand expected =
            getWinEvaluationByHand(technical(range1Text), technical(range2Text), board, "", stop);
        const WinEvaluationsByHand& shown = table->getAllEvaluations();
        ASSERT_EQ(shown.size(), expected.size());
        for (std::size_t index = 0; index < expected.size(); ++index) {
            EXPECT_EQ(shown[index].hand, expected[index].hand);
            EXPECT_EQ(shown[index].wins, expected[index].wins) << shown[index].hand;
            EXPECT_EQ(shown[index].ties, expected[index].ties) << shown[index].hand;
            EXPECT_EQ(shown[index].total, expected[index].total) << shown[index].hand;
        }
    };
    expectEvaluatorsRecords(flop);
    // AA (3 left), KK, QQ (6 each) and AKs (3 left) on Ah7d2c.
    EXPECT_EQ(table->getResultingCombinationCount(), 18);

    // Visible, the table follows a new flop at once: AA (6), KK, QQ (3 each), AKs (3).
    ui->boardCardsWidget->setBoard("KsQd2c");
    driver->window().updateEquitiesAndTabs(false);
    EXPECT_TRUE(table->isCalculating());
    ASSERT_TRUE(MainWindowDriver::waitUntil([table] { return !table->isCalculating(); }, 60000));
    expectEvaluatorsRecords("KsQd2c");
    EXPECT_EQ(table->getResultingCombinationCount(), 15);
}

TEST_F(AnalysisTabs, TheSelectButtonOpensTheDialogAndAnAcceptedRangeIsCalculated) {
    typeInputs();
    ASSERT_TRUE(driver->waitForEquity());
    QString title;
    std::string shownRange;
    onNextDialog<HandSelectionDialog>([&](HandSelectionDialog* dialog) {
        title = dialog->windowTitle();
        shownRange = dialog->currentRangeText();
        dialog->form()->rangeText->setText(QStringLiteral("TT+,AK"));
        dialog->form()->rangeText->validateRange();
        dialog->accept();
    });
    QTest::mouseClick(ui->selectPlayer1RangeButton, Qt::LeftButton);
    EXPECT_EQ(title, QStringLiteral("Select Player1 Range"));
    EXPECT_EQ(shownRange, "QQ+,AKs");

    Range::HandRange tenPlus;
    Range::HandRangeStringManipulator(tenPlus).setFree("TT+,AK");
    EXPECT_EQ(masksOf(driver->window().player1Groups().handRange(0)), masksOf(tenPlus));
    EXPECT_EQ(ui->player1Range->rangeLine()->text().toStdString(),
              Range::HandRangeStringReader(tenPlus).compactText());
    EXPECT_EQ(ui->player1Range->rangeLine()->handRange(),
              &driver->window().player1Groups().handRange(0));
    ASSERT_TRUE(driver->waitForEquity());
    const LongedEvaluation expected = MainWindowDriver::exactEquity(
        technical(QStringLiteral("TT+,AK")), technical(range2Text), flop, "");
    const double equity = (static_cast<double>(expected.wins1) + expected.ties * 0.5) /
                          static_cast<double>(expected.total) * 100.0;
    EXPECT_EQ(driver->equityLabel(1)->text(), QString::number(equity, 'f', 2) + " %");
    // The scenario holds the new range.
    Range::Tree stored;
    stored.RestoreMemento(driver->window().allScenarios()[0].player1);
    EXPECT_EQ(masksOf(stored.handRange(0)), masksOf(tenPlus));
}

TEST_F(AnalysisTabs, ACancelledSelectionChangesNothing) {
    typeInputs();
    ASSERT_TRUE(driver->waitForEquity());
    const unsigned int id = driver->window().currentEquityHandle().getId();
    const QString titleBefore = driver->window().windowTitle();
    const QString lineBefore = ui->player2Range->rangeLine()->text();
    QString title;
    onNextDialog<HandSelectionDialog>([&](HandSelectionDialog* dialog) {
        title = dialog->windowTitle();
        dialog->form()->rangeText->setText(QStringLiteral("22"));
        dialog->form()->rangeText->validateRange();
        dialog->reject();
    });
    QTest::mouseClick(ui->selectPlayer2RangeButton, Qt::LeftButton);
    EXPECT_EQ(title, QStringLiteral("Select Player2 Range"));
    EXPECT_EQ(ui->player2Range->rangeLine()->text(), lineBefore);
    EXPECT_EQ(
        Range::HandRangeStringReader(driver->window().player2Groups().handRange(0)).technicalText(),
        technical(range2Text));
    EXPECT_EQ(driver->window().currentEquityHandle().getId(), id);
    EXPECT_EQ(driver->window().windowTitle(), titleBefore);
}

TEST_F(AnalysisTabs, DoubleClickOnTheLineOpensTheDialogWithItsGroups) {
    driver->typeRange(1, range1Text);
    Range::HandRange kings;
    Range::HandRangeStringManipulator(kings).setFree("KK");
    driver->window().onNewPlayer1Group("Kings", kings);
    std::size_t groupsSeen = 0;
    onNextDialog<HandSelectionDialog>([&](HandSelectionDialog* dialog) {
        groupsSeen = dialog->groupTree().count();
        dialog->accept();
    });
    emit ui->player1Range->doubleClicked();
    EXPECT_EQ(groupsSeen, 2u);
    // Accepted unchanged: the tree is the same, and the line still shows the full range.
    EXPECT_EQ(driver->window().player1Groups().count(), 2u);
    EXPECT_EQ(driver->window().player1Groups().rangeNode(1)->name, "Kings");
    EXPECT_EQ(
        ui->player1Range->rangeLine()->text().toStdString(),
        Range::HandRangeStringReader(driver->window().player1Groups().handRange(0)).compactText());
    EXPECT_EQ(ui->player1Range->rangeLine()->handRange(),
              &driver->window().player1Groups().handRange(0));
}

} // namespace
