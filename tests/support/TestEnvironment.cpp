#include "TestEnvironment.h"

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

// The build system passes the real folders; targets that compile this file on their own
// (sanitizer builds) fall back to the environment and the working directory.
#ifndef QUORVANE_TEST_BUILD_DIR
#define QUORVANE_TEST_BUILD_DIR "."
#endif
#ifndef QUORVANE_TEST_SOURCE_DIR
#define QUORVANE_TEST_SOURCE_DIR "."
#endif
#ifndef QUORVANE_TEST_SHARED_DIR
#define QUORVANE_TEST_SHARED_DIR "../shared"
#endif

namespace TestEnvironment {
namespace {

std::string fromEnvironment(const char* name, const char* fallback) {
    const char* value = std::getenv(name);
    return value && *value ? std::string(value) : std::string(fallback);
}

} // namespace

std::string isolateUserFolders() {
    std::string pattern = "/tmp/quorvane-test-XXXXXX";
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("cannot create a temporary settings folder");
    const std::string config = pattern + "/config";
    mkdir(config.c_str(), 0700);
    setenv("HOME", pattern.c_str(), 1);
    setenv("XDG_CONFIG_HOME", config.c_str(), 1);
    setenv("XDG_DATA_HOME", (pattern + "/data").c_str(), 1);
    setenv("XDG_CACHE_HOME", (pattern + "/cache").c_str(), 1);
    return pattern;
}

std::string outputFolder() {
    const std::string folder = fromEnvironment("QUORVANE_BUILD_DIR", QUORVANE_TEST_BUILD_DIR) + "/test-output";
    mkdir(folder.c_str(), 0755);
    return folder;
}

std::string buildFolder() { return fromEnvironment("QUORVANE_BUILD_DIR", QUORVANE_TEST_BUILD_DIR); }

std::string sourceFolder() { return fromEnvironment("QUORVANE_SOURCE_DIR", QUORVANE_TEST_SOURCE_DIR); }

std::string sharedFolder() { return fromEnvironment("QUORVANE_SHARED_DIR", QUORVANE_TEST_SHARED_DIR); }

} // namespace TestEnvironment
