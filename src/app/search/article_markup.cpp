#include "app/search/article_markup.h"

#include <QRegularExpression>
#include <QUrl>

namespace lexiquill {

namespace {

constexpr auto base64 = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

/// The reverse of QString::toHtmlEscaped().
QString unescaped(QString text) {
    return text.replace(QLatin1StringView("&lt;"), QLatin1StringView("<"))
        .replace(QLatin1StringView("&gt;"), QLatin1StringView(">"))
        .replace(QLatin1StringView("&quot;"), QLatin1StringView("\""))
        .replace(QLatin1StringView("&amp;"), QLatin1StringView("&"));
}

} // namespace

QString shownArticle(const QString &article, const QString &dictionary) {
    static const QRegularExpression image(QStringLiteral("<img(?: src=\"dict:([^\"]*)\")?[^>]*>"),
                                          QRegularExpression::CaseInsensitiveOption);
    const QString place =
        QStringLiteral("image://%1/%2/")
            .arg(articleImageProvider, QString::fromLatin1(dictionary.toUtf8().toBase64(base64)));
    QString shown;
    qsizetype end = 0;
    for (auto matches = image.globalMatch(article); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        shown += QStringView(article).mid(end, match.capturedStart() - end);
        end = match.capturedEnd();
        if (const QString name = unescaped(match.captured(1)); !name.isEmpty())
            shown += QStringLiteral("<img src=\"%1\">")
                         .arg(place + QString::fromLatin1(QUrl::toPercentEncoding(name)));
    }
    return shown.append(QStringView(article).mid(end));
}

ArticleImage ArticleImage::fromId(const QString &id) {
    const qsizetype slash = id.indexOf(u'/');
    if (slash < 0)
        return {};
    return {.dictionary = QString::fromUtf8(QByteArray::fromBase64(id.left(slash).toLatin1(), base64)),
            .name = QUrl::fromPercentEncoding(id.mid(slash + 1).toUtf8())};
}

} // namespace lexiquill
