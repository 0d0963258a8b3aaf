#include "dictionaries/index/checked_pages.h"

#include "dictionaries/index/index_format.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>

namespace lexiquill {

using namespace headword_index;

quint32 headword_index::crcOf(QByteArrayView bytes) {
    return static_cast<quint32>(
        crc32_z(0, reinterpret_cast<const Bytef *>(bytes.data()), static_cast<z_size_t>(bytes.size())));
}

CheckedPages::CheckedPages(std::unique_ptr<FileSnapshot> file, qint64 start, qint64 size,
                           const QByteArray &sums)
    : m_file(std::move(file)),
      m_start(start),
      m_size(size),
      m_sums(sums),
      m_isVerified(static_cast<size_t>(pageCountOf(size)), false) {}

CheckedPages::CheckedPages(const QByteArray &image, qint64 start, qint64 size, const QByteArray &sums)
    : m_image(image),
      m_start(start),
      m_size(size),
      m_sums(sums),
      m_isVerified(static_cast<size_t>(pageCountOf(size)), false) {}

qint64 CheckedPages::sizeOf(qint64 page) const {
    return std::min(pageSize, m_size - page * pageSize);
}

bool CheckedPages::load(qint64 page, char *to) const {
    const qint64 size = sizeOf(page);
    const qint64 from = m_start + page * pageSize;
    if (!m_file)
        std::memcpy(to, m_image.constData() + from, static_cast<size_t>(size));
    else if (!m_file->read(from, to, size))
        m_isDamaged = true;
    if (!m_isVerified[static_cast<size_t>(page)] && !m_isDamaged) {
        quint32 sum = 0;
        std::memcpy(&sum, m_sums.constData() + page * qint64(sizeof sum), sizeof sum);
        m_isDamaged = crcOf({to, size}) != sum;
        m_isVerified[static_cast<size_t>(page)] = !m_isDamaged;
    }
    return !m_isDamaged;
}

QByteArrayView CheckedPages::restOfPage(qint64 offset) const {
    if (offset < 0 || offset >= m_size || m_isDamaged)
        return {};
    const qint64 page = offset / pageSize;
    Slot &slot = m_slots[static_cast<size_t>(page) % m_slots.size()];
    if (!slot.bytes)
        slot.bytes = std::make_unique_for_overwrite<char[]>(static_cast<size_t>(pageSize));
    if (slot.page != page) {
        slot.page = -1;
        if (!load(page, slot.bytes.get()))
            return {};
        slot.page = page;
    }
    const qint64 inPage = offset - page * pageSize;
    return {slot.bytes.get() + inPage, sizeOf(page) - inPage};
}

bool CheckedPages::read(qint64 offset, char *to, qint64 size) const {
    while (size > 0) {
        // Whole pages need no copy in between.
        const bool isWhole = offset >= 0 && offset % pageSize == 0 && offset < m_size && !m_isDamaged &&
                             size >= sizeOf(offset / pageSize);
        qint64 count = 0;
        if (isWhole) {
            if (!load(offset / pageSize, to))
                return false;
            count = sizeOf(offset / pageSize);
        } else {
            const QByteArrayView bytes = restOfPage(offset);
            if (bytes.isEmpty())
                return false;
            count = std::min<qint64>(size, bytes.size());
            std::memcpy(to, bytes.data(), static_cast<size_t>(count));
        }
        offset += count;
        to += count;
        size -= count;
    }
    return true;
}

} // namespace lexiquill
