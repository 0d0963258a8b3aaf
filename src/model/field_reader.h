#pragma once

#include "model/record_codec.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <simdjson.h>

#include <optional>
#include <string_view>
#include <utility>

namespace lexiquill {

/// Reads the values of one JSON document. Reading a value of the wrong type returns false; only an error in
/// the structure of the text, after which nothing more can be read, marks the document as broken.
class FieldReader {
public:
    using Value = simdjson::ondemand::value;
    using Object = simdjson::ondemand::object;

    /// `now` is the default for dates.
    FieldReader(JsonForm form, Instant now) : m_form(form), m_now(now) {}

    bool isBroken() const { return m_isBroken; }
    Instant now() const { return m_now; }

    template <typename T> bool take(simdjson::simdjson_result<T> result, T &out) {
        const simdjson::error_code error = std::move(result).get(out);
        if (error && !isAboutValueOnly(error))
            m_isBroken = true;
        return !error;
    }

    /// Calls `visit(key, value)` for each member until the object ends or the document is broken. A member
    /// whose key cannot be read is skipped.
    template <typename Visit> void forEachMember(Object object, Visit visit) {
        for (auto member : object) {
            simdjson::ondemand::field field;
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
    template <typename Visit> void forEachElement(simdjson::ondemand::array array, Visit visit) {
        for (auto element : array) {
            Value value;
            if (!take(element, value))
                return breakOff();
            if (!visit(value) || m_isBroken)
                return;
        }
    }

    /// The text is valid as long as the document. Read it only once: a second attempt could overrun the
    /// parser's buffer.
    bool read(Value value, std::string_view &out) { return take(value.get_string(), out); }
    bool read(Value value, QString &out);
    bool read(Value value, qint64 &out);
    bool read(Value value, double &out);
    bool read(Value value, bool &out) { return take(value.get_bool(), out); }
    bool read(Value value, Instant &out);
    bool read(Value value, QUuid &out);
    bool read(Value value, MemoryStatus &out);
    bool read(Value value, ReviewFeedback &out);

    template <typename T> bool read(Value value, std::optional<T> &out) {
        T content{};
        if (!read(value, content))
            return false;
        out = std::move(content);
        return true;
    }

    /// Reads all elements. False when one of them cannot be read.
    template <typename T> bool read(Value value, QList<T> &out) {
        simdjson::ondemand::array array;
        if (!take(value.get_array(), array))
            return false;
        QList<T> list;
        bool isReadable = true;
        forEachElement(array, [&](Value element) {
            T item = blankRecord<T>();
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

    /// Reads a record with the function `readRecord(reader, object, out)` for its type.
    template <typename Record> bool read(Value value, Record &out) {
        Object object;
        return take(value.get_object(), object) && readRecord(*this, object, out);
    }

    /// A record to read into. It has no id, because creating one is expensive and ids are read from the text.
    template <typename T> static T blankRecord() {
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

private:
    static bool isAboutValueOnly(simdjson::error_code error);
    bool readKey(simdjson::ondemand::field &field, std::string_view &key);
    template <typename T, typename FromText> bool readShortText(Value value, T &out, FromText fromText);
    void breakOff() { m_isBroken = true; }

    JsonForm m_form;
    Instant m_now;
    bool m_isBroken = false;
};

} // namespace lexiquill
