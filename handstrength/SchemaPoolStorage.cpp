#include "handstrength/SchemaPoolStorage.h"

#include <QSettings>

QByteArray loadSchemaPoolBytes(const char* group, const char* key) {
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup(group);
    const QByteArray bytes = settings.value(key).toByteArray();
    settings.endGroup();
    return bytes;
}

void saveSchemaPoolBytes(const char* group, const char* key, const QByteArray& bytes) {
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup(group);
    settings.setValue(key, bytes);
    settings.endGroup();
}
