#pragma once

#include "lookup/online_source.h"
#include "network/http_client.h"
#include "settings/server_addresses.h"

#include <chrono>

namespace lexiquill {

/// Looks words up over the network: in the Youdao dictionary and, if that finds nothing, on the program's own
/// server. Answers are stored and used again.
class OnlineDictionaryService final : public OnlineSource {
public:
    struct Limits {
        std::chrono::milliseconds idle{4'500};  ///< between packets
        std::chrono::milliseconds total{8'000}; ///< for each of the two requests
    };

    /// `client` must outlive the instance.
    OnlineDictionaryService(HttpClient &client, ServerAddresses addresses, Limits limits);

    QCoro::Task<std::optional<DictionaryEntry>> lookup(QString word, std::stop_token stop) override;
    /// Used by later requests.
    void setAddresses(const ServerAddresses &addresses) { m_addresses = addresses; }

private:
    QCoro::Task<std::optional<DictionaryEntry>> lookupYoudaoDirect(QString word, std::stop_token stop);
    QCoro::Task<std::optional<DictionaryEntry>> lookupWorkerProxy(QString word, std::stop_token stop);
    std::optional<HttpRequest> request(const QString &target, const QString &word,
                                       const std::stop_token &stop) const;

    HttpClient &m_client;
    ServerAddresses m_addresses;
    Limits m_limits;
};

} // namespace lexiquill
