#pragma once

#include "platform/hot_key_registrar.h"
#include "platform/virtual_key.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace lexiquill {

/// One key combination for the system-wide hotkey.
struct HotKeyShortcut {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(quint32 keyCode MEMBER keyCode)
    Q_PROPERTY(quint32 carbonModifiers MEMBER carbonModifiers)
    Q_PROPERTY(QString symbolString MEMBER symbolString)

public:
    /// The modifiers that the user has switched on for a custom shortcut.
    struct Toggles {
        bool control = false;
        bool option = false;
        bool shift = false;
        bool command = false;
    };

    QString id;
    QString name;                ///< label in the preferences sheet
    quint32 keyCode = 0;         ///< code of a `VirtualKey`
    quint32 carbonModifiers = 0; ///< bits of `CarbonModifier`
    QString symbolString;        ///< compact form, such as "⌥ Space"

    /// The combinations that are offered by default, the recommended one first.
    static const QList<HotKeyShortcut> &presets();
    static const HotKeyShortcut &defaultShortcut();
    /// A custom combination. Its symbols are in the order control, option, shift, command.
    static HotKeyShortcut custom(Toggles toggles, const VirtualKey &key);

    friend bool operator==(const HotKeyShortcut &, const HotKeyShortcut &) = default;
};

/// A hash of all fields.
size_t qHash(const HotKeyShortcut &shortcut, size_t seed = 0);

/// Compact JSON with the fields' names as keys.
QByteArray encodeHotKeyShortcut(const HotKeyShortcut &shortcut);
/// No value unless the text is a JSON object that contains every field with a valid type and range.
std::optional<HotKeyShortcut> decodeHotKeyShortcut(const QByteArray &json);

} // namespace lexiquill
