#pragma once

#include <string>
#include <vector>

// Collects the messages of failed QV_ASSERTs while it lives, instead of printing them.
// Only one recorder may live at a time.
class AssertionRecorder {
public:
    AssertionRecorder();
    ~AssertionRecorder();
    AssertionRecorder(const AssertionRecorder&) = delete;
    AssertionRecorder& operator=(const AssertionRecorder&) = delete;

    // The messages reported so far, in order.
    std::vector<std::string> messages() const;
    // True when `message` was reported at least once.
    bool saw(const std::string& message) const;
    void clear();
};
