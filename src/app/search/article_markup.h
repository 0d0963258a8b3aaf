#pragma once

#include <QString>

namespace lexiquill {

/// The prefix of the addresses of dictionaries' pictures, without "image://".
inline const QString articleImageProvider = QStringLiteral("dictionary");

/// The formatted article of the dictionary with this main file as rich text for the screens: its pictures
/// have addresses of the image provider, and pictures from anywhere else are removed.
QString shownArticle(const QString &article, const QString &dictionary);

/// The main file and the picture's name in the rest of such an address.
struct ArticleImage {
    QString dictionary;
    QString name;

    static ArticleImage fromId(const QString &id);
};

} // namespace lexiquill
