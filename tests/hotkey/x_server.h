#pragma once

#include <QProcess>
#include <QStringList>

#include <xcb/xtest.h>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace lexiquill {

/// A real X server on its own display, without a screen.
class XServer {
public:
    /// If `display` is empty, the server chooses a free one. With the default options, held keys repeat
    /// quickly.
    explicit XServer(const QString &display = {}, const QString &options = u"-ardelay 50 -arinterval 10"_s) {
        QStringList arguments = u"-displayfd 1 -nolisten tcp -noreset"_s.split(u' ') + options.split(u' ');
        if (!display.isEmpty())
            arguments.prepend(display);
        m_server.start(u"Xvfb"_s, arguments);
        while (!m_server.canReadLine() && m_server.waitForReadyRead(30'000)) {
        }
        m_display = u':' + QString::fromLatin1(m_server.readLine().trimmed());
    }
    ~XServer() { stop(); }

    const QString &display() const { return m_display; }
    bool isRunning() const { return m_display.size() > 1; }
    void stop() {
        m_server.kill();
        m_server.waitForFinished();
    }

    std::unique_ptr<QProcess> start(const QString &command) const {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, m_display);
        process->setProcessEnvironment(environment);
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->startCommand(command);
        return process;
    }
    /// Runs a program on this server to its end; false if it fails.
    bool run(const QString &command) const {
        const auto process = start(command);
        return process->waitForFinished(30'000) && process->exitCode() == 0;
    }

    /// Presses and releases keys like a keyboard. `keys`: key codes with "+" between them.
    void press(const QString &keys) const {
        hold(keys);
        release(keys);
    }
    void hold(const QString &keys) const { sendKeys(XCB_KEY_PRESS, keys.split(u'+')); }
    void release(const QString &keys) const {
        const QStringList down = keys.split(u'+');
        sendKeys(XCB_KEY_RELEASE, QStringList(down.crbegin(), down.crend()));
    }

private:
    void sendKeys(quint8 type, const QStringList &keys) const {
        xcb_connection_t *const connection = xcb_connect(m_display.toLatin1().constData(), nullptr);
        for (const QString &key : keys)
            xcb_test_fake_input(connection, type, static_cast<quint8>(key.toUInt()), XCB_CURRENT_TIME,
                                XCB_NONE, 0, 0, 0);
        // When this answer arrives, the server has processed all events.
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
        xcb_disconnect(connection);
    }

    QProcess m_server;
    QString m_display;
};

} // namespace lexiquill
