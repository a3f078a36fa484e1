#include "CommandRegistry.h"

#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

int printUsage(std::ostream& stream) {
    stream << "usage: quorvane-eval COMMAND [ARGUMENTS]\n\ncommands:\n";
    for (const auto& entry : CommandRegistry::instance().commands())
        stream << "  " << entry.second.usage << "\n";
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2)
        return printUsage(std::cerr);
    const std::string name = argv[1];
    if (name == "--help" || name == "-h" || name == "help") {
        printUsage(std::cout);
        return 0;
    }
    const CommandRegistry::Command* command = CommandRegistry::instance().find(name);
    if (!command) {
        std::cerr << "quorvane-eval: unknown command '" << name << "'\n";
        return printUsage(std::cerr);
    }
    try {
        return command->run(std::vector<std::string>(argv + 2, argv + argc), std::cout, std::cerr);
    } catch (const std::exception& error) {
        std::cerr << "quorvane-eval " << name << ": " << error.what() << "\n";
        return 1;
    }
}
