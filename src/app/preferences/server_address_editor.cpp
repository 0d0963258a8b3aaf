#include "app/preferences/server_address_editor.h"

#include "app/shell/services.h"
#include "settings/server_settings.h"
#include "support/web_address.h"

#include <QUrl>

namespace lexiquill {

ServerAddressEditor::ServerAddressEditor(QObject *parent)
    : QObject(parent),
      m_servers(Services::current().servers) {
    m_servers.reload();
}

QString ServerAddressEditor::youdaoText() const {
    return m_servers.stored(ServerAddresses::youdaoKey);
}

QString ServerAddressEditor::serverText() const {
    return m_servers.stored(ServerAddresses::serverKey);
}

QString ServerAddressEditor::builtInYoudao() {
    return ServerAddresses::builtIn().youdao;
}

QString ServerAddressEditor::builtInServer() {
    const QString server = ServerAddresses::builtIn().server;
    return isReservedHost(QUrl(server)) ? QString() : server;
}

QString ServerAddressEditor::problem(const QString &text) {
    if (text.trimmed().isEmpty() || ServerAddresses::acceptableBase(text))
        return {};
    return QStringLiteral("请输入 https:// 开头的地址；只有本机地址可以用 http://");
}

bool ServerAddressEditor::storeYoudao(const QString &text) {
    return store(ServerAddresses::youdaoKey, text);
}

bool ServerAddressEditor::storeServer(const QString &text) {
    return store(ServerAddresses::serverKey, text);
}

bool ServerAddressEditor::store(const QString &key, const QString &text) {
    const bool isStored = m_servers.store(key, text);
    Q_EMIT changed();
    return isStored;
}

} // namespace lexiquill
