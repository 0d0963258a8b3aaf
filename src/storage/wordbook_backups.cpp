#include "storage/wordbook_backups.h"

#include "storage/wordbook_file.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace lexiquill {

namespace {

const QString dailyFormat = QStringLiteral("'vocabulary-'yyyy-MM-dd'.json'");
const QString momentFormat = QStringLiteral("'vocabulary-'yyyy-MM-dd-HHmmss'.json'");

/// No value when the file does not have the name of a backup.
std::optional<WordbookBackup> backupOf(const QFileInfo &file) {
    WordbookBackup backup{.path = file.filePath(), .date = {}, .size = file.size()};
    if (const QDate day = QDate::fromString(file.fileName(), dailyFormat); day.isValid()) {
        backup.date = day.startOfDay();
        return backup;
    }
    backup.date = QDateTime::fromString(file.fileName(), momentFormat);
    backup.isOfMoment = true;
    return backup.date.isValid() ? std::optional(backup) : std::nullopt;
}

} // namespace

QString WordbookBackup::directoryFor(const QString &storageFile) {
    return QFileInfo(storageFile).absolutePath() + QStringLiteral("/backups");
}

QString WordbookBackup::dailyName(QDate day) {
    return day.toString(dailyFormat);
}

QString WordbookBackup::momentName(const QDateTime &moment) {
    return moment.toString(momentFormat);
}

QList<WordbookBackup> WordbookBackup::list(const QString &directory) {
    QList<WordbookBackup> backups;
    for (const QFileInfo &file : QDir(directory).entryInfoList(QDir::Files)) {
        if (auto backup = backupOf(file))
            backups += *backup;
    }
    std::stable_sort(backups.begin(), backups.end(),
                     [](const WordbookBackup &a, const WordbookBackup &b) { return a.date > b.date; });
    return backups;
}

void WordbookBackup::prune(const QString &directory) {
    constexpr int kept = 10;
    int ofDays = 0;
    int ofMoments = 0;
    for (const WordbookBackup &backup : list(directory)) {
        if (++(backup.isOfMoment ? ofMoments : ofDays) > kept)
            QFile::remove(backup.path);
    }
}

std::optional<QList<WordRecord>> WordbookBackup::read(Instant now, const QList<WordRecord> &known) const {
    auto reading = WordbookFile::Reading::of(path, now, known);
    if (reading.state != WordbookFile::State::Good)
        return std::nullopt;
    return std::move(reading.words);
}

} // namespace lexiquill
