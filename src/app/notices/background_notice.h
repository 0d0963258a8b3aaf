#pragma once

#include <QObject>
#include <QString>

namespace lexiquill {

class AppDelegate;
class TrayMenu;
struct Services;

/// Tells the user, when the window is closed for the first time ever, that the program stays in the
/// background and how to come back.
class BackgroundNotice : public QObject {
    Q_OBJECT

public:
    /// All arguments must outlive the instance.
    BackgroundNotice(Services &services, const TrayMenu &tray, AppDelegate &delegate);

    static const QString toldKey; ///< "lexiquill_background_told"

private:
    void tell();
    QString waysBack() const;

    Services &m_services;
    const TrayMenu &m_tray;
    AppDelegate &m_delegate;
};

} // namespace lexiquill
