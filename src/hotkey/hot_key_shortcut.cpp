#include "hotkey/hot_key_shortcut.h"

#include "support/json_writer.h"

#include <QHash>
#include <QStringList>

#include <simdjson.h>

#include <cmath>
#include <limits>
#include <string_view>

namespace lexiquill {

namespace {

namespace dom = simdjson::dom;

constexpr qsizetype largestJson = qsizetype{64} << 10;

bool read(dom::object object, std::string_view key, QString &out) {
    std::string_view text;
    if (object.at_key(key).get(text))
        return false;
    out = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return true;
}

bool read(dom::object object, std::string_view key, quint32 &out) {
    double number = 0;
    if (object.at_key(key).get(number) || number < 0 || number > std::numeric_limits<quint32>::max() ||
        number != std::floor(number))
        return false;
    out = static_cast<quint32>(number);
    return true;
}

HotKeyShortcut preset(const char16_t *id, const char16_t *name, quint32 keyCode, quint32 modifiers,
                      const char16_t *symbols) {
    HotKeyShortcut shortcut;
    shortcut.id = QString::fromUtf16(id);
    shortcut.name = QString::fromUtf16(name);
    shortcut.keyCode = keyCode;
    shortcut.carbonModifiers = modifiers;
    shortcut.symbolString = QString::fromUtf16(symbols);
    return shortcut;
}

} // namespace

const QList<HotKeyShortcut> &HotKeyShortcut::presets() {
    using namespace CarbonModifier;
    constexpr quint32 space = 49;
    constexpr quint32 d = 2;
    static const QList<HotKeyShortcut> presets{
        preset(u"opt_space", u"Option + 空格 (极简聚焦, 推荐)", space, option, u"⌥ Space"),
        preset(u"cmd_shift_d", u"Command + Shift + D (标准词典快捷键)", d, command | shift, u"⌘ ⇧ D"),
        preset(u"opt_d", u"Option + D", d, option, u"⌥ D"),
        preset(u"ctrl_space", u"Control + 空格", space, control, u"⌃ Space"),
        preset(u"cmd_opt_space", u"Command + Option + 空格", space, command | option, u"⌘ ⌥ Space"),
        preset(u"cmd_opt_d", u"Command + Option + D", d, command | option, u"⌘ ⌥ D"),
    };
    return presets;
}

const HotKeyShortcut &HotKeyShortcut::defaultShortcut() {
    return presets().first();
}

HotKeyShortcut HotKeyShortcut::custom(Toggles toggles, const VirtualKey &key) {
    HotKeyShortcut shortcut;
    QStringList symbols;
    const auto add = [&](bool isOn, quint32 modifier, char16_t symbol) {
        if (!isOn)
            return;
        shortcut.carbonModifiers |= modifier;
        symbols += QString(QChar(symbol));
    };
    add(toggles.control, CarbonModifier::control, u'⌃');
    add(toggles.option, CarbonModifier::option, u'⌥');
    add(toggles.shift, CarbonModifier::shift, u'⇧');
    add(toggles.command, CarbonModifier::command, u'⌘');
    symbols += key.name.toString();

    shortcut.keyCode = key.code;
    shortcut.symbolString = symbols.join(u' ');
    shortcut.id = QStringLiteral("custom_%1_%2").arg(shortcut.carbonModifiers).arg(shortcut.keyCode);
    shortcut.name = QStringLiteral("自定义: ") + shortcut.symbolString;
    return shortcut;
}

size_t qHash(const HotKeyShortcut &shortcut, size_t seed) {
    return qHashMulti(seed, shortcut.id, shortcut.name, shortcut.keyCode, shortcut.carbonModifiers,
                      shortcut.symbolString);
}

QByteArray encodeHotKeyShortcut(const HotKeyShortcut &shortcut) {
    QByteArray json;
    JsonWriter writer(JsonWriter::Style::Compact, [&](QByteArrayView bytes) { json += bytes; });
    writer.beginObject();
    writer.key("id");
    writer.value(shortcut.id);
    writer.key("name");
    writer.value(shortcut.name);
    writer.key("keyCode");
    writer.value(qint64{shortcut.keyCode});
    writer.key("carbonModifiers");
    writer.value(qint64{shortcut.carbonModifiers});
    writer.key("symbolString");
    writer.value(shortcut.symbolString);
    writer.endObject();
    writer.finish();
    return json;
}

std::optional<HotKeyShortcut> decodeHotKeyShortcut(const QByteArray &json) {
    if (json.size() > largestJson)
        return std::nullopt;
    dom::parser parser;
    dom::object object;
    if (parser.parse(json.constData(), static_cast<std::size_t>(json.size())).get(object))
        return std::nullopt;
    HotKeyShortcut shortcut;
    const bool isComplete = read(object, "id", shortcut.id) && read(object, "name", shortcut.name) &&
                            read(object, "keyCode", shortcut.keyCode) &&
                            read(object, "carbonModifiers", shortcut.carbonModifiers) &&
                            read(object, "symbolString", shortcut.symbolString);
    return isComplete ? std::optional(shortcut) : std::nullopt;
}

} // namespace lexiquill
