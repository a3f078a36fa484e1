#include "Range/HandRange.h"

#include "Range/Assertion.h"
#include "Range/HandRangeElementConversion.h"

#include <boost/tuple/tuple.hpp>

namespace Range {

void buildElements(ElementContainer& elements, bool full) {
    for (int row = 0; row < 13; ++row) {
        for (int column = 0; column < 13; ++column) {
            const unsigned int values = (1U << row) | (1U << column);
            const int suitClass = row == column ? Pair : (column < row ? Offsuit : Suited);
            Element element = makeElement(values, suitClass, 0);
            if (full)
                element.suits = element.possibleSuits;
            // A class already there is overwritten in place (its key stays the same).
            const auto existing = elements.find(boost::make_tuple(element.values, element.suited));
            if (existing != elements.end())
                elements.replace(existing, element);
            else
                elements.insert(element);
        }
    }
}

HandRange::HandRange()
    : suitFilter_(&HandRange::keepSuits), changeNotifier_(&HandRange::notifyNobody) {
    buildElements(elements_, false);
}

HandRange::HandRange(bool full)
    : combinationsValid_(!full), suitFilter_(&HandRange::keepSuits),
      changeNotifier_(&HandRange::notifyNobody) {
    buildElements(elements_, full);
}

HandRange::HandRange(ElementContainer&& elements)
    : elements_(std::move(elements)), combinationsValid_(false), suitFilter_(&HandRange::keepSuits),
      changeNotifier_(&HandRange::notifyNobody) {}

HandRange::HandRange(const HandRange& other)
    : elements_(other.elements_), combinationsValid_(other.combinationsValid_),
      combinationCount_(other.combinationCount_), suitFilter_(&HandRange::keepSuits),
      changeNotifier_(&HandRange::notifyNobody) {}

HandRange::HandRange(const HandRange& other, WithoutNotifier)
    : elements_(other.elements_), combinationsValid_(other.combinationsValid_),
      combinationCount_(other.combinationCount_), suitFilter_(&HandRange::keepSuits) {}

HandRange& HandRange::operator=(const HandRange& other) {
    if (this != &other) {
        elements_ = other.elements_;
        combinationsValid_ = other.combinationsValid_;
        combinationCount_ = other.combinationCount_;
    }
    return *this;
}

HandRange::~HandRange() = default;

void HandRange::reset() {
    for (auto it = elements_.begin(); it != elements_.end(); ++it)
        if (it->suits != 0)
            storeSuits(it, 0);
    combinationCount_ = 0;
    combinationsValid_ = true;
}

void HandRange::assign(const ElementContainer& elements) {
    reset();
    for (const Element& element : elements) {
        const auto own = elements_.find(boost::make_tuple(element.values, element.suited));
        if (own != elements_.end())
            setSuits(own, element.suits);
    }
    notify();
}

bool HandRange::isEmpty() const {
    for (const Element& element : elements_)
        if (element.suits != 0)
            return false;
    return true;
}

unsigned int HandRange::combinationCount() const {
    if (!combinationsValid_) {
        unsigned int count = 0;
        for (const Element& element : elements_)
            count += suitBitCount(element.suits);
        combinationCount_ = count;
        combinationsValid_ = true;
    }
    return combinationCount_;
}

float HandRange::rangePercentage() const {
    return static_cast<float>(combinationCount()) / 1326.0f;
}

HandRange::const_iterator HandRange::find(unsigned int values, bool suited) const {
    return elements_.find(boost::make_tuple(values, suited));
}

std::vector<unsigned int> HandRange::suitsVector() const {
    std::vector<unsigned int> suits;
    suits.reserve(elements_.size());
    for (const Element& element : elements_)
        suits.push_back(element.suits);
    return suits;
}

std::string HandRange::elementToText(const Element& element) const {
    return Range::elementToText(element);
}

bool HandRange::setSuits(const_iterator element, unsigned int suits) {
    combinationsValid_ = false;
    if (element == elements_.end())
        return false;
    Element proposed = *element;
    proposed.suits = suits & element->possibleSuits;
    const unsigned int answer = suitFilter_(proposed) & element->possibleSuits;
    if (answer == element->suits)
        return false;
    storeSuits(element, answer);
    return true;
}

bool HandRange::setSuits(unsigned int values, bool suited, unsigned int suits) {
    return setSuits(find(values, suited), suits);
}

bool HandRange::setSuitsAndNotify(const_iterator element, unsigned int suits) {
    const bool changed = setSuits(element, suits);
    if (changed)
        notify();
    return changed;
}

bool HandRange::setSuitsAndNotify(unsigned int values, bool suited, unsigned int suits) {
    return setSuitsAndNotify(find(values, suited), suits);
}

Element HandRange::insert(const Element& element, bool add) {
    if (element.possibleSuits == 0)
        return Element();
    const unsigned int suits = element.suits & element.possibleSuits;
    const auto own = find(element.values, element.suited);
    if (own == elements_.end()) {
        QV_ASSERT(false, "Hand not found.");
        return element;
    }
    if (setSuits(own, add ? (own->suits | suits) : suits))
        notify();
    return *own;
}

bool HandRange::removeHand(unsigned int values, bool suited) {
    const auto own = find(values, suited);
    if (own == elements_.end() || own->possibleSuits == 0)
        return false;
    setSuitsAndNotify(own, 0);
    return true;
}

HandRange& HandRange::operator+=(const HandRange& other) {
    auto theirs = other.elements_.begin();
    for (auto own = elements_.begin(); own != elements_.end() && theirs != other.elements_.end();
         ++own, ++theirs)
        setSuits(own, own->suits | theirs->suits);
    combinationsValid_ = false;
    notify();
    return *this;
}

HandRange& HandRange::operator-=(const HandRange& other) {
    auto theirs = other.elements_.begin();
    for (auto own = elements_.begin(); own != elements_.end() && theirs != other.elements_.end();
         ++own, ++theirs)
        setSuits(own, own->suits & ~theirs->suits);
    combinationsValid_ = false;
    notify();
    return *this;
}

void HandRange::setSuitsVector(const std::vector<unsigned int>& suits) {
    QV_ASSERT(suits.size() == elements_.size(), "Suits vector does not hold 169 entries.");
    auto entry = suits.begin();
    for (auto own = elements_.begin(); own != elements_.end() && entry != suits.end();
         ++own, ++entry)
        setSuits(own, *entry);
    combinationsValid_ = false;
    notify();
}

void HandRange::refilter() {
    bool changed = false;
    for (auto own = elements_.begin(); own != elements_.end(); ++own)
        changed = setSuits(own, own->suits) || changed;
    combinationsValid_ = false;
    if (changed)
        notify();
}

void HandRange::setSuitFilter(SuitFilter filter) {
    suitFilter_ = filter ? std::move(filter) : SuitFilter(&HandRange::keepSuits);
}

void HandRange::setChangeNotifier(ChangeNotifier notifier) {
    changeNotifier_ = std::move(notifier);
}

void HandRange::storeSuits(const_iterator element, unsigned int suits) {
    // `suits` is not part of the key, so the order of the container cannot change; the
    // stored element itself is not const. This keeps every iterator valid and does no work
    // of the container's.
    const_cast<Element&>(*element).suits = suits;
}

void HandRange::notify() const {
    changeNotifier_();
}

} // namespace Range
