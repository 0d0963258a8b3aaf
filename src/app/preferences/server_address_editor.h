#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace lexiquill {

class ServerSettings;

/// The addresses of the servers as the user has set them.
class ServerAddressEditor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString youdaoText READ youdaoText NOTIFY changed)
    Q_PROPERTY(QString serverText READ serverText NOTIFY changed)
    Q_PROPERTY(QString builtInYoudao READ builtInYoudao CONSTANT)
    Q_PROPERTY(QString builtInServer READ builtInServer CONSTANT)

public:
    explicit ServerAddressEditor(QObject *parent = nullptr);

    /// As stored; empty while the built-in address is used.
    QString youdaoText() const;
    QString serverText() const;
    static QString builtInYoudao();
    /// Empty when the program has been built without a server of its own.
    static QString builtInServer();

    /// Why the text cannot be stored, for the user; empty when it can.
    Q_INVOKABLE static QString problem(const QString &text);
    /// Stores an address, which is used from now on; blank text restores the built-in one. False when the
    /// address is not acceptable.
    Q_INVOKABLE bool storeYoudao(const QString &text);
    Q_INVOKABLE bool storeServer(const QString &text);

Q_SIGNALS:
    void changed();

private:
    bool store(const QString &key, const QString &text);

    ServerSettings &m_servers;
};

} // namespace lexiquill
