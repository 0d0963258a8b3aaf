#include "dictionaries/import/archive.h"

#include "dictionaries/import/archive_names.h"
#include "dictionaries/import/import_problems.h"
#include "platform/scratch_directory.h"

#include <QFileInfo>
#include <QSet>

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace lexiquill {

namespace {

constexpr qint64 pieceSize = qint64{1} << 18;

struct ArchiveDeleter {
    void operator()(::archive *archive) const { archive_read_free(archive); }
};
using ArchiveHandle = std::unique_ptr<::archive, ArchiveDeleter>;

CountedFile &fileOf(void *data) {
    return *static_cast<CountedFile *>(data);
}

la_ssize_t readPiece(::archive *archive, void *data, const void **piece) {
    CountedFile &file = fileOf(data);
    const QByteArrayView bytes = file.read();
    if (file.isStopped() || file.hasFailed()) {
        archive_set_error(archive, EIO, "stopped");
        return ARCHIVE_FATAL;
    }
    *piece = bytes.data();
    return static_cast<la_ssize_t>(bytes.size());
}

la_int64_t skipPart(::archive *, void *data, la_int64_t count) {
    CountedFile &file = fileOf(data);
    const qint64 possible = std::clamp<qint64>(count, 0, std::max<qint64>(file.size() - file.position(), 0));
    file.seek(file.position() + possible);
    return possible;
}

la_int64_t seekTo(::archive *, void *data, la_int64_t offset, int whence) {
    CountedFile &file = fileOf(data);
    const qint64 base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? file.position() : file.size();
    const qint64 target = base + offset;
    if (target < 0 || target > file.size())
        return ARCHIVE_FATAL;
    file.seek(target);
    return target;
}

ArchiveHandle openArchive(CountedFile &file) {
    ArchiveHandle archive(archive_read_new());
    ::archive *const handle = archive.get();
    if (handle == nullptr)
        return nullptr;
    archive_read_support_format_tar(handle);
    archive_read_support_format_zip(handle);
    archive_read_support_format_7zip(handle);
    archive_read_support_filter_gzip(handle);
    archive_read_support_filter_bzip2(handle);
    archive_read_support_filter_xz(handle);
    archive_read_support_filter_zstd(handle);
    archive_read_set_read_callback(handle, readPiece);
    archive_read_set_skip_callback(handle, skipPart);
    archive_read_set_seek_callback(handle, seekTo);
    archive_read_set_callback_data(handle, &file);
    return archive_read_open1(handle) == ARCHIVE_OK ? std::move(archive) : nullptr;
}

/// The text of an entry's name, or no value.
std::optional<QString> nameOf(archive_entry *entry) {
    // The library converts a name to Unicode if the archive says in which encoding it is.
    if (const char *const name = archive_entry_pathname(entry); name != nullptr)
        return decodedName(name);
    if (const char *const name = archive_entry_pathname_utf8(entry); name != nullptr)
        return decodedName(name);
    return std::nullopt;
}

bool isHidden(const QString &path) {
    return path.startsWith(u'.') || path.contains(QLatin1StringView("/.")) ||
           path.startsWith(QLatin1StringView("__MACOSX/"));
}

/// Unpacks one archive entry after the other.
class Unpacking {
public:
    Unpacking(CountedFile &file, ScratchDirectory &directory, const QString &below,
              const ImportLimits &limits)
        : m_file(file),
          m_directory(directory),
          m_below(below),
          m_limits(limits),
          // Without overflow, because no file is that large.
          m_sizeLeft(
              std::min(limits.size, limits.freeSize + limits.ratio * std::min(file.size(), limits.size))) {}

    ImportProblem run() {
        m_archive = openArchive(m_file);
        if (!m_archive)
            return failure();
        // More than one layer of compression only hides how much there is. The last filter stands for none.
        int entries = 0;
        archive_entry *entry = nullptr;
        for (;;) {
            const int status = archive_read_next_header(m_archive.get(), &entry);
            if (status == ARCHIVE_EOF)
                return ImportProblem::None;
            if (status < ARCHIVE_WARN)
                return failure();
            if (archive_filter_count(m_archive.get()) > 2)
                return ImportProblem::Damaged;
            if (++entries > m_limits.files)
                return ImportProblem::TooLarge;
            if (const ImportProblem problem = take(entry); problem != ImportProblem::None)
                return problem;
        }
    }

private:
    ImportProblem failure() const {
        if (m_file.isStopped())
            return ImportProblem::Cancelled;
        if (m_file.hasFailed())
            return ImportProblem::Unreadable;
        return m_archive && archive_read_has_encrypted_entries(m_archive.get()) > 0 ? ImportProblem::Encrypted
                                                                                    : ImportProblem::Damaged;
    }

    ImportProblem take(archive_entry *entry) {
        const auto type = archive_entry_filetype(entry);
        if ((type != AE_IFREG && type != AE_IFDIR) || archive_entry_hardlink(entry) != nullptr ||
            archive_entry_symlink(entry) != nullptr)
            return ImportProblem::ForbiddenKind;
        const auto name = nameOf(entry);
        const auto path = name ? safePath(*name, m_limits) : std::nullopt;
        if (!path)
            return ImportProblem::UnsafeNames;
        if (archive_entry_is_data_encrypted(entry) != 0)
            return ImportProblem::Encrypted;
        // Directories are made for the files in them.
        if (type == AE_IFDIR || path->isEmpty())
            return ImportProblem::None;
        const qint64 announced = archive_entry_size_is_set(entry) != 0 ? archive_entry_size(entry) : 0;
        if (announced < 0 || announced > m_sizeLeft)
            return ImportProblem::TooLarge;
        if (isHidden(*path)) {
            // To get past them, they are unpacked, too.
            m_sizeLeft -= announced;
            return ImportProblem::None;
        }
        return isNew(*path) ? unpackFile(m_below + u'/' + *path, announced) : ImportProblem::Damaged;
    }

    /// False for a file that comes twice, or is a directory elsewhere in the archive.
    bool isNew(const QString &path) {
        for (qsizetype slash = path.indexOf(u'/'); slash >= 0; slash = path.indexOf(u'/', slash + 1)) {
            const QString parent = path.left(slash);
            if (m_files.contains(parent))
                return false;
            m_directories.insert(parent);
        }
        const bool isTaken = m_files.contains(path) || m_directories.contains(path);
        m_files.insert(path);
        return !isTaken;
    }

    ImportProblem unpackFile(const QString &path, qint64 announced) {
        if (const auto problem = m_directory.startFile(path, announced);
            problem != DurableFile::Problem::None)
            return importProblem(problem);
        qint64 end = 0;
        for (;;) {
            const void *bytes = nullptr;
            std::size_t size = 0;
            la_int64_t offset = 0;
            const int status = archive_read_data_block(m_archive.get(), &bytes, &size, &offset);
            if (status == ARCHIVE_EOF)
                break;
            if (status != ARCHIVE_OK || offset < 0)
                return failure();
            if (m_file.isStopped())
                return ImportProblem::Cancelled;
            const auto count = static_cast<qint64>(size);
            if (offset > m_sizeLeft - count)
                return ImportProblem::TooLarge;
            const QByteArrayView piece(static_cast<const char *>(bytes), count);
            if (const auto problem = m_directory.write(offset, piece); problem != DurableFile::Problem::None)
                return importProblem(problem);
            end = std::max(end, offset + count);
        }
        // A file with holes may end with one.
        end = std::max(end, announced);
        m_sizeLeft -= end;
        return importProblem(m_directory.finishFile(end));
    }

    CountedFile &m_file;
    ScratchDirectory &m_directory;
    QString m_below;
    const ImportLimits &m_limits;
    qint64 m_sizeLeft;
    QSet<QString> m_files;
    QSet<QString> m_directories;
    ArchiveHandle m_archive;
};

} // namespace

bool hasArchiveName(const QString &path) {
    static constexpr std::array suffixes{".tar",    ".tar.gz", ".tgz",     ".tar.bz2", ".tbz2", ".tbz",
                                         ".tar.xz", ".txz",    ".tar.zst", ".tzst",    ".zip",  ".7z"};
    return std::ranges::any_of(suffixes, [&path](const char *suffix) {
        return path.endsWith(QLatin1StringView(suffix), Qt::CaseInsensitive);
    });
}

CountedFile::CountedFile(const QString &path, std::stop_token stop, std::function<void(qint64)> onRead)
    : m_file(FileSnapshot::open(path)),
      m_size(m_file ? QFileInfo(path).size() : 0),
      m_stop(std::move(stop)),
      m_onRead(std::move(onRead)) {
    if (m_file)
        m_buffer.resize(std::min(pieceSize, m_size));
}

QByteArrayView CountedFile::read() {
    const qint64 size = std::min<qint64>(m_buffer.size(), m_size - m_position);
    if (size <= 0 || isStopped())
        return {};
    if (!m_file->read(m_position, m_buffer.data(), size)) {
        m_hasFailed = true;
        return {};
    }
    m_position += size;
    m_onRead(size);
    return QByteArrayView(m_buffer).first(size);
}

ImportProblem unpack(CountedFile &file, ScratchDirectory &directory, const QString &below,
                     const ImportLimits &limits) {
    return Unpacking(file, directory, below, limits).run();
}

} // namespace lexiquill
