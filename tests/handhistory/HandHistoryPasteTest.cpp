// A paste of many hands: every hand listed with its number and stakes, read or refused.

#include "HandHistorySamples.h"

#include "handhistory/HandHistoryPaste.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string wholeFile(const std::string& file) {
    std::string text;
    for (const SampleHand& hand : sampleHandsOf(file))
        text += hand.text + "\n";
    return text;
}

} // namespace

TEST(HandHistoryPaste, EveryHandOfAPasteIsListedWithNumberAndStakes) {
    const HandHistoryPaste paste(wholeFile("partypoker-multiplehands-10multiplehands.txt"));
    ASSERT_EQ(paste.hands().size(), 10u);
    EXPECT_EQ(paste.readHands().size(), 10u);
    EXPECT_EQ(paste.hands()[0].number, "13549887181");
    EXPECT_EQ(paste.hands()[1].number, "13549888675");
    EXPECT_EQ(HandHistoryPaste::stakesOf(paste.hands()[0].record), "$0.5/$1");
    EXPECT_EQ(paste.hands()[0].firstLine, 1);
}

TEST(HandHistoryPaste, NumbersOfEverySite) {
    const std::pair<const char*, const char*> numbers[] = {
        {"pokerstars-player-withshowdown.txt", "109673533027"},
        {"fulltilt-player-withshowdown.txt", "33727524963"},
        {"partypoker-player-withshowdown.txt", "13550276397"},
        {"pacific-player-withshowdown.txt", "280009830"},
        {"winamax-player-withshowdown.txt", "5343878-96-1383820687"},
        {"ongame-player-withshowdown.txt", "R5-361920831-111"},
        {"winningpoker-player-withshowdown.txt", "258592968"},
        {"ipoker-player-withshowdown.txt", "5384219194"},
        {"merge-player-withshowdown.txt", "56114855-410"},
        {"microgaming-player-withshowdown.txt", "5049096293"},
    };
    for (const auto& [file, number] : numbers) {
        const HandHistoryPaste paste(wholeFile(file));
        ASSERT_EQ(paste.hands().size(), 1u) << file;
        EXPECT_TRUE(paste.hands()[0].read) << file << ": " << paste.hands()[0].reason;
        EXPECT_EQ(paste.hands()[0].number, number) << file;
    }
}

TEST(HandHistoryPaste, RefusedHandsKeepTheirReasonAndJunkIsNoHand) {
    const HandHistoryPaste omaha(wholeFile("winningpoker-handaction-allinhandwithshowdown.txt"));
    ASSERT_EQ(omaha.hands().size(), 1u);
    EXPECT_FALSE(omaha.hands()[0].read);
    EXPECT_EQ(omaha.hands()[0].reason, "the game is Omaha, not No Limit Hold'em");
    EXPECT_TRUE(omaha.readHands().empty());
    const HandHistoryPaste junk("just some words\n\nand more\n");
    EXPECT_EQ(junk.hands().size(), 2u);
    EXPECT_TRUE(junk.readHands().empty());
    EXPECT_TRUE(HandHistoryPaste("").hands().empty());
}

TEST(HandHistoryPaste, HandsWithoutBlankLinesBetweenThemAreSplitAtTheirHeads) {
    for (const char* file : {"pokerstars-multiplehands-10multiplehands.txt",
                             "partypoker-multiplehands-10multiplehands.txt",
                             "winningpoker-multiplehands-10multiplehands.txt",
                             "ongame-multiplehands-10multiplehands.txt"}) {
        std::string joined;
        for (const SampleHand& hand : sampleHandsOf(file))
            joined += hand.text;
        const HandHistoryPaste paste(joined);
        EXPECT_EQ(paste.hands().size(), 10u) << file;
        EXPECT_EQ(paste.readHands().size(), 10u) << file;
    }
    // A head that no later line repeats keeps the piece whole.
    const HandHistoryPaste one(wholeFile("pacific-player-withshowdown.txt"));
    EXPECT_EQ(one.hands().size(), 1u);
}
