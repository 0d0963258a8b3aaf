#include "app/preferences/backup_list_model.h"

#include "app/shell/services.h"
#include "storage/storage_manager.h"
#include "support/background_task.h"

#include <QLocale>

#include <algorithm>
#include <utility>

namespace lexiquill {

BackupListModel::BackupListModel(QObject *parent) : QAbstractListModel(parent) {
    reload();
}

int BackupListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant BackupListModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto &[backup, wordCount] = m_rows.at(index.row());
    switch (role) {
    case LabelRole:
        return backup.date.toString(backup.isOfMoment ? QStringLiteral("yyyy-MM-dd HH:mm:ss")
                                                      : QStringLiteral("yyyy-MM-dd"));
    case DetailRole: {
        const QString size =
            QLocale(QLocale::Chinese).formattedDataSize(backup.size, 1, QLocale::DataSizeTraditionalFormat);
        return wordCount ? QStringLiteral("%1 词 · %2").arg(*wordCount).arg(size)
                         : QStringLiteral("文件已损坏 · ") + size;
    }
    case IsUsableRole:
        return wordCount.has_value();
    case IsOfMomentRole:
        return backup.isOfMoment;
    default:
        return {};
    }
}

QHash<int, QByteArray> BackupListModel::roleNames() const {
    return {{LabelRole, "label"},
            {DetailRole, "detail"},
            {IsUsableRole, "isUsable"},
            {IsOfMomentRole, "isOfMoment"}};
}

QList<BackupListModel::Row> BackupListModel::read(const QString &directory, Instant now) {
    QList<Row> rows;
    for (const WordbookBackup &backup : WordbookBackup::list(directory)) {
        Row row{.backup = backup, .wordCount = std::nullopt};
        if (const auto words = backup.read(now))
            row.wordCount = words->size();
        rows += row;
    }
    return rows;
}

void BackupListModel::reload() {
    setIsBusy(true);
    const StorageManager &storage = Services::current().storage;
    const QString directory = WordbookBackup::directoryFor(storage.storageFile());
    const auto readAll = [directory, now = storage.now()] {
        return read(directory, now);
    };
    runInBackground(this, readAll, [this](const QList<Row> &rows) {
        show(rows);
        setIsBusy(false);
    });
}

/// Removes the rows that are gone and inserts the new ones. Both lists have the same order.
void BackupListModel::show(const QList<Row> &rows) {
    const auto isIn = [](const QList<Row> &list, const Row &row) {
        return std::any_of(list.begin(), list.end(),
                           [&](const Row &other) { return other.backup.path == row.backup.path; });
    };
    for (int i = static_cast<int>(m_rows.size()) - 1; i >= 0; --i) {
        if (isIn(rows, m_rows.at(i)))
            continue;
        beginRemoveRows({}, i, i);
        m_rows.removeAt(i);
        endRemoveRows();
    }
    for (int i = 0; i < rows.size(); ++i) {
        if (i < m_rows.size() && m_rows.at(i).backup.path == rows.at(i).backup.path) {
            m_rows[i] = rows.at(i);
            Q_EMIT dataChanged(index(i), index(i));
            continue;
        }
        beginInsertRows({}, i, i);
        m_rows.insert(i, rows.at(i));
        endInsertRows();
    }
}

void BackupListModel::restore(int row) {
    if (m_isBusy || row < 0 || row >= m_rows.size())
        return;
    setIsBusy(true);
    setMessages({}, {});
    const StorageManager &storage = Services::current().storage;
    const auto readWords = [backup = m_rows.at(row).backup, known = storage.words(), now = storage.now()] {
        return backup.read(now, known);
    };
    runInBackground(this, readWords, [this](const std::optional<QList<WordRecord>> &words) {
        setIsBusy(false);
        if (!words)
            setMessages(QStringLiteral("恢复失败：备份文件已损坏，生词本没有改变"), {});
        else if (!Services::current().storage.restoreBackup(*words))
            setMessages(QStringLiteral("恢复失败：无法写入生词本，生词本没有改变"), {});
        else
            setMessages({},
                        QStringLiteral("已恢复 %1 个单词，恢复前的生词本已另存为备份").arg(words->size()));
        reload();
    });
}

void BackupListModel::setIsBusy(bool isBusy) {
    if (std::exchange(m_isBusy, isBusy) != isBusy)
        Q_EMIT isBusyChanged();
}

void BackupListModel::setMessages(const QString &error, const QString &success) {
    m_errorMessage = error;
    m_successMessage = success;
    Q_EMIT messagesChanged();
}

} // namespace lexiquill
