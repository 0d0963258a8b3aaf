#include "storage/cloud_merge.h"

#include <QHash>

namespace lexiquill {

namespace {

bool isAhead(const WordRecord &cloud, const WordRecord &local) {
    // An absent date is earlier than any other.
    return local.repetitionCount < cloud.repetitionCount || local.lastReviewDate < cloud.lastReviewDate;
}

void takeReviewState(WordRecord &local, const WordRecord &cloud) {
    local.repetitionCount = cloud.repetitionCount;
    local.intervalDays = cloud.intervalDays;
    local.easeFactor = cloud.easeFactor;
    local.isMastered = cloud.isMastered;
    local.memoryStatus = cloud.memoryStatus;
    local.lastReviewDate = cloud.lastReviewDate;
    local.nextReviewDate = cloud.nextReviewDate;
    if (local.posGroups.isEmpty())
        local.posGroups = cloud.posGroups;
}

} // namespace

bool mergeCloudWords(QList<WordRecord> &words, const QList<WordRecord> &cloudWords,
                     const QSet<QString> &deletedWords) {
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
            isChanged = true;
        } else if (isAhead(cloud, words.at(*known))) {
            takeReviewState(words[*known], cloud);
            isChanged = true;
        }
    }
    return isChanged;
}

} // namespace lexiquill
