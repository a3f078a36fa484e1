#include "EvalProcess.h"

#include "TestEnvironment.h"

#include <cstdio>
#include <sys/wait.h>

EvalRun runQuorvaneEval(const std::string& arguments) {
    EvalRun run;
    const std::string command =
        "'" + TestEnvironment::buildFolder() + "/quorvane-eval' " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return run;
    char buffer[4096];
    std::size_t read = 0;
    while ((read = std::fread(buffer, 1, sizeof buffer, pipe)) > 0)
        run.output.append(buffer, read);
    const int status = pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}
