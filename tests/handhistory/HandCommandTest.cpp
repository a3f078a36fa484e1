#include "CommandRegistry.h"
#include "CommandReply.h"

#include "support/TestEnvironment.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace {

struct Result {
    int code = -1;
    std::string out;
    std::string err;
};

Result runHand(const std::vector<std::string>& args, bool json = false) {
    const CommandRegistry::Command* command = CommandRegistry::instance().find("hand");
    if (!command) {
        ADD_FAILURE() << "no command \"hand\"";
        return {};
    }
    std::ostringstream out;
    std::ostringstream err;
    Result result;
    CommandReply reply("hand", json, out, err);
    result.code = command->run(args, reply);
    reply.finish();
    result.out = out.str();
    result.err = err.str();
    return result;
}

std::string temporaryFile(const std::string& content) {
    char name[] = "/tmp/quorvane-hand-XXXXXX";
    const int fd = mkstemp(name);
    EXPECT_GE(fd, 0);
    close(fd);
    std::ofstream(name, std::ios::binary) << content;
    return name;
}

const std::string readableHand = "Game ($1/$2)\n"
                                 "Seat 1: Ann ($100)\n"
                                 "Seat 2: Jos\xC3\xA9 (\xE2\x82\xAC"
                                 "50)\n"
                                 "Ann: posts small blind \xE2\x82\xAC"
                                 "1\n"
                                 "Jos\xC3\xA9: posts big blind \xE2\x82\xAC"
                                 "2\n"
                                 "*** HOLE CARDS ***\n"
                                 "Dealt to Ann [Kd As]\n"
                                 "Ann: raises \xE2\x82\xAC"
                                 "4 to \xE2\x82\xAC"
                                 "6\n"
                                 "Jos\xC3\xA9: calls \xE2\x82\xAC"
                                 "4\n"
                                 "*** FLOP *** [2c 7d 9h]\n"
                                 "Jos\xC3\xA9: checks\n"
                                 "Ann: bets \xE2\x82\xAC"
                                 "8.50\n"
                                 "Jos\xC3\xA9: folds\n"
                                 "*** SUMMARY ***\n";

} // namespace

TEST(HandCommand, PrintsTheEssentialsOfAReadHand) {
    const std::string file = temporaryFile(readableHand);
    const Result result = runHand({file});
    std::remove(file.c_str());
    EXPECT_EQ(result.code, 0) << result.out << result.err;
    const std::string euro = "\xE2\x82\xAC";
    const std::string expected = "hand 1 (lines 1-14): read\n"
                                 "  hero: Ann [AsKd]\n"
                                 "  blinds: " +
                                 euro + "1 / " + euro +
                                 "2\n"
                                 "  board: 2c7d9h\n"
                                 "  stacks at start:\n"
                                 "    seat 1 Ann " +
                                 euro +
                                 "100\n"
                                 "    seat 2 Jos\xC3\xA9 " +
                                 euro +
                                 "50\n"
                                 "  preflop, pot " +
                                 euro +
                                 "3 after the posts:\n"
                                 "    Ann post small blind " +
                                 euro +
                                 "1\n"
                                 "    Jos\xC3\xA9 post big blind " +
                                 euro +
                                 "2\n"
                                 "    Ann raise to " +
                                 euro +
                                 "6\n"
                                 "    Jos\xC3\xA9 call " +
                                 euro +
                                 "4\n"
                                 "  flop [2c7d9h], pot " +
                                 euro +
                                 "12:\n"
                                 "    Jos\xC3\xA9 check\n"
                                 "    Ann bet " +
                                 euro +
                                 "8.5\n"
                                 "    Jos\xC3\xA9 fold\n"
                                 // Ann raises to 6 (3 bb) over the posts (1.5 bb) with 99
                                 // behind against 48; on the flop she bets 8.50 into 12.
                                 "  lines (in big blinds):\n"
                                 "    Preflop Raise/Fold:\n"
                                 "      Hero Raise/Fold, Player1 first: raise 3, pot 1.5, stacks "
                                 "49.5 / 24, in 0.5 / 1; answers: fold, call, 3-bet\n"
                                 "    Preflop Raise/Call:\n"
                                 "      Hero Raise/Call, Player1 first: raise 3, pot 1.5, stacks "
                                 "49.5 / 24, in 0.5 / 1; answers: fold, call, 3-bet\n"
                                 "    Preflop Raise/Ship:\n"
                                 "      Hero Raise/Ship, Player1 first: raise 3, pot 1.5, stacks "
                                 "49.5 / 24, in 0.5 / 1; answers: fold, call, 3-bet/fold, "
                                 "3-bet/call\n"
                                 "    Flop Bet/Fold:\n"
                                 "      Hero Bet/Fold, Player1 first: bet 4.25, pot 6, stacks 47 / "
                                 "22, in 0 / 0; answers: fold, call, raise\n"
                                 "    Flop Bet/Call:\n"
                                 "      Hero Bet/Call, Player1 first: bet 4.25, pot 6, stacks 47 / "
                                 "22, in 0 / 0; answers: fold, call, raise\n"
                                 "    Flop Bet/Ship:\n"
                                 "      Hero Bet/Ship, Player1 first: bet 4.25, pot 6, stacks 47 / "
                                 "22, in 0 / 0; answers: fold, call, raise/fold, raise/call\n"
                                 "1 of 1 hands read\n";
    EXPECT_EQ(result.out, expected);
}

TEST(HandCommand, ReadsStandardInputAndTellsWhyAHandWasNotRead) {
    std::istringstream input("\n" + readableHand + "\n\nno hand at all\n");
    std::streambuf* previous = std::cin.rdbuf(input.rdbuf());
    const Result result = runHand({"-"});
    std::cin.rdbuf(previous);
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.out.find("hand 1 (lines 2-15): read\n"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("hand 2 (lines 18-18): not read: no seat lines, no position "
                              "lines and no \"Game#\": not a hand history\n"),
              std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("1 of 2 hands read\n"), std::string::npos);
}

TEST(HandCommand, ExitCodeSaysWhetherEveryHandOfARealFileWasRead) {
    const std::string folder = TestEnvironment::sharedFolder() + "/handhistories/";
    const Result stars = runHand({folder + "pokerstars-multiplehands-10multiplehands.txt"});
    EXPECT_EQ(stars.code, 0) << stars.out;
    EXPECT_NE(stars.out.find("10 of 10 hands read\n"), std::string::npos);
    EXPECT_NE(stars.out.find("    ADZ124 raise to $26\n"), std::string::npos) << stars.out;
    const Result party = runHand({folder + "partypoker-multiplehands-10multiplehands.txt"});
    EXPECT_EQ(party.code, 0) << party.out;
    EXPECT_NE(party.out.find("10 of 10 hands read\n"), std::string::npos);
    const Result omaha = runHand({folder + "winningpoker-handaction-allinhandwithshowdown.txt"});
    EXPECT_EQ(omaha.code, 1);
    EXPECT_NE(omaha.out.find("not read: the game is Omaha, not No Limit Hold'em\n"),
              std::string::npos)
        << omaha.out;
}

TEST(HandCommand, UsageErrors) {
    const Result none = runHand({});
    EXPECT_EQ(none.code, 2);
    EXPECT_NE(none.err.find("usage: quorvane-eval hand FILE|-"), std::string::npos) << none.err;
    const Result missing = runHand({"/nonexistent/hands.txt"});
    EXPECT_EQ(missing.code, 2);
    EXPECT_NE(missing.err.find("cannot open \"/nonexistent/hands.txt\""), std::string::npos);
    const std::string empty = temporaryFile("\n \n");
    const Result blank = runHand({empty});
    std::remove(empty.c_str());
    EXPECT_EQ(blank.code, 1);
    EXPECT_EQ(blank.out, "no hand history found\n");
}

TEST(HandCommand, JsonHoldsTheSameRecord) {
    const std::string file = temporaryFile(readableHand + "\n\nno hand at all\n");
    const Result result = runHand({file}, true);
    std::remove(file.c_str());
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "");
    const std::string euro = "\xE2\x82\xAC";
    const std::string& json = result.out;
    EXPECT_EQ(json.find('\n'), json.size() - 1) << json;
    EXPECT_EQ(json.rfind("{\"command\":\"hand\",\"file\":", 0), 0u) << json;
    for (const std::string& part :
         {std::string("\"hands\":[{\"number\":1,\"first_line\":1,\"last_line\":14,"
                      "\"read\":true,\"hero\":\"Ann\",\"hole_cards\":\"AsKd\",\"currency\":\"") +
              euro + "\",\"small_blind\":1,\"big_blind\":2,\"board\":\"2c7d9h\"",
          // The seat lines of this hand name no blind: the posts do.
          std::string("\"seats\":[{\"seat\":1,\"name\":\"Ann\",\"stack\":100,\"blind\":null},{"
                      "\"seat\":2,\"name\":\"Jos\xC3\xA9\",\"stack\":50,\"blind\":null}]"),
          std::string("{\"street\":\"flop\",\"cards\":\"2c7d9h\",\"pot\":12,\"actions\":[{"
                      "\"player\":\"Jos\xC3\xA9\",\"verb\":\"check\"},{\"player\":\"Ann\",\"verb\":"
                      "\"bet\",\"amount\":8.5},"),
          std::string(
              "{\"player\":\"Ann\",\"verb\":\"post\",\"blind\":\"small blind\",\"amount\":1}"),
          std::string("\"lines\":[{\"street\":\"Preflop\",\"name\":\"Raise/Fold\",\"variants\":[{"
                      "\"name\":\"Hero Raise/Fold\",\"first\":\"Player1\",\"size\":3,\"pot\":1.5,"
                      "\"stacks\":[49.5,24],\"last_investments\":[0.5,1]}]}"),
          std::string(
              "{\"number\":2,\"first_line\":17,\"last_line\":17,\"read\":false,\"reason\":"),
          std::string("\"read\":1,\"total\":2,\"time_ms\":")})
        EXPECT_NE(json.find(part), std::string::npos) << part << "\n" << json;
}

TEST(HandCommand, SaysWhenNoHeroCanBeFoundAndWhoBecameHero) {
    const std::string folder = TestEnvironment::sharedFolder() + "/handhistories/";
    const Result party = runHand({folder + "partypoker-player-withshowdown.txt"});
    EXPECT_EQ(party.code, 0) << party.out;
    EXPECT_NE(party.out.find("  lines: none, no hero could be found or determined by preflop "
                             "actions\n"),
              std::string::npos)
        << party.out;
    const Result pacific = runHand({folder + "pacific-player-withshowdown.txt"});
    EXPECT_NE(pacific.out.find("  hero by the first preflop raise: Akisto\n"), std::string::npos)
        << pacific.out;
    EXPECT_NE(pacific.out.find("      ManakaReg Bet/Fold, Player2 first: bet 3, pot 6, stacks "
                               "264.9 / 125.38, in 0 / 0; answers: fold, call, raise\n"),
              std::string::npos)
        << pacific.out;
}
