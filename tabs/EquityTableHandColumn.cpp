#include "tabs/EquityTableHandColumn.h"

#include "Range/CardConversion.h"

#include <stdexcept>

namespace {

// Rank strength of a value character: 0 the deuce ... 12 the ace; -1 for other text.
int strength(QChar value) {
    try {
        const int number = valueFromChar(value.toLatin1());
        return number == 13 ? -1 : 12 - number;
    } catch (const std::runtime_error&) {
        return -1;
    }
}

int suitNumber(QChar suit) {
    switch (suit.toLatin1()) {
    case 'd':
        return 1;
    case 'h':
        return 2;
    case 's':
        return 3;
    case 'c':
        return 4;
    default:
        return 0;
    }
}

} // namespace

EquityTableHandColumn::EquityTableHandColumn(const QString& text) : QTableWidgetItem(text) {}

bool EquityTableHandColumn::operator<(const QTableWidgetItem& other) const {
    const QString a = text();
    const QString b = other.text();
    const bool aConcrete = a.size() == 4;
    const bool bConcrete = b.size() == 4;
    if (a.size() < 2 || b.size() < 2 || aConcrete != bConcrete) {
        return a < b;
    }
    // Concrete hands carry their ranks at 0 and 2, class texts at 0 and 1.
    const int secondRank = aConcrete ? 2 : 1;
    const int a1 = strength(a[0]);
    const int b1 = strength(b[0]);
    if (a1 != b1) {
        return a1 < b1;
    }
    const int a2 = strength(a[secondRank]);
    const int b2 = strength(b[secondRank]);
    if (a2 != b2) {
        return a2 < b2;
    }
    if (aConcrete) {
        const int as1 = suitNumber(a[1]);
        const int bs1 = suitNumber(b[1]);
        if (as1 != bs1) {
            return as1 < bs1;
        }
        return suitNumber(a[3]) < suitNumber(b[3]);
    }
    if (a.size() != b.size()) {
        return a.size() < b.size(); // the pair first
    }
    if (a.size() == 3) {
        return a[2].toUpper() == 'O' && b[2].toUpper() == 'S';
    }
    return false;
}
