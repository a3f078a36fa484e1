#include "handstrength/HandGroupSchemaPool.h"

#include "handstrength/HandGroupStandardSchema.h"
#include "handstrength/SchemaPoolStorage.h"

#include <QDataStream>
#include <QString>

#include <algorithm>

const char* const HandGroupSchemaPool::settingsGroup = "HandSelection";
const char* const HandGroupSchemaPool::settingsKey = "handGroupSchemaPool";

namespace {

const QString schemaTag = QStringLiteral("schema");
const QString groupTag = QStringLiteral("group");
const QString rowTag = QStringLiteral("position");

bool isStandard(const std::string& name) {
    return name == HandGroupStandardSchema::name;
}

} // namespace

HandGroupSchemaPool::HandGroupSchemaPool()
    : schemaList{HandGroupStandardSchema::data()},
      defaultSchemaName(HandGroupStandardSchema::name) {}

void HandGroupSchemaPool::load() {
    fromByteArray(loadSchemaPoolBytes(settingsGroup, settingsKey));
}

void HandGroupSchemaPool::save() const {
    saveSchemaPoolBytes(settingsGroup, settingsKey, toByteArray());
}

QByteArray HandGroupSchemaPool::toByteArray() const {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << QString::fromStdString(defaultSchemaName);
    for (const HandGroupSchemaData& schema : schemaList) {
        if (isStandard(schema.name))
            continue;
        out << schemaTag << QString::fromStdString(schema.name);
        for (const HandGroup& group : schema.groups) {
            out << groupTag << QString::fromStdString(group.name);
            for (const HandGroupRow& row : group.rows) {
                out << rowTag << QString::fromStdString(row.key.displayName)
                    << static_cast<qint64>(row.key.positive)
                    << static_cast<qint64>(row.key.exclusive) << static_cast<qint32>(row.parent)
                    << row.visible;
            }
        }
    }
    return bytes;
}

void HandGroupSchemaPool::fromByteArray(const QByteArray& bytes) {
    schemaList.assign(1, HandGroupStandardSchema::data());
    defaultSchemaName = HandGroupStandardSchema::name;
    if (bytes.isEmpty())
        return;

    QDataStream in(bytes);
    QString storedDefault;
    in >> storedDefault;
    if (in.status() == QDataStream::Ok && !storedDefault.isEmpty())
        defaultSchemaName = storedDefault.toStdString();

    // A group or schema is kept only once it is closed and has a name; rows or groups that
    // come before any name are dropped with their unnamed container.
    HandGroupSchemaData schema;
    HandGroup group;
    auto closeGroup = [&schema, &group]() {
        if (!group.name.empty())
            schema.groups.push_back(std::move(group));
        group = HandGroup();
    };
    auto closeSchema = [this, &schema, &closeGroup]() {
        closeGroup();
        // A stored "Standard" can only come from a foreign stream: the built-in one stands.
        if (!schema.name.empty() && !isStandard(schema.name))
            add(schema);
        schema = HandGroupSchemaData();
    };

    readTaggedRecords(in, [&](const QString& tag) {
        if (tag == schemaTag) {
            closeSchema();
            QString schemaName;
            in >> schemaName;
            if (in.status() == QDataStream::Ok)
                schema.name = schemaName.toStdString();
        } else if (tag == groupTag) {
            closeGroup();
            QString groupName;
            in >> groupName;
            if (in.status() == QDataStream::Ok)
                group.name = groupName.toStdString();
        } else if (tag == rowTag) {
            QString displayName;
            qint64 positive = 0;
            qint64 exclusive = 0;
            qint32 parent = -1;
            bool visible = false;
            in >> displayName >> positive >> exclusive >> parent >> visible;
            if (in.status() != QDataStream::Ok)
                return;
            HandGroupRow row;
            row.key = HandStrengthKey(static_cast<unsigned long long>(positive),
                                      static_cast<unsigned long long>(exclusive),
                                      displayName.toStdString());
            // Kept as stored, also when the link is broken: the walks over the tree treat
            // such a row as a root.
            row.parent = static_cast<std::uint32_t>(parent);
            row.visible = visible;
            group.rows.push_back(row);
        }
    });
    closeSchema();
}

const HandGroupSchemaData* HandGroupSchemaPool::find(const std::string& name) const {
    auto found = std::find_if(schemaList.begin(), schemaList.end(),
                              [&name](const HandGroupSchemaData& s) { return s.name == name; });
    return found == schemaList.end() ? nullptr : &*found;
}

bool HandGroupSchemaPool::add(const HandGroupSchemaData& data) {
    if (data.name.empty() || isStandard(data.name))
        return false;
    auto found =
        std::find_if(schemaList.begin(), schemaList.end(),
                     [&data](const HandGroupSchemaData& s) { return s.name == data.name; });
    if (found != schemaList.end())
        *found = data;
    else
        schemaList.push_back(data);
    return true;
}

bool HandGroupSchemaPool::replace(const std::string& name, const HandGroupSchemaData& data) {
    if (isStandard(name) || isStandard(data.name) || data.name.empty())
        return false;
    auto named = [](const std::string& wanted) {
        return [&wanted](const HandGroupSchemaData& s) { return s.name == wanted; };
    };
    auto found = std::find_if(schemaList.begin(), schemaList.end(), named(name));
    if (found == schemaList.end())
        return false;
    if (data.name != name &&
        std::find_if(schemaList.begin(), schemaList.end(), named(data.name)) != schemaList.end())
        return false;
    *found = data;
    if (defaultSchemaName == name)
        defaultSchemaName = data.name;
    return true;
}

bool HandGroupSchemaPool::remove(const std::string& name) {
    if (isStandard(name))
        return false;
    auto found = std::find_if(schemaList.begin(), schemaList.end(),
                              [&name](const HandGroupSchemaData& s) { return s.name == name; });
    if (found == schemaList.end())
        return false;
    schemaList.erase(found);
    if (defaultSchemaName == name)
        defaultSchemaName = HandGroupStandardSchema::name;
    return true;
}
