#include "evfe/LineAction.h"

#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "VelmaraEvaluatorBase.h"

#include <algorithm>
#include <cfloat>
#include <cstddef>
#include <iomanip>
#include <iterator>
#include <limits>
#include <locale>
#include <sstream>

// Every result below must come out of exactly the float operations written here, one IEEE
// single rounding per operation, in the order and grouping the parentheses show. Wider
// evaluation or fused multiply-adds would change printed digits; the build compiles this file
// with -ffp-contract=off.
#if defined(FLT_EVAL_METHOD) && FLT_EVAL_METHOD != 0
#error "EV arithmetic needs float expressions evaluated in float (FLT_EVAL_METHOD 0)."
#endif
#if defined(__FAST_MATH__)
#error "EV arithmetic must not be compiled with -ffast-math."
#endif

namespace {

// A rake at or below this prints no rake text.
const float rakeTextThreshold = 0.001f;

// The inputs of one reaction under the short names of the EV formulas: P pot before the first
// action, B first size, S own size, L last investments, K stacks, R rake fraction, C cap,
// E equities, W whether Player1 acts first.
struct Stakes {
    float P, B, S, L1, L2, K1, K2, R, C, E1, E2;
    bool W;
};

Stakes stakesOf(const LineAction& action) {
    return {action.deadmoney,
            action.previousMoney,
            action.size,
            action.player1sLastInvestmentBeforeAction,
            action.player2sLastInvestmentBeforeAction,
            action.player1sEffectiveStackSizeBeforeAction,
            action.player2sEffectiveStackSizeBeforeAction,
            action.rakeFraction,
            action.rakeCap,
            action.equityP1,
            action.equityP2,
            action.player1FirstToAct};
}

struct PlayerEVs {
    float player1;
    float player2;
};

// The arithmetic of one action code: returns both EVs and writes the explanation into a
// stream set to fixed notation.
using ReactionEV = PlayerEVs (*)(const Stakes&, std::ostream&);

// --- Money --------------------------------------------------------------------------------

// The product is taken first and only then capped, for every code alike (the product of two
// floats does not depend on the order of its factors).
float cappedRake(float finalPot, float rakeFraction, float rakeCap) {
    const float uncapped = finalPot * rakeFraction;
    return std::min(uncapped, rakeCap);
}

float rakeOf(const Stakes& in, float finalPot) {
    return cappedRake(finalPot, in.R, in.C);
}

// The final pot when `amount` is bet and called: both last investments are part of the
// amount and already in P.
float calledBetPot(const Stakes& in, float amount) {
    return (((2 * amount) + in.P) - in.L1) - in.L2;
}

// The final pot when the bet B is raised to S and called.
float calledRaisePot(const Stakes& in) {
    return (((((in.P + in.B) + in.S) - in.L1) - in.L2) + in.S) - in.B;
}

// What one player wins at showdown and what he loses.
struct ShowdownSide {
    float gain;
    float loss;
};

float showdownEV(float equity, const ShowdownSide& side) {
    const float win = equity * side.gain;
    const float lose = (1 - equity) * side.loss;
    return win - lose;
}

PlayerEVs showdownEVs(const Stakes& in, const ShowdownSide& player1, const ShowdownSide& player2) {
    return {showdownEV(in.E1, player1), showdownEV(in.E2, player2)};
}

// --- Explanation text ---------------------------------------------------------------------

// An equity share as a percentage: two decimals, a blank and the sign, whatever precision
// the text around it uses.
struct Percent {
    float share;
};

std::ostream& operator<<(std::ostream& text, Percent percent) {
    const std::streamsize precision = text.precision(2);
    const float value = percent.share * 100;
    text << value << " %";
    text.precision(precision);
    return text;
}

// The head of every explanation whose reaction pays rake, with three decimals; what follows
// is written with `bodyPrecision` decimals. `printedPot` is not always the pot the rake was
// taken from: some codes show the expression of a related code.
void writeRakeHead(std::ostream& text, const Stakes& in, float printedPot, float rake,
                   int bodyPrecision = 2) {
    if (rake > rakeTextThreshold) {
        text << std::setprecision(3) << "<b>Rake:</b> (" << printedPot << " [Final Pot] * " << in.R
             << " [Rake%]) capped at " << in.C << " = " << rake << "<br/><br/>";
    }
    text << std::setprecision(bodyPrecision);
}

// The two-sided showdown text of codes 2, 6, 8 and 10.
void writeShowdownBody(std::ostream& text, const Stakes& in, const ShowdownSide& player1,
                       const ShowdownSide& player2, const PlayerEVs& ev) {
    text << "<b>Player1 EV:</b> " << player1.gain << " [Gain Player1] * " << Percent{in.E1}
         << " [Equity Player1] - " << player1.loss << " [Loss Player1] * " << Percent{in.E2}
         << " [Equity Player2] = " << ev.player1 << "<br/><br/>";
    text << "<b>Player2 EV:</b> " << player2.gain << " [Gain Player2] * " << Percent{in.E2}
         << " [Equity Player2] - " << player2.loss << " [Loss Player2] * " << Percent{in.E1}
         << " [Equity Player1] = " << ev.player2 << "<br/>";
}

// A pot won without showdown, as its winner's part of the text shows it.
struct WonPot {
    float pot;
    const char* label;
    float rake;
};

// What the other player gives up: his own money under its label. Without a label he gives
// up nothing beyond what is in the pot, and his part reads a plain 0.
struct Forfeit {
    float money;
    const char* label;
};

const Forfeit nothingForfeited{0.0f, nullptr};

void writeSideWithoutShowdown(std::ostream& text, bool wins, const WonPot& won, float kept,
                              const Forfeit& lost) {
    if (wins) {
        text << won.pot << won.label;
        if (won.rake > rakeTextThreshold)
            text << " - " << won.rake << " [Rake] = " << kept;
    } else if (lost.label != nullptr) {
        text << lost.money << lost.label;
    } else {
        text << "0";
    }
}

// The street ends in a fold: the winner keeps the pot less the rake, the loser's EV is his
// forfeited money.
PlayerEVs potWithoutShowdown(std::ostream& text, bool player1Wins, const WonPot& won,
                             const Forfeit& lost) {
    const float kept = won.pot - won.rake;
    text << "<b>Player1 EV:</b> ";
    writeSideWithoutShowdown(text, player1Wins, won, kept, lost);
    text << "<br/><br/><b>Player2 EV:</b> ";
    writeSideWithoutShowdown(text, !player1Wins, won, kept, lost);
    if (player1Wins)
        return {kept, lost.money};
    return {lost.money, kept};
}

// --- One function per action code, or per family of codes that share their arithmetic -----

// Codes 2, 6 and 10: `amount` is called. Each player risks it less his last investment, and
// wins P and what the other player adds, less the rake of the final pot.
PlayerEVs calledShowdown(const Stakes& in, float amount, float finalPot, std::ostream& text) {
    const float r = rakeOf(in, finalPot);
    const float loss1 = amount - in.L1;
    const float loss2 = amount - in.L2;
    const ShowdownSide player1{(in.P + loss2) - r, loss1};
    const ShowdownSide player2{(in.P + loss1) - r, loss2};
    const PlayerEVs ev = showdownEVs(in, player1, player2);
    writeRakeHead(text, in, finalPot, r);
    writeShowdownBody(text, in, player1, player2, ev);
    return ev;
}

// Code 2: the other player calls the first action.
PlayerEVs callEV(const Stakes& in, std::ostream& text) {
    return calledShowdown(in, in.B, calledBetPot(in, in.B), text);
}

// Code 6: the first actor checks and calls the other player's bet of S.
PlayerEVs checkBetCallEV(const Stakes& in, std::ostream& text) {
    return calledShowdown(in, in.S, calledBetPot(in, in.S), text);
}

// Code 10: the first actor calls the other player's raise to S.
PlayerEVs raiseCallEV(const Stakes& in, std::ostream& text) {
    return calledShowdown(in, in.S, calledRaisePot(in), text);
}

// Codes 3 and 5: a bet is folded to before any money beyond P goes in, and its bettor takes
// P, raked like every other pot.
PlayerEVs deadmoneyTaken(const Stakes& in, bool player1Wins, std::ostream& text) {
    const float r = rakeOf(in, in.P);
    writeRakeHead(text, in, in.P, r);
    return potWithoutShowdown(text, player1Wins, {in.P, " [Deadmoney]", r}, nothingForfeited);
}

// Code 3: the other player folds to the first action.
PlayerEVs foldEV(const Stakes& in, std::ostream& text) {
    return deadmoneyTaken(in, in.W, text);
}

// Code 5: the first actor checks and folds to the other player's bet.
PlayerEVs checkBetFoldEV(const Stakes& in, std::ostream& text) {
    return deadmoneyTaken(in, !in.W, text);
}

// Code 4: both check; P less the rake is shared by equity.
PlayerEVs checkCheckEV(const Stakes& in, std::ostream& text) {
    const float r = rakeOf(in, in.P);
    const float pot = in.P - r;
    const PlayerEVs ev{pot * in.E1, in.E2 * pot};
    writeRakeHead(text, in, in.P, r);
    text << "<b>Player1 EV:</b> " << pot << " [Gain Player1] * " << Percent{in.E1}
         << " [Equity Player1] = " << ev.player1 << "<br/><br/>";
    text << "<b>Player2 EV:</b> " << pot << " [Gain Player2] * " << Percent{in.E2}
         << " [Equity Player2] = " << ev.player2 << "<br/>";
    return ev;
}

// Code 7: the first actor check-raises the other player's bet of S, who folds and loses it.
PlayerEVs checkBetRaiseFoldEV(const Stakes& in, std::ostream& text) {
    const float X = in.S + in.P;
    const float r = rakeOf(in, X);
    writeRakeHead(text, in, X, r);
    const char* betLabel = in.W ? " [Player2's Bet Size] " : " [Player1's Bet Size] ";
    return potWithoutShowdown(text, in.W, {X, " [Pot]", r}, {-in.S, betLabel});
}

// Code 8: the first actor check-raises to B and is called. Both sides are charged the whole
// B, without their last investments.
PlayerEVs checkBetRaiseCallEV(const Stakes& in, std::ostream& text) {
    const float potWithRaise = in.P + in.B;
    const float r = rakeOf(in, potWithRaise + in.B);
    const ShowdownSide side{potWithRaise - r, in.B};
    const PlayerEVs ev = showdownEVs(in, side, side);
    // The printed pot is the one of a called raise, although the rake above was taken from
    // the pot of a called check-raise.
    writeRakeHead(text, in, calledRaisePot(in), r);
    writeShowdownBody(text, in, side, side, ev);
    return ev;
}

// Codes 9 and 11: a player folds to a raise over his last size, `amount`. That size holds
// his last investment, which P already counts: it comes off the pot he leaves and off what he
// loses. The head always shows Player1's expression of the pot.
PlayerEVs foldedToARaise(const Stakes& in, float potWithAmount, float amount, bool player1Loses,
                         std::ostream& text) {
    const float loserInvestment = player1Loses ? in.L1 : in.L2;
    const float X = potWithAmount - loserInvestment;
    const float r = rakeOf(in, X);
    writeRakeHead(text, in, potWithAmount - in.L1, r);
    const float additional = amount - loserInvestment;
    return potWithoutShowdown(text, !player1Loses, {X, " [Pot]", r},
                              {-additional, " [Last Additional Investment] "});
}

// Code 9: the first actor bets B and folds to the other player's raise.
PlayerEVs raiseFoldEV(const Stakes& in, std::ostream& text) {
    return foldedToARaise(in, in.P + in.B, in.B, in.W, text);
}

// Code 11: the other player raises to S and folds to the first actor's shove.
PlayerEVs raiseShipFoldEV(const Stakes& in, std::ostream& text) {
    return foldedToARaise(in, in.S + in.P, in.S, !in.W, text);
}

// The additional investments of a shove and its call, limited by the smaller total of stack
// and last investment. The `lead` player's stack is tried first; the other player then
// matches its total, unless his own total is not larger, when his stack limits both.
struct AllIn {
    float lead;
    float other;
};

AllIn limitedByTheShorterTotal(float leadStack, float leadInvestment, float otherStack,
                               float otherInvestment) {
    const float otherMatches = (leadStack + leadInvestment) - otherInvestment;
    if (otherStack <= otherMatches)
        return {(otherStack + otherInvestment) - leadInvestment, otherStack};
    return {leadStack, otherMatches};
}

// Code 12: the first actor ships over the other player's raise and is called; the only code
// that reads the stacks. Its text keeps three decimals throughout.
PlayerEVs raiseShipCallEV(const Stakes& in, std::ostream& text) {
    float A1;
    float A2;
    if (in.W) {
        const AllIn allIn = limitedByTheShorterTotal(in.K2, in.L2, in.K1, in.L1);
        A1 = allIn.other;
        A2 = allIn.lead;
    } else {
        const AllIn allIn = limitedByTheShorterTotal(in.K1, in.L1, in.K2, in.L2);
        A1 = allIn.lead;
        A2 = allIn.other;
    }
    const float T = in.P + A1;
    const float X = T + A2;
    const float r = rakeOf(in, X);
    const ShowdownSide player1{(in.P + A2) - r, A1};
    const ShowdownSide player2{T - r, A2};
    const PlayerEVs ev = showdownEVs(in, player1, player2);
    writeRakeHead(text, in, X, r, 3);
    text << "<b>EV Player1:</b> " << player1.gain << " [Gain Player1] * " << Percent{in.E1}
         << " [Equity Player 1] - " << A1 << " [Additional Investment] * " << Percent{in.E2}
         << " [Equity Player 2] = " << ev.player1 << "<br/><br/>";
    text << "<b>EV Player2:</b> " << player2.gain << " [Gain Player2] * " << Percent{in.E2}
         << " [Equity Player 2] - " << A2 << " [Additional Investment] * " << Percent{in.E1}
         << " [Equity Player 1] = " << ev.player2 << "<br/><br/>";
    return ev;
}

// The arithmetic of every action code, by its number. The opening actions have no EV of
// their own.
const ReactionEV reactionEVs[] = {nullptr,
                                  nullptr,
                                  callEV,
                                  foldEV,
                                  checkCheckEV,
                                  checkBetFoldEV,
                                  checkBetCallEV,
                                  checkBetRaiseFoldEV,
                                  checkBetRaiseCallEV,
                                  raiseFoldEV,
                                  raiseCallEV,
                                  raiseShipFoldEV,
                                  raiseShipCallEV};
static_assert(std::size(reactionEVs) == static_cast<std::size_t>(ActionCode::RaiseShipCall) + 1,
              "one entry per action code");

// Nothing for a number outside the table either; the file reader never produces one.
ReactionEV reactionEVOf(ActionCode code) {
    const int number = static_cast<int>(code);
    if (number < 0 || static_cast<std::size_t>(number) >= std::size(reactionEVs))
        return nullptr;
    return reactionEVs[number];
}

} // namespace

void LineAction::calculateEV() {
    const ReactionEV reactionEV = reactionEVOf(action);
    if (reactionEV == nullptr)
        return;
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed;
    const PlayerEVs ev = reactionEV(stakesOf(*this), text);
    EV_P1 = ev.player1;
    EV_P2 = ev.player2;
    explanation = text.str();
}

void LineAction::updateParentRangePercentage() {
    if (range == nullptr || range->tree == nullptr) {
        parentRangePercentage = std::numeric_limits<float>::quiet_NaN();
        return;
    }
    parentRangePercentage = range->tree->shareOfParent(*range);
}

float LineAction::rakeOf(float finalPot) const {
    return cappedRake(finalPot, rakeFraction, rakeCap);
}

void LineAction::setEquities(const EquityEvaluation<unsigned long long>& evaluation) {
    const float total = static_cast<float>(evaluation.total);
    const float wins1 = static_cast<float>(evaluation.wins1);
    const float wins2 = static_cast<float>(evaluation.wins2);
    const float ties = static_cast<float>(evaluation.ties);
    const float halfTies = ties * 0.5f;
    const float share1 = wins1 + halfTies;
    const float share2 = wins2 + halfTies;
    equityP1 = share1 / total;
    equityP2 = share2 / total;
}
