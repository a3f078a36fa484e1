#pragma once

#include <QByteArray>

#include <string>
#include <utility>

// A snapshot of the whole analysis for undo and redo: what changed, shown in the menu
// entries, and the analysis as file text.
//
// The text is kept compressed: the undo list has no limit in length, and a snapshot is the
// whole file each time, so successive snapshots of a long session would otherwise hold
// hundreds of megabytes. data() gives the text back as it was given.
class Memento {
public:
    Memento() = default;
    Memento(std::string label, const std::string& data)
        : labelText(std::move(label)), packed(pack(data)) {}

    const std::string& label() const { return labelText; }
    std::string data() const {
        return packed.isEmpty() ? std::string() : qUncompress(packed).toStdString();
    }
    void setLabel(const std::string& text) { labelText = text; }
    void setData(const std::string& text) { packed = pack(text); }
    // Bytes the snapshot holds in memory, text and label together.
    std::size_t size() const {
        return static_cast<std::size_t>(packed.capacity()) + labelText.capacity() + sizeof(*this);
    }

private:
    // The fastest level: a snapshot is taken at every relevant change, and XML shrinks to a
    // tenth at any level.
    static QByteArray pack(const std::string& text) {
        if (text.empty())
            return QByteArray();
        QByteArray packed = qCompress(reinterpret_cast<const uchar*>(text.data()),
                                      static_cast<int>(text.size()), 1);
        // The compressor reserves room for the worst case.
        packed.squeeze();
        return packed;
    }

    std::string labelText;
    QByteArray packed;
};
