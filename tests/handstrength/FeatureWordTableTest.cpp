// Hand/board cases with their feature words, each worked out by hand from the definitions in
// docs/hand-strength.md. The word is read through the public hit evaluation.

#include "FeatureWordTestSupport.h"

#include <gtest/gtest.h>

#include <bitset>
#include <set>
#include <string>
#include <vector>

using namespace featuretest;

namespace {

struct Case {
    const char* hand;
    const char* board;
    unsigned long long expected;
    const char* why;
};

const std::vector<Case>& cases() {
    static const std::vector<Case> table = {
        // ---- Pairs on the flop -------------------------------------------------------
        {"AcKh", "Ks7h2d", PAIR | R1 | ONE | K1, "top pair, ace is the top kicker"},
        {"KcQh", "Ks7h2d", PAIR | R1 | ONE | K2, "queen: only the ace is above it off the board"},
        {"KcJh", "Ks7h2d", PAIR | R1 | ONE | K3, "jack: ace and queen above it"},
        {"KcTh", "Ks7h2d", PAIR | R1 | ONE, "ten is the fourth available kicker"},
        {"7c8c", "Ks7h2d", PAIR | R2 | ONE, "second pair, eight is no named kicker"},
        {"As2c", "Ks7h2d", PAIR | R3 | ONE | K1, "bottom pair with the ace"},
        {"QcQh", "Ks7h2d", PAIR | PP12, "pocket pair between king and seven"},
        {"AcAh", "Ks7h2d", PAIR | OVERPAIR, "overpair"},
        {"5c5h", "Ks7h2d", PAIR | PP23, "pocket pair between seven and deuce"},
        {"2c2h", "Ks7h4d", PAIR | PPLOW, "pocket pair under every board card"},
        {"AcQh", "7s7h2d", PAIR | BOARD | OVER2 | ACE, "board pair only with two overcards"},
        {"9c3h", "7s7h2d", PAIR | BOARD | OVER1, "board pair only with one overcard"},
        {"KcKh", "As7d2c", PAIR | PP12, "kings under an ace"},
        {"AcJh", "AsKd2c", PAIR | R1 | ONE | K2 | BDSD | BD_2G | SD1,
         "jack is the second kicker (king is on the board); A-K-J backdoor to Q-T"},
        {"9cAh", "Ks9d4c", PAIR | R2 | ONE | K1, "second pair, top kicker"},
        {"4h7s", "Ks9d4c", PAIR | R3 | ONE, "third pair, seven is the fifth available kicker"},
        {"QcJh", "Js9d4c", PAIR | R1 | ONE | K3 | BDSD | BD_1O2G | SD1,
         "top pair, third kicker; Q-J-9: ten makes an OESD, king and eight a gutshot"},
        {"JcTh", "Ts9d2c", PAIR | R1 | ONE | BDSD | BD_2O2G | SD1,
         "top pair with J-T-9: eight and queen make OESDs, seven and king gutshots"},
        {"9c8d", "9s7h6d", PAIR | R1 | ONE | OESD | SD1,
         "top pair with 9-8-7-6; the nine is on the board, so one hole card draws"},
        {"As8d", "Kh8s2s", PAIR | R2 | ONE | K1 | BDFD | FD1 | N1,
         "second pair with a backdoor draw to the nut flush"},
        {"QsQd", "Ks8s4s", PAIR | PP12 | FD | FD1 | N2, "queens with the queen of the flush suit"},
        {"AsKd", "Ks8s4s", PAIR | R1 | ONE | K1 | FD | FD1 | N1,
         "top pair with the nut flush draw"},
        {"KsKh", "8s5s2c", PAIR | OVERPAIR | BDFD | FD1 | N2,
         "overpair, backdoor to the king flush"},
        {"AcQd", "Ks8s2s", HIGH | OVER1 | ACE | BDSD | BD_2G | SD2,
         "no spade in hand: the board's three spades give no draw"},
        {"Ac4h", "9s9d5h", PAIR | BOARD | OVER1 | ACE | BDSD | BD_2G | SD2,
         "board pair only; A-4-5 backdoor to 2-3"},
        // ---- Pairs on turn and river ---------------------------------------------------
        {"4s2d", "Ks9d7h4c", PAIR | R4 | ONE, "fourth pair on the turn"},
        {"3cAd", "Ks9d7h5c3s", PAIR | R5 | ONE | K1, "fifth pair on the river, top kicker"},
        {"AcQd", "AsKd8h5c2s", PAIR | R1 | ONE | K1, "queen is the best kicker left"},
        {"8cJd", "AsKd8h5c2s", PAIR | R3 | ONE | K2, "third pair, jack under the queen"},
        {"6c6d", "AsKd8h5c2s", PAIR | PPLOW, "sixes under the third board rank"},
        {"8c8d", "KsTd6h2c", PAIR | PP23, "eights between ten and six"},
        {"JcJd", "Ts8d6h4c2s", PAIR | OVERPAIR, "overpair on the river"},
        {"QcQd", "KsTd6h4c2s", PAIR | PP12, "queens between king and ten"},
        {"QcJh", "Qs9d5c2h", PAIR | R1 | ONE | K3, "top pair, jack behind ace and king"},
        {"QhQd", "9h6h2h4d", PAIR | OVERPAIR | FD | FD1 | N3,
         "overpair with the third nut flush draw"},
        {"8c2d", "JsTd9c2h", PAIR | R4 | ONE | OESD | SD1, "fourth pair plus 8-9-T-J"},
        {"AsKs", "7s7d2s9c", PAIR | BOARD | FD | FD2 | N1 | OVER2 | ACE,
         "board pair, nut flush draw, two overcards"},
        // ---- Two pair ------------------------------------------------------------------
        {"Kc7c", "Ks7h2d", TWOPAIR | TWO | R1, "top two"},
        {"7c2c", "Ks7h2d", TWOPAIR | TWO | R2, "bottom two: the better pair is the second rank"},
        {"Kc2c", "Ks7h2d", TWOPAIR | TWO | R1, "top and bottom"},
        {"Kc3h", "Ks7h7d", TWOPAIR | ONE | R1, "king pairs the top rank, sevens on the board"},
        {"7c3h", "KsKh7d", TWOPAIR | ONE | R2, "the hole seven pairs the second rank"},
        {"AcAh", "KsKh7d", TWOPAIR | PPTWOPAIR | OVERPAIR, "aces over the board pair"},
        {"9c9h", "Ks7h7d", TWOPAIR | PPTWOPAIR | PPMID, "nines between king and the sevens"},
        {"5c5h", "Ks7h7d", TWOPAIR | PPTWOPAIR | PPUNDER, "fives under the board pair"},
        {"AcQh", "KsKh7d7c", TWOPAIR | BOARD | OVER1 | ACE, "both pairs on the board"},
        {"6c2d", "KsTd6h2c", TWOPAIR | TWO | R3, "the better pair is the third rank"},
        {"Kc3h", "KsTdTh6c2d", TWOPAIR | ONE | R1, "kings up with the board's tens"},
        {"9c2h", "Ks9d4h4c2d", TWOPAIR | ONE | R2, "nines and fours play, the deuce does not"},
        {"5h3c", "KsQd9h5c3d", TWOPAIR | TWO | R4, "better pair is the fourth rank"},
        {"3c3h", "KsKd9h9c2d", TWOPAIR | BOARD, "threes do not play under the board's two pair"},
        {"9c9h", "KsKd7h7c2d", TWOPAIR | PPTWOPAIR | PPMID, "nines between the board pairs"},
        {"9c5h", "KsKd9h5c", TWOPAIR | ONE | R2, "kings and nines; the five does not play"},
        {"Kh9h", "Kc9c2h4h", TWOPAIR | TWO | R1 | FD | FD2 | N2, "top two with a king-high draw"},
        // ---- Three of a kind -------------------------------------------------------------
        {"7c7d", "Ks7h2s", TRIPS | TWO, "set"},
        {"KcAh", "KsKd7h", TRIPS | ONE | K1, "trips, top kicker"},
        {"KcQh", "KsKd7h", TRIPS | ONE | K2, "trips, second kicker"},
        {"KcJh", "KsKd7h", TRIPS | ONE | K3, "trips, third kicker"},
        {"Kc9h", "KsKd7h", TRIPS | ONE, "trips, weaker kicker"},
        {"AcQh", "7s7h7dKc2d", TRIPS | BOARD | OVER1 | ACE, "trips on the board"},
        {"8cKh", "8s8d5h2c", TRIPS | ONE | K2, "turn trips, king behind the ace"},
        {"8c8h", "Js8d4c2h3s", TRIPS | TWO, "river set"},
        {"JcQh", "JsJd8c4h2s", TRIPS | ONE | K3, "queen behind ace and king"},
        {"AcKh", "AsAd8c4h2s", TRIPS | ONE | K1, "king is the best kicker left"},
        {"9h9c", "9sKh2h", TRIPS | TWO | BDFD | FD1 | N5, "set with a backdoor flush draw"},
        {"9s9h", "9dKs2s5s", TRIPS | TWO | FD | FD1 | N5, "set with a flush draw on the turn"},
        // ---- Straights -------------------------------------------------------------------
        {"8c9h", "7s6d5c", ST | TWO, "both hole cards in the straight"},
        {"9c2h", "8s7d6c5h", ST | ONE, "one hole card"},
        {"AcKh", "9s8d7c6h5s", ST | BOARD, "straight on the board"},
        {"Tc2h", "9s8d7c6h5s", ST | ONE, "ten improves the board's straight"},
        {"Ac2h", "3s4d5c", ST | TWO, "the wheel"},
        {"9s8s", "7s6s5d", ST | TWO | FD | FD2, "straight plus a weak flush draw"},
        {"Th6h", "9h8h7c2d", ST | TWO | FD | FD2 | N5, "straight with the ten-high flush draw"},
        {"Tc9h", "9s8d7c6h", ST | ONE, "only the ten is missing from the board"},
        {"Ac5d", "JsTd4c3h2s", ST | TWO, "river wheel"},
        {"6cTh", "9s8d7c2h3s", ST | TWO, "six to ten"},
        {"Tc2c", "9s8d7c6hKd", ST | ONE, "ten on a four-straight"},
        // ---- Flushes ---------------------------------------------------------------------
        {"As2s", "Ks9s4s", FL | TWO | R1, "nut flush"},
        {"Qs3s", "Ks9s4s", FL | TWO | R2, "queen-high: second nut"},
        {"JsTs", "Ks9s4s", FL | TWO | R3, "jack-high: third nut"},
        {"8s7s", "Ks9s4s", FL | TWO | R5, "eight-high: fifth nut"},
        {"6s5s", "Ks9s4s", FL | TWO, "six-high: weaker"},
        {"Qs3h", "Ks9s4s2s", FL | ONE | R2, "one hole card, queen"},
        {"AhQd", "KsTs7s5s2s", FL | BOARD, "flush on the board"},
        {"3s4h", "KsTs7s5s2s", FL | ONE, "the three improves the board flush"},
        {"AsQd", "KsTs7s5s2s", FL | ONE | R1, "ace improves the board flush"},
        {"As3s", "KsQs9s8s2d", FL | ONE | R1, "the three of spades does not play"},
        {"KsTs", "As9s6s2d3h", FL | TWO | R1, "king-high is the nuts with the ace on the board"},
        {"Ks3s", "Qs9s4s2d7h", FL | TWO | R2, "king-high behind the ace"},
        {"JcTs", "Qs9s4s2s7h", FL | ONE | R4, "ten: ace, king and jack above it"},
        // ---- Full house, quads, straight flush -------------------------------------------
        {"7c7d", "Ks7hKd", FH | TWO, "sevens full: both hole cards"},
        {"7c2h", "KsKd7h7s", FH | ONE, "one seven fills up"},
        {"AcQc", "KsKdKh7s7d", FH | BOARD, "full house on the board"},
        {"7c7h", "KsKdKh7s2d", FH | ONE, "one seven pairs the board's seven"},
        {"KcKd", "Ks7h7d", FH | TWO, "kings full with a pocket pair"},
        {"AcAd", "KsKdKh7s7d", FH | TWO, "aces beat the board's sevens"},
        {"Kc7c", "KsKd7h2c9s", FH | TWO, "a king and a seven"},
        {"7c7d", "7h7sKd", QUADS | TWO, "quads with a pocket pair"},
        {"Kc2h", "KsKdKh5c", QUADS | ONE, "one king"},
        {"AcKh", "9s9d9h9c2d", QUADS | BOARD, "quads on the board"},
        {"KcKh", "KsKd5h2c", QUADS | TWO, "turn quads"},
        {"AcQh", "KsKdKhKc2d", QUADS | BOARD, "the ace kicker does not change the quads"},
        {"9s8s", "7s6s5s", SF | TWO, "straight flush with both hole cards"},
        {"Ts2d", "9s8s7s6s", SF | ONE, "one hole card"},
        {"AhAd", "9s8s7s6s5s", SF | BOARD, "straight flush on the board"},
        {"5sAc", "9s8s7s6s2d", SF | ONE, "five of spades below the board's four"},
        // ---- Flush draws -----------------------------------------------------------------
        {"As6s", "Ks9s2d", HIGH | FD | FD2 | N1 | OVER1 | ACE, "nut flush draw, two hole cards"},
        {"Qs3s", "Ks8s2d", HIGH | FD | FD2 | N2, "queen-high draw"},
        {"As7d", "Ks9s4s", HIGH | FD | FD1 | N1 | OVER1 | ACE, "one hole card to the nuts"},
        {"Js2d", "Ks8s4s", HIGH | FD | FD1 | N3, "jack: third nut draw"},
        {"Ts2d", "Ks8s4s", HIGH | FD | FD1 | N4, "ten: fourth nut draw"},
        {"9s2d", "Ks8s4s", HIGH | FD | FD1 | N5, "nine: fifth nut draw"},
        {"3sQd", "Ks8s4s", HIGH | FD | FD1, "three of spades: weaker draw"},
        {"AsKs", "9s6s2d", HIGH | FD | FD2 | N1 | OVER2 | ACE, "nut draw with two overcards"},
        {"AhTh", "Kh9h4c2d", HIGH | FD | FD2 | N1 | OVER1 | ACE, "turn nut flush draw"},
        {"Qh3c", "Kh9h4h2d", HIGH | FD | FD1 | N2, "turn draw with one hole card"},
        {"AcQd", "Kh9h4h2h", HIGH | OVER1 | ACE, "four hearts on the board, none in hand"},
        {"Qh3c", "Kh9h4c2d7s", HIGH, "no draws on the river"},
        // ---- Backdoor flush draws --------------------------------------------------------
        {"As6s", "Kh9s2d", HIGH | BDFD | FD2 | N1 | OVER1 | ACE, "two-card backdoor nut draw"},
        {"Qs3d", "Kh8s2s", HIGH | BDFD | FD1 | N3,
         "one-card backdoor to the queen: ace and king of spades are above it"},
        {"7s3s", "KhQs2d", HIGH | BDFD | FD2, "seven-high backdoor: weaker"},
        {"KsQs", "Ah7s2d", HIGH | BDFD | FD2 | N2 | BDSD | BD_2G | SD2,
         "king-high backdoor behind the missing ace of spades; A-K-Q backdoor"},
        {"AsQs", "Kh8s2d", HIGH | BDFD | FD2 | N1 | BDSD | BD_2G | SD2 | OVER1 | ACE,
         "backdoor nut flush and backdoor broadway"},
        {"As4s", "Kh8s2d", HIGH | BDFD | FD2 | N1 | BDSD | BD_2G | SD2 | OVER1 | ACE,
         "backdoor nut flush and a backdoor wheel"},
        {"As6s", "Kh9s2d7c", HIGH | OVER1 | ACE, "no backdoor draws on the turn"},
        // ---- Straight draws --------------------------------------------------------------
        {"JcTh", "9s8d2c", HIGH | OESD | SD2 | OVER2, "open-ended with two hole cards"},
        {"Tc3h", "9s8d7c", HIGH | OESD | SD1 | OVER1, "open-ended with the ten alone"},
        {"JcTh", "8s7d2c", HIGH | GS | SD2 | OVER2, "gutshot to the nine"},
        {"9c5h", "Js8d7c", HIGH | OESD | SD2, "double gutshot (ten and six) counts as OESD"},
        {"Ac5d", "Kh4s3c", HIGH | GS | BDSD | BD_2G | SD2 | OVER1 | ACE,
         "wheel gutshot and a backdoor to 6-7"},
        {"9c8h", "7s6d2cKd", HIGH | OESD | SD2, "turn open-ender"},
        {"Qc2h", "Ts9d8c3s", HIGH | GS | SD1 | OVER1, "turn gutshot with the queen"},
        {"AcKh", "9s8d7c6h", HIGH | OVER2 | ACE, "the outs make the board's straight"},
        {"AcKh", "8c7d6h5s", HIGH | OVER2 | ACE, "no hole card in any completed straight"},
        {"Tc2d", "8c7d6h5s", HIGH | GS | SD1 | OVER1, "the nine makes the ten-high straight"},
        {"7c4d", "Ks8d5c2h", HIGH | GS | SD2, "turn gutshot with both hole cards"},
        {"Ac2h", "9s8d7c", HIGH | OVER1 | ACE, "the board's backdoors do not use the hand"},
        // ---- Backdoor straight draws -----------------------------------------------------
        {"8c7h", "Ks6d2c", HIGH | BDSD | BD_2O2G | SD2, "8-7-6: two OESD turns, two gutshot turns"},
        {"9c6h", "Ad8s4d", HIGH | BDSD | BD_1O2G | SD2, "9-8-6: seven makes an OESD"},
        {"AcQh", "Kd7s2c", HIGH | BDSD | BD_2G | SD2 | OVER1 | ACE, "A-K-Q: two gutshot turns"},
        {"Ac2h", "KdQs3c", HIGH | BDSD | BD_4G | SD2 | OVER1 | ACE,
         "A-K-Q and A-2-3: four gutshot turns"},
        {"Tc2h", "9s8dKc", HIGH | BDSD | BD_2O2G | SD1, "T-9-8 with the ten alone"},
        {"Th9d", "Qh7s5c", HIGH | BDSD | BD_2O2G | SD2, "T-9-7 and Q: eight and jack make OESDs"},
        {"9d7c", "5sKh2d", HIGH | BDSD | BD_2G | SD2, "9-7-5: six and eight make gutshots"},
        {"AcKh", "9s5d2c", HIGH | OVER2 | ACE | BDSD | BD_2G | SD1, "A-2-5 backdoor wheel"},
        // ---- Overcards and high cards ----------------------------------------------------
        {"AcKh", "9s6d2c", HIGH | OVER2 | ACE, "two overcards with an ace"},
        {"KcQh", "8s5d2c", HIGH | OVER2, "two overcards without an ace"},
        {"Kc3h", "Js7d2c", HIGH | OVER1, "one overcard"},
        {"Ac3h", "Ks8d6c", HIGH | OVER1 | ACE, "one overcard, the ace"},
        {"AcKh", "9s6d2c4h7s", HIGH | OVER2 | ACE, "river overcards"},
        {"7c2h", "KsQd8h5c3d", HIGH, "nothing at all"},
        {"Jc3h", "Ts8d6h4c2s", HIGH | OVER1, "river: one overcard"},
        {"KcQh", "Ts8d5h4c2s", HIGH | OVER2, "river: two overcards"},
        {"JcTh", "9s8d2cKh3d", HIGH, "river: the open-ender is gone"},
    };
    return table;
}

std::string bitsOf(unsigned long long word) {
    std::string text;
    for (int b = 0; b < 64; ++b)
        if (word & bit(b))
            text += " " + std::to_string(b);
    return text;
}

} // namespace

TEST(FeatureWordTable, HasAtLeast150CasesOnEveryStreet) {
    int flop = 0, turn = 0, river = 0;
    for (const Case& c : cases()) {
        const std::size_t cards = std::string(c.board).size() / 2;
        flop += cards == 3;
        turn += cards == 4;
        river += cards == 5;
    }
    EXPECT_GE(cases().size(), 150u);
    EXPECT_GE(flop, 40);
    EXPECT_GE(turn, 15);
    EXPECT_GE(river, 15);
}

TEST(FeatureWordTable, EveryCaseHasItsWord) {
    for (const Case& c : cases()) {
        const unsigned long long word = featureWord(c.hand, c.board);
        EXPECT_EQ(word, c.expected) << c.hand << " on " << c.board << " (" << c.why << "): got bits"
                                    << bitsOf(word) << ", expected bits" << bitsOf(c.expected);
    }
}

TEST(FeatureWordTable, CoversEveryBitTheSystemSets) {
    unsigned long long seen = 0;
    for (const Case& c : cases())
        seen |= c.expected;
    // Bits 25, 40-45, 48, 50 and 57-63 are never set; every other bit is exercised.
    const unsigned long long neverSet =
        bit(25) | (0x3FULL << 40) | bit(48) | bit(50) | (0x7FULL << 57);
    EXPECT_EQ(seen, ~neverSet) << "missing bits" << bitsOf(~neverSet & ~seen);
}
