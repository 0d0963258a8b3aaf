#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <archive.h>
#include <archive_entry.h>
#include <sys/stat.h>

#include <vector>

namespace lexiquill {

/// One entry of an archive that a test writes; the name need not be proper.
struct ArchivedFile {
    QByteArray name;
    QByteArray content = {};
    unsigned type = AE_IFREG;
    QByteArray link = {}; ///< target of a symbolic link; with the type of a file, of a hard link
};

/// Writes an archive whose kind follows from the suffix of its name. False on failure.
inline bool writeArchive(const QString &path, const std::vector<ArchivedFile> &files) {
    archive *const output = archive_write_new();
    const QByteArray name = QFile::encodeName(path);
    const auto hasSuffix = [&name](const char *suffix) {
        return name.endsWith(suffix);
    };
    if (hasSuffix(".zip"))
        archive_write_set_format_zip(output);
    else if (hasSuffix(".7z"))
        archive_write_set_format_7zip(output);
    else
        archive_write_set_format_pax_restricted(output);
    if (hasSuffix(".gz") || hasSuffix(".tgz"))
        archive_write_add_filter_gzip(output);
    else if (hasSuffix(".bz2"))
        archive_write_add_filter_bzip2(output);
    else if (hasSuffix(".xz"))
        archive_write_add_filter_xz(output);
    else if (hasSuffix(".zst"))
        archive_write_add_filter_zstd(output);
    bool isWritten = archive_write_open_filename(output, name.constData()) == ARCHIVE_OK;
    for (const ArchivedFile &file : files) {
        archive_entry *const entry = archive_entry_new();
        archive_entry_set_pathname(entry, file.name.constData());
        archive_entry_set_filetype(entry, file.type);
        archive_entry_set_perm(entry, 04777);
        if (file.type == AE_IFLNK)
            archive_entry_set_symlink(entry, file.link.constData());
        else if (!file.link.isEmpty())
            archive_entry_set_hardlink(entry, file.link.constData());
        else
            archive_entry_set_size(entry, file.content.size());
        isWritten = isWritten && archive_write_header(output, entry) >= ARCHIVE_WARN;
        const auto size = static_cast<std::size_t>(file.content.size());
        if (isWritten && size > 0)
            isWritten = archive_write_data(output, file.content.constData(), size) == file.content.size();
        archive_entry_free(entry);
    }
    isWritten = archive_write_close(output) == ARCHIVE_OK && isWritten;
    archive_write_free(output);
    return isWritten;
}

} // namespace lexiquill
