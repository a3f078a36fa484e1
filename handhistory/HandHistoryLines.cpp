#include "handhistory/HandHistoryLines.h"

#include "evfe/LineFactory.h"

#include <map>

namespace {

bool isRaise(const HandHistoryAction& action, int street) {
    // Preflop every opening is a raise of the big blind.
    return action.verb == "raise" || (street != 0 && action.verb == "bet");
}

// "Raise"/"Bet", "3-Bet"/"Raise", then counted: the prefix of raise number `index`.
std::string linePrefix(int index, bool preflop) {
    if (index == 0)
        return preflop ? "Raise" : "Bet";
    if (index == 1)
        return preflop ? "3-Bet" : "Raise";
    return std::to_string(preflop ? index + 2 : index + 1) + "-Bet";
}

std::string lowered(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

// The word of the other player's raise over raise number `index`: the next prefix.
std::string nextRaiseWord(int index, bool preflop) {
    return lowered(linePrefix(index + 1, preflop));
}

float stackOf(const std::map<std::string, float>& stacks, const std::string& player) {
    const auto it = stacks.find(player);
    return it == stacks.end() ? 0.0f : it->second;
}

} // namespace

HandHistoryLines::HandHistoryLines(const HandHistoryRecord& hand)
    : hand(hand), heroName(hand.hero) {}

void HandHistoryLines::preflopLines(LineList& lines) {
    streetLines(lines, 0, hand.postActions, hand.stacksPreflop, hand.potPreflop);
}

void HandHistoryLines::flopLines(LineList& lines) {
    streetLines(lines, 1, hand.flopActions, hand.stacksFlop, hand.potFlop);
}

void HandHistoryLines::turnLines(LineList& lines) {
    streetLines(lines, 2, hand.turnActions, hand.stacksTurn, hand.potTurn);
}

void HandHistoryLines::riverLines(LineList& lines) {
    streetLines(lines, 3, hand.riverActions, hand.stacksRiver, hand.potRiver);
}

void HandHistoryLines::streetLines(LineList& lines, int street,
                                   const std::vector<HandHistoryAction>& actions,
                                   const HandHistoryRecord::Stacks& stacks, float pot) {
    for (int index = 0; index <= 8; ++index)
        lineFor(lines, index, street, actions, stacks, pot);
}

void HandHistoryLines::lineFor(LineList& lines, int raiseIndex, int street,
                               const std::vector<HandHistoryAction>& actions,
                               const HandHistoryRecord::Stacks& startStacks, float startPot) {
    const bool preflop = street == 0;
    // 1. The raise.
    std::size_t k = actions.size();
    for (std::size_t i = 0, seen = 0; i < actions.size(); ++i) {
        if (!isRaise(actions[i], street))
            continue;
        if (static_cast<int>(seen++) == raiseIndex) {
            k = i;
            break;
        }
    }
    if (k == actions.size())
        return;
    const std::string raiser = actions[k].player;
    if (heroName.empty())
        heroName = raiser;

    // 2. What each player put in before it: the last post, bet or raise (posts of one player
    // add up, an ante with a blind), and the calls of players with neither after them.
    std::map<std::string, float> latest;
    std::map<std::string, bool> latestIsPost;
    std::map<std::string, float> called;
    std::map<std::string, float> blinds;
    std::map<std::string, float> antes;
    for (std::size_t i = k; i-- > 0;) {
        const HandHistoryAction& a = actions[i];
        const bool post = a.verb == "post";
        if (post)
            (a.blind == "ante" ? antes : blinds)[a.player] += a.amount;
        if (post || a.verb == "raise" || a.verb == "bet") {
            const auto seen = latest.find(a.player);
            if (seen == latest.end()) {
                latest[a.player] = a.amount;
                latestIsPost[a.player] = post;
            } else if (post && latestIsPost[a.player]) {
                seen->second += a.amount;
            }
        } else if (a.verb == "call" && latest.count(a.player) == 0) {
            called[a.player] += a.amount;
        }
    }
    // 3. That money leaves the stacks and joins the pot. Posts are in the pot already; a
    // raise's amount includes the blind its player posted, but not the ante.
    HandHistoryRecord::Stacks stacks = startStacks;
    float pot = startPot;
    for (const auto& [player, amount] : latest) {
        if (latestIsPost[player]) {
            stacks[player] -= amount;
            continue;
        }
        stacks[player] -= amount + antes[player];
        pot += amount - blinds[player];
    }
    for (const auto& [player, amount] : called) {
        stacks[player] -= amount;
        pot += amount;
    }

    // 4. The opponent: who raises next, else who calls, else who folds; else anyone still in.
    std::string opponent;
    for (const char* verb : {"raise", "call", "fold"}) {
        for (std::size_t i = k + 1; i < actions.size() && opponent.empty(); ++i)
            if (actions[i].verb == verb && actions[i].player != raiser)
                opponent = actions[i].player;
        if (!opponent.empty())
            break;
    }
    if (opponent.empty()) {
        for (const HandHistoryAction& a : actions) {
            if (a.player == raiser)
                continue;
            bool folded = false;
            for (const HandHistoryAction& b : actions)
                folded = folded || (b.player == a.player && b.verb == "fold");
            if (!folded) {
                opponent = a.player;
                break;
            }
        }
    }
    const float opponentStack = stackOf(stacks, opponent);
    const float raiserStack = stackOf(stacks, raiser);

    // 5. The last investments of both before the raise.
    float raiserIn = 0.0f;
    float opponentIn = 0.0f;
    bool raiserSeen = false;
    bool opponentSeen = false;
    for (std::size_t i = k; i-- > 0;) {
        const HandHistoryAction& a = actions[i];
        if (a.verb != "bet" && a.verb != "raise" && a.verb != "post")
            continue;
        if (a.blind == "ante")
            continue;
        if (!raiserSeen && a.player == raiser) {
            raiserIn = a.amount;
            raiserSeen = true;
        } else if (!opponentSeen && !opponent.empty() && a.player == opponent) {
            opponentIn = a.amount;
            opponentSeen = true;
        }
    }

    // 6. No raise is bigger than what the opponent can answer.
    float amount = actions[k].amount;
    if (opponentStack != 0.0f && opponentIn + opponentStack < amount)
        amount = opponentIn + opponentStack;
    float nextRaise = 0.0f;
    bool hasNextRaise = false;
    for (std::size_t i = k + 1; i < actions.size(); ++i) {
        if (isRaise(actions[i], street)) {
            nextRaise = actions[i].amount;
            hasNextRaise = true;
            break;
        }
    }
    if (hasNextRaise && raiserStack != 0.0f && raiserIn + raiserStack < nextRaise)
        nextRaise = raiserIn + raiserStack;

    // 7. Names.
    const std::string prefix = linePrefix(raiseIndex, preflop);
    const std::string raiseWord = nextRaiseWord(raiseIndex, preflop);
    const bool raiserIsHero = raiser == heroName;
    const std::string firstActor = raiserIsHero ? "Player1" : "Player2";
    const std::string displayName = raiserIsHero ? "Hero" : raiser;

    // 8. The variants, in big blinds.
    const float bb = hand.bigBlind;
    const float size = amount / bb;
    const float deadmoney = pot / bb;
    const float p1Stack = (raiserIsHero ? raiserStack : opponentStack) / bb;
    const float p2Stack = (raiserIsHero ? opponentStack : raiserStack) / bb;
    const float p1In = (raiserIsHero ? raiserIn : opponentIn) / bb;
    const float p2In = (raiserIsHero ? opponentIn : raiserIn) / bb;
    const auto dress = [&](LineVariant variant) {
        variant.deadmoney = deadmoney;
        variant.player1sEffectiveStackSize = p1Stack;
        variant.player2sEffectiveStackSize = p2Stack;
        variant.player1sLastInvestment = p1In;
        variant.player2sLastInvestment = p2In;
        for (std::size_t i = 0; i < variant.actions.size(); ++i) {
            LineAction& action = variant.actions[i];
            action.deadmoney = deadmoney;
            action.previousMoney = i == 0 ? 0.0f : size;
            action.player1sEffectiveStackSizeBeforeAction = p1Stack;
            action.player2sEffectiveStackSizeBeforeAction = p2Stack;
            action.player1sLastInvestmentBeforeAction = p1In;
            action.player2sLastInvestmentBeforeAction = p2In;
        }
        variant.actions[0].verb = lowered(prefix);
        variant.actions[0].size = size;
        return variant;
    };
    const std::string variantName = displayName + " " + prefix;
    LineVariant fold = dress(LineFactory::betFold(variantName + "/Fold", firstActor));
    fold.actions[3].verb = raiseWord;
    LineVariant call = dress(LineFactory::betCall(variantName + "/Call", firstActor));
    call.actions[3].verb = raiseWord;
    LineVariant ship = dress(LineFactory::betShip(variantName + "/Ship", firstActor));
    ship.actions[3].verb = raiseWord + "/fold";
    ship.actions[4].verb = raiseWord + "/call";
    if (hasNextRaise) {
        call.actions[3].size = nextRaise / bb;
        ship.actions[3].size = nextRaise / bb;
    }

    // 12. Into the list: beside a line of the same kind, name and street, or as a new one.
    const std::pair<const char*, LineVariant*> ends[] = {
        {"/Fold", &fold}, {"/Call", &call}, {"/Ship", &ship}};
    for (const auto& [end, variant] : ends) {
        const std::string name = prefix + end;
        Line* line = findLine(lines, name, street);
        if (line != nullptr && line->actionSequence == variant->kind) {
            line->variants.push_back(std::move(*variant));
            continue;
        }
        Line made;
        made.name = name;
        made.street = street;
        made.actionSequence = variant->kind;
        made.variants.push_back(std::move(*variant));
        insertLine(lines, std::move(made));
    }
}
