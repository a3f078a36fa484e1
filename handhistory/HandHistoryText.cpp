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

std::string fromUtf16(const std::string& bytes, bool bigEndian) {
    std::string out;
    out.reserve(bytes.size() / 2);
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const auto a = static_cast<std::uint8_t>(bytes[i]);
        const auto b = static_cast<std::uint8_t>(bytes[i + 1]);
        const char32_t unit = bigEndian ? (char32_t(a) << 8 | b) : (char32_t(b) << 8 | a);
        // A surrogate pair is one character that Windows-1252 lacks.
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            out.push_back('?');
            i += 2;
            continue;
        }
        out.push_back(windows1252Of(unit));
    }
    return out;
}

// The complete elements of an XML head ("<general>...</general>", "<description .../>"),
// without the opening tags of elements that close only after the hands.
std::string completeElementsOf(const std::string& head) {
    std::string out;
    for (const char* name : {"general", "description"}) {
        const std::string open = std::string("<") + name;
        const std::size_t begin = head.find(open);
        if (begin == std::string::npos)
            continue;
        const std::size_t selfClose = head.find("/>", begin);
        const std::size_t tagEnd = head.find('>', begin);
        if (tagEnd != std::string::npos && selfClose != std::string::npos &&
            selfClose + 1 == tagEnd) {
            out += head.substr(begin, tagEnd + 1 - begin) + "\n";
            continue;
        }
        const std::string close = std::string("</") + name + ">";
        const std::size_t end = head.find(close, begin);
        if (end != std::string::npos)
            out += head.substr(begin, end + close.size() - begin) + "\n";
    }
    return out;
}

void splitXmlGames(const Piece& piece, std::vector<Piece>& out) {
    const std::string& text = piece.text;
    const bool upper = text.find("<Game ") != std::string::npos;
    const std::string open = upper ? "<Game " : "<game ";
    const std::string close = upper ? "</Game>" : "</game>";
    std::size_t first = text.find(open);
    if (first == std::string::npos || text.find(open, first + 1) == std::string::npos) {
        out.push_back(piece);
        return;
    }
    const std::string head = completeElementsOf(text.substr(0, first));
    for (std::size_t begin = first; begin != std::string::npos;) {
        const std::size_t end = text.find(close, begin);
        const std::size_t stop = end == std::string::npos ? text.size() : end + close.size();
        Piece game = piece;
        game.text = "<hands>\n" + head + text.substr(begin, stop - begin) + "\n</hands>\n";
        out.push_back(std::move(game));
        begin = text.find(open, stop);
    }
}

// The head of a hand up to its first digit ("PokerStars Hand #", "***** Hand History for
// Game "): where a piece repeats its first line's head, another hand begins, as when hands
// were pasted without blank lines between them.
void splitAtRepeatedHeads(Piece& piece, std::vector<Piece>& out) {
    const std::string& text = piece.text;
    std::size_t firstEnd = text.find('\n');
    if (firstEnd == std::string::npos) {
        out.push_back(std::move(piece));
        return;
    }
    std::size_t digit = 0;
    while (digit < firstEnd && (text[digit] < '0' || text[digit] > '9'))
        ++digit;
    std::string head = text.substr(0, digit);
    if (head.size() >= 3 && head.compare(0, 3, "\xEF\xBB\xBF") == 0)
        head.erase(0, 3);
    bool letter = false;
    for (const char c : head)
        letter = letter || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    if (head.size() < 6 || digit == firstEnd || !letter || head.compare(0, 5, "Seat ") == 0) {
        out.push_back(std::move(piece));
        return;
    }
    Piece current{std::string(), piece.firstLine, piece.firstLine};
    int line = piece.firstLine;
    for (std::size_t start = 0; start < text.size(); ++line) {
        std::size_t end = text.find('\n', start);
        end = end == std::string::npos ? text.size() : end + 1;
        if (start > 0 && text.compare(start, head.size(), head) == 0 && !current.text.empty()) {
            out.push_back(std::move(current));
            current = Piece{std::string(), line, line};
        }
        current.text.append(text, start, end - start);
        current.lastLine = line;
        start = end;
    }
    out.push_back(std::move(current));
}

} // namespace

std::string withLineEnds(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\0')
            continue;
        if (c == '\r') {
            out.push_back('\n');
            std::size_t next = i + 1;
            while (next < text.size() && text[next] == '\0')
                ++next;
            if (next < text.size() && text[next] == '\n')
                i = next;
            continue;
        }
        out.push_back(c);
    }
    return out;
}

std::string decode(const std::string& bytes) {
    if (bytes.size() >= 2 && bytes[0] == '\xFF' && bytes[1] == '\xFE')
        return withLineEnds(fromUtf16(bytes, false));
    if (bytes.size() >= 2 && bytes[0] == '\xFE' && bytes[1] == '\xFF')
        return withLineEnds(fromUtf16(bytes, true));
    return withLineEnds(toWindows1252(bytes));
}

std::vector<Piece> splitHands(const std::string& text) {
    std::vector<Piece> hands;
    for (Piece& piece : splitAtBlankLines(text)) {
        std::size_t start = 0;
        while (start < piece.text.size() &&
               (piece.text[start] == ' ' || piece.text[start] == '\t' || piece.text[start] == '\n'))
            ++start;
        if (start < piece.text.size() && piece.text[start] == '<')
            splitXmlGames(piece, hands);
        else
            splitAtRepeatedHeads(piece, hands);
    }
    return hands;
}

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
