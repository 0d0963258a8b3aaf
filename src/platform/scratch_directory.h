#pragma once

#include "platform/durable_file.h"

#include <QByteArrayView>
#include <QString>

#include <memory>

namespace lexiquill {

/// A hidden directory of this process below another one, in which new files are collected until they are
/// complete. It is removed with its content when this object is destroyed; removeAbandoned() removes those of
/// processes that were killed.
class ScratchDirectory {
public:
    using Problem = DurableFile::Problem;

    virtual ~ScratchDirectory() = default;

    /// Creates "PARENT/PREFIX" with random characters added; `prefix` begins with a dot. The parent is
    /// created, too. Null on failure; `problem` then receives the reason.
    static std::unique_ptr<ScratchDirectory> create(const QString &parent, const QString &prefix,
                                                    Problem *problem = nullptr);
    /// Removes the directories with that prefix whose processes have ended.
    static void removeAbandoned(const QString &parent, const QString &prefix);
    /// The path itself, or one with a number added, that nothing has now.
    static QString freePath(const QString &path);

    virtual QString path() const = 0;

    /// Starts a new file at a path relative to this directory, and creates its directories. Space for `size`
    /// bytes is reserved if the file system can do that. There is one such file at a time.
    virtual Problem startFile(const QString &name, qint64 size) = 0;
    /// Writes at any position of the started file; what is never written reads as zeros.
    virtual Problem write(qint64 offset, QByteArrayView bytes) = 0;
    /// Ends the started file with this size.
    virtual Problem finishFile(qint64 size) = 0;

    /// Moves a file or directory of this directory to a path that must not exist yet. It is then complete on
    /// the disk, also after a system crash. The path must be on the same file system.
    virtual Problem moveOut(const QString &name, const QString &destination) = 0;
    /// Moves a file or directory of the same file system into this directory, under the name `name`.
    virtual Problem moveIn(const QString &path, const QString &name) = 0;
};

} // namespace lexiquill
