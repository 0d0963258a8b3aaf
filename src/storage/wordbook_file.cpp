#include "storage/wordbook_file.h"

#include "model/record_codec.h"
#include "platform/durable_file.h"

#include <QDir>
#include <QFileInfo>

namespace lexiquill {

namespace {

constexpr std::chrono::seconds lockTimeout{5};
constexpr qsizetype keptBackups = 10;
constexpr qsizetype parserPadding = 64;

} // namespace

WordbookFile::WordbookFile(const QString &path) : m_path(path) {
    QDir().mkpath(QFileInfo(path).absolutePath());
}

bool WordbookFile::exists() const {
    const QFileInfo info(m_path);
    return info.exists() || info.isSymLink();
}

std::optional<QList<WordRecord>> WordbookFile::load(Instant now) {
    m_current = FileSnapshot::open(m_path);
    auto bytes = m_current ? m_current->readAll(parserPadding) : std::nullopt;
    std::optional<QList<WordRecord>> words;
    if (bytes)
        words = decodeWordRecords(std::move(*bytes), JsonForm::File, now);
    if (!words)
        m_current.reset();
    return words;
}

bool WordbookFile::isReplaced() const {
    return exists() && !(m_current && m_current->isStillAt(m_path));
}

std::unique_ptr<FileLock> WordbookFile::lock() const {
    return FileLock::acquire(m_path + QStringLiteral(".lock"), lockTimeout);
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
    if (today)
        keepBackup(*today);
    if (!file->commit())
        return false;
    m_current = FileSnapshot::open(m_path);
    return true;
}

void WordbookFile::keepBackup(QDate today) const {
    if (!m_current || !m_current->isStillAt(m_path))
        return;
    const QDir directory(QFileInfo(m_path).absolutePath() + QStringLiteral("/backups"));
    const QString name = QStringLiteral("vocabulary-%1.json").arg(today.toString(Qt::ISODate));
    if (directory.exists(name))
        return;
    if (!directory.mkpath(QStringLiteral(".")) || !keepFileAs(m_path, directory.filePath(name)))
        return;
    QStringList backups = directory.entryList({QStringLiteral("vocabulary-[0-9]*.json")}, QDir::Files,
                                              QDir::Name | QDir::Reversed);
    for (const QString &old : backups.mid(keptBackups))
        QFile::remove(directory.filePath(old));
}

} // namespace lexiquill
