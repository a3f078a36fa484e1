#pragma once

#include <string>
#include <string_view>

// The dialects whose action lines have no "name:" (each site writes "name raises [$2]",
// "Player name calls (2)" or "name calls 20.35€"), and those written as XML. Each step
// recognises its dialect by its structure alone and rewrites the whole hand into the
// canonical text that the parser reads; a step that does not find its dialect leaves the
// text alone and answers false. HandHistoryParser runs them before `normalise` and its
// thirteen fixed steps, which then have nothing left to do.
namespace HandHistoryDialects {

// Why the game of a hand history is not No Limit Hold'em ("Omaha", "Pot Limit", ...), from
// its head (the lines before the first seat); empty when nothing says so.
std::string gameRefusal(std::string_view text);

// Text dialects whose seat lines read "Seat N: name (stack)" and whose action lines begin
// with a seated player's name, a blank and the verb. Throws ParseError for a malformed
// amount or a game that is not No Limit Hold'em.
bool rewritePlainActionDialect(std::string& text);

// XML hand histories (a <game> or <Game> element with its players and actions), one hand.
// Throws ParseError when the XML does not read or holds no hand.
bool rewriteXmlDialect(std::string& text);

} // namespace HandHistoryDialects
