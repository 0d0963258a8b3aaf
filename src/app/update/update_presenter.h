#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTimer>

#include <functional>

namespace lexiquill {

class UpdateManager;

/// Decides when the window shows the update sheet: at once if the user has asked for the check, otherwise
/// when nobody is typing or reading a definition. Until then the update waits behind a mark.
class UpdatePresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isPresented READ isPresented NOTIFY changed)
    Q_PROPERTY(bool isWaiting READ isWaiting NOTIFY changed)

public:
    /// `isQuiet`: whether the content of the window may be covered now.
    UpdatePresenter(UpdateManager &updater, std::function<bool()> isQuiet, QObject *parent = nullptr);

    static UpdatePresenter *create(QQmlEngine *engine, QJSEngine *scripts);

    /// Whether the sheet is shown.
    bool isPresented() const { return m_isPresented; }
    /// Whether there is an update that the user has not been shown yet, or a download behind the screens.
    bool isWaiting() const;

    /// The window of the sheet. During the first second of the sheet it gets no keys, because they were meant
    /// for what the sheet covers.
    Q_INVOKABLE void watch(QQuickWindow *window);
    /// Shows the update that waits; false when there is none.
    Q_INVOKABLE bool present();
    /// Closes the sheet because the user wants something else. A download goes on and waits behind the mark.
    void giveWay();

    bool eventFilter(QObject *receiver, QEvent *event) override;

Q_SIGNALS:
    void changed();

private:
    void follow();
    void presentWhenQuiet();
    bool isDisturbing() const;
    bool isDeaf() const;
    void setPresented(bool isPresented);

    UpdateManager &m_updater;
    std::function<bool()> m_isQuiet;
    QPointer<QQuickWindow> m_window;
    bool m_isPresented = false;
    bool m_isAnswered = false; ///< the sheet has been shown since the last check began
    bool m_isAside = false;    ///< the user has left the sheet while it downloads
    QElapsedTimer m_sinceActivity;
    QElapsedTimer m_sincePresented;
    QTimer m_attempts;
};

} // namespace lexiquill
