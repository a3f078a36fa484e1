#include "CliRun.h"

#include "support/TestEnvironment.h"

#include <cstdio>
#include <fstream>
#include <regex>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string temporaryPath(const char* stem) {
    std::string pattern = std::string("/tmp/") + stem + "-XXXXXX";
    const int fd = mkstemp(pattern.data());
    if (fd >= 0)
        close(fd);
    return pattern;
}

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace

CliRun runCli(const std::string& arguments, const std::string& input) {
    CliRun run;
    const std::string errPath = temporaryPath("quorvane-eval-err");
    const std::string inPath = temporaryPath("quorvane-eval-in");
    std::ofstream(inPath, std::ios::binary) << input;
    const std::string command = "'" + TestEnvironment::buildFolder() + "/quorvane-eval' " +
                                arguments + " <'" + inPath + "' 2>'" + errPath + "'";
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe) {
        char buffer[4096];
        std::size_t read = 0;
        while ((read = std::fread(buffer, 1, sizeof buffer, pipe)) > 0)
            run.out.append(buffer, read);
        const int status = pclose(pipe);
        run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    run.err = contentOf(errPath);
    std::remove(errPath.c_str());
    std::remove(inPath.c_str());
    return run;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line))
        lines.push_back(line);
    return lines;
}

std::string withoutTimes(const std::string& text) {
    static const std::regex textTime("time [0-9.]+ ms");
    static const std::regex jsonTime("\"time_ms\":[0-9.]+");
    return std::regex_replace(std::regex_replace(text, textTime, "time 0 ms"), jsonTime,
                              "\"time_ms\":0");
}
