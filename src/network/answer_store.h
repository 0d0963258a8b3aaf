#pragma once

#include "support/instant.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

namespace lexiquill {

/// A file cache of answers to requests, shared by all processes. An answer is found by its URL and never
/// expires. When the cache is full, the oldest answers are removed first. Errors are silent, and a damaged
/// file counts as no answer.
class AnswerStore {
public:
    /// `directory` is created with the first answer and is private to the user; nothing else may be stored
    /// there. `mostBytes` limits the total size.
    explicit AnswerStore(const QString &directory, qint64 mostBytes = qint64{50} << 20,
                         Clock clock = Instant::now);

    std::optional<QByteArray> find(const QUrl &url) const;
    void keep(const QUrl &url, const QByteArray &body) const;

private:
    QString pathOf(const QByteArray &url) const;
    void makeRoom() const;

    QString m_directory;
    qint64 m_mostBytes;
    Clock m_clock;
};

} // namespace lexiquill
