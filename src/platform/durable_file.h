#pragma once

#include <QByteArrayView>
#include <QString>

#include <memory>

namespace lexiquill {

/// A file that replaces its destination only when it is complete. This program replaces files only in this
/// way. Until commit() the file has no name, or a unique name beside the destination, so several writers do
/// not disturb each other. Without commit() it is removed with this object.
class DurableFile {
public:
    virtual ~DurableFile() = default;

    /// The access rights of the file.
    enum class Access {
        AsBefore,  ///< as for the replaced file; a new file is private to its owner
        OwnerOnly, ///< as for the replaced file, but only for its owner
        Ordinary,  ///< as for the replaced file; a new file has the rights that the umask allows
    };
    /// Synced: the file survives a system crash. Cached: the crash may truncate it, as is acceptable for a
    /// cache.
    enum class Durability { Synced, Cached };
    /// Why a file could not be written.
    enum class Problem { None, NoPermission, NoSpace, NoDirectory, Other };

    struct Options {
        Access access = Access::AsBefore;
        Durability durability = Durability::Synced;
        /// If set, receives the reason when no file is created.
        Problem *problem = nullptr;
    };

    /// Starts a file. Null when it cannot be created, or when the destination exists but is not a regular
    /// file. A relative destination is in the working directory, even if the path of that is not valid text.
    static std::unique_ptr<DurableFile> create(const QString &destination, const Options &options);
    static std::unique_ptr<DurableFile> create(const QString &destination) { return create(destination, {}); }

    /// False when not everything could be written; the file cannot be committed then.
    virtual bool write(QByteArrayView bytes) = 0;

    /// Moves the file to its destination. False when any step failed: the destination is then unchanged.
    virtual bool commit() = 0;

    /// Why the last write() or commit() failed.
    virtual Problem problem() const = 0;
};

/// Replaces a file by one with this content. Returns the reason of a failure, or Problem::None.
DurableFile::Problem replaceFile(const QString &destination, QByteArrayView content,
                                 DurableFile::Options options = {});

/// The path of the file that `path` leads to through symbolic links. The file need not exist yet.
QString resolvedFile(const QString &path);

/// Keeps the file `from` under the additional name `to`: as a hard link if the file system has links, else as
/// a copy. False when `to` exists or cannot be created.
bool keepFileAs(const QString &from, const QString &to);

} // namespace lexiquill
