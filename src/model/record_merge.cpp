#include "model/record_merge.h"

#include <QHash>
#include <QtNumeric>

#include <limits>

namespace lexiquill {

namespace {

bool isAhead(const WordRecord &cloud, const WordRecord &local) {
    // An absent date is earlier than any other.
    return local.repetitionCount < cloud.repetitionCount || local.lastReviewDate < cloud.lastReviewDate;
}

qint64 sum(qint64 a, qint64 b) {
    qint64 result = 0;
    return qAddOverflow(a, b, &result) ? std::numeric_limits<qint64>::max() : result;
}

} // namespace

bool mergeCloudWords(QList<WordRecord> &words, const QList<WordRecord> &cloudWords,
                     const QSet<QString> &deletedWords, QList<WordRecord> *news) {
    if (cloudWords.isEmpty())
        return false;
    QHash<QString, qsizetype> positions; // of the first record of each word
    positions.reserve(words.size());
    for (qsizetype i = words.size() - 1; i >= 0; --i)
        positions.insert(words.at(i).word.toLower(), i);
    bool isChanged = false;
    for (const WordRecord &cloud : cloudWords) {
        const QString key = cloud.word.toLower();
        if (deletedWords.contains(key))
            continue;
        const auto known = positions.constFind(key);
        if (known == positions.constEnd()) {
            positions.insert(key, words.size());
            words.append(cloud);
        } else if (isAhead(cloud, words.at(*known))) {
            WordRecord &local = words[*known];
            takeReviewState(local, cloud);
            if (local.posGroups.isEmpty())
                local.posGroups = cloud.posGroups;
        } else {
            continue;
        }
        isChanged = true;
        if (news != nullptr)
            news->append(cloud);
    }
    return isChanged;
}

WordRecord united(const WordRecord &known, const WordRecord &later) {
    WordRecord record = known;
    if (later.phonetic)
        record.phonetic = later.phonetic;
    record.conciseSummary = later.conciseSummary;
    record.posGroups = later.posGroups;
    record.rawDefinition = later.rawDefinition;
    record.examples = later.examples;
    record.lastSearchedDate = later.lastSearchedDate;
    record.searchCount = sum(known.searchCount, later.searchCount);
    if (known.lastReviewDate < later.lastReviewDate)
        takeReviewState(record, later);
    record.reviewHistory += later.reviewHistory;
    if (!later.userNotes.isEmpty())
        record.userNotes = later.userNotes;
    return record;
}

} // namespace lexiquill
