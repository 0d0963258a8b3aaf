#include "dictionaries/index/index_builder.h"

#include "dictionaries/index/folding.h"

#include <QtEndian>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

namespace lexiquill {

using namespace headword_index;

namespace {

constexpr quint32 cannotBeFound = std::numeric_limits<quint32>::max();

quint64 numberFrom(QByteArrayView key) {
    char bytes[sizeof(quint64)] = {};
    std::memcpy(bytes, key.data(), std::min(sizeof bytes, static_cast<size_t>(key.size())));
    return qFromBigEndian<quint64>(bytes);
}

/// Writes the checksums of the pages and the header; the payload is already in place.
void seal(QByteArray &image, Header header, qint64 payloadSize) {
    const QByteArrayView payload(image.constData() + pageSize, payloadSize);
    char *to = image.data() + pageSize + payloadSize;
    for (qint64 start = 0; start < payloadSize; start += pageSize) {
        const quint32 sum = crcOf(payload.sliced(start, std::min(pageSize, payloadSize - start)));
        std::memcpy(to, &sum, sizeof sum);
        to += sizeof sum;
    }
    header.pageSumsCrc = crcOf(QByteArrayView(image).sliced(pageSize + payloadSize));
    header.headerCrc = crcOf({reinterpret_cast<const char *>(&header), offsetof(Header, headerCrc)});
    std::memcpy(image.data(), &header, sizeof header);
}

} // namespace

bool IndexBuilder::addWord(QByteArrayView word, const ArticlePlace &place) {
    const size_t before = m_words.size();
    const bool fits = place.offset >= aliasFlag || add(word, place.offset, place.size);
    m_numbers.push_back(m_words.size() > before ? static_cast<quint32>(before) : cannotBeFound);
    return fits;
}

bool IndexBuilder::addAlias(QByteArrayView word, quint32 target) {
    return target >= m_numbers.size() || m_numbers[target] == cannotBeFound ||
           add(word, aliasFlag | m_numbers[target], 0);
}

/// False when there is no room. A word that cannot be found is left out.
bool IndexBuilder::add(QByteArrayView word, quint64 place, quint32 size) {
    const bool isUsable = !word.isEmpty() && word.size() <= maxHeadwordSize && !word.contains(textEnd) &&
                          !word.contains(headwordFollows) && !word.contains(aliasFollows);
    if (!isUsable)
        return true;
    const QByteArray key = foldedKey(word);
    const bool isAlias = (place & aliasFlag) != 0;
    const bool isOwnKey = key == word && !isAlias;
    const qint64 textSize = key.size() + (isOwnKey ? 0 : 1 + word.size());
    if (m_texts.size() + textSize + 1 > maxTextSize || m_words.size() >= maxEntries)
        return false;
    m_words.push_back({.keyStart = numberFrom(key),
                       .text = static_cast<quint32>(m_texts.size()),
                       .textSize = static_cast<quint32>(textSize),
                       .keySize = static_cast<quint32>(key.size()),
                       .number = static_cast<quint32>(m_words.size()),
                       .place = place,
                       .size = size,
                       .isChinese = containsHan(key)});
    m_texts += key;
    if (!isOwnKey) {
        m_texts += isAlias ? aliasFollows : headwordFollows;
        m_texts += word;
    }
    m_texts += textEnd;
    return true;
}

qsizetype IndexBuilder::wordCount() const {
    return static_cast<qsizetype>(m_words.size());
}

QByteArray IndexBuilder::word(qsizetype number) const {
    const Word &word = m_words[static_cast<size_t>(number)];
    const QByteArrayView text = QByteArrayView(m_texts).sliced(word.text, word.textSize);
    const bool isOwnKey = word.keySize == word.textSize;
    return (isOwnKey ? text : text.sliced(word.keySize + 1)).toByteArray();
}

ArticlePlace IndexBuilder::place(qsizetype number) const {
    const Word &word = m_words[static_cast<size_t>(number)];
    const Word &target = (word.place & aliasFlag) != 0 ? m_words[word.place & ~aliasFlag] : word;
    return {target.place, target.size};
}

bool IndexBuilder::comesBefore(const Word &left, const Word &right) const {
    if (left.isChinese != right.isChinese)
        return right.isChinese;
    if (left.keyStart != right.keyStart)
        return left.keyStart < right.keyStart;
    const auto common = std::min(left.keySize, right.keySize);
    const int order = std::memcmp(m_texts.constData() + left.text, m_texts.constData() + right.text, common);
    if (order != 0)
        return order < 0;
    return left.keySize != right.keySize ? left.keySize < right.keySize : left.number < right.number;
}

/// For each number of a word, its position in the sorted m_words.
std::vector<quint32> IndexBuilder::positionsOfTargets() const {
    std::vector<quint32> positions(m_words.size());
    for (size_t i = 0; i < m_words.size(); ++i)
        positions[m_words[i].number] = static_cast<quint32>(i);
    return positions;
}

QByteArray IndexBuilder::file(const QByteArray &identity, const SourceStamps &stamps, bool holdsChinese,
                              DictionaryProblem problem) {
    if (problem != DictionaryProblem::None) {
        m_words.clear();
        m_texts.clear();
    }
    std::sort(m_words.begin(), m_words.end(),
              [this](const Word &left, const Word &right) { return comesBefore(left, right); });
    const std::vector<quint32> positions = positionsOfTargets();
    const auto firstChinese = std::partition_point(m_words.begin(), m_words.end(),
                                                   [](const Word &word) { return !word.isChinese; });

    Header header{};
    header.magic = magicNumber;
    header.version = formatVersion;
    header.problem = static_cast<quint16>(problem);
    header.holdsChinese = holdsChinese ? 1 : 0;
    header.stamps = stamps;
    std::memcpy(header.identity, identity.constData(),
                std::min(sizeof header.identity, static_cast<size_t>(identity.size())));
    header.textSize = m_texts.size();
    header.entryCount = static_cast<qint64>(m_words.size());
    header.firstChinese = firstChinese - m_words.begin();

    const Layout layout = layoutOf(header.textSize, header.entryCount);
    const qint64 sumsSize = pageCountOf(layout.payloadSize) * qint64(sizeof(quint32));
    QByteArray image(pageSize + layout.payloadSize + sumsSize, '\0');
    char *const texts = image.data() + pageSize;
    char *entries = texts + layout.entryStart;
    quint32 at = 0;
    for (const Word &word : m_words) {
        std::memcpy(texts + at, m_texts.constData() + word.text, word.textSize + 1);
        const bool isAlias = (word.place & aliasFlag) != 0;
        const Entry entry{.text = at,
                          .size = word.size,
                          .place = isAlias ? aliasFlag | positions[word.place & ~aliasFlag] : word.place};
        std::memcpy(entries, &entry, sizeof entry);
        entries += sizeof entry;
        at += word.textSize + 1;
    }
    seal(image, header, layout.payloadSize);
    return image;
}

} // namespace lexiquill
