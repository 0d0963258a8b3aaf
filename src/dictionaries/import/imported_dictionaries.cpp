#include "dictionaries/import/imported_dictionaries.h"

#include "platform/file_snapshot.h"
#include "platform/scratch_directory.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace lexiquill {

namespace {

constexpr qint64 pieceSize = qint64{1} << 18;

bool haveSameContent(const QString &a, const QString &b, const std::stop_token &stop) {
    const qint64 size = QFileInfo(a).size();
    if (size != QFileInfo(b).size())
        return false;
    const auto first = FileSnapshot::open(a);
    const auto second = FileSnapshot::open(b);
    if (!first || !second)
        return false;
    QByteArray firstBytes(std::min(size, pieceSize), Qt::Uninitialized);
    QByteArray secondBytes(firstBytes.size(), Qt::Uninitialized);
    for (qint64 position = 0; position < size; position += pieceSize) {
        const qsizetype count = std::min(size - position, pieceSize);
        if (stop.stop_requested() || !first->read(position, firstBytes.data(), count) ||
            !second->read(position, secondBytes.data(), count) ||
            !std::equal(firstBytes.cbegin(), firstBytes.cbegin() + count, secondBytes.cbegin()))
            return false;
    }
    return true;
}

/// The main file and the index files.
QStringList essentialFiles(const DictionaryFiles &dictionary) {
    return QStringList(dictionary.mainFile) + dictionary.indexFiles;
}

/// A name for a directory made of the name of a file.
QString directoryName(const QString &name) {
    constexpr int longest = 64;
    QString cleaned = name.left(longest).trimmed();
    while (cleaned.startsWith(u'.'))
        cleaned.remove(0, 1);
    if (cleaned.endsWith(u'.') || (!cleaned.isEmpty() && cleaned.back().isHighSurrogate()))
        cleaned.chop(1);
    return cleaned.isEmpty() ? QStringLiteral("dictionary") : cleaned;
}

} // namespace

ImportedDictionaries::ImportedDictionaries(QString directory) : m_directory(std::move(directory)) {
    constexpr int depth = 2;
    constexpr int most = 200'000;
    m_dictionaries = dictionariesBelow(m_directory, depth, most).dictionaries;
}

bool ImportedDictionaries::holds(const QString &path) const {
    const QString directory = QFileInfo(m_directory).canonicalFilePath();
    // Downloads lie in hidden directories.
    return !directory.isEmpty() &&
           (path == directory ||
            (path.startsWith(directory + u'/') && !path.startsWith(directory + QStringLiteral("/."))));
}

bool ImportedDictionaries::hasSame(const DictionaryFiles &dictionary, const std::stop_token &stop) const {
    const QStringList files = essentialFiles(dictionary);
    return std::ranges::any_of(m_dictionaries, [&](const DictionaryFiles &other) {
        const QStringList others = essentialFiles(other);
        return std::ranges::equal(files, others, [&](const QString &a, const QString &b) {
            return QFileInfo(a).suffix().toLower() == QFileInfo(b).suffix().toLower() &&
                   haveSameContent(a, b, stop);
        });
    });
}

QString ImportedDictionaries::freePath(const QString &name) const {
    return ScratchDirectory::freePath(m_directory + u'/' + directoryName(name));
}

DictionaryFiles movedTo(const QString &directory, const DictionaryFiles &dictionary) {
    DictionaryFiles moved = dictionary;
    const auto inDirectory = [&directory](const QString &path) {
        return directory + u'/' + QFileInfo(path).fileName();
    };
    moved.mainFile = inDirectory(dictionary.mainFile);
    for (QString &file : moved.indexFiles)
        file = inDirectory(file);
    return moved;
}

} // namespace lexiquill
