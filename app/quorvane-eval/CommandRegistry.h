#pragma once

#include <map>
#include <string>
#include <vector>

class CommandReply;

// Sub-commands of quorvane-eval. A command gets its arguments (without the program and
// command names, and without --json, which the reply carries) and answers through the reply;
// it returns the process exit code: 0 done, 1 bad input, 2 bad usage.
class CommandRegistry {
public:
    using Run = int (*)(const std::vector<std::string>& args, CommandReply& reply);
    struct Command {
        Run run;
        std::string usage; // one line: "equity RANGE1 RANGE2 [--board B] ..."
        std::string help;  // what --help says below the usage line, indented lines
    };

    static CommandRegistry& instance();
    void add(const std::string& name, Run run, const std::string& usage, const std::string& help);
    const Command* find(const std::string& name) const;
    const std::map<std::string, Command>& commands() const { return table; }

    // Registers a command from a file-scope object: static CommandRegistry::Entry e{...};
    struct Entry {
        Entry(const std::string& name, Run run, const std::string& usage, const std::string& help) {
            CommandRegistry::instance().add(name, run, usage, help);
        }
    };

private:
    std::map<std::string, Command> table;
};
