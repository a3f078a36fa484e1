#include "CommandReply.h"

#include <ostream>

CommandReply::CommandReply(const std::string& command, bool json, std::ostream& out,
                           std::ostream& err)
    : commandName(command), jsonWanted(json), outStream(out), errStream(err) {}

CommandReply::~CommandReply() = default;

JsonWriter& CommandReply::object() {
    if (!writer) {
        writer = std::make_unique<JsonWriter>(buffer);
        writer->beginObject();
        writer->member("command", commandName);
    }
    return *writer;
}

int CommandReply::fail(int code, const std::string& message, const std::string& usage) {
    if (jsonWanted) {
        // A failure answers with the error alone, whatever the command had written.
        writer.reset();
        buffer.str(std::string());
        JsonWriter& json = object();
        json.member("error", message.empty() ? std::string("bad usage") : message);
        json.member("exit_code", code);
        if (!usage.empty())
            json.member("usage", "quorvane-eval " + usage);
        return code;
    }
    if (!message.empty())
        errStream << "quorvane-eval " << commandName << ": " << message << "\n";
    if (!usage.empty())
        errStream << "usage: quorvane-eval " << usage << "\n";
    return code;
}

void CommandReply::finish() {
    if (!jsonWanted || !writer)
        return;
    object().endObject();
    outStream << buffer.str() << "\n";
    writer.reset();
    buffer.str(std::string());
}
