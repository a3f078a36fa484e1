#pragma once

#include "JsonWriter.h"

#include <iosfwd>
#include <memory>
#include <sstream>
#include <string>

// What one command answers, in the format asked for: the lines of text a single call prints,
// or with --json one JSON object on one line. Commands write their text to out() and their
// JSON members to object(); failures go through fail(), which writes the message to the
// error stream as text, or as the object's "error" member in JSON.
class CommandReply {
public:
    CommandReply(const std::string& command, bool json, std::ostream& out, std::ostream& err);
    ~CommandReply();

    CommandReply(const CommandReply&) = delete;
    CommandReply& operator=(const CommandReply&) = delete;

    bool json() const { return jsonWanted; }
    const std::string& command() const { return commandName; }
    std::ostream& out() { return outStream; }
    std::ostream& err() { return errStream; }

    // The answer's JSON object, opened with its "command" member on first use.
    JsonWriter& object();

    // Reports a failure and returns `code` (1 bad input, 2 bad usage). The text form is
    // "quorvane-eval COMMAND: MESSAGE" and, when `usage` is given, "usage: quorvane-eval
    // USAGE" on a line of its own; an empty message leaves only the usage line.
    int fail(int code, const std::string& message, const std::string& usage = std::string());

    // Closes the JSON object and ends its line; nothing to do for text, or for a command that
    // wrote its JSON lines itself (batch). Called once the command returned.
    void finish();

private:
    std::string commandName;
    bool jsonWanted;
    std::ostream& outStream;
    std::ostream& errStream;
    // The JSON answer is kept until finish(), so that a failure can replace it.
    std::ostringstream buffer;
    std::unique_ptr<JsonWriter> writer;
};
