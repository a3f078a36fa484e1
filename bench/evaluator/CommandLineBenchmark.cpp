// Whole processes of quorvane-eval, as scripts run it: the start-up of a small query, the
// start-up without any evaluation, and a batch of flop equity queries. Each iteration
// spawns the program and waits for it; the time is the wall time from spawning to the
// exit, and cpu_ms the child's user and system time per iteration.
//
//   build/bench/evaluator/quorvane_eval_benchmark
//
// The same processes measured with /usr/bin/time are in docs/performance.md beside these.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <random>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace {

double childCpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) * 1e-6;
}

// Runs quorvane-eval with `arguments`, its output thrown away; returns its exit status.
int runProgram(const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    std::string program = QUORVANE_EVAL_PATH;
    argv.push_back(program.data());
    std::vector<std::string> copies = arguments;
    for (std::string& argument : copies)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
        return -1;
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void runTimed(benchmark::State& state, const std::vector<std::string>& arguments,
              int expectedExit) {
    const double cpuBefore = childCpuSeconds();
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const int exit = runProgram(arguments);
        const auto end = std::chrono::steady_clock::now();
        if (exit != expectedExit) {
            state.SkipWithError("quorvane-eval did not answer as expected");
            return;
        }
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
    }
    state.counters["cpu_ms"] = (childCpuSeconds() - cpuBefore) * 1000.0 /
                               double(std::max<std::int64_t>(1, state.iterations()));
}

// The query of the issue: one matchup preflop, 1,712,304 boards from the matchup table.
void BM_ProcessEquityAhAsVsKdKc(benchmark::State& state) {
    runTimed(state, {"equity", "AhAs", "KdKc"}, 0);
}
BENCHMARK(BM_ProcessEquityAhAsVsKdKc)->UseManualTime()->Unit(benchmark::kMillisecond);

// What a process costs without any evaluation: loading, static initialisation, the help.
void BM_ProcessHelp(benchmark::State& state) {
    runTimed(state, {"--help"}, 0);
}
BENCHMARK(BM_ProcessHelp)->UseManualTime()->Unit(benchmark::kMillisecond);

// Preflop with five dead cards in one process, the way a script asks it.
void BM_ProcessPreflopTopHalfVsPremiumsFiveDeadCards(benchmark::State& state) {
    runTimed(state,
             {"equity", "22+,A2s+,K9s+,QTs+,JTs,ATo+,KJo+", "TT+,AKs,AKo", "--dead", "2d3h4s5c6d"},
             0);
}
BENCHMARK(BM_ProcessPreflopTopHalfVsPremiumsFiveDeadCards)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// Typical flop queries of study scripts: four pairs of ranges on random flops.
std::string flopQueries(int count) {
    const char* pairs[][2] = {
        {"22+,ATs+,KQs,AJo+", "TT+,AKs,AKo"},
        {"22+,A2s+,K9s+,QTs+,JTs,ATo+,KJo+", "22+,A2s+,K9s+,QTs+,JTs,ATo+,KJo+"},
        {"QQ+,AKs", "JJ-22,AQs+"},
        {"77+,A9s+,KTs+,QJs,AJo+,KQo", "55+,A2s+,K8s+,Q9s+,J9s+,T9s,98s,ATo+,KTo+,QJo"}};
    const char values[] = "23456789TJQKA";
    const char suits[] = "dhsc";
    std::mt19937 random(11);
    std::string text;
    for (int i = 0; i < count; ++i) {
        std::vector<int> cards;
        while (cards.size() < 3) {
            const int card = int(random() % 52);
            bool taken = false;
            for (int other : cards)
                taken = taken || other == card;
            if (!taken)
                cards.push_back(card);
        }
        std::string board;
        for (int card : cards)
            board += std::string{values[card % 13], suits[card / 13]};
        const auto& pair = pairs[i % 4];
        text +=
            std::string("equity \"") + pair[0] + "\" \"" + pair[1] + "\" --board " + board + "\n";
    }
    return text;
}

// A batch of flop equity queries in one process; items per second are queries per second.
void BM_BatchFlopEquityQueries(benchmark::State& state) {
    const int count = int(state.range(0));
    char path[] = "/tmp/quorvane-eval-batch-XXXXXX";
    const int fd = mkstemp(path);
    if (fd < 0) {
        state.SkipWithError("no temporary file");
        return;
    }
    close(fd);
    std::ofstream(path) << flopQueries(count);
    runTimed(state, {"batch", path}, 0);
    std::remove(path);
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_BatchFlopEquityQueries)
    ->Arg(1000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

} // namespace
