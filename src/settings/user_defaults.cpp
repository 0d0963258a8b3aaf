#include "settings/user_defaults.h"

#include "platform/durable_file.h"
#include "settings/ini_format.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace lexiquill {

namespace {

constexpr std::chrono::seconds lockPatience{1};

} // namespace

UserDefaults::UserDefaults(const QString &filePath) : m_path(resolvedFile(filePath)) {
    refresh();
}

QString UserDefaults::standardFilePath() {
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QDir(directory).filePath(QStringLiteral("Lexiquill/Lexiquill.conf"));
}

QString UserDefaults::string(const QString &key) const {
    const QVariant value = m_values.value(key);
    if (value.typeId() != QMetaType::QString)
        return {};
    const QString text = value.toString();
    return text.isNull() ? QStringLiteral("") : text;
}

QStringList UserDefaults::stringList(const QString &key) const {
    return m_values.value(key).toStringList();
}

QByteArray UserDefaults::byteArray(const QString &key) const {
    const QVariant value = m_values.value(key);
    return value.typeId() == QMetaType::QByteArray ? value.toByteArray() : QByteArray();
}

void UserDefaults::set(const QString &key, const QString &value) {
    change(key, value);
}

void UserDefaults::set(const QString &key, const QStringList &value) {
    change(key, value);
}

void UserDefaults::set(const QString &key, const QByteArray &value) {
    change(key, value);
}

void UserDefaults::remove(const QString &key) {
    change(key, QVariant());
}

void UserDefaults::change(const QString &key, const QVariant &value) {
    m_unsaved.insert(key, value);
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    const auto lock = FileLock::acquire(m_path + QStringLiteral(".lock"), lockPatience);
    refresh();
    if (lock && write()) {
        m_unsaved.clear();
        m_snapshot = FileSnapshot::open(m_path);
    }
}

bool UserDefaults::write() const {
    return replaceFile(m_path, iniText(m_values), {.access = DurableFile::Access::OwnerOnly}) ==
           DurableFile::Problem::None;
}

void UserDefaults::refresh() {
    if (!m_snapshot || !m_snapshot->isStillAt(m_path)) {
        m_snapshot = FileSnapshot::open(m_path);
        const auto text = m_snapshot ? m_snapshot->readAll(0) : std::nullopt;
        m_values = text ? iniValues(*text) : QVariantMap();
    }
    for (auto iterator = m_unsaved.cbegin(); iterator != m_unsaved.cend(); ++iterator) {
        if (iterator.value().isValid())
            m_values.insert(iterator.key(), iterator.value());
        else
            m_values.remove(iterator.key());
    }
}

} // namespace lexiquill
