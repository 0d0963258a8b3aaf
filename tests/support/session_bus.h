#pragma once

#include "test.h"

#include <QDBusConnection>
#include <QProcess>

namespace lexiquill {

/// A private session bus.
class SessionBus {
public:
    /// The bus starts the services of the .service files in the directories `services` on demand.
    explicit SessionBus(const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment(),
                        const QStringList &services = {}) {
        QString directories;
        for (const QString &directory : services)
            directories += u"<servicedir>%1</servicedir>"_s.arg(directory.toHtmlEscaped());
        const QString configuration = m_directory.filePath(u"bus.conf"_s);
        writeFile(configuration,
                  u"<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>"
                  "%1<policy context='default'><allow send_destination='*'/>"
                  "<allow receive_sender='*'/><allow own='*'/></policy></busconfig>"_s.arg(directories)
                      .toUtf8());
        m_daemon.setProcessEnvironment(environment);
        m_daemon.start(u"dbus-daemon"_s,
                       {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + configuration});
        while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(30'000)) {
        }
        m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
    }
    ~SessionBus() { stop(); }
    Q_DISABLE_COPY_MOVE(SessionBus)

    const QString &address() const { return m_address; }
    QDBusConnection connect(const QString &name) const {
        return QDBusConnection::connectToBus(m_address, name);
    }
    void stop() {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

private:
    QTemporaryDir m_directory;
    QProcess m_daemon;
    QString m_address;
};

} // namespace lexiquill
