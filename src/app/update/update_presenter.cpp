#include "app/update/update_presenter.h"

#include "app/shell/app_context.h"
#include "app/shell/lent.h"
#include "update/update_manager.h"

#include <QGuiApplication>
#include <QQuickItem>

#include <algorithm>
#include <chrono>
#include <utility>

namespace lexiquill {

using namespace std::chrono_literals;

namespace {

/// How long after the last key, or after the window has come forward, nobody counts as typing.
constexpr auto pauseInTyping = 3s;
constexpr auto deafTime = 1s;
constexpr auto timeBetweenAttempts = 500ms;

/// Whether a text field with the focus contains a text, also one that an input method is composing.
bool isTextInProgress(const QQuickItem &item) {
    return item.flags().testFlag(QQuickItem::ItemAcceptsInputMethod) &&
           (!item.property("text").toString().isEmpty() || item.property("inputMethodComposing").toBool());
}

/// Whether a menu, a list of choices or another popup is open.
bool hasPopup(const QQuickWindow &window) {
    const auto items = window.contentItem()->childItems();
    return std::any_of(items.begin(), items.end(), [](const QQuickItem *item) {
        return item->inherits("QQuickOverlay") && item->isVisible();
    });
}

} // namespace

UpdatePresenter::UpdatePresenter(UpdateManager &updater, std::function<bool()> isQuiet, QObject *parent)
    : QObject(parent),
      m_updater(updater),
      m_isQuiet(std::move(isQuiet)) {
    m_attempts.setInterval(timeBetweenAttempts);
    connect(&m_attempts, &QTimer::timeout, this, &UpdatePresenter::presentWhenQuiet);
    connect(&m_updater, &UpdateManager::showUpdateSheetChanged, this, &UpdatePresenter::follow);
    // A check by the user that finds the waiting update again changes nothing else.
    connect(&m_updater, &UpdateManager::isCheckingChanged, this, [this] {
        if (m_updater.isChecking())
            m_isAnswered = false;
    });
    connect(&m_updater, &UpdateManager::isCheckingChanged, this, &UpdatePresenter::follow,
            Qt::QueuedConnection);
    connect(&m_updater, &UpdateManager::isDownloadingChanged, this, [this] {
        if (!m_updater.isDownloading())
            m_isAside = false;
        follow();
    });
    follow();
}

UpdatePresenter *UpdatePresenter::create(QQmlEngine *, QJSEngine *) {
    return lent(AppContext::current().content().updates());
}

bool UpdatePresenter::isWaiting() const {
    return m_updater.showUpdateSheet() && !m_isPresented;
}

void UpdatePresenter::watch(QQuickWindow *window) {
    m_window = window;
    m_window->installEventFilter(this);
    m_sinceActivity.start();
    follow();
}

bool UpdatePresenter::present() {
    if (!isWaiting())
        return false;
    setPresented(true);
    return true;
}

void UpdatePresenter::giveWay() {
    if (!m_isPresented)
        return;
    m_isAside = m_updater.isDownloading();
    if (m_isAside)
        setPresented(false);
    else
        m_updater.setShowUpdateSheet(false);
}

bool UpdatePresenter::eventFilter(QObject *receiver, QEvent *event) {
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        if (isDeaf())
            return true;
        m_sinceActivity.start();
        break;
    case QEvent::Show:
        follow();
        [[fallthrough]];
    case QEvent::FocusIn:
        m_sinceActivity.start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(receiver, event);
}

void UpdatePresenter::follow() {
    if (!m_updater.showUpdateSheet())
        setPresented(false);
    else if (m_updater.isCheckManual() && !m_updater.isChecking() && !m_isAnswered)
        setPresented(true);
    if (isWaiting() && !m_isAside && !m_attempts.isActive())
        m_attempts.start();
    else if (!isWaiting() || m_isAside)
        m_attempts.stop();
    Q_EMIT changed();
}

void UpdatePresenter::presentWhenQuiet() {
    if (!m_window || !m_window->isVisible())
        m_attempts.stop();
    else if (!isDisturbing())
        present();
}

/// Whether the sheet would cover what the user is doing now.
bool UpdatePresenter::isDisturbing() const {
    if (!m_isQuiet() || hasPopup(*m_window) || QGuiApplication::modalWindow() != nullptr)
        return true;
    const QQuickItem *const item = m_window->activeFocusItem();
    return !m_sinceActivity.hasExpired(std::chrono::milliseconds(pauseInTyping).count()) ||
           (item != nullptr && isTextInProgress(*item));
}

bool UpdatePresenter::isDeaf() const {
    return m_isPresented && !m_sincePresented.hasExpired(std::chrono::milliseconds(deafTime).count());
}

void UpdatePresenter::setPresented(bool isPresented) {
    if (std::exchange(m_isPresented, isPresented) == isPresented)
        return;
    if (isPresented) {
        m_isAside = false;
        m_isAnswered = true;
        m_attempts.stop();
        m_sincePresented.start();
    }
    Q_EMIT changed();
}

} // namespace lexiquill
