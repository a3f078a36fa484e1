#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QString>

// Storage shared by the schema pools. A pool is one QByteArray value in
// QSettings("Velmara", "Quorvane") under `group`/`key`, holding a stream of tagged records:
// a QString tag, then that tag's fields, all in QDataStream encoding.

// The stored value; empty when there is none.
QByteArray loadSchemaPoolBytes(const char* group, const char* key);
void saveSchemaPoolBytes(const char* group, const char* key, const QByteArray& bytes);

// Reads tags from `in` until the stream ends or fails, and calls readFields(tag) for each.
// readFields reads the fields of the tags it knows and keeps what it read only while
// in.status() stays QDataStream::Ok: a failed read ends the stream. For a tag it does not
// know (one of a later version, say) it reads nothing, so the next string is read as a tag.
template <typename ReadFields>
void readTaggedRecords(QDataStream& in, ReadFields readFields) {
    while (in.status() == QDataStream::Ok && !in.atEnd()) {
        QString tag;
        in >> tag;
        if (in.status() != QDataStream::Ok)
            return;
        readFields(tag);
    }
}
