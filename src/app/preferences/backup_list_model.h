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
        LabelRole = Qt::UserRole, ///< when it was made
        DetailRole,               ///< number of words and size
        IsUsableRole,             ///< false for a damaged one
        IsOfMomentRole            ///< made when another backup was restored
    };

    explicit BackupListModel(QObject *parent = nullptr);

    /// True while the backups are read or one is restored.
    bool isBusy() const { return m_isBusy; }
    /// Result of the last restore; null when there is no message.
    const QString &errorMessage() const { return m_errorMessage; }
    const QString &successMessage() const { return m_successMessage; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Reads the directory again.
    Q_INVOKABLE void reload();
    /// Replaces the wordbook with the backup. The replaced wordbook is kept as a new backup.
    Q_INVOKABLE void restore(int row);

Q_SIGNALS:
    void isBusyChanged();
    void messagesChanged();

private:
    struct Row {
        WordbookBackup backup;
        std::optional<qsizetype> wordCount; ///< no value for a damaged backup
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
