#pragma once

namespace HandHistory {

// The text ended before "*** SUMMARY ***". Thrown and caught inside the parser's street
// stage; it never leaves HandHistoryParser (which spells it HandHistoryParser::PrematureEnd).
struct PrematureEnd {};

} // namespace HandHistory
