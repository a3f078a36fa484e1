#pragma once

#include <cstdio>
#include <string>
#include <sys/types.h>

struct SchemaRows;

// quorvane-eval's side of the schema helper (SchemaProtocol.h): starts quorvane-eval-schemas
// from the folder of the running program on the first request and keeps it for the rest of
// the process, so that a batch of many hits queries starts it once.
class SchemaRowsClient {
public:
    static SchemaRowsClient& instance();
    ~SchemaRowsClient();

    SchemaRowsClient(const SchemaRowsClient&) = delete;
    SchemaRowsClient& operator=(const SchemaRowsClient&) = delete;

    // Evaluates the schema called `schema` on a technical range text. On failure returns false
    // with the exit code (1 bad input, such as an unknown schema; 2 when the helper could not
    // be run) and the message.
    bool evaluate(const std::string& technicalRange, const std::string& board,
                  const std::string& dead, const std::string& schema, bool absolute,
                  SchemaRows& rows, int& code, std::string& message);

private:
    SchemaRowsClient() = default;
    bool start(std::string& message);
    void stop();

    pid_t helper = -1;
    int socket = -1;
    std::FILE* answers = nullptr;
};
