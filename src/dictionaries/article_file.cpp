#include "dictionaries/article_file.h"

#include "platform/file_stamp.h"

namespace lexiquill {

QString ArticleFile::pathOf(const QString &basePath) {
    QString plain = basePath + QStringLiteral(".dict");
    return stampOf(plain).exists() ? plain : plain + QStringLiteral(".dz");
}

DictionaryProblem ArticleFile::open(const QString &basePath) {
    const QString path = pathOf(basePath);
    m_file = FileSnapshot::open(path);
    if (!m_file)
        return DictionaryProblem::Unreadable;
    if (!path.endsWith(QStringLiteral(".dz")))
        return DictionaryProblem::None;
    const auto read = [file = m_file.get()](qint64 offset, char *to, qsizetype size) {
        return file->read(offset, to, size);
    };
    m_packed = DictZip::open({.size = m_file->size(), .read = read});
    return m_packed ? DictionaryProblem::None : DictionaryProblem::Damaged;
}

std::optional<QByteArray> ArticleFile::read(const ArticlePlace &place) const {
    if (place.size == 0 || place.size > maxArticleSize || !m_file)
        return std::nullopt;
    if (m_packed)
        return m_packed->read(place.offset, place.size);
    QByteArray bytes(place.size, Qt::Uninitialized);
    constexpr quint64 farthest = quint64(1) << 62;
    const bool isRead = place.offset < farthest &&
                        m_file->read(static_cast<qint64>(place.offset), bytes.data(), bytes.size());
    return isRead ? std::optional(bytes) : std::nullopt;
}

} // namespace lexiquill
