#include "app/document/Memento.h"

#include "app/document/AnalysisFile.h"

#include <utility>

Memento::Memento(std::string label, const std::string& data)
    : labelText(std::move(label)), whole(pack(data)) {}

Memento::Memento(std::string label, std::vector<Part> scenarios, int selectedScenario,
                 std::string tabState)
    : labelText(std::move(label)), scenarioParts(std::move(scenarios)), selected(selectedScenario),
      tabStateText(std::move(tabState)) {}

std::string Memento::data() const {
    if (whole)
        return unpack(whole);
    if (scenarioParts.empty() && tabStateText.empty() && selected == -1)
        return std::string();
    std::vector<std::string> texts;
    texts.reserve(scenarioParts.size());
    for (const Part& part : scenarioParts)
        texts.push_back(unpack(part));
    return AnalysisFile::assemble(texts, selected, tabStateText);
}

void Memento::setData(const std::string& text) {
    scenarioParts.clear();
    selected = -1;
    tabStateText.clear();
    whole = pack(text);
}

std::size_t Memento::ownSize() const {
    return sizeof(*this) + labelText.capacity() + tabStateText.capacity() +
           scenarioParts.capacity() * sizeof(Part) +
           (whole ? static_cast<std::size_t>(whole->capacity()) + sizeof(QByteArray) : 0);
}

// zlib's fastest level: a part is packed at every relevant change, and XML shrinks to about
// a tenth at any level.
Memento::Part Memento::pack(const std::string& text) {
    if (text.empty())
        return std::make_shared<const QByteArray>();
    QByteArray packed =
        qCompress(reinterpret_cast<const uchar*>(text.data()), static_cast<int>(text.size()), 1);
    // The compressor reserves room for the worst case.
    packed.squeeze();
    return std::make_shared<const QByteArray>(std::move(packed));
}

std::string Memento::unpack(const Part& part) {
    if (!part || part->isEmpty())
        return std::string();
    return qUncompress(*part).toStdString();
}
