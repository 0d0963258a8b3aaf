#pragma once

#include "app/components/row_list_model.h"

#include <QQmlEngine>
#include <QString>

namespace lexiquill {

/// A word that is offered below the search field.
struct Suggestion {
    enum class Origin { Wordbook, Dictionary, Recent, Spelling };

    QString word;
    QString summary; ///< one line on its meaning; empty when it is not known
    Origin origin = Origin::Dictionary;

    friend bool operator==(const Suggestion &, const Suggestion &) = default;
};

/// The offered words, most likely first. Reports exactly the rows that change.
class SuggestionModel : public RowListModel<Suggestion, &Suggestion::word> {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a search")

public:
    enum Role { WordRole = Qt::UserRole, SummaryRole, SymbolRole };

    using RowListModel::RowListModel;

    void setSuggestions(QList<Suggestion> suggestions) { setRows(std::move(suggestions)); }

    /// The word of a row; empty when there is no such row.
    Q_INVOKABLE QString wordAt(int row) const;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
};

} // namespace lexiquill
