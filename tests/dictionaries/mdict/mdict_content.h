#pragma once

#include "dictionaries/mdict/mdict_format.h"
#include "mdict_writer.h"
#include "support/test.h"

namespace lexiquill {

/// Keeps the headwords of a dictionary.
class CollectedWords final : public HeadwordSink {
public:
    bool addWord(QByteArrayView word, const ArticlePlace &place) override {
        words.emplace_back(QString::fromUtf8(word), place);
        return words.size() <= limit;
    }
    bool addAlias(QByteArrayView, quint32) override { return false; }

    std::vector<std::pair<QString, ArticlePlace>> words;
    size_t limit = 1'000'000;
};

/// What the dictionary at `path` contains, in the order of the file: "word: article", "word -> link", or
/// "word?" without an article. If it cannot be read, one line with the problem.
inline QStringList contentOf(const QString &path) {
    const OpenedReader opened = mdict::format().open(path);
    if (!opened.reader)
        return {u"problem %1"_s.arg(int(opened.problem))};
    CollectedWords collected;
    const DictionaryProblem problem = opened.reader->readHeadwords(collected);
    if (problem != DictionaryProblem::None)
        return {u"problem %1"_s.arg(int(problem))};
    QStringList lines;
    for (const auto &[word, place] : collected.words) {
        const auto found = opened.reader->article(place);
        if (!found)
            lines += word + u'?';
        else if (!found->link.isEmpty())
            lines += word + u" -> "_s + found->link;
        else
            lines += word + u": "_s + found->article.front().text;
    }
    return lines;
}

inline QStringList failure(DictionaryProblem problem) {
    return {u"problem %1"_s.arg(int(problem))};
}

} // namespace lexiquill
