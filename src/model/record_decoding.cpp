#include "model/record_codec.h"
#include "support/text.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

namespace lexiquill {

namespace {

namespace ondemand = simdjson::ondemand;

constexpr qint64 leastMasteredRepetitions = 5;
constexpr qint64 leastMasteredIntervalDays = 60;

/// Converts UTF-8 to UTF-16 and returns the end of the output; null when the input is not well-formed. There
/// must be room for as many units as there are bytes.
char16_t *convert(std::string_view utf8, char16_t *out) {
    const auto *byte = reinterpret_cast<const unsigned char *>(utf8.data());
    const unsigned char *const end = byte + utf8.size();
    const auto isContinuation = [](unsigned char each) {
        return (each & 0xc0) == 0x80;
    };
    constexpr int block = 16;
    while (byte < end) {
        if (end - byte >= block &&
            std::all_of(byte, byte + block, [](unsigned char each) { return each < 0x80; })) {
            out = std::copy_n(byte, block, out);
            byte += block;
        } else if (*byte < 0x80) {
            *out++ = *byte++;
        } else if ((*byte & 0xf0) == 0xe0 && end - byte >= 3 && isContinuation(byte[1]) &&
                   isContinuation(byte[2])) {
            const auto unit =
                static_cast<char16_t>((byte[0] & 0x0f) << 12 | (byte[1] & 0x3f) << 6 | (byte[2] & 0x3f));
            if (unit < 0x800 || QChar::isSurrogate(unit))
                return nullptr;
            *out++ = unit;
            byte += 3;
        } else if (*byte >= 0xc2 && *byte < 0xe0 && end - byte >= 2 && isContinuation(byte[1])) {
            *out++ = static_cast<char16_t>((byte[0] & 0x1f) << 6 | (byte[1] & 0x3f));
            byte += 2;
        } else {
            return nullptr;
        }
    }
    return out;
}

/// The value of each hexadecimal digit, -1 for other bytes. A table, for these digits are too random to
/// branch on, and there are hundreds in a record.
constexpr auto hexValues = [] {
    std::array<int, 256> values{};
    values.fill(-1);
    constexpr std::string_view lower = "0123456789abcdef";
    constexpr std::string_view upper = "0123456789ABCDEF";
    for (std::size_t value = 0; value < lower.size(); ++value) {
        for (const char digit : {lower[value], upper[value]})
            values[static_cast<unsigned char>(digit)] = static_cast<int>(value);
    }
    return values;
}();

QString toText(std::string_view utf8) {
    // Most texts are short; converted here first, they are kept in no more memory than they need.
    constexpr std::size_t shortSize = 1024;
    if (utf8.size() <= shortSize) {
        char16_t buffer[shortSize];
        if (const char16_t *const end = convert(utf8, buffer))
            return QString(reinterpret_cast<const QChar *>(buffer), end - buffer);
    }
    return textFromUtf8(utf8);
}

/// Whether the error leaves the parser able to go on behind the value: it only says that the value is not
/// of the wanted type.
bool isAboutValueOnly(simdjson::error_code error) {
    return error == simdjson::INCORRECT_TYPE || error == simdjson::NUMBER_ERROR ||
           error == simdjson::STRING_ERROR || error == simdjson::NUMBER_OUT_OF_RANGE ||
           error == simdjson::N_ATOM_ERROR || error == simdjson::T_ATOM_ERROR ||
           error == simdjson::F_ATOM_ERROR;
}

/// Reads values of one document. A value that does not fit reads as nothing; only an error in the
/// structure of the text, after which nothing more can be read, marks the document as broken.
class Decoder {
public:
    /// `text`: what is decoded, or nothing when that is not the text as given.
    Decoder(JsonForm form, Instant now, QByteArrayView text) : m_form(form), m_now(now), m_text(text) {}

    QByteArrayView text() const { return m_text; }

    bool isBroken() const { return m_isBroken; }
    /// Whether the last word record came from its text alone, without a made-up identifier or date.
    bool isReproducible() const { return m_isReproducible; }

    template <typename T> bool take(simdjson::simdjson_result<T> result, T &out) {
        const simdjson::error_code error = std::move(result).get(out);
        if (error && !isAboutValueOnly(error))
            m_isBroken = true;
        return !error;
    }

    /// Calls `visit(key, value)` for each member until the object ends or is found broken. A member whose key
    /// cannot be read is passed over.
    template <typename Visit> void forEachMember(ondemand::object object, Visit visit) {
        for (auto member : object) {
            ondemand::field field;
            std::string_view key;
            if (!take(std::move(member), field))
                return breakOff();
            if (readKey(field, key))
                visit(key, field.value());
            if (m_isBroken)
                return;
        }
    }

    /// Calls `visit(value)` for each element as long as it returns true.
    template <typename Visit> void forEachElement(ondemand::array array, Visit visit) {
        for (auto element : array) {
            ondemand::value value;
            if (!take(element, value))
                return breakOff();
            if (!visit(value) || m_isBroken)
                return;
        }
    }

    /// The text lasts as long as the document. A second attempt at it could overrun the parser's buffer, so
    /// there must be exactly one.
    bool read(ondemand::value value, std::string_view &out) { return take(value.get_string(), out); }

    bool read(ondemand::value value, QString &out) {
        std::string_view text;
        if (!read(value, text))
            return false;
        out = toText(text);
        return true;
    }

    bool read(ondemand::value value, qint64 &out) {
        int64_t number = 0;
        if (take(value.get_int64(), number)) {
            out = number;
            return true;
        }
        double whole = 0;
        constexpr double limit = 9.2e18;
        if (!take(value.get_double(), whole) || whole != std::floor(whole) || std::abs(whole) > limit)
            return false;
        out = static_cast<qint64>(whole);
        return true;
    }

    bool read(ondemand::value value, double &out) {
        double number = 0;
        if (!take(value.get_double(), number) || !std::isfinite(number))
            return false;
        out = number;
        return true;
    }

    bool read(ondemand::value value, bool &out) { return take(value.get_bool(), out); }

    bool read(ondemand::value value, Instant &out) {
        if (m_form == JsonForm::Wire)
            return read(value, out.seconds);
        return readShortText(value, out, Instant::fromIso8601);
    }

    bool read(ondemand::value value, QUuid &out) {
        std::string_view text;
        if (!read(value, text) || text.size() != 36)
            return false;
        char bytes[16];
        char *next = bytes;
        int all = 0;
        for (std::size_t i = 0; i < text.size(); i += 2) {
            if (i == 8 || i == 13 || i == 18 || i == 23) {
                if (text[i++] != '-')
                    return false;
            }
            const int byte = hexValues[static_cast<unsigned char>(text[i])] * 16 |
                             hexValues[static_cast<unsigned char>(text[i + 1])];
            all |= byte;
            *next++ = static_cast<char>(byte);
        }
        if (all < 0)
            return false;
        out = QUuid::fromRfc4122(QByteArrayView(bytes, sizeof bytes));
        return true;
    }

    bool read(ondemand::value value, MemoryStatus &out) {
        return readShortText(value, out, memoryStatusFromRawValue);
    }

    bool read(ondemand::value value, ReviewFeedback &out) {
        return readShortText(value, out, reviewFeedbackFromRawValue);
    }

    /// A value to read into. Making an identifier is expensive, and these are read from the text.
    template <typename T> static T blank() {
        if constexpr (std::is_same_v<T, ReviewLog>)
            return {.id = {}, .reviewDate = {}};
        else if constexpr (std::is_same_v<T, WordRecord>)
            return {.id = {},
                    .word = {},
                    .conciseSummary = {},
                    .posGroups = {},
                    .rawDefinition = {},
                    .examples = {},
                    .firstSearchedDate = {},
                    .lastSearchedDate = {},
                    .nextReviewDate = {},
                    .reviewHistory = {},
                    .userNotes = {}};
        else
            return {};
    }

    template <typename T> bool read(ondemand::value value, std::optional<T> &out) {
        T content{};
        if (!read(value, content))
            return false;
        out = std::move(content);
        return true;
    }

    /// All elements, or nothing when one of them cannot be read.
    template <typename T> bool read(ondemand::value value, QList<T> &out) {
        ondemand::array array;
        if (!take(value.get_array(), array))
            return false;
        QList<T> list;
        bool isReadable = true;
        forEachElement(array, [&](ondemand::value element) {
            T item = blank<T>();
            isReadable = read(element, item);
            if (isReadable)
                list += std::move(item);
            return isReadable;
        });
        if (!isReadable || m_isBroken)
            return false;
        out = std::move(list);
        return true;
    }

    template <typename Record> bool read(ondemand::value value, Record &out) {
        ondemand::object object;
        return take(value.get_object(), object) && readObject(object, out);
    }

    bool readObject(ondemand::object object, ExampleSentence &out) {
        bool hasEn = false;
        bool hasCn = false;
        forEachMember(object, [&](std::string_view key, ondemand::value value) {
            if (key == "en")
                hasEn |= read(value, out.en);
            else if (key == "cn")
                hasCn |= read(value, out.cn);
        });
        return hasEn && hasCn && !m_isBroken;
    }

    bool readObject(ondemand::object object, SenseItem &out) {
        bool hasMeaning = false;
        bool hasExamples = false;
        bool isReadable = true;
        const auto readOptional = [&](ondemand::value value, auto &field) {
            bool isNull = false;
            isReadable &= (take(value.is_null(), isNull) && isNull) || read(value, field);
        };
        forEachMember(object, [&](std::string_view key, ondemand::value value) {
            if (key == "number")
                readOptional(value, out.number);
            else if (key == "context")
                readOptional(value, out.context);
            else if (key == "chineseMeaning")
                hasMeaning |= read(value, out.chineseMeaning);
            else if (key == "examples")
                hasExamples |= read(value, out.examples);
        });
        return isReadable && hasMeaning && hasExamples && !m_isBroken;
    }

    bool readObject(ondemand::object object, PartOfSpeechGroup &out) {
        std::optional<QString> pos;
        std::optional<QString> posChinese;
        std::optional<QList<SenseItem>> senses;
        std::optional<QList<std::string_view>> meanings; // hardly ever wanted
        forEachMember(object, [&](std::string_view key, ondemand::value value) {
            if (key == "pos")
                read(value, pos);
            else if (key == "posChinese")
                read(value, posChinese);
            else if (key == "senses")
                read(value, senses);
            else if (key == "meanings")
                read(value, meanings);
        });
        out.pos = pos.value_or(QStringLiteral("n."));
        out.posChinese = posChinese ? *posChinese : PartOfSpeechGroup::localizePOS(out.pos);
        if (senses) {
            out.senses = std::move(*senses);
        } else if (meanings) {
            for (const std::string_view meaning : std::as_const(*meanings))
                out.senses += SenseItem{.chineseMeaning = toText(meaning)};
        }
        return !m_isBroken;
    }

    bool readObject(ondemand::object object, DictionaryEntry &out) {
        int required = 0;
        forEachMember(object, [&](std::string_view key, ondemand::value value) {
            if (key == "headword")
                required |= read(value, out.headword) ? 1 : 0;
            else if (key == "phonetic")
                read(value, out.phonetic);
            else if (key == "posGroups")
                required |= read(value, out.posGroups) ? 2 : 0;
            else if (key == "rawText")
                required |= read(value, out.rawText) ? 4 : 0;
            else if (key == "examples")
                required |= read(value, out.examples) ? 8 : 0;
        });
        return required == 15 && !m_isBroken;
    }

    bool readObject(ondemand::object object, ReviewLog &out) {
        int required = 0;
        forEachMember(object, [&](std::string_view key, ondemand::value value) {
            if (key == "id")
                required |= read(value, out.id) ? 1 : 0;
            else if (key == "reviewDate")
                required |= read(value, out.reviewDate) ? 2 : 0;
            else if (key == "feedback")
                required |= read(value, out.feedback) ? 4 : 0;
            else if (key == "resultingIntervalDays")
                required |= read(value, out.resultingIntervalDays) ? 8 : 0;
            else if (key == "resultingEaseFactor")
                required |= read(value, out.resultingEaseFactor) ? 16 : 0;
        });
        return required == 31 && !m_isBroken;
    }

    bool readObject(ondemand::object object, WordRecord &out) {
        bool hasId = false;
        std::optional<QString> rawDefinition;
        std::optional<Instant> firstSearchedDate;
        std::optional<Instant> lastSearchedDate;
        std::optional<Instant> nextReviewDate;
        std::optional<qint64> repetitionCount;
        std::optional<qint64> repetition;
        std::optional<qint64> intervalDays;
        std::optional<qint64> interval;
        std::optional<bool> isMastered;
        std::optional<MemoryStatus> memoryStatus;
        forEachMember(object, [&](std::string_view key, ondemand::value value) {
            if (key == "id")
                hasId |= read(value, out.id);
            else if (key == "word")
                read(value, out.word);
            else if (key == "phonetic")
                read(value, out.phonetic);
            else if (key == "conciseSummary")
                read(value, out.conciseSummary);
            else if (key == "posGroups")
                read(value, out.posGroups);
            else if (key == "rawDefinition")
                read(value, rawDefinition);
            else if (key == "examples")
                read(value, out.examples);
            else if (key == "firstSearchedDate")
                read(value, firstSearchedDate);
            else if (key == "lastSearchedDate")
                read(value, lastSearchedDate);
            else if (key == "searchCount")
                read(value, out.searchCount);
            else if (key == "lastReviewDate")
                read(value, out.lastReviewDate);
            else if (key == "nextReviewDate")
                read(value, nextReviewDate);
            else if (key == "repetitionCount")
                read(value, repetitionCount);
            else if (key == "repetition")
                read(value, repetition);
            else if (key == "intervalDays")
                read(value, intervalDays);
            else if (key == "interval")
                read(value, interval);
            else if (key == "easeFactor")
                read(value, out.easeFactor);
            else if (key == "isMastered")
                read(value, isMastered);
            else if (key == "memoryStatus")
                read(value, memoryStatus);
            else if (key == "reviewHistory")
                read(value, out.reviewHistory);
            else if (key == "userNotes")
                read(value, out.userNotes);
        });
        if (m_isBroken)
            return false;
        m_isReproducible =
            hasId && firstSearchedDate && lastSearchedDate && (nextReviewDate || out.lastReviewDate);
        if (!hasId)
            out.id = QUuid::createUuid();
        out.rawDefinition = rawDefinition ? *rawDefinition : out.conciseSummary;
        out.firstSearchedDate = firstSearchedDate.value_or(m_now);
        out.lastSearchedDate = lastSearchedDate.value_or(m_now);
        out.repetitionCount = repetitionCount ? *repetitionCount : repetition.value_or(0);
        const qint64 defaultInterval = out.repetitionCount > 0 ? 1 : 0;
        out.intervalDays = intervalDays ? *intervalDays : interval.value_or(defaultInterval);
        if (nextReviewDate) {
            out.nextReviewDate = *nextReviewDate;
        } else if (out.lastReviewDate) {
            out.nextReviewDate =
                out.lastReviewDate->adding(static_cast<double>(out.intervalDays) * secondsPerDay);
        } else {
            out.nextReviewDate = m_now;
        }
        out.isMastered = isMastered.value_or(out.repetitionCount >= leastMasteredRepetitions ||
                                             out.intervalDays >= leastMasteredIntervalDays);
        out.memoryStatus = memoryStatus ? *memoryStatus : derivedStatus(out);
        return true;
    }

private:
    static MemoryStatus derivedStatus(const WordRecord &record) {
        if (record.isMastered)
            return MemoryStatus::Mastered;
        if (record.repetitionCount >= 2)
            return MemoryStatus::Reviewing;
        return record.repetitionCount == 1 ? MemoryStatus::Learning : MemoryStatus::New;
    }

    /// Reads a text that stands for a value: `fromText(text)`.
    template <typename T, typename FromText>
    bool readShortText(ondemand::value value, T &out, FromText fromText) {
        std::string_view utf8;
        if (!read(value, utf8))
            return false;
        char16_t buffer[64];
        const char16_t *const end = utf8.size() <= std::size(buffer) ? convert(utf8, buffer) : nullptr;
        const auto found = end ? fromText(QStringView(buffer, end)) : fromText(toText(utf8));
        out = found.value_or(out);
        return found.has_value();
    }

    bool readKey(ondemand::field &field, std::string_view &key) {
        // Almost no key holds an escape; such a key is the text up to the next quotation mark.
        const char *const start = field.key().raw();
        const char *end = start;
        while (*end != '"' && *end != '\\')
            ++end;
        if (*end == '\\')
            return take(field.unescaped_key(), key);
        key = {start, static_cast<std::size_t>(end - start)};
        return true;
    }

    void breakOff() { m_isBroken = true; }

    JsonForm m_form;
    Instant m_now;
    QByteArrayView m_text;
    bool m_isBroken = false;
    bool m_isReproducible = false;
};

/// Notes where the elements of an array of objects stand in a text.
class TextFinder {
public:
    /// Without a text or a list to fill it finds nothing.
    TextFinder(QByteArrayView text, QList<RecordText> *found) : m_text(text), m_found(found) {}

    void startAt(const char *start, bool isWanted) {
        if (m_found != nullptr)
            *m_found += RecordText{.offset = isWanted && !m_text.isNull() ? start - m_text.data() : -1};
    }

    /// Only blanks, commas and brackets stand between an object and what follows it.
    void endBefore(const char *end) {
        if (m_found == nullptr || m_found->isEmpty() || m_found->last().offset < 0)
            return;
        RecordText &last = m_found->last();
        while (end > m_text.data() + last.offset && end[-1] != '}')
            --end;
        last.size = end - m_text.data() - last.offset;
    }

private:
    QByteArrayView m_text;
    QList<RecordText> *m_found;
};

/// Whether nothing follows the value that has been read.
bool isAtEnd(ondemand::document &document) {
    return document.current_location().error() == simdjson::OUT_OF_BOUNDS;
}

/// The text with U+FFFD for what is no UTF-8, and blanks for bare control characters within strings: one bad
/// value must not cost the whole file.
QByteArray repairedText(const QByteArray &json) {
    QByteArray text = QString::fromUtf8(json).toUtf8();
    bool isInString = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (character == '"')
            isInString = !isInString;
        else if (isInString && character == '\\')
            ++i;
        else if (isInString && static_cast<unsigned char>(character) < 0x20)
            text[i] = ' ';
    }
    return text;
}

/// Parses `json` and calls `read(document, decoder)`; nothing when the text is no JSON.
template <typename Result, typename Read>
std::optional<Result> decodeDocument(QByteArray json, JsonForm form, Instant now, Read readDocument,
                                     bool isAsGiven = true) {
    if (json.startsWith("\xef\xbb\xbf")) {
        json.remove(0, 3);
        isAsGiven = false;
    }
    json.reserve(json.size() + static_cast<qsizetype>(simdjson::SIMDJSON_PADDING));
    const auto size = static_cast<std::size_t>(json.size());
    ondemand::parser parser;
    ondemand::document document;
    simdjson::error_code error =
        parser.iterate(json.constData(), size, size + simdjson::SIMDJSON_PADDING).get(document);
    if (error == simdjson::UTF8_ERROR || error == simdjson::UNESCAPED_CHARS) {
        QByteArray repaired = repairedText(json);
        if (repaired == json)
            return std::nullopt;
        return decodeDocument<Result>(std::move(repaired), form, now, readDocument, false);
    }
    // Not the fault of the text, and not to be taken for one.
    if (error == simdjson::MEMALLOC || error == simdjson::CAPACITY)
        throw std::bad_alloc();
    if (error)
        return std::nullopt;
    Decoder decoder(form, now, isAsGiven ? QByteArrayView(json) : QByteArrayView());
    Result result;
    if (!readDocument(document, decoder, result) || decoder.isBroken() || !isAtEnd(document))
        return std::nullopt;
    return result;
}

bool readWordRecords(ondemand::document &document, Decoder &decoder, TextFinder &finder,
                     QList<WordRecord> &records) {
    ondemand::array array;
    if (!decoder.take(document.get_array(), array))
        return false;
    bool isReadable = true;
    decoder.forEachElement(array, [&](ondemand::value element) {
        const char *const start = element.raw_json_token().data();
        finder.endBefore(start);
        auto record = Decoder::blank<WordRecord>();
        isReadable = decoder.read(element, record);
        if (isReadable)
            records += std::move(record);
        finder.startAt(start, decoder.isReproducible());
        return isReadable;
    });
    finder.endBefore(decoder.text().end());
    return isReadable;
}

/// Decodes a wordbook as this program writes it piece by piece, so that the parser's tables stay small and in
/// the processor's cache. The pieces are cut where one record seems to end and the next to begin; a cut in
/// the wrong place leaves pieces that are no lists of objects. Nothing when there is such a piece.
std::optional<QList<WordRecord>> decodeInPieces(QByteArray &json, Instant now, QList<RecordText> *texts,
                                                qsizetype pieceSize) {
    constexpr QByteArrayView head = "[\n  {";
    constexpr QByteArrayView cut = "\n  },\n  {";
    constexpr qsizetype comma = 4;
    if (json.size() < 2 * pieceSize || !json.startsWith(head))
        return std::nullopt;
    constexpr auto padding = static_cast<qsizetype>(simdjson::SIMDJSON_PADDING);
    json.reserve(json.size() + padding);
    char *const data = json.data();
    QList<WordRecord> words;
    TextFinder finder(json, texts);
    ondemand::parser parser;
    qsizetype start = head.size() - 1;
    bool isReadable = true;
    for (bool isLast = false; isReadable && !isLast;) {
        const qsizetype found = start + pieceSize < json.size() ? json.indexOf(cut, start + pieceSize) : -1;
        isLast = found < 0;
        const qsizetype end = isLast ? json.size() : found + comma + 1;
        // The blank before the piece and the comma behind it become its brackets for a while.
        data[start - 1] = '[';
        if (!isLast)
            data[end - 1] = ']';
        const auto size = static_cast<std::size_t>(end - start + 1);
        ondemand::document document;
        const simdjson::error_code error =
            parser.iterate(data + start - 1, size, size + simdjson::SIMDJSON_PADDING).get(document);
        Decoder decoder(JsonForm::File, now, QByteArrayView(data, end));
        isReadable = !error && readWordRecords(document, decoder, finder, words) && !decoder.isBroken() &&
                     isAtEnd(document);
        data[start - 1] = ' ';
        if (!isLast)
            data[end - 1] = ',';
        if (error == simdjson::MEMALLOC || error == simdjson::CAPACITY)
            throw std::bad_alloc();
        start = found + cut.size() - 1;
    }
    return isReadable ? std::optional(std::move(words)) : std::nullopt;
}

template <typename Record>
std::optional<Record> decodeObject(const QByteArray &json, JsonForm form, Instant now) {
    return decodeDocument<Record>(
        json, form, now, [](ondemand::document &document, Decoder &decoder, Record &record) {
            ondemand::object object;
            return decoder.take(document.get_object(), object) && decoder.readObject(object, record);
        });
}

} // namespace

std::optional<QList<WordRecord>> decodeWordRecords(QByteArray json, JsonForm form, Instant now,
                                                   QList<RecordText> *texts, qsizetype pieceSize) {
    if (form == JsonForm::File) {
        if (auto words = decodeInPieces(json, now, texts, pieceSize))
            return words;
    }
    if (texts != nullptr)
        texts->clear();
    using Records = QList<WordRecord>;
    return decodeDocument<Records>(std::move(json), form, now,
                                   [texts](ondemand::document &document, Decoder &decoder, Records &records) {
                                       TextFinder finder(decoder.text(), texts);
                                       return readWordRecords(document, decoder, finder, records);
                                   });
}

std::optional<WordRecord> decodeWordRecord(const QByteArray &json, JsonForm form, Instant now) {
    return decodeObject<WordRecord>(json, form, now);
}

std::optional<DictionaryEntry> decodeDictionaryEntry(const QByteArray &json) {
    return decodeObject<DictionaryEntry>(json, JsonForm::File, {});
}

} // namespace lexiquill
