#pragma once

#include "dictionaries/dictionary_reader.h"
#include "platform/file_snapshot.h"
#include "support/dictzip.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

namespace lexiquill {

/// The articles of a dictionary, one behind the other in a file that may be compressed with dictzip.
class ArticleFile {
public:
    /// Opens BASE.dict, or BASE.dict.dz if there is no such file.
    DictionaryProblem open(const QString &basePath);

    /// The path that open() would use.
    static QString pathOf(const QString &basePath);

    /// No value when the place does not exist or cannot be unpacked, or when the article is empty or larger
    /// than maxArticleSize.
    std::optional<QByteArray> read(const ArticlePlace &place) const;

private:
    std::unique_ptr<FileSnapshot> m_file;
    std::optional<DictZip> m_packed;
};

} // namespace lexiquill
