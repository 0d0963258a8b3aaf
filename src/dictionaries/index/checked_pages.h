#pragma once

#include "platform/file_snapshot.h"

#include <QByteArray>
#include <QByteArrayView>

#include <array>
#include <memory>
#include <vector>

namespace lexiquill {

/// The payload of an index file, read page by page by position. A page is compared with its checksum when it
/// is read first. The file may change or become shorter at any time.
class CheckedPages {
public:
    /// The payload begins at `start` in the file. `sums`: a 32-bit CRC for each page.
    CheckedPages(std::unique_ptr<FileSnapshot> file, qint64 start, qint64 size, const QByteArray &sums);
    /// The same for a file that is in memory.
    CheckedPages(const QByteArray &image, qint64 start, qint64 size, const QByteArray &sums);

    qint64 size() const { return m_size; }

    /// The bytes from `offset` to the end of their page; empty outside the payload and for a damaged page.
    /// Valid until the next call.
    QByteArrayView restOfPage(qint64 offset) const;

    /// Copies `size` bytes; false outside the payload and for a damaged page.
    bool read(qint64 offset, char *to, qint64 size) const;

    /// True once a page could not be read or did not match its checksum.
    bool isDamaged() const { return m_isDamaged; }

private:
    struct Slot {
        qint64 page = -1;
        std::unique_ptr<char[]> bytes;
    };

    qint64 sizeOf(qint64 page) const;
    bool load(qint64 page, char *to) const;

    std::unique_ptr<FileSnapshot> m_file;
    QByteArray m_image;
    qint64 m_start;
    qint64 m_size;
    QByteArray m_sums;
    mutable std::vector<bool> m_isVerified;
    mutable std::array<Slot, 32> m_slots;
    mutable bool m_isDamaged = false;
};

} // namespace lexiquill
