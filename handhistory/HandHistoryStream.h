#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// A read position in a hand history text, with scanners that never look past the end of
// the current line unless they say so. The text is borrowed and must outlive the stream.
//
// Blanks are ' ', '\t', '\r', '\v' and '\f'; the newline '\n' ends a line. Numbers are
// unsigned decimals without exponent ("12", "0.5", ".5", "12."), read independently of
// the C locale.
class HandHistoryStream {
public:
    explicit HandHistoryStream(std::string_view text);

    bool atEnd() const { return pos >= text.size(); }
    std::size_t position() const { return pos; }
    void seek(std::size_t position);

    // Reads forward in the current line up to the end of `word`: true, and the stream stands
    // behind the word; or false, and the stream stands behind the line's newline. A partial
    // match falls back character by character, so "aab" is found in "aaab".
    bool lineHas(std::string_view word);
    // The same test for `word` standing right at the read position.
    bool lineBegins(std::string_view word);

    // The rest of the current line, without its newline, the stream unmoved.
    std::string_view restOfLine() const;
    // The same without a trailing '\r'.
    std::string_view restOfLineTrimmed() const;
    bool restOfLineHas(std::string_view word) const;
    bool restOfLineBegins(std::string_view word) const;

    // Behind the next newline (or at the end).
    void skipLine();
    // The rest of the line without newline and trailing '\r'; the stream behind the newline.
    std::string readLine();
    // Reads up to `delimiter` inside the line: true with the text before it in `out` and the
    // stream behind the delimiter; false (stream unmoved) when the line ends first.
    bool readUpTo(char delimiter, std::string& out);
    // Blanks, then everything up to the next blank or line end.
    std::string readWord();

    void skipBlanks();
    // The next character of the line after blanks; false at a line end.
    bool peekChar(char& c);
    // After blanks, `literal` when it stands there (the stream behind it), else unmoved.
    bool consume(std::string_view literal);
    // After blanks, a decimal number; false (stream behind the blanks) when none stands.
    bool readNumber(float& value);
    // After blanks, an unsigned integer that fits an int.
    bool readInteger(int& value);

private:
    std::size_t lineEnd() const;

    std::string_view text;
    std::size_t pos = 0;
};
