#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

// A parsed JSON value, for checking the --json answers of quorvane-eval. Numbers keep their
// text, so that counters beyond 2^53 compare exactly.
struct JsonValue {
    enum class Kind { Null, Bool, Number, String, Array, Object };

    Kind kind = Kind::Null;
    bool flag = false;
    std::string text; // a number's digits or a string's content
    std::vector<JsonValue> items;
    std::map<std::string, JsonValue> members;

    // Throws std::runtime_error naming the column of the first error; the whole text must be
    // one value (white space around it allowed).
    static JsonValue parse(const std::string& text);

    bool has(const std::string& name) const { return members.count(name) != 0; }
    // The member of that name; throws std::runtime_error when there is none.
    const JsonValue& operator[](const std::string& name) const;
    unsigned long long unsignedValue() const;
    double doubleValue() const;
};
