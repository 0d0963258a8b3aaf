#pragma once

#include "dictionaries/dictionary_shelf.h"

#include <QAbstractListModel>
#include <QQmlEngine>

namespace lexiquill {

/// The offline dictionaries in the order in which they are asked. They are found in the background; until
/// then the list is empty.
class OfflineDictionaryModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)

public:
    enum Role { NameRole = Qt::UserRole, WordCountRole, PathRole };

    explicit OfflineDictionaryModel(QObject *parent = nullptr);

    bool isLoading() const { return m_isLoading; }
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void isLoadingChanged();

private:
    QList<DictionaryShelf::Item> m_dictionaries;
    bool m_isLoading = true;
};

} // namespace lexiquill
