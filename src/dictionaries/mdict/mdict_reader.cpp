#include "dictionaries/mdict/mdict_reader.h"

#include <utility>

namespace lexiquill::mdict {

MdictReader::MdictReader(const QString &path, std::unique_ptr<MdictFile> file)
    : m_file(std::move(file)),
      m_decoder(m_file->header().encoding),
      m_styles(m_file->header().styleSheet),
      m_resources(path) {}

OpenedReader MdictReader::open(const QString &path) {
    MdictFile::Opened opened = MdictFile::open(path, FileKind::Articles);
    OpenedReader result{.reader = nullptr, .problem = opened.problem};
    if (opened.file)
        result.reader.reset(new MdictReader(path, std::move(opened.file)));
    return result;
}

DictionaryProblem MdictReader::readHeadwords(HeadwordSink &sink) {
    return m_file->readKeys([&](QByteArrayView key, const ArticlePlace &place) {
        return sink.addWord(m_decoder.toUtf8(key), place);
    });
}

std::optional<StoredArticle> MdictReader::article(const ArticlePlace &place) {
    if (place.size == 0 || place.size > maxArticleSize)
        return std::nullopt;
    const auto record = m_file->record(place);
    if (!record)
        return std::nullopt;
    const Header &header = m_file->header();
    // Records that no key leads to may follow the end of this one.
    QString text = m_decoder.toText(upToZero(*record, header.encoding));
    StoredArticle article;
    const QStringView linkMark = u"@@@LINK=";
    if (text.startsWith(linkMark)) {
        article.link = text.sliced(linkMark.size()).section(u'\n', 0, 0).trimmed();
        return article;
    }
    if (!m_styles.isEmpty()) {
        auto styled = m_styles.applied(text, qsizetype(maxArticleSize));
        if (!styled)
            return std::nullopt;
        text = std::move(*styled);
    }
    article.article.push_back({header.isHtml ? article::Form::Html : article::Form::Text, std::move(text)});
    return article;
}

} // namespace lexiquill::mdict
