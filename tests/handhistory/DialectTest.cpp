// Dialect features that the sample files show only in part: position names with "[ME]" and
// " : " before the verb, the hero named by an XML session, all-in wordings, money in
// brackets, players sitting out or joining, a hero not dealt in.

#include "HandHistorySamples.h"

#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryText.h"

#include <gtest/gtest.h>

#include <string>

TEST(HandHistoryDialects, PositionNamesWithMeMarkerAndSpacedColons) {
    const HandHistoryParser p("Ignition Hand #3690869491 TBL#17538574 HOLDEMZonePoker No Limit "
                              "- 2017-11-02 13:12:12\n"
                              "Seat 1: Small Blind ($25.35 in chips)\n"
                              "Seat 2: Big Blind [ME] ($10 in chips)\n"
                              "Seat 3: UTG ($9.60 in chips)\n"
                              "Small Blind : Small Blind $0.10\n"
                              "Big Blind  [ME] : Big blind $0.25\n"
                              "*** HOLE CARDS ***\n"
                              "Small Blind : Card dealt to a spot [7c 2d]\n"
                              "Big Blind  [ME] : Card dealt to a spot [Ah Kd]\n"
                              "UTG : Card dealt to a spot [5s 5d]\n"
                              "UTG : Raises $0.75 to $0.75\n"
                              "Small Blind : Folds\n"
                              "Big Blind  [ME] : All-in(raise) $9.75 to $10\n"
                              "UTG : Call $8.85\n"
                              "*** FLOP *** [2c 7d 9h]\n"
                              "*** TURN *** [2c 7d 9h] [Qs]\n"
                              "*** RIVER *** [2c 7d 9h Qs] [3h]\n"
                              "*** SUMMARY ***\n");
    EXPECT_EQ(p.hero(), "Big Blind");
    EXPECT_EQ(p.holeCards(), "AhKd");
    EXPECT_FLOAT_EQ(p.smallBlind(), 0.10f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 0.25f);
    EXPECT_EQ(actionsText(p.postActions()),
              "Small Blind post small blind 0.10\nBig Blind post big blind 0.25\n"
              "UTG raise 0.75\nSmall Blind fold\nBig Blind raise 10.00\nUTG call 8.85\n");
    EXPECT_EQ(p.board(), "2c7d9hQs3h");
    EXPECT_NEAR(p.potFlop(), 19.70f, 1e-4f);
}

TEST(HandHistoryDialects, XmlSessionNamesItsHero) {
    const std::string text = sampleHandsOf("ipoker-player-withshowdown.txt").at(0).text;
    const std::string named =
        replacedAll(text, "<nickname>N/A</nickname>", "<nickname>dunny53</nickname>");
    const HandHistoryParser p(HandHistoryText::decode(named));
    EXPECT_EQ(p.hero(), "dunny53");
    // "HK S10": suit first, ten as "10".
    EXPECT_EQ(p.holeCards(), "KhTs");
}

TEST(HandHistoryDialects, AllInWordingsAndBracketedMoney) {
    const std::string hand = "***** Hand History for Game 2 *****\n"
                             "$1/$2 USD NL Texas Hold'em - Monday\n"
                             "Seat 3 is the button\n"
                             "Seat 1: Ann ( $1,200 USD )\n"
                             "Seat 2: Bob ( $50.50 USD )\n"
                             "Seat 3: Cy ( $300 USD )\n"
                             "Dee has joined the table.\n"
                             "Ann posts small blind [$1 USD].\n"
                             "Bob posts big blind [$2 USD].\n"
                             "** Dealing down cards **\n"
                             "Cy raises [$6 USD]\n"
                             "Ann is all-In  [$1,199 USD]\n"
                             "Bob is all-In  [$48.50 USD]\n"
                             "Cy folds\n"
                             "** Dealing Flop ** [ 2c, 7d, 9h ]\n"
                             "** Dealing Turn ** [ Qs ]\n"
                             "** Dealing River ** [ 3h ]\n";
    const HandHistoryParser p(hand);
    // Nobody was dealt in as hero.
    EXPECT_EQ(p.hero(), "");
    EXPECT_FLOAT_EQ(p.stacksAtStart().at("Ann"), 1200.0f);
    EXPECT_EQ(actionsText(p.postActions()),
              "Ann post small blind 1.00\nBob post big blind 2.00\nCy raise 6.00\n"
              "Ann raise 1200.00\nBob call 48.50\nCy fold\n");
    EXPECT_EQ(p.seats().size(), 3u);
}

TEST(HandHistoryDialects, SittingOutPlayerHasASeatButNoAction) {
    const HandHistoryParser p(sampleHandsOf("fulltilt-player-withshowdown.txt").at(0).text);
    EXPECT_EQ(p.stacksAtStart().count("luka-poker"), 1u);
    for (const HandHistoryAction& a : p.postActions())
        EXPECT_NE(a.player, "luka-poker");
}
