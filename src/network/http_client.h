#pragma once

#include "network/answer_store.h"
#include "network/http_message.h"
#include "support/cancellation.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class QNetworkAccessManager;

namespace lexiquill {

/// Sends HTTP requests: over HTTPS, or over plain HTTP to this machine only. Verifies certificates; neither
/// stores nor sends cookies. Follows redirects only to addresses that are allowed for requests, and never
/// from HTTPS to plain HTTP. Needs an application object and an event loop. The destructor aborts all
/// requests as if they were cancelled.
class HttpClient : public QObject {
public:
    /// `store` keeps the answers of requests that ask for it; without a store no answers are kept.
    explicit HttpClient(std::optional<AnswerStore> store = std::nullopt, QObject *parent = nullptr);
    ~HttpClient() override;

    /// Reports every failure in the reply. A request to an address that is not allowed fails at once.
    QCoro::Task<HttpReply> send(HttpRequest request);

private:
    QNetworkAccessManager &network();

    std::optional<AnswerStore> m_store;
    /// Created for the first request, because creating it is expensive.
    std::unique_ptr<QNetworkAccessManager> m_network;
    Cancellation m_destruction;
};

} // namespace lexiquill
