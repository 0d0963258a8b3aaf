#pragma once

#include <QObject>
#include <QQmlEngine>

#include <optional>

class QGuiApplication;

namespace lexiquill {

/// Whether the desktop is light or dark.
class DesktopAppearance : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isDark READ isDark NOTIFY isDarkChanged)

public:
    explicit DesktopAppearance(QGuiApplication &application);

    static DesktopAppearance *create(QQmlEngine *engine, QJSEngine *scripts);

    bool isDark() const { return m_isDark; }
    /// Sets what the desktop prefers. This overrides the guess from its colours; no value restores the guess.
    void setPreference(std::optional<bool> isDark);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void isDarkChanged();

private:
    void update();

    std::optional<bool> m_preference;
    bool m_isDark = false;
};

} // namespace lexiquill
