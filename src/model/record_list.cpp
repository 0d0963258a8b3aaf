#include "model/record_list.h"

#include "model/record_fields.h"

namespace lexiquill {

bool isAtEnd(simdjson::ondemand::document &document) {
    return document.current_location().error() == simdjson::OUT_OF_BOUNDS;
}

bool readWordRecords(simdjson::ondemand::document &document, FieldReader &reader, TextFinder &finder,
                     const char *end, QList<WordRecord> &records) {
    simdjson::ondemand::array array;
    if (!reader.take(document.get_array(), array))
        return false;
    bool isReadable = true;
    reader.forEachElement(array, [&](FieldReader::Value element) {
        const char *const start = element.raw_json_token().data();
        finder.endBefore(start);
        auto record = FieldReader::blankRecord<WordRecord>();
        isReadable = reader.read(element, record);
        if (isReadable)
            records += std::move(record);
        finder.startAt(start);
        return isReadable;
    });
    finder.endBefore(end);
    return isReadable && !reader.isBroken() && isAtEnd(document);
}

} // namespace lexiquill
