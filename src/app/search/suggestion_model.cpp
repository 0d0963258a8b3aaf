#include "app/search/suggestion_model.h"

#include <algorithm>

namespace lexiquill {

namespace {

QString symbolOf(Suggestion::Origin origin) {
    switch (origin) {
    case Suggestion::Origin::Wordbook:
        return QStringLiteral("list.bullet.rectangle");
    case Suggestion::Origin::Dictionary:
        return QStringLiteral("book.closed");
    case Suggestion::Origin::Recent:
        return QStringLiteral("clock");
    case Suggestion::Origin::Spelling:
        return QStringLiteral("magnifyingglass");
    }
    return {};
}

} // namespace

/// What stays at the beginning and at the end is left alone.
void SuggestionModel::setSuggestions(const QList<Suggestion> &suggestions) {
    const auto [oldHead, newHead] =
        std::mismatch(m_suggestions.cbegin(), m_suggestions.cend(), suggestions.cbegin(), suggestions.cend());
    const auto [oldTail, newTail] =
        std::mismatch(m_suggestions.crbegin(), std::make_reverse_iterator(oldHead), suggestions.crbegin(),
                      std::make_reverse_iterator(newHead));
    const auto first = static_cast<int>(oldHead - m_suggestions.cbegin());
    const auto removed = static_cast<int>(oldTail.base() - oldHead);
    const auto added = static_cast<int>(newTail.base() - newHead);
    if (removed > 0) {
        beginRemoveRows({}, first, first + removed - 1);
        m_suggestions.remove(first, removed);
        endRemoveRows();
    }
    if (added > 0) {
        beginInsertRows({}, first, first + added - 1);
        m_suggestions = suggestions;
        endInsertRows();
    }
}

QString SuggestionModel::wordAt(int row) const {
    return m_suggestions.value(row).word;
}

int SuggestionModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_suggestions.size());
}

QVariant SuggestionModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Suggestion &suggestion = m_suggestions.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case WordRole:
        return suggestion.word;
    case SummaryRole:
        return suggestion.summary;
    case SymbolRole:
        return symbolOf(suggestion.origin);
    default:
        return {};
    }
}

QHash<int, QByteArray> SuggestionModel::roleNames() const {
    return {{WordRole, "word"}, {SummaryRole, "summary"}, {SymbolRole, "symbol"}};
}

} // namespace lexiquill
