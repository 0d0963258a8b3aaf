#pragma once

#include <QImage>
#include <QList>
#include <QObject>
#include <QQmlEngine>

namespace lexiquill {

class AppDelegate;
class ContentView;
class WindowPreferences;
struct ActivationTokens;
struct Services;

/// The icon in the desktop's tray, if the desktop has one and the user wants it: look-up, cards that are due,
/// quit.
class TrayMenu : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Tray)
    QML_SINGLETON
    Q_PROPERTY(bool isAvailable READ isAvailable NOTIFY isAvailableChanged)

public:
    /// All arguments must outlive the instance.
    TrayMenu(Services &services, WindowPreferences &preferences, ContentView &content, AppDelegate &delegate);

    static TrayMenu *create(QQmlEngine *engine, QJSEngine *scripts);

    /// Whether the desktop has a tray now.
    bool isAvailable() const;
    /// Whether the icon is in it.
    bool isShown() const;

Q_SIGNALS:
    void isAvailableChanged();

private:
    void start();
    void update();
    void choose(qsizetype command, const ActivationTokens &tokens);

    Services &m_services;
    WindowPreferences &m_preferences;
    ContentView &m_content;
    AppDelegate &m_delegate;
    QList<QImage> m_images; ///< drawn when they are first needed
};

} // namespace lexiquill
