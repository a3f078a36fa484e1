#include "BoardTabsTestSupport.h"

#include "calculation/ThreadPool.h"
#include "handstrength/HandGroupSchema.h"
#include "handstrength/HandStrengthNames.h"
#include "support/AssertionRecorder.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/BoardHitsBar.h"
#include "tabs/HandStrengthLabel.h"
#include "tabs/WinEvaluationTab.h"

#include <QComboBox>
#include <QLabel>
#include <gtest/gtest.h>

using namespace BoardTabsTestSupport;

namespace {

const HandStrengthKey straightflush(0x1, 0);
const HandStrengthKey pair(0x80, 0);
const HandStrengthKey highcard(0x100, 0);
const HandStrengthKey topPair(0x280, 0);

// The evaluator's showdowns of `first` against `second` for every row of every group of the
// built-in schema, as the three texts a row shows.
struct Expected {
    HandStrengthKey key;
    QStringList texts;
    float win = -1.0f;
};

QStringList sharesText(const DetailWinEvaluation& record, float* win = nullptr) {
    const double total = double(record.wins) + double(record.ties) + double(record.losses);
    if (total <= 0.0)
        return {QString(), QString(), QString()};
    const float w = float(record.wins / total);
    const float s = float(record.ties / total);
    const float l = float(record.losses / total);
    if (win != nullptr)
        *win = w;
    return {percentText(double(w)), percentText(double(s)), percentText(double(l))};
}

std::vector<Expected> evaluatorShares(const WinEvaluationTab& tab, const std::string& first,
                                      const std::string& second, const std::string& board) {
    std::vector<Expected> expected;
    for (const HandGroup& group : tab.schema()->getGroups()) {
        DetailWinEvaluations records;
        for (const HandGroupRow& row : group.rows)
            records.emplace_back(row.key, handStrengthName(row.key));
        volatile bool stop = false;
        getDetailWinEvaluation(first, second, board, "", records, stop);
        for (const DetailWinEvaluation& record : records) {
            Expected e;
            e.key = record.key;
            e.texts = sharesText(record, &e.win);
            expected.push_back(e);
        }
    }
    return expected;
}

class WinEvaluationTabTest : public ::testing::Test {
protected:
    void SetUp() override {
        clearHideOption();
        tab.setPools(&pool, nullptr, nullptr);
    }
    void TearDown() override { clearHideOption(); }

    void evaluate(const std::string& player1, const std::string& player2,
                  const std::string& board) {
        tab.updateEvaluation(player1, player2, board, "", false);
        ASSERT_TRUE(waitFor([this] { return !tab.isCalculating(); }));
    }

    ThreadPool pool;
    WinEvaluationTab tab;
};

} // namespace

TEST_F(WinEvaluationTabTest, HasItsControlsAndHeaders) {
    EXPECT_EQ(tab.objectName(), QStringLiteral("tab3"));
    ASSERT_NE(tab.rangeSelection(), nullptr);
    EXPECT_EQ(tab.customSumSelection(), nullptr);
    EXPECT_EQ(tab.absolutePercentages(), nullptr);
    EXPECT_FALSE(tab.table()->showsTicks());
    EXPECT_TRUE(tab.whatsThis().contains(QStringLiteral("until showdown , if he has got")));
    auto* header = tab.table()->findChild<BoardHitsBar*>(QStringLiteral("numbersHeader"));
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->texts(), (QStringList{QStringLiteral("Win"), QStringLiteral("Split"),
                                            QStringLiteral("Loss"), QStringLiteral("Wins Bar")}));
    auto* caption = tab.table()->findChild<QLabel*>(QStringLiteral("captionHeader"));
    ASSERT_NE(caption, nullptr);
    EXPECT_EQ(caption->text(), QStringLiteral("&nbsp;Hand Strength"));
}

TEST_F(WinEvaluationTabTest, OnTheRiverEachHandIsDecidedAtOnce) {
    // AK (top pair, top kicker) beats KQ; QQ loses to it; AQ has ace high and loses.
    evaluate("AK,QQ,AQ", "KQ", "Ks7d2c9h4s");
    expand(tab, pair);
    EXPECT_EQ(textsOf(tab, topPair),
              (std::vector<QStringList>{{QStringLiteral("100.00 %"), QStringLiteral("0.00 %"),
                                         QStringLiteral("0.00 %")}}));
    EXPECT_EQ(textsOf(tab, highcard),
              (std::vector<QStringList>{{QStringLiteral("0.00 %"), QStringLiteral("0.00 %"),
                                         QStringLiteral("100.00 %")}}));
    // Pair: AK wins 12 x 8 showdowns, QQ loses 6 x 6.
    EXPECT_EQ(textsOf(tab, pair)[0][0], percentText(double(float(96.0 / 132.0))));
    EXPECT_EQ(textsOf(tab, pair)[0][2], percentText(double(float(36.0 / 132.0))));
    // The bar's inner width is the win share.
    BoardHitsBar* bar = barsOf(tab, topPair).at(0);
    bar->resize(600, 24);
    bar->UpdateBarSize(); // the tab is not shown: no resize event
    EXPECT_EQ(bar->innerBar()->width(), 600 - (bar->innerBar()->x() + 10) + 1);
}

TEST_F(WinEvaluationTabTest, OnTheFlopSharesRunToTheRiverAsTheEvaluatorCounts) {
    writeHideOption("optionMenu", false);
    const std::string player1 = "AK,AQ,KQ,QQ,JTs,76s,A5s,99";
    const std::string player2 = "AA,KK,77,A7s,QJs,T9s";
    const std::string flop = "Ks7d2c";
    evaluate(player1, player2, flop);
    // Expand everything that can be expanded, so that every row is shown.
    for (int round = 0; round < 3; ++round) {
        for (const HandGroup& group : tab.schema()->getGroups()) {
            for (const HandGroupRow& row : group.rows) {
                if (tab.schema()->isExpandable(row.key) && !tab.schema()->isExpanded(row.key) &&
                    captionOf(tab, row.key) != nullptr)
                    expand(tab, row.key);
            }
        }
    }
    const std::vector<Expected> expected = evaluatorShares(tab, player1, player2, flop);
    unsigned int compared = 0;
    bool between = false;
    for (const Expected& e : expected) {
        const std::vector<QStringList> texts = textsOf(tab, e.key);
        if (texts.empty())
            continue; // a key standing twice is shown at its first row only
        EXPECT_EQ(texts[0], e.texts) << handStrengthName(e.key);
        ++compared;
        between = between || (e.win > 0.0f && e.win < 1.0f);
    }
    EXPECT_GT(compared, 100u);
    // With cards to come, hands are not decided on the flop.
    EXPECT_TRUE(between);
    // The option is off: a strength nobody holds has a row, with no numbers.
    EXPECT_EQ(textsOf(tab, straightflush),
              (std::vector<QStringList>{{QString(), QString(), QString()}}));
}

TEST_F(WinEvaluationTabTest, EmptyStrengthsHaveNoRowUnderTheOption) {
    evaluate("AK,QQ,AQ", "KQ", "Ks7d2c");
    EXPECT_EQ(captionOf(tab, straightflush), nullptr);
    EXPECT_NE(captionOf(tab, pair), nullptr);
    for (const QStringList& texts : textsOf(tab, pair))
        EXPECT_FALSE(texts[0].isEmpty());
}

TEST_F(WinEvaluationTabTest, ShowsCalculatingUntilTheResultsArrive) {
    tab.updateEvaluation("22+,A2+,K2+,Q2+,J2+,T2+", "22+,A2+,K2+", "Ks7d2c", "", false);
    EXPECT_TRUE(tab.isCalculating());
    auto* text = tab.table()->findChild<QLabel*>(QStringLiteral("calculatingText"));
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->parentWidget()->isVisibleTo(tab.table()));
    EXPECT_EQ(text->text(), QStringLiteral("&nbsp;&nbsp;Calculating..."));
    // Until its group's result arrives a row shows no numbers.
    const std::vector<QStringList> early = textsOf(tab, pair);
    ASSERT_EQ(early.size(), 1u);
    EXPECT_TRUE(early[0][0].isEmpty());
    ASSERT_TRUE(waitFor([this] { return !tab.isCalculating(); }));
    auto* status = tab.table()->findChild<QWidget*>(QStringLiteral("calculating"));
    ASSERT_NE(status, nullptr);
    EXPECT_FALSE(status->isVisibleTo(tab.table()));
    EXPECT_FALSE(textsOf(tab, pair).at(0).at(0).isEmpty());
}

TEST_F(WinEvaluationTabTest, RangeBoxSwapsWhoseHandsAreRated) {
    // As the window does: a change of "Range:" runs its update with refresh.
    QObject::connect(tab.rangeSelection(), QOverload<int>::of(&QComboBox::currentIndexChanged),
                     &tab,
                     [this] { tab.updateEvaluation("AK,QQ,AQ", "KQ", "Ks7d2c9h4s", "", true); });
    evaluate("AK,QQ,AQ", "KQ", "Ks7d2c9h4s");
    EXPECT_NE(captionOf(tab, highcard), nullptr);
    const std::size_t before = tab.calculationsStarted();
    tab.rangeSelection()->setCurrentIndex(1);
    // One change, one evaluation.
    EXPECT_EQ(tab.calculationsStarted(), before + 1);
    ASSERT_TRUE(waitFor([this] { return !tab.isCalculating(); }));
    // KQ holds top pair, second kicker: it beats QQ and AQ and loses to AK.
    EXPECT_EQ(captionOf(tab, highcard), nullptr);
    ASSERT_EQ(textsOf(tab, pair).size(), 1u);
    const std::vector<Expected> expected = evaluatorShares(tab, "KQ", "AK,QQ,AQ", "Ks7d2c9h4s");
    bool found = false;
    for (const Expected& e : expected) {
        if (e.key == pair && !found) {
            EXPECT_EQ(textsOf(tab, pair)[0], e.texts);
            EXPECT_GT(e.win, 0.0f);
            EXPECT_LT(e.win, 1.0f);
            found = true;
        }
    }
    EXPECT_TRUE(found);
    EXPECT_EQ(textsOf(tab, pair)[0][1], QStringLiteral("0.00 %"));
}

TEST_F(WinEvaluationTabTest, WithoutBoardOrOpponentNothingRuns) {
    AssertionRecorder recorder;
    tab.updateEvaluation("AK,QQ", "", "Ks7d2c", "", false);
    EXPECT_FALSE(tab.isCalculating());
    tab.updateEvaluation("AK,QQ", "KQ", "", "", false);
    EXPECT_FALSE(tab.isCalculating());
    EXPECT_TRUE(tab.table()->rows().empty());
    EXPECT_TRUE(recorder.messages().empty());
}
