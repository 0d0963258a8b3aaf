#include "model/record_pieces.h"

#include "model/record_list.h"

#include <new>

namespace lexiquill {

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
    TextFinder finder(data, texts);
    simdjson::ondemand::parser parser;
    qsizetype start = head.size() - 1;
    bool isReadable = true;
    for (bool isLast = false; isReadable && !isLast;) {
        const qsizetype found = start + pieceSize < json.size() ? json.indexOf(cut, start + pieceSize) : -1;
        isLast = found < 0;
        const qsizetype end = isLast ? json.size() : found + comma + 1;
        // Temporarily replace the blank before the piece and the comma after it with brackets.
        data[start - 1] = '[';
        if (!isLast)
            data[end - 1] = ']';
        const auto size = static_cast<std::size_t>(end - start + 1);
        simdjson::ondemand::document document;
        const simdjson::error_code error =
            parser.iterate(data + start - 1, size, size + simdjson::SIMDJSON_PADDING).get(document);
        FieldReader reader(JsonForm::File, now);
        isReadable = !error && readWordRecords(document, reader, finder, data + end, words);
        data[start - 1] = ' ';
        if (!isLast)
            data[end - 1] = ',';
        if (error == simdjson::MEMALLOC || error == simdjson::CAPACITY)
            throw std::bad_alloc();
        start = found + cut.size() - 1;
    }
    return isReadable ? std::optional(std::move(words)) : std::nullopt;
}

} // namespace lexiquill
