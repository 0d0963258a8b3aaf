#include "app/preferences/server_address_editor.h"

#include "app/shell/services.h"
#include "settings/server_addresses.h"
#include "settings/user_defaults.h"
#include "support/web_address.h"

#include <QUrl>

namespace lexiquill {

ServerAddressEditor::ServerAddressEditor(QObject *parent)
    : QObject(parent),
      m_defaults(Services::current().defaults) {
    m_defaults.refresh();
}

QString ServerAddressEditor::youdaoText() const {
    return m_defaults.string(ServerAddresses::youdaoKey);
}

QString ServerAddressEditor::serverText() const {
    return m_defaults.string(ServerAddresses::serverKey);
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
    const QString base = ServerAddresses::acceptableBase(text).value_or(QString());
    if (base.isEmpty() && !text.trimmed().isEmpty())
        return false;
    if (base == m_defaults.string(key))
        return true;
    if (base.isEmpty())
        m_defaults.remove(key);
    else
        m_defaults.set(key, base);
    m_isChanged = true;
    Q_EMIT changed();
    return true;
}

} // namespace lexiquill
