#include "network/http_transfer.h"

#include "support/web_address.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QPointer>
#include <QRegularExpression>

#include <algorithm>

namespace lexiquill {

namespace {

/// How many bytes of a body are buffered until they are read.
constexpr qint64 readAhead = 256 << 10;
/// The body limit of an answer that cannot go into the sink because its status is not 200.
constexpr qint64 strayBodyLimit = qint64{1} << 20;

bool isRedirect(int status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

bool isNamed(const HttpRequest::Header &header, const char *name) {
    return header.first.compare(name, Qt::CaseInsensitive) == 0;
}

/// The body of a POST. It can be read only once. Otherwise the library would send the request again after a
/// broken connection, although the server may have processed it already.
class OneWayBuffer : public QIODevice {
public:
    explicit OneWayBuffer(const QByteArray &bytes) : m_bytes(bytes) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    bool reset() override { return false; }
    bool atEnd() const override { return m_position == m_bytes.size(); }
    qint64 bytesAvailable() const override { return m_bytes.size() - m_position; }

protected:
    qint64 readData(char *out, qint64 most) override {
        const qsizetype count = std::min<qsizetype>(most, m_bytes.size() - m_position);
        std::copy_n(m_bytes.constData() + m_position, count, out);
        m_position += count;
        return count > 0 || most == 0 ? count : -1;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qsizetype m_position = 0;
};

/// The validator of an answer for later requests of its rest. A weak one does not promise equal bytes.
QByteArray validatorOf(const QNetworkReply &answer) {
    const QByteArray tag = answer.rawHeader("ETag").trimmed();
    const bool isStrong = tag.size() > 2 && tag.startsWith('"');
    return isStrong ? tag : answer.rawHeader("Last-Modified").trimmed();
}

/// Whether an answer may be of the body with this validator. The server need not repeat it.
bool mayBeOf(const QByteArray &validator, const QNetworkReply &answer) {
    const QByteArray own = answer.rawHeader(validator.startsWith('"') ? "ETag" : "Last-Modified").trimmed();
    return own.isEmpty() || own == validator;
}

/// Where the body of an answer with status 206 lies in the whole one.
struct BodyRange {
    qint64 first = 0;
    qint64 last = 0;
    std::optional<qint64> total;

    static std::optional<BodyRange> of(const QByteArray &header) {
        static const QRegularExpression form(
            QStringLiteral("\\A\\s*bytes\\s+([0-9]{1,18})-([0-9]{1,18})/([0-9]{1,18}|\\*)\\s*\\z"),
            QRegularExpression::CaseInsensitiveOption);
        const auto match = form.match(QString::fromLatin1(header));
        if (!match.hasMatch())
            return std::nullopt;
        BodyRange range;
        range.first = match.captured(1).toLongLong();
        range.last = match.captured(2).toLongLong();
        bool hasTotal = false;
        const qint64 total = match.captured(3).toLongLong(&hasTotal);
        if (hasTotal)
            range.total = total;
        return range;
    }
};

QNetworkRequest networkRequest(const HttpRequest &request) {
    QNetworkRequest result(request.url);
    result.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // Without these headers the library would send the user's language, and unpack answers without a limit.
    result.setRawHeader("Accept-Language", "*");
    result.setRawHeader("Accept-Encoding", request.sink ? "identity" : "gzip");
    result.setRawHeader("User-Agent", "Lexiquill");
    for (const auto &[name, value] : request.headers)
        result.setRawHeader(name, value);
    if (request.start) {
        result.setRawHeader("Range", "bytes=" + QByteArray::number(request.start->size) + '-');
        result.setRawHeader("If-Range", request.start->validator);
    }
    return result;
}

/// A line break in a value would turn the rest of the value into another header.
bool isSendable(const HttpRequest::Header &header) {
    const auto isControl = [](char byte) {
        return static_cast<unsigned char>(byte) < 0x20;
    };
    const auto &[name, value] = header;
    return !name.isEmpty() && std::none_of(name.begin(), name.end(), isControl) &&
           std::none_of(value.begin(), value.end(), isControl);
}

} // namespace

HttpTransfer::HttpTransfer(QNetworkAccessManager &network, const HttpRequest &request)
    : m_network(network),
      m_request(request) {
    for (QTimer *const timer : {&m_idle, &m_total}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        connect(timer, &QTimer::timeout, this, [this] { finish(HttpError::TimedOut); });
    }
    m_resumption.setSingleShot(true);
    connect(&m_resumption, &QTimer::timeout, this, &HttpTransfer::resume);
    m_total.start(m_request.totalLimit);
    if (std::all_of(m_request.headers.begin(), m_request.headers.end(), isSendable))
        open(m_request.url);
    else
        finish(HttpError::Other);
}

HttpTransfer::~HttpTransfer() {
    drop();
}

void HttpTransfer::abandon(HttpError error) {
    if (!m_isOver)
        finish(error);
    resume();
}

void HttpTransfer::open(const QUrl &url) {
    if (!isAcceptableUrl(url))
        return finish(HttpError::BadAddress);
    if (isReservedHost(url))
        return finish(HttpError::HostNotFound);
    m_request.url = url;
    m_hasHeaders = false;
    QNetworkRequest request = networkRequest(m_request);
    if (m_request.method == HttpRequest::Method::Get) {
        m_incoming = m_network.get(request);
    } else {
        if (!request.hasRawHeader("Content-Type"))
            request.setRawHeader("Content-Type", "application/octet-stream");
        request.setHeader(QNetworkRequest::ContentLengthHeader, m_request.body.size());
        request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
        auto *const outgoing = new OneWayBuffer(m_request.body);
        m_incoming = m_network.post(request, outgoing);
        outgoing->setParent(m_incoming);
    }
    m_incoming->setReadBufferSize(readAhead);
    m_idle.start(m_request.idleLimit);
    const auto restartIdle = [this] {
        m_idle.start(m_request.idleLimit);
    };
    connect(m_incoming, &QNetworkReply::uploadProgress, this, restartIdle);
    connect(m_incoming, &QNetworkReply::metaDataChanged, this, restartIdle);
    connect(m_incoming, &QNetworkReply::readyRead, this, [this, restartIdle] {
        restartIdle();
        readBody();
    });
    connect(m_incoming, &QNetworkReply::finished, this, &HttpTransfer::complete);
}

void HttpTransfer::readHeaders() {
    if (m_hasHeaders)
        return;
    m_hasHeaders = true;
    m_reply.status = m_incoming->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    bool isNumber = false;
    const qint64 length = m_incoming->rawHeader("Content-Length").toLongLong(&isNumber);
    m_announced = isNumber && length >= 0 ? std::optional(length) : std::nullopt;
    m_received = 0;
    const QByteArray encoding = m_incoming->rawHeader("Content-Encoding").trimmed().toLower();
    if (encoding == "gzip" || encoding == "x-gzip")
        m_inflater = std::make_unique<GzipReader>();
    else if (!encoding.isEmpty() && encoding != "identity")
        return finish(HttpError::BadAnswer);
    if (m_request.sink != nullptr && (m_reply.status == 200 || m_request.start))
        readPosition();
    if (m_isOver)
        return;
    m_bodyLimit = m_request.sink != nullptr && !goesIntoSink() ? std::min(m_request.bodyLimit, strayBodyLimit)
                                                               : m_request.bodyLimit;
    if (m_announced.value_or(0) > m_bodyLimit - m_before)
        finish(HttpError::TooLarge);
}

bool HttpTransfer::goesIntoSink() const {
    return m_request.sink != nullptr && (m_reply.status == 200 || m_reply.isRest);
}

/// Finds out whether the answer is the whole body or the rest of it, and prepares the sink.
void HttpTransfer::readPosition() {
    if (m_request.start && m_reply.status == 206) {
        const auto range = BodyRange::of(m_incoming->rawHeader("Content-Range"));
        if (!range || m_inflater || !mayBeOf(m_request.start->validator, *m_incoming) ||
            range->first != m_request.start->size || range->last < range->first ||
            (range->total && range->last + 1 != *range->total))
            return finish(HttpError::CannotResume);
        m_reply.isRest = true;
        m_reply.validator = m_request.start->validator;
        m_announced = range->last - range->first + 1;
        m_before = m_decoded = m_request.start->size;
    } else if (m_reply.status == 200) {
        if (m_request.start && !m_request.emptySink())
            return finish(HttpError::CannotWrite);
        m_reply.validator = m_inflater ? QByteArray() : validatorOf(*m_incoming);
    } else if (m_reply.status == 206 || m_reply.status == 416) {
        finish(HttpError::CannotResume);
    }
}

void HttpTransfer::readBody() {
    if (followRedirect())
        return;
    readHeaders();
    const QPointer self(this);
    while (self && !m_isOver && m_incoming->bytesAvailable() > 0) {
        const QByteArray bytes = m_incoming->read(readAhead);
        if (bytes.isEmpty())
            break;
        m_received += bytes.size();
        take(bytes);
    }
}

void HttpTransfer::take(const QByteArray &bytes) {
    const bool isForSink = goesIntoSink();
    QByteArray piece;
    QByteArray &out = isForSink ? piece : m_reply.body;
    if (!m_inflater)
        out += bytes;
    else if (!m_inflater->feed(bytes, out, m_bodyLimit))
        return finish(HttpError::BadAnswer);
    m_decoded = isForSink ? m_decoded + piece.size() : m_reply.body.size();
    if (m_decoded > m_bodyLimit)
        return finish(HttpError::TooLarge);
    if (!isForSink)
        return;
    if (m_request.sink->write(piece) != piece.size())
        return finish(HttpError::CannotWrite);
    // The callback may cancel the request, which destroys this object.
    if (const auto report = m_request.onProgress)
        report(m_decoded, m_inflater || !m_announced ? std::nullopt : std::optional(m_before + *m_announced));
}

void HttpTransfer::complete() {
    const QNetworkReply::NetworkError error = m_incoming->error();
    const QPointer self(this);
    if (m_incoming->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid())
        readBody();
    if (!self || m_isOver || !m_incoming->isFinished())
        return;
    if (error != QNetworkReply::NoError && !isStatusError(error, m_reply.status))
        return finish(httpErrorOf(error));
    const bool isWhole = (!m_announced || m_received == *m_announced) &&
                         (!m_inflater || m_inflater->isComplete() || m_received == 0);
    finish(isWhole ? std::nullopt : std::optional(HttpError::ConnectionLost));
}

bool HttpTransfer::followRedirect() {
    const int status = m_incoming->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray location = m_incoming->rawHeader("Location");
    if (!isRedirect(status) || location.isEmpty())
        return false;
    QUrl target = m_request.url.resolved(QUrl::fromEncoded(location, QUrl::StrictMode));
    target.setFragment(QString());
    const bool losesHttps =
        m_request.url.scheme() == QLatin1StringView("https") && target.scheme() != QLatin1StringView("https");
    m_reply.status = status;
    const bool leavesOrigin = m_request.staysAtOrigin && !isSameOrigin(m_request.url, target);
    if (losesHttps || leavesOrigin || !isAcceptableUrl(target)) {
        finish(HttpError::InsecureRedirect);
    } else if (++m_redirects > m_request.redirectLimit) {
        finish(HttpError::TooManyRedirects);
    } else {
        if (status <= 303) {
            m_request.method = HttpRequest::Method::Get;
            m_request.body.clear();
        }
        if (!isSameOrigin(m_request.url, target))
            m_request.headers.removeIf([](const auto &header) { return isNamed(header, "Authorization"); });
        drop();
        m_reply.status = 0;
        open(target);
    }
    return true;
}

void HttpTransfer::finish(std::optional<HttpError> error) {
    if (m_isOver)
        return;
    m_isOver = true;
    m_reply.error = error;
    if (error)
        m_reply.body.clear();
    m_idle.stop();
    m_total.stop();
    drop();
    // Resume later: the waiting coroutine may destroy objects that are still in use here.
    if (m_waiting)
        m_resumption.start();
}

void HttpTransfer::drop() {
    if (m_incoming == nullptr)
        return;
    m_incoming->disconnect(this);
    m_incoming->abort();
    m_incoming->deleteLater();
    m_incoming = nullptr;
}

void HttpTransfer::resume() {
    if (const auto waiting = std::exchange(m_waiting, {}))
        waiting.resume();
}

} // namespace lexiquill
