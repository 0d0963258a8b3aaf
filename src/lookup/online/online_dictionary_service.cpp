#include "lookup/online/online_dictionary_service.h"

#include "lookup/online/worker_response.h"
#include "lookup/online/youdao_parser.h"
#include "support/web_address.h"

namespace lexiquill {

OnlineDictionaryService::OnlineDictionaryService(HttpClient &client, ServerAddresses addresses, Limits limits)
    : m_client(client),
      m_addresses(std::move(addresses)),
      m_limits(limits) {}

QCoro::Task<std::optional<DictionaryEntry>> OnlineDictionaryService::lookup(QString word,
                                                                            std::stop_token stop) {
    const QString trimmed = word.trimmed();
    if (trimmed.isEmpty())
        co_return std::nullopt;
    auto entry = co_await lookupYoudaoDirect(trimmed, stop);
    if (!entry && !stop.stop_requested())
        entry = co_await lookupWorkerProxy(trimmed, stop);
    // A record without a word could not be found again.
    if (entry && entry->headword.trimmed().isEmpty())
        entry->headword = trimmed;
    co_return entry;
}

QCoro::Task<std::optional<DictionaryEntry>>
OnlineDictionaryService::lookupYoudaoDirect(QString word, std::stop_token stop) {
    auto toSend = request(m_addresses.youdao + QStringLiteral("/jsonapi?q="), word, stop);
    if (!toSend)
        co_return std::nullopt;
    toSend->headers = {{"User-Agent", "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36 "
                                      "(KHTML, like Gecko) Chrome/120.0.0.0 Safari/537.36"},
                       {"Accept", "application/json, text/plain, */*"}};
    // Do not store a network's login page or a message about too many requests as the answer for the word.
    toSend->isWorthKeeping = isYoudaoAnswer;
    const HttpReply reply = co_await m_client.send(*toSend);
    co_return reply.isOk() ? parseYoudaoJSON(reply.body, word) : std::nullopt;
}

QCoro::Task<std::optional<DictionaryEntry>> OnlineDictionaryService::lookupWorkerProxy(QString word,
                                                                                       std::stop_token stop) {
    auto toSend = request(m_addresses.server + QStringLiteral("/api/dict?w="), word, stop);
    if (!toSend)
        co_return std::nullopt;
    toSend->headers = {{"User-Agent", "Lexiquill-macOS"}};
    toSend->isWorthKeeping = [word](const QByteArray &body) {
        return parseWorkerResponse(body, word).has_value();
    };
    const HttpReply reply = co_await m_client.send(*toSend);
    co_return reply.isOk() ? parseWorkerResponse(reply.body, word) : std::nullopt;
}

std::optional<HttpRequest> OnlineDictionaryService::request(const QString &target, const QString &word,
                                                            const std::stop_token &stop) const {
    const auto encoded = queryEncoded(word);
    if (!encoded)
        return std::nullopt;
    HttpRequest result;
    result.url = QUrl::fromEncoded(target.toUtf8() + *encoded, QUrl::StrictMode);
    if (!result.url.isValid())
        return std::nullopt;
    result.idleLimit = m_limits.idle;
    result.totalLimit = m_limits.total;
    result.stop = stop;
    return result;
}

} // namespace lexiquill
