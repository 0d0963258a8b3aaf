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

/// Sends HTTP requests over HTTPS, or in plain to this machine. Certificates are verified, cookies neither
/// kept nor sent, redirects followed only to where a request may go, and never from HTTPS to plain HTTP.
/// Needs an application object and an event loop. Destroyed, it aborts all requests as if they were
/// cancelled.
class HttpClient : public QObject {
public:
    /// `store`: keeps the answers that requests want kept; without one none is.
    explicit HttpClient(std::optional<AnswerStore> store = std::nullopt, QObject *parent = nullptr);
    ~HttpClient() override;

    /// Never fails but in the reply. The reply to a request to nowhere is there at once.
    QCoro::Task<HttpReply> send(HttpRequest request);

private:
    QNetworkAccessManager &network();

    std::optional<AnswerStore> m_store;
    /// Made for the first request, for it starts a good deal of machinery.
    std::unique_ptr<QNetworkAccessManager> m_network;
    Cancellation m_destruction;
};

} // namespace lexiquill
