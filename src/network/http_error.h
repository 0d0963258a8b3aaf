#pragma once

#include <QNetworkReply>
#include <QString>

namespace lexiquill {

/// Why there is no complete answer to a request.
enum class HttpError {
    Cancelled,
    ConnectionRefused,
    ConnectionLost,
    HostNotFound,
    TimedOut,
    TlsFailed,
    NetworkUnavailable,
    TooManyRedirects,
    InsecureRedirect,
    BadAddress,
    BadAnswer,
    TooLarge,
    CannotWrite, ///< to where the body was to go
    Other,
};

/// What the user is told of it: a few Chinese words without names of hosts.
QString description(HttpError error);

/// What the network library's error amounts to.
HttpError httpErrorOf(QNetworkReply::NetworkError error);

/// Whether the error only repeats an answer's status of 400 or more.
bool isStatusError(QNetworkReply::NetworkError error, int status);

} // namespace lexiquill
