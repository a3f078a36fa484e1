#pragma once

#include <QListWidgetItem>
#include <VelmaraEvaluatorBase.h>

#include <string>

// One feature in a list of the hand strength dialog: its name and the key with the single
// bit it stands for. An item taken over from the parent key is shown in italics, with
// " (Inherited)" behind its name, and can't be removed.
class HandStrengthSelectionItem : public QListWidgetItem {
public:
    HandStrengthSelectionItem(const std::string& name, const HandStrengthKey& key,
                              bool inherited = false);

    const std::string& name() const { return featureName; }
    const HandStrengthKey& key() const { return featureKey; }
    // The single bit of the key's `positive` word.
    unsigned long long bit() const { return featureKey.positive; }
    bool isInherited() const { return font().italic(); }

private:
    std::string featureName;
    HandStrengthKey featureKey;
};
