#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

// Sub-commands of quorvane-eval. A command gets its arguments (without the program and
// command names) and the two output streams, and returns the process exit code.
class CommandRegistry {
public:
    using Run = int (*)(const std::vector<std::string>& args, std::ostream& out,
                        std::ostream& err);
    struct Command {
        Run run;
        std::string usage; // one line: "equity RANGE1 RANGE2 [--board B] ..."
    };

    static CommandRegistry& instance();
    void add(const std::string& name, Run run, const std::string& usage);
    const Command* find(const std::string& name) const;
    const std::map<std::string, Command>& commands() const { return table; }

    // Registers a command from a file-scope object: static CommandRegistry::Entry e{...};
    struct Entry {
        Entry(const std::string& name, Run run, const std::string& usage) {
            CommandRegistry::instance().add(name, run, usage);
        }
    };

private:
    std::map<std::string, Command> table;
};
