#include "app/preferences/window_preferences.h"

#include "app/shell/app_context.h"
#include "app/shell/lent.h"
#include "settings/user_defaults.h"

#include <algorithm>

namespace lexiquill {

namespace {

const QString roundSizeKey = QStringLiteral("lexiquill_round_size");
const QString accentKey = QStringLiteral("lexiquill_accent");
const QString pronouncesCardsKey = QStringLiteral("lexiquill_pronounces_cards");
const QString showsTrayIconKey = QStringLiteral("lexiquill_tray_icon");
const QString remindsDailyKey = QStringLiteral("lexiquill_daily_reminder");
const QString listWidthKey = QStringLiteral("lexiquill_list_width");
const QString zoomKey = QStringLiteral("lexiquill_zoom_percent");

const QString british = QStringLiteral("british");
const QString american = QStringLiteral("american");

QString textOf(bool isOn) {
    return isOn ? QStringLiteral("true") : QStringLiteral("false");
}

/// The stored number, or `usual` without a number in the range.
int number(const UserDefaults &defaults, const QString &key, int smallest, int largest, int usual) {
    bool isNumber = false;
    const int stored = defaults.string(key).toInt(&isNumber);
    return isNumber && stored >= smallest && stored <= largest ? stored : usual;
}

} // namespace

WindowPreferences::WindowPreferences(UserDefaults &defaults, QObject *parent)
    : QObject(parent),
      m_defaults(defaults) {}

WindowPreferences *WindowPreferences::create(QQmlEngine *, QJSEngine *) {
    return lent(AppContext::current().preferences());
}

int WindowPreferences::roundSize() const {
    return number(m_defaults, roundSizeKey, 1, largestRoundSize, defaultRoundSize);
}

void WindowPreferences::setRoundSize(int size) {
    if (store(roundSizeKey, QString::number(std::clamp(size, 1, largestRoundSize))))
        Q_EMIT roundSizeChanged();
}

WindowPreferences::Accent WindowPreferences::accent() const {
    return m_defaults.string(accentKey) == british ? Accent::British : Accent::American;
}

void WindowPreferences::setAccent(Accent accent) {
    if (store(accentKey, accent == Accent::British ? british : american))
        Q_EMIT accentChanged();
}

bool WindowPreferences::pronouncesCards() const {
    return isOn(pronouncesCardsKey);
}

void WindowPreferences::setPronouncesCards(bool isOn) {
    if (store(pronouncesCardsKey, textOf(isOn)))
        Q_EMIT pronouncesCardsChanged();
}

bool WindowPreferences::showsTrayIcon() const {
    return isOn(showsTrayIconKey);
}

void WindowPreferences::setShowsTrayIcon(bool isOn) {
    if (store(showsTrayIconKey, textOf(isOn)))
        Q_EMIT showsTrayIconChanged();
}

bool WindowPreferences::remindsDaily() const {
    return isOn(remindsDailyKey);
}

void WindowPreferences::setRemindsDaily(bool isOn) {
    if (store(remindsDailyKey, textOf(isOn)))
        Q_EMIT remindsDailyChanged();
}

int WindowPreferences::listWidth() const {
    return number(m_defaults, listWidthKey, 0, largestListWidth, 0);
}

void WindowPreferences::setListWidth(int width) {
    if (store(listWidthKey, QString::number(std::clamp(width, 0, largestListWidth))))
        Q_EMIT listWidthChanged();
}

int WindowPreferences::zoomPercent() const {
    return number(m_defaults, zoomKey, smallestZoom, largestZoom, 100);
}

void WindowPreferences::setZoomPercent(int percent) {
    if (store(zoomKey, QString::number(std::clamp(percent, smallestZoom, largestZoom))))
        Q_EMIT zoomPercentChanged();
}

bool WindowPreferences::isOn(const QString &key) const {
    return m_defaults.string(key) == QLatin1StringView("true");
}

bool WindowPreferences::store(const QString &key, const QString &value) {
    if (m_defaults.string(key) == value)
        return false;
    m_defaults.set(key, value);
    return true;
}

} // namespace lexiquill
