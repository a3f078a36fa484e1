#include "handstrength/HandGroupTickSchemaPool.h"

#include "handstrength/HandStrengthMasks.h"
#include "handstrength/SchemaPoolStorage.h"

#include <QDataStream>
#include <QString>

#include <algorithm>

const char* const HandGroupTickSchemaPool::settingsGroup = "HandSelection";
const char* const HandGroupTickSchemaPool::settingsKey = "handGroupTickSchemaPool";

namespace {

const QString schemaTag = QStringLiteral("schema");
const QString keyTag = QStringLiteral("handStrength");

} // namespace

std::vector<HandGroupTickSchemaPool::HandGroupTickSchema>
HandGroupTickSchemaPool::defaultSchemas() {
    std::vector<HandGroupTickSchema> defaults(3);
    defaults[0].name = "Nothing";

    defaults[1].name = "Made Hands";
    for (unsigned long long value :
         {0x1ULL, 0x2ULL, 0x4ULL, 0x8ULL, 0x10ULL, 0x20ULL, 0x40ULL, 0x80ULL})
        defaults[1].handStrengths.emplace_back(value, 0);

    // 0x14000000 stands twice; the custom sum takes each key once.
    defaults[2].name = "Mediocre and Strong Draws";
    for (unsigned long long draw :
         {0xC000000ULL, 0x14000000ULL, 0x4000000ULL, 0x8000000ULL, 0x14000000ULL, 0x28000000ULL,
          0x400004000000ULL, 0x400008000000ULL, 0x40000C000000ULL, 0x400014000000ULL,
          0x400010000000ULL})
        defaults[2].handStrengths.emplace_back(draw, madeHandWithHoleCardsMask);
    return defaults;
}

bool HandGroupTickSchemaPool::isDefaultName(const std::string& name) {
    return name == "Nothing" || name == "Made Hands" || name == "Mediocre and Strong Draws";
}

HandGroupTickSchemaPool::HandGroupTickSchemaPool() : schemaList(defaultSchemas()) {}

void HandGroupTickSchemaPool::load() {
    fromByteArray(loadSchemaPoolBytes(settingsGroup, settingsKey));
}

void HandGroupTickSchemaPool::save() const {
    saveSchemaPoolBytes(settingsGroup, settingsKey, toByteArray());
}

QByteArray HandGroupTickSchemaPool::toByteArray() const {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    for (const HandGroupTickSchema& schema : schemaList) {
        if (isDefaultName(schema.name))
            continue;
        out << schemaTag << QString::fromStdString(schema.name);
        for (const HandStrengthKey& key : schema.handStrengths)
            out << keyTag << static_cast<qint64>(key.positive)
                << static_cast<qint64>(key.exclusive);
    }
    return bytes;
}

void HandGroupTickSchemaPool::fromByteArray(const QByteArray& bytes) {
    schemaList = defaultSchemas();
    if (bytes.isEmpty())
        return;

    HandGroupTickSchema schema;
    auto closeSchema = [this, &schema]() {
        // A fixed schema is never saved, so a stored one of such a name is foreign: the
        // fixed one stands.
        if (!schema.name.empty() && !isDefaultName(schema.name))
            add(schema);
        schema = HandGroupTickSchema();
    };

    QDataStream in(bytes);
    readTaggedRecords(in, [&](const QString& tag) {
        if (tag == schemaTag) {
            closeSchema();
            QString name;
            in >> name;
            if (in.status() == QDataStream::Ok)
                schema.name = name.toStdString();
        } else if (tag == keyTag) {
            qint64 positive = 0;
            qint64 exclusive = 0;
            in >> positive >> exclusive;
            if (in.status() == QDataStream::Ok)
                schema.handStrengths.emplace_back(static_cast<unsigned long long>(positive),
                                                  static_cast<unsigned long long>(exclusive));
        }
    });
    closeSchema();
}

const HandGroupTickSchemaPool::HandGroupTickSchema*
HandGroupTickSchemaPool::find(const std::string& name) const {
    auto found = std::find_if(schemaList.begin(), schemaList.end(),
                              [&name](const HandGroupTickSchema& s) { return s.name == name; });
    return found == schemaList.end() ? nullptr : &*found;
}

bool HandGroupTickSchemaPool::add(const HandGroupTickSchema& schema) {
    if (schema.name.empty())
        return false;
    auto found =
        std::find_if(schemaList.begin(), schemaList.end(),
                     [&schema](const HandGroupTickSchema& s) { return s.name == schema.name; });
    if (found != schemaList.end())
        *found = schema;
    else
        schemaList.push_back(schema);
    return true;
}

bool HandGroupTickSchemaPool::remove(const std::string& name) {
    if (isDefaultName(name))
        return false;
    auto found = std::find_if(schemaList.begin(), schemaList.end(),
                              [&name](const HandGroupTickSchema& s) { return s.name == name; });
    if (found == schemaList.end())
        return false;
    schemaList.erase(found);
    return true;
}
