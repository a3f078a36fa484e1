#include "handstrength/HandStrengthSelectorOptions.h"

#include <iterator>

namespace HandStrengthSelectorOptions {

namespace {

struct OptionRow {
    const char* label;
    unsigned long long positive;
    unsigned long long exclusive;
};

template <typename Enum, std::size_t N>
const OptionRow* rowOf(const OptionRow (&rows)[N], Enum value) {
    const int index = static_cast<int>(value);
    return index >= 0 && static_cast<std::size_t>(index) < N ? &rows[index] : nullptr;
}

template <typename Enum, std::size_t N>
HandStrengthKey keyOf(const OptionRow (&rows)[N], Enum value) {
    const OptionRow* row = rowOf(rows, value);
    return row ? HandStrengthKey(row->positive, row->exclusive) : HandStrengthKey();
}

template <typename Enum, std::size_t N>
const char* labelOf(const OptionRow (&rows)[N], Enum value) {
    const OptionRow* row = rowOf(rows, value);
    return row ? row->label : "";
}

template <typename Enum>
Enum& stepped(Enum& value) {
    value = static_cast<Enum>(static_cast<int>(value) + 1);
    return value;
}

const OptionRow handValueRows[] = {
    {"Any", 0x0ULL, 0x0ULL},
    {"Highcards", 0x100ULL, 0x0ULL},
    {"Pair", 0x80ULL, 0x0ULL},
    {"Twopair", 0x40ULL, 0x0ULL},
    {"Three of a Kind", 0x20ULL, 0x0ULL},
    {"Straight", 0x10ULL, 0x0ULL},
    {"Flush", 0x8ULL, 0x0ULL},
    {"Full House", 0x4ULL, 0x0ULL},
    {"Four of a Kind", 0x2ULL, 0x0ULL},
    {"Straight Flush", 0x1ULL, 0x0ULL},
};

const OptionRow highcardValueRows[] = {
    {"Any", 0x0ULL, 0x0ULL},
    {"Other Highcards", 0x0ULL, 0xc00000000000ULL},
    {"One Overcard without Ace", 0x800000000000ULL, 0x2000000000000ULL},
    {"One Overcard with Ace", 0x2800000000000ULL, 0x0ULL},
    {"Overcards without Ace", 0x400000000000ULL, 0x2000000000000ULL},
    {"Overcards with Ace", 0x2400000000000ULL, 0x0ULL},
};

const OptionRow pairValueRows[] = {
    {"-", 0x0ULL, 0x0ULL},
    {"Board Pair Only", 0x4000ULL, 0x0ULL},
    {"Other non-PP Pair", 0x0ULL, 0x3800000000ce00ULL},
    {"Other PP", 0x20000000000000ULL, 0x0ULL},
    {"3rd Pair", 0x800ULL, 0x0ULL},
    {"Pair <2nd and >3rd Pair", 0x10000000000000ULL, 0x0ULL},
    {"2nd Pair", 0x400ULL, 0x0ULL},
    {"Pair <Top and >2nd Pair", 0x8000000000000ULL, 0x0ULL},
    {"Top Pair", 0x200ULL, 0x0ULL},
    {"Overpair", 0x8000ULL, 0x0ULL},
};

const OptionRow kickerValueRows[] = {
    {"-", 0x0ULL, 0x0ULL},
    {"Other Kicker", 0x0ULL, 0x1c0000ULL},
    {"3rd Kicker", 0x100000ULL, 0x0ULL},
    {"2nd Kicker", 0x80000ULL, 0x0ULL},
    {"Top Kicker", 0x40000ULL, 0x0ULL},
};

const OptionRow twopairValueRows[] = {
    {"-", 0x0ULL, 0x0ULL},
    {"Board Twopair Only", 0x4000ULL, 0x0ULL},
    {"With One Hole Card", 0x20000ULL, 0x0ULL},
    {"With Two Hole Cards", 0x10000ULL, 0x0ULL},
    {"With Pocket Pair", 0x400000ULL, 0x0ULL},
};

const OptionRow pocketPairTwopairValueRows[] = {
    {"-", 0x0ULL, 0x0ULL},
    {"With Underpair", 0x1000000ULL, 0x0ULL},
    {"With Middle Pair", 0x800000ULL, 0x0ULL},
    {"With Overpair", 0x8000ULL, 0x0ULL},
};

const OptionRow twoCardTwopairValueRows[] = {
    {"-", 0x0ULL, 0x0ULL},
    {"Other One", 0x0ULL, 0xe00ULL},
    {"3rd Top One", 0x800ULL, 0x0ULL},
    {"2nd Top One", 0x400ULL, 0x0ULL},
    {"Top One", 0x200ULL, 0x0ULL},
};

const OptionRow oneCardTwopairValueRows[] = {
    {"-", 0x0ULL, 0x0ULL},
    {"3rd Top One", 0x800ULL, 0x0ULL},
    {"2nd Top One", 0x400ULL, 0x0ULL},
    {"Top One", 0x200ULL, 0x0ULL},
};

const OptionRow tripsValueRows[] = {
    {"-", 0x0ULL, 0x0ULL},
    {"Trips", 0x20000ULL, 0x0ULL},
    {"Set", 0x10000ULL, 0x0ULL},
};

const OptionRow tripsTripsValueRows[] = {
    {"-", 0x0ULL, 0x0ULL},
    {"Weaker Kicker", 0x0ULL, 0x1c0000ULL},
    {"3rd Kicker", 0x100000ULL, 0x0ULL},
    {"2nd Kicker", 0x80000ULL, 0x0ULL},
    {"Top Kicker", 0x40000ULL, 0x0ULL},
};

const OptionRow flushValueRows[] = {
    {"-", 0x0ULL, 0x0ULL},
    {"Weaker Flush", 0x0ULL, 0x3e00ULL},
    {"5th Nutflush", 0x2000ULL, 0x0ULL},
    {"4th Nutflush", 0x1000ULL, 0x0ULL},
    {"3rd Nutflush", 0x800ULL, 0x0ULL},
    {"2nd Nutflush", 0x400ULL, 0x0ULL},
    {"Nutflush", 0x200ULL, 0x0ULL},
};

const OptionRow flushDrawValueRows[] = {
    {"-", 0x0ULL, 0x0ULL},
    {"Backdoor-Flushdraw", 0x20000000ULL, 0x0ULL},
    {"Flushdraw", 0x4000000ULL, 0x0ULL},
};

const OptionRow flushDrawStrengthRows[] = {
    {"Any", 0x0ULL, 0x0ULL},
    {"Weaker", 0x0ULL, 0xf80000000ULL},
    {"To 5th Nuts", 0x800000000ULL, 0x0ULL},
    {"To 4th Nuts", 0x400000000ULL, 0x0ULL},
    {"To 3rd Nuts", 0x200000000ULL, 0x0ULL},
    {"To 2nd Nuts", 0x100000000ULL, 0x0ULL},
    {"To Nuts", 0x80000000ULL, 0x0ULL},
};

const OptionRow flushDrawCardNumberValueRows[] = {
    {"Any", 0x0ULL, 0x0ULL},
    {"With One Hole Card", 0x200000ULL, 0x0ULL},
    {"With Two Hole Cards", 0x40000000000000ULL, 0x0ULL},
};

const OptionRow straightDrawValueRows[] = {
    {"-", 0x0ULL, 0x0ULL},
    {"Backdoor: 2xGS", 0x8000000000ULL, 0x0ULL},
    {"Backdoor: 4xGS", 0x4000000000ULL, 0x0ULL},
    {"Backdoor: 2xOESD, 1xGS", 0x2000000000ULL, 0x0ULL},
    {"Backdoor: 2xOESD, 2xGS", 0x1000000000ULL, 0x0ULL},
    {"Gutshot (GS)", 0x10000000ULL, 0x0ULL},
    {"OESD", 0x8000000ULL, 0x0ULL},
};

const OptionRow straightDrawCardNumberValueRows[] = {
    {"Any", 0x0ULL, 0x0ULL},
    {"With One Hole Card", 0x80000000000000ULL, 0x0ULL},
    {"With Two Hole Cards", 0x100000000000000ULL, 0x0ULL},
};

} // namespace

HandValue& operator++(HandValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(HandValue value) {
    return keyOf(handValueRows, value);
}
const char* enumLabel(HandValue value) {
    return labelOf(handValueRows, value);
}

HighcardValue& operator++(HighcardValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(HighcardValue value) {
    return keyOf(highcardValueRows, value);
}
const char* enumLabel(HighcardValue value) {
    return labelOf(highcardValueRows, value);
}

PairValue& operator++(PairValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(PairValue value) {
    return keyOf(pairValueRows, value);
}
const char* enumLabel(PairValue value) {
    return labelOf(pairValueRows, value);
}

KickerValue& operator++(KickerValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(KickerValue value) {
    return keyOf(kickerValueRows, value);
}
const char* enumLabel(KickerValue value) {
    return labelOf(kickerValueRows, value);
}

TwopairValue& operator++(TwopairValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(TwopairValue value) {
    return keyOf(twopairValueRows, value);
}
const char* enumLabel(TwopairValue value) {
    return labelOf(twopairValueRows, value);
}

PocketPairTwopairValue& operator++(PocketPairTwopairValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(PocketPairTwopairValue value) {
    return keyOf(pocketPairTwopairValueRows, value);
}
const char* enumLabel(PocketPairTwopairValue value) {
    return labelOf(pocketPairTwopairValueRows, value);
}

TwoCardTwopairValue& operator++(TwoCardTwopairValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(TwoCardTwopairValue value) {
    return keyOf(twoCardTwopairValueRows, value);
}
const char* enumLabel(TwoCardTwopairValue value) {
    return labelOf(twoCardTwopairValueRows, value);
}

OneCardTwopairValue& operator++(OneCardTwopairValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(OneCardTwopairValue value) {
    return keyOf(oneCardTwopairValueRows, value);
}
const char* enumLabel(OneCardTwopairValue value) {
    return labelOf(oneCardTwopairValueRows, value);
}

TripsValue& operator++(TripsValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(TripsValue value) {
    return keyOf(tripsValueRows, value);
}
const char* enumLabel(TripsValue value) {
    return labelOf(tripsValueRows, value);
}

TripsTripsValue& operator++(TripsTripsValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(TripsTripsValue value) {
    return keyOf(tripsTripsValueRows, value);
}
const char* enumLabel(TripsTripsValue value) {
    return labelOf(tripsTripsValueRows, value);
}

FlushValue& operator++(FlushValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(FlushValue value) {
    return keyOf(flushValueRows, value);
}
const char* enumLabel(FlushValue value) {
    return labelOf(flushValueRows, value);
}

FlushDrawValue& operator++(FlushDrawValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(FlushDrawValue value) {
    return keyOf(flushDrawValueRows, value);
}
const char* enumLabel(FlushDrawValue value) {
    return labelOf(flushDrawValueRows, value);
}

FlushDrawStrength& operator++(FlushDrawStrength& value) {
    return stepped(value);
}
HandStrengthKey enumKey(FlushDrawStrength value) {
    return keyOf(flushDrawStrengthRows, value);
}
const char* enumLabel(FlushDrawStrength value) {
    return labelOf(flushDrawStrengthRows, value);
}

FlushDrawCardNumberValue& operator++(FlushDrawCardNumberValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(FlushDrawCardNumberValue value) {
    return keyOf(flushDrawCardNumberValueRows, value);
}
const char* enumLabel(FlushDrawCardNumberValue value) {
    return labelOf(flushDrawCardNumberValueRows, value);
}

StraightDrawValue& operator++(StraightDrawValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(StraightDrawValue value) {
    return keyOf(straightDrawValueRows, value);
}
const char* enumLabel(StraightDrawValue value) {
    return labelOf(straightDrawValueRows, value);
}

StraightDrawCardNumberValue& operator++(StraightDrawCardNumberValue& value) {
    return stepped(value);
}
HandStrengthKey enumKey(StraightDrawCardNumberValue value) {
    return keyOf(straightDrawCardNumberValueRows, value);
}
const char* enumLabel(StraightDrawCardNumberValue value) {
    return labelOf(straightDrawCardNumberValueRows, value);
}

Comparator& operator++(Comparator& value) {
    return stepped(value);
}

const char* enumLabel(Comparator value, bool detail) {
    switch (value) {
    case Comparator::Exactly:
        return "Exactly";
    case Comparator::OrBetter:
        return detail ? "Or Above" : "Or Better";
    case Comparator::OrWorse:
        return detail ? "Or Below" : "Or Worse";
    }
    return "";
}

void registerHandStrengthSelectorMetaTypes() {
    qRegisterMetaType<HandValue>("HandValue");
    qRegisterMetaType<HighcardValue>("HighcardValue");
    qRegisterMetaType<PairValue>("PairValue");
    qRegisterMetaType<KickerValue>("KickerValue");
    qRegisterMetaType<TwopairValue>("TwopairValue");
    qRegisterMetaType<PocketPairTwopairValue>("PocketPairTwopairValue");
    qRegisterMetaType<TwoCardTwopairValue>("TwoCardTwopairValue");
    qRegisterMetaType<OneCardTwopairValue>("OneCardTwopairValue");
    qRegisterMetaType<TripsValue>("TripsValue");
    qRegisterMetaType<TripsTripsValue>("TripsTripsValue");
    qRegisterMetaType<FlushValue>("FlushValue");
    qRegisterMetaType<FlushDrawValue>("FlushDrawValue");
    qRegisterMetaType<FlushDrawStrength>("FlushDrawStrength");
    qRegisterMetaType<FlushDrawCardNumberValue>("FlushDrawCardNumberValue");
    qRegisterMetaType<StraightDrawValue>("StraightDrawValue");
    qRegisterMetaType<StraightDrawCardNumberValue>("StraightDrawCardNumberValue");
    qRegisterMetaType<Comparator>("Comparator");
}

} // namespace HandStrengthSelectorOptions
