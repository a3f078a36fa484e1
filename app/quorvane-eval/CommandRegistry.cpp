#include "CommandRegistry.h"

CommandRegistry& CommandRegistry::instance() {
    static CommandRegistry registry;
    return registry;
}

void CommandRegistry::add(const std::string& name, Run run, const std::string& usage,
                          const std::string& help) {
    table[name] = Command{run, usage, help};
}

const CommandRegistry::Command* CommandRegistry::find(const std::string& name) const {
    const auto it = table.find(name);
    return it == table.end() ? nullptr : &it->second;
}
