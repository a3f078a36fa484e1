#include "HitCounting.h"

#include "calculation/ThreadPool.h"
#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandGroupSchema.h"
#include "support/AssertionRecorder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThreadPool>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>
#include <memory>

using namespace HitCounting;

namespace {

const HandStrengthKey pair(0x80, 0);
const HandStrengthKey topPair(0x280, 0);
const HandStrengthKey highcard(0x100, 0);
const HandStrengthKey flush(0x8, 0);

// On this river every matchup below is decided at once: AK (top pair, top kicker) beats KQ,
// KQ beats QQ (pocket pair under the top pair) and AQ (ace high).
const std::string river = "Ks7d2c9h4s";
const std::string range1 = "AK,QQ,AQ";
const std::string range2 = "KQ";

HandGroupSchemaData threeGroups() {
    HandGroupSchemaData data;
    data.name = "Win";
    data.groups.resize(3);
    data.groups[0].name = "Pairs";
    data.groups[0].addRow(HandGroupRowRequest(pair, HandStrengthKey()));
    data.groups[0].addRow(HandGroupRowRequest(topPair, pair));
    data.groups[0].addRow(HandGroupRowRequest(flush, HandStrengthKey()));
    data.groups[1].name = "Empty";
    data.groups[2].name = "High";
    data.groups[2].addRow(HandGroupRowRequest(highcard, HandStrengthKey()));
    return data;
}

// Matchups of the first range's hands of the given classes against the second range, with no
// card shared and none on the board.
long long matchups(const std::string& classes) {
    const std::vector<Card> board = cardsOf(river);
    long long count = 0;
    for (const Hand& h1 : handsOf(classes, board)) {
        for (const Hand& h2 : handsOf(range2, board)) {
            if ((maskOf(h1) & maskOf(h2)) == 0)
                ++count;
        }
    }
    return count;
}

// Processes events until `done` holds or five seconds passed; then a little longer, so that a
// stray late signal would still be seen.
bool waitFor(const std::function<bool()>& done) {
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    const bool reached = done();
    QElapsedTimer grace;
    grace.start();
    while (grace.elapsed() < 100)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return reached;
}

struct Received {
    std::vector<ThreadHandle> handles;
    std::vector<DetailWinEvaluations> results;
};

void record(HandGroupSchema& schema, Received& received) {
    QObject::connect(&schema, &HandGroupSchema::WinEvaluationFinished, &schema,
                     [&received](const ThreadHandle& handle, const DetailWinEvaluations& r) {
                         received.handles.push_back(handle);
                         received.results.push_back(r);
                     });
}

} // namespace

TEST(HandGroupWinEvaluation, SharesArriveInTheirGroups) {
    ThreadPool pool;
    HandGroupSchema schema(nullptr, threeGroups());
    schema.setThreadPool(&pool);
    Received received;
    record(schema, received);

    schema.evaluateWin(range1, range2, river, "");
    EXPECT_EQ(schema.runningWinEvaluations(), 2u); // the empty group starts nothing
    ASSERT_TRUE(waitFor([&] { return schema.runningWinEvaluations() == 0; }));
    ASSERT_EQ(received.results.size(), 2u);

    const long long wins = matchups("AK");
    const long long lossesWithPair = matchups("QQ");
    const long long lossesWithHighcard = matchups("AQ");
    // By hand: 12 AK x 8 KQ, 6 QQ x 6 KQ, 16 AQ x 9 KQ.
    ASSERT_EQ(wins, 96);
    ASSERT_EQ(lossesWithPair, 36);
    ASSERT_EQ(lossesWithHighcard, 144);
    const std::vector<HandGroup>& groups = schema.getGroups();
    const std::vector<HandGroupRow>& pairs = groups[0].rows;
    EXPECT_FLOAT_EQ(pairs[0].percentage1, float(wins) / float(wins + lossesWithPair));
    EXPECT_FLOAT_EQ(pairs[0].percentage2, float(lossesWithPair) / float(wins + lossesWithPair));
    EXPECT_FLOAT_EQ(pairs[1].percentage1, 1.0f);
    EXPECT_FLOAT_EQ(pairs[1].percentage2, 0.0f);
    // Nobody holds a flush: no showdowns, no share.
    EXPECT_TRUE(std::isnan(pairs[2].percentage1));
    EXPECT_TRUE(std::isnan(pairs[2].percentage2));
    EXPECT_TRUE(groups[1].rows.empty());
    EXPECT_FLOAT_EQ(groups[2].rows[0].percentage1, 0.0f);
    EXPECT_FLOAT_EQ(groups[2].rows[0].percentage2, 1.0f);

    // The signal passes the records on, in row order, with keys and names.
    for (const DetailWinEvaluations& result : received.results) {
        ASSERT_FALSE(result.empty());
        if (result.size() == 1) {
            EXPECT_EQ(result[0].key, highcard);
            EXPECT_EQ(result[0].name, "Highcard");
            EXPECT_EQ(result[0].wins, 0);
            EXPECT_GT(result[0].losses, 0);
            EXPECT_EQ(result[0].ties, 0);
        } else {
            ASSERT_EQ(result.size(), 3u);
            EXPECT_EQ(result[0].key, pair);
            EXPECT_EQ(result[1].key, topPair);
            EXPECT_EQ(result[1].name, "Top Pair");
            EXPECT_EQ(result[0].ties, 0);
            EXPECT_GT(result[1].wins, 0);
            EXPECT_EQ(result[1].losses, 0);
            // Whatever the counting unit, wins and losses stand as the matchups do.
            EXPECT_EQ(static_cast<long long>(result[0].wins) * lossesWithPair,
                      static_cast<long long>(result[0].losses) * wins);
            EXPECT_EQ(result[2].wins + result[2].losses + result[2].ties, 0);
        }
    }
}

TEST(HandGroupWinEvaluation, ANewEvaluationReplacesTheRunningOne) {
    ThreadPool pool;
    HandGroupSchema schema(nullptr, threeGroups());
    schema.setThreadPool(&pool);
    Received received;
    record(schema, received);

    schema.evaluateWin("AA", range2, river, ""); // replaced at once
    schema.evaluateWin(range1, range2, river, "");
    ASSERT_TRUE(waitFor([&] { return schema.runningWinEvaluations() == 0; }));
    // Only the second evaluation reports: one result for each group with rows.
    EXPECT_EQ(received.results.size(), 2u);
    EXPECT_FLOAT_EQ(schema.getGroups()[2].rows[0].percentage2, 1.0f);
    EXPECT_FLOAT_EQ(schema.getGroups()[0].rows[1].percentage1, 1.0f);
}

TEST(HandGroupWinEvaluation, ForeignAndInvalidHandlesAreIgnored) {
    ThreadPool pool;
    HandGroupSchema schema(nullptr, threeGroups());
    schema.setThreadPool(&pool);
    Received received;
    record(schema, received);

    DetailWinEvaluations fake(3);
    fake[0].wins = 5;
    schema.reactToFinishedWinEvaluation(ThreadHandle(), fake);
    schema.reactToFinishedWinEvaluation(ThreadHandle(&pool, 0), fake);
    WinEvaluationHandle foreign = pool.createWinEvaluationHandle();
    schema.reactToFinishedWinEvaluation(foreign, fake);
    EXPECT_TRUE(received.results.empty());
    EXPECT_EQ(schema.getGroups()[0].rows[0].percentage1, 0.0f);
}

TEST(HandGroupWinEvaluation, NothingStartsWithoutBothRangesAndAFlop) {
    ThreadPool pool;
    HandGroupSchema schema(nullptr, threeGroups());
    schema.setThreadPool(&pool);
    Received received;
    record(schema, received);
    schema.evaluateWin("", range2, river, "");
    EXPECT_EQ(schema.runningWinEvaluations(), 0u);
    schema.evaluateWin(range1, "", river, "");
    EXPECT_EQ(schema.runningWinEvaluations(), 0u);
    schema.evaluateWin(range1, range2, "Ks7d", "");
    EXPECT_EQ(schema.runningWinEvaluations(), 0u);
    waitFor([] { return true; });
    EXPECT_TRUE(received.results.empty());
}

TEST(HandGroupWinEvaluation, WithoutAPoolNothingRuns) {
    AssertionRecorder recorder;
    HandGroupSchema schema(nullptr, threeGroups());
    schema.evaluateWin(range1, range2, river, "");
    EXPECT_TRUE(recorder.saw("No thread pool for the win evaluation."));
    EXPECT_EQ(schema.runningWinEvaluations(), 0u);
}

TEST(HandGroupWinEvaluation, SchemaAndPoolMayDieInEitherOrder) {
    {
        ThreadPool pool;
        auto schema = std::make_unique<HandGroupSchema>(nullptr, threeGroups());
        schema->setThreadPool(&pool);
        schema->evaluateWin(range1, range2, "Ks7d2c", "");
        schema.reset(); // stops its evaluations
        waitFor([] { return true; });
    }
    {
        auto pool = std::make_unique<ThreadPool>();
        HandGroupSchema schema(nullptr, threeGroups());
        schema.setThreadPool(pool.get());
        schema.evaluateWin(range1, range2, "Ks7d2c", "");
        pool.reset();
        EXPECT_EQ(schema.getThreadPool(), nullptr);
        AssertionRecorder recorder;
        schema.evaluateWin(range1, range2, river, ""); // no pool any more: nothing starts
        EXPECT_EQ(schema.runningWinEvaluations(), 0u);
    }
    QThreadPool::globalInstance()->waitForDone();
}
