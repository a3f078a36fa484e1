// The "Equity Evolutions" tab driven through its buttons and its update call, with every bar
// checked against getEquity on the completed board, computed here.

#include "EquityPlotsTestSupport.h"

#include "calculation/ThreadPool.h"
#include "support/AssertionRecorder.h"
#include "tabs/EquityEvolutionTab.h"
#include "utils/ui/EquityColor.h"
#include "utils/ui/PlotHoverTip.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <cmath>
#include <memory>

using namespace EquityPlotsTestSupport;

namespace {

const std::string hero = "QQ+,AKs";
const std::string villain = "22-JJ,AQs+";
const std::string flop = "Ah7d2c";
const char* const suitNames[] = {"Diamonds", "Hearts", "Spades", "Clubs"};

// The deck as the tab orders it, built here on its own.
std::vector<std::string> deckCards() {
    std::vector<std::string> cards;
    for (char rank : std::string("AKQJT98765432"))
        for (char suit : std::string("dhsc"))
            cards.push_back(std::string{rank, suit});
    return cards;
}

bool boardHolds(const std::string& board, const std::string& card) {
    for (std::size_t at = 0; at + 1 < board.size(); at += 2)
        if (board.compare(at, 2, card) == 0)
            return true;
    return false;
}

class EquityEvolutionTabTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { initializeEvaluatorOnce(); }

    void SetUp() override {
        tab = std::make_unique<EquityEvolutionTab>();
        tab->resize(1000, 600);
        tab->show();
        tab->setThreadPool(&pool);
    }

    QPushButton* button(const char* name) {
        return tab->findChild<QPushButton*>(QString::fromLatin1(name));
    }
    QComboBox* player() { return tab->findChild<QComboBox*>(QStringLiteral("playerSelection")); }

    bool waitForAnalysis() {
        return waitUntil([this] { return !tab->isAnalysing(); });
    }
    int barCount() const {
        int count = 0;
        for (int suit = 0; suit < 4; ++suit)
            count += tab->bars(suit)->dataCount();
        return count;
    }
    // Every card of the deck: kept by the base board or dead, an empty bar; else the equity
    // of the first range on the base board with this card.
    void expectBarsMatch(const std::string& first, const std::string& second,
                         const std::string& base, const std::string& dead) {
        const std::string t1 = technical(first);
        const std::string t2 = technical(second);
        int equityBars = 0;
        for (const std::string& card : deckCards()) {
            if (boardHolds(base, card)) {
                EXPECT_EQ(tab->barOf(card), 0.0) << card;
                EXPECT_EQ(tab->kindOf(card), EquityEvolutionTab::BarKind::OnBoard) << card;
            } else if (boardHolds(dead, card)) {
                EXPECT_EQ(tab->barOf(card), 0.0) << card;
                EXPECT_EQ(tab->kindOf(card), EquityEvolutionTab::BarKind::DeadCard) << card;
            } else {
                ++equityBars;
                EXPECT_DOUBLE_EQ(tab->barOf(card), referenceEquity(t1, t2, base + card, dead))
                    << card;
                EXPECT_EQ(tab->kindOf(card), EquityEvolutionTab::BarKind::Equity) << card;
            }
        }
        EXPECT_EQ(equityBars, 52 - static_cast<int>(base.size() + dead.size()) / 2);
        EXPECT_EQ(barCount(), 52);
    }

    ThreadPool pool;
    std::unique_ptr<EquityEvolutionTab> tab;
};

} // namespace

TEST_F(EquityEvolutionTabTest, FormTextsAndPlotAsDrawn) {
    EXPECT_EQ(tab->whatsThis(), "In this tab, you can find out how the equity of one range "
                                "against another develops on different turn or river cards.");
    EXPECT_EQ(EquityEvolutionTab::deck.size(), 104u);
    std::string deck;
    for (const std::string& card : deckCards())
        deck += card;
    EXPECT_EQ(EquityEvolutionTab::deck, deck);
    EXPECT_EQ(EquityEvolutionTab::deck.substr(0, 40), "AdAhAsAcKdKhKsKcQdQhQsQcJdJhJsJcTdThTsTc");
    EXPECT_EQ(tab->currentCardIndex(), 888);
    ASSERT_NE(tab->findChild<QLabel*>("playerLabel"), nullptr);
    EXPECT_EQ(tab->findChild<QLabel*>("playerLabel")->text(), "Equity Evolution of:");
    ASSERT_EQ(player()->count(), 2);
    EXPECT_EQ(player()->itemText(0), "Player1");
    EXPECT_EQ(player()->itemText(1), "Player2");
    EXPECT_EQ(button("analyzeTurnButton")->text(), "Analyze &Turn Cards");
    EXPECT_EQ(button("analyzeRiverButton")->text(), "Analyze &River Cards");
    EXPECT_TRUE(tab->styleSheet().contains(
        "#EquityEvolutionTab, QScrollArea, #scrollAreaWidgetContents { background-color: #fff; }"));

    const QColor light[] = {{156, 152, 255}, {255, 156, 158}, {84, 84, 112}, {155, 255, 165}};
    const QColor dark[] = {{26, 42, 228}, {222, 58, 44}, {64, 64, 92}, {4, 192, 8}};
    for (int suit = 0; suit < 4; ++suit) {
        QCPBars* bars = tab->bars(suit);
        ASSERT_NE(bars, nullptr);
        EXPECT_EQ(bars->name(), suitNames[suit]);
        EXPECT_DOUBLE_EQ(bars->width(), 0.2);
        EXPECT_EQ(bars->pen().color(), dark[suit]);
        const QGradient* gradient = bars->brush().gradient();
        ASSERT_NE(gradient, nullptr) << suit;
        ASSERT_EQ(gradient->stops().size(), 2);
        EXPECT_EQ(gradient->stops()[0].second, light[suit]);
        EXPECT_EQ(gradient->stops()[1].second, dark[suit]);
        EXPECT_EQ(bars->dataCount(), 0);
        // 13 positions, one per rank, the four suits side by side without overlap.
        ASSERT_EQ(tab->positions(suit).size(), 13u);
    }
    for (int rank = 0; rank < 13; ++rank)
        for (int suit = 1; suit < 4; ++suit)
            EXPECT_NEAR(tab->positions(suit)[rank] - tab->positions(suit - 1)[rank], 0.2, 1e-12);

    QCustomPlot* plot = tab->plot();
    EXPECT_DOUBLE_EQ(plot->xAxis->range().lower, 0.0);
    EXPECT_DOUBLE_EQ(plot->xAxis->range().upper, 14.3);
    auto xTicker = plot->xAxis->ticker().dynamicCast<QCPAxisTickerText>();
    ASSERT_FALSE(xTicker.isNull());
    EXPECT_EQ(xTicker->subTickCount(), 1);
    EXPECT_EQ(plot->xAxis->tickLengthIn() + plot->xAxis->tickLengthOut(), 0);
    EXPECT_EQ(plot->xAxis->subTickLengthIn() + plot->xAxis->subTickLengthOut(), 0);
    const QStringList ranks = {"A", "K", "Q", "J", "T", "9", "8", "7", "6", "5", "4", "3", "2"};
    ASSERT_EQ(xTicker->ticks().size(), 13);
    int rank = 0;
    for (auto it = xTicker->ticks().constBegin(); it != xTicker->ticks().constEnd(); ++it, ++rank) {
        EXPECT_EQ(it.value(), ranks[rank]);
        // The tick stands in the middle of its rank's four bars.
        EXPECT_NEAR(it.key(), (tab->positions(0)[rank] + tab->positions(3)[rank]) / 2, 1e-12);
    }
    EXPECT_DOUBLE_EQ(plot->yAxis->range().lower, 0.0);
    EXPECT_DOUBLE_EQ(plot->yAxis->range().upper, 1.0);
    EXPECT_EQ(plot->yAxis->label(), "Equity");
    auto yTicker = plot->yAxis->ticker().dynamicCast<QCPAxisTickerText>();
    ASSERT_FALSE(yTicker.isNull());
    ASSERT_EQ(yTicker->ticks().size(), 11);
    int step = 0;
    for (auto it = yTicker->ticks().constBegin(); it != yTicker->ticks().constEnd(); ++it, ++step) {
        EXPECT_NEAR(it.key(), step / 10.0, 1e-12);
        EXPECT_EQ(it.value(), QString("%1%").arg(step * 10));
    }
    // Empty, it says what to do.
    EXPECT_EQ(tab->message(), "Enter a flop to see how the equity develops on every turn and "
                              "river card.");
}

TEST_F(EquityEvolutionTabTest, ButtonsOpenWithTheBoard) {
    struct Case {
        std::string board;
        bool turn;
        bool river;
    };
    for (const Case& c : {Case{"", false, false}, Case{"Ah", false, false},
                          Case{"Ah7d", false, false}, Case{"Ah7d2c", true, false},
                          Case{"Ah7d2cKs", true, true}, Case{"Ah7d2cKs9h", true, true}}) {
        tab->updateInputs(hero, villain, c.board, "");
        EXPECT_EQ(button("analyzeTurnButton")->isEnabled(), c.turn) << c.board;
        EXPECT_EQ(button("analyzeRiverButton")->isEnabled(), c.river) << c.board;
    }
    tab->updateInputs(hero, villain, flop, "");
    EXPECT_EQ(tab->message(),
              "Press \"Analyze Turn Cards\" to see the equity of Player1 on every turn card.");
}

TEST_F(EquityEvolutionTabTest, TurnBarsAreTheEquityOnEachTurnCard) {
    tab->updateInputs(hero, villain, flop, "");
    QTest::mouseClick(button("analyzeTurnButton"), Qt::LeftButton);
    EXPECT_TRUE(tab->isAnalysing());
    ASSERT_TRUE(waitForAnalysis());
    expectBarsMatch(hero, villain, flop, "");
    // The bars stand at their suit's position of their rank: Ks is the third bar of the kings.
    const double ks = tab->barOf("Ks");
    bool found = false;
    for (auto it = tab->bars(2)->data()->constBegin(); it != tab->bars(2)->data()->constEnd(); ++it)
        if (it->key == tab->positions(2)[1]) {
            EXPECT_DOUBLE_EQ(it->value, ks);
            found = true;
        }
    EXPECT_TRUE(found);
    EXPECT_EQ(tab->heights(2).size(), 13u);
    EXPECT_EQ(tab->message(), "");
    EXPECT_EQ(tab->title(), "Equity of Player1 against Player2 on every turn card after Ah7d2c");
}

TEST_F(EquityEvolutionTabTest, TurnOnAFourCardBoardKeepsTheFlop) {
    const std::string board = "Ah7d2cKs";
    tab->updateInputs(hero, villain, board, "");
    tab->analyzeTurnCards();
    ASSERT_TRUE(waitForAnalysis());
    expectBarsMatch(hero, villain, flop, "");
    // The fourth card's bar is the equity of the board as it stands.
    EXPECT_DOUBLE_EQ(tab->barOf("Ks"),
                     referenceEquity(technical(hero), technical(villain), board, ""));
}

TEST_F(EquityEvolutionTabTest, RiverOnAFiveCardBoardKeepsTheTurn) {
    const std::string board = "Ah7d2cKs9h";
    tab->updateInputs(hero, villain, board, "");
    tab->analyzeRiverCards();
    ASSERT_TRUE(waitForAnalysis());
    expectBarsMatch(hero, villain, "Ah7d2cKs", "");
    EXPECT_DOUBLE_EQ(tab->barOf("9h"),
                     referenceEquity(technical(hero), technical(villain), board, ""));
    EXPECT_EQ(tab->title(), "Equity of Player1 against Player2 on every river card after Ah7d2cKs");
}

TEST_F(EquityEvolutionTabTest, Player2SeesItsOwnEquity) {
    tab->updateInputs(hero, villain, flop, "");
    player()->setCurrentIndex(1);
    tab->analyzeTurnCards();
    ASSERT_TRUE(waitForAnalysis());
    expectBarsMatch(villain, hero, flop, "");
    EXPECT_EQ(tab->title(), "Equity of Player2 against Player1 on every turn card after Ah7d2c");
}

TEST_F(EquityEvolutionTabTest, DeadCardsKeepAnEmptyBarAndCountForTheOthers) {
    tab->updateInputs(hero, villain, flop, "KsTd");
    tab->analyzeTurnCards();
    ASSERT_TRUE(waitForAnalysis());
    expectBarsMatch(hero, villain, flop, "KsTd");
}

TEST_F(EquityEvolutionTabTest, RangesThatCannotMeetLeaveEveryBarAtZero) {
    // Both ranges hold the ace of hearts only: no matchup exists, total 0, not a number.
    tab->updateInputs("AhAs", "AhKd", "7d2c3s", "");
    tab->analyzeTurnCards();
    ASSERT_TRUE(waitForAnalysis());
    EXPECT_EQ(barCount(), 52);
    for (const std::string& card : deckCards()) {
        EXPECT_EQ(tab->barOf(card), 0.0) << card;
        if (!boardHolds("7d2c3s", card)) {
            EXPECT_EQ(tab->kindOf(card), EquityEvolutionTab::BarKind::NoMatchup) << card;
        }
    }
}

TEST_F(EquityEvolutionTabTest, ASwitchOfPlayerDuringARunClearsThePictureForGood) {
    tab->updateInputs(hero, villain, flop, "");
    tab->analyzeTurnCards();
    int results = 0;
    // Connected after the tab's own slot, so it runs after it: the fifth result switches the
    // player while the sixth card is being calculated.
    QObject::connect(&pool, &ThreadPool::EquityCalculationFinished, tab.get(), [&] {
        if (++results == 5) {
            ASSERT_GT(barCount(), 5);
            player()->setCurrentIndex(1);
        }
    });
    ASSERT_TRUE(waitUntil([&] { return results >= 5; }));
    EXPECT_EQ(barCount(), 0);
    EXPECT_FALSE(tab->isAnalysing());
    const EquityCalculationHandle stopped = tab->currentHandle();
    runEventLoopFor(300);
    // Nothing restarted and no late result came in: the stopped calculation ended unheard.
    EXPECT_EQ(barCount(), 0);
    EXPECT_EQ(results, 5);
    EXPECT_FALSE(pool.isKnown(stopped));
    EXPECT_EQ(tab->currentCardIndex(), 888);
    EXPECT_EQ(tab->message(),
              "Press \"Analyze Turn Cards\" to see the equity of Player2 on every turn card.");
}

TEST_F(EquityEvolutionTabTest, ChangedInputsDuringARunLeaveNoBarOfTheOldRun) {
    tab->updateInputs(hero, villain, flop, "");
    tab->analyzeTurnCards();
    int results = 0;
    QObject::connect(&pool, &ThreadPool::EquityCalculationFinished, tab.get(), [&] {
        if (++results == 3)
            tab->updateInputs(hero, villain, "Kh8h3d", "");
    });
    ASSERT_TRUE(waitUntil([&] { return results >= 3; }));
    EXPECT_EQ(barCount(), 0);
    EXPECT_EQ(tab->currentCardIndex(), 888);
    runEventLoopFor(200);
    EXPECT_EQ(barCount(), 0);
    EXPECT_EQ(results, 3);
    // A new run on the new board holds only bars of the new board.
    tab->analyzeTurnCards();
    ASSERT_TRUE(waitForAnalysis());
    expectBarsMatch(hero, villain, "Kh8h3d", "");
}

TEST_F(EquityEvolutionTabTest, TheSameTextsAgainLetTheRunGoOn) {
    // What the window does when the tab comes into view again.
    tab->updateInputs(hero, villain, flop, "");
    tab->analyzeTurnCards();
    int results = 0;
    QObject::connect(&pool, &ThreadPool::EquityCalculationFinished, tab.get(), [&] {
        if (++results == 4)
            tab->updateInputs(hero, villain, flop, "");
    });
    ASSERT_TRUE(waitForAnalysis());
    expectBarsMatch(hero, villain, flop, "");
}

TEST_F(EquityEvolutionTabTest, ResultsOfOtherHandlesAreDropped) {
    tab->updateInputs(hero, villain, flop, "");
    LongedEvaluation fake;
    fake.total = 4;
    fake.wins1 = 4;
    // Nothing runs: the tab's handle is invalid and equals nothing.
    tab->onFinishedTurnCalculation(pool.createEquityCalculationHandle(), fake);
    tab->onFinishedTurnCalculation(ThreadHandle(), fake);
    EXPECT_EQ(barCount(), 0);
    tab->analyzeTurnCards();
    // Running now, on its first card (the ace of diamonds): a stranger's result adds nothing.
    tab->onFinishedTurnCalculation(pool.createEquityCalculationHandle(), fake);
    EXPECT_EQ(barCount(), 0);
    ASSERT_TRUE(waitForAnalysis());
    expectBarsMatch(hero, villain, flop, "");
}

TEST_F(EquityEvolutionTabTest, InputsThatCannotBeAnalysedStartNothing) {
    tab->updateInputs("", villain, flop, "");
    tab->analyzeTurnCards();
    EXPECT_FALSE(tab->isAnalysing());
    EXPECT_FALSE(tab->currentHandle().isValid());
    EXPECT_EQ(tab->message(), "Enter a range for both players first.");

    tab->updateInputs(hero, villain, flop, "Ah");
    EXPECT_EQ(tab->message(),
              "Press \"Analyze Turn Cards\" to see the equity of Player1 on every turn card.");
    tab->analyzeTurnCards();
    EXPECT_FALSE(tab->isAnalysing());
    EXPECT_FALSE(tab->currentHandle().isValid());
    EXPECT_EQ(tab->message(), "The card Ah is given twice.");
    EXPECT_EQ(barCount(), 0);

    // The river needs a turn card, whatever calls it.
    tab->updateInputs(hero, villain, flop, "");
    tab->analyzeRiverCards();
    EXPECT_FALSE(tab->isAnalysing());
    EXPECT_EQ(tab->message(), "Enter a turn card first.");

    // Without a pool there is nothing to run on: a fault of the caller, asserted.
    EquityEvolutionTab lonely;
    lonely.updateInputs(hero, villain, flop, "");
    AssertionRecorder assertions;
    lonely.analyzeTurnCards();
    EXPECT_FALSE(lonely.isAnalysing());
    EXPECT_EQ(assertions.messages().size(), 1u);
}

TEST_F(EquityEvolutionTabTest, HoveringABarShowsTheCardAndItsEquity) {
    tab->updateInputs(hero, villain, flop, "");
    tab->analyzeTurnCards();
    ASSERT_TRUE(waitForAnalysis());
    QCustomPlot* plot = tab->plot();
    plot->replot();
    auto pixelOf = [plot](double key, double value) {
        return QPoint(static_cast<int>(plot->xAxis->coordToPixel(key)),
                      static_cast<int>(plot->yAxis->coordToPixel(value)));
    };
    const double ks = tab->barOf("Ks");
    ASSERT_GT(ks, 0.1);
    const QPoint insideKs = pixelOf(tab->positions(2)[1], ks / 2);
    const QString expected = "Ks: " + equityPercentText(static_cast<float>(ks));
    EXPECT_EQ(tab->toolTipAt(insideKs), expected);
    EXPECT_TRUE(expected.endsWith(" %"));
    // The ace of hearts is on the board: its empty bar says so at the axis.
    EXPECT_EQ(tab->toolTipAt(pixelOf(tab->positions(1)[0], 0.0)), "Ah: on the board");
    // Above a bar, and between the ranks, there is nothing.
    EXPECT_EQ(tab->toolTipAt(pixelOf(tab->positions(2)[1], std::min(1.0, ks + 0.1))), "");
    EXPECT_EQ(tab->toolTipAt(pixelOf(0.2, 0.05)), "");

    // The tip follows the mouse.
    auto* tip = plot->findChild<PlotHoverTip*>();
    ASSERT_NE(tip, nullptr);
    moveMouse(plot, insideKs);
    EXPECT_EQ(tip->shownText(), expected);
    moveMouse(plot, pixelOf(0.2, 0.05));
    EXPECT_EQ(tip->shownText(), "");
}

TEST_F(EquityEvolutionTabTest, CsvHoldsEveryBarInDeckOrder) {
    EXPECT_EQ(tab->csvText(), "");
    tab->updateInputs(hero, villain, flop, "Td");
    tab->analyzeTurnCards();
    ASSERT_TRUE(waitForAnalysis());
    const QStringList lines = tab->csvText().split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 53);
    EXPECT_EQ(lines[0], "Card;Equity");
    const std::vector<std::string> cards = deckCards();
    for (std::size_t i = 0; i < cards.size(); ++i) {
        const QString card = QString::fromStdString(cards[i]);
        if (boardHolds(flop, cards[i]) || cards[i] == "Td")
            EXPECT_EQ(lines[static_cast<int>(i) + 1], card + ";");
        else
            EXPECT_EQ(lines[static_cast<int>(i) + 1],
                      card + ";" +
                          QString::number(referenceEquity(technical(hero), technical(villain),
                                                          flop + cards[i], "Td") *
                                              100.0,
                                          'f', 2));
    }
}
