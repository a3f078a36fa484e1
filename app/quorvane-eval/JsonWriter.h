#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

// One JSON value written compactly on one line, for the --json answers of quorvane-eval.
// Objects and arrays are opened and closed explicitly; commas go in by themselves. Strings are
// written as given (UTF-8) with the characters JSON requires escaped. Integers keep all their
// digits; a double is written with the fewest digits that read back as the same double.
class JsonWriter {
public:
    explicit JsonWriter(std::ostream& out);

    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    // The name of the next member of the open object.
    JsonWriter& key(const std::string& name);

    JsonWriter& value(const std::string& text);
    JsonWriter& value(const char* text);
    JsonWriter& value(std::int64_t number);
    JsonWriter& value(std::uint64_t number);
    JsonWriter& value(int number) { return value(static_cast<std::int64_t>(number)); }
    JsonWriter& value(unsigned number) { return value(static_cast<std::uint64_t>(number)); }
    JsonWriter& value(double number);
    // A number with a fixed count of decimals (times in milliseconds, say).
    JsonWriter& fixed(double number, int decimals);
    JsonWriter& value(bool flag);
    JsonWriter& null();
    // A number already written as JSON text (a float with its own digits, say).
    JsonWriter& raw(const std::string& number);

    // key(name).value(v) in one call.
    template <typename T>
    JsonWriter& member(const std::string& name, const T& v) {
        key(name);
        return value(v);
    }

    // The text of a string as a JSON string literal, quotes included.
    static std::string quoted(const std::string& text);

private:
    void separate();

    std::ostream& out;
    // One entry per open object or array: whether it has a member or element yet.
    std::vector<bool> open;
    bool afterKey = false;
};
