#include "network/transport_error.h"

namespace lexiquill {

QString transportErrorText(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
        return QStringLiteral("连接被拒绝");
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ContentReSendError:
        return QStringLiteral("连接中断");
    case QNetworkReply::HostNotFoundError:
        return QStringLiteral("无法解析主机名");
    case QNetworkReply::TimeoutError:
        return QStringLiteral("请求超时");
    case QNetworkReply::OperationCanceledError:
        return QStringLiteral("已取消");
    case QNetworkReply::SslHandshakeFailedError:
        return QStringLiteral("安全连接失败");
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError:
        return QStringLiteral("网络不可用");
    case QNetworkReply::TooManyRedirectsError:
        return QStringLiteral("重定向次数过多");
    case QNetworkReply::InsecureRedirectError:
        return QStringLiteral("重定向到不安全的地址");
    case QNetworkReply::ProtocolUnknownError:
        return QStringLiteral("服务器地址无效");
    case QNetworkReply::ProtocolFailure:
        return QStringLiteral("服务器响应无效");
    default:
        return QStringLiteral("网络错误");
    }
}

bool isStatusError(QNetworkReply::NetworkError error, int status) {
    const bool isAboutContent =
        error >= QNetworkReply::ContentAccessDenied && error != QNetworkReply::ContentReSendError &&
        error != QNetworkReply::ProtocolUnknownError && error != QNetworkReply::ProtocolFailure;
    return status >= 400 && (isAboutContent || error == QNetworkReply::ProxyAuthenticationRequiredError);
}

} // namespace lexiquill
