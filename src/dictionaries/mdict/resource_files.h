#pragma once

#include "dictionaries/mdict/mdict_file.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace lexiquill::mdict {

/// The pictures, sounds and other files in the .mdd files of a dictionary.
class ResourceFiles {
public:
    /// Largest file that is read, in bytes.
    static constexpr quint32 maxSize = 16 * 1024 * 1024;

    /// Opens nothing before the first search.
    explicit ResourceFiles(const QString &mdxPath) : m_mdxPath(mdxPath) {}

    /// The file at a path, whose separators and case do not matter. No value when there is none.
    std::optional<QByteArray> find(const QString &path);

private:
    /// A file by the hash of its path. Two paths of one dictionary do not have the same hash in practice.
    struct Entry {
        size_t hash = 0;
        ArticlePlace place;
    };
    struct Container {
        std::unique_ptr<MdictFile> file;
        std::vector<Entry> entries; ///< sorted by hash
    };

    void open();
    void add(std::unique_ptr<MdictFile> file);
    std::optional<QByteArray> findExactly(const QString &path);

    QString m_mdxPath;
    bool m_isOpen = false;
    std::vector<Container> m_containers;
};

/// The paths of the .mdd files that may belong to a .mdx file: "name.mdd", "name.1.mdd", "name.2.mdd" and so
/// on.
QString resourcePath(const QString &mdxPath, int number);

} // namespace lexiquill::mdict
