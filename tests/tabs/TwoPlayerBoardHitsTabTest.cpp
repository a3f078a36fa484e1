#include "../handstrength/HitCounting.h"
#include "BoardTabsTestSupport.h"

#include "Range/HandRangeStringManipulator.h"
#include "selection/HandRangeHover.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/HandStrengthLabel.h"
#include "tabs/TwoPlayerBoardHitsTab.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <gtest/gtest.h>

#include <optional>

using namespace BoardTabsTestSupport;
using namespace HitCounting;

namespace {

const std::string flop = "Ks7d2c";
const std::string range1 = "AK,AQ,KQ,QQ";
const std::string range2 = "77,22,A7s,K2s,JTs,AA";
const HandStrengthKey made[] = {
    HandStrengthKey(0x1, 0),  HandStrengthKey(0x2, 0),  HandStrengthKey(0x4, 0),
    HandStrengthKey(0x8, 0),  HandStrengthKey(0x10, 0), HandStrengthKey(0x20, 0),
    HandStrengthKey(0x40, 0), HandStrengthKey(0x80, 0), HandStrengthKey(0x100, 0)};

unsigned int countWith(const std::string& range, Category category) {
    unsigned int count = 0;
    for (const Hand& hand : handsOf(range, cardsOf(flop)))
        count += categoryOf(hand, cardsOf(flop)) == category ? 1 : 0;
    return count;
}

std::vector<unsigned long long> masksWith(const std::string& range, Category category) {
    std::vector<unsigned long long> masks;
    for (const Hand& hand : handsOf(range, cardsOf(flop))) {
        if (categoryOf(hand, cardsOf(flop)) == category)
            masks.push_back(maskOf(hand));
    }
    std::sort(masks.begin(), masks.end());
    return masks;
}

} // namespace

TEST(TwoPlayerBoardHitsTab, BothPlayersRowsCountWhatAnIndependentModelCounts) {
    clearHideOption();
    TwoPlayerBoardHitsTab tab;
    EXPECT_EQ(tab.rangeSelection(), nullptr);
    ASSERT_NE(tab.absolutePercentages(), nullptr);
    ASSERT_NE(tab.customSumSelection(), nullptr);
    tab.updateEvaluation(range1, range2, flop, "", false);
    const unsigned int all1 = static_cast<unsigned int>(handsOf(range1, cardsOf(flop)).size());
    const unsigned int all2 = static_cast<unsigned int>(handsOf(range2, cardsOf(flop)).size());
    unsigned int rows = 0;
    for (int category = StraightFlush; category <= HighCard; ++category) {
        const unsigned int count1 = countWith(range1, static_cast<Category>(category));
        const unsigned int count2 = countWith(range2, static_cast<Category>(category));
        const std::vector<QStringList> texts = textsOf(tab, made[category]);
        if (count1 == 0 && count2 == 0) {
            EXPECT_TRUE(texts.empty()) << category;
            continue;
        }
        ++rows;
        ASSERT_EQ(texts.size(), 2u) << category;
        EXPECT_EQ(texts[0], QStringList{hitText(count1, all1)}) << category;
        EXPECT_EQ(texts[1], QStringList{hitText(count2, all2)}) << category;
    }
    // Sets (77, 22), two pair (K2s, A7s has a pair), pairs, high cards (JTs, AQ).
    EXPECT_GE(rows, 4u);
    // A row that only player 2 holds still shows player 1's zero.
    EXPECT_EQ(textsOf(tab, made[5])[0], QStringList{QStringLiteral("0.00 % (0)")});
}

TEST(TwoPlayerBoardHitsTab, ContextMenuOffersEachPlayersHands) {
    TwoPlayerBoardHitsTab tab;
    tab.updateEvaluation(range1, range2, flop, "", false);
    std::unique_ptr<QMenu> menu(tab.createContextMenu(made[7], nullptr));
    QStringList texts;
    for (QAction* action : menu->actions())
        texts << action->text();
    EXPECT_EQ(
        texts,
        (QStringList{QStringLiteral("Copy Player1's Hand Strength Range to &Clipboard"),
                     QStringLiteral("Copy Player2's Hand Strength Range to &Clipboard"),
                     QStringLiteral("Overwrite Current Player1's Range/Group with Player1's Hand "
                                    "Strength Range"),
                     QStringLiteral("Add Player1's Hand Strength Range as New Group"),
                     QStringLiteral("Overwrite Current Player2's Range/Group with Player2's Hand "
                                    "Strength Range"),
                     QStringLiteral("Add Player2's Hand Strength Range as New Group")}));

    std::optional<Range::HandRange> player1, player2;
    std::vector<std::pair<std::string, Range::HandRange>> groups2;
    QObject::connect(&tab, &BoardEvaluationTab::Player1RangeChange,
                     [&](Range::HandRange range) { player1 = range; });
    QObject::connect(&tab, &BoardEvaluationTab::Player2RangeChange,
                     [&](Range::HandRange range) { player2 = range; });
    QObject::connect(
        &tab, &BoardEvaluationTab::NewPlayer2Group,
        [&](std::string name, Range::HandRange range) { groups2.emplace_back(name, range); });
    menu->actions()[2]->trigger();
    menu->actions()[4]->trigger();
    ASSERT_TRUE(player1 && player2);
    EXPECT_EQ(masksOf(*player1), masksWith(range1, OnePair));
    EXPECT_EQ(masksOf(*player2), masksWith(range2, OnePair));
    EXPECT_FALSE(masksOf(*player2).empty());

    whenModalShows([](QWidget* modal) {
        auto* dialog = qobject_cast<QInputDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        dialog->setTextValue(QStringLiteral("Villain pairs"));
        dialog->accept();
    });
    menu->actions()[5]->trigger();
    ASSERT_EQ(groups2.size(), 1u);
    EXPECT_EQ(groups2[0].first, "Villain pairs");
    EXPECT_EQ(masksOf(groups2[0].second), masksWith(range2, OnePair));

    menu->actions()[1]->trigger();
    Range::HandRange pasted;
    Range::HandRangeStringManipulator(pasted).setFree(
        QApplication::clipboard()->text().toStdString());
    EXPECT_EQ(masksOf(pasted), masksWith(range2, OnePair));
}

TEST(TwoPlayerBoardHitsTab, HoverShowsBothPlayersSideBySideOnScreen) {
    TwoPlayerBoardHitsTab tab;
    tab.resize(900, 600);
    tab.show();
    tab.updateEvaluation(range1, range2, flop, "", false);
    HandStrengthLabel* caption = captionOf(tab, made[7]);
    ASSERT_NE(caption, nullptr);
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint nearRightEdge(available.right() - 5, available.bottom() - 5);
    QMouseEvent move(QEvent::MouseMove, QPointF(60, 5), QPointF(nearRightEdge), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    tab.handStrengthLabelHovered(caption, &move);
    const std::vector<HandRangeHover*> hovers = tab.shownHovers();
    ASSERT_EQ(hovers.size(), 2u);
    EXPECT_TRUE(available.contains(hovers[0]->geometry()));
    // Each hover holds a full hand table; two side by side are wider than a small screen (the
    // offscreen one is 800 pixels), and then the block starts at the screen's left edge.
    if (hovers[0]->width() + 6 + hovers[1]->width() <= available.width())
        EXPECT_TRUE(available.contains(hovers[1]->geometry()));
    else
        EXPECT_EQ(hovers[0]->x(), available.left());
    EXPECT_EQ(hovers[1]->x(), hovers[0]->geometry().right() + 1 + 6);
    EXPECT_EQ(hovers[1]->y(), hovers[0]->y());
    EXPECT_FALSE(hovers[0]->geometry().intersects(hovers[1]->geometry()));
    EXPECT_TRUE(hovers[0]->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_TRUE(hovers[1]->testAttribute(Qt::WA_DeleteOnClose));
    // Player 1's pairs first, then player 2's, each exactly the hands of that player.
    const std::vector<unsigned long long> pairs1 = masksWith(range1, OnePair);
    const std::vector<unsigned long long> pairs2 = masksWith(range2, OnePair);
    ASSERT_NE(pairs1.size(), pairs2.size());
    EXPECT_EQ(hovers[0]->combinationsValue()->text(), QString::number(pairs1.size()));
    EXPECT_EQ(hovers[1]->combinationsValue()->text(), QString::number(pairs2.size()));
    EXPECT_TRUE(hoverShows(*hovers[0], rangeOfMasks(pairs1), flop, ""));
    EXPECT_TRUE(hoverShows(*hovers[1], rangeOfMasks(pairs2), flop, ""));
    EXPECT_FALSE(hoverShows(*hovers[0], rangeOfMasks(pairs2), flop, ""));
    tab.hide();
    EXPECT_TRUE(tab.shownHovers().empty());
}

TEST(TwoPlayerBoardHitsTab, OneEmptyRangeGivesAnEmptyTable) {
    TwoPlayerBoardHitsTab tab;
    tab.updateEvaluation(range1, "", flop, "", false);
    EXPECT_TRUE(tab.table()->rows().empty());
    tab.updateEvaluation(range1, range2, flop, "", false);
    EXPECT_FALSE(tab.table()->rows().empty());
}

TEST(TwoPlayerBoardHitsTab, SubRowsAreSharesOfTheParentOrWithTheFlagOfEachPlayersRange) {
    clearHideOption();
    TwoPlayerBoardHitsTab tab;
    tab.updateEvaluation(range1, range2, flop, "", false);
    const HandStrengthKey set(0x10020, 0);
    expand(tab, made[5]);
    const unsigned int sets2 = countWith(range2, ThreeOfAKind);
    ASSERT_EQ(sets2, 6u); // 77 and 22, three combinations each
    // Every three of a kind of player 2 is a set: 100 % of the parent.
    EXPECT_EQ(textsOf(tab, set).at(1), QStringList{hitText(sets2, sets2)});
    EXPECT_EQ(textsOf(tab, set).at(0), QStringList{QStringLiteral("0.00 % (0)")});
    tab.absolutePercentages()->setChecked(true);
    const unsigned int all2 = static_cast<unsigned int>(handsOf(range2, cardsOf(flop)).size());
    EXPECT_EQ(textsOf(tab, set).at(1), QStringList{hitText(sets2, all2)});
    EXPECT_TRUE(tab.whatsThis().startsWith(QStringLiteral("Similarly to the \"Board Hits\"-tab")));
}
