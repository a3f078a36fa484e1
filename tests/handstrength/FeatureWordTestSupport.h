#pragma once

// The feature word of one concrete hand on a board, read through the library's public
// interface only: one single-bit key per feature bit, counted by the one-player hit
// evaluation on a range of just this hand.

#include "VelmaraEvaluatorBase.h"

#include <string>

namespace featuretest {

constexpr unsigned long long bit(int n) {
    return 1ULL << n;
}

// Feature bits, in the names of docs/hand-strength.md.
constexpr unsigned long long SF = bit(0), QUADS = bit(1), FH = bit(2), FL = bit(3), ST = bit(4),
                             TRIPS = bit(5), TWOPAIR = bit(6), PAIR = bit(7), HIGH = bit(8);
constexpr unsigned long long R1 = bit(9), R2 = bit(10), R3 = bit(11), R4 = bit(12), R5 = bit(13);
constexpr unsigned long long BOARD = bit(14), OVERPAIR = bit(15), TWO = bit(16), ONE = bit(17);
constexpr unsigned long long K1 = bit(18), K2 = bit(19), K3 = bit(20);
constexpr unsigned long long FD1 = bit(21), PPTWOPAIR = bit(22), PPMID = bit(23), PPUNDER = bit(24);
constexpr unsigned long long FD = bit(26), OESD = bit(27), GS = bit(28), BDFD = bit(29),
                             BDSD = bit(30);
constexpr unsigned long long N1 = bit(31), N2 = bit(32), N3 = bit(33), N4 = bit(34), N5 = bit(35);
constexpr unsigned long long BD_2O2G = bit(36), BD_1O2G = bit(37), BD_4G = bit(38), BD_2G = bit(39);
constexpr unsigned long long OVER2 = bit(46), OVER1 = bit(47), ACE = bit(49);
constexpr unsigned long long PP12 = bit(51), PP23 = bit(52), PPLOW = bit(53);
constexpr unsigned long long FD2 = bit(54), SD1 = bit(55), SD2 = bit(56);

inline unsigned long long featureWord(const std::string& hand, const std::string& board) {
    DetailHandEvaluations evaluations;
    for (int b = 0; b < 64; ++b) {
        DetailHandEvaluation entry;
        entry.key = HandStrengthKey(bit(b), 0);
        evaluations.details.push_back(entry);
    }
    getHitEvaluationForOnePlayer(hand, board, "", evaluations);
    unsigned long long word = 0;
    for (int b = 0; b < 64; ++b)
        if (evaluations.details[b].combinations1 == 1)
            word |= bit(b);
    return word;
}

} // namespace featuretest
