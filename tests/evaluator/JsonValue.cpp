#include "JsonValue.h"

#include <cctype>
#include <cstdlib>
#include <stdexcept>

namespace {

class Parser {
public:
    explicit Parser(const std::string& text) : s(text) {}

    JsonValue document() {
        JsonValue v = value();
        blanks();
        if (i != s.size())
            fail("text after the value");
        return v;
    }

private:
    [[noreturn]] void fail(const std::string& what) const {
        throw std::runtime_error("JSON: " + what + " at column " + std::to_string(i + 1));
    }

    void blanks() {
        while (i < s.size() && (s[i] == ' ' || s[i] == '\t' || s[i] == '\n' || s[i] == '\r'))
            ++i;
    }

    void expect(char c) {
        blanks();
        if (i >= s.size() || s[i] != c)
            fail(std::string("'") + c + "' expected");
        ++i;
    }

    bool word(const char* w) {
        const std::string text(w);
        if (s.compare(i, text.size(), text) != 0)
            return false;
        i += text.size();
        return true;
    }

    std::string string() {
        expect('"');
        std::string out;
        while (true) {
            if (i >= s.size())
                fail("unterminated string");
            const char c = s[i++];
            if (c == '"')
                return out;
            if (static_cast<unsigned char>(c) < 0x20)
                fail("control character in a string");
            if (c != '\\') {
                out += c;
                continue;
            }
            if (i >= s.size())
                fail("unterminated escape");
            const char e = s[i++];
            switch (e) {
            case '"':
            case '\\':
            case '/':
                out += e;
                break;
            case 'n':
                out += '\n';
                break;
            case 't':
                out += '\t';
                break;
            case 'r':
                out += '\r';
                break;
            case 'b':
                out += '\b';
                break;
            case 'f':
                out += '\f';
                break;
            case 'u': {
                if (i + 4 > s.size())
                    fail("short \\u escape");
                const unsigned code = std::stoul(s.substr(i, 4), nullptr, 16);
                i += 4;
                if (code < 0x80) {
                    out += char(code);
                } else if (code < 0x800) {
                    out += char(0xC0 | (code >> 6));
                    out += char(0x80 | (code & 0x3F));
                } else {
                    out += char(0xE0 | (code >> 12));
                    out += char(0x80 | ((code >> 6) & 0x3F));
                    out += char(0x80 | (code & 0x3F));
                }
                break;
            }
            default:
                fail("unknown escape");
            }
        }
    }

    std::string number() {
        const std::size_t start = i;
        if (i < s.size() && s[i] == '-')
            ++i;
        if (i >= s.size() || !std::isdigit(static_cast<unsigned char>(s[i])))
            fail("digit expected");
        if (s[i] == '0' && i + 1 < s.size() && std::isdigit(static_cast<unsigned char>(s[i + 1])))
            fail("leading zero");
        while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i])))
            ++i;
        if (i < s.size() && s[i] == '.') {
            ++i;
            if (i >= s.size() || !std::isdigit(static_cast<unsigned char>(s[i])))
                fail("digit expected after '.'");
            while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i])))
                ++i;
        }
        if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
            ++i;
            if (i < s.size() && (s[i] == '+' || s[i] == '-'))
                ++i;
            if (i >= s.size() || !std::isdigit(static_cast<unsigned char>(s[i])))
                fail("digit expected in the exponent");
            while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i])))
                ++i;
        }
        return s.substr(start, i - start);
    }

    JsonValue value() {
        blanks();
        if (i >= s.size())
            fail("value expected");
        JsonValue v;
        const char c = s[i];
        if (c == '{') {
            ++i;
            v.kind = JsonValue::Kind::Object;
            blanks();
            if (i < s.size() && s[i] == '}') {
                ++i;
                return v;
            }
            while (true) {
                const std::string name = string();
                expect(':');
                if (v.members.count(name))
                    fail("member \"" + name + "\" twice");
                v.members[name] = value();
                blanks();
                if (i < s.size() && s[i] == ',') {
                    ++i;
                    continue;
                }
                expect('}');
                return v;
            }
        }
        if (c == '[') {
            ++i;
            v.kind = JsonValue::Kind::Array;
            blanks();
            if (i < s.size() && s[i] == ']') {
                ++i;
                return v;
            }
            while (true) {
                v.items.push_back(value());
                blanks();
                if (i < s.size() && s[i] == ',') {
                    ++i;
                    continue;
                }
                expect(']');
                return v;
            }
        }
        if (c == '"') {
            v.kind = JsonValue::Kind::String;
            v.text = string();
            return v;
        }
        if (word("true")) {
            v.kind = JsonValue::Kind::Bool;
            v.flag = true;
            return v;
        }
        if (word("false")) {
            v.kind = JsonValue::Kind::Bool;
            return v;
        }
        if (word("null"))
            return v;
        v.kind = JsonValue::Kind::Number;
        v.text = number();
        return v;
    }

    const std::string& s;
    std::size_t i = 0;
};

} // namespace

JsonValue JsonValue::parse(const std::string& text) {
    return Parser(text).document();
}

const JsonValue& JsonValue::operator[](const std::string& name) const {
    const auto it = members.find(name);
    if (it == members.end())
        throw std::runtime_error("JSON: no member \"" + name + "\"");
    return it->second;
}

unsigned long long JsonValue::unsignedValue() const {
    if (kind != Kind::Number)
        throw std::runtime_error("JSON: not a number");
    return std::stoull(text);
}

double JsonValue::doubleValue() const {
    if (kind != Kind::Number)
        throw std::runtime_error("JSON: not a number");
    return std::strtod(text.c_str(), nullptr);
}
