#include "lookup/dictionary_source_mode.h"

#include "support/json_value.h"

namespace lexiquill {

namespace {

bool isOnline(DictionarySourceMode mode) {
    return mode == DictionarySourceMode::YoudaoOnline;
}

} // namespace

QString rawValue(DictionarySourceMode mode) {
    return isOnline(mode) ? QStringLiteral("youdaoOnline") : QStringLiteral("appleOffline");
}

std::optional<DictionarySourceMode> dictionarySourceModeFromRawValue(QStringView text) {
    for (const DictionarySourceMode mode : allDictionarySourceModes) {
        if (rawValue(mode) == text)
            return mode;
    }
    return std::nullopt;
}

QByteArray encodeDictionarySourceMode(DictionarySourceMode mode) {
    return '"' + rawValue(mode).toUtf8() + '"';
}

std::optional<DictionarySourceMode> decodeDictionarySourceMode(const QByteArray &json) {
    const auto document = JsonDocument::parse(json);
    const auto text = document ? document->root().text() : std::nullopt;
    return text ? dictionarySourceModeFromRawValue(*text) : std::nullopt;
}

QString title(DictionarySourceMode mode) {
    return isOnline(mode) ? QStringLiteral("有道在线词典 (默认)") : QStringLiteral("苹果本地离线词典");
}

QString shortTitle(DictionarySourceMode mode) {
    return isOnline(mode) ? QStringLiteral("有道在线 (默认)") : QStringLiteral("苹果离线");
}

QString iconName(DictionarySourceMode mode) {
    return isOnline(mode) ? QStringLiteral("network") : QStringLiteral("book.closed");
}

QString descriptionText(DictionarySourceMode mode) {
    return isOnline(mode)
               ? QStringLiteral("默认优先通过有道官方 API 发起异步网络查询，解析音标、词性与详尽释义。"
                                "若遇到断网或网络超时，将无缝自动回退至系统本地离线词典。")
               : QStringLiteral("完全无需联网，直接调用 macOS 原生 CoreServices DCSCopyTextDefinition，"
                                "即时检索系统牛津英汉/双解离线词典。");
}

} // namespace lexiquill
