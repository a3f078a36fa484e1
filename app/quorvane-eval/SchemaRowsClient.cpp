#include "SchemaRowsClient.h"

#include "SchemaProtocol.h"
#include "SchemaRows.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace {

// The folder of the running program, from /proc/self/exe.
std::string programFolder() {
    std::vector<char> path(4096);
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size() - 1);
    if (length <= 0)
        return ".";
    std::string text(path.data(), std::size_t(length));
    const std::size_t slash = text.rfind('/');
    return slash == std::string::npos ? "." : text.substr(0, slash);
}

bool sendAll(int fd, const std::string& text) {
    std::size_t sent = 0;
    while (sent < text.size()) {
        // A socket rather than a pipe: MSG_NOSIGNAL turns a helper that died into an error
        // here instead of a SIGPIPE that would end quorvane-eval.
        const ssize_t n = send(fd, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        sent += std::size_t(n);
    }
    return true;
}

bool readLine(std::FILE* in, std::string& line) {
    line.clear();
    int c;
    while ((c = std::fgetc(in)) != EOF) {
        if (c == '\n')
            return true;
        line += char(c);
    }
    return false;
}

} // namespace

SchemaRowsClient& SchemaRowsClient::instance() {
    static SchemaRowsClient client;
    return client;
}

SchemaRowsClient::~SchemaRowsClient() {
    stop();
}

bool SchemaRowsClient::start(std::string& message) {
    const std::string path = programFolder() + "/quorvane-eval-schemas";
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
        message = std::string("cannot talk to quorvane-eval-schemas: ") + std::strerror(errno);
        return false;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], 1);
    char* const arguments[] = {const_cast<char*>(path.c_str()), nullptr};
    const int failure = posix_spawn(&helper, path.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    if (failure != 0) {
        helper = -1;
        close(ends[0]);
        message = "cannot run " + path + ": " + std::strerror(failure);
        return false;
    }
    socket = ends[0];
    answers = fdopen(fcntl(socket, F_DUPFD_CLOEXEC, 0), "r");
    if (!answers) {
        stop();
        message = std::string("cannot read from quorvane-eval-schemas: ") + std::strerror(errno);
        return false;
    }
    return true;
}

void SchemaRowsClient::stop() {
    if (answers) {
        std::fclose(answers);
        answers = nullptr;
    }
    if (socket >= 0) {
        close(socket); // the helper reads the end of its input and leaves
        socket = -1;
    }
    if (helper > 0) {
        int status = 0;
        while (waitpid(helper, &status, 0) < 0 && errno == EINTR) {
        }
        helper = -1;
    }
}

bool SchemaRowsClient::evaluate(const std::string& technicalRange, const std::string& board,
                                const std::string& dead, const std::string& schema, bool absolute,
                                SchemaRows& rows, int& code, std::string& message) {
    if (helper < 0 && !start(message)) {
        code = 2;
        return false;
    }
    const std::string request =
        SchemaProtocol::line({"rows", technicalRange, board, dead, schema, absolute ? "1" : "0"}) +
        "\n";
    rows = SchemaRows();
    bool answered = false;
    bool failed = false;
    std::string line;
    if (sendAll(socket, request)) {
        while (readLine(answers, line)) {
            const std::vector<std::string> f = SchemaProtocol::fields(line);
            if (f[0] == "end") {
                answered = true;
                break;
            }
            if (f[0] == "error" && f.size() == 3) {
                failed = true;
                code = std::atoi(f[1].c_str());
                message = f[2];
            } else if (f[0] == "schema" && f.size() == 4) {
                rows.schema = f[1];
                rows.hidesEmptyRows = f[2] == "1";
                rows.combinations = std::strtoull(f[3].c_str(), nullptr, 10);
            } else if (f[0] == "group" && f.size() == 3) {
                rows.groups.push_back({f[1], f[2] == "1", {}});
            } else if (f[0] == "row" && f.size() == 6 && !rows.groups.empty()) {
                SchemaRows::Row row;
                row.depth = unsigned(std::strtoul(f[1].c_str(), nullptr, 10));
                row.combinations = std::uint32_t(std::strtoul(f[2].c_str(), nullptr, 10));
                row.share = std::strtof(f[3].c_str(), nullptr);
                row.percentText = f[4];
                row.name = f[5];
                rows.groups.back().rows.push_back(row);
            }
        }
    }
    if (!answered) {
        stop();
        code = 2;
        message = "quorvane-eval-schemas ended without an answer";
        return false;
    }
    return !failed;
}
