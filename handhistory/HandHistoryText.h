#pragma once

#include <string>
#include <vector>

// The text boundary of the hand history import: files and the clipboard hold UTF-8 (or,
// from old programs, Windows-1252), while normalisation and parser read Windows-1252 bytes,
// in which each currency sign is one byte.
namespace HandHistoryText {

// UTF-8 to Windows-1252. A byte order mark is dropped; characters that Windows-1252 lacks
// become '?'; bytes that are not valid UTF-8 are taken as Windows-1252 already.
std::string toWindows1252(const std::string& utf8);
// Windows-1252 to UTF-8, for output. The five unassigned bytes keep their code points.
std::string toUtf8(const std::string& windows1252);

// Bytes of a file or the clipboard, in whatever encoding they came, to Windows-1252 with
// "\n" line ends: UTF-8 with or without byte order mark, UTF-16 LE or BE with byte order
// mark, and anything that is not valid UTF-8 taken as Windows-1252. "\r\n" and a "\r"
// alone end a line; NUL bytes are dropped.
std::string decode(const std::string& bytes);
// Only the line ends and NUL bytes of `decode`, for text that is Windows-1252 already.
std::string withLineEnds(const std::string& text);

// One hand of a text with many: its text and the (1-based) numbers of its first and last
// line in the whole text.
struct Piece {
    std::string text;
    int firstLine = 0;
    int lastLine = 0;
};

// Splits a text of many hands at its blank lines (lines of white space only); runs of
// blank lines count as one separator, and no piece is blank.
std::vector<Piece> splitAtBlankLines(const std::string& text);

// The hands of a pasted text: the pieces between blank lines; of an XML piece that holds
// several <game> elements one piece per game, each with the session's head; of a text piece
// whose first line's head (up to its first digit) begins a later line again, one piece per
// head, for hands pasted without blank lines between them.
std::vector<Piece> splitHands(const std::string& text);

} // namespace HandHistoryText
