#include "storage/wordbook_file.h"

#include "model/record_codec.h"
#include "platform/durable_file.h"
#include "platform/process.h"
#include "storage/wordbook_backups.h"

#include <QDir>
#include <QFileInfo>

#include <new>

namespace lexiquill {

namespace {

constexpr qsizetype parserPadding = 64;
const QString lockSuffix = QStringLiteral(".lock");

void share(QList<WordRecord> &words, const QList<WordRecord> &known) {
    QHash<QUuid, qsizetype> positions;
    positions.reserve(known.size());
    for (qsizetype i = 0; i < known.size(); ++i)
        positions.insert(known.at(i).id, i);
    for (WordRecord &record : words) {
        const qsizetype position = positions.value(record.id, -1);
        if (position >= 0 && haveSameContent(known.at(position), record))
            record = known.at(position);
    }
}

} // namespace

WordbookFile::WordbookFile(const QString &path) : m_path(resolvedFile(path)) {}

bool WordbookFile::exists() const {
    return QFileInfo::exists(m_path);
}

WordbookFile::Reading WordbookFile::Reading::of(const QString &path, Instant now,
                                                const QList<WordRecord> &known) {
    FileSnapshot::Problem problem = FileSnapshot::Problem::None;
    auto snapshot = FileSnapshot::open(path, &problem);
    if (!snapshot)
        return {.state = problem == FileSnapshot::Problem::Passing ? State::Unknown : State::Unreadable};
    try {
        // Memory for the bytes, and for the records, which take about four times as much.
        expectAllocations(QFileInfo(path).size() * 5);
        auto bytes = snapshot->readAll(parserPadding);
        if (!bytes)
            return {.state = State::Unknown};
        const bool isOwn = FileLock::noteAt(path + lockSuffix) == snapshot->fingerprint();
        if (!isOwn && !isWellFormed(*bytes))
            return {.state = State::Unreadable};
        QList<RecordText> texts;
        auto words = decodeWordRecords(std::move(*bytes), JsonForm::File, now, isOwn ? &texts : nullptr);
        if (!words)
            return {.state = State::Unreadable};
        share(*words, known);
        Reading reading{.state = State::Good, .words = *words, .snapshot = std::move(snapshot)};
        if (isOwn)
            reading.texts = RecordTexts(*words, std::move(texts));
        return reading;
    } catch (const std::bad_alloc &) {
        return {.state = State::Unknown};
    }
}

WordbookFile::Content WordbookFile::load(Instant now) {
    m_current.reset();
    m_texts = {};
    ++m_revision;
    Reading reading = Reading::of(m_path, now);
    Content content{.state = reading.state, .words = reading.words};
    if (reading.state == State::Good)
        take(reading);
    return content;
}

void WordbookFile::take(Reading &reading) {
    ++m_revision;
    std::swap(m_current, reading.snapshot);
    std::swap(m_texts, reading.texts);
}

bool WordbookFile::isReplaced() const {
    return exists() && !(m_current && m_current->isStillAt(m_path));
}

std::unique_ptr<FileLock> WordbookFile::lock(std::chrono::milliseconds patience) const {
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    return FileLock::acquire(m_path + lockSuffix, patience);
}

bool WordbookFile::save(FileLock &held, const QList<WordRecord> &words, std::optional<QDate> today) {
    const auto keep = [&] {
        return today ? keepBackup(WordbookBackup::dailyName(*today)) : QString();
    };
    return put(held, words, keep, false);
}

bool WordbookFile::replace(FileLock &held, const QList<WordRecord> &words, const QDateTime &now) {
    constexpr int attempts = 60;
    const auto keep = [&] {
        QString kept;
        // There may be more than one backup in a second.
        for (int i = 0; i < attempts && kept.isEmpty(); ++i)
            kept = keepBackup(WordbookBackup::momentName(now.addSecs(i)));
        return kept;
    };
    return put(held, words, keep, true);
}

bool WordbookFile::put(FileLock &held, const QList<WordRecord> &words, const Keep &keep, bool mustKeep) {
    auto file = DurableFile::create(m_path);
    if (!file)
        return false;
    QList<RecordText> texts;
    Outcome outcome = write(*file, words, texts);
    if (outcome == Outcome::SourceFailed) {
        m_texts = {};
        file.reset();
        file = DurableFile::create(m_path);
        outcome = file ? write(*file, words, texts) : Outcome::WriteFailed;
    }
    if (outcome != Outcome::Written)
        return false;
    if (!keepUnreadable())
        return false;
    const QString backup = keep();
    if (mustKeep && backup.isEmpty())
        return false;
    if (!file->commit()) {
        // The file must not keep two names: an editor could then change the wordbook and its backup at once.
        if (!backup.isEmpty())
            QFile::remove(backup);
        return false;
    }
    ++m_revision;
    m_current = FileSnapshot::open(m_path);
    if (m_current)
        held.leaveNote(m_current->fingerprint());
    m_texts = m_current ? RecordTexts(words, std::move(texts)) : RecordTexts();
    return true;
}

/// Writes the whole content and stores the position of each record in `texts`. The text of a record that has
/// not changed is copied from the current file, because creating it takes longer than all the rest of a save.
WordbookFile::Outcome WordbookFile::write(DurableFile &file, const QList<WordRecord> &words,
                                          QList<RecordText> &texts) {
    bool isWritten = true;
    bool isAnyCopied = false;
    JsonWriter writer(JsonWriter::Style::Pretty,
                      [&](QByteArrayView chunk) { isWritten = isWritten && file.write(chunk); });
    texts.clear();
    texts.reserve(words.size());
    writer.beginArray();
    for (qsizetype i = 0; i < words.size() && isWritten;) {
        writer.startValue();
        const qint64 start = writer.position();
        const qsizetype first = m_texts.find(words.at(i));
        if (first < 0) {
            writeWordRecord(writer, words.at(i++), JsonForm::File);
            texts += {.offset = start, .size = writer.position() - start};
            continue;
        }
        // Adjacent records are copied in one step, with the text between them.
        const qint64 distance = start - m_texts.at(first).offset;
        qsizetype next = first;
        do {
            const RecordText &text = m_texts.at(next++);
            texts += {.offset = text.offset + distance, .size = text.size};
        } while (++i < words.size() && m_texts.isAt(next, words.at(i)));
        const RecordText &last = m_texts.at(next - 1);
        if (!copy(writer, start - distance, last.offset + last.size - (start - distance)))
            return Outcome::SourceFailed;
        isAnyCopied = true;
    }
    writer.endArray();
    writer.finish();
    if (isAnyCopied && !m_current->isUnmodified())
        return Outcome::SourceFailed;
    return isWritten ? Outcome::Written : Outcome::WriteFailed;
}

/// Copies bytes of the current file.
bool WordbookFile::copy(JsonWriter &writer, qint64 offset, qint64 size) const {
    constexpr qint64 pieceSize = qint64{1} << 18;
    QByteArray piece(std::min(size, pieceSize), Qt::Uninitialized);
    while (size > 0) {
        const qsizetype count = std::min(size, pieceSize);
        if (!m_current->read(offset, piece.data(), count))
            return false;
        writer.text(QByteArrayView(piece).first(count));
        offset += count;
        size -= count;
    }
    return true;
}

/// Keeps a file that is about to be replaced and is not a wordbook. False when that is not possible.
bool WordbookFile::keepUnreadable() const {
    const QFileInfo file(m_path);
    if (!file.isFile() || file.size() == 0 || (m_current && m_current->isStillAt(m_path)))
        return true;
    // A good file that another program has just put in place is kept in the same way.
    constexpr int attempts = 60;
    const QDateTime modified = file.lastModified();
    for (int i = 0; i < attempts; ++i) {
        const QString name =
            modified.addSecs(i).toString(QStringLiteral("'vocabulary-unreadable-'yyyy-MM-dd-HHmmss'.json'"));
        if (keepFileAs(m_path, file.dir().filePath(name)))
            return true;
    }
    return false;
}

/// Keeps the good file that is about to be replaced, unless there is a backup of that name. Returns the path
/// of the backup, or a null string.
QString WordbookFile::keepBackup(const QString &name) const {
    if (!m_current || !m_current->isStillAt(m_path))
        return {};
    const QDir directory(WordbookBackup::directoryFor(m_path));
    if (directory.exists(name) || !directory.mkpath(QStringLiteral(".")) ||
        !keepFileAs(m_path, directory.filePath(name)))
        return {};
    WordbookBackup::prune(directory.path());
    return directory.filePath(name);
}

} // namespace lexiquill
