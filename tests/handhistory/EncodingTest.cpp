// Text as a clipboard or a file brings it: the same real hand in every encoding and with
// every kind of line end reads to the same record. The encodings are made here from the
// UTF-8 file, by this test's own converters.

#include "HandHistorySamples.h"

#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

// UTF-8 to code points (the sample files are valid UTF-8).
std::vector<char32_t> codePoints(const std::string& utf8) {
    std::vector<char32_t> out;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto b = static_cast<std::uint8_t>(utf8[i]);
        if (b < 0x80) {
            out.push_back(b);
            i += 1;
        } else if ((b & 0xE0) == 0xC0) {
            out.push_back((char32_t(b & 0x1F) << 6) | (utf8[i + 1] & 0x3F));
            i += 2;
        } else if ((b & 0xF0) == 0xE0) {
            out.push_back((char32_t(b & 0x0F) << 12) | (char32_t(utf8[i + 1] & 0x3F) << 6) |
                          (utf8[i + 2] & 0x3F));
            i += 3;
        } else {
            out.push_back('?');
            i += 4;
        }
    }
    return out;
}

std::string utf16(const std::string& utf8, bool bigEndian) {
    std::string out = bigEndian ? std::string("\xFE\xFF", 2) : std::string("\xFF\xFE", 2);
    for (const char32_t c : codePoints(utf8)) {
        if (c == 0xFEFF)
            continue;
        const char high = static_cast<char>(c >> 8);
        const char low = static_cast<char>(c & 0xFF);
        out += bigEndian ? std::string{high, low} : std::string{low, high};
    }
    return out;
}

std::string windows1252(const std::string& utf8) {
    std::string out;
    for (const char32_t c : codePoints(utf8)) {
        if (c == 0xFEFF)
            continue;
        if (c == 0x20AC)
            out.push_back('\x80');
        else
            out.push_back(c < 0x100 ? static_cast<char>(c) : '?');
    }
    return out;
}

// A real hand with the euro sign, its second player renamed to a name with accents.
std::string euroHand() {
    const std::string text = sampleHandsOf("winamax-player-withshowdown.txt").at(0).text;
    return replacedAll(text, "nico86190", "Jos\xC3\xA9 Mu\xC3\xB1oz");
}

std::string summaryOf(const HandHistoryParser& p) {
    std::string out =
        std::string(1, p.currency()) + "|" + std::to_string(p.bigBlind()) + "|" + p.board() + "|";
    for (const HandHistorySeat& seat : p.seats())
        out += seat.name + "=" + std::to_string(p.stacksAtStart().at(seat.name)) + ";";
    for (const HandHistoryAction& a : p.postActions())
        out += a.player + " " + a.verb + " " + std::to_string(a.amount) + ";";
    return out;
}

HandHistoryParser readBytes(const std::string& bytes) {
    return HandHistoryParser(HandHistoryText::decode(bytes));
}

} // namespace

TEST(HandHistoryEncoding, Utf8WithAndWithoutByteOrderMark) {
    const std::string withMark = euroHand();
    ASSERT_EQ(withMark.compare(0, 3, "\xEF\xBB\xBF"), 0) << "the sample starts with a mark";
    const HandHistoryParser a = readBytes(withMark);
    const HandHistoryParser b = readBytes(withMark.substr(3));
    EXPECT_EQ(a.currency(), '\x80');
    EXPECT_EQ(a.seats()[1].name, "Jos\xE9 Mu\xF1oz") << "in Windows-1252";
    EXPECT_EQ(summaryOf(a), summaryOf(b));
}

TEST(HandHistoryEncoding, Utf16LittleAndBigEndianWithByteOrderMark) {
    const std::string text = euroHand();
    const std::string expected = summaryOf(readBytes(text));
    const HandHistoryParser little = readBytes(utf16(text, false));
    const HandHistoryParser big = readBytes(utf16(text, true));
    EXPECT_EQ(little.currency(), '\x80');
    EXPECT_EQ(summaryOf(little), expected);
    EXPECT_EQ(summaryOf(big), expected);
    EXPECT_EQ(big.postActions()[2].player, "Jos\xE9 Mu\xF1oz");
}

TEST(HandHistoryEncoding, Windows1252WithEuroSignAndAccents) {
    const std::string text = euroHand();
    const std::string bytes = windows1252(text);
    ASSERT_NE(bytes.find('\x80'), std::string::npos);
    const HandHistoryParser p = readBytes(bytes);
    EXPECT_EQ(summaryOf(p), summaryOf(readBytes(text)));
    EXPECT_FLOAT_EQ(p.stacksAtStart().at("Jos\xE9 Mu\xF1oz"), 38.52f);
}

TEST(HandHistoryEncoding, CrLfAndCrAloneEndLinesToo) {
    const std::string text = euroHand();
    const std::string expected = summaryOf(readBytes(text));
    EXPECT_EQ(summaryOf(readBytes(replacedAll(text, "\n", "\r\n"))), expected);
    EXPECT_EQ(summaryOf(readBytes(replacedAll(text, "\n", "\r"))), expected);
    // Also when the parser gets the text without decode (as the tests of others do).
    EXPECT_EQ(
        summaryOf(HandHistoryParser(HandHistoryText::toWindows1252(replacedAll(text, "\n", "\r")))),
        expected);
}

TEST(HandHistoryEncoding, StrayNulBytesAreNothing) {
    const std::string text = euroHand();
    std::string withNuls;
    for (std::size_t i = 0; i < text.size(); ++i) {
        withNuls.push_back(text[i]);
        if (i % 17 == 0)
            withNuls.push_back('\0');
    }
    EXPECT_EQ(summaryOf(readBytes(withNuls)), summaryOf(readBytes(text)));
}

TEST(HandHistoryEncoding, OtherSitesInUtf16AndCrLf) {
    for (const char* file :
         {"pokerstars-player-withshowdown.txt", "ipoker-player-withshowdown.txt",
          "partypoker-player-withshowdown.txt", "merge-player-withshowdown.txt"}) {
        const std::string text = sampleHandsOf(file).at(0).text;
        const std::string expected = summaryOf(readBytes(text));
        EXPECT_EQ(summaryOf(readBytes(utf16(replacedAll(text, "\n", "\r\n"), false))), expected)
            << file;
    }
}
