#pragma once

#include "dictionaries/article_file.h"
#include "dictionaries/dictionary_format.h"

#include <QString>
#include <QStringList>

namespace lexiquill::dictd {

/// Whether the articles lie beside an index.
bool hasArticles(const QString &indexPath);
QStringList filesOf(const QString &indexPath);
DictionaryDescription describe(const QString &indexPath);

/// The opened files of one dictionary.
class DictdReader final : public DictionaryReader {
public:
    static OpenedReader open(const QString &indexPath);

    DictionaryProblem readHeadwords(HeadwordSink &sink) override;
    std::optional<StoredArticle> article(const ArticlePlace &place) override;

    /// What the entries about the dictionary say.
    DictionaryAbout about() const;

private:
    DictdReader() = default;
    QString text(const ArticlePlace &place) const;

    QString m_indexPath;
    ArticleFile m_articles;
    article::Form m_form = article::Form::Text;
};

} // namespace lexiquill::dictd
