#pragma once

#include "storage/wordbook_backups.h"

#include <QAbstractListModel>
#include <QQmlEngine>

#include <optional>

namespace lexiquill {

/// The backups of the wordbook, the newest first, each with its size and the number of its words. They are
/// read in the background.
class BackupListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY isBusyChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY messagesChanged)
    Q_PROPERTY(QString successMessage READ successMessage NOTIFY messagesChanged)

public:
    enum Role {
        LabelRole = Qt::UserRole, ///< when it was kept
        DetailRole,               ///< what it holds
        IsUsableRole,             ///< false for a damaged one
        IsOfMomentRole            ///< kept by restoring another
    };

    explicit BackupListModel(QObject *parent = nullptr);

    /// While the backups are read or one is restored.
    bool isBusy() const { return m_isBusy; }
    /// How the last restoring went; null when there is nothing to say.
    const QString &errorMessage() const { return m_errorMessage; }
    const QString &successMessage() const { return m_successMessage; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Reads the directory anew.
    Q_INVOKABLE void reload();
    /// Puts the backup in the place of the wordbook, which becomes a backup itself.
    Q_INVOKABLE void restore(int row);

Q_SIGNALS:
    void isBusyChanged();
    void messagesChanged();

private:
    struct Row {
        WordbookBackup backup;
        std::optional<qsizetype> wordCount; ///< nothing for a damaged one
    };

    static QList<Row> read(const QString &directory, Instant now);
    void show(const QList<Row> &rows);
    void setIsBusy(bool isBusy);
    void setMessages(const QString &error, const QString &success);

    QList<Row> m_rows;
    bool m_isBusy = false;
    QString m_errorMessage;
    QString m_successMessage;
};

} // namespace lexiquill
