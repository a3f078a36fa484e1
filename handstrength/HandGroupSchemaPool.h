#pragma once

#include "handstrength/HandGroupSchemaData.h"

#include <QByteArray>

#include <string>
#include <vector>

// All hand group schemas the user can choose from, and the name of the default one. The
// built-in "Standard" is always in the pool and is never written to the settings.
//
// Persisted in QSettings("Velmara", "Quorvane"), group "HandSelection", key
// "handGroupSchemaPool": a QByteArray written by a QDataStream of its default version, as a
// stream of tokens:
//     QString defaultSchemaName
//     for each schema but "Standard":  QString "schema", QString name
//       for each group:                QString "group", QString name
//         for each row:                QString "position", QString key.displayName,
//                                      qint64 key.positive, qint64 key.exclusive,
//                                      qint32 parent (-1 for a root), bool visible
// Counts and shares are not stored. The reader skips tags it doesn't know one string at a
// time, and stops at the first read that fails, keeping what it has read so far.
class HandGroupSchemaPool {
public:
    static const char* const settingsGroup; // "HandSelection"
    static const char* const settingsKey;   // "handGroupSchemaPool"

    // "Standard" alone, and the default.
    HandGroupSchemaPool();

    // Replaces the content by the stored pool; an empty or missing value leaves "Standard"
    // alone. Never fails.
    void load();
    void save() const;

    // The settings value, and reading it back (the same rules as load()).
    QByteArray toByteArray() const;
    void fromByteArray(const QByteArray& bytes);

    // The schema of that name, or null.
    const HandGroupSchemaData* find(const std::string& name) const;
    // Adds a schema, or replaces the one of the same name. "Standard" can't be replaced, and
    // a schema without a name can't be added: both are ignored, and false is returned.
    bool add(const HandGroupSchemaData& data);
    // Puts `data` in the place of the schema called `name`, under the data's own name: a
    // renamed schema keeps its place in the list, and the default name follows it. False,
    // and nothing changes, for "Standard" (either name), an unknown `name`, an empty new name
    // or a new name that another schema has.
    bool replace(const std::string& name, const HandGroupSchemaData& data);
    // Removes a schema; "Standard" can't be removed. If it was the default, "Standard"
    // becomes the default. False when nothing was removed.
    bool remove(const std::string& name);

    const std::vector<HandGroupSchemaData>& schemas() const { return schemaList; }
    const std::string& defaultName() const { return defaultSchemaName; }
    void setDefaultName(const std::string& name) { defaultSchemaName = name; }

private:
    std::vector<HandGroupSchemaData> schemaList;
    std::string defaultSchemaName;
};
