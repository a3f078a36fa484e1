#pragma once

// The street markers of the canonical hand history text, which every dialect is rewritten
// to before parsing.
namespace HandHistoryMarkers {

inline constexpr const char* holeCards = "*** HOLE CARDS ***";
inline constexpr const char* flop = "*** FLOP ***";
inline constexpr const char* turn = "*** TURN ***";
inline constexpr const char* river = "*** RIVER ***";

// Not rewritten by the normalisation; the parser stops reading at it.
inline constexpr const char* summary = "*** SUMMARY ***";

} // namespace HandHistoryMarkers
