#pragma once

#include "dictionaries/article_file.h"
#include "dictionaries/dictionary_format.h"
#include "dictionaries/stardict/ifo_file.h"
#include "platform/file_snapshot.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace lexiquill::stardict {

QStringList filesOf(const QString &ifoPath);
DictionaryDescription describe(const QString &ifoPath);

/// The opened files of one StarDict dictionary.
class StardictReader final : public DictionaryReader {
public:
    static OpenedReader open(const QString &ifoPath);

    DictionaryProblem readHeadwords(HeadwordSink &sink) override;
    std::optional<StoredArticle> article(const ArticlePlace &place) override;
    /// Reads from the folder "res" beside the dictionary.
    std::optional<QByteArray> resource(const QString &name) override;

private:
    StardictReader() = default;
    std::optional<QByteArray> wholeIndex(DictionaryProblem &problem) const;
    bool readSynonyms(HeadwordSink &sink) const;

    QString m_basePath;
    IfoInfo m_info;
    ArticleFile m_articles;
};

} // namespace lexiquill::stardict
