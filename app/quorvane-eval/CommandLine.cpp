#include "CommandLine.h"

#include "CommandRegistry.h"
#include "CommandReply.h"

#include <algorithm>
#include <exception>
#include <ostream>
#include <sstream>

namespace {

const char* const jsonHelp =
    "--json (with any command, or once for a whole batch) answers with one JSON object on\n"
    "one line instead of text: the command, what it was given, the exact counters, the\n"
    "equities as fractions (\"equity1\": 0.8125548...) and the time taken in milliseconds\n"
    "(\"time_ms\"). A failure answers {\"command\": ..., \"error\": ..., \"exit_code\": 1 or 2}\n"
    "on standard output instead of a message on standard error.\n";

const char* const exitHelp =
    "Exit codes: 0 done, 1 bad input (the message names the bad token, card or board),\n"
    "2 bad usage. batch exits with the number of queries that failed (at most 125), or 2\n"
    "when it cannot read its input. See quorvane-eval(1).\n";

std::string commandList() {
    std::ostringstream text;
    for (const auto& entry : CommandRegistry::instance().commands())
        text << "  " << entry.second.usage << "\n" << entry.second.help;
    return text.str();
}

} // namespace

std::string helpText() {
    return "usage: quorvane-eval COMMAND [ARGUMENTS] [--json]\n\n"
           "Exact equities, range texts, board hits and hand histories for scripts, with the\n"
           "engine and the range text of the program.\n\ncommands:\n" +
           commandList() + "\n" + jsonHelp + "\n" + exitHelp;
}

int runCommandLine(const std::vector<std::string>& words, std::ostream& out, std::ostream& err) {
    std::vector<std::string> rest;
    bool json = false;
    bool help = false;
    for (const std::string& word : words) {
        if (word == "--json")
            json = true;
        else if (word == "--help" && !rest.empty())
            help = true;
        else
            rest.push_back(word);
    }
    if (rest.empty() || rest.front() == "--help" || rest.front() == "-h" ||
        rest.front() == "help") {
        const bool asked = !rest.empty();
        (asked ? out : err) << helpText();
        return asked ? 0 : 2;
    }
    const std::string name = rest.front();
    CommandReply reply(name, json, out, err);
    const CommandRegistry::Command* command = CommandRegistry::instance().find(name);
    if (!command) {
        const std::string message = "unknown command '" + name + "'";
        if (json) {
            reply.fail(2, message);
            reply.finish();
        } else {
            err << "quorvane-eval: " << message << " (quorvane-eval --help lists them)\n"
                << "usage: quorvane-eval COMMAND [ARGUMENTS] [--json]\n";
        }
        return 2;
    }
    if (help) {
        out << "usage: quorvane-eval " << command->usage << "\n" << command->help;
        return 0;
    }
    int code = 1;
    try {
        code = command->run(std::vector<std::string>(rest.begin() + 1, rest.end()), reply);
    } catch (const std::exception& error) {
        code = reply.fail(1, error.what());
    }
    reply.finish();
    return code;
}
