#include "selection/UnreadRangeTokens.h"

#include "Range/RangeStringOperations.h"

#include <QStringList>

#include <unordered_map>

namespace {

// The white space the grammar takes away before it reads.
bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

} // namespace

std::vector<std::string> UnreadRangeTokens::of(const std::string& freeText) {
    std::vector<std::string> unread;
    std::unordered_map<std::string, bool> readable;
    std::string token;
    const auto judge = [&] {
        if (token.empty())
            return;
        auto known = readable.find(token);
        if (known == readable.end()) {
            std::string repaired = token;
            Range::normalize(repaired);
            known = readable.emplace(token, !repaired.empty()).first;
        }
        if (!known->second)
            unread.push_back(token);
        token.clear();
    };
    for (char c : freeText) {
        if (c == ',')
            judge();
        else if (!isBlank(c))
            token += c;
    }
    judge();
    return unread;
}

QString UnreadRangeTokens::note(const std::string& freeText, std::size_t named) {
    const std::vector<std::string> unread = of(freeText);
    if (unread.empty())
        return QString();
    QStringList names;
    for (std::size_t i = 0; i < unread.size() && i < named; ++i)
        names << QString::fromStdString(unread[i]);
    QString text = QStringLiteral("not understood: ") + names.join(QStringLiteral(", "));
    if (unread.size() > named)
        text += QStringLiteral(" and %1 more").arg(unread.size() - named);
    return text;
}
