#include "support/user_defaults.h"

#include <QDir>
#include <QStandardPaths>

namespace lexiquill {

UserDefaults::UserDefaults(const QString &filePath) : m_settings(filePath, QSettings::IniFormat) {}

QString UserDefaults::standardFilePath() {
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QDir(directory).filePath(QStringLiteral("Lexiquill/Lexiquill.conf"));
}

QString UserDefaults::string(const QString &key) const {
    const QVariant value = m_settings.value(key);
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

QStringList UserDefaults::stringList(const QString &key) const {
    return m_settings.value(key).toStringList();
}

void UserDefaults::set(const QString &key, const QString &value) {
    m_settings.setValue(key, value);
    m_settings.sync();
}

void UserDefaults::set(const QString &key, const QStringList &value) {
    m_settings.setValue(key, value);
    m_settings.sync();
}

void UserDefaults::refresh() {
    m_settings.sync();
}

} // namespace lexiquill
