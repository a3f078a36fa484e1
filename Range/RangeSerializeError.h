#pragma once

#include <exception>
#include <string>

namespace Range {
namespace Exception {

// A range tree file (or text memento) that cannot be read into the tree as asked. Nodes
// that were added before the error stay in the tree.
class RangeSerializeError : public std::exception {
public:
    explicit RangeSerializeError(std::string message) : message_(std::move(message)) {}

    const char* what() const noexcept override { return message_.c_str(); }
    const std::string& message() const { return message_; }

private:
    std::string message_;
};

} // namespace Exception
} // namespace Range
