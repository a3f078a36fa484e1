#include "handhistory/CanonicalHandText.h"

#include "handhistory/HandHistoryAmount.h"
#include "handhistory/HandHistoryMarkers.h"

#include <algorithm>

CanonicalHandText::CanonicalHandText(char currency) : currency(currency) {}

void CanonicalHandText::addSeat(int seat, const std::string& name, double stack) {
    if (hasSeat(name))
        return;
    names.push_back(name);
    stacks[name] = stack;
    seatLines += "Seat " + std::to_string(seat) + ": " + name + " (" + money(stack) + ")\n";
}

void CanonicalHandText::setButton(int seat) {
    button = seat;
}

void CanonicalHandText::setHero(const std::string& name, const std::string& cards) {
    hero = name;
    heroCards = cards;
}

bool CanonicalHandText::hasSeat(const std::string& name) const {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string CanonicalHandText::money(double value) const {
    std::string out;
    if (currency != 0)
        out.push_back(currency);
    return out + HandHistoryAmount::format(value);
}

void CanonicalHandText::line(const std::string& player, const std::string& rest) {
    actionLines += player + ": " + rest + "\n";
}

void CanonicalHandText::post(const std::string& player, const std::string& blind, double amount) {
    postLines +=
        player + ": posts " + (blind.empty() ? std::string() : blind + " ") + money(amount) + "\n";
    stacks[player] -= amount;
    // Antes are dead money: they count for no bet.
    if (blind != "ante") {
        invested[player] += amount;
        highest = std::max(highest, invested[player]);
    }
}

void CanonicalHandText::act(const std::string& player, const std::string& verb, double amount,
                            Amount kind) {
    double& in = invested[player];
    double& stack = stacks[player];
    if (verb == "fold" || verb == "check") {
        line(player, verb + "s");
        return;
    }
    double total = kind == Amount::Total ? amount : in + amount;
    std::string what = verb;
    if (verb == "allin") {
        if (amount <= 0.0)
            total = in + std::max(0.0, stack);
        what = total > highest ? (highest > 0.0 ? "raise" : "bet") : "call";
    } else if (verb == "bet" && highest > 0.0) {
        what = "raise";
    } else if (verb == "raise" && highest <= 0.0) {
        what = "bet";
    }
    if (what == "call") {
        const double adds = std::max(0.0, total - in);
        line(player, "calls " + money(adds));
        stack -= adds;
        in += adds;
        return;
    }
    if (what == "bet")
        line(player, "bets " + money(total));
    else
        line(player, "raises " + money(std::max(0.0, total - highest)) + " to " + money(total));
    stack -= total - in;
    in = total;
    highest = std::max(highest, total);
}

void CanonicalHandText::startStreet(int next, const std::string& cards) {
    static const char* const markers[] = {HandHistoryMarkers::flop, HandHistoryMarkers::turn,
                                          HandHistoryMarkers::river};
    if (next < 1 || next > 3 || next <= street)
        return;
    street = next;
    invested.clear();
    highest = 0.0;
    std::string spaced;
    for (std::size_t i = 0; i + 1 < cards.size(); i += 2)
        spaced += (spaced.empty() ? "" : " ") + cards.substr(i, 2);
    actionLines += std::string(markers[next - 1]) + " [" + spaced + "]\n";
}

std::string CanonicalHandText::text() const {
    std::string out;
    if (button != 0)
        out += "Seat " + std::to_string(button) + " is the button\n";
    out += seatLines + postLines + HandHistoryMarkers::holeCards + "\n";
    if (!hero.empty())
        out +=
            "Dealt to " + hero + " [" + heroCards.substr(0, 2) + " " + heroCards.substr(2) + "]\n";
    out += actionLines + HandHistoryMarkers::summary + "\n";
    return out;
}
