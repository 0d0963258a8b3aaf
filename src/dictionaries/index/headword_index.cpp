#include "dictionaries/index/headword_index.h"

#include "dictionaries/index/folding.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <tuple>
#include <utility>

namespace lexiquill {

using namespace headword_index;

namespace {

/// The limits keep hostile files from costing time; no real dictionary has so many equal keys.
constexpr qint64 maxEqualKeys = 4096;
constexpr qint64 maxHits = 65'536;

} // namespace

bool HeadwordIndex::RankedWord::operator<(const RankedWord &other) const {
    return std::tie(isOther, isAlias, frequency, length) <
           std::tie(other.isOther, other.isAlias, other.frequency, other.length);
}

/// The best ranked words, equally good ones in the order of add(), without those that differ in case only.
class HeadwordIndex::BestWords {
public:
    explicit BestWords(size_t limit) : m_limit(limit) {}

    bool mayEnter(const RankedWord &word) const { return m_words.size() < m_limit || word < m_words.back(); }

    void add(RankedWord word, QByteArrayView headword) {
        const auto isSame = [key = foldCase(headword)](const RankedWord &each) {
            return foldCase(each.word) == key;
        };
        if (std::any_of(m_words.begin(), m_words.end(), isSame))
            return;
        word.word = headword.toByteArray();
        m_words.insert(std::upper_bound(m_words.begin(), m_words.end(), word), word);
        if (m_words.size() > m_limit)
            m_words.pop_back();
    }

    std::vector<RankedWord> take() { return std::move(m_words); }

private:
    size_t m_limit;
    std::vector<RankedWord> m_words;
};

/// Reads texts in order, in large pieces.
class HeadwordIndex::Scan {
public:
    /// From position `start` of the texts up to `end`.
    Scan(const HeadwordIndex &index, qint64 start, qint64 end) : m_index(index), m_next(start), m_end(end) {}

    /// The next text; valid until the next call. No value at the end.
    std::optional<QByteArrayView> next() {
        for (;;) {
            const QByteArrayView rest = QByteArrayView(m_piece).sliced(m_at);
            const qsizetype end = rest.indexOf(textEnd);
            if (end >= 0) {
                m_at += end + 1;
                return rest.first(end);
            }
            if (!refill())
                return std::nullopt;
        }
    }

    /// The texts that follow in memory, all of them complete; empty at the end.
    QByteArrayView nextPiece() {
        m_at = m_piece.size();
        while (refill()) {
            const qsizetype end = m_piece.lastIndexOf(textEnd);
            if (end >= 0) {
                m_at = end + 1;
                return QByteArrayView(m_piece).first(end + 1);
            }
        }
        return {};
    }

private:
    /// Keeps what is unread and reads more behind it.
    bool refill() {
        constexpr qint64 pieceSize = 32 * pageSize;
        // A prefix has few words, so that the first piece ends with its page.
        const qint64 wanted = m_piece.isNull() ? pageSize : pieceSize;
        const qint64 size = std::min(wanted - m_next % pageSize, m_end - m_next);
        if (size <= 0)
            return false;
        m_piece.remove(0, m_at);
        m_at = 0;
        const qsizetype kept = m_piece.size();
        m_piece.resize(kept + size);
        if (!m_index.m_pages.read(m_next, m_piece.data() + kept, size)) {
            m_piece.truncate(kept);
            m_next = m_end;
            return false;
        }
        m_next += size;
        return true;
    }

    const HeadwordIndex &m_index;
    qint64 m_next;
    qint64 m_end;
    QByteArray m_piece;
    qsizetype m_at = 0;
};

std::unique_ptr<HeadwordIndex> HeadwordIndex::load(const QString &path, const QByteArray &identity,
                                                   const SourceStamps &stamps) {
    auto file = FileSnapshot::open(path);
    QByteArray head(sizeof(Header), Qt::Uninitialized);
    if (!file || !file->read(0, head.data(), head.size()))
        return nullptr;
    Header header{};
    std::memcpy(&header, head.constData(), sizeof header);
    if (header.stamps != stamps || QByteArrayView(header.identity, sizeof header.identity) !=
                                       identity.leftJustified(sizeof header.identity, '\0', true))
        return nullptr;
    return adopt(head, std::move(file), {});
}

std::unique_ptr<HeadwordIndex> HeadwordIndex::fromImage(const QByteArray &image) {
    return image.size() < qsizetype(sizeof(Header)) ? nullptr
                                                    : adopt(image.first(sizeof(Header)), nullptr, image);
}

/// Takes the content of a cache file, or of the image without one, if its header and its list of checksums
/// are valid.
std::unique_ptr<HeadwordIndex>
HeadwordIndex::adopt(const QByteArray &head, std::unique_ptr<FileSnapshot> file, const QByteArray &image) {
    Header header{};
    std::memcpy(&header, head.constData(), sizeof header);
    const bool isSound = header.magic == magicNumber && header.version == formatVersion &&
                         header.headerCrc == crcOf(QByteArrayView(head).first(offsetof(Header, headerCrc))) &&
                         header.textSize >= 0 && header.textSize <= maxTextSize && header.entryCount >= 0 &&
                         header.entryCount <= maxEntries && header.firstChinese >= 0 &&
                         header.firstChinese <= header.entryCount;
    if (!isSound)
        return nullptr;
    const qint64 payloadSize = layoutOf(header.textSize, header.entryCount).payloadSize;
    QByteArray sums(pageCountOf(payloadSize) * qint64(sizeof(quint32)), Qt::Uninitialized);
    if (!file) {
        if (image.size() != pageSize + payloadSize + sums.size())
            return nullptr;
        std::copy_n(image.cend() - sums.size(), sums.size(), sums.begin());
        return std::unique_ptr<HeadwordIndex>(
            new HeadwordIndex(CheckedPages(image, pageSize, payloadSize, sums), header));
    }
    if (!file->read(pageSize + payloadSize, sums.data(), sums.size()) || header.pageSumsCrc != crcOf(sums))
        return nullptr;
    return std::unique_ptr<HeadwordIndex>(
        new HeadwordIndex(CheckedPages(std::move(file), pageSize, payloadSize, sums), header));
}

HeadwordIndex::HeadwordIndex(CheckedPages pages, const Header &header)
    : m_pages(std::move(pages)),
      m_problem(static_cast<DictionaryProblem>(header.problem)),
      m_holdsChinese(header.holdsChinese != 0),
      m_textSize(header.textSize),
      m_entryStart(layoutOf(header.textSize, header.entryCount).entryStart),
      m_entryCount(header.entryCount),
      m_firstChinese(header.firstChinese) {}

HeadwordIndex::Text HeadwordIndex::divided(QByteArrayView text) {
    const auto *const mark = std::find_if(text.begin(), text.end(),
                                          [](char c) { return c == headwordFollows || c == aliasFollows; });
    return mark == text.end() ? Text{text, text}
                              : Text{text.first(mark - text.begin()), text.sliced(mark - text.begin() + 1),
                                     *mark == aliasFollows};
}

std::optional<Entry> HeadwordIndex::entry(qint64 number) const {
    Entry entry{};
    const bool isThere = number >= 0 && number < m_entryCount &&
                         m_pages.read(m_entryStart + number * qint64(sizeof entry),
                                      reinterpret_cast<char *>(&entry), sizeof entry) &&
                         entry.text < m_textSize;
    return isThere ? std::optional(entry) : std::nullopt;
}

QByteArray HeadwordIndex::textOf(const Entry &entry) const {
    QByteArray text;
    for (qint64 at = entry.text; at < m_textSize;) {
        const QByteArrayView bytes = m_pages.restOfPage(at);
        const qsizetype end = bytes.indexOf(textEnd);
        text += end < 0 ? bytes : bytes.first(end);
        if (end >= 0 || bytes.isEmpty())
            break;
        at += bytes.size();
    }
    return text;
}

/// Compares a key with that of an entry: negative, zero or positive.
int HeadwordIndex::compare(QByteArrayView key, qint64 number) const {
    const auto place = entry(number);
    if (!place)
        return 0;
    qsizetype compared = 0;
    for (qint64 at = place->text;;) {
        const QByteArrayView bytes = m_pages.restOfPage(at);
        if (bytes.isEmpty())
            return 0;
        for (const char c : bytes) {
            const bool isEnd = c == textEnd || c == headwordFollows || c == aliasFollows;
            if (compared == key.size())
                return isEnd ? 0 : -1;
            const int difference =
                isEnd ? 1 : static_cast<unsigned char>(key[compared]) - static_cast<unsigned char>(c);
            if (difference != 0)
                return difference;
            ++compared;
        }
        at += bytes.size();
    }
}

/// The first entry from `first` on whose key is not less than `key`, or `last`.
qint64 HeadwordIndex::lowerBound(QByteArrayView key, qint64 first, qint64 last) const {
    while (first < last) {
        const qint64 middle = first + (last - first) / 2;
        if (compare(key, middle) > 0)
            first = middle + 1;
        else
            last = middle;
    }
    return first;
}

/// Where the text of an entry begins; the end of the texts behind the last entry.
qint64 HeadwordIndex::textStart(qint64 number) const {
    const auto place = number < m_entryCount ? entry(number) : std::nullopt;
    return place ? qint64(place->text) : m_textSize;
}

std::vector<HeadwordIndex::Match> HeadwordIndex::find(QByteArrayView word) const {
    struct Found {
        QByteArray headword;
        Entry entry;
        int rank;
    };
    const QByteArray key = foldedKey(word);
    const QByteArray caseless = foldCase(word);
    const bool isChinese = containsHan(key);
    const qint64 last = isChinese ? m_entryCount : m_firstChinese;
    std::vector<Found> found;
    int best = std::numeric_limits<int>::max();
    qint64 number = lowerBound(key, isChinese ? m_firstChinese : 0, last);
    for (const qint64 end = std::min(last, number + maxEqualKeys); number < end; ++number) {
        const auto place = entry(number);
        if (!place)
            break;
        const QByteArray text = textOf(*place);
        const auto [itsKey, headword, isAliasText] = divided(text);
        if (itsKey != key)
            break;
        const int spelling = headword == word ? 0 : foldCase(headword) == caseless ? 1 : 2;
        const int rank = spelling * 2 + ((place->place & aliasFlag) != 0 ? 1 : 0);
        best = std::min(best, rank);
        found.push_back({headword.toByteArray(), *place, rank});
    }
    std::vector<Match> matches;
    QByteArray spelling;
    for (const Found &each : found) {
        if (each.rank != best || (!spelling.isNull() && each.headword != spelling))
            continue;
        spelling = each.headword;
        const bool isAlias = (each.entry.place & aliasFlag) != 0;
        const auto target =
            isAlias ? entry(static_cast<qint64>(each.entry.place & ~aliasFlag)) : std::optional(each.entry);
        if (!target || (target->place & aliasFlag) != 0)
            continue;
        const QByteArray text = isAlias ? textOf(*target) : QByteArray();
        matches.push_back({QString::fromUtf8(isAlias ? divided(text).headword : each.headword),
                           {target->place, target->size}});
    }
    return matches;
}

std::vector<HeadwordIndex::RankedWord> HeadwordIndex::startingWith(QByteArrayView prefix, size_t limit,
                                                                   const WordFrequency &frequency) const {
    const QByteArray key = foldedKey(prefix);
    BestWords best(limit);
    const auto scan = [&](qint64 first, qint64 last) {
        Scan texts(*this, textStart(lowerBound(key, first, last)), textStart(last));
        for (qint64 hits = 0; hits < maxHits; ++hits) {
            const auto text = texts.next();
            if (!text || !text->startsWith(key))
                return;
            const auto [itsKey, headword, isAlias] = divided(*text);
            RankedWord word{.isOther = itsKey.size() != key.size(),
                            .isAlias = isAlias,
                            .frequency = 0,
                            .length = itsKey.size(),
                            .word = {}};
            // Asking for the frequency is the dearest step.
            if (!best.mayEnter(word))
                continue;
            word.frequency = frequency.rank(itsKey);
            if (best.mayEnter(word))
                best.add(word, headword);
        }
    };
    scan(0, m_firstChinese);
    scan(m_firstChinese, m_entryCount);
    return best.take();
}

std::vector<HeadwordIndex::RankedWord> HeadwordIndex::containing(QByteArrayView part, size_t limit) const {
    const QByteArray key = foldedKey(part);
    BestWords best(limit);
    if (key.isEmpty())
        return {};
    Scan texts(*this, textStart(m_firstChinese), m_textSize);
    qint64 hits = 0;
    for (QByteArrayView piece = texts.nextPiece(); !piece.isEmpty() && hits < maxHits;
         piece = texts.nextPiece()) {
        const char *const end = piece.data() + piece.size();
        for (const char *at = piece.data(); at < end && hits < maxHits; ++hits) {
            const void *const hit =
                memmem(at, static_cast<size_t>(end - at), key.constData(), static_cast<size_t>(key.size()));
            if (hit == nullptr)
                break;
            const auto position = static_cast<const char *>(hit) - piece.data();
            const qsizetype start = position == 0 ? 0 : piece.lastIndexOf(textEnd, position - 1) + 1;
            const qsizetype stop = piece.indexOf(textEnd, position);
            const auto [itsKey, headword, isAlias] = divided(piece.sliced(start, stop - start));
            const RankedWord word{.isOther = itsKey.size() != key.size(),
                                  .isAlias = isAlias,
                                  .frequency = 0,
                                  .length = itsKey.size(),
                                  .word = {}};
            if (best.mayEnter(word))
                best.add(word, headword);
            at = piece.data() + stop + 1;
        }
    }
    return best.take();
}

std::vector<SimilarWord> HeadwordIndex::similarTo(const QString &word, const WordFrequency &frequency,
                                                  std::chrono::steady_clock::time_point deadline,
                                                  const std::stop_token &stop) const {
    constexpr size_t mostFound = 4096;
    constexpr size_t checkEvery = 1024;
    std::vector<SimilarWord> found;
    const SimilarityTest test(word);
    if (!test.isPossible())
        return found;
    const bool isChinese = containsHan(QByteArrayView(word.toUtf8()));
    Scan texts(*this, isChinese ? textStart(m_firstChinese) : 0,
               isChinese ? m_textSize : textStart(m_firstChinese));
    for (size_t count = 0; found.size() < mostFound; ++count) {
        if (count % checkEvery == 0 && (stop.stop_requested() || std::chrono::steady_clock::now() > deadline))
            break;
        const auto text = texts.next();
        if (!text)
            break;
        const auto [key, headword, isAlias] = divided(*text);
        auto similar = isAlias ? std::nullopt : test.compare(key);
        if (!similar)
            continue;
        similar->word = QString::fromUtf8(headword);
        similar->frequencyRank = frequency.rank(key);
        found.push_back(std::move(*similar));
    }
    return found;
}

} // namespace lexiquill
