#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

namespace lexiquill {

/// A file as it stood when it was opened, held open so that it can be told from any later one of that name.
class FileSnapshot {
public:
    virtual ~FileSnapshot() = default;

    /// Null when the file cannot be opened.
    static std::unique_ptr<FileSnapshot> open(const QString &path);

    /// The content, with room for `spare` more bytes behind it; nothing on a read error.
    virtual std::optional<QByteArray> readAll(qsizetype spare) const = 0;

    /// Whether `path` still names this very file, unmodified.
    virtual bool isStillAt(const QString &path) const = 0;
};

} // namespace lexiquill
