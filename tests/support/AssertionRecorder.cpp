#include "AssertionRecorder.h"

#include "Range/Assertion.h"

#include <algorithm>
#include <cstdlib>
#include <cstdio>
#include <mutex>

namespace {

std::mutex recordMutex;
std::vector<std::string> recorded;
bool recorderAlive = false;

void record(const char* message, const char*, int) {
    std::lock_guard<std::mutex> lock(recordMutex);
    recorded.emplace_back(message);
}

} // namespace

AssertionRecorder::AssertionRecorder() {
    std::lock_guard<std::mutex> lock(recordMutex);
    if (recorderAlive) {
        std::fputs("AssertionRecorder: only one may live at a time\n", stderr);
        std::abort();
    }
    recorderAlive = true;
    recorded.clear();
    Assertion::setHandler(&record);
}

AssertionRecorder::~AssertionRecorder() {
    Assertion::setHandler(nullptr);
    std::lock_guard<std::mutex> lock(recordMutex);
    recorded.clear();
    recorderAlive = false;
}

std::vector<std::string> AssertionRecorder::messages() const {
    std::lock_guard<std::mutex> lock(recordMutex);
    return recorded;
}

bool AssertionRecorder::saw(const std::string& message) const {
    std::lock_guard<std::mutex> lock(recordMutex);
    return std::find(recorded.begin(), recorded.end(), message) != recorded.end();
}

void AssertionRecorder::clear() {
    std::lock_guard<std::mutex> lock(recordMutex);
    recorded.clear();
}
