#include "lookup/online/online_dictionary_service.h"

#include "lookup/worker_response.h"
#include "lookup/youdao_parser.h"
#include "support/url_query.h"

namespace lexiquill {

OnlineDictionaryService::OnlineDictionaryService(HttpClient &client, ServerAddresses addresses, Limits limits)
    : m_client(client),
      m_addresses(std::move(addresses)),
      m_limits(limits) {}

QCoro::Task<std::optional<DictionaryEntry>> OnlineDictionaryService::lookup(QString word,
                                                                            CancellationToken cancellation) {
    const QString trimmed = word.trimmed();
    if (trimmed.isEmpty())
        co_return std::nullopt;
    auto entry = co_await lookupYoudaoDirect(trimmed, cancellation);
    if (!entry && !cancellation.isCancelled())
        entry = co_await lookupWorkerProxy(trimmed, cancellation);
    // A record without a word could not be found again.
    if (entry && entry->headword.trimmed().isEmpty())
        entry->headword = trimmed;
    co_return entry;
}

QCoro::Task<std::optional<DictionaryEntry>>
OnlineDictionaryService::lookupYoudaoDirect(QString word, CancellationToken cancellation) {
    auto toSend = request(m_addresses.youdao + QStringLiteral("/jsonapi?q="), word, cancellation);
    if (!toSend)
        co_return std::nullopt;
    toSend->headers = {{"User-Agent", "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36 "
                                      "(KHTML, like Gecko) Chrome/120.0.0.0 Safari/537.36"},
                       {"Accept", "application/json, text/plain, */*"}};
    // Neither the sign-in page of a network nor a message about too many requests may stand for the word.
    toSend->isWorthKeeping = isYoudaoAnswer;
    const HttpReply reply = co_await m_client.send(*toSend);
    co_return reply.isOk() ? parseYoudaoJSON(reply.body, word) : std::nullopt;
}

QCoro::Task<std::optional<DictionaryEntry>>
OnlineDictionaryService::lookupWorkerProxy(QString word, CancellationToken cancellation) {
    auto toSend = request(m_addresses.server + QStringLiteral("/api/dict?w="), word, cancellation);
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
                                                            const CancellationToken &cancellation) const {
    const auto encoded = queryEncoded(word);
    if (!encoded)
        return std::nullopt;
    HttpRequest result;
    result.url = QUrl::fromEncoded(target.toUtf8() + *encoded, QUrl::StrictMode);
    if (!result.url.isValid())
        return std::nullopt;
    result.idleLimit = m_limits.idle;
    result.totalLimit = m_limits.total;
    result.cancellation = cancellation;
    return result;
}

} // namespace lexiquill
