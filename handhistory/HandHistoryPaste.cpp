#include "handhistory/HandHistoryPaste.h"

#include "handhistory/HandHistoryAmount.h"
#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryText.h"

#include <string_view>

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The number of a hand from its head, behind the first of the markers below that has
// one: digits, with the dashes (and the leading "R") some sites put among them.
std::string numberOf(std::string_view text) {
    const std::string_view head = text.substr(0, std::min<std::size_t>(text.size(), 1500));
    // The hand's own number before a tournament's or a table's, which some heads show too.
    static const std::string_view markers[] = {"Game No : ",  "HandId: #", "Hand #",    "Game #",
                                               "gamecode=\"", "id=\"",     "Game ID: ", "Game ",
                                               "hand ",       "#"};
    for (const std::string_view marker : markers) {
        for (std::size_t at = head.find(marker); at != std::string_view::npos;
             at = head.find(marker, at + 1)) {
            std::size_t start = at + marker.size();
            const std::size_t first = start;
            while (start < head.size() && (head[start] == 'R' || isDigit(head[start]) ||
                                           (start > first && head[start] == '-')))
                ++start;
            std::string_view number = head.substr(first, start - first);
            while (!number.empty() && number.back() == '-')
                number.remove_suffix(1);
            bool digits = false;
            for (const char c : number)
                digits = digits || isDigit(c);
            if (digits && number.size() >= 3)
                return std::string(number);
        }
    }
    return {};
}

} // namespace

HandHistoryPaste::HandHistoryPaste(const std::string& bytes) {
    for (HandHistoryText::Piece& piece :
         HandHistoryText::splitHands(HandHistoryText::decode(bytes))) {
        Hand hand;
        hand.firstLine = piece.firstLine;
        hand.lastLine = piece.lastLine;
        hand.number = numberOf(piece.text);
        try {
            const HandHistoryParser parser(piece.text);
            hand.record = parser.record();
            hand.read = true;
        } catch (const HandHistoryParser::ParseError& error) {
            hand.reason = error.reason.empty() ? "not a hand history" : error.reason;
        }
        hand.text = std::move(piece.text);
        all.push_back(std::move(hand));
    }
}

std::vector<std::size_t> HandHistoryPaste::readHands() const {
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < all.size(); ++i)
        if (all[i].read)
            indices.push_back(i);
    return indices;
}

std::string HandHistoryPaste::stakesOf(const HandHistoryRecord& record) {
    const std::string sign = record.currency == 0 ? std::string() : std::string(1, record.currency);
    return sign + HandHistoryAmount::format(record.smallBlind) + "/" + sign +
           HandHistoryAmount::format(record.bigBlind);
}
