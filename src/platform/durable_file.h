#pragma once

#include <QByteArrayView>
#include <QString>

#include <memory>

namespace lexiquill {

/// A file that takes its destination's place only once it is whole and on disk. Until then it stands beside
/// the destination under its name with ".tmp" behind it, so writers of one destination must take turns.
/// Uncommitted, it is removed on destruction.
class DurableFile {
public:
    virtual ~DurableFile() = default;

    /// Who may use the file: whoever might use the one that it replaces, or of those only its owner.
    enum class Access { AsBefore, OwnerOnly };

    /// Starts a file; null when it cannot be created, or when something that is no regular file has the
    /// destination's name.
    static std::unique_ptr<DurableFile> create(const QString &destination, Access access = Access::AsBefore);

    /// False when not everything could be written; the file cannot be committed then.
    virtual bool write(QByteArrayView bytes) = 0;

    /// Makes the content durable and moves the file to its destination, which keeps its permissions if it
    /// existed, as far as `access` lets it; a new one is for its owner only. False when any step failed: the
    /// destination is then as it was.
    virtual bool commit() = 0;
};

/// The path of the file that `path` leads to through symbolic links, which need not exist yet.
QString resolvedFile(const QString &path);

/// Keeps the file `from` under the further name `to` (a link where the file system has links, else a copy).
/// False when `to` exists or cannot be made.
bool keepFileAs(const QString &from, const QString &to);

} // namespace lexiquill
