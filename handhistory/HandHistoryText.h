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

} // namespace HandHistoryText
