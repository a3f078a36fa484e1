#include "../handstrength/HitCounting.h"
#include "BoardTabsTestSupport.h"

#include "Range/HandRangeStringManipulator.h"
#include "calculation/ThreadPool.h"
#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandGroupSchema.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandGroupTickSchemaPool.h"
#include "handstrength/ui/HandGroupSchemaSelection.h"
#include "handstrength/ui/HandGroupTickSchemaSelection.h"
#include "selection/HandRangeHover.h"
#include "support/AssertionRecorder.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/BoardHitsBar.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/HandStrengthLabel.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

using namespace BoardTabsTestSupport;
using namespace HitCounting;

namespace {

const HandStrengthKey straightflush(0x1, 0);
const HandStrengthKey twopair(0x40, 0);
const HandStrengthKey pair(0x80, 0);
const HandStrengthKey highcard(0x100, 0);
const HandStrengthKey topPair(0x280, 0);
const HandStrengthKey topPairTopKicker(0x40280, 0);
const HandStrengthKey topPairSecondKicker(0x80280, 0);
const HandStrengthKey ppBetweenTopAndSecond(0x8000000000080, 0);

const std::string flop = "Ks7d2c";
const std::string small = "AK,AQ,KQ,QQ";

// The hands of `range` on the flop with the given made hand value.
std::vector<Hand> handsWith(const std::string& range, Category category) {
    std::vector<Hand> result;
    for (const Hand& hand : handsOf(range, cardsOf(flop))) {
        if (categoryOf(hand, cardsOf(flop)) == category)
            result.push_back(hand);
    }
    return result;
}

// One pair made with a hole card on the board's top card; `kicker` (-1 any) is the other
// hole card's place on the kicker ladder.
std::vector<Hand> topPairHands(const std::string& range, int kicker) {
    const std::vector<Card> board = cardsOf(flop);
    const int top = topRank(board);
    const std::vector<int> ladder = kickerLadder(board);
    std::vector<Hand> result;
    for (const Hand& hand : handsWith(range, OnePair)) {
        if (hand.first.rank == hand.second.rank)
            continue;
        const bool firstPairs = hand.first.rank == top;
        const bool secondPairs = hand.second.rank == top;
        if (!firstPairs && !secondPairs)
            continue;
        const int other = firstPairs ? hand.second.rank : hand.first.rank;
        if (kicker < 0 || ladder[static_cast<std::size_t>(kicker)] == other)
            result.push_back(hand);
    }
    return result;
}

std::vector<unsigned long long> masksOf(const std::vector<Hand>& hands) {
    std::vector<unsigned long long> masks;
    for (const Hand& hand : hands)
        masks.push_back(maskOf(hand));
    std::sort(masks.begin(), masks.end());
    return masks;
}

unsigned int sizeOf(const std::vector<Hand>& hands) {
    return static_cast<unsigned int>(hands.size());
}

class BoardHitsTabTest : public ::testing::Test {
protected:
    void SetUp() override { clearHideOption(); }
    void TearDown() override { clearHideOption(); }
};

} // namespace

TEST_F(BoardHitsTabTest, TopPairRowsCountWhatAnIndependentModelCounts) {
    BoardHitsTab tab;
    tab.updateEvaluation(small, "", flop, "", false);

    const unsigned int all = sizeOf(handsOf(small, cardsOf(flop)));
    const unsigned int pairs = sizeOf(handsWith(small, OnePair));
    const unsigned int top = sizeOf(topPairHands(small, -1));
    // By hand: AK 12 and KQ 12 pair the king; QQ is a pocket pair; AQ has ace high.
    ASSERT_EQ(all, 46u);
    ASSERT_EQ(pairs, 30u);
    ASSERT_EQ(top, 24u);

    EXPECT_EQ(textsOf(tab, pair), std::vector<QStringList>{{hitText(pairs, all)}});
    // Sub-rows stay hidden until their parent is expanded.
    EXPECT_EQ(captionOf(tab, topPair), nullptr);
    expand(tab, pair);
    EXPECT_EQ(textsOf(tab, topPair), std::vector<QStringList>{{hitText(top, pairs)}});
    EXPECT_EQ(textsOf(tab, topPair)[0][0], QStringLiteral("80.00 % (24)"));
    EXPECT_EQ(textsOf(tab, ppBetweenTopAndSecond), std::vector<QStringList>{{hitText(6, pairs)}});

    expand(tab, topPair);
    const unsigned int topKicker = sizeOf(topPairHands(small, 0));
    const unsigned int secondKicker = sizeOf(topPairHands(small, 1));
    EXPECT_EQ(topKicker, 12u);
    EXPECT_EQ(textsOf(tab, topPairTopKicker), std::vector<QStringList>{{hitText(topKicker, top)}});
    EXPECT_EQ(textsOf(tab, topPairSecondKicker),
              std::vector<QStringList>{{hitText(secondKicker, top)}});
}

TEST_F(BoardHitsTabTest, EveryMadeHandRowCountsItsHands) {
    const std::string range =
        "AA,KK,QQ,77,22,AKs,AKo,AQs,KQs,K7s,JTs,T9s,98s,87s,76s,65s,A5s,Q7s,54s,43s";
    BoardHitsTab tab;
    tab.updateEvaluation(range, "", flop, "", false);
    const unsigned int all = sizeOf(handsOf(range, cardsOf(flop)));
    const HandStrengthKey keys[] = {
        HandStrengthKey(0x1, 0),  HandStrengthKey(0x2, 0),  HandStrengthKey(0x4, 0),
        HandStrengthKey(0x8, 0),  HandStrengthKey(0x10, 0), HandStrengthKey(0x20, 0),
        HandStrengthKey(0x40, 0), HandStrengthKey(0x80, 0), HandStrengthKey(0x100, 0)};
    unsigned int shown = 0;
    for (int category = StraightFlush; category <= HighCard; ++category) {
        const unsigned int count = sizeOf(handsWith(range, static_cast<Category>(category)));
        const std::vector<QStringList> texts = textsOf(tab, keys[category]);
        if (count == 0) {
            EXPECT_TRUE(texts.empty()) << category;
            continue;
        }
        ++shown;
        EXPECT_EQ(texts, std::vector<QStringList>{{hitText(count, all)}}) << category;
    }
    // Sets (77, 22), two pairs (K7s), pairs and high cards at least.
    EXPECT_GE(shown, 4u);
}

TEST_F(BoardHitsTabTest, HidingEmptyRowsFollowsTheOptionWhereTheWindowWritesIt) {
    BoardHitsTab tab;
    tab.updateEvaluation(small, "", flop, "", false);
    // Default: a strength without combinations has no row.
    EXPECT_EQ(captionOf(tab, straightflush), nullptr);
    EXPECT_FALSE(shownNames(tab).contains(QStringLiteral("Straightflush")));

    // The window writes the option under "optionmenu"; the tab reads it there.
    writeHideOption("optionmenu", false);
    tab.DoRefresh();
    EXPECT_EQ(textsOf(tab, straightflush),
              std::vector<QStringList>{{QStringLiteral("0.00 % (0)")}});
    EXPECT_TRUE(shownNames(tab).contains(QStringLiteral("Straightflush")));
    // A zero row of a parent with hits still reads 0.
    expand(tab, pair);
    EXPECT_EQ(textsOf(tab, HandStrengthKey(0x8080, 0)),
              std::vector<QStringList>{{QStringLiteral("0.00 % (0)")}});

    // A value under "optionMenu" from an older store never outvotes the window's own.
    writeHideOption("optionmenu", true);
    writeHideOption("optionMenu", false);
    tab.DoRefresh();
    EXPECT_EQ(captionOf(tab, straightflush), nullptr);
    // Alone, it counts.
    clearHideOption();
    writeHideOption("optionMenu", false);
    tab.DoRefresh();
    EXPECT_NE(captionOf(tab, straightflush), nullptr);
}

TEST_F(BoardHitsTabTest, AbsolutePercentagesTakeSubRowsAgainstTheWholeRange) {
    BoardHitsTab tab;
    tab.updateEvaluation(small, "", flop, "", false);
    expand(tab, pair);
    expand(tab, topPair);
    EXPECT_EQ(textsOf(tab, topPairTopKicker)[0][0], QStringLiteral("50.00 % (12)"));
    EXPECT_EQ(textsOf(tab, topPair)[0][0], QStringLiteral("80.00 % (24)"));

    tab.absolutePercentages()->setChecked(true);
    // 12 of 46 and 24 of 46; the expanded state survives the new calculation.
    EXPECT_EQ(textsOf(tab, topPairTopKicker), std::vector<QStringList>{{hitText(12, 46)}});
    EXPECT_EQ(textsOf(tab, topPairTopKicker)[0][0], QStringLiteral("26.09 % (12)"));
    EXPECT_EQ(textsOf(tab, topPair)[0][0], QStringLiteral("52.17 % (24)"));
    // Roots are against the whole range either way.
    EXPECT_EQ(textsOf(tab, pair)[0][0], QStringLiteral("65.22 % (30)"));

    tab.absolutePercentages()->setChecked(false);
    EXPECT_EQ(textsOf(tab, topPairTopKicker)[0][0], QStringLiteral("50.00 % (12)"));
    EXPECT_EQ(tab.absolutePercentages()->text(), QStringLiteral("Absolute Percentages"));
    EXPECT_EQ(tab.absolutePercentages()->toolTip(),
              QStringLiteral("If checked, percentages of subordinated hand strengths will be "
                             "absolute percentages and not relative to parent percentage."));
}

TEST_F(BoardHitsTabTest, RangeBoxChoosesWhoseRangeIsCounted) {
    BoardHitsTab tab;
    // As the window does: a change of "Range:" runs its update with refresh.
    QObject::connect(tab.rangeSelection(), QOverload<int>::of(&QComboBox::currentIndexChanged),
                     &tab, [&tab] { tab.updateEvaluation(small, "77,22", flop, "", true); });
    tab.updateEvaluation(small, "77,22", flop, "", false);
    EXPECT_EQ(textsOf(tab, pair)[0][0], QStringLiteral("65.22 % (30)"));
    EXPECT_EQ(tab.rangeSelection()->itemText(0), QStringLiteral("Player 1"));
    EXPECT_EQ(tab.rangeSelection()->itemText(1), QStringLiteral("Player 2"));
    const std::size_t before = tab.calculationsStarted();
    tab.rangeSelection()->setCurrentIndex(1);
    // One change, one evaluation.
    EXPECT_EQ(tab.calculationsStarted(), before + 1);
    // 77 and 22 make sets: three of 0x20, nothing else.
    EXPECT_EQ(textsOf(tab, HandStrengthKey(0x20, 0))[0][0], QStringLiteral("100.00 % (6)"));
    EXPECT_EQ(captionOf(tab, pair), nullptr);
    EXPECT_EQ(tab.selectedPlayer(), 2);
}

TEST_F(BoardHitsTabTest, OnlyTheAbsoluteFlagRefreshesTheTabByItself) {
    BoardHitsTab tab;
    tab.updateEvaluation(small, "77,22", flop, "", false);
    const std::size_t before = tab.calculationsStarted();
    // "Range:" waits for the window's update: the rows stay player 1's until it comes.
    tab.rangeSelection()->setCurrentIndex(1);
    EXPECT_EQ(tab.selectedPlayer(), 2);
    EXPECT_EQ(tab.calculationsStarted(), before);
    EXPECT_EQ(textsOf(tab, pair)[0][0], QStringLiteral("65.22 % (30)"));
    tab.updateEvaluation(small, "77,22", flop, "", true);
    EXPECT_EQ(tab.calculationsStarted(), before + 1);
    EXPECT_EQ(textsOf(tab, HandStrengthKey(0x20, 0))[0][0], QStringLiteral("100.00 % (6)"));
    // The flag refreshes the tab once on its own, with the stored inputs.
    tab.absolutePercentages()->setChecked(true);
    EXPECT_EQ(tab.calculationsStarted(), before + 2);
    EXPECT_EQ(tab.lastRange2(), "77,22");
    EXPECT_EQ(textsOf(tab, HandStrengthKey(0x20, 0))[0][0], QStringLiteral("100.00 % (6)"));
}

TEST_F(BoardHitsTabTest, EqualInputsAreNotEvaluatedAgainUnlessRefreshed) {
    BoardHitsTab tab;
    const std::size_t initial = tab.calculationsStarted();
    tab.updateEvaluation(small, "", flop, "", false);
    EXPECT_EQ(tab.calculationsStarted(), initial + 1);
    tab.updateEvaluation(small, "", flop, "", false);
    EXPECT_EQ(tab.calculationsStarted(), initial + 1);
    tab.updateEvaluation(small, "", flop, "", true);
    EXPECT_EQ(tab.calculationsStarted(), initial + 2);
    // A change of any of the four texts counts.
    tab.updateEvaluation(small, "", flop, "Ah", false);
    EXPECT_EQ(tab.calculationsStarted(), initial + 3);
    // Ah dead: AK and AQ lose their ace-of-hearts combinations.
    std::vector<Card> blocked = cardsOf(flop + "Ah");
    unsigned int pairsLeft = 0;
    for (const Hand& hand : handsOf(small, blocked))
        pairsLeft += categoryOf(hand, cardsOf(flop)) == OnePair ? 1 : 0;
    EXPECT_EQ(pairsLeft, 27u);
    EXPECT_EQ(textsOf(tab, pair),
              std::vector<QStringList>{{hitText(pairsLeft, sizeOf(handsOf(small, blocked)))}});
}

TEST_F(BoardHitsTabTest, EmptyRangeAndShortBoardGiveAnEmptyTable) {
    AssertionRecorder recorder;
    BoardHitsTab tab;
    tab.updateEvaluation("", "AA", flop, "", false);
    EXPECT_TRUE(tab.table()->rows().empty());
    tab.updateEvaluation(small, "", "Ks7d", "", false);
    EXPECT_TRUE(tab.table()->rows().empty());
    tab.updateEvaluation(small, "", "", "", false);
    EXPECT_TRUE(tab.table()->rows().empty());
    EXPECT_TRUE(recorder.messages().empty());
}

TEST_F(BoardHitsTabTest, BadCardTextIsReportedAndEvaluatesAsNoBoard) {
    AssertionRecorder recorder;
    BoardHitsTab tab;
    tab.updateEvaluation(small, "", "Ks7d2x", "", false);
    EXPECT_TRUE(recorder.saw("Invalid board or dead cards."));
    EXPECT_TRUE(tab.table()->rows().empty());
    recorder.clear();
    tab.updateEvaluation(small, "", flop, "Ks", false); // dead card on the board
    EXPECT_TRUE(recorder.saw("Invalid board or dead cards."));
    EXPECT_TRUE(tab.table()->rows().empty());
    EXPECT_FALSE(BoardEvaluationTab::cardsAreValid("KsKs2c", ""));
    EXPECT_FALSE(BoardEvaluationTab::cardsAreValid("Ks7d2c9h4s3d", ""));
    EXPECT_TRUE(BoardEvaluationTab::cardsAreValid("Ks7d2c9h", "AhAd"));
}

TEST_F(BoardHitsTabTest, FreeAndCompactTextIsSpelledOutBeforeCounting) {
    EXPECT_EQ(BoardEvaluationTab::technicalRange("AK,QQ,AdKh"), "AK,QQ,AdKh");
    BoardHitsTab compact;
    compact.updateEvaluation("QQ+,AK", "", flop, "", false);
    BoardHitsTab technical;
    technical.updateEvaluation("QQ,KK,AA,AKs,AKo", "", flop, "", false);
    EXPECT_EQ(shownNames(compact), shownNames(technical));
    EXPECT_EQ(textsOf(compact, pair), textsOf(technical, pair));
    EXPECT_FALSE(textsOf(compact, pair).empty());
}

TEST_F(BoardHitsTabTest, CaptionClicksExpandAndTickByZone) {
    BoardHitsTab tab;
    tab.updateEvaluation(small, "", flop, "", false);
    HandStrengthLabel* caption = captionOf(tab, pair);
    ASSERT_NE(caption, nullptr);
    // Outside both zones a left click does nothing.
    clickCaption(caption, 120);
    EXPECT_EQ(captionOf(tab, topPair), nullptr);
    EXPECT_FALSE(tab.schema()->isExpanded(pair));
    // The tree marker of a tab with ticks is x 21 to 37.
    clickCaption(captionOf(tab, pair), 22);
    EXPECT_TRUE(tab.schema()->isExpanded(pair));
    EXPECT_NE(captionOf(tab, topPair), nullptr);
    clickCaption(captionOf(tab, pair), 36);
    EXPECT_FALSE(tab.schema()->isExpanded(pair));
    EXPECT_EQ(captionOf(tab, topPair), nullptr);
    EXPECT_TRUE(captionOf(tab, pair)->text().contains(QStringLiteral(":/treeClose.PNG")));

    // The tick box, x 0 to 18: ticks the row with everything below it into the custom sum.
    const HandStrengthKey customSum = HandGroupSchema::customSumKey();
    EXPECT_EQ(captionOf(tab, customSum), nullptr); // nothing ticked: no hits
    clickCaption(captionOf(tab, pair), 9);
    EXPECT_TRUE(tab.schema()->customSumContains(pair));
    EXPECT_TRUE(tab.schema()->customSumContains(topPairTopKicker));
    EXPECT_TRUE(captionOf(tab, pair)->text().contains(QStringLiteral(":/handStrengthChecked.PNG")));
    EXPECT_EQ(textsOf(tab, customSum), std::vector<QStringList>{{hitText(30, 46)}});
    EXPECT_EQ(tab.customSumSelection()->presentTicks().size(),
              tab.schema()->customSumHandStrengths().size());

    // Highcard as well: the union of both.
    clickCaption(captionOf(tab, highcard), 2);
    EXPECT_EQ(textsOf(tab, customSum), std::vector<QStringList>{{hitText(46, 46)}});

    // Unticking one child leaves the parent's box mixed (the parent's own tick still counts
    // all its pairs); a click on a mixed box clears the whole subtree.
    expand(tab, pair);
    clickCaption(captionOf(tab, topPair), 9);
    EXPECT_FALSE(tab.schema()->customSumContains(topPair));
    EXPECT_FALSE(tab.schema()->customSumContains(topPairTopKicker));
    EXPECT_TRUE(
        captionOf(tab, pair)->text().contains(QStringLiteral(":/handStrengthMixedChecked.PNG")));
    EXPECT_TRUE(
        captionOf(tab, topPair)->text().contains(QStringLiteral(":/handStrengthUnchecked.PNG")));
    EXPECT_EQ(textsOf(tab, customSum), std::vector<QStringList>{{hitText(46, 46)}});
    clickCaption(captionOf(tab, pair), 9);
    EXPECT_FALSE(tab.schema()->customSumContains(pair));
    EXPECT_FALSE(tab.schema()->anyChildTicked(pair, 0));
    EXPECT_TRUE(
        captionOf(tab, pair)->text().contains(QStringLiteral(":/handStrengthUnchecked.PNG")));
    EXPECT_EQ(textsOf(tab, customSum), std::vector<QStringList>{{hitText(16, 46)}});
}

TEST_F(BoardHitsTabTest, TickSchemaReplacesTheTicksAndHandTicksTurnItToCustom) {
    BoardHitsTab tab;
    tab.updateEvaluation(small, "", flop, "", false);
    HandGroupTickSchemaSelection* ticks = tab.customSumSelection();
    ASSERT_NE(ticks, nullptr);
    EXPECT_EQ(ticks->currentText(), QStringLiteral("Custom"));
    ticks->setCurrentIndex(ticks->findText(QStringLiteral("Made Hands")));
    // Every made hand but high card: the 30 pairs.
    EXPECT_EQ(textsOf(tab, HandGroupSchema::customSumKey()),
              std::vector<QStringList>{{hitText(30, 46)}});
    EXPECT_TRUE(tab.schema()->customSumContains(pair));
    clickCaption(captionOf(tab, highcard), 9);
    EXPECT_EQ(ticks->currentText(), QStringLiteral("Custom"));
    EXPECT_EQ(textsOf(tab, HandGroupSchema::customSumKey()),
              std::vector<QStringList>{{hitText(46, 46)}});
}

TEST_F(BoardHitsTabTest, ContextMenuOffersTheRowsHandsInItsOrder) {
    BoardHitsTab tab;
    tab.updateEvaluation(small, "", flop, "", false);
    expand(tab, pair);
    std::unique_ptr<QMenu> menu(tab.createContextMenu(topPair, nullptr));
    QStringList texts;
    for (QAction* action : menu->actions())
        texts << (action->isSeparator() ? QStringLiteral("-") : action->text());
    EXPECT_EQ(texts, (QStringList{QStringLiteral("Copy Range to &Clipboard"), QStringLiteral("-"),
                                  QStringLiteral("Overwrite Current Player1 Range/Group"),
                                  QStringLiteral("Use As New Player1 Group"), QStringLiteral("-"),
                                  QStringLiteral("Overwrite Current Player2 Range/Group"),
                                  QStringLiteral("Use As New Player2 Group")}));

    std::optional<Range::HandRange> player1, player2;
    QObject::connect(&tab, &BoardEvaluationTab::Player1RangeChange,
                     [&](Range::HandRange range) { player1 = range; });
    QObject::connect(&tab, &BoardEvaluationTab::Player2RangeChange,
                     [&](Range::HandRange range) { player2 = range; });
    menu->actions()[2]->trigger();
    menu->actions()[5]->trigger();
    ASSERT_TRUE(player1 && player2);
    const std::vector<unsigned long long> expected = masksOf(topPairHands(small, -1));
    EXPECT_EQ(BoardTabsTestSupport::masksOf(*player1), expected);
    EXPECT_EQ(BoardTabsTestSupport::masksOf(*player2), expected);

    // The clipboard gets the range as text that reads back to the same hands.
    menu->actions()[0]->trigger();
    Range::HandRange pasted;
    Range::HandRangeStringManipulator(pasted).setFree(
        QApplication::clipboard()->text().toStdString());
    EXPECT_EQ(BoardTabsTestSupport::masksOf(pasted), expected);
    EXPECT_FALSE(QApplication::clipboard()->text().isEmpty());
}

TEST_F(BoardHitsTabTest, NewGroupActionAsksForANameAndSendsTheRowsHands) {
    BoardHitsTab tab;
    tab.updateEvaluation(small, "", flop, "", false);
    expand(tab, pair);
    expand(tab, topPair);
    std::vector<std::pair<std::string, Range::HandRange>> groups1, groups2;
    QObject::connect(
        &tab, &BoardEvaluationTab::NewPlayer1Group,
        [&](std::string name, Range::HandRange range) { groups1.emplace_back(name, range); });
    QObject::connect(
        &tab, &BoardEvaluationTab::NewPlayer2Group,
        [&](std::string name, Range::HandRange range) { groups2.emplace_back(name, range); });

    QString title, label;
    bool contextHelp = true;
    whenModalShows([&](QWidget* modal) {
        auto* dialog = qobject_cast<QInputDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        title = dialog->windowTitle();
        label = dialog->labelText();
        contextHelp = dialog->windowFlags().testFlag(Qt::WindowContextHelpButtonHint);
        dialog->setTextValue(QStringLiteral("Top pair, top kicker"));
        dialog->accept();
    });
    std::unique_ptr<QMenu> menu(tab.createContextMenu(topPairTopKicker, nullptr));
    menu->actions()[3]->trigger();
    ASSERT_EQ(groups1.size(), 1u);
    EXPECT_EQ(groups1[0].first, "Top pair, top kicker");
    EXPECT_EQ(BoardTabsTestSupport::masksOf(groups1[0].second), masksOf(topPairHands(small, 0)));
    EXPECT_EQ(title, QStringLiteral("Group Name"));
    EXPECT_EQ(label, QStringLiteral("How would you like to name the group? (keep empty for "
                                    "\"Group <number>\")"));
    EXPECT_FALSE(contextHelp);

    // A cancelled dialog still sends the group, with an empty name for the window to number.
    whenModalShows([](QWidget* modal) { static_cast<QDialog*>(modal)->reject(); });
    std::unique_ptr<QMenu> second(tab.createContextMenu(topPairSecondKicker, nullptr));
    second->actions()[6]->trigger();
    ASSERT_EQ(groups2.size(), 1u);
    EXPECT_EQ(groups2[0].first, "");
    EXPECT_EQ(BoardTabsTestSupport::masksOf(groups2[0].second), masksOf(topPairHands(small, 1)));
    EXPECT_EQ(groups2[0].second.combinationCount(), 12u);
}

TEST_F(BoardHitsTabTest, RightClickOnACaptionRunsTheContextMenu) {
    BoardHitsTab tab;
    tab.resize(900, 600);
    tab.show();
    tab.updateEvaluation(small, "", flop, "", false);
    std::optional<Range::HandRange> received;
    QObject::connect(&tab, &BoardEvaluationTab::Player1RangeChange,
                     [&](Range::HandRange range) { received = range; });
    QStringList shownTexts;
    whenPopupShows([&](QWidget* popup) {
        auto* menu = qobject_cast<QMenu*>(popup);
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions())
            shownTexts << action->text();
        menu->actions()[2]->trigger();
        menu->close();
    });
    clickCaption(captionOf(tab, pair), 120, Qt::RightButton);
    ASSERT_TRUE(received.has_value());
    EXPECT_TRUE(shownTexts.contains(QStringLiteral("Use As New Player1 Group")));
    EXPECT_EQ(received->combinationCount(), 30u);
}

TEST_F(BoardHitsTabTest, HoverShowsTheRowsHandsOnScreenAndLeavesWithThePointer) {
    BoardHitsTab tab;
    tab.resize(900, 600);
    tab.show();
    tab.updateEvaluation(small, "", flop, "", false);
    HandStrengthLabel* caption = captionOf(tab, pair);
    ASSERT_NE(caption, nullptr);
    QScreen* screen = QGuiApplication::primaryScreen();
    ASSERT_NE(screen, nullptr);
    const QRect available = screen->availableGeometry();
    // Pointer in the top right corner: the hover must still lie on the screen.
    const QPoint corner(available.right() - 2, available.top() + 2);
    QMouseEvent move(QEvent::MouseMove, QPointF(60, 5), QPointF(corner), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    tab.handStrengthLabelHovered(caption, &move);
    std::vector<HandRangeHover*> hovers = tab.shownHovers();
    ASSERT_EQ(hovers.size(), 1u);
    EXPECT_TRUE(available.contains(hovers[0]->geometry())) << hovers[0]->geometry().x();
    EXPECT_TRUE(hovers[0]->testAttribute(Qt::WA_DeleteOnClose));
    // The row's hands by the independent model: AK and KQ pair the king, QQ is a pair.
    const std::vector<unsigned long long> rowHands = masksOf(handsWith(small, OnePair));
    ASSERT_EQ(rowHands.size(), 30u);
    EXPECT_EQ(hovers[0]->combinationsValue()->text(), QStringLiteral("30"));
    EXPECT_EQ(hovers[0]->percentValue()->text(), percentText(30 / 1326.0));
    EXPECT_FALSE(hovers[0]->showsParentRows());
    EXPECT_TRUE(hoverShows(*hovers[0], rangeOfMasks(rowHands), flop, ""));
    // Same count, other hands: one QQ traded for a JJ shows a different table.
    std::vector<unsigned long long> traded = rowHands;
    const auto queens = std::find_if(traded.begin(), traded.end(), [](unsigned long long mask) {
        return mask == maskOf(Hand{cardsOf("Qd")[0], cardsOf("Qh")[0]});
    });
    ASSERT_NE(queens, traded.end());
    *queens = maskOf(Hand{cardsOf("Jd")[0], cardsOf("Jh")[0]});
    EXPECT_FALSE(hoverShows(*hovers[0], rangeOfMasks(traded), flop, ""));

    QEvent leave(QEvent::Leave);
    tab.handStrengthLabelHoverLost(caption, &leave);
    EXPECT_TRUE(tab.shownHovers().empty());
}

TEST(HoverPlacement, StaysOnTheScreenAtEveryEdge) {
    const QRect screen(0, 0, 1000, 800);
    const QSize size(280, 330);
    // Room everywhere: right of and above the pointer.
    EXPECT_EQ(BoardEvaluationTab::hoverPlacement(QPoint(400, 500), size, screen),
              QPoint(421, 500 - 330 - 5));
    // Near the right edge: moved left by its width plus 21.
    EXPECT_EQ(BoardEvaluationTab::hoverPlacement(QPoint(900, 500), size, screen).x(),
              900 + 21 - 280 - 21);
    // Near the top with room below: below the pointer by its height plus 21.
    EXPECT_EQ(BoardEvaluationTab::hoverPlacement(QPoint(400, 100), size, screen).y(),
              100 - 330 - 5 + 330 + 21);
    // Near the top of a screen without room below: by half its height plus 5, then clamped.
    const QRect low(0, 0, 1000, 500);
    const QPoint placed = BoardEvaluationTab::hoverPlacement(QPoint(400, 200), size, low);
    EXPECT_EQ(placed.y(), 200 - 330 - 5 + 165 + 5);
    // A screen too low for either place: clamped to its top.
    EXPECT_EQ(
        BoardEvaluationTab::hoverPlacement(QPoint(400, 150), size, QRect(0, 0, 1000, 400)).y(), 0);
    for (const QPoint pointer :
         {QPoint(0, 0), QPoint(999, 0), QPoint(999, 799), QPoint(0, 799), QPoint(500, 400)}) {
        const QRect placedRect(BoardEvaluationTab::hoverPlacement(pointer, size, screen), size);
        EXPECT_TRUE(screen.contains(placedRect)) << pointer.x() << "," << pointer.y();
    }
}

TEST_F(BoardHitsTabTest, SchemaChoiceReplacesTheRowsAndKeepsTheTicks) {
    HandGroupSchemaPool pool;
    HandGroupSchemaData pairsOnly;
    pairsOnly.name = "Pairs only";
    pairsOnly.groups.resize(1);
    pairsOnly.groups[0].name = "Pairs";
    pairsOnly.groups[0].addRow(HandGroupRowRequest(pair, HandStrengthKey()));
    pairsOnly.groups[0].addRow(HandGroupRowRequest(topPair, pair));
    pool.add(pairsOnly);
    HandGroupTickSchemaPool tickPool;
    ThreadPool threads;

    BoardHitsTab tab;
    tab.updateEvaluation(small, "", flop, "", false);
    clickCaption(captionOf(tab, highcard), 9); // ticked by hand: "Custom"
    tab.setPools(&threads, &tickPool, &pool);
    EXPECT_EQ(tab.schemaSelection()->count(), 3); // Standard, Pairs only, Edit Schemas...
    EXPECT_EQ(tab.schemaSelection()->itemText(2), QStringLiteral("Edit Schemas..."));
    tab.schemaSelection()->setCurrentIndex(tab.schemaSelection()->findText("Pairs only"));
    EXPECT_EQ(tab.schema()->getName(), "Pairs only");
    EXPECT_EQ(shownNames(tab), QStringList{QStringLiteral("Pair")});
    EXPECT_EQ(textsOf(tab, pair), std::vector<QStringList>{{hitText(30, 46)}});
    // Highcard stands in no group of the new schema, so the tick does not survive; pairs do.
    EXPECT_TRUE(tab.schema()->customSumHandStrengths().empty());

    tab.schemaSelection()->setCurrentIndex(0);
    clickCaption(captionOf(tab, pair), 9);
    tab.schemaSelection()->setCurrentIndex(1);
    EXPECT_TRUE(tab.schema()->customSumContains(pair));
    EXPECT_TRUE(tab.schema()->customSumContains(topPair));
}

TEST_F(BoardHitsTabTest, SchemaWithoutGroupsShowsNothing) {
    HandGroupSchemaPool pool;
    HandGroupSchemaData empty;
    empty.name = "Empty";
    pool.add(empty);
    BoardHitsTab tab;
    EXPECT_EQ(tab.whatsThis(), QStringLiteral("In this tab, you get an overview of the different "
                                              "types of hands Player 1 or Player 2 have hit on "
                                              "the board."));
    tab.setSchemaPool(&pool);
    tab.updateEvaluation(small, "", flop, "", false);
    EXPECT_FALSE(tab.table()->rows().empty());
    tab.schemaSelection()->setCurrentIndex(tab.schemaSelection()->findText("Empty"));
    EXPECT_EQ(tab.schema()->getName(), "Empty");
    EXPECT_TRUE(tab.table()->rows().empty());
}
