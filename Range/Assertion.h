#pragma once

// The project's one assertion facility.
//
// Faults that callers must have ruled out are checked with QV_ASSERT. Unlike <cassert>
// it stays active in release builds: the short message goes to standard error with
// file and line, and then the operation goes on (the caller decides what it yields in
// that case, usually 0). Tests observe reports by installing their own handler.

namespace Assertion {

// Receives every failed assertion. `message` is the short English text of the check.
using Handler = void (*)(const char* message, const char* file, int line);

// Reports a failed assertion to the current handler. Thread-safe.
void report(const char* message, const char* file, int line);

// Replaces the handler; nullptr restores the default one, which writes
// "Assertion failed: <message> (<file>:<line>)" to standard error. Returns the old one.
Handler setHandler(Handler handler);

} // namespace Assertion

#define QV_ASSERT(condition, message)                                                          \
    ((condition) ? static_cast<void>(0) : ::Assertion::report((message), __FILE__, __LINE__))
