#include "platform/mapped_file.h"

#include <sys/stat.h>

namespace lexiquill {

FileStamp stampOf(const QString &path) {
    struct stat status {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    return {status.st_size, status.st_mtim.tv_sec * qint64(1'000'000'000) + status.st_mtim.tv_nsec};
}

bool MappedFile::open(const QString &path, qint64 maxSize) {
    close();
    // Opening a named pipe or a device could block or never end.
    if (!stampOf(path).exists())
        return false;
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    const qint64 size = m_file.size();
    const bool fits = size >= 0 && size <= maxSize;
    uchar *bytes = fits && size > 0 ? m_file.map(0, size) : nullptr;
    // The mapping stays valid without the descriptor. Many dictionaries would otherwise need too many
    // descriptors.
    m_file.close();
    if (bytes != nullptr)
        m_data = QByteArrayView(bytes, size);
    return fits && (bytes != nullptr || size == 0);
}

void MappedFile::close() {
    if (!m_data.isEmpty())
        m_file.unmap(reinterpret_cast<uchar *>(const_cast<char *>(m_data.data())));
    m_data = {};
}

} // namespace lexiquill
