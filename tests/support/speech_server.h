#pragma once

#include "test.h"

#include <QLocalServer>
#include <QLocalSocket>

namespace lexiquill {

/// Answers like the system's speech service and speaks nothing. A speech begins at once and ends when it is
/// cancelled, or at once if `isQuick`. Its clients need the event loop of the test.
class SpeechServer : public QObject {
public:
    SpeechServer() {
        m_server.listen(m_directory.filePath(u"speechd.sock"_s));
        connect(&m_server, &QLocalServer::newConnection, this, [this] {
            QLocalSocket *const client = m_server.nextPendingConnection();
            connect(client, &QLocalSocket::readyRead, this, [this, client] {
                while (client->canReadLine())
                    answer(*client, client->readLine().chopped(2));
            });
        });
    }

    /// The value of SPEECHD_ADDRESS for its clients.
    QString address() const { return u"unix_socket:"_s + m_server.fullServerName(); }

    QString modules = u"espeak-ng"_s;
    bool isQuick = true;
    bool isSilent = false;   ///< accepts connections, but never answers
    QStringList languages;   ///< of all speeches
    QList<QByteArray> texts; ///< of all speeches, as they were sent
    int cancelled = 0;

private:
    void answer(QLocalSocket &client, const QByteArray &line) {
        if (isSilent)
            return;
        if (m_isText) {
            if (line == ".") {
                m_isText = false;
                client.write("225-1\r\n225 OK MESSAGE QUEUED\r\n701-1\r\n701-1\r\n701 BEGIN\r\n");
                if (isQuick)
                    client.write("702-1\r\n702-1\r\n702 END\r\n");
            } else {
                texts.append(line);
            }
        } else if (line.toUpper() == "SPEAK") {
            m_isText = true;
            client.write("230 OK RECEIVING DATA\r\n");
        } else if (line == "LIST OUTPUT_MODULES") {
            client.write("250-" + modules.toUtf8() + "\r\n250 OK MODULE LIST SENT\r\n");
        } else {
            if (line.startsWith("SET SELF LANGUAGE "))
                languages.append(QString::fromUtf8(line.sliced(18)));
            cancelled += line.startsWith("CANCEL") ? 1 : 0;
            client.write("200 OK\r\n");
        }
    }

    QTemporaryDir m_directory;
    QLocalServer m_server;
    bool m_isText = false;
};

} // namespace lexiquill
