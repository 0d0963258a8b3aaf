#include "network/http_client.h"

#include "network/http_transfer.h"
#include "support/web_address.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>

#include <algorithm>
#include <iterator>

namespace lexiquill {

namespace {

/// The proxies that the user has set in the environment; none for connections to this machine. Without such
/// variables the system is not queried, because that can take seconds.
class UserProxies final : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override {
        const bool isNamed =
            std::any_of(std::begin(variables), std::end(variables), qEnvironmentVariableIsSet);
        if (!isNamed || isLoopbackHost(query.peerHostName()))
            return {QNetworkProxy(QNetworkProxy::NoProxy)};
        return systemProxyForQuery(query);
    }

private:
    static constexpr const char *variables[] = {"https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"};
};

} // namespace

HttpClient::HttpClient(std::optional<AnswerStore> store, QObject *parent)
    : QObject(parent),
      m_store(std::move(store)) {}

HttpClient::~HttpClient() {
    m_destruction.cancel();
}

QNetworkAccessManager &HttpClient::network() {
    if (!m_network) {
        m_network = std::make_unique<QNetworkAccessManager>();
        m_network->setProxyFactory(new UserProxies);
        m_network->setAutoDeleteReplies(false);
    }
    return *m_network;
}

QCoro::Task<HttpReply> HttpClient::send(HttpRequest request) {
    const std::stop_token stop = request.stop;
    if (stop.stop_requested())
        co_return HttpReply{.error = HttpError::Cancelled};
    const bool mayBeKept =
        m_store && request.isWorthKeeping && request.method == HttpRequest::Method::Get && !request.sink;
    if (const auto kept = mayBeKept ? m_store->find(request.url) : std::nullopt)
        co_return HttpReply{.status = 200, .body = *kept};
    HttpTransfer transfer(network(), request);
    // A stop request resumes this coroutine immediately, within the call that requests the stop.
    const auto abandon = [&transfer] {
        transfer.abandon(HttpError::Cancelled);
    };
    const std::stop_callback onStop(stop, abandon);
    const std::stop_callback onDestruction(m_destruction.token(), abandon);
    co_await transfer.end();
    HttpReply reply = transfer.takeReply();
    if (mayBeKept && reply.isOk() && request.isWorthKeeping(reply.body))
        m_store->keep(request.url, reply.body);
    co_return reply;
}

} // namespace lexiquill
