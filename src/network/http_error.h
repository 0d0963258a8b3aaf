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
    CannotResume, ///< the rest of a body is not available; the whole body may be
    CannotWrite,  ///< the body cannot be written to its destination
    Other,
};

/// A short Chinese text for the user, without host names.
QString description(HttpError error);

/// Converts an error of the network library.
HttpError httpErrorOf(QNetworkReply::NetworkError error);

/// Whether the error only means that the answer has a status of 400 or more.
bool isStatusError(QNetworkReply::NetworkError error, int status);

} // namespace lexiquill
