#include "network/http_error.h"

namespace lexiquill {

QString description(HttpError error) {
    switch (error) {
    case HttpError::Cancelled:
        return QStringLiteral("已取消");
    case HttpError::ConnectionRefused:
        return QStringLiteral("连接被拒绝");
    case HttpError::ConnectionLost:
        return QStringLiteral("连接中断");
    case HttpError::HostNotFound:
        return QStringLiteral("无法解析主机名");
    case HttpError::TimedOut:
        return QStringLiteral("请求超时");
    case HttpError::TlsFailed:
        return QStringLiteral("安全连接失败");
    case HttpError::NetworkUnavailable:
        return QStringLiteral("网络不可用");
    case HttpError::TooManyRedirects:
        return QStringLiteral("重定向次数过多");
    case HttpError::InsecureRedirect:
        return QStringLiteral("重定向到不安全的地址");
    case HttpError::BadAddress:
        return QStringLiteral("服务器地址无效");
    case HttpError::BadAnswer:
        return QStringLiteral("服务器响应无效");
    case HttpError::TooLarge:
        return QStringLiteral("服务器响应过大");
    case HttpError::CannotResume:
        return QStringLiteral("无法继续传输");
    case HttpError::CannotWrite:
        return QStringLiteral("无法写入文件");
    case HttpError::Other:
        break;
    }
    return QStringLiteral("网络错误");
}

HttpError httpErrorOf(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
        return HttpError::ConnectionRefused;
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ContentReSendError:
        return HttpError::ConnectionLost;
    case QNetworkReply::HostNotFoundError:
        return HttpError::HostNotFound;
    case QNetworkReply::TimeoutError:
        return HttpError::TimedOut;
    case QNetworkReply::OperationCanceledError:
        return HttpError::Cancelled;
    case QNetworkReply::SslHandshakeFailedError:
        return HttpError::TlsFailed;
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError:
        return HttpError::NetworkUnavailable;
    case QNetworkReply::TooManyRedirectsError:
        return HttpError::TooManyRedirects;
    case QNetworkReply::InsecureRedirectError:
        return HttpError::InsecureRedirect;
    case QNetworkReply::ProtocolUnknownError:
        return HttpError::BadAddress;
    case QNetworkReply::ProtocolFailure:
        return HttpError::BadAnswer;
    default:
        return HttpError::Other;
    }
}

bool isStatusError(QNetworkReply::NetworkError error, int status) {
    const bool isAboutContent =
        error >= QNetworkReply::ContentAccessDenied && error != QNetworkReply::ContentReSendError &&
        error != QNetworkReply::ProtocolUnknownError && error != QNetworkReply::ProtocolFailure;
    return status >= 400 && (isAboutContent || error == QNetworkReply::ProxyAuthenticationRequiredError);
}

} // namespace lexiquill
