#include "update/remote_update_info.h"

#include "support/json_value.h"
#include "support/json_writer.h"

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

} // namespace

std::optional<RemoteUpdateInfo> decodeRemoteUpdateInfo(const QByteArray &json) {
    const auto document = JsonDocument::parse(json);
    if (!document)
        return std::nullopt;
    const JsonValue root = document->root();
    RemoteUpdateInfo info;
    for (const auto &[key, field] : requiredMembers) {
        const auto text = root.member(key).text();
        if (!text)
            return std::nullopt;
        info.*field = *text;
    }
    const JsonValue minOSVersion = root.member(minOSVersionKey);
    info.minOSVersion = minOSVersion.text();
    if (!info.minOSVersion && !minOSVersion.isMissing() && !minOSVersion.isNull())
        return std::nullopt;
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
