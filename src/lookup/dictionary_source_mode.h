#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringView>

#include <array>
#include <optional>

namespace lexiquill {

Q_NAMESPACE

/// Where a lookup takes its answer from.
enum class DictionarySourceMode { YoudaoOnline, AppleOffline };
Q_ENUM_NS(DictionarySourceMode)

inline constexpr std::array allDictionarySourceModes{DictionarySourceMode::YoudaoOnline,
                                                     DictionarySourceMode::AppleOffline};

/// The stored form: "youdaoOnline" or "appleOffline".
QString rawValue(DictionarySourceMode mode);
/// No value for any text that is not exactly a raw value.
std::optional<DictionarySourceMode> dictionarySourceModeFromRawValue(QStringView text);

/// Identity in lists: the raw value.
inline QString id(DictionarySourceMode mode) {
    return rawValue(mode);
}
/// The raw value as a JSON string.
QByteArray encodeDictionarySourceMode(DictionarySourceMode mode);
/// No value when the text is not the JSON string of a raw value.
std::optional<DictionarySourceMode> decodeDictionarySourceMode(const QByteArray &json);

/// Texts for the source pickers; `iconName` is a symbol name of the icon set.
QString title(DictionarySourceMode mode);
QString shortTitle(DictionarySourceMode mode);
QString iconName(DictionarySourceMode mode);
QString descriptionText(DictionarySourceMode mode);

} // namespace lexiquill
