#pragma once

#include "dictionaries/dictionary_reader.h"
#include "dictionaries/mdict/mdict_file.h"
#include "dictionaries/mdict/resource_files.h"
#include "dictionaries/mdict/style_sheet.h"

#include <memory>

namespace lexiquill::mdict {

/// A .mdx file and the .mdd files beside it. What the file says about the comparison of its headwords (case,
/// blanks, punctuation) is not used: the index ignores case in every dictionary, and a search that ignores
/// blanks and punctuation would take "cant" for "can't".
class MdictReader final : public DictionaryReader {
public:
    static OpenedReader open(const QString &path);

    DictionaryProblem readHeadwords(HeadwordSink &sink) override;
    std::optional<StoredArticle> article(const ArticlePlace &place) override;
    std::optional<QByteArray> resource(const QString &path) override { return m_resources.find(path); }

private:
    MdictReader(const QString &path, std::unique_ptr<MdictFile> file);

    std::unique_ptr<MdictFile> m_file;
    TextDecoder m_decoder;
    StyleSheet m_styles;
    ResourceFiles m_resources;
};

} // namespace lexiquill::mdict
