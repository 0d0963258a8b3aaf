#pragma once

#include "model/word_record.h"

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>

#include <optional>

namespace lexiquill {

/// The body of a login or registration. It holds the password in plain and nothing else does afterwards:
/// wipe() it when it has been sent.
QByteArray encodeCredentials(const QString &username, const QString &password,
                             const QList<WordRecord> &words);
/// The body of a two-way sync.
QByteArray encodeSync(const QString &username, const QList<WordRecord> &words,
                      const QSet<QString> &deletedWords);
/// The body that tells of a deletion.
QByteArray encodeDeletion(const QString &username, const QString &word);

/// What the server says. A text that is no string, or longer than 65,536 UTF-16 units, counts as missing.
struct ServerAnswer {
    bool isSuccess = false;
    std::optional<QString> token = std::nullopt;
    std::optional<QString> message = std::nullopt;
    /// JSON that should be an array of records; empty for more than 500,000 of them.
    QByteArray words = QByteArrayLiteral("[]");
};

/// Nothing when JsonDocument does not take the text, or it is no object.
std::optional<ServerAnswer> decodeServerAnswer(const QByteArray &json);

/// The records of an answer; nothing when they are no array of objects.
std::optional<QList<WordRecord>> decodeCloudWords(const ServerAnswer &answer, Instant now);

} // namespace lexiquill
