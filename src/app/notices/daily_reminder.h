#pragma once

#include <QObject>
#include <QString>

namespace lexiquill {

class AppDelegate;
class ContentView;
class WindowPreferences;
struct Services;

/// Tells the user once a day how many words are due, if the user wants that.
class DailyReminder : public QObject {
    Q_OBJECT

public:
    /// All arguments must outlive the instance.
    DailyReminder(Services &services, WindowPreferences &preferences, ContentView &content,
                  AppDelegate &delegate);

    static const QString dayKey; ///< "lexiquill_last_reminder", a date such as "2025-03-14"

private:
    void check();
    /// Whether the user has the cards before his eyes.
    bool isReviewing() const;

    Services &m_services;
    WindowPreferences &m_preferences;
    ContentView &m_content;
    AppDelegate &m_delegate;
    bool m_isLaunched = false;
};

} // namespace lexiquill
