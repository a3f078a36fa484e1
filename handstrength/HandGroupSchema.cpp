#include "handstrength/HandGroupSchema.h"

#include "Range/Assertion.h"
#include "calculation/ThreadPool.h"
#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandGroupStandardSchema.h"
#include "handstrength/HandStrengthMasks.h"
#include "handstrength/HandStrengthNames.h"

#include <algorithm>
#include <limits>

namespace {

// The evaluator is called only with at least a flop: three two-character cards.
bool boardQualifies(const std::string& board) {
    return board.size() > 4;
}

std::uint32_t countOf(int combinations) {
    return combinations > 0 ? static_cast<std::uint32_t>(combinations) : 0U;
}

void clearDetail(DetailHandEvaluation& detail) {
    detail.combinations1 = 0;
    detail.combinations2 = 0;
    detail.hands1.clear();
    detail.hands2.clear();
    detail.percent1 = std::numeric_limits<float>::quiet_NaN();
    detail.percent2 = std::numeric_limits<float>::quiet_NaN();
}

} // namespace

HandStrengthKey HandGroupSchema::customSumKey() {
    return HandStrengthKey(customSumMarker, 0);
}

HandGroupSchema::HandGroupSchema() : HandGroupSchema(nullptr, 1) {}

HandGroupSchema::HandGroupSchema(QObject* parent, const HandGroupSchemaData& data)
    : QObject(parent), name(data.name), groups(data.groups) {}

HandGroupSchema::HandGroupSchema(QObject* parent, int standard) : QObject(parent) {
    if (standard == 1) {
        const HandGroupSchemaData& builtIn = HandGroupStandardSchema::data();
        name = builtIn.name;
        groups = builtIn.groups;
    }
}

HandGroupSchema::~HandGroupSchema() {
    stopWinEvaluations();
}

HandGroupSchemaData HandGroupSchema::data() const {
    HandGroupSchemaData result;
    result.name = name;
    result.groups = groups;
    return result;
}

// --- The tree ---------------------------------------------------------------------------

const HandGroup* HandGroupSchema::groupOf(const HandStrengthKey& key, std::size_t* index) const {
    for (const HandGroup& group : groups) {
        const std::size_t found = group.indexOf(key);
        if (found != HandGroup::npos) {
            if (index != nullptr)
                *index = found;
            return &group;
        }
    }
    return nullptr;
}

HandGroup* HandGroupSchema::groupOf(const HandStrengthKey& key, std::size_t* index) {
    return const_cast<HandGroup*>(static_cast<const HandGroupSchema*>(this)->groupOf(key, index));
}

void HandGroupSchema::addRows(const std::vector<HandStrengthKey>& keys,
                              const HandStrengthKey& parentKey) {
    HandGroup* group = groupOf(parentKey);
    if (group == nullptr)
        throw std::string("Parent hand strength detail could not be found.");
    for (const HandStrengthKey& key : keys)
        group->addRow(HandGroupRowRequest(key, parentKey));
}

void HandGroupSchema::removeChildrenOf(const HandStrengthKey& key) {
    HandGroup* group = groupOf(key);
    if (group == nullptr)
        throw std::string("Parent hand strength detail could not be found.");
    group->removeChildren(key);
}

void HandGroupSchema::toggleChildren(const HandStrengthKey& key) {
    std::size_t index = 0;
    HandGroup* group = groupOf(key, &index);
    if (group == nullptr)
        return;
    for (std::size_t child : group->childrenOf(index)) {
        HandGroupRow& row = group->rows[child];
        row.visible = !row.visible;
        if (row.visible)
            continue;
        // A collapsed row hides its whole subtree, so that expanding it again shows only
        // its direct children.
        for (std::size_t below : group->descendantsOf(child))
            group->rows[below].visible = false;
    }
}

std::set<HandStrengthKey> HandGroupSchema::rowsBelow(const HandStrengthKey& key) const {
    std::set<HandStrengthKey> keys;
    std::size_t index = 0;
    const HandGroup* group = groupOf(key, &index);
    if (group == nullptr)
        return keys;
    for (std::size_t below : group->descendantsOf(index))
        keys.insert(group->rows[below].key);
    return keys;
}

std::set<HandStrengthKey> HandGroupSchema::parentChain(const HandStrengthKey& key) const {
    std::set<HandStrengthKey> keys;
    std::size_t index = 0;
    const HandGroup* group = groupOf(key, &index);
    if (group == nullptr)
        return keys;
    std::uint32_t parent = group->parentOf(index);
    // Bounded walk: stored trees may hold a cycle.
    for (std::size_t steps = 0; parent != HandGroupRow::noParent && steps < group->rows.size();
         ++steps) {
        keys.insert(group->rows[parent].key);
        parent = group->parentOf(parent);
    }
    return keys;
}

bool HandGroupSchema::isExpandable(const HandStrengthKey& key) const {
    std::size_t index = 0;
    const HandGroup* group = groupOf(key, &index);
    return group != nullptr && !group->childrenOf(index).empty();
}

bool HandGroupSchema::isExpanded(const HandStrengthKey& key) const {
    std::size_t index = 0;
    const HandGroup* group = groupOf(key, &index);
    if (group == nullptr)
        return false;
    const std::vector<std::size_t> children = group->childrenOf(index);
    return !children.empty() && group->rows[children.front()].visible;
}

// --- The custom sum ---------------------------------------------------------------------

bool HandGroupSchema::ticked(const HandStrengthKey& key) const {
    return std::any_of(customSumKeys.begin(), customSumKeys.end(),
                       [&key](const DetailHandEvaluation& d) { return d.key == key; });
}

bool HandGroupSchema::customSumContains(const HandStrengthKey& key) const {
    return ticked(key);
}

void HandGroupSchema::setCustomSum(const std::vector<HandStrengthKey>& keys) {
    customSumKeys.clear();
    for (const HandStrengthKey& key : keys) {
        std::size_t index = 0;
        const HandGroup* group = groupOf(key, &index);
        if (group == nullptr || ticked(key))
            continue;
        DetailHandEvaluation detail;
        detail.key = group->rows[index].key;
        detail.name = handStrengthName(detail.key);
        clearDetail(detail);
        customSumKeys.push_back(std::move(detail));
    }
}

std::vector<HandStrengthKey> HandGroupSchema::customSumHandStrengths() const {
    std::vector<HandStrengthKey> keys;
    keys.reserve(customSumKeys.size());
    for (const DetailHandEvaluation& detail : customSumKeys)
        keys.push_back(detail.key);
    return keys;
}

void HandGroupSchema::tickWithChildren(const HandStrengthKey& key) {
    std::size_t index = 0;
    const HandGroup* group = groupOf(key, &index);
    if (group == nullptr)
        return;
    std::vector<HandStrengthKey> keys = customSumHandStrengths();
    keys.push_back(group->rows[index].key);
    for (std::size_t below : group->descendantsOf(index))
        keys.push_back(group->rows[below].key);
    setCustomSum(keys);
}

void HandGroupSchema::untickWithChildren(const HandStrengthKey& key) {
    if (groupOf(key) == nullptr)
        return;
    std::set<HandStrengthKey> removed = rowsBelow(key);
    removed.insert(key);
    customSumKeys.erase(std::remove_if(customSumKeys.begin(), customSumKeys.end(),
                                       [&removed](const DetailHandEvaluation& d) {
                                           return removed.count(d.key) != 0;
                                       }),
                        customSumKeys.end());
}

namespace {

// The group that holds `key` at `index`, else the first group that holds `key` (and its
// index there).
const HandGroup* groupAt(const std::vector<HandGroup>& groups, const HandStrengthKey& key,
                         std::size_t& index) {
    for (const HandGroup& group : groups) {
        if (index < group.rows.size() && group.rows[index].key == key)
            return &group;
    }
    for (const HandGroup& group : groups) {
        const std::size_t found = group.indexOf(key);
        if (found != HandGroup::npos) {
            index = found;
            return &group;
        }
    }
    return nullptr;
}

} // namespace

bool HandGroupSchema::allChildrenTicked(const HandStrengthKey& key, std::size_t index) const {
    const HandGroup* group = groupAt(groups, key, index);
    if (group == nullptr)
        return false;
    for (std::size_t below : group->descendantsOf(index)) {
        if (!ticked(group->rows[below].key))
            return false;
    }
    return true;
}

bool HandGroupSchema::anyChildTicked(const HandStrengthKey& key, std::size_t index) const {
    const HandGroup* group = groupAt(groups, key, index);
    if (group == nullptr)
        return false;
    for (std::size_t below : group->descendantsOf(index)) {
        if (ticked(group->rows[below].key))
            return true;
    }
    return false;
}

// --- Evaluations ------------------------------------------------------------------------

bool HandGroupSchema::isCustomSumGroup(const HandGroup& group) {
    return !group.rows.empty() && group.rows.front().key == customSumKey();
}

void HandGroupSchema::computePercentages(HandGroup& group, bool flat) {
    const float total = static_cast<float>(group.evaluations.total);
    for (std::size_t i = 0; i < group.rows.size(); ++i) {
        HandGroupRow& row = group.rows[i];
        const DetailHandEvaluation* detail = group.detailOf(row.key);
        if (detail == nullptr)
            continue;
        if (detail->combinations1 == 0 && detail->combinations2 == 0) {
            row.percentage1 = 0.0f;
            row.percentage2 = 0.0f;
            continue;
        }
        row.percentage1 = static_cast<float>(detail->combinations1);
        row.percentage2 = static_cast<float>(detail->combinations2);
        const std::uint32_t parent = group.parentOf(i);
        if (parent != HandGroupRow::noParent && !flat) {
            // A share of the parent row. A parent without combinations cannot have children
            // with hits; only a broken stored tree gets here, and then the float division
            // shows infinity or NaN rather than hiding the fault.
            const HandGroupRow& parentRow = group.rows[parent];
            if (detail->combinations1 != 0)
                row.percentage1 /= static_cast<float>(parentRow.combinations1);
            if (row.percentage2 != 0.0f)
                row.percentage2 /= static_cast<float>(parentRow.combinations2);
        } else {
            row.percentage1 /= total;
            row.percentage2 /= total;
        }
    }
}

void HandGroupSchema::evaluateCustomSum(HandGroup& group, const std::string& range1,
                                        const std::string& range2, const std::string& board,
                                        const std::string& deadCards, bool twoPlayers,
                                        bool qualifies) {
    customSum.total = 0;
    customSum.details = customSumKeys;
    for (DetailHandEvaluation& detail : customSum.details)
        clearDetail(detail);
    // The UsingOr variants count each combination for one entry at most, so the sum over
    // the entries is the union of the ticked hand strengths.
    if (qualifies && !customSum.details.empty()) {
        if (twoPlayers)
            getHitEvaluationUsingOr(range1, range2, board, deadCards, customSum);
        else
            getHitEvaluationForOnePlayerUsingOr(range1, board, deadCards, customSum);
    }

    unsigned long long sum1 = 0;
    unsigned long long sum2 = 0;
    std::vector<unsigned long long> hands1;
    std::vector<unsigned long long> hands2;
    for (const DetailHandEvaluation& detail : customSum.details) {
        sum1 += countOf(detail.combinations1);
        sum2 += countOf(detail.combinations2);
        hands1.insert(hands1.end(), detail.hands1.begin(), detail.hands1.end());
        hands2.insert(hands2.end(), detail.hands2.begin(), detail.hands2.end());
    }

    group.evaluations.total = customSum.total;
    DetailHandEvaluation& first = group.evaluations.details.front();
    first.combinations1 = static_cast<int>(sum1);
    first.combinations2 = static_cast<int>(sum2);
    first.hands1 = std::move(hands1);
    first.hands2 = std::move(hands2);
    for (const DetailHandEvaluation& detail : group.evaluations.details)
        group.setCombinations(detail.key, countOf(detail.combinations1),
                              countOf(detail.combinations2));
    computePercentages(group, false);
}

void HandGroupSchema::evaluateOnePlayer(const std::string& range, const std::string& board,
                                        const std::string& deadCards, bool flat) {
    const bool qualifies = boardQualifies(board) && !range.empty();
    for (HandGroup& group : groups) {
        group.resetEvaluations();
        if (group.rows.empty())
            continue;
        if (isCustomSumGroup(group)) {
            evaluateCustomSum(group, range, std::string(), board, deadCards, false, qualifies);
            continue;
        }
        if (qualifies)
            getHitEvaluationForOnePlayer(range, board, deadCards, group.evaluations);
        for (const DetailHandEvaluation& detail : group.evaluations.details)
            group.setCombinations(detail.key, countOf(detail.combinations1),
                                  countOf(detail.combinations2));
        computePercentages(group, flat);
    }
}

void HandGroupSchema::evaluateTwoPlayers(const std::string& range1, const std::string& range2,
                                         const std::string& board, const std::string& deadCards,
                                         bool flat) {
    const bool qualifies = boardQualifies(board) && !range1.empty() && !range2.empty();
    for (HandGroup& group : groups) {
        group.resetEvaluations();
        if (group.rows.empty())
            continue;
        if (isCustomSumGroup(group)) {
            evaluateCustomSum(group, range1, range2, board, deadCards, true, qualifies);
            continue;
        }
        if (qualifies)
            getHitEvaluationClassical(range1, range2, board, deadCards, group.evaluations);
        for (const DetailHandEvaluation& detail : group.evaluations.details)
            group.setCombinations(detail.key, countOf(detail.combinations1),
                                  countOf(detail.combinations2));
        computePercentages(group, flat);
    }
}

std::vector<unsigned long long> HandGroupSchema::handsOf(const HandStrengthKey& key,
                                                         int player) const {
    for (const HandGroup& group : groups) {
        const DetailHandEvaluation* detail = group.detailOf(key);
        if (detail != nullptr)
            return player == 2 ? detail->hands2 : detail->hands1;
    }
    return {};
}

// --- Win evaluations --------------------------------------------------------------------

void HandGroupSchema::setThreadPool(ThreadPool* pool) {
    if (pool == threadPool)
        return;
    stopWinEvaluations();
    if (threadPool)
        disconnect(threadPool, nullptr, this, nullptr);
    threadPool = pool;
    if (pool != nullptr)
        connect(pool, &ThreadPool::WinEvaluationFinished, this,
                &HandGroupSchema::reactToFinishedWinEvaluation);
}

void HandGroupSchema::stopWinEvaluations() {
    // A handle reaches its pool by a plain pointer: only stop while the pool lives.
    if (threadPool) {
        for (auto& running : winEvaluations)
            running.second.handle.Stop();
    }
    winEvaluations.clear();
}

void HandGroupSchema::evaluateWin(const std::string& range1, const std::string& range2,
                                  const std::string& board, const std::string& deadCards) {
    stopWinEvaluations();
    QV_ASSERT(threadPool, "No thread pool for the win evaluation.");
    if (!threadPool)
        return;
    const bool qualifies = !range1.empty() && !range2.empty() && boardQualifies(board);
    for (std::size_t g = 0; g < groups.size(); ++g) {
        const HandGroup& group = groups[g];
        if (group.rows.empty())
            continue;
        DetailWinEvaluations evaluations;
        evaluations.reserve(group.rows.size());
        for (const HandGroupRow& row : group.rows)
            evaluations.emplace_back(row.key, handStrengthName(row.key));
        if (!qualifies)
            continue;
        RunningWinEvaluation running;
        running.handle = threadPool->createWinEvaluationHandle();
        running.group = g;
        running.handle.Start(range1, range2, board, deadCards, evaluations);
        winEvaluations.emplace(running.handle, running);
    }
}

void HandGroupSchema::reactToFinishedWinEvaluation(const ThreadHandle& handle,
                                                   const DetailWinEvaluations& result) {
    // The map orders by id alone; only an equal handle (valid, same id) is ours.
    auto found = winEvaluations.find(handle);
    if (found == winEvaluations.end() || !(found->first == handle))
        return;
    const std::size_t g = found->second.group;
    winEvaluations.erase(found);

    if (g < groups.size()) {
        HandGroup& group = groups[g];
        // The records come in the order of the rows they were made from.
        const std::size_t count = std::min(group.rows.size(), result.size());
        for (std::size_t i = 0; i < count; ++i) {
            const DetailWinEvaluation& record = result[i];
            const float showdowns = static_cast<float>(static_cast<long long>(record.wins) +
                                                       record.losses + record.ties);
            HandGroupRow& row = group.rows[i];
            // A strength that nobody holds has no showdowns, and 0 / 0 leaves NaN: there is
            // no share to show.
            row.percentage1 = static_cast<float>(record.wins) / showdowns;
            row.percentage2 = static_cast<float>(record.losses) / showdowns;
            if (DetailHandEvaluation* detail = group.detailOf(row.key)) {
                detail->percent1 = row.percentage1;
                detail->percent2 = row.percentage2;
            }
        }
    }
    emit WinEvaluationFinished(handle, result);
}
