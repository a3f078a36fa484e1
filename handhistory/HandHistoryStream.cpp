#include "handhistory/HandHistoryStream.h"

#include <charconv>

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

HandHistoryStream::HandHistoryStream(std::string_view text) : text(text) {}

void HandHistoryStream::seek(std::size_t position) {
    pos = position < text.size() ? position : text.size();
}

std::size_t HandHistoryStream::lineEnd() const {
    const std::size_t end = text.find('\n', pos);
    return end == std::string_view::npos ? text.size() : end;
}

bool HandHistoryStream::lineHas(std::string_view word) {
    const std::size_t end = lineEnd();
    const std::size_t found = text.substr(pos, end - pos).find(word);
    if (found != std::string_view::npos) {
        pos += found + word.size();
        return true;
    }
    pos = end < text.size() ? end + 1 : end;
    return false;
}

bool HandHistoryStream::lineBegins(std::string_view word) {
    if (restOfLineBegins(word)) {
        pos += word.size();
        return true;
    }
    skipLine();
    return false;
}

std::string_view HandHistoryStream::restOfLine() const {
    return text.substr(pos, lineEnd() - pos);
}

std::string_view HandHistoryStream::restOfLineTrimmed() const {
    std::string_view line = restOfLine();
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

bool HandHistoryStream::restOfLineHas(std::string_view word) const {
    return restOfLine().find(word) != std::string_view::npos;
}

bool HandHistoryStream::restOfLineBegins(std::string_view word) const {
    const std::string_view line = restOfLine();
    return line.size() >= word.size() && line.substr(0, word.size()) == word;
}

void HandHistoryStream::skipLine() {
    const std::size_t end = lineEnd();
    pos = end < text.size() ? end + 1 : end;
}

std::string HandHistoryStream::readLine() {
    std::string line(restOfLineTrimmed());
    skipLine();
    return line;
}

bool HandHistoryStream::readUpTo(char delimiter, std::string& out) {
    const std::string_view line = restOfLine();
    const std::size_t found = line.find(delimiter);
    if (found == std::string_view::npos)
        return false;
    out.assign(line.substr(0, found));
    pos += found + 1;
    return true;
}

std::string HandHistoryStream::readWord() {
    skipBlanks();
    const std::size_t start = pos;
    while (pos < text.size() && text[pos] != '\n' && !isBlank(text[pos]))
        ++pos;
    return std::string(text.substr(start, pos - start));
}

void HandHistoryStream::skipBlanks() {
    while (pos < text.size() && isBlank(text[pos]))
        ++pos;
}

bool HandHistoryStream::peekChar(char& c) {
    skipBlanks();
    if (pos >= text.size() || text[pos] == '\n')
        return false;
    c = text[pos];
    return true;
}

bool HandHistoryStream::consume(std::string_view literal) {
    const std::size_t start = pos;
    skipBlanks();
    if (text.substr(pos, literal.size()) == literal) {
        pos += literal.size();
        return true;
    }
    pos = start;
    return false;
}

bool HandHistoryStream::readNumber(float& value) {
    skipBlanks();
    std::size_t end = pos;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    const std::size_t integerDigits = end - pos;
    std::size_t fractionDigits = 0;
    if (end < text.size() && text[end] == '.') {
        ++end;
        while (end < text.size() && isDigit(text[end])) {
            ++end;
            ++fractionDigits;
        }
    }
    if (integerDigits + fractionDigits == 0)
        return false;
    float parsed = 0.0f;
    const auto result =
        std::from_chars(text.data() + pos, text.data() + end, parsed, std::chars_format::fixed);
    if (result.ec != std::errc())
        return false;
    value = parsed;
    pos = end;
    return true;
}

bool HandHistoryStream::readInteger(int& value) {
    skipBlanks();
    std::size_t end = pos;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    if (end == pos)
        return false;
    int parsed = 0;
    const auto result = std::from_chars(text.data() + pos, text.data() + end, parsed);
    if (result.ec != std::errc())
        return false;
    value = parsed;
    pos = end;
    return true;
}
