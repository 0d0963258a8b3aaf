#pragma once

#include "app/update/update_presenter.h"
#include "lookup/dictionary_source_mode.h"

#include <QDate>
#include <QObject>
#include <QQmlEngine>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <optional>
#include <utility>

namespace lexiquill {

class DictionaryImports;
struct Services;

/// The state of the main window's content: the selected screen, the word passed in from outside, and the
/// publishing to the desktop search.
class ContentView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(TabItem selectedTab READ selectedTab WRITE setSelectedTab NOTIFY selectedTabChanged)
    Q_PROPERTY(QString externalSelectedWord READ externalSelectedWord NOTIFY externalSelectedWordChanged)
    Q_PROPERTY(int dueCount READ dueCount NOTIFY dueCountChanged)
    Q_PROPERTY(bool isIndexingSpotlight READ isIndexingSpotlight NOTIFY isIndexingSpotlightChanged)
    Q_PROPERTY(QString spotlightAlertMessage READ spotlightAlertMessage NOTIFY spotlightAlertMessageChanged)
    Q_PROPERTY(bool showSpotlightAlert READ showSpotlightAlert WRITE setShowSpotlightAlert NOTIFY
                   showSpotlightAlertChanged)
    Q_PROPERTY(bool showAbout READ showAbout WRITE setShowAbout NOTIFY showAboutChanged)
    Q_PROPERTY(QString serverBase READ serverBase NOTIFY serverChanged)
    Q_PROPERTY(QString accountHelp READ accountHelp NOTIFY serverChanged)
    Q_PROPERTY(QString updateHelp READ updateHelp NOTIFY serverChanged)
    Q_PROPERTY(bool isSearching MEMBER m_isSearching NOTIFY isSearchingChanged)

public:
    /// In the order of the sidebar.
    enum class TabItem { Dictionary, WeeklyReview, History, Statistics };
    Q_ENUM(TabItem)

    ContentView(Services &services, DictionaryImports &imports, QObject *parent = nullptr);

    static ContentView *create(QQmlEngine *engine, QJSEngine *scripts);

    TabItem selectedTab() const { return m_selectedTab; }
    void setSelectedTab(TabItem tab);
    /// A word passed to the search screen from outside; null when there is none.
    const QString &externalSelectedWord() const { return m_externalSelectedWord; }
    /// The number of words that are due now.
    int dueCount() const { return m_dueCount; }
    bool isIndexingSpotlight() const { return m_isIndexingSpotlight; }
    const QString &spotlightAlertMessage() const { return m_spotlightAlertMessage; }
    bool showSpotlightAlert() const { return m_showSpotlightAlert; }
    void setShowSpotlightAlert(bool isShown);
    /// Whether the sheet about the program is shown.
    bool showAbout() const { return m_showAbout; }
    void setShowAbout(bool isShown);
    /// Whether a sheet is open above the screens. The screens must then leave the focus to it.
    Q_INVOKABLE bool hasSheet() const;
    /// The menu calls this when it opens or closes.
    Q_INVOKABLE void setIsMenuOpen(bool isOpen) { m_isMenuOpen = isOpen; }
    bool isMenuOpen() const { return m_isMenuOpen; }
    /// The server's base URL without a slash at the end; a placeholder if none is configured.
    QString serverBase() const;
    /// The help texts about the account and about updates: the server, or that there is none.
    QString accountHelp() const;
    QString updateHelp() const;
    UpdatePresenter &updates() { return m_updates; }

    /// "查词词典", "每周复习", "生词本与历史" or "记忆曲线"
    Q_INVOKABLE static QString title(lexiquill::ContentView::TabItem tab);
    Q_INVOKABLE static QString iconName(lexiquill::ContentView::TabItem tab);

    /// Title and icon of a dictionary source in the sidebar.
    Q_INVOKABLE static QString sourceTitle(lexiquill::DictionarySourceMode mode);
    Q_INVOKABLE static QString sourceIconName(lexiquill::DictionarySourceMode mode);

    /// Looks the word up on the search screen; a blank one changes nothing.
    Q_INVOKABLE void handleExternalWordLookup(const QString &word);
    /// Shows the flash cards with a practice of the records with these ids. Nothing happens without ids.
    Q_INVOKABLE void practice(const QStringList &ids);
    /// The ids of the practice that was asked for last; empty once they have been taken.
    Q_INVOKABLE QStringList takePractice() { return std::exchange(m_practiceIds, {}); }
    /// Shows the words of the wordbook with this tag.
    Q_INVOKABLE void showTaggedWords(const QString &tag);
    /// Returns the tag that was last passed to showTaggedWords(), but only once; empty when there is none.
    Q_INVOKABLE QString takeRequestedTag();
    /// Opens an address such as "lexiquill:apple" or "lexiquill://apple".
    void openUrl(const QString &address);
    /// Opens a result of the desktop search, such as "word:apple".
    void continueSearchActivity(const QString &itemIdentifier);
    /// The window has appeared: checks for updates and syncs, both silently.
    Q_INVOKABLE void appear();
    /// Publishes the wordbook and the common words to the desktop search, in the background.
    Q_INVOKABLE void syncToSpotlight();
    /// "FocusSearchInput": shows the search screen and focuses its field.
    Q_INVOKABLE void postFocusSearchInput();
    /// Shows the cards that are due.
    void showReview();
    /// "PerformExternalLookup": shows the search screen and looks the text up.
    void postPerformExternalLookup(const QString &text);

Q_SIGNALS:
    void selectedTabChanged();
    void serverChanged();
    void isSearchingChanged();
    void externalSelectedWordChanged();
    /// The wordbook must list the words with the requested tag.
    void tagRequested();
    void dueCountChanged();
    void isIndexingSpotlightChanged();
    void spotlightAlertMessageChanged();
    void showSpotlightAlertChanged();
    void showAboutChanged();
    void focusSearchInput();
    /// Emitted every half minute.
    void timePassed();
    /// Emitted on any thread; `count` items have been submitted.
    void spotlightBatchEnded(qsizetype count);
    /// The flash cards must begin the practice of takePractice().
    void practiceRequested();
    /// The search screen must look the word up, even if it is the same as before.
    void performExternalLookup(const QString &word);

private:
    bool hasOtherSheet() const;
    bool isQuiet() const;
    /// Also closes any sheet, because a sheet would keep the focus.
    void showScreen(TabItem tab);
    void setExternalSelectedWord(const QString &word);
    std::optional<QDate> today() const;
    void followClock();
    void countDueWords();
    void finishSpotlight(qsizetype count);

    Services &m_services;
    DictionaryImports &m_imports;
    UpdatePresenter m_updates;
    TabItem m_selectedTab = TabItem::Dictionary;
    QString m_externalSelectedWord;
    QStringList m_practiceIds;
    QString m_requestedTag;
    int m_dueCount = 0;
    bool m_isIndexingSpotlight = false;
    QString m_spotlightAlertMessage;
    bool m_isSearching = false; ///< the search screen shows something that the user asked for
    bool m_isMenuOpen = false;
    bool m_showSpotlightAlert = false;
    bool m_showAbout = false;
    QTimer m_dueTimer;
    std::optional<QDate> m_day; ///< the current day as the screens show it
};

} // namespace lexiquill
