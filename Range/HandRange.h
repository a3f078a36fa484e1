#pragma once

#include "Range/Element.h"

#include <boost/multi_index/composite_key.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/ordered_index.hpp>
#include <boost/multi_index_container.hpp>

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace Range {

// The 169 hand classes keyed by (values, suited): values ascending, and within equal values
// the suited class before the offsuit one (22, 33, 32s, 32o, 44, 42s, ... AKs, AKo).
// Iterators stay valid while suits change in place.
using ElementContainer = boost::multi_index_container<
    Element,
    boost::multi_index::indexed_by<boost::multi_index::ordered_unique<
        boost::multi_index::composite_key<
            Element, boost::multi_index::member<Element, unsigned int, &Element::values>,
            boost::multi_index::member<Element, bool, &Element::suited>>,
        boost::multi_index::composite_key_compare<std::less<unsigned int>, std::greater<bool>>>>>;

// Marks the copy constructor that leaves `changeNotifier` empty.
struct WithoutNotifier {};
constexpr WithoutNotifier withoutNotifier{};

// A range: for each of the 169 hand classes the set of its combinations a player may hold.
//
// Two function objects belong to whoever owns the range (a tree node binds them to build
// groups): every change passes its proposed suits through `suitFilter`, which may answer
// any subset, and completed changes call `changeNotifier`. Copies never take them over:
// a copy is a plain range with the default filter (suits unchanged) and notifier (nothing).
// Not thread-safe; ranges live on the main thread.
class HandRange {
public:
    using SuitFilter = std::function<unsigned int(const Element&)>;
    using ChangeNotifier = std::function<void()>;
    using const_iterator = ElementContainer::const_iterator;
    using iterator = const_iterator; // elements change only through the operations below

    // The 169 classes without suits.
    HandRange();
    // With `full` every class holds all its combinations.
    explicit HandRange(bool full);
    // Takes over a prepared container (all 169 classes).
    explicit HandRange(ElementContainer&& elements);
    // Copies elements and cache; the copy has the default function objects.
    HandRange(const HandRange& other);
    // As the copy, but `changeNotifier` stays empty: calling it would throw
    // std::bad_function_call. For short-lived copies whose changes nobody must see.
    HandRange(const HandRange& other, WithoutNotifier);
    // Assignment copies elements and cache and keeps this range's own function objects;
    // nothing is filtered and nobody is told (use assign() for that).
    HandRange& operator=(const HandRange& other);
    ~HandRange();

    // All suits 0, without telling `changeNotifier`.
    void reset();
    // reset(), then setSuits() of each given element through `suitFilter`, then one call
    // of `changeNotifier`.
    void assign(const ElementContainer& elements);

    // --- Queries ---
    bool isEmpty() const;
    // Number of set bits of all suits; cached.
    unsigned int combinationCount() const;
    // combinationCount() / 1326 as a share between 0 and 1.
    float rangePercentage() const;
    const_iterator find(unsigned int values, bool suited) const;
    // The 169 suit masks in container order.
    std::vector<unsigned int> suitsVector() const;
    const_iterator begin() const { return elements_.begin(); }
    const_iterator end() const { return elements_.end(); }
    std::size_t size() const { return elements_.size(); }
    const ElementContainer& elements() const { return elements_; }
    // Technical text of one element (see Range::elementToText).
    std::string elementToText(const Element& element) const;

    // --- Changes (each invalidates the cached count) ---
    // Proposes `suits` (kept within the class's possible suits) to `suitFilter` and stores
    // the answer if it differs. No notification. True if changed.
    bool setSuits(const_iterator element, unsigned int suits);
    bool setSuits(unsigned int values, bool suited, unsigned int suits);
    // As setSuits, then `changeNotifier` if changed.
    bool setSuitsAndNotify(const_iterator element, unsigned int suits);
    bool setSuitsAndNotify(unsigned int values, bool suited, unsigned int suits);
    // Sets element.suits & element.possibleSuits on the element's class (or'ed with the
    // present ones when `add`). Returns the class as it now stands. An unknown class asserts
    // "Hand not found." and returns `element`; an element without possible suits gives an
    // all-zero element. Notifies if changed.
    Element insert(const Element& element, bool add);
    // Empties the class; notifies if changed. False if the class does not exist.
    bool removeHand(unsigned int values, bool suited);
    // Union (or difference) per class through `suitFilter`; one notification at the end,
    // changed or not.
    HandRange& operator+=(const HandRange& other);
    HandRange& operator-=(const HandRange& other);
    // setSuits for each class in container order; one notification at the end.
    void setSuitsVector(const std::vector<unsigned int>& suits);
    // Passes each class's own suits through `suitFilter` again; one notification if any
    // changed.
    void refilter();

    const SuitFilter& suitFilter() const { return suitFilter_; }
    const ChangeNotifier& changeNotifier() const { return changeNotifier_; }
    void setSuitFilter(SuitFilter filter);
    void setChangeNotifier(ChangeNotifier notifier);

    // The default function objects.
    static unsigned int keepSuits(const Element& element) { return element.suits; }
    static void notifyNobody() {}

private:
    void notify() const;
    void storeSuits(const_iterator element, unsigned int suits);

    ElementContainer elements_;
    mutable bool combinationsValid_ = true;
    mutable unsigned int combinationCount_ = 0;
    SuitFilter suitFilter_;
    ChangeNotifier changeNotifier_;
};

// Compact text of the range (seeds rand() with the time first, like every reader).
std::ostream& operator<<(std::ostream& stream, const HandRange& range);
// Reads one token up to white space as free range text and replaces the range with it;
// `changeNotifier` runs once.
std::istream& operator>>(std::istream& stream, HandRange& range);

// Builds the 169 classes into `elements`, all empty or all full; a class already there is
// replaced.
void buildElements(ElementContainer& elements, bool full);

} // namespace Range
