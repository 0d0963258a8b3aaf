#pragma once

#include "support/instant.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

namespace lexiquill {

/// Answers to requests, kept in files: each is found again by its URL whatever its age, in this process or
/// any other. When they grow too many the oldest go first. Whatever fails is silent, and a file that is not
/// as it was written is no answer.
class AnswerStore {
public:
    /// `directory` is made, for its owner only, by the first answer; nothing else may be kept there.
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
