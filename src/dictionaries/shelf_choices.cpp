#include "dictionaries/shelf_choices.h"

#include <QFileInfo>

#include <algorithm>

namespace lexiquill {

const QString ShelfChoices::orderKey = QStringLiteral("lexiquill_dictionary_order");
const QString ShelfChoices::offKey = QStringLiteral("lexiquill_dictionaries_off");

namespace {

bool isFile(const QString &chosen, const QString &path) {
    return chosen == path || (chosen.contains(u'/') && QFileInfo(chosen) == QFileInfo(path));
}

} // namespace

qsizetype ShelfChoices::Choices::rankOf(const QString &path, const QString &name) const {
    const auto found = std::find_if(order.begin(), order.end(), [&](const QString &chosen) {
        return chosen.trimmed().compare(name.trimmed(), Qt::CaseInsensitive) == 0 || isFile(chosen, path);
    });
    return found == order.end() ? -1 : found - order.begin();
}

bool ShelfChoices::Choices::isOff(const QString &path) const {
    return std::any_of(off.begin(), off.end(), [&path](const QString &each) { return isFile(each, path); });
}

ShelfChoices::ShelfChoices(const QString &settingsFile) : m_settingsFile(settingsFile) {}

/// Null without a settings file.
UserDefaults *ShelfChoices::defaults() {
    if (!m_defaults && !m_settingsFile.isEmpty())
        m_defaults = std::make_unique<UserDefaults>(m_settingsFile);
    else if (m_defaults)
        m_defaults->refresh();
    return m_defaults.get();
}

ShelfChoices::Choices ShelfChoices::current() {
    const std::lock_guard lock(m_mutex);
    const UserDefaults *const values = defaults();
    return values == nullptr
               ? Choices()
               : Choices{.order = values->stringList(orderKey), .off = values->stringList(offKey)};
}

void ShelfChoices::setOrder(const QStringList &paths) {
    const std::lock_guard lock(m_mutex);
    if (UserDefaults *const values = defaults())
        values->set(orderKey, paths);
}

void ShelfChoices::setOn(const QString &path, bool isOn) {
    const std::lock_guard lock(m_mutex);
    UserDefaults *const values = defaults();
    if (values == nullptr)
        return;
    QStringList off = values->stringList(offKey);
    off.removeIf([&path](const QString &each) { return isFile(each, path); });
    if (!isOn)
        off += path;
    values->set(offKey, off);
}

} // namespace lexiquill
