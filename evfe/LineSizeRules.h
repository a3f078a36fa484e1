#pragma once

#include <cstddef>
#include <string>

class LineVariant;
enum class Street : int;

// Limits and labels of the money boxes of a variant, in big blinds.
class LineSizeRules {
public:
    // Range of every money box before any limit.
    static constexpr float boxMinimum = 0.0f;
    static constexpr float boxMaximum = 9999.0f;

    struct Bounds {
        float minimum = boxMinimum;
        float maximum = boxMaximum;
        bool maximumApplied = false; // false when the limit was below the minimum
    };

    // The pot before the first action holds both last investments:
    // player1sLastInvestment + player2sLastInvestment.
    static float minimumDeadmoney(const LineVariant& variant);

    // Minimum of the first action's size. For a check (the check/raise of "Check/Raise") it is
    // twice the largest reaction size above 0 among the reactions with a size box; otherwise,
    // with F the first actor's and O the other's last investment, max(0, 2 * O - F).
    static float minimumFirstSize(const LineVariant& variant);

    // Minimum of a reaction's own size: max(0, 2 * first size - O), O being the reacting
    // player's last investment (Player2's when Player1 acts first, else Player1's).
    static float minimumReactionSize(const LineVariant& variant);

    // Largest size any box with `needsOwnSize` may take: what the shorter player can put in
    // on this street, min(stack1 + last investment1, stack2 + last investment2).
    static float maximumSize(const LineVariant& variant);

    // Bounds of the size box of action `index`: its minimum and, only if the minimum does
    // not exceed it, maximumSize. An action without a size box gets the plain box range; an
    // index outside the tree asserts "Action index out of range.".
    static Bounds sizeBounds(const LineVariant& variant, std::size_t index);

    // The two last-investment boxes above the action tree: whether each shows and its label.
    struct InvestmentBoxes {
        bool player1Visible = false;
        bool player2Visible = false;
        std::string player1Label;
        std::string player2Label;
    };

    // Boxes for a first action with `firstVerb` on `street`. A "bet" or a check hides both;
    // a "raise" shows the posts preflop and the other player's bet after the flop; a "3-bet"
    // preflop shows a post and a raise; any other N-bet shows the two earlier sizes.
    static InvestmentBoxes investmentBoxes(Street street, const std::string& firstVerb,
                                           bool player1FirstToAct);
};
