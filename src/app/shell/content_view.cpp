#include "app/shell/content_view.h"

#include "app/dictionaries/dictionary_imports.h"
#include "app/shell/app_context.h"
#include "app/shell/lent.h"
#include "app/shell/services.h"
#include "desktop_search/spotlight_manager.h"
#include "dictionaries/system_dictionary_service.h"
#include "hotkey/hot_key_manager.h"
#include "settings/server_settings.h"
#include "storage/current_weekly_plan.h"
#include "storage/storage_manager.h"
#include "storage/wordbook_change.h"
#include "support/background_task.h"
#include "sync/sync_manager.h"
#include "update/update_manager.h"

#include <QRegularExpression>
#include <QSet>
#include <QUrl>

#include <algorithm>
#include <chrono>
#include <utility>

namespace lexiquill {

using namespace std::chrono_literals;

namespace {

/// New records for the common words that are not in `words`.
QList<WordRecord> commonWords(const QList<WordRecord> &words, SystemDictionaryService &dictionary,
                              Instant now) {
    QSet<QString> known;
    for (const WordRecord &record : words)
        known += record.word.toLower();
    QList<WordRecord> records;
    for (const QString &word : SpotlightManager::commonHighFrequencyWords()) {
        if (known.contains(word.toLower()))
            continue;
        if (const auto entry = dictionary.lookup(word))
            records += newRecord({.entry = *entry, .date = now});
    }
    return records;
}

/// The word in an address: the host, or the last part of the path if there is no host. Examples:
/// "lexiquill://apple", "lexiquill:apple", "lexiquill:///word/apple". QUrl cannot be used: it rejects hosts
/// such as "ice%20cream" and changes others, because a word is not a host name.
QString wordOfAddress(const QString &address) {
    static const QRegularExpression form(QStringLiteral("^[^:]*:(?://(?:[^/?#@]*@)?([^/?#:]*))?([^?#]*)"));
    const QRegularExpressionMatch match = form.match(address);
    const QString host = match.captured(1);
    const QString word =
        host.isEmpty() ? match.captured(2).section(u'/', -1, -1, QString::SectionSkipEmpty) : host;
    return QUrl::fromPercentEncoding(word.toUtf8()).remove(QChar::Null);
}

} // namespace

ContentView::ContentView(Services &services, DictionaryImports &imports, QObject *parent)
    : QObject(parent),
      m_services(services),
      m_imports(imports),
      m_updates(services.updater, [this] { return isQuiet(); }) {
    connect(&m_services.servers, &ServerSettings::changed, this, &ContentView::serverChanged);
    connect(&m_services.storage, &StorageManager::wordsChanged, this, &ContentView::countDueWords);
    // Words become due as time passes.
    m_dueTimer.setInterval(30s);
    connect(&m_dueTimer, &QTimer::timeout, this, &ContentView::followClock);
    m_dueTimer.start();
    m_day = today();
    // The signal is emitted on a thread of the search index.
    connect(this, &ContentView::spotlightBatchEnded, this, &ContentView::finishSpotlight,
            Qt::QueuedConnection);
    countDueWords();
}

ContentView *ContentView::create(QQmlEngine *, QJSEngine *) {
    return lent(AppContext::current().content());
}

void ContentView::setSelectedTab(TabItem tab) {
    if (tab == m_selectedTab)
        return;
    m_selectedTab = tab;
    Q_EMIT selectedTabChanged();
}

void ContentView::setShowSpotlightAlert(bool isShown) {
    if (isShown == m_showSpotlightAlert)
        return;
    m_showSpotlightAlert = isShown;
    Q_EMIT showSpotlightAlertChanged();
}

void ContentView::setShowAbout(bool isShown) {
    if (std::exchange(m_showAbout, isShown) != isShown)
        Q_EMIT showAboutChanged();
}

bool ContentView::hasSheet() const {
    return hasOtherSheet() || m_updates.isPresented();
}

bool ContentView::hasOtherSheet() const {
    return m_services.hotKeys.showSettingsSheet() || m_services.sync.showAccountSheet() ||
           m_imports.showSheet() || m_showSpotlightAlert || m_showAbout;
}

bool ContentView::isQuiet() const {
    return !hasOtherSheet() && !m_isMenuOpen && (m_selectedTab != TabItem::Dictionary || !m_isSearching);
}

QString ContentView::serverBase() const {
    return m_services.servers.addresses().server;
}

QString ContentView::accountHelp() const {
    return m_services.servers.addresses().hasServer()
               ? QStringLiteral("登录/注册以在手机浏览器 (") + serverBase() +
                     QStringLiteral("/app) 继续在线背诵")
               : QStringLiteral("尚未设置服务器，设置后可登录并在手机浏览器中继续在线背诵");
}

QString ContentView::updateHelp() const {
    return m_services.servers.addresses().hasServer()
               ? QStringLiteral("检查远程 OTA 升级 (") + serverBase() + u')'
               : QStringLiteral("尚未设置服务器，无法检查更新");
}

QString ContentView::title(TabItem tab) {
    switch (tab) {
    case TabItem::Dictionary:
        return QStringLiteral("查词词典");
    case TabItem::WeeklyReview:
        return QStringLiteral("每周复习");
    case TabItem::History:
        return QStringLiteral("生词本与历史");
    case TabItem::Statistics:
        return QStringLiteral("记忆曲线");
    }
    return {};
}

QString ContentView::iconName(TabItem tab) {
    switch (tab) {
    case TabItem::Dictionary:
        return QStringLiteral("character.book.closed");
    case TabItem::WeeklyReview:
        return QStringLiteral("calendar.badge.clock");
    case TabItem::History:
        return QStringLiteral("list.bullet.rectangle");
    case TabItem::Statistics:
        return QStringLiteral("chart.line.uptrend.xyaxis");
    }
    return {};
}

QString ContentView::sourceTitle(DictionarySourceMode mode) {
    return shortTitle(mode);
}

QString ContentView::sourceIconName(DictionarySourceMode mode) {
    return lexiquill::iconName(mode);
}

void ContentView::handleExternalWordLookup(const QString &word) {
    const QString trimmed = word.trimmed();
    if (trimmed.isEmpty())
        return;
    showScreen(TabItem::Dictionary);
    setExternalSelectedWord(trimmed);
    Q_EMIT performExternalLookup(trimmed);
}

void ContentView::practice(const QStringList &ids) {
    if (ids.isEmpty())
        return;
    m_practiceIds = ids;
    showScreen(TabItem::WeeklyReview);
    Q_EMIT practiceRequested();
}

void ContentView::showTaggedWords(const QString &tag) {
    m_requestedTag = tag;
    setSelectedTab(TabItem::History);
    Q_EMIT tagRequested();
}

QString ContentView::takeRequestedTag() {
    return std::exchange(m_requestedTag, {});
}

void ContentView::openUrl(const QString &address) {
    handleExternalWordLookup(wordOfAddress(address));
}

void ContentView::continueSearchActivity(const QString &itemIdentifier) {
    QString word = itemIdentifier;
    handleExternalWordLookup(word.remove(QStringLiteral("word:")));
}

void ContentView::appear() {
    m_services.updater.checkForUpdates(false);
    if (m_services.sync.isLoggedIn())
        m_services.sync.syncWithCloud();
}

void ContentView::postFocusSearchInput() {
    showScreen(TabItem::Dictionary);
    setExternalSelectedWord({});
    Q_EMIT focusSearchInput();
}

void ContentView::showReview() {
    showScreen(TabItem::WeeklyReview);
}

void ContentView::postPerformExternalLookup(const QString &text) {
    handleExternalWordLookup(text);
}

void ContentView::syncToSpotlight() {
    if (m_isIndexingSpotlight)
        return;
    m_isIndexingSpotlight = true;
    Q_EMIT isIndexingSpotlightChanged();
    const auto publish = [this, words = m_services.storage.words(), now = m_services.storage.now(),
                          dictionary = &m_services.offlineDictionaries,
                          spotlight = &m_services.spotlight]() mutable {
        words += commonWords(words, *dictionary, now);
        spotlight->indexWordsBatch(words, [this](qsizetype count) { Q_EMIT spotlightBatchEnded(count); });
        return true;
    };
    runInBackground(this, publish, [](bool) {});
}

void ContentView::showScreen(TabItem tab) {
    m_services.hotKeys.setShowSettingsSheet(false);
    m_services.sync.setShowAccountSheet(false);
    m_updates.giveWay();
    m_imports.dismiss();
    setShowSpotlightAlert(false);
    setShowAbout(false);
    setSelectedTab(tab);
}

void ContentView::setExternalSelectedWord(const QString &word) {
    if (word == m_externalSelectedWord)
        return;
    m_externalSelectedWord = word;
    Q_EMIT externalSelectedWordChanged();
}

std::optional<QDate> ContentView::today() const {
    return m_services.storage.calendar().date(m_services.storage.now());
}

void ContentView::followClock() {
    countDueWords();
    // On a new day the plan changes, and so do all texts that count days.
    if (std::exchange(m_day, today()) != m_day)
        m_services.plan.refreshWeeklyPlan();
    Q_EMIT timePassed();
}

void ContentView::countDueWords() {
    const QList<WordRecord> &words = m_services.storage.words();
    const Instant now = m_services.storage.now();
    const auto count = static_cast<int>(
        std::ranges::count_if(words, [now](const WordRecord &record) { return record.isDue(now); }));
    if (count == m_dueCount)
        return;
    m_dueCount = count;
    Q_EMIT dueCountChanged();
}

void ContentView::finishSpotlight(qsizetype count) {
    m_isIndexingSpotlight = false;
    m_spotlightAlertMessage =
        QStringLiteral(
            "已成功向 macOS Spotlight 提交 %1 个词汇索引！现在按下 Command+空格 即可直接搜索这些单词。")
            .arg(count);
    Q_EMIT isIndexingSpotlightChanged();
    Q_EMIT spotlightAlertMessageChanged();
    setShowSpotlightAlert(true);
}

} // namespace lexiquill
