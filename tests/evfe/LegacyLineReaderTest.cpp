#include "FileTestSupport.h"
#include "SampleLines.h"

#include "evfe/LegacyLineReader.h"
#include "evfe/LineFile.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::optional<Line> readOne(std::istream& stream, LineFile::Problems& problems) {
    return LegacyLineReader::read(stream, SampleLines::player1FullRange(),
                                  SampleLines::player2FullRange(), problems);
}

bool mentions(const LineFile::Problems& problems, const std::string& part) {
    for (const std::string& problem : problems) {
        if (problem.find(part) != std::string::npos)
            return true;
    }
    return false;
}

// The legacy golden file holds the three lines of the XML golden file, one after the other.
LineList readGoldenLegacy(const std::string& text, LineFile::Problems& problems) {
    std::istringstream stream(text);
    LineList lines;
    for (int i = 0; i < 3; ++i) {
        if (std::optional<Line> line = readOne(stream, problems))
            lines.push_back(std::move(*line));
    }
    return lines;
}

TEST(LegacyLineReader, ReadsTheSameLinesAsTheXmlGoldenFile) {
    LineFile::Problems problems;
    const LineList lines = readGoldenLegacy(readDataFile("lines-legacy.txt"), problems);
    EXPECT_TRUE(problems.empty());
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(LineFile::linesText(lines), readDataFile("lines.xml"));
}

TEST(LegacyLineReader, ReadsCarriageReturnLineEnds) {
    std::string text = readDataFile("lines-legacy.txt");
    std::string crlf;
    for (char c : text) {
        if (c == '\n')
            crlf += '\r';
        crlf += c;
    }
    LineFile::Problems problems;
    const LineList lines = readGoldenLegacy(crlf, problems);
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(LineFile::linesText(lines), readDataFile("lines.xml"));
}

TEST(LegacyLineReader, AStreamCutShortLosesTheLineAndFails) {
    const std::string text = readDataFile("lines-legacy.txt");
    // Cut inside the first line's second variant.
    std::istringstream stream(text.substr(0, text.find("Small")));
    LineFile::Problems problems;
    EXPECT_FALSE(readOne(stream, problems));
    EXPECT_TRUE(stream.fail());
    EXPECT_TRUE(mentions(problems, "Legacy line \"Bet/Ship\" ends before the line does"));

    std::istringstream empty("");
    problems.clear();
    EXPECT_FALSE(readOne(empty, problems));
    EXPECT_TRUE(mentions(problems, "The legacy lines ends before the line does"));
}

TEST(LegacyLineReader, ACountThatIsNoNumberLosesTheLine) {
    std::istringstream stream("Bet/Fold\nFlop\nbf\nmany\n");
    LineFile::Problems problems;
    EXPECT_FALSE(readOne(stream, problems));
    EXPECT_TRUE(stream.fail());
    EXPECT_TRUE(mentions(problems, "the number of variants \"many\" is not a count"));

    std::istringstream tooMany(
        "Bet/Fold\nFlop\nbf\n1\nV\nPlayer1\n0\n0\n0\n0\n0\n0\n0\n0\n0\nbf\n6\n");
    problems.clear();
    EXPECT_FALSE(readOne(tooMany, problems));
    EXPECT_TRUE(mentions(problems, "the number of actions \"6\" is not a count"));
}

TEST(LegacyLineReader, AFieldThatIsNoNumberKeepsItsDefaultAndTheStreamGoesOn) {
    std::ostringstream text;
    text << "Bet/Fold\nRiver\nbf\n1\nV\nPlayer2\n";
    text << "lots\n100\n0\n80\n0\n0\n0\n0\n0\nbf\n4\n";
    const char* codes[] = {"b", "f", "c", "rf"};
    for (const char* code : codes) {
        text << code << "\n";
        for (int i = 0; i < 17; ++i)
            text << "0\n";
        text << "AA\n\n"
             << "verb\n";
    }
    text << "Next line\n";
    std::istringstream stream(text.str());
    LineFile::Problems problems;
    const std::optional<Line> line = readOne(stream, problems);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->street, 3);
    EXPECT_EQ(line->variants.front().deadmoney, 0.0f);
    EXPECT_EQ(line->variants.front().player2sEffectiveStackSize, 80.0f);
    EXPECT_EQ(line->variants.front().forPlayer, "Player2");
    EXPECT_TRUE(mentions(problems, "deadmoney \"lots\" is not a number"));
    std::string rest;
    std::getline(stream, rest);
    EXPECT_EQ(rest, "Next line");
}

TEST(LegacyLineReader, AnUnknownActionCodeSkipsTheVariantButKeepsTheStreamInStep) {
    std::ostringstream text;
    text << "Bet/Fold\nFlop\nbf\n2\n";
    for (const char* code : {"zz", "rf"}) {
        text << "V " << code << "\nPlayer1\n";
        for (int i = 0; i < 9; ++i)
            text << "0\n";
        text << "bf\n4\n";
        for (const char* action : {"b", "f", "c", code}) {
            text << action << "\n";
            for (int i = 0; i < 17; ++i)
                text << "0\n";
            text << "\n\nverb\n";
        }
    }
    std::istringstream stream(text.str());
    LineFile::Problems problems;
    const std::optional<Line> line = readOne(stream, problems);
    ASSERT_TRUE(line);
    ASSERT_EQ(line->variants.size(), 1u);
    EXPECT_EQ(line->variants.front().name, "V rf");
    EXPECT_TRUE(mentions(problems, "Unknown Action zz"));
}

} // namespace
