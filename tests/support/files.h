#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>

/// The content of a file; empty when it cannot be read.
inline QByteArray readFile(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Writes a file, and creates its directories, too. False on failure.
inline bool writeFile(const QString &path, const QByteArray &content) {
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).absolutePath()) && file.open(QIODevice::WriteOnly) &&
           file.write(content) == content.size();
}
