#include "app/shell/focus_guard.h"

#include <utility>

namespace lexiquill {

namespace {

bool isUsable(const QQuickItem *item) {
    return item != nullptr && item->isVisible() && item->isEnabled();
}

/// The focus scope around an item; null if there is none.
QQuickItem *scopeAround(const QQuickItem &item) {
    QQuickItem *scope = item.parentItem();
    while (scope != nullptr && !scope->isFocusScope())
        scope = scope->parentItem();
    return scope;
}

/// Whether a scope is a whole screen or the content of a whole sheet.
bool isScreen(const QQuickItem &scope) {
    // Other loaders hold parts of a screen.
    return (scope.inherits("QQuickLoader") && scope.property("tab").isValid()) ||
           (scope.parentItem() != nullptr && scope.parentItem()->inherits("QQuickPopupItem"));
}

/// The item that shall have the keyboard instead of `lost`: the one before it in the order of the Tab key,
/// else the one after it, in the innermost scope that has one; else the screen.
QQuickItem *nearest(const QQuickItem &lost) {
    for (QQuickItem *scope = scopeAround(lost); scope != nullptr; scope = scopeAround(*scope)) {
        if (!isUsable(scope))
            continue;
        for (const bool isForward : {false, true}) {
            QQuickItem *const item = const_cast<QQuickItem &>(lost).nextItemInFocusChain(isForward);
            if (item != &lost && isUsable(item) && scope->isAncestorOf(item))
                return item;
        }
        if (isScreen(*scope))
            return scope;
    }
    return nullptr;
}

} // namespace

FocusGuard::FocusGuard(QObject *parent) : QObject(parent) {
    // Later, because a screen that hides one item often gives the keyboard to another itself.
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &FocusGuard::look);
}

void FocusGuard::setWindow(QQuickWindow *window) {
    if (window == m_window)
        return;
    if (m_window != nullptr) {
        m_window->removeEventFilter(this);
        disconnect(m_window, nullptr, this, nullptr);
    }
    m_window = window;
    if (window != nullptr) {
        window->installEventFilter(this);
        connect(window, &QQuickWindow::activeFocusItemChanged, this, &FocusGuard::notice);
        m_timer.start();
    }
    Q_EMIT windowChanged();
}

void FocusGuard::setContent(QQuickItem *content) {
    if (content == m_content)
        return;
    m_content = content;
    Q_EMIT contentChanged();
}

bool FocusGuard::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::KeyPress)
        m_lost = nullptr;
    return QObject::eventFilter(watched, event);
}

void FocusGuard::notice() {
    m_timer.start();
    QQuickItem *const now = m_window->activeFocusItem();
    // A scope may have the keyboard only because the item inside it has lost it.
    if (isUsable(now) && (!now->isFocusScope() || now->activeFocusOnTab()))
        follow(now);
}

void FocusGuard::look() {
    if (m_window == nullptr || !m_window->isActive())
        return;
    QQuickItem *const now = m_window->activeFocusItem();
    if (now == nullptr)
        return;
    if (!isUsable(now))
        replace(*now);
    // A disabled item passes the keyboard to the scope around it, where no key has an effect.
    else if (m_item != nullptr && !m_item->isEnabled() && m_item->hasFocus() && now->isAncestorOf(m_item))
        replace(*m_item);
    // So does an item that is destroyed.
    else if (m_item == nullptr && isScreen(*now) && isUsable(m_before) && now->isAncestorOf(m_before))
        give(*m_before);
    else if (m_lost != nullptr && now == m_item && isUsable(m_lost))
        give(*std::exchange(m_lost, nullptr));
    else
        follow(now);
}

void FocusGuard::follow(QQuickItem *item) {
    m_showsFocus = item->property("visualFocus").toBool();
    if (item == m_item)
        return;
    m_lost = nullptr;
    m_item = item;
    m_before = item->nextItemInFocusChain(false);
    watch(*item);
}

void FocusGuard::watch(const QQuickItem &item) {
    for (const auto signal : {&QQuickItem::visibleChanged, &QQuickItem::enabledChanged})
        connect(&item, signal, &m_timer, qOverload<>(&QTimer::start), Qt::UniqueConnection);
}

void FocusGuard::replace(QQuickItem &lost) {
    QQuickItem *item = nearest(lost);
    if (item == nullptr)
        item = m_content;
    if (item == nullptr)
        return;
    lost.setFocus(false);
    give(*item);
    if (QQuickItem *const now = m_window->activeFocusItem())
        follow(now);
    m_lost = &lost;
}

void FocusGuard::give(QQuickItem &item) const {
    item.forceActiveFocus(m_showsFocus ? Qt::TabFocusReason : Qt::OtherFocusReason);
}

} // namespace lexiquill
