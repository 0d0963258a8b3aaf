#pragma once

#include "dictionaries/dictionary_reader.h"
#include "dictionaries/index/index_format.h"

#include <QByteArray>

#include <vector>

namespace lexiquill {

/// Collects the headwords of a dictionary and makes the file of a HeadwordIndex from them.
class IndexBuilder final : public HeadwordSink {
public:
    bool addWord(QByteArrayView word, const ArticlePlace &place) override;
    bool addAlias(QByteArrayView word, quint32 target) override;

    /// The number of words so far that can be found.
    qsizetype wordCount() const;
    /// The word added as number `number` in the order of addWord(), without those that cannot be found.
    QByteArray word(qsizetype number) const;
    ArticlePlace place(qsizetype number) const;

    /// The complete file. With a problem, it stores only that.
    QByteArray file(const QByteArray &identity, const SourceStamps &stamps, bool holdsChinese,
                    DictionaryProblem problem);

private:
    struct Word {
        quint64 keyStart; ///< the first bytes of the key as a big-endian number
        quint32 text;     ///< position in m_texts
        quint32 textSize;
        quint32 keySize;
        quint32 number; ///< in the order in which the words were added
        quint64 place;  ///< as in headword_index::Entry; of an alias, the number of its target
        quint32 size;
        bool isChinese;
    };

    bool add(QByteArrayView word, quint64 place, quint32 size);
    bool comesBefore(const Word &left, const Word &right) const;
    std::vector<quint32> positionsOfTargets() const;

    QByteArray m_texts;
    std::vector<Word> m_words;
    /// For each word of addWord() its number in m_words, or `cannotBeFound`.
    std::vector<quint32> m_numbers;
};

} // namespace lexiquill
