#pragma once

#include "lookup/online_source.h"
#include "network/http_client.h"
#include "support/server_addresses.h"

#include <chrono>

namespace lexiquill {

/// Looks words up over the network: in the Youdao dictionary, and where that gives nothing, on the program's
/// own server. A word that was answered once is answered from the store of answers afterwards.
class OnlineDictionaryService final : public OnlineSource {
public:
    struct Limits {
        std::chrono::milliseconds idle{4'500};  ///< between packets
        std::chrono::milliseconds total{8'000}; ///< for each of the two requests
    };

    /// `client` must outlive the instance.
    OnlineDictionaryService(HttpClient &client, ServerAddresses addresses, Limits limits);

    static OnlineDictionaryService &shared();

    QCoro::Task<std::optional<DictionaryEntry>> lookup(QString word, CancellationToken cancellation) override;

private:
    QCoro::Task<std::optional<DictionaryEntry>> lookupYoudaoDirect(QString word,
                                                                   CancellationToken cancellation);
    QCoro::Task<std::optional<DictionaryEntry>> lookupWorkerProxy(QString word,
                                                                  CancellationToken cancellation);
    std::optional<HttpRequest> request(const QString &target, const QString &word,
                                       const CancellationToken &cancellation) const;

    HttpClient &m_client;
    ServerAddresses m_addresses;
    Limits m_limits;
};

} // namespace lexiquill
