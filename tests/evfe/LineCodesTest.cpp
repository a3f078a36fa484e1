#include "evfe/ActionCode.h"
#include "evfe/LineKind.h"
#include "evfe/Street.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

// The text of the std::runtime_error that `call` throws, or "no error".
template <typename Call>
std::string errorOf(Call call) {
    try {
        call();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no error";
}

TEST(StreetTextTest, TextsAndNumbersRoundTrip) {
    const char* const texts[] = {"Preflop", "Flop", "Turn", "River"};
    for (int street = 0; street < 4; ++street) {
        EXPECT_EQ(streetToText(street), texts[street]);
        EXPECT_EQ(static_cast<int>(streetFromText(texts[street])), street);
    }
    EXPECT_EQ(streetToText(Street::Turn), "Turn");
}

TEST(StreetTextTest, UnknownTextAndNumberThrowTheirMessages) {
    EXPECT_EQ(errorOf([] { streetFromText("flop"); }), "Unknown Street: flop");
    EXPECT_EQ(errorOf([] { streetFromText(""); }), "Unknown Street: ");
    EXPECT_EQ(errorOf([] { streetToText(4); }), "Unknown Street 4");
    EXPECT_EQ(errorOf([] { streetToText(-1); }), "Unknown Street -1");
}

TEST(StreetAvailabilityTest, BoardLengthEnablesStreets) {
    EXPECT_TRUE(isStreetAvailable(Street::Preflop, 0));
    EXPECT_FALSE(isStreetAvailable(Street::Flop, 5));
    EXPECT_TRUE(isStreetAvailable(Street::Flop, 6));
    EXPECT_FALSE(isStreetAvailable(Street::Turn, 7));
    EXPECT_TRUE(isStreetAvailable(Street::Turn, 8));
    EXPECT_FALSE(isStreetAvailable(Street::River, 9));
    EXPECT_TRUE(isStreetAvailable(Street::River, 10));
}

TEST(StreetAvailabilityTest, ShrinkingBoardFallsToNextLowerStreet) {
    EXPECT_EQ(streetAfterBoardChange(Street::River, 10), Street::River);
    EXPECT_EQ(streetAfterBoardChange(Street::River, 8), Street::Turn);
    EXPECT_EQ(streetAfterBoardChange(Street::River, 6), Street::Flop);
    EXPECT_EQ(streetAfterBoardChange(Street::Flop, 4), Street::Preflop);
    EXPECT_EQ(streetAfterBoardChange(Street::Turn, 0), Street::Preflop);
    // A lower selected street stays when the board grows.
    EXPECT_EQ(streetAfterBoardChange(Street::Flop, 10), Street::Flop);
    EXPECT_EQ(streetAfterBoardChange(Street::Preflop, 0), Street::Preflop);
}

TEST(LineKindCodeTest, SixCodesRoundTrip) {
    const char* const codes[] = {"xf", "xc", "xr", "bf", "bc", "bs"};
    for (int kind = 0; kind < 6; ++kind) {
        EXPECT_EQ(lineKindToCode(kind), codes[kind]);
        EXPECT_EQ(static_cast<int>(lineKindFromCode(codes[kind])), kind);
    }
}

TEST(LineKindCodeTest, ReadingIsLenientAndWritingUnknownGivesEmpty) {
    EXPECT_EQ(lineKindFromCode(""), LineKind::CheckFold);
    EXPECT_EQ(lineKindFromCode("b"), LineKind::CheckFold);
    EXPECT_EQ(lineKindFromCode("bx"), LineKind::CheckFold);
    EXPECT_EQ(lineKindFromCode("xs"), LineKind::CheckFold);
    EXPECT_EQ(lineKindFromCode("xx"), LineKind::CheckFold);
    EXPECT_EQ(lineKindFromCode("rc"), LineKind::CheckFold);
    EXPECT_EQ(lineKindFromCode("bsx"), LineKind::BetShip);
    EXPECT_EQ(lineKindToCode(6), "");
    EXPECT_EQ(lineKindToCode(-1), "");
}

TEST(ActionCodeTextTest, ThirteenCodesRoundTrip) {
    const char* const texts[] = {"x",    "b",    "c",  "f",  "xx",  "xbf", "xbc",
                                 "xbrf", "xbrc", "rf", "rc", "rsf", "rsc"};
    for (int code = 0; code < 13; ++code) {
        EXPECT_EQ(actionCodeToText(code), texts[code]);
        EXPECT_EQ(static_cast<int>(actionCodeFromText(texts[code])), code);
    }
}

TEST(ActionCodeTextTest, OldTextsReadAsTheirSuccessorsAndWriteNew) {
    EXPECT_EQ(actionCodeFromText("xbr"), ActionCode::CheckBetRaiseFold);
    EXPECT_EQ(actionCodeFromText("rs"), ActionCode::RaiseShipCall);
    EXPECT_EQ(actionCodeToText(actionCodeFromText("xbr")), "xbrf");
    EXPECT_EQ(actionCodeToText(actionCodeFromText("rs")), "rsc");
}

TEST(ActionCodeTextTest, UnknownTextAndNumberThrowTheirMessages) {
    EXPECT_EQ(errorOf([] { actionCodeFromText("bet"); }), "Unknown Action bet");
    EXPECT_EQ(errorOf([] { actionCodeFromText(""); }), "Unknown Action ");
    EXPECT_EQ(errorOf([] { actionCodeToText(13); }), "Unknown Action w/number: 13");
    EXPECT_EQ(errorOf([] { actionCodeToText(-2); }), "Unknown Action w/number: -2");
}

} // namespace
