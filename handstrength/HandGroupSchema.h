#pragma once

#include "calculation/ThreadHandle.h"
#include "calculation/ThreadPool.h"
#include "calculation/WinEvaluationHandle.h"
#include "handstrength/HandGroup.h"
#include "handstrength/HandGroupSchemaData.h"

#include <QObject>
#include <QPointer>
#include <VelmaraEvaluatorBase.h>

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

// A hand group schema at work: the groups of a schema with the results of the last
// evaluation, the hand strengths ticked for the custom sum, and the win evaluations running
// for it.
//
// Hit evaluations run synchronously in the caller (they block the interface by design); win
// evaluations run on the ThreadPool and come back through reactToFinishedWinEvaluation.
// Main thread only.
//
// A group whose first row is the custom sum key (positive 0x0004000000000000, exclusive 0)
// is the custom sum: its one count is the union of the ticked hand strengths, counted by
// the evaluator's UsingOr variants. Every other group is counted row by row.
//
// Rows are looked up by key in the first group that holds the key; keys compare by their
// two words only.
class HandGroupSchema : public QObject {
    Q_OBJECT

public:
    // The key of the custom sum row.
    static HandStrengthKey customSumKey();

    // The built-in "Standard" content.
    HandGroupSchema();
    HandGroupSchema(QObject* parent, const HandGroupSchemaData& data);
    // The "Standard" content when `standard` is 1; otherwise an empty schema without a name.
    HandGroupSchema(QObject* parent, int standard);
    // Stops the win evaluations still running for this schema.
    ~HandGroupSchema() override;

    HandGroupSchema(const HandGroupSchema&) = delete;
    HandGroupSchema& operator=(const HandGroupSchema&) = delete;

    const std::string& getName() const { return name; }
    const std::vector<HandGroup>& getGroups() const { return groups; }
    // Name and groups as a plain value, with the present counts, shares and visibility.
    HandGroupSchemaData data() const;

    // --- The tree -----------------------------------------------------------------------

    // Adds a row for each key under the row with `parentKey`. Throws std::string
    // "Parent hand strength detail could not be found." when no group holds that row.
    void addRows(const std::vector<HandStrengthKey>& keys, const HandStrengthKey& parentKey);
    // Removes the child rows of the row with `key`, with their subtrees. Throws std::string
    // "Parent hand strength detail could not be found." when no group holds that row.
    void removeChildrenOf(const HandStrengthKey& key);
    // Expands or collapses a row: flips `visible` of its children. A child that goes hidden
    // hides every row below it as well. Does nothing for an unknown key.
    void toggleChildren(const HandStrengthKey& key);
    // Keys of all rows below the row with `key`.
    std::set<HandStrengthKey> rowsBelow(const HandStrengthKey& key) const;
    // Keys of all ancestors of the row with `key`.
    std::set<HandStrengthKey> parentChain(const HandStrengthKey& key) const;
    // Whether the row has children.
    bool isExpandable(const HandStrengthKey& key) const;
    // Whether the row's first child is visible; false for a row without children.
    bool isExpanded(const HandStrengthKey& key) const;

    // --- The custom sum -----------------------------------------------------------------

    bool customSumContains(const HandStrengthKey& key) const;
    // Replaces the ticked hand strengths; keys that stand in no group are left out, and each
    // key is taken once, with the row's displayName.
    void setCustomSum(const std::vector<HandStrengthKey>& keys);
    // The ticked hand strengths, in the order of ticking.
    std::vector<HandStrengthKey> customSumHandStrengths() const;
    // The records of the last custom sum evaluation, one for each ticked hand strength.
    const DetailHandEvaluations& getCustomSum() const { return customSum; }
    // Ticks, or unticks, the row with `key` and every row below it. Keys that stand in no
    // group change nothing.
    void tickWithChildren(const HandStrengthKey& key);
    void untickWithChildren(const HandStrengthKey& key);
    // State of a row's tick box: whether all rows, or any row, below the row at `index` (of
    // the group that holds `key` at that index) are ticked. A row without children has all
    // (none of its) children ticked and no child ticked.
    bool allChildrenTicked(const HandStrengthKey& key, std::size_t index) const;
    bool anyChildTicked(const HandStrengthKey& key, std::size_t index) const;

    // --- Evaluations --------------------------------------------------------------------

    // Counts each row's hand strength in the technical range text on the board (concatenated
    // two-character cards) without the dead cards, and computes the shares: relative to the
    // parent row, or with `flat` relative to all combinations. Nothing is counted, and all
    // counts read 0, when the range is empty or the board has less than a flop.
    void evaluateOnePlayer(const std::string& range, const std::string& board,
                           const std::string& deadCards, bool flat);
    // The same for both ranges at once, with the card removal of the other range. Needs
    // both range texts.
    void evaluateTwoPlayers(const std::string& range1, const std::string& range2,
                            const std::string& board, const std::string& deadCards, bool flat);

    // The combinations behind a row after an evaluation, as two-bit card masks, of player 1
    // (`player` 1) or player 2 (`player` 2); empty for an unknown key.
    std::vector<unsigned long long> handsOf(const HandStrengthKey& key, int player) const;

    // The pool that runs win evaluations. Results are taken from its WinEvaluationFinished.
    void setThreadPool(ThreadPool* pool);
    ThreadPool* getThreadPool() const { return threadPool; }
    // Stops the win evaluations of an earlier call and starts one for each group that has
    // rows, when both ranges are given and the board has at least a flop. Each result sets
    // the shares of wins (`percentage1`) and losses (`percentage2`) of the group's rows and
    // is passed on by WinEvaluationFinished.
    void evaluateWin(const std::string& range1, const std::string& range2, const std::string& board,
                     const std::string& deadCards);
    // Number of win evaluations started and not yet reported.
    std::size_t runningWinEvaluations() const { return winEvaluations.size(); }

signals:
    void WinEvaluationFinished(const ThreadHandle& handle, const DetailWinEvaluations& result);

public slots:
    // Takes the result of one of this schema's win evaluations; results of other handles
    // are ignored.
    void reactToFinishedWinEvaluation(const ThreadHandle& handle,
                                      const DetailWinEvaluations& result);

private:
    struct RunningWinEvaluation {
        WinEvaluationHandle handle;
        std::size_t group = 0; // index into `groups`
    };

    // The group holding a row equal to `key`, or null; `index` receives the row's index.
    const HandGroup* groupOf(const HandStrengthKey& key, std::size_t* index = nullptr) const;
    HandGroup* groupOf(const HandStrengthKey& key, std::size_t* index = nullptr);
    bool ticked(const HandStrengthKey& key) const;
    void stopWinEvaluations();
    void evaluateCustomSum(HandGroup& group, const std::string& range1, const std::string& range2,
                           const std::string& board, const std::string& deadCards, bool twoPlayers,
                           bool qualifies);

    static bool isCustomSumGroup(const HandGroup& group);
    static void computePercentages(HandGroup& group, bool flat);

    std::map<ThreadHandle, RunningWinEvaluation> winEvaluations;
    QPointer<ThreadPool> threadPool;
    std::string name;
    std::vector<HandGroup> groups;
    DetailHandEvaluations customSum;
    std::vector<DetailHandEvaluation> customSumKeys;
};
