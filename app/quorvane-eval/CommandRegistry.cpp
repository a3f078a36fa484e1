#include "CommandRegistry.h"

CommandRegistry& CommandRegistry::instance() {
    static CommandRegistry registry;
    return registry;
}

void CommandRegistry::add(const std::string& name, Run run, const std::string& usage) {
    table[name] = Command{run, usage};
}

const CommandRegistry::Command* CommandRegistry::find(const std::string& name) const {
    const auto it = table.find(name);
    return it == table.end() ? nullptr : &it->second;
}
