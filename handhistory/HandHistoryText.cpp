#include "handhistory/HandHistoryText.h"

#include <cstdint>

namespace HandHistoryText {
namespace {

// Code points of the bytes 0x80..0x9F; 0 marks the five unassigned ones.
constexpr char32_t specials[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

char windows1252Of(char32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF))
        return static_cast<char>(code);
    for (int i = 0; i < 32; ++i)
        if (specials[i] != 0 && specials[i] == code)
            return static_cast<char>(0x80 + i);
    return '?';
}

void appendUtf8(std::string& out, char32_t code) {
    if (code < 0x80) {
        out.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (code >> 6)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xE0 | (code >> 12)));
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
}

bool isBlankLine(const std::string& text, std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
        const char c = text[i];
        if (c != ' ' && c != '\t' && c != '\r' && c != '\v' && c != '\f')
            return false;
    }
    return true;
}

} // namespace

std::string toWindows1252(const std::string& utf8) {
    std::string out;
    out.reserve(utf8.size());
    const auto byte = [&utf8](std::size_t i) { return static_cast<std::uint8_t>(utf8[i]); };
    const auto continuation = [&](std::size_t i) {
        return i < utf8.size() && (byte(i) & 0xC0) == 0x80;
    };
    for (std::size_t i = 0; i < utf8.size();) {
        const std::uint8_t lead = byte(i);
        char32_t code = 0;
        std::size_t length = 0;
        if (lead < 0x80) {
            code = lead;
            length = 1;
        } else if ((lead & 0xE0) == 0xC0 && lead >= 0xC2 && continuation(i + 1)) {
            code = (char32_t(lead & 0x1F) << 6) | (byte(i + 1) & 0x3F);
            length = 2;
        } else if ((lead & 0xF0) == 0xE0 && continuation(i + 1) && continuation(i + 2)) {
            code = (char32_t(lead & 0x0F) << 12) | (char32_t(byte(i + 1) & 0x3F) << 6) |
                   (byte(i + 2) & 0x3F);
            length = code >= 0x800 ? 3 : 0;
        } else if ((lead & 0xF8) == 0xF0 && lead <= 0xF4 && continuation(i + 1) &&
                   continuation(i + 2) && continuation(i + 3)) {
            code = 0x10000; // outside Windows-1252 whatever it is
            length = 4;
        }
        if (length == 0) {
            out.push_back(static_cast<char>(lead));
            ++i;
            continue;
        }
        if (code != 0xFEFF)
            out.push_back(windows1252Of(code));
        i += length;
    }
    return out;
}

std::string toUtf8(const std::string& windows1252) {
    std::string out;
    out.reserve(windows1252.size() + windows1252.size() / 16);
    for (const char c : windows1252) {
        const auto b = static_cast<std::uint8_t>(c);
        if (b >= 0x80 && b <= 0x9F && specials[b - 0x80] != 0)
            appendUtf8(out, specials[b - 0x80]);
        else
            appendUtf8(out, b);
    }
    return out;
}

std::vector<Piece> splitAtBlankLines(const std::string& text) {
    std::vector<Piece> pieces;
    Piece current;
    int lineNumber = 0;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        const std::size_t next = end == std::string::npos ? text.size() : end + 1;
        if (end == std::string::npos)
            end = text.size();
        ++lineNumber;
        if (isBlankLine(text, start, end)) {
            if (!current.text.empty())
                pieces.push_back(std::move(current));
            current = Piece{};
        } else {
            if (current.text.empty())
                current.firstLine = lineNumber;
            current.text.append(text, start, next - start);
            current.lastLine = lineNumber;
        }
        start = next;
    }
    if (!current.text.empty())
        pieces.push_back(std::move(current));
    return pieces;
}

} // namespace HandHistoryText
