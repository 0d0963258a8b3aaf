#include "app/search/suggestion_model.h"

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

QString SuggestionModel::wordAt(int row) const {
    return rows().value(row).word;
}

QVariant SuggestionModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Suggestion &suggestion = rows().at(index.row());
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
