#pragma once

#include "app/components/row_list_model.h"

#include <QQmlEngine>
#include <QString>

namespace lexiquill {

class DictionaryShelf;
class RemovedDictionaries;

/// What the list shows of a dictionary.
struct DictionaryRow {
    QString path; ///< of its main file
    QString name;
    QString about;   ///< author and licence, in one line
    QString detail;  ///< format, number of words and place
    QString problem; ///< why it cannot be used; empty when it can
    bool isOn = true;
    bool isImported = false;

    bool operator==(const DictionaryRow &) const = default;
};

/// The dictionaries in the order in which they are asked. They are found in the background; the list shows a
/// change at once.
class DictionaryListModel : public RowListModel<DictionaryRow, &DictionaryRow::path> {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    /// The name of the dictionary whose removal can be undone; empty if there is none.
    Q_PROPERTY(QString undoableName READ undoableName NOTIFY undoableNameChanged)

public:
    enum Role {
        PathRole = Qt::UserRole,
        NameRole,
        AboutRole,
        DetailRole,
        ProblemRole,
        IsOnRole,
        IsImportedRole
    };

    explicit DictionaryListModel(QObject *parent = nullptr);

    bool isLoading() const { return m_isLoading; }
    QString undoableName() const;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Reads the list again.
    Q_INVOKABLE void reload();
    Q_INVOKABLE void setOn(int row, bool isOn);
    /// Moves a row in the list only; see storeOrder().
    Q_INVOKABLE void moveTo(int row, int target);
    /// Makes the order of the list that in which dictionaries are asked.
    Q_INVOKABLE void storeOrder();
    /// Removes an imported dictionary, wherever it is in the list by now. Emits said().
    Q_INVOKABLE void remove(const QString &path);
    /// Puts the last removed dictionary back. Emits said().
    Q_INVOKABLE void undoRemoval();

Q_SIGNALS:
    void isLoadingChanged();
    void undoableNameChanged();
    /// A message for the user.
    void said(const QString &message, bool isUndoable);

private:
    DictionaryShelf &m_shelf;
    RemovedDictionaries &m_removed;
    bool m_isLoading = true;
    int m_latest = 0; ///< number of the last change; what was read before is outdated
};

} // namespace lexiquill
