#pragma once

#include "hotkey/hot_key_shortcut.h"

#include <QObject>
#include <QQmlEngine>
#include <QStringList>

namespace lexiquill {

class HotKeyManager;

/// Lets the user choose the system-wide hotkey: a preset, or a custom combination of modifiers and a key.
class ShortcutEditor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QStringList presetNames READ presetNames CONSTANT)
    Q_PROPERTY(QStringList presetSymbols READ presetSymbols CONSTANT)
    Q_PROPERTY(int currentPreset READ currentPreset NOTIFY currentShortcutChanged)
    Q_PROPERTY(QStringList keyNames READ keyNames CONSTANT)
    Q_PROPERTY(int keyIndex READ keyIndex WRITE setKeyIndex NOTIFY customChanged)
    Q_PROPERTY(bool control READ control WRITE setControl NOTIFY customChanged)
    Q_PROPERTY(bool option READ option WRITE setOption NOTIFY customChanged)
    Q_PROPERTY(bool shift READ shift WRITE setShift NOTIFY customChanged)
    Q_PROPERTY(bool command READ command WRITE setCommand NOTIFY customChanged)
    Q_PROPERTY(QString symbolString READ symbolString NOTIFY customChanged)
    Q_PROPERTY(bool hasModifier READ hasModifier NOTIFY customChanged)
    Q_PROPERTY(QString launchCommand READ launchCommand CONSTANT)

public:
    /// The custom shortcut starts as the current one.
    explicit ShortcutEditor(QObject *parent = nullptr);

    static QStringList presetNames();
    static QStringList presetSymbols();
    /// The position of the current shortcut among the presets; -1 when it is the user's own.
    int currentPreset() const;
    /// Makes a preset the current shortcut.
    Q_INVOKABLE void choosePreset(int index);

    static QStringList keyNames();
    /// The custom shortcut's key, a position in `keyNames`.
    int keyIndex() const { return m_keyIndex; }
    void setKeyIndex(int index);
    bool control() const { return m_toggles.control; }
    void setControl(bool isOn) { toggle(m_toggles.control, isOn); }
    bool option() const { return m_toggles.option; }
    void setOption(bool isOn) { toggle(m_toggles.option, isOn); }
    bool shift() const { return m_toggles.shift; }
    void setShift(bool isOn) { toggle(m_toggles.shift, isOn); }
    bool command() const { return m_toggles.command; }
    void setCommand(bool isOn) { toggle(m_toggles.command, isOn); }
    /// The custom shortcut as symbols.
    QString symbolString() const { return custom().symbolString; }
    /// Whether the custom shortcut has a modifier. Without one it would block its key in every program.
    bool hasModifier() const { return custom().carbonModifiers != 0; }
    /// Makes the custom shortcut the current one; does nothing when it has no modifier.
    Q_INVOKABLE void useCustom();

    /// The command that does what the hotkey does, for the desktop's own shortcuts.
    static QString launchCommand();
    /// Puts that command on the clipboard.
    Q_INVOKABLE static void copyLaunchCommand();

Q_SIGNALS:
    void currentShortcutChanged();
    void customChanged();

private:
    HotKeyShortcut custom() const;
    void showCurrent();
    void toggle(bool &toggle, bool isOn);

    HotKeyManager &m_hotKeys;
    HotKeyShortcut::Toggles m_toggles;
    int m_keyIndex = 0;
};

} // namespace lexiquill
