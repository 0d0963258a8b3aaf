#pragma once

#include <QNetworkReply>
#include <QString>

namespace lexiquill {

/// A short Chinese description of why no answer came.
QString transportErrorText(QNetworkReply::NetworkError error);

/// Whether the error only repeats an answer's status of 400 or more.
bool isStatusError(QNetworkReply::NetworkError error, int status);

} // namespace lexiquill
