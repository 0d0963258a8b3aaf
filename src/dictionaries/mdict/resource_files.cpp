#include "dictionaries/mdict/resource_files.h"

#include <QFileInfo>

#include <algorithm>

namespace lexiquill::mdict {

namespace {

constexpr int maxFiles = 32;
constexpr qsizetype maxPathLength = 4096;

size_t hashOf(const QString &path) {
    QString plain = path.toCaseFolded().replace(u'/', u'\\');
    qsizetype start = 0;
    while (start < plain.size() && plain[start] == u'\\')
        ++start;
    return qHash(QStringView(plain).sliced(start), 0);
}

} // namespace

QString resourcePath(const QString &mdxPath, int number) {
    constexpr qsizetype suffixLength = 4;
    const QString base = mdxPath.chopped(std::min(suffixLength, mdxPath.size()));
    return number == 0 ? base + QStringLiteral(".mdd") : base + QStringLiteral(".%1.mdd").arg(number);
}

void ResourceFiles::add(std::unique_ptr<MdictFile> file) {
    TextDecoder decoder(file->header().encoding);
    std::vector<Entry> entries;
    const DictionaryProblem problem = file->readKeys([&](QByteArrayView key, const ArticlePlace &place) {
        if (key.size() <= maxPathLength)
            entries.push_back({hashOf(decoder.toText(key)), place});
        return true;
    });
    if (problem != DictionaryProblem::None)
        return;
    // Stable, so that the first of several files of one name is found.
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry &a, const Entry &b) { return a.hash < b.hash; });
    entries.shrink_to_fit();
    m_containers.push_back({std::move(file), std::move(entries)});
}

void ResourceFiles::open() {
    for (int number = 0; number < maxFiles; ++number) {
        const QString path = resourcePath(m_mdxPath, number);
        if (!QFileInfo::exists(path)) {
            // There may be no file without a number.
            if (number > 0)
                return;
            continue;
        }
        if (auto opened = MdictFile::open(path, FileKind::Resources); opened.file)
            add(std::move(opened.file));
    }
}

std::optional<QByteArray> ResourceFiles::findExactly(const QString &path) {
    const size_t hash = hashOf(path);
    for (Container &container : m_containers) {
        const auto found =
            std::lower_bound(container.entries.begin(), container.entries.end(), hash,
                             [](const Entry &entry, size_t wanted) { return entry.hash < wanted; });
        if (found != container.entries.end() && found->hash == hash && found->place.size <= maxSize)
            return container.file->record(found->place);
    }
    return std::nullopt;
}

std::optional<QByteArray> ResourceFiles::find(const QString &path) {
    if (!m_isOpen) {
        m_isOpen = true;
        open();
    }
    if (path.size() > maxPathLength)
        return std::nullopt;
    auto found = findExactly(path);
    // Addresses in articles may be percent-encoded, names in files are not.
    if (!found && path.contains(u'%'))
        found = findExactly(QString::fromUtf8(QByteArray::fromPercentEncoding(path.toUtf8())));
    return found;
}

} // namespace lexiquill::mdict
