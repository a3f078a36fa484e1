#include "VelmaraEvaluatorBase.h"

bool HandStrengthKey::operator==(const HandStrengthKey& other) const {
    return positive == other.positive && exclusive == other.exclusive;
}

bool HandStrengthKey::operator!=(const HandStrengthKey& other) const {
    return !(*this == other);
}

bool HandStrengthKey::operator<(const HandStrengthKey& other) const {
    if (positive != other.positive)
        return positive < other.positive;
    return exclusive < other.exclusive;
}

HandStrengthKey& HandStrengthKey::operator|=(const HandStrengthKey& other) {
    positive |= other.positive;
    exclusive |= other.exclusive;
    return *this;
}

HandStrengthKey HandStrengthKey::operator~() const {
    return HandStrengthKey(~positive, ~exclusive);
}

HandStrengthKey operator|(const HandStrengthKey& a, const HandStrengthKey& b) {
    return HandStrengthKey(a.positive | b.positive, a.exclusive | b.exclusive);
}

HandStrengthKey operator&(const HandStrengthKey& a, const HandStrengthKey& b) {
    return HandStrengthKey(a.positive & b.positive, a.exclusive & b.exclusive);
}
