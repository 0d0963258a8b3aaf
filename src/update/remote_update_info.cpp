#include "update/remote_update_info.h"

#include "support/json_writer.h"

#include <simdjson.h>

#include <string_view>
#include <utility>

namespace lexiquill {

namespace {

using Member = std::pair<std::string_view, QString RemoteUpdateInfo::*>;

constexpr Member requiredMembers[] = {
    {"name", &RemoteUpdateInfo::name},
    {"version", &RemoteUpdateInfo::version},
    {"build", &RemoteUpdateInfo::build},
    {"releaseDate", &RemoteUpdateInfo::releaseDate},
    {"releaseNotes", &RemoteUpdateInfo::releaseNotes},
    {"downloadUrl", &RemoteUpdateInfo::downloadUrl},
};
constexpr std::string_view minOSVersionKey = "minOSVersion";

bool read(simdjson::dom::element element, QString &out) {
    std::string_view text;
    if (element.get_string().get(text))
        return false;
    out = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return true;
}

} // namespace

std::optional<RemoteUpdateInfo> decodeRemoteUpdateInfo(const QByteArray &json) {
    simdjson::dom::parser parser;
    simdjson::dom::object object;
    // The whole text is checked before the first member is looked at, whatever the order of members.
    if (parser.parse(json.constData(), static_cast<std::size_t>(json.size())).get_object().get(object))
        return std::nullopt;
    RemoteUpdateInfo info;
    for (const auto &[key, field] : requiredMembers) {
        simdjson::dom::element element;
        if (object.at_key(key).get(element) || !read(element, info.*field))
            return std::nullopt;
    }
    simdjson::dom::element element;
    if (!object.at_key(minOSVersionKey).get(element) && !element.is_null()) {
        if (!read(element, info.minOSVersion.emplace()))
            return std::nullopt;
    }
    return info;
}

QByteArray encodeRemoteUpdateInfo(const RemoteUpdateInfo &info) {
    QByteArray json;
    JsonWriter writer(JsonWriter::Style::Compact, [&json](QByteArrayView bytes) { json += bytes; });
    writer.beginObject();
    for (const auto &[key, field] : requiredMembers) {
        writer.key(key);
        writer.value(info.*field);
    }
    if (info.minOSVersion) {
        writer.key(minOSVersionKey);
        writer.value(*info.minOSVersion);
    }
    writer.endObject();
    writer.finish();
    return json;
}

} // namespace lexiquill
