#include "dictd_writer.h"

#include "stardict_writer.h"

#include <QFile>

#include <algorithm>

namespace lexiquill::tools {

namespace {

QString writeFile(const QString &path, const QByteArray &content) {
    QFile file(path);
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
    return isWritten ? QString() : path + QStringLiteral(": ") + file.errorString();
}

} // namespace

QByteArray dictdNumber(quint64 number) {
    static constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    QByteArray text;
    do {
        text.prepend(digits[number % 64]);
        number /= 64;
    } while (number > 0);
    return text;
}

QString writeDictd(const QString &directory, const QString &baseName, const std::vector<DictdEntry> &entries,
                   bool isPacked) {
    QByteArray articles;
    std::vector<QByteArray> lines;
    lines.reserve(entries.size());
    for (const DictdEntry &entry : entries) {
        QByteArray line = entry.word + '\t' + dictdNumber(static_cast<quint64>(articles.size())) + '\t' +
                          dictdNumber(static_cast<quint64>(entry.article.size()));
        if (!entry.spelling.isEmpty())
            line += '\t' + entry.spelling;
        lines.push_back(line + '\n');
        articles += entry.article;
    }
    std::stable_sort(lines.begin(), lines.end());
    QByteArray index;
    for (const QByteArray &line : lines)
        index += line;
    const QString base = directory + u'/' + baseName;
    QString problem = writeFile(base + QStringLiteral(".index"), index);
    if (!problem.isEmpty())
        return problem;
    constexpr int chunkSize = 58315;
    return isPacked ? writeFile(base + QStringLiteral(".dict.dz"), dictzip(articles, chunkSize))
                    : writeFile(base + QStringLiteral(".dict"), articles);
}

} // namespace lexiquill::tools
