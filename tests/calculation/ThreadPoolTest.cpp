#include "calculation/ThreadPool.h"
#include "calculation/CalculationTasks.h"
#include "calculation/EquityCalculationHandle.h"
#include "calculation/ThreadHandle.h"
#include "calculation/WinEvaluationByHandHandle.h"
#include "calculation/WinEvaluationHandle.h"

#include "support/AssertionRecorder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMetaType>
#include <QObject>
#include <QThread>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>
#include <VelmaraEvaluatorBase.h>
#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

// Runs the event loop until `done` holds or `ms` have passed; returns `done()`.
bool waitFor(const std::function<bool()>& done, int ms = 60000) {
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(1);
    }
    return done();
}

// Lets every queued task of the global pool end and delivers what the watchers posted.
void drain() {
    ASSERT_TRUE(QThreadPool::globalInstance()->waitForDone(120000));
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents();
    }
}

// Every hand class, as technical text: the widest range there is. Against itself preflop,
// with a dead card, it is a calculation of seconds: long enough to be stopped while it runs.
std::string allHands() {
    const std::string values = "AKQJT98765432";
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (std::size_t j = i; j < values.size(); ++j) {
            if (!text.empty()) {
                text += ',';
            }
            text += values[i];
            text += values[j];
            if (i != j) {
                text += "s," + std::string(1, values[i]) + values[j] + "o";
            }
        }
    }
    return text;
}

bool isZero(const LongedEvaluation& e) {
    return e.total == 0 && e.wins1 == 0 && e.wins2 == 0 && e.ties == 0;
}

bool sameCounters(const LongedEvaluation& a, const LongedEvaluation& b) {
    return a.total == b.total && a.wins1 == b.wins1 && a.wins2 == b.wins2 && a.ties == b.ties;
}

LongedEvaluation directEquity(const std::string& r1, const std::string& r2,
                              const std::string& board, const std::string& dead) {
    volatile bool stop = false;
    return board.empty() ? getEquity(r1, r2, dead, stop) : getEquity(r1, r2, board, dead, stop);
}

// A listener in the way every window and tab listens: it keeps one handle, replaces the
// calculation before it, and takes only results whose handle equals the one it holds.
class EquityListener : public QObject {
public:
    explicit EquityListener(ThreadPool* pool) : pool(pool) {
        connect(pool, &ThreadPool::EquityCalculationFinished, this, &EquityListener::onResult);
    }

    void calculate(const std::string& r1, const std::string& r2, const std::string& board,
                   const std::string& dead) {
        if (handle.IsRunning()) {
            handle.Stop();
        }
        handle = pool->createEquityCalculationHandle();
        handle.Start(r1, r2, board, dead);
    }

    void onResult(const ThreadHandle& received, const LongedEvaluation& result) {
        ++received_;
        lastReceivedHandle = received;
        receivedIsRunning = received.IsRunning();
        keptIsRunningDuringSignal = handle.IsRunning();
        if (received == handle) {
            ++accepted;
            lastAccepted = result;
        }
        if (onSignal) {
            onSignal();
        }
    }

    ThreadPool* pool;
    EquityCalculationHandle handle;
    int received_ = 0;
    int accepted = 0;
    LongedEvaluation lastAccepted;
    ThreadHandle lastReceivedHandle;
    bool receivedIsRunning = false;
    bool keptIsRunningDuringSignal = false;
    std::function<void()> onSignal;
};

// Records every emission of the pool's three signals: the handle it carries, whether the
// pool still knew that calculation while the signal ran, and the last result of each kind.
class SignalLog : public QObject {
public:
    explicit SignalLog(ThreadPool* pool) : pool(pool) {
        connect(pool, &ThreadPool::EquityCalculationFinished, this,
                [this](const ThreadHandle& handle, const LongedEvaluation& result) {
                    record(equity, handle);
                    lastEquity = result;
                });
        connect(pool, &ThreadPool::WinEvaluationFinished, this,
                [this](const ThreadHandle& handle, const DetailWinEvaluations& result) {
                    record(win, handle);
                    lastWin = result;
                });
        connect(pool, &ThreadPool::WinEvaluationByHandFinished, this,
                [this](const ThreadHandle& handle, const WinEvaluationsByHand& result) {
                    record(byHand, handle);
                    lastByHand = result;
                });
    }

    std::size_t total() const { return equity.size() + win.size() + byHand.size(); }

    ThreadPool* pool;
    std::vector<ThreadHandle> equity;
    std::vector<ThreadHandle> win;
    std::vector<ThreadHandle> byHand;
    std::vector<bool> knownDuringSignal;
    LongedEvaluation lastEquity;
    DetailWinEvaluations lastWin;
    WinEvaluationsByHand lastByHand;

private:
    void record(std::vector<ThreadHandle>& handles, const ThreadHandle& handle) {
        handles.push_back(handle);
        knownDuringSignal.push_back(pool->isKnown(handle));
    }
};

// A detail win evaluation with the one key every hand meets.
DetailWinEvaluations everything() {
    DetailWinEvaluations evaluations;
    evaluations.emplace_back(HandStrengthKey(0, 0), "Everything");
    return evaluations;
}

class ThreadPoolTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { initializeAllBoardsBeforeCalculation(); }
    void TearDown() override { drain(); }
};

// A river showdown with one hand each: exactly one matchup, won by the aces.
const std::string riverBoard = "2c3d4h8s9c";

} // namespace

TEST_F(ThreadPoolTest, InvalidHandlesEqualNothing) {
    ThreadHandle a;
    ThreadHandle b;
    EXPECT_FALSE(a.isValid());
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(a == a);
    EXPECT_TRUE(a != a);
    EXPECT_FALSE(a.IsRunning());
    EquityCalculationHandle derived;
    EXPECT_FALSE(derived.IsRunning());
    derived.Stop(); // no pool: nothing happens

    ThreadPool pool;
    EquityCalculationHandle valid = pool.createEquityCalculationHandle();
    EXPECT_EQ(valid.getId(), 0u);
    EXPECT_FALSE(valid == a);
    EXPECT_FALSE(a == valid);
    // An invalid handle with the same id as a valid one is still not equal to it.
    EXPECT_EQ(a.getId(), valid.getId());
    EXPECT_FALSE(a == valid);
}

TEST_F(ThreadPoolTest, HandlesAreValuesComparedAndOrderedById) {
    ThreadPool pool;
    EquityCalculationHandle first = pool.createEquityCalculationHandle();
    WinEvaluationHandle second = pool.createWinEvaluationHandle();
    WinEvaluationByHandHandle third = pool.createWinEvaluationByHandHandle();
    EXPECT_EQ(first.getId(), 0u);
    EXPECT_EQ(second.getId(), 1u);
    EXPECT_EQ(third.getId(), 2u);
    EXPECT_TRUE(first < second);
    EXPECT_TRUE(second < third);
    EXPECT_FALSE(third < first);
    EXPECT_FALSE(first == second);

    ThreadHandle copy = first;
    EXPECT_TRUE(copy == first);
    EXPECT_TRUE(first == copy);
    EXPECT_EQ(copy.getPool(), &pool);

    // Created entries exist until they are run; each derived handle asks the pool.
    EXPECT_TRUE(pool.isKnown(first));
    EXPECT_TRUE(pool.isKnown(second));
    EXPECT_TRUE(first.IsRunning());
    EXPECT_TRUE(second.IsRunning());
    EXPECT_TRUE(third.IsRunning());
}

TEST_F(ThreadPoolTest, RiverShowdownIsPublishedWithTheEvaluatorsCounters) {
    ThreadPool pool;
    EquityListener listener(&pool);
    listener.calculate("AhAd", "KsKc", riverBoard, "");
    ASSERT_TRUE(waitFor([&] { return listener.received_ == 1; }));
    EXPECT_EQ(listener.accepted, 1);
    EXPECT_GT(listener.lastAccepted.total, 0u);
    EXPECT_EQ(listener.lastAccepted.wins1, listener.lastAccepted.total);
    EXPECT_EQ(listener.lastAccepted.wins2, 0u);
    EXPECT_EQ(listener.lastAccepted.ties, 0u);
    EXPECT_TRUE(sameCounters(listener.lastAccepted, directEquity("AhAd", "KsKc", riverBoard, "")));
    // The entry is gone once the result is out.
    EXPECT_FALSE(listener.handle.IsRunning());
    EXPECT_FALSE(pool.isKnown(listener.handle));
}

TEST_F(ThreadPoolTest, FlopAndPreflopResultsEqualDirectEvaluatorCalls) {
    ThreadPool pool;
    struct Case {
        std::string r1, r2, board, dead;
    };
    const std::vector<Case> cases = {
        {"QQ,KK,AA,AKs", "JJ,TT,AQs,AKs", "Ah7d2c", ""},
        {"AhAd", "KsKc", "", "Qh"},
        {"AA,KK", "QQ,JJ", "8h7h6h5h", "2c"},
    };
    for (const Case& c : cases) {
        EquityListener listener(&pool);
        listener.calculate(c.r1, c.r2, c.board, c.dead);
        ASSERT_TRUE(waitFor([&] { return listener.accepted == 1; })) << c.r1 << " " << c.board;
        const LongedEvaluation expected = directEquity(c.r1, c.r2, c.board, c.dead);
        EXPECT_FALSE(isZero(expected));
        EXPECT_TRUE(sameCounters(listener.lastAccepted, expected)) << c.r1 << " " << c.board;
        EXPECT_EQ(listener.lastAccepted.wins1 + listener.lastAccepted.wins2 +
                      listener.lastAccepted.ties,
                  listener.lastAccepted.total);
    }
}

TEST_F(ThreadPoolTest, StopThenNewStartGivesExactlyOneResultOfTheNewHandle) {
    ThreadPool pool;
    EquityListener listener(&pool);
    // Something far too big to finish: every hand against every hand preflop.
    listener.calculate(allHands(), allHands(), "", "2c");
    const EquityCalculationHandle first = listener.handle;
    EXPECT_TRUE(first.IsRunning());
    listener.calculate("AhAd", "KsKc", riverBoard, "");
    const EquityCalculationHandle second = listener.handle;
    EXPECT_FALSE(first == second);
    // The stopped one stays known until its task has ended.
    ASSERT_TRUE(waitFor([&] { return listener.received_ >= 1; }));
    drain();
    EXPECT_EQ(listener.received_, 1);
    EXPECT_EQ(listener.accepted, 1);
    EXPECT_TRUE(listener.lastReceivedHandle == second);
    EXPECT_EQ(listener.lastAccepted.wins1, listener.lastAccepted.total);
    EXPECT_FALSE(pool.isKnown(first));
    EXPECT_FALSE(pool.isKnown(second));
}

TEST_F(ThreadPoolTest, FiveReplacementsInARowPublishOnlyTheLast) {
    ThreadPool pool;
    EquityListener listener(&pool);
    const std::vector<std::string> ranges = {allHands(), "AA,KK,QQ", "AA,KK,QQ,JJ",
                                             "AA,KK,QQ,JJ,TT", "AhAd"};
    for (const std::string& r1 : ranges) {
        listener.calculate(r1, r1 == ranges.front() ? r1 : "KsKc", "", "2c");
    }
    ASSERT_TRUE(waitFor([&] { return listener.accepted == 1; }));
    drain();
    EXPECT_EQ(listener.accepted, 1);
    // Replaced calculations were stopped before the next began: none of them reports.
    EXPECT_EQ(listener.received_, 1);
    EXPECT_TRUE(sameCounters(listener.lastAccepted, directEquity("AhAd", "KsKc", "", "2c")));
}

TEST_F(ThreadPoolTest, StopOnAFinishedHandleDoesNothing) {
    ThreadPool pool;
    EquityListener listener(&pool);
    listener.calculate("AhAd", "KsKc", riverBoard, "");
    ASSERT_TRUE(waitFor([&] { return listener.accepted == 1; }));
    const LongedEvaluation published = listener.lastAccepted;
    EXPECT_FALSE(listener.handle.IsRunning());
    listener.handle.Stop();
    pool.stop(listener.handle);
    EXPECT_FALSE(pool.isKnown(listener.handle));
    drain();
    EXPECT_EQ(listener.received_, 1);
    // The published result stands until the next one replaces it.
    EXPECT_TRUE(sameCounters(listener.lastAccepted, published));
    listener.calculate("AhAd", "KsKc", "2c3d4h8s", "");
    ASSERT_TRUE(waitFor([&] { return listener.accepted == 2; }));
    EXPECT_TRUE(sameCounters(listener.lastAccepted, directEquity("AhAd", "KsKc", "2c3d4h8s", "")));
}

TEST_F(ThreadPoolTest, ResultPublishedBeforeTheStopStands) {
    ThreadPool pool;
    EquityListener listener(&pool);
    bool stoppedInSignal = false;
    // The listener stops its own handle while the result is being delivered: the result is
    // already out and is kept.
    listener.onSignal = [&] {
        listener.handle.Stop();
        stoppedInSignal = true;
    };
    listener.calculate("AhAd", "KsKc", riverBoard, "");
    ASSERT_TRUE(waitFor([&] { return listener.received_ == 1; }));
    EXPECT_TRUE(stoppedInSignal);
    EXPECT_EQ(listener.accepted, 1);
    EXPECT_EQ(listener.lastAccepted.wins1, listener.lastAccepted.total);
    EXPECT_FALSE(pool.isKnown(listener.handle));
}

TEST_F(ThreadPoolTest, StopBeforeTheFinishReachesTheMainThreadSilencesTheResult) {
    ThreadPool pool;
    EquityListener listener(&pool);
    listener.calculate("AhAd", "KsKc", riverBoard, "");
    // The task ends on its worker, but its watcher's notice waits in the event queue.
    ASSERT_TRUE(QThreadPool::globalInstance()->waitForDone(60000));
    EXPECT_TRUE(listener.handle.IsRunning());
    listener.handle.Stop();
    drain();
    EXPECT_EQ(listener.received_, 0);
    EXPECT_FALSE(pool.isKnown(listener.handle));
}

TEST_F(ThreadPoolTest, CopyInTheSignalAnswersWithValidityAndTheKeptHandleStillRuns) {
    ThreadPool pool;
    EquityListener listener(&pool);
    listener.calculate("AhAd", "KsKc", riverBoard, "");
    ASSERT_TRUE(waitFor([&] { return listener.received_ == 1; }));
    EXPECT_TRUE(listener.receivedIsRunning);
    EXPECT_TRUE(listener.keptIsRunningDuringSignal);
    // After the emission the entry is erased: the derived handle stops running, while a
    // plain copy still answers with its validity.
    EXPECT_FALSE(listener.handle.IsRunning());
    EXPECT_TRUE(listener.lastReceivedHandle.IsRunning());
    const ThreadHandle& asBase = listener.handle;
    EXPECT_FALSE(asBase.IsRunning()); // virtual: still the derived answer
    ThreadHandle sliced = listener.handle;
    EXPECT_TRUE(sliced.IsRunning());
}

TEST_F(ThreadPoolTest, ListenerWithoutCalculationIgnoresAllResults) {
    ThreadPool pool;
    EquityListener idle(&pool);
    EquityListener busy(&pool);
    busy.calculate("AhAd", "KsKc", riverBoard, "");
    ASSERT_TRUE(waitFor([&] { return busy.accepted == 1; }));
    EXPECT_EQ(idle.received_, 1); // results are broadcast ...
    EXPECT_EQ(idle.accepted, 0);  // ... and dropped by everyone else
}

TEST_F(ThreadPoolTest, TwoListenersEachKeepTheirOwnResult) {
    ThreadPool pool;
    EquityListener a(&pool);
    EquityListener b(&pool);
    a.calculate("AhAd", "KsKc", riverBoard, "");
    b.calculate("KsKc", "AhAd", riverBoard, "");
    ASSERT_TRUE(waitFor([&] { return a.accepted == 1 && b.accepted == 1; }));
    drain();
    EXPECT_EQ(a.received_, 2);
    EXPECT_EQ(b.received_, 2);
    EXPECT_EQ(a.lastAccepted.wins1, a.lastAccepted.total);
    EXPECT_EQ(b.lastAccepted.wins2, b.lastAccepted.total);
}

TEST_F(ThreadPoolTest, HandleStoppedBeforeStartStaysKnown) {
    ThreadPool pool;
    EquityCalculationHandle handle = pool.createEquityCalculationHandle();
    handle.Stop();
    EXPECT_TRUE(pool.isKnown(handle));
    EXPECT_TRUE(handle.IsRunning());
}

TEST_F(ThreadPoolTest, StartingAnEndedHandleIsAnAssertedFault) {
    ThreadPool pool;
    EquityListener listener(&pool);
    listener.calculate("AhAd", "KsKc", riverBoard, "");
    ASSERT_TRUE(waitFor([&] { return listener.accepted == 1; }));
    AssertionRecorder recorder;
    listener.handle.Start("AhAd", "KsKc", riverBoard, "");
    EXPECT_TRUE(recorder.saw("Start of an unknown calculation."));
    EquityCalculationHandle invalid;
    invalid.Start("AhAd", "KsKc", riverBoard, "");
    EXPECT_TRUE(recorder.saw("Start of a handle without a pool."));
    drain();
    EXPECT_EQ(listener.received_, 1);
}

TEST_F(ThreadPoolTest, WinEvaluationByHandMatchesTheEvaluator) {
    ThreadPool pool;
    WinEvaluationByHandHandle handle;
    int received = 0;
    WinEvaluationsByHand result;
    QObject context;
    QObject::connect(&pool, &ThreadPool::WinEvaluationByHandFinished, &context,
                     [&](const ThreadHandle& h, const WinEvaluationsByHand& r) {
                         ++received;
                         if (h == handle) {
                             result = r;
                         }
                     });
    for (const std::string& board : {std::string("Ah7d2c"), std::string()}) {
        result.clear();
        handle = pool.createWinEvaluationByHandHandle();
        handle.Start("AA,KK", "QQ", board, "");
        ASSERT_TRUE(waitFor([&] { return !result.empty(); }));
        volatile bool stop = false;
        const WinEvaluationsByHand expected =
            board.empty() ? getWinEvaluationByHand("AA,KK", "QQ", "", stop)
                          : getWinEvaluationByHand("AA,KK", "QQ", board, "", stop);
        ASSERT_EQ(result.size(), expected.size());
        // One record per combination of the first range; on the flop the three aces that
        // hold the ace of hearts cannot occur and come with a total of 0.
        EXPECT_EQ(result.size(), 12u);
        const auto impossible =
            std::count_if(result.begin(), result.end(),
                          [](const WinEvaluationByHand& r) { return r.total == 0; });
        EXPECT_EQ(impossible, board.empty() ? 0 : 3);
        for (std::size_t i = 0; i < result.size(); ++i) {
            EXPECT_EQ(result[i].hand, expected[i].hand);
            EXPECT_EQ(result[i].total, expected[i].total);
            EXPECT_EQ(result[i].wins, expected[i].wins);
            EXPECT_EQ(result[i].losses, expected[i].losses);
            EXPECT_EQ(result[i].ties, expected[i].ties);
        }
    }
    EXPECT_EQ(received, 2);
}

TEST_F(ThreadPoolTest, DetailWinEvaluationMatchesTheEvaluator) {
    ThreadPool pool;
    WinEvaluationHandle handle = pool.createWinEvaluationHandle();
    DetailWinEvaluations input;
    // The empty key is met by every hand: it counts all showdowns of the first range.
    input.emplace_back(HandStrengthKey(0, 0), "Everything");
    bool got = false;
    DetailWinEvaluations result;
    QObject context;
    QObject::connect(&pool, &ThreadPool::WinEvaluationFinished, &context,
                     [&](const ThreadHandle& h, const DetailWinEvaluations& r) {
                         if (h == handle) {
                             result = r;
                             got = true;
                         }
                     });
    handle.Start("AhAd", "KsKc", riverBoard, "", input);
    ASSERT_TRUE(waitFor([&] { return got; }));
    ASSERT_EQ(result.size(), 1u);
    EXPECT_EQ(result[0].name, "Everything");
    EXPECT_GT(result[0].wins, 0);
    EXPECT_EQ(result[0].losses, 0);
    EXPECT_EQ(result[0].ties, 0);
    DetailWinEvaluations expected = input;
    volatile bool stop = false;
    getDetailWinEvaluation("AhAd", "KsKc", riverBoard, "", expected, stop);
    EXPECT_EQ(result[0].wins, expected[0].wins);
    // The caller's vector is copied for the task, never written.
    EXPECT_EQ(input[0].wins, 0);
}

TEST_F(ThreadPoolTest, ResultTypesTravelThroughQueuedConnections) {
    // Building a pool registers the result types, whatever ran before in this process.
    ThreadPool pool;
    EXPECT_NE(QMetaType::type("ThreadHandle"), 0);
    EXPECT_NE(QMetaType::type("LongedEvaluation"), 0);
    EXPECT_NE(QMetaType::type("DetailWinEvaluations"), 0);
    EXPECT_NE(QMetaType::type("WinEvaluationsByHand"), 0);

    EquityCalculationHandle handle = pool.createEquityCalculationHandle();
    LongedEvaluation result;
    bool got = false;
    QObject context;
    QObject::connect(
        &pool, &ThreadPool::EquityCalculationFinished, &context,
        [&](const ThreadHandle& h, const LongedEvaluation& r) {
            if (h == handle) {
                result = r;
                got = true;
            }
        },
        Qt::QueuedConnection);
    handle.Start("AhAd", "KsKc", riverBoard, "");
    ASSERT_TRUE(waitFor([&] { return got; }));
    EXPECT_TRUE(sameCounters(result, directEquity("AhAd", "KsKc", riverBoard, "")));
}

TEST_F(ThreadPoolTest, TasksReturnTheirStopValueWhenTheFlagIsUp) {
    const std::string all = allHands();
    auto flag = boost::make_shared<volatile bool>(true);
    EXPECT_TRUE(isZero(CalculationTasks::equityWithoutBoard(all, all, "", flag)));
    EXPECT_TRUE(isZero(CalculationTasks::equityWithoutBoard(all, all, "2c", flag)));
    EXPECT_TRUE(isZero(CalculationTasks::equityWithBoard(all, all, "Ah7d2c", "", flag)));
    EXPECT_TRUE(CalculationTasks::winEvaluationByHand(all, all, "", "", flag).empty());
    EXPECT_TRUE(CalculationTasks::winEvaluationByHand(all, all, "", "2c", flag).empty());
    WinEvaluationInput input{all, all, "Ah7d2c", "", {}};
    input.evaluations.emplace_back(HandStrengthKey(0, 0), "Everything");
    const DetailWinEvaluations partial = CalculationTasks::detailWinEvaluation(input, flag);
    ASSERT_EQ(partial.size(), 1u);
    EXPECT_EQ(partial[0].name, "Everything");
}

TEST_F(ThreadPoolTest, TasksWithTheFlagDownComputeNormally) {
    auto flag = boost::make_shared<volatile bool>(false);
    const LongedEvaluation river =
        CalculationTasks::equityWithBoard("AhAd", "KsKc", riverBoard, "", flag);
    EXPECT_EQ(river.wins1, river.total);
    EXPECT_GT(river.total, 0u);
    EXPECT_TRUE(sameCounters(CalculationTasks::equityWithoutBoard("AhAd", "KsKc", "Qh", flag),
                             directEquity("AhAd", "KsKc", "", "Qh")));
}

TEST_F(ThreadPoolTest, DestroyingThePoolWithRunningTasksDoesNotWaitForThem) {
    auto pool = std::make_unique<ThreadPool>();
    EquityListener listener(pool.get());
    listener.calculate(allHands(), allHands(), "", "2c");
    WinEvaluationByHandHandle byHand = pool->createWinEvaluationByHandHandle();
    byHand.Start(allHands(), allHands(), "", "2c");
    ASSERT_TRUE(waitFor([] { return QThreadPool::globalInstance()->activeThreadCount() > 0; }));
    pool.reset();
    // The destructor came back while the tasks still run: it did not wait for them ...
    EXPECT_GT(QThreadPool::globalInstance()->activeThreadCount(), 0);
    // ... and their flags are up, so they end soon instead of enumerating everything.
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone(120000));
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(listener.received_, 0);
}

TEST_F(ThreadPoolTest, EachResultTravelsOnTheSignalOfItsKindOnly) {
    ThreadPool pool;
    SignalLog log(&pool);
    EquityCalculationHandle equity = pool.createEquityCalculationHandle();
    WinEvaluationHandle win = pool.createWinEvaluationHandle();
    WinEvaluationByHandHandle byHand = pool.createWinEvaluationByHandHandle();
    equity.Start("AhAd", "KsKc", riverBoard, "");
    win.Start("AhAd", "KsKc", riverBoard, "", everything());
    byHand.Start("AhAd", "KsKc", riverBoard, "");
    ASSERT_TRUE(waitFor([&] { return log.total() == 3; }));
    drain();

    ASSERT_EQ(log.equity.size(), 1u);
    ASSERT_EQ(log.win.size(), 1u);
    ASSERT_EQ(log.byHand.size(), 1u);
    EXPECT_TRUE(log.equity[0] == equity);
    EXPECT_TRUE(log.win[0] == win);
    EXPECT_TRUE(log.byHand[0] == byHand);
    EXPECT_TRUE(sameCounters(log.lastEquity, directEquity("AhAd", "KsKc", riverBoard, "")));
    ASSERT_EQ(log.lastWin.size(), 1u);
    EXPECT_EQ(log.lastWin[0].name, "Everything");
    EXPECT_GT(log.lastWin[0].wins, 0);
    EXPECT_EQ(log.lastWin[0].losses, 0);
    ASSERT_EQ(log.lastByHand.size(), 1u);
    EXPECT_GT(log.lastByHand[0].total, 0u);
    EXPECT_EQ(log.lastByHand[0].wins, log.lastByHand[0].total);

    // Every kind is still known while its signal runs, and forgotten right after.
    EXPECT_EQ(log.knownDuringSignal, std::vector<bool>(3, true));
    EXPECT_FALSE(equity.IsRunning());
    EXPECT_FALSE(win.IsRunning());
    EXPECT_FALSE(byHand.IsRunning());
}

TEST_F(ThreadPoolTest, StoppedWinEvaluationsOfBothKindsAreSilent) {
    ThreadPool pool;
    SignalLog log(&pool);
    WinEvaluationHandle win = pool.createWinEvaluationHandle();
    WinEvaluationByHandHandle byHand = pool.createWinEvaluationByHandHandle();
    win.Start("AhAd", "KsKc", riverBoard, "", everything());
    byHand.Start("AhAd", "KsKc", riverBoard, "");
    // Both tasks are done, their notices still wait in the event queue.
    ASSERT_TRUE(QThreadPool::globalInstance()->waitForDone(60000));
    EXPECT_TRUE(win.IsRunning());
    EXPECT_TRUE(byHand.IsRunning());
    win.Stop();
    ThreadHandle& asBase = byHand;
    asBase.Stop(); // the same Stop for every kind
    drain();
    EXPECT_EQ(log.total(), 0u);
    EXPECT_FALSE(pool.isKnown(win));
    EXPECT_FALSE(pool.isKnown(byHand));
    EXPECT_FALSE(win.IsRunning());
    EXPECT_FALSE(byHand.IsRunning());
}

TEST_F(ThreadPoolTest, ReplacedWinEvaluationByHandReportsOnlyTheNewHandle) {
    ThreadPool pool;
    SignalLog log(&pool);
    WinEvaluationByHandHandle handle = pool.createWinEvaluationByHandHandle();
    handle.Start(allHands(), allHands(), "", "2c");
    const WinEvaluationByHandHandle first = handle;
    if (handle.IsRunning()) {
        handle.Stop();
    }
    handle = pool.createWinEvaluationByHandHandle();
    handle.Start("AhAd", "KsKc", riverBoard, "");
    ASSERT_TRUE(waitFor([&] { return log.total() >= 1; }));
    drain();
    ASSERT_EQ(log.byHand.size(), 1u);
    EXPECT_EQ(log.total(), 1u);
    EXPECT_TRUE(log.byHand[0] == handle);
    EXPECT_FALSE(log.byHand[0] == first);
    ASSERT_EQ(log.lastByHand.size(), 1u);
    EXPECT_EQ(log.lastByHand[0].wins, log.lastByHand[0].total);
    EXPECT_FALSE(pool.isKnown(first));
}

TEST_F(ThreadPoolTest, StartFaultsAreAssertedForEveryKindOfHandle) {
    ThreadPool pool;
    SignalLog log(&pool);
    AssertionRecorder recorder;

    WinEvaluationHandle invalidWin;
    invalidWin.Start("AhAd", "KsKc", riverBoard, "", everything());
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{"Start of a handle without a pool."});
    recorder.clear();
    WinEvaluationByHandHandle invalidByHand;
    invalidByHand.Start("AhAd", "KsKc", riverBoard, "");
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{"Start of a handle without a pool."});
    recorder.clear();

    WinEvaluationHandle win = pool.createWinEvaluationHandle();
    WinEvaluationByHandHandle byHand = pool.createWinEvaluationByHandHandle();
    win.Start("AhAd", "KsKc", riverBoard, "", everything());
    byHand.Start("AhAd", "KsKc", riverBoard, "");
    ASSERT_TRUE(waitFor([&] { return log.total() == 2; }));
    EXPECT_TRUE(recorder.messages().empty());
    win.Start("AhAd", "KsKc", riverBoard, "", everything());
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{"Start of an unknown calculation."});
    recorder.clear();
    byHand.Start("AhAd", "KsKc", riverBoard, "");
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{"Start of an unknown calculation."});
    drain();
    // Nothing was started by the faulty calls.
    EXPECT_EQ(log.win.size(), 1u);
    EXPECT_EQ(log.byHand.size(), 1u);
    EXPECT_EQ(log.total(), 2u);
}

TEST_F(ThreadPoolTest, HandlesOfEveryKindStoppedBeforeStartStayKnown) {
    ThreadPool pool;
    SignalLog log(&pool);
    WinEvaluationHandle win = pool.createWinEvaluationHandle();
    WinEvaluationByHandHandle byHand = pool.createWinEvaluationByHandHandle();
    win.Stop();
    byHand.Stop();
    drain();
    EXPECT_TRUE(pool.isKnown(win));
    EXPECT_TRUE(pool.isKnown(byHand));
    EXPECT_TRUE(win.IsRunning());
    EXPECT_TRUE(byHand.IsRunning());
    EXPECT_EQ(log.total(), 0u);
}

TEST_F(ThreadPoolTest, AStopFlagIsNeverReset) {
    ThreadPool pool;
    EquityListener listener(&pool);
    listener.handle = pool.createEquityCalculationHandle();
    listener.handle.Stop();
    // Every hand against every hand would take seconds; the flag is up from the start, so
    // the task ends at once with the stop value. Start marks the entry running again, so
    // that value is what gets published.
    listener.handle.Start(allHands(), allHands(), "", "2c");
    ASSERT_TRUE(waitFor([&] { return listener.received_ == 1; }));
    drain();
    EXPECT_EQ(listener.received_, 1);
    EXPECT_EQ(listener.accepted, 1);
    EXPECT_TRUE(isZero(listener.lastAccepted));
    EXPECT_FALSE(pool.isKnown(listener.handle));
}

TEST_F(ThreadPoolTest, AHandleStartedTwiceReportsOnce) {
    ThreadPool pool;
    EquityListener listener(&pool);
    listener.calculate("AhAd", "KsKc", riverBoard, "");
    // No event has been processed yet: the first task's end cannot have been seen.
    listener.handle.Start("KsKc", "AhAd", riverBoard, "");
    drain();
    EXPECT_EQ(listener.received_, 1);
    EXPECT_EQ(listener.accepted, 1);
    // Whichever task ended first was published; the other one's watcher was only cleaned.
    EXPECT_GT(listener.lastAccepted.total, 0u);
    EXPECT_TRUE(listener.lastAccepted.wins1 == listener.lastAccepted.total ||
                listener.lastAccepted.wins2 == listener.lastAccepted.total);
    EXPECT_FALSE(pool.isKnown(listener.handle));
}

TEST_F(ThreadPoolTest, ACalculationKeepsTheResultKindOfItsFirstTask) {
    ThreadPool pool;
    SignalLog log(&pool);
    EquityCalculationHandle equity = pool.createEquityCalculationHandle();
    equity.Start("AhAd", "KsKc", riverBoard, "");
    // A handle of another kind, built by hand around the same calculation.
    WinEvaluationByHandHandle foreign(&pool, equity.getId());
    AssertionRecorder recorder;
    foreign.Start("AhAd", "KsKc", riverBoard, "");
    EXPECT_EQ(recorder.messages(),
              std::vector<std::string>{"Start of a calculation with another result type."});
    drain();
    ASSERT_EQ(log.equity.size(), 1u);
    EXPECT_EQ(log.total(), 1u);
    EXPECT_TRUE(log.equity[0] == equity);
    EXPECT_TRUE(sameCounters(log.lastEquity, directEquity("AhAd", "KsKc", riverBoard, "")));
    EXPECT_FALSE(pool.isKnown(equity));
}

TEST_F(ThreadPoolTest, ATaskWatchedForAnEntryNeverMarkedRunningLeavesEverythingInPlace) {
    ThreadPool pool;
    SignalLog log(&pool);
    EquityCalculationHandle handle = pool.createEquityCalculationHandle();
    LongedEvaluation done;
    done.total = 1;
    done.wins1 = 1;
    pool.watch(handle, QtConcurrent::run([done] { return done; }));
    drain();
    // The entry is still in its created state: its watcher's end publishes nothing and
    // removes nothing (the pool's destructor deletes that watcher).
    EXPECT_EQ(log.total(), 0u);
    EXPECT_TRUE(pool.isKnown(handle));
    EXPECT_TRUE(handle.IsRunning());
    pool.stop(handle);
    drain();
    EXPECT_EQ(log.total(), 0u);
    EXPECT_TRUE(pool.isKnown(handle));
}
