#pragma once

#include <iosfwd>
#include <string>
#include <vector>

// One quorvane-eval command line, as main runs it and as batch runs each of its lines: the
// first word names the command, --json anywhere asks for a JSON answer, --help for the
// command's usage. Exceptions of the libraries become failures with exit code 1. Returns the
// exit code.
int runCommandLine(const std::vector<std::string>& words, std::ostream& out, std::ostream& err);

// The text of `quorvane-eval --help`.
std::string helpText();
