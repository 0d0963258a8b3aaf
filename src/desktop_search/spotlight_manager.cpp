#include "desktop_search/spotlight_manager.h"

#include <cstdio>
#include <utility>

namespace lexiquill {

const QString SpotlightManager::domainIdentifier = QStringLiteral("com.lexiquill.vocabulary");

namespace {

QString description(const SearchIndexError &error) {
    using Kind = SearchIndexError::Kind;
    switch (error.kind) {
    case Kind::Unavailable:
        return QStringLiteral("无法加载搜索索引组件");
    case Kind::Busy:
        return QStringLiteral("搜索索引正被其他程序占用");
    case Kind::ReadOnly:
        return QStringLiteral("搜索索引文件只读");
    case Kind::DiskFull:
        return QStringLiteral("磁盘空间不足");
    case Kind::CannotOpen:
        return QStringLiteral("无法打开搜索索引文件");
    case Kind::Damaged:
        return QStringLiteral("搜索索引文件已损坏");
    case Kind::ReadWrite:
        return QStringLiteral("读写搜索索引文件时出错");
    case Kind::TooLong:
        return QStringLiteral("内容过长");
    case Kind::OutOfMemory:
        return QStringLiteral("内存不足");
    case Kind::Other:
        break;
    }
    return QStringLiteral("搜索索引出错（代码 %1）").arg(error.code);
}

void printFailure(const SearchIndexError &error) {
    const QByteArray line = QStringLiteral("Spotlight 批量索引错误: %1\n").arg(description(error)).toUtf8();
    // Ignore errors: the work goes on even if nobody reads the output.
    [[maybe_unused]] const int result = std::fputs(line.constData(), stdout);
}

} // namespace

QString SpotlightManager::itemIdentifier(const QString &word) {
    return QStringLiteral("word:") + word.toLower();
}

SearchItem SpotlightManager::item(const WordRecord &record) {
    QStringList keywords{record.word, QStringLiteral("词典"), QStringLiteral("单词"),
                         QStringLiteral("生词本"), QStringLiteral("背词")};
    if (record.phonetic)
        keywords += *record.phonetic;
    for (const PartOfSpeechGroup &group : record.posGroups) {
        keywords << group.pos << group.posChinese;
        for (const SenseItem &sense : group.senses)
            keywords += sense.chineseMeaning;
    }
    return {.identifier = itemIdentifier(record.word),
            .domain = domainIdentifier,
            .title = record.word,
            .displayName = record.word + QStringLiteral(" - ") + record.conciseSummary,
            .contentDescription =
                record.conciseSummary.isEmpty() ? record.rawDefinition : record.conciseSummary,
            .keywords = std::move(keywords)};
}

void SpotlightManager::indexWord(const WordRecord &record) const {
    indexWordsBatch({record});
}

void SpotlightManager::indexWordsBatch(const QList<WordRecord> &records, BatchCompletion completion) const {
    if (!completion)
        completion = [](qsizetype) {
        };
    if (records.isEmpty() || !isIndexingAvailable()) {
        completion(0);
        return;
    }
    const auto makeItems = [records] {
        QList<SearchItem> items;
        items.reserve(records.size());
        for (const WordRecord &record : records)
            items += item(record);
        return items;
    };
    const qsizetype count = records.size();
    m_index.indexItems(makeItems,
                       [count, completion = std::move(completion)](const SearchIndex::Error &error) {
                           if (error)
                               printFailure(*error);
                           completion(error ? 0 : count);
                       });
}

void SpotlightManager::removeWords(const QStringList &words) const {
    QStringList identifiers;
    for (const QString &word : words)
        identifiers += itemIdentifier(word);
    m_index.deleteItems(identifiers, {});
}

void SpotlightManager::clearAll() const {
    m_index.deleteDomain(domainIdentifier, {});
}

} // namespace lexiquill
