#include "storage/wordbook_file.h"

#include "model/record_codec.h"
#include "platform/durable_file.h"
#include "platform/process.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <new>

namespace lexiquill {

namespace {

constexpr qsizetype keptBackups = 10;
constexpr qsizetype parserPadding = 64;

/// Removes all but the newest of the files that keepBackup() has made; others are none of its business.
void pruneBackups(const QDir &directory) {
    static const QRegularExpression backupName(QStringLiteral("^vocabulary-\\d{4}-\\d\\d-\\d\\d\\.json$"));
    const QStringList backups =
        directory.entryList(QDir::Files, QDir::Name | QDir::Reversed).filter(backupName);
    for (const QString &old : backups.mid(keptBackups))
        QFile::remove(directory.filePath(old));
}

} // namespace

WordbookFile::WordbookFile(const QString &path) : m_path(resolvedFile(path)) {}

bool WordbookFile::exists() const {
    return QFileInfo::exists(m_path);
}

WordbookFile::Content WordbookFile::load(Instant now) {
    m_current.reset();
    FileSnapshot::Problem problem = FileSnapshot::Problem::None;
    auto snapshot = FileSnapshot::open(m_path, &problem);
    if (!snapshot)
        return {problem == FileSnapshot::Problem::Passing ? State::Unknown : State::Unreadable};
    try {
        // The bytes, the parser's tables of up to six times their size, and the records.
        expectAllocations(QFileInfo(m_path).size() * 9);
        auto bytes = snapshot->readAll(parserPadding);
        if (!bytes)
            return {State::Unknown};
        auto words = decodeWordRecords(std::move(*bytes), JsonForm::File, now);
        if (!words)
            return {State::Unreadable};
        m_current = std::move(snapshot);
        return {State::Good, std::move(*words)};
    } catch (const std::bad_alloc &) {
        return {State::Unknown};
    }
}

bool WordbookFile::isReplaced() const {
    return exists() && !(m_current && m_current->isStillAt(m_path));
}

std::unique_ptr<FileLock> WordbookFile::lock(std::chrono::milliseconds patience) const {
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    return FileLock::acquire(m_path + QStringLiteral(".lock"), patience);
}

bool WordbookFile::save(const QList<WordRecord> &words, std::optional<QDate> today) {
    const auto file = DurableFile::create(m_path);
    if (!file)
        return false;
    bool isWritten = true;
    JsonWriter writer(JsonWriter::Style::Pretty,
                      [&](QByteArrayView chunk) { isWritten = isWritten && file->write(chunk); });
    writeWordRecords(writer, words, JsonForm::File);
    writer.finish();
    if (!isWritten)
        return false;
    const QString backup = today ? keepBackup(*today) : QString();
    if (!file->commit()) {
        // The two names of one file must not outlive this attempt: an editor could change both at once.
        if (!backup.isEmpty())
            QFile::remove(backup);
        return false;
    }
    m_current = FileSnapshot::open(m_path);
    return true;
}

/// Keeps the good file that is about to be replaced, once a day; the path, or a null string.
QString WordbookFile::keepBackup(QDate today) const {
    if (!m_current || !m_current->isStillAt(m_path))
        return {};
    const QDir directory(QFileInfo(m_path).absolutePath() + QStringLiteral("/backups"));
    const QString name = QStringLiteral("vocabulary-%1.json").arg(today.toString(Qt::ISODate));
    if (directory.exists(name) || !directory.mkpath(QStringLiteral(".")) ||
        !keepFileAs(m_path, directory.filePath(name)))
        return {};
    pruneBackups(directory);
    return directory.filePath(name);
}

} // namespace lexiquill
