#pragma once

// The enumerations of the hand strength selector and their keys. Value 0 of each means "no
// restriction" and maps to the default key. Every enumeration has a pre-increment that steps
// to the next value (one past the last value is reachable; the selector's walks stop there),
// an enumLabel with the combo box text and an enumKey. They are registered as Qt meta types
// under their plain names by registerHandStrengthSelectorMetaTypes().

#include "VelmaraEvaluatorBase.h"

#include <QMetaType>

namespace HandStrengthSelectorOptions {

enum class Comparator : int { Exactly = 0, OrBetter = 1, OrWorse = 2 };

// Hand value.
enum class HandValue : int {
    Any = 0,
    Highcards = 1,
    Pair = 2,
    Twopair = 3,
    ThreeOfAKind = 4,
    Straight = 5,
    Flush = 6,
    FullHouse = 7,
    FourOfAKind = 8,
    StraightFlush = 9,
};

// High card detail.
enum class HighcardValue : int {
    Any = 0,
    OtherHighcards = 1,
    OneOvercardWithoutAce = 2,
    OneOvercardWithAce = 3,
    OvercardsWithoutAce = 4,
    OvercardsWithAce = 5,
};

// Pair detail.
enum class PairValue : int {
    None = 0,
    BoardPairOnly = 1,
    OtherNonPocketPair = 2,
    OtherPocketPair = 3,
    ThirdPair = 4,
    BetweenSecondAndThirdPair = 5,
    SecondPair = 6,
    BetweenTopAndSecondPair = 7,
    TopPair = 8,
    Overpair = 9,
};

// Pair kicker.
enum class KickerValue : int {
    None = 0,
    OtherKicker = 1,
    ThirdKicker = 2,
    SecondKicker = 3,
    TopKicker = 4,
};

// Two pair detail.
enum class TwopairValue : int {
    None = 0,
    BoardTwopairOnly = 1,
    WithOneHoleCard = 2,
    WithTwoHoleCards = 3,
    WithPocketPair = 4,
};

// Two pair with a pocket pair.
enum class PocketPairTwopairValue : int {
    None = 0,
    WithUnderpair = 1,
    WithMiddlePair = 2,
    WithOverpair = 3,
};

// Two pair with two hole cards.
enum class TwoCardTwopairValue : int {
    None = 0,
    OtherOne = 1,
    ThirdTopOne = 2,
    SecondTopOne = 3,
    TopOne = 4,
};

// Two pair with one hole card.
enum class OneCardTwopairValue : int {
    None = 0,
    ThirdTopOne = 1,
    SecondTopOne = 2,
    TopOne = 3,
};

// Three of a kind detail.
enum class TripsValue : int {
    None = 0,
    Trips = 1,
    Set = 2,
};

// Trips kicker.
enum class TripsTripsValue : int {
    None = 0,
    WeakerKicker = 1,
    ThirdKicker = 2,
    SecondKicker = 3,
    TopKicker = 4,
};

// Flush detail.
enum class FlushValue : int {
    None = 0,
    WeakerFlush = 1,
    FifthNutflush = 2,
    FourthNutflush = 3,
    ThirdNutflush = 4,
    SecondNutflush = 5,
    Nutflush = 6,
};

// Flush draw.
enum class FlushDrawValue : int {
    None = 0,
    BackdoorFlushdraw = 1,
    Flushdraw = 2,
};

// Flush draw strength.
enum class FlushDrawStrength : int {
    Any = 0,
    Weaker = 1,
    ToFifthNuts = 2,
    ToFourthNuts = 3,
    ToThirdNuts = 4,
    ToSecondNuts = 5,
    ToNuts = 6,
};

// Hole cards of a flush draw.
enum class FlushDrawCardNumberValue : int {
    Any = 0,
    WithOneHoleCard = 1,
    WithTwoHoleCards = 2,
};

// Straight draw.
enum class StraightDrawValue : int {
    None = 0,
    BackdoorTwoGutshots = 1,
    BackdoorFourGutshots = 2,
    BackdoorTwoOesdOneGutshot = 3,
    BackdoorTwoOesdTwoGutshots = 4,
    Gutshot = 5,
    Oesd = 6,
};

// Hole cards of a straight draw.
enum class StraightDrawCardNumberValue : int {
    Any = 0,
    WithOneHoleCard = 1,
    WithTwoHoleCards = 2,
};

HandValue& operator++(HandValue& value);
HandStrengthKey enumKey(HandValue value);
const char* enumLabel(HandValue value);
HighcardValue& operator++(HighcardValue& value);
HandStrengthKey enumKey(HighcardValue value);
const char* enumLabel(HighcardValue value);
PairValue& operator++(PairValue& value);
HandStrengthKey enumKey(PairValue value);
const char* enumLabel(PairValue value);
KickerValue& operator++(KickerValue& value);
HandStrengthKey enumKey(KickerValue value);
const char* enumLabel(KickerValue value);
TwopairValue& operator++(TwopairValue& value);
HandStrengthKey enumKey(TwopairValue value);
const char* enumLabel(TwopairValue value);
PocketPairTwopairValue& operator++(PocketPairTwopairValue& value);
HandStrengthKey enumKey(PocketPairTwopairValue value);
const char* enumLabel(PocketPairTwopairValue value);
TwoCardTwopairValue& operator++(TwoCardTwopairValue& value);
HandStrengthKey enumKey(TwoCardTwopairValue value);
const char* enumLabel(TwoCardTwopairValue value);
OneCardTwopairValue& operator++(OneCardTwopairValue& value);
HandStrengthKey enumKey(OneCardTwopairValue value);
const char* enumLabel(OneCardTwopairValue value);
TripsValue& operator++(TripsValue& value);
HandStrengthKey enumKey(TripsValue value);
const char* enumLabel(TripsValue value);
TripsTripsValue& operator++(TripsTripsValue& value);
HandStrengthKey enumKey(TripsTripsValue value);
const char* enumLabel(TripsTripsValue value);
FlushValue& operator++(FlushValue& value);
HandStrengthKey enumKey(FlushValue value);
const char* enumLabel(FlushValue value);
FlushDrawValue& operator++(FlushDrawValue& value);
HandStrengthKey enumKey(FlushDrawValue value);
const char* enumLabel(FlushDrawValue value);
FlushDrawStrength& operator++(FlushDrawStrength& value);
HandStrengthKey enumKey(FlushDrawStrength value);
const char* enumLabel(FlushDrawStrength value);
FlushDrawCardNumberValue& operator++(FlushDrawCardNumberValue& value);
HandStrengthKey enumKey(FlushDrawCardNumberValue value);
const char* enumLabel(FlushDrawCardNumberValue value);
StraightDrawValue& operator++(StraightDrawValue& value);
HandStrengthKey enumKey(StraightDrawValue value);
const char* enumLabel(StraightDrawValue value);
StraightDrawCardNumberValue& operator++(StraightDrawCardNumberValue& value);
HandStrengthKey enumKey(StraightDrawCardNumberValue value);
const char* enumLabel(StraightDrawCardNumberValue value);
Comparator& operator++(Comparator& value);
// "Exactly", "Or Better", "Or Worse"; on the detail combo (`detail` true) values 1 and 2 read
// "Or Above" and "Or Below".
const char* enumLabel(Comparator value, bool detail = false);

// Registers every enumeration above as a Qt meta type under its plain name ("HandValue", ...).
// Idempotent.
void registerHandStrengthSelectorMetaTypes();

} // namespace HandStrengthSelectorOptions

Q_DECLARE_METATYPE(HandStrengthSelectorOptions::HandValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::HighcardValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::PairValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::KickerValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::TwopairValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::PocketPairTwopairValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::TwoCardTwopairValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::OneCardTwopairValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::TripsValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::TripsTripsValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::FlushValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::FlushDrawValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::FlushDrawStrength)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::FlushDrawCardNumberValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::StraightDrawValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::StraightDrawCardNumberValue)
Q_DECLARE_METATYPE(HandStrengthSelectorOptions::Comparator)
