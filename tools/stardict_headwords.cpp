#include "stardict_headwords.h"

#include <QByteArray>
#include <QFile>

namespace lexiquill::tools {

QStringList stardictHeadwords(const QString &indexPath) {
    constexpr qsizetype numbersSize = 8;
    QStringList words;
    QFile file(indexPath);
    const QByteArray index = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    for (qsizetype start = 0; start < index.size();) {
        const qsizetype end = index.indexOf('\0', start);
        if (end < 0)
            break;
        words += QString::fromUtf8(index.sliced(start, end - start));
        start = end + 1 + numbersSize;
    }
    return words;
}

} // namespace lexiquill::tools
