#pragma once

#include <string>
#include <vector>

// quorvane-eval run as a script runs it, with standard output and standard error apart.
struct CliRun {
    std::string out;
    std::string err;
    int exitCode = -1; // -1 when the process did not start or did not exit normally
};

// Runs <build>/quorvane-eval with `arguments`, which are already quoted for the shell, and
// `input` on its standard input.
CliRun runCli(const std::string& arguments, const std::string& input = std::string());

// The lines of a text, without their line breaks.
std::vector<std::string> linesOf(const std::string& text);

// A text with the measured times written as 0, so that two runs compare equal.
std::string withoutTimes(const std::string& text);
