#pragma once

#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>

namespace lexiquill {

/// Keeps the keyboard of a window on items that can be seen and used. When the item with the keyboard is
/// hidden or disabled, the keyboard goes to the nearest item of the same screen or sheet, and comes back if
/// the item does before the next key.
class FocusGuard : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickWindow *window READ window WRITE setWindow NOTIFY windowChanged FINAL)
    Q_PROPERTY(QQuickItem *content READ content WRITE setContent NOTIFY contentChanged FINAL)

public:
    explicit FocusGuard(QObject *parent = nullptr);

    QQuickWindow *window() const { return m_window; }
    void setWindow(QQuickWindow *window);
    /// The item that gets the keyboard if there is no other.
    QQuickItem *content() const { return m_content; }
    void setContent(QQuickItem *content);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void windowChanged();
    void contentChanged();

private:
    void notice();
    void look();
    void follow(QQuickItem *item);
    void watch(const QQuickItem &item);
    void replace(QQuickItem &lost);
    void give(QQuickItem &item) const;

    QPointer<QQuickWindow> m_window;
    QPointer<QQuickItem> m_content;
    QPointer<QQuickItem> m_item;   ///< has the keyboard
    QPointer<QQuickItem> m_before; ///< the item before `m_item` in the order of the Tab key
    QPointer<QQuickItem>
        m_lost;                ///< had the keyboard until it was hidden or disabled; null after the next key
    bool m_showsFocus = false; ///< whether `m_item` shows a focus ring
    QTimer m_timer;
};

} // namespace lexiquill
