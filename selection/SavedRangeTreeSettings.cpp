#include "selection/SavedRangeTreeSettings.h"

#include "Range/RangeSerializeError.h"
#include "selection/HandSelectionTreeModel.h"

#include <QDataStream>
#include <QSettings>

#include <algorithm>

namespace {

const char* const group = "HandSelection";
const char* const treeKey = "HandSelectionTreeNew";
const char* const opennessKey = "treeOpenness";
const char* const oldTreeKey = "HandSelectionTreeWithGroups";
const char* const xmlKey = "HandSelectionTreeWithGroupsNewXML";
const QString nodeTag = QStringLiteral("node");
const QString openTag = QStringLiteral("open");

// A tree has no more nodes than this; a count above it is damage, not a tree.
constexpr quint32 maximumCount = 1000000;

// The INI file of the user; the native store is QSettings("Velmara", "Quorvane").
constexpr QSettings::Format fileFormat = QSettings::IniFormat;

void writeRgb(QDataStream& out, const Range::GroupColor::Rgb& rgb) {
    out << static_cast<qint32>(rgb.red) << static_cast<qint32>(rgb.green)
        << static_cast<qint32>(rgb.blue);
}

void readRgb(QDataStream& in, Range::GroupColor::Rgb& rgb) {
    qint32 red = 0, green = 0, blue = 0;
    in >> red >> green >> blue;
    rgb.red = red;
    rgb.green = green;
    rgb.blue = blue;
}

bool readNode(QDataStream& in, Range::NodeMemento& node) {
    quint32 parent = 0;
    QString name;
    quint32 children = 0;
    in >> node.isRange >> parent >> name >> children;
    if (in.status() != QDataStream::Ok || children > maximumCount)
        return false;
    node.parent = parent;
    node.name = name.toStdString();
    for (quint32 i = 0; i < children && in.status() == QDataStream::Ok; ++i) {
        quint32 child = 0;
        in >> child;
        node.children.push_back(child);
    }
    if (node.isRange) {
        node.suits.assign(169, 0);
        quint8 classes = 0;
        in >> classes;
        for (quint8 i = 0; i < classes && in.status() == QDataStream::Ok; ++i) {
            quint8 element = 0;
            quint16 suits = 0;
            in >> element >> suits;
            if (element >= node.suits.size())
                return false;
            node.suits[element] = suits;
        }
        in >> node.color.usesColor;
        readRgb(in, node.color.colorFrom);
        readRgb(in, node.color.colorTo);
        quint32 insertMode = 0;
        in >> node.exclusive >> insertMode;
        node.insertMode = insertMode;
    }
    return in.status() == QDataStream::Ok;
}

} // namespace

QByteArray SavedRangeTreeSettings::encode(const std::vector<Range::NodeMemento>& nodes,
                                          const std::vector<unsigned int>& open) {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    for (const Range::NodeMemento& node : nodes) {
        out << nodeTag << node.isRange << static_cast<quint32>(node.parent)
            << QString::fromStdString(node.name) << static_cast<quint32>(node.children.size());
        for (unsigned int child : node.children)
            out << static_cast<quint32>(child);
        if (node.isRange) {
            // Only the classes that hold a combination, each as its place and its suits.
            const auto held =
                static_cast<quint8>(std::count_if(node.suits.begin(), node.suits.end(),
                                                  [](unsigned int suits) { return suits != 0; }));
            out << held;
            for (std::size_t element = 0; element < node.suits.size(); ++element)
                if (node.suits[element] != 0)
                    out << static_cast<quint8>(element)
                        << static_cast<quint16>(node.suits[element]);
            out << node.color.usesColor;
            writeRgb(out, node.color.colorFrom);
            writeRgb(out, node.color.colorTo);
            out << node.exclusive << static_cast<quint32>(node.insertMode);
        }
    }
    for (unsigned int node : open)
        out << openTag << static_cast<quint32>(node);
    return bytes;
}

bool SavedRangeTreeSettings::decode(const QByteArray& bytes, std::vector<Range::NodeMemento>& nodes,
                                    std::vector<unsigned int>& open) {
    nodes.clear();
    open.clear();
    QDataStream in(bytes);
    while (!in.atEnd()) {
        QString tag;
        in >> tag;
        if (in.status() != QDataStream::Ok)
            return false;
        if (tag == nodeTag) {
            if (nodes.size() >= maximumCount)
                return false;
            Range::NodeMemento node;
            if (!readNode(in, node))
                return false;
            nodes.push_back(std::move(node));
        } else if (tag == openTag) {
            quint32 node = 0;
            in >> node;
            if (in.status() != QDataStream::Ok)
                return false;
            open.push_back(node);
        } else {
            return false;
        }
    }
    return HandSelectionTreeModel::isValidMemento(nodes);
}

QByteArray SavedRangeTreeSettings::encodeOpenness(const std::vector<unsigned int>& open) {
    return encode({}, open);
}

std::vector<unsigned int> SavedRangeTreeSettings::decodeOpenness(const QByteArray& bytes) {
    std::vector<unsigned int> open;
    QDataStream in(bytes);
    while (!in.atEnd()) {
        QString tag;
        quint32 node = 0;
        in >> tag >> node;
        if (in.status() != QDataStream::Ok || tag != openTag)
            break;
        open.push_back(node);
    }
    return open;
}

SavedRangeTreeSettings::Loaded SavedRangeTreeSettings::load(HandSelectionTreeModel& model) {
    Loaded loaded;
    QSettings file(fileFormat, QSettings::UserScope, "Velmara", "Quorvane");
    file.beginGroup(group);
    QSettings native("Velmara", "Quorvane");
    native.beginGroup(group);
    QByteArray stored;
    if (file.contains(treeKey)) {
        loaded.source = Source::FileStore;
        stored = file.value(treeKey).toByteArray();
    } else if (native.contains(treeKey)) {
        loaded.source = Source::NativeStore;
        stored = native.value(treeKey).toByteArray();
    }

    if (loaded.source != Source::DefaultContent) {
        std::vector<Range::NodeMemento> nodes;
        if (decode(stored, nodes, loaded.openNodes)) {
            model.restore(nodes);
        } else {
            loaded.problem =
                QStringLiteral("The saved range tree in %1 is damaged.")
                    .arg(loaded.source == Source::FileStore ? file.fileName() : native.fileName());
            loaded.source = Source::DefaultContent;
            loaded.openNodes.clear();
            model.setDefaultContent();
        }
    } else if (native.contains(oldTreeKey)) {
        loaded.source = Source::OldFormat;
        try {
            loaded.openNodes = model.loadOldTree(native.value(oldTreeKey).toByteArray());
        } catch (const Range::Exception::RangeSerializeError& error) {
            loaded.problem = QStringLiteral("The saved range tree of an earlier version in %1 "
                                            "cannot be read: %2")
                                 .arg(native.fileName(), QString::fromStdString(error.message()));
            loaded.source = Source::DefaultContent;
            loaded.openNodes.clear();
            model.setDefaultContent();
        }
    } else {
        model.setDefaultContent();
    }
    if (!loaded.problem.isEmpty())
        loaded.problem += QStringLiteral(" The predefined ranges are shown instead; the damaged "
                                         "tree will be replaced when this dialog closes.");

    if (native.contains(opennessKey))
        loaded.openNodes = decodeOpenness(native.value(opennessKey).toByteArray());
    return loaded;
}

void SavedRangeTreeSettings::save(const HandSelectionTreeModel& model,
                                  const std::vector<unsigned int>& open) {
    QSettings file(fileFormat, QSettings::UserScope, "Velmara", "Quorvane");
    file.beginGroup(group);
    file.setValue(treeKey, encode(model.memento(), open));
    QSettings native("Velmara", "Quorvane");
    native.beginGroup(group);
    native.setValue(xmlKey, QString::fromStdString(model.writeNewXml()));
}

void SavedRangeTreeSettings::saveOpenness(const std::vector<unsigned int>& open) {
    QSettings native("Velmara", "Quorvane");
    native.beginGroup(group);
    native.setValue(opennessKey, encodeOpenness(open));
}
