#include "PreflopTable.h"

#include <stdexcept>

namespace qve {

namespace {

const std::uint32_t matchupCounts[] = {
#include "PreflopMatchups.inc"
};

} // namespace

PreflopTable::PreflopTable() : data(matchupCounts) {
    if (sizeof matchupCounts / sizeof matchupCounts[0] !=
        2 * static_cast<std::size_t>(index.classCount()))
        throw std::logic_error("The preflop matchup table does not match its index.");
}

const PreflopTable& PreflopTable::instance() {
    static const PreflopTable table;
    return table;
}

} // namespace qve
