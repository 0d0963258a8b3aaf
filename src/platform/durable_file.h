#pragma once

#include <QByteArrayView>
#include <QString>

#include <memory>

namespace lexiquill {

/// A file that takes its destination's place only once it is whole: the one way in which this program
/// replaces a file. Until then it has no name, or one of its own beside the destination, so several writers
/// do not disturb each other. Uncommitted, it is gone with this object.
class DurableFile {
public:
    virtual ~DurableFile() = default;

    /// Who may use the file.
    enum class Access {
        AsBefore,  ///< whoever might use the one that it replaces; a new one is for its owner only
        OwnerOnly, ///< of those only its owner
        Ordinary,  ///< as before, too, but a new one is for whom the user's mask lets in
    };
    /// Whether the file must outlive a crash of the system, or may then be cut short, as a cache may.
    enum class Durability { Synced, Cached };
    /// Why a file could not be written.
    enum class Problem { None, NoPermission, NoSpace, NoDirectory, Other };

    struct Options {
        Access access = Access::AsBefore;
        Durability durability = Durability::Synced;
        /// Tells why, when no file is created.
        Problem *problem = nullptr;
    };

    /// Starts a file; null when it cannot be created, or when something that is no regular file has the
    /// destination's name. A relative destination lies below the working directory, whatever the name of
    /// that.
    static std::unique_ptr<DurableFile> create(const QString &destination, const Options &options);
    static std::unique_ptr<DurableFile> create(const QString &destination) { return create(destination, {}); }

    /// False when not everything could be written; the file cannot be committed then.
    virtual bool write(QByteArrayView bytes) = 0;

    /// Moves the file to its destination. False when any step failed: the destination is then as it was.
    virtual bool commit() = 0;

    /// Why the last write() or commit() failed.
    virtual Problem problem() const = 0;
};

/// Replaces a file by one with this content. Says why it could not.
DurableFile::Problem replaceFile(const QString &destination, QByteArrayView content,
                                 DurableFile::Options options = {});

/// The path of the file that `path` leads to through symbolic links, which need not exist yet.
QString resolvedFile(const QString &path);

/// Keeps the file `from` under the further name `to` (a link where the file system has links, else a copy).
/// False when `to` exists or cannot be made.
bool keepFileAs(const QString &from, const QString &to);

} // namespace lexiquill
