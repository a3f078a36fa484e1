#include "FileTestSupport.h"

#include "evfe/EV_FE_TabState.h"

#include <gtest/gtest.h>

namespace {

EV_FE_TabState goldenState() {
    EV_FE_TabState state;
    state.rakePercentage = 4.5;
    state.rakeCap = 3;
    state.selectedStreet = 2;
    state.selectedPlayer = 1;
    state.selectedLine = 0;
    state.selectedVariant = 2;
    return state;
}

TEST(EV_FE_TabState, WritesTheGoldenText) {
    EXPECT_EQ(goldenState().toText(), readDataFile("tabstate.xml"));
}

TEST(EV_FE_TabState, ReadsTheGoldenTextBack) {
    std::vector<std::string> problems;
    const EV_FE_TabState state = EV_FE_TabState::fromText(readDataFile("tabstate.xml"), problems);
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(state, goldenState());
    EXPECT_EQ(*state.rakePercentage, 4.5);
    EXPECT_EQ(*state.selectedStreet, 2);
}

TEST(EV_FE_TabState, WritesTheElementsInOrderWithTheStreetAsText) {
    const std::string text = goldenState().toText();
    const std::vector<std::string> order = {
        "<EV_FE_Tab>",        "<rakePercentage>4.5<", "<rakeCap>3<",        "<selectedStreet>Turn<",
        "<selectedPlayer>1<", "<selectedLine>0<",     "<selectedVariant>2<"};
    std::string::size_type at = 0;
    for (const std::string& part : order) {
        const std::string::size_type found = text.find(part, at);
        ASSERT_NE(found, std::string::npos) << part << " in " << text;
        at = found;
    }
}

TEST(EV_FE_TabState, MissingChildrenLeaveTheBoxesAlone) {
    std::vector<std::string> problems;
    const EV_FE_TabState state =
        EV_FE_TabState::fromText("<EV_FE_Tab><selectedLine>3</selectedLine></EV_FE_Tab>", problems);
    EXPECT_TRUE(problems.empty());
    EXPECT_FALSE(state.rakePercentage);
    EXPECT_FALSE(state.rakeCap);
    EXPECT_FALSE(state.selectedStreet);
    EXPECT_EQ(state.selectedPlayer, -1);
    EXPECT_EQ(state.selectedLine, 3);
    EXPECT_EQ(state.selectedVariant, -1);
}

TEST(EV_FE_TabState, WhatCannotBeReadIsNamedAndLeftOut) {
    std::vector<std::string> problems;
    const EV_FE_TabState state = EV_FE_TabState::fromText(
        "<EV_FE_Tab><rakePercentage>five</rakePercentage><rakeCap>2</rakeCap>"
        "<selectedStreet>Showdown</selectedStreet><selectedPlayer>1.5</selectedPlayer>"
        "<selectedLine>-1</selectedLine><selectedVariant>x</selectedVariant></EV_FE_Tab>",
        problems);
    EXPECT_FALSE(state.rakePercentage);
    EXPECT_EQ(*state.rakeCap, 2.0);
    EXPECT_FALSE(state.selectedStreet);
    EXPECT_EQ(state.selectedPlayer, -1);
    EXPECT_EQ(state.selectedLine, -1);
    EXPECT_EQ(state.selectedVariant, -1);
    ASSERT_EQ(problems.size(), 4u);
    EXPECT_NE(problems[0].find("rakePercentage \"five\" is not a number"), std::string::npos);
    EXPECT_NE(problems[1].find("Unknown Street: Showdown"), std::string::npos);
}

TEST(EV_FE_TabState, TextThatIsNoXmlGivesAnEmptyState) {
    std::vector<std::string> problems;
    const EV_FE_TabState state = EV_FE_TabState::fromText("<EV_FE_Tab><rakeCap>", problems);
    EXPECT_EQ(state, EV_FE_TabState());
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_NE(problems[0].find("no XML"), std::string::npos);
}

TEST(EV_FE_TabState, RoundTripsEveryStreetAndIndex) {
    for (int street = 0; street < 4; ++street) {
        for (int index = -1; index < 3; ++index) {
            EV_FE_TabState state;
            state.rakePercentage = 0.1 * street;
            state.rakeCap = 1e-7 + index;
            state.selectedStreet = street;
            state.selectedPlayer = index;
            state.selectedLine = index + 1;
            state.selectedVariant = index * 7;
            std::vector<std::string> problems;
            EXPECT_EQ(EV_FE_TabState::fromText(state.toText(), problems), state);
            EXPECT_TRUE(problems.empty());
        }
    }
}

} // namespace
