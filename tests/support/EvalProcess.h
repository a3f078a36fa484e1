#pragma once

#include <string>

// quorvane-eval run as players and scripts run it: a separate process of the build's binary.
struct EvalRun {
    std::string output; // standard output and standard error together
    int exitCode = -1;  // -1 when the process did not start or did not exit normally
};

// Runs <build>/quorvane-eval with `arguments`, which are already quoted for the shell.
EvalRun runQuorvaneEval(const std::string& arguments);
