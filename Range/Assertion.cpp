#include "Range/Assertion.h"

#include <atomic>
#include <cstdio>

namespace Assertion {
namespace {

void writeToStandardError(const char* message, const char* file, int line) {
    std::fprintf(stderr, "Assertion failed: %s (%s:%d)\n", message, file, line);
    std::fflush(stderr);
}

std::atomic<Handler> currentHandler{&writeToStandardError};

} // namespace

void report(const char* message, const char* file, int line) {
    currentHandler.load()(message, file, line);
}

Handler setHandler(Handler handler) {
    return currentHandler.exchange(handler ? handler : &writeToStandardError);
}

} // namespace Assertion
