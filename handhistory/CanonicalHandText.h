#pragma once

#include <map>
#include <string>
#include <vector>

// Writes one hand in the canonical dialect that HandHistoryParser reads, from what a reader
// of another dialect found in it. The readers hand over amounts as their site writes them,
// either what an action adds or what it makes the player's total on the street; this class
// keeps the money each player has in on the street and writes every raise with the total
// it goes to, every call with what it adds, and an all-in as a bet, raise or call,
// whichever it was.
class CanonicalHandText {
public:
    enum class Amount { Adds, Total };

    // `currency`: '$', 0xA3, 0x80, or 0 for plain numbers (chips).
    explicit CanonicalHandText(char currency);

    void addSeat(int seat, const std::string& name, double stack);
    void setButton(int seat);
    // `cards`: the hero's two cards, four characters, rank then suit.
    void setHero(const std::string& name, const std::string& cards);
    bool hasSeat(const std::string& name) const;

    // `blind`: "small blind", "big blind", "ante", or empty for any other post.
    void post(const std::string& player, const std::string& blind, double amount);
    // `verb`: "fold", "check", "call", "bet", "raise" or "allin". An all-in with amount 0
    // puts in what is left of the player's stack.
    void act(const std::string& player, const std::string& verb, double amount, Amount kind);
    // Starts street 1 (flop), 2 (turn) or 3 (river) with its new cards ("Ah3s4s").
    void startStreet(int street, const std::string& cards);

    std::string text() const;

private:
    std::string money(double value) const;
    void line(const std::string& player, const std::string& rest);

    char currency;
    int button = 0;
    std::string hero;
    std::string heroCards;
    std::string seatLines;
    std::string postLines;
    std::string actionLines;
    std::vector<std::string> names;
    std::map<std::string, double> stacks;
    std::map<std::string, double> invested;
    double highest = 0.0;
    int street = 0;
};
