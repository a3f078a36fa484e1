#include "JsonWriter.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <ostream>

JsonWriter::JsonWriter(std::ostream& out) : out(out) {}

void JsonWriter::separate() {
    if (afterKey) {
        afterKey = false;
        return;
    }
    if (!open.empty()) {
        if (open.back())
            out << ',';
        open.back() = true;
    }
}

JsonWriter& JsonWriter::beginObject() {
    separate();
    out << '{';
    open.push_back(false);
    return *this;
}

JsonWriter& JsonWriter::endObject() {
    out << '}';
    open.pop_back();
    return *this;
}

JsonWriter& JsonWriter::beginArray() {
    separate();
    out << '[';
    open.push_back(false);
    return *this;
}

JsonWriter& JsonWriter::endArray() {
    out << ']';
    open.pop_back();
    return *this;
}

JsonWriter& JsonWriter::key(const std::string& name) {
    separate();
    out << quoted(name) << ':';
    afterKey = true;
    return *this;
}

JsonWriter& JsonWriter::value(const std::string& text) {
    separate();
    out << quoted(text);
    return *this;
}

JsonWriter& JsonWriter::value(const char* text) {
    return value(std::string(text));
}

JsonWriter& JsonWriter::value(std::int64_t number) {
    separate();
    out << number;
    return *this;
}

JsonWriter& JsonWriter::value(std::uint64_t number) {
    separate();
    out << number;
    return *this;
}

JsonWriter& JsonWriter::value(double number) {
    if (!std::isfinite(number))
        return null();
    // The shortest text that reads back as the same double.
    char text[40];
    const std::to_chars_result end = std::to_chars(text, text + sizeof text, number);
    return raw(std::string(text, end.ptr));
}

JsonWriter& JsonWriter::fixed(double number, int decimals) {
    if (!std::isfinite(number))
        return null();
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, number);
    return raw(text);
}

JsonWriter& JsonWriter::value(bool flag) {
    separate();
    out << (flag ? "true" : "false");
    return *this;
}

JsonWriter& JsonWriter::null() {
    separate();
    out << "null";
    return *this;
}

JsonWriter& JsonWriter::raw(const std::string& number) {
    separate();
    out << number;
    return *this;
}

std::string JsonWriter::quoted(const std::string& text) {
    std::string result;
    result.reserve(text.size() + 2);
    result += '"';
    for (const char c : text) {
        switch (c) {
        case '"':
            result += "\\\"";
            break;
        case '\\':
            result += "\\\\";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\r':
            result += "\\r";
            break;
        case '\t':
            result += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
                result += escaped;
            } else {
                result += c;
            }
        }
    }
    result += '"';
    return result;
}
