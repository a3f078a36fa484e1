#pragma once

#include <QByteArray>
#include <QMetaType>
#include <VelmaraEvaluatorBase.h>

#include <string>
#include <vector>

// Named sets of hand strengths to tick for the custom sum. The three fixed schemas "Nothing",
// "Made Hands" and "Mediocre and Strong Draws" always come first and are never saved; the
// test for them compares names, so a user's schema of such a name is not saved either.
//
// Persisted in QSettings("Velmara", "Quorvane"), group "HandSelection", key
// "handGroupTickSchemaPool": a QByteArray written by a QDataStream of its default version:
//     for each schema but the fixed ones:  QString "schema", QString name
//       for each key:                      QString "handStrength", qint64 positive,
//                                          qint64 exclusive
// displayName is not stored. Unknown tags are skipped one string at a time, and reading stops
// at the first read that fails, keeping what it has read so far.
class HandGroupTickSchemaPool {
public:
    struct HandGroupTickSchema {
        std::string name;
        std::vector<HandStrengthKey> handStrengths;
    };

    static const char* const settingsGroup; // "HandSelection"
    static const char* const settingsKey;   // "handGroupTickSchemaPool"

    // The three fixed schemas, in this order.
    static std::vector<HandGroupTickSchema> defaultSchemas();
    static bool isDefaultName(const std::string& name);

    // The fixed schemas alone.
    HandGroupTickSchemaPool();

    // The fixed schemas followed by the stored ones. Never fails.
    void load();
    void save() const;

    QByteArray toByteArray() const;
    void fromByteArray(const QByteArray& bytes);

    // The schema of that name, or null.
    const HandGroupTickSchema* find(const std::string& name) const;
    // Adds a schema, or replaces the one of the same name (a fixed one included, for this
    // run only). A schema without a name is ignored, and false is returned.
    bool add(const HandGroupTickSchema& schema);
    // Removes a schema; the fixed ones can't be removed. False when nothing was removed.
    bool remove(const std::string& name);

    const std::vector<HandGroupTickSchema>& schemas() const { return schemaList; }

private:
    std::vector<HandGroupTickSchema> schemaList;
};

Q_DECLARE_METATYPE(HandGroupTickSchemaPool::HandGroupTickSchema)
