#include "app/preferences/shortcut_editor.h"

#include "app/shell/services.h"
#include "hotkey/hot_key_manager.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStandardPaths>

#include <algorithm>

namespace lexiquill {

namespace {

QStringList ofPresets(QString HotKeyShortcut::*text) {
    QStringList texts;
    for (const HotKeyShortcut &preset : HotKeyShortcut::presets())
        texts += preset.*text;
    return texts;
}

} // namespace

ShortcutEditor::ShortcutEditor(QObject *parent) : QObject(parent), m_hotKeys(Services::current().hotKeys) {
    connect(&m_hotKeys, &HotKeyManager::currentShortcutChanged, this, [this] {
        showCurrent();
        Q_EMIT currentShortcutChanged();
    });
    showCurrent();
}

QStringList ShortcutEditor::presetNames() {
    return ofPresets(&HotKeyShortcut::name);
}

QStringList ShortcutEditor::presetSymbols() {
    return ofPresets(&HotKeyShortcut::symbolString);
}

int ShortcutEditor::currentPreset() const {
    return static_cast<int>(HotKeyShortcut::presets().indexOf(m_hotKeys.currentShortcut()));
}

void ShortcutEditor::choosePreset(int index) {
    const auto &presets = HotKeyShortcut::presets();
    if (index >= 0 && index < presets.size())
        m_hotKeys.updateShortcut(presets.at(index));
}

QStringList ShortcutEditor::keyNames() {
    QStringList names;
    for (const VirtualKey &key : virtualKeys())
        names += key.name.toString();
    return names;
}

void ShortcutEditor::setKeyIndex(int index) {
    if (index == m_keyIndex || index < 0 || static_cast<std::size_t>(index) >= virtualKeys().size())
        return;
    m_keyIndex = index;
    Q_EMIT customChanged();
}

void ShortcutEditor::useCustom() {
    if (hasModifier())
        m_hotKeys.updateShortcut(custom());
}

QString ShortcutEditor::launchCommand() {
    const QString program = QCoreApplication::applicationFilePath();
    const QString name = QFileInfo(program).fileName();
    const bool isOnPath = QFileInfo(QStandardPaths::findExecutable(name)).canonicalFilePath() ==
                          QFileInfo(program).canonicalFilePath();
    // Blanks and quotes would end the path for a shell.
    QString path = program;
    path = u'\'' + path.replace(u'\'', QStringLiteral("'\\''")) + u'\'';
    return (isOnPath ? name : path) + QStringLiteral(" --desktop-action=focus-search");
}

void ShortcutEditor::copyLaunchCommand() {
    QGuiApplication::clipboard()->setText(launchCommand());
}

HotKeyShortcut ShortcutEditor::custom() const {
    return HotKeyShortcut::custom(m_toggles, virtualKeys()[static_cast<std::size_t>(m_keyIndex)]);
}

void ShortcutEditor::showCurrent() {
    const HotKeyShortcut &current = m_hotKeys.currentShortcut();
    const auto has = [&](quint32 modifier) {
        return (current.carbonModifiers & modifier) != 0;
    };
    m_toggles = {.control = has(CarbonModifier::control),
                 .option = has(CarbonModifier::option),
                 .shift = has(CarbonModifier::shift),
                 .command = has(CarbonModifier::command)};
    const auto keys = virtualKeys();
    const auto key = std::ranges::find(keys, current.keyCode, &VirtualKey::code);
    if (key != keys.end())
        m_keyIndex = static_cast<int>(key - keys.begin());
    Q_EMIT customChanged();
}

void ShortcutEditor::toggle(bool &toggle, bool isOn) {
    if (toggle == isOn)
        return;
    toggle = isOn;
    Q_EMIT customChanged();
}

} // namespace lexiquill
