#pragma once

#include "model/word_record.h"

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>

#include <optional>

namespace lexiquill {

/// The body of a login or registration. It contains the password as plain text and is its only copy: wipe()
/// it after it has been sent.
QByteArray encodeCredentials(const QString &username, const QString &password,
                             const QList<WordRecord> &words);
/// The body of a two-way sync.
QByteArray encodeSync(const QString &username, const QList<WordRecord> &words,
                      const QSet<QString> &deletedWords);
/// The body that reports a deletion.
QByteArray encodeDeletion(const QString &username, const QString &word);

/// The server's answer. A text that is not a string, or longer than 65,536 UTF-16 units, counts as missing.
struct ServerAnswer {
    bool isSuccess = false;
    std::optional<QString> token = std::nullopt;
    std::optional<QString> message = std::nullopt;
    /// JSON that should be an array of records; empty for more than 500,000 of them.
    QByteArray words = QByteArrayLiteral("[]");
};

/// No value when JsonDocument cannot parse the text, or when it is not an object.
std::optional<ServerAnswer> decodeServerAnswer(const QByteArray &json);

/// The records of an answer; no value when they are not an array of objects.
std::optional<QList<WordRecord>> decodeCloudWords(const ServerAnswer &answer, Instant now);

} // namespace lexiquill
