// The previous form of LineAction::calculateEV and its helpers, copied verbatim from the
// last version that had them; only the function's name differs. Compiled, like the
// production code, with -ffp-contract=off.

#include "FrozenLineAction.h"

#include <algorithm>
#include <cfloat>
#include <iomanip>
#include <locale>
#include <sstream>

// Every result below must come out of exactly the float operations written here, one IEEE
// single rounding per operation. Wider evaluation or fused multiply-adds would change
// printed digits; the build compiles this file with -ffp-contract=off.
#if defined(FLT_EVAL_METHOD) && FLT_EVAL_METHOD != 0
#error "EV arithmetic needs float expressions evaluated in float (FLT_EVAL_METHOD 0)."
#endif
#if defined(__FAST_MATH__)
#error "EV arithmetic must not be compiled with -ffast-math."
#endif

namespace {

// A rake at or below this prints no rake text.
const float rakeTextThreshold = 0.001f;

// An equity share as a percentage: two decimals, a blank and the sign.
std::string percent(float share) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    const float value = share * 100;
    text << std::fixed << std::setprecision(2) << value << " %";
    return text.str();
}

// The head of every explanation whose reaction pays rake: the pot, the rake fraction and
// the cap, with three decimals.
void writeRakeHead(std::ostream& text, float finalPot, float rakeFraction, float rakeCap,
                   float rake) {
    if (!(rake > rakeTextThreshold))
        return;
    text << std::setprecision(3) << "<b>Rake:</b> (" << finalPot << " [Final Pot] * "
         << rakeFraction << " [Rake%]) "
         << "capped at " << rakeCap << " = " << rake << "<br/><br/>";
}

// " - RAKE [Rake] = EV" behind a pot that is won without showdown, only if rake was taken.
void writeRakePiece(std::ostream& text, float rake, float ev) {
    if (rake > rakeTextThreshold)
        text << " - " << rake << " [Rake] = " << ev;
}

// The two-sided showdown text of codes 2, 6, 8 and 10.
void writeShowdownBody(std::ostream& text, float gain1, float loss1, float gain2, float loss2,
                       float equity1, float equity2, float ev1, float ev2) {
    text << "<b>Player1 EV:</b> " << gain1 << " [Gain Player1] * " << percent(equity1)
         << " [Equity Player1] - " << loss1 << " [Loss Player1] * " << percent(equity2)
         << " [Equity Player2] = " << ev1 << "<br/><br/>";
    text << "<b>Player2 EV:</b> " << gain2 << " [Gain Player2] * " << percent(equity2)
         << " [Equity Player2] - " << loss2 << " [Loss Player2] * " << percent(equity1)
         << " [Equity Player1] = " << ev2 << "<br/>";
}

} // namespace

void FrozenLineAction::previousCalculateEV() {
    if (action == ActionCode::Check || action == ActionCode::Bet)
        return;

    // P pot, B first size, S own size, L last investments, K stacks, R rake fraction, C cap,
    // E equities, W whether Player1 acts first.
    const float P = deadmoney;
    const float B = previousMoney;
    const float S = size;
    const float L1 = player1sLastInvestmentBeforeAction;
    const float L2 = player2sLastInvestmentBeforeAction;
    const float K1 = player1sEffectiveStackSizeBeforeAction;
    const float K2 = player2sEffectiveStackSizeBeforeAction;
    const float R = rakeFraction;
    const float C = rakeCap;
    const float E1 = equityP1;
    const float E2 = equityP2;
    const bool W = player1FirstToAct;

    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed;

    float ev1 = 0.0f;
    float ev2 = 0.0f;

    switch (action) {
    case ActionCode::Call:
    case ActionCode::CheckBetCall:
    case ActionCode::RaiseCall: {
        // The amount called: the first size for a call of the bet, the reaction's own size
        // when the first actor calls a bet or a raise of the other player.
        const float amount = action == ActionCode::Call ? B : S;
        float X;
        if (action == ActionCode::RaiseCall) {
            const float pb = P + B;
            const float pbs = pb + S;
            const float less1 = pbs - L1;
            const float less2 = less1 - L2;
            const float plus = less2 + S;
            X = plus - B;
        } else {
            const float twice = 2 * amount;
            const float withPot = twice + P;
            const float less1 = withPot - L1;
            X = less1 - L2;
        }
        const float r = std::min(X * R, C);
        const float loss1 = amount - L1;
        const float loss2 = amount - L2;
        const float potWon1 = P + loss2;
        const float gain1 = potWon1 - r;
        const float potWon2 = P + loss1;
        const float gain2 = potWon2 - r;
        const float win1 = E1 * gain1;
        const float lose1 = (1 - E1) * loss1;
        ev1 = win1 - lose1;
        const float win2 = E2 * gain2;
        const float lose2 = (1 - E2) * loss2;
        ev2 = win2 - lose2;
        writeRakeHead(text, X, R, C, r);
        text << std::setprecision(2);
        writeShowdownBody(text, gain1, loss1, gain2, loss2, E1, E2, ev1, ev2);
        break;
    }
    case ActionCode::Fold:
    case ActionCode::CheckBetFold: {
        const float r = std::min(P * R, C);
        const float won = P - r;
        // Who takes the pot: the bettor when the other player folds to the bet (code 3), the
        // other player when the first actor folds to his bet (code 5).
        const bool player1Wins = (action == ActionCode::Fold) == W;
        ev1 = player1Wins ? won : 0.0f;
        ev2 = player1Wins ? 0.0f : won;
        writeRakeHead(text, P, R, C, r);
        text << std::setprecision(2);
        if (player1Wins) {
            text << "<b>Player1 EV:</b> " << P << " [Deadmoney]";
            writeRakePiece(text, r, ev1);
            text << "<br/><br/><b>Player2 EV:</b> 0";
        } else {
            text << "<b>Player1 EV:</b> "
                 << "0<br/><br/><b>Player2 EV:</b> " << P << " [Deadmoney]";
            writeRakePiece(text, r, ev2);
        }
        break;
    }
    case ActionCode::CheckCheck: {
        const float r = std::min(R * P, C);
        const float pot = P - r;
        ev1 = pot * E1;
        ev2 = E2 * pot;
        writeRakeHead(text, P, R, C, r);
        text << std::setprecision(2);
        text << "<b>Player1 EV:</b> " << pot << " [Gain Player1] * " << percent(E1)
             << " [Equity Player1] = " << ev1 << "<br/><br/>";
        text << "<b>Player2 EV:</b> " << pot << " [Gain Player2] * " << percent(E2)
             << " [Equity Player2] = " << ev2 << "<br/>";
        break;
    }
    case ActionCode::CheckBetRaiseFold: {
        const float X = S + P;
        const float r = std::min(R * X, C);
        const float won = X - r;
        const float lost = -S;
        ev1 = W ? won : lost;
        ev2 = W ? lost : won;
        writeRakeHead(text, X, R, C, r);
        text << std::setprecision(2);
        text << "<b>Player1 EV:</b> ";
        if (W) {
            text << X << " [Pot]";
            writeRakePiece(text, r, ev1);
        } else {
            text << lost << " [Player1's Bet Size] ";
        }
        text << "<br/><br/><b>Player2 EV:</b> ";
        if (W) {
            text << lost << " [Player2's Bet Size] ";
        } else {
            text << X << " [Pot]";
            writeRakePiece(text, r, ev2);
        }
        break;
    }
    case ActionCode::CheckBetRaiseCall: {
        const float pb = P + B;
        const float X = pb + B;
        const float r = std::min(X * R, C);
        const float G = pb - r;
        const float win1 = E1 * G;
        const float lose1 = (1 - E1) * B;
        ev1 = win1 - lose1;
        const float win2 = E2 * G;
        const float lose2 = (1 - E2) * B;
        ev2 = win2 - lose2;
        // The printed pot is the one of a called raise, although the rake above was taken
        // from the pot of a called check-raise.
        const float bp = B + P;
        const float bps = bp + S;
        const float less1 = bps - L1;
        const float less2 = less1 - L2;
        const float plus = less2 + S;
        const float printedPot = plus - B;
        writeRakeHead(text, printedPot, R, C, r);
        text << std::setprecision(2);
        writeShowdownBody(text, G, B, G, B, E1, E2, ev1, ev2);
        break;
    }
    case ActionCode::RaiseFold:
    case ActionCode::RaiseShipFold: {
        // Code 9: the first actor folds to the raise and loses his bet; code 11: the first
        // actor ships and the raiser folds, losing his raise.
        const bool raiseFold = action == ActionCode::RaiseFold;
        const float amount = raiseFold ? B : S;
        float X;
        float printedPot;
        if (raiseFold) {
            const float pb = P + B;
            X = W ? pb - L1 : pb - L2;
            printedPot = pb - L1;
        } else {
            const float sp = S + P;
            X = W ? sp - L2 : sp - L1;
            printedPot = sp - L1;
        }
        const float r = std::min(R * X, C);
        const float won = X - r;
        // Player1 loses when he bet and folded (code 9, W) or raised and folded to the shove
        // (code 11, not W).
        const bool player1Loses = raiseFold == W;
        const float loserInvestment = player1Loses ? L1 : L2;
        const float additional = amount - loserInvestment;
        const float lost = -additional;
        ev1 = player1Loses ? lost : won;
        ev2 = player1Loses ? won : lost;
        writeRakeHead(text, printedPot, R, C, r);
        text << std::setprecision(2);
        text << "<b>Player1 EV:</b> ";
        if (player1Loses) {
            text << lost << " [Last Additional Investment] ";
        } else {
            text << X << " [Pot]";
            writeRakePiece(text, r, ev1);
        }
        text << "<br/><br/><b>Player2 EV:</b> ";
        if (player1Loses) {
            text << X << " [Pot]";
            writeRakePiece(text, r, ev2);
        } else {
            text << lost << " [Last Additional Investment] ";
        }
        break;
    }
    case ActionCode::RaiseShipCall: {
        // The additional investments of the shove and its call: both stacks, limited by the
        // smaller total of stack and last investment.
        float A1;
        float A2;
        if (!W) {
            A1 = K1;
            const float total1 = K1 + L1;
            A2 = total1 - L2;
            if (K2 <= A2) {
                const float total2 = K2 + L2;
                A1 = total2 - L1;
                A2 = K2;
            }
        } else {
            A2 = K2;
            const float total2 = K2 + L2;
            A1 = total2 - L1;
            if (K1 <= A1) {
                const float total1 = K1 + L1;
                A2 = total1 - L2;
                A1 = K1;
            }
        }
        const float T = P + A1;
        const float X = T + A2;
        const float r = std::min(R * X, C);
        const float gain2 = T - r;
        const float win2 = gain2 * E2;
        const float lose2 = (1 - E2) * A2;
        ev2 = win2 - lose2;
        const float pot1 = P + A2;
        const float gain1 = pot1 - r;
        const float win1 = gain1 * E1;
        const float lose1 = (1 - E1) * A1;
        ev1 = win1 - lose1;
        writeRakeHead(text, X, R, C, r);
        text << std::setprecision(3);
        const float printedPot2 = P + A1;
        const float printedGain2 = printedPot2 - r;
        text << "<b>EV Player1:</b> " << gain1 << " [Gain Player1] * " << percent(E1)
             << " [Equity Player 1] - " << A1 << " [Additional Investment] * " << percent(E2)
             << " [Equity Player 2] = " << ev1 << "<br/><br/>";
        text << "<b>EV Player2:</b> " << printedGain2 << " [Gain Player2] * " << percent(E2)
             << " [Equity Player 2] - " << A2 << " [Additional Investment] * " << percent(E1)
             << " [Equity Player 1] = " << ev2 << "<br/><br/>";
        break;
    }
    case ActionCode::Check:
    case ActionCode::Bet:
        return;
    default:
        // A number outside the table; the file reader never produces one.
        return;
    }

    EV_P1 = ev1;
    EV_P2 = ev2;
    explanation = text.str();
}
