#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace lexiquill {

class UserDefaults;

/// The user's choices for the window. Each is stored at once; a missing or unusable stored value counts as
/// the default.
class WindowPreferences : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Preferences)
    QML_SINGLETON
    Q_PROPERTY(int roundSize READ roundSize WRITE setRoundSize NOTIFY roundSizeChanged)
    Q_PROPERTY(Accent accent READ accent WRITE setAccent NOTIFY accentChanged)
    Q_PROPERTY(
        bool pronouncesCards READ pronouncesCards WRITE setPronouncesCards NOTIFY pronouncesCardsChanged)
    Q_PROPERTY(bool showsTrayIcon READ showsTrayIcon WRITE setShowsTrayIcon NOTIFY showsTrayIconChanged)
    Q_PROPERTY(bool remindsDaily READ remindsDaily WRITE setRemindsDaily NOTIFY remindsDailyChanged)
    Q_PROPERTY(int listWidth READ listWidth WRITE setListWidth NOTIFY listWidthChanged)
    Q_PROPERTY(int zoomPercent READ zoomPercent WRITE setZoomPercent NOTIFY zoomPercentChanged)

public:
    enum class Accent { British, American };
    Q_ENUM(Accent)

    static constexpr int defaultRoundSize = 50;
    static constexpr int largestRoundSize = 1000;
    static constexpr int largestListWidth = 10'000;
    static constexpr int smallestZoom = 60;
    static constexpr int largestZoom = 200;

    /// `defaults` must outlive the instance.
    explicit WindowPreferences(UserDefaults &defaults, QObject *parent = nullptr);

    static WindowPreferences *create(QQmlEngine *engine, QJSEngine *scripts);

    /// The number of flash cards in a round, 1 to `largestRoundSize`.
    int roundSize() const;
    void setRoundSize(int size);
    /// The accent that is heard first.
    Accent accent() const;
    void setAccent(Accent accent);
    /// Whether a card pronounces its word when it opens.
    bool pronouncesCards() const;
    void setPronouncesCards(bool isOn);
    /// Whether an icon stands in the desktop's tray, if it has one.
    bool showsTrayIcon() const;
    void setShowsTrayIcon(bool isOn);
    /// Whether a notification tells once a day how many words are due.
    bool remindsDaily() const;
    void setRemindsDaily(bool isOn);
    /// The width of the wordbook's list in points; 0 for the usual one.
    int listWidth() const;
    void setListWidth(int width);
    /// The size of everything in percent, `smallestZoom` to `largestZoom`.
    int zoomPercent() const;
    void setZoomPercent(int percent);

Q_SIGNALS:
    void roundSizeChanged();
    void accentChanged();
    void pronouncesCardsChanged();
    void showsTrayIconChanged();
    void remindsDailyChanged();
    void listWidthChanged();
    void zoomPercentChanged();

private:
    bool isOn(const QString &key) const;
    /// Stores a value; returns whether it differs from the one before.
    bool store(const QString &key, const QString &value);

    UserDefaults &m_defaults;
};

} // namespace lexiquill
