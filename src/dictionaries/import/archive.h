#pragma once

#include "dictionaries/import/import_limits.h"
#include "dictionaries/import/import_result.h"
#include "platform/file_snapshot.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <stop_token>

struct archive;

namespace lexiquill {

class ScratchDirectory;

/// Whether the name of a file promises an archive that can be unpacked.
bool hasArchiveName(const QString &path);

/// The content of a file in pieces, with the bytes counted.
class CountedFile {
public:
    /// `onRead` gets the number of bytes of each piece.
    CountedFile(const QString &path, std::stop_token stop, std::function<void(qint64)> onRead);

    bool isOpen() const { return m_file != nullptr; }
    qint64 size() const { return m_size; }
    bool isStopped() const { return m_stop.stop_requested(); }

    /// The next piece; empty at the end and when stopped. `hasFailed` is set by a read error.
    QByteArrayView read();
    void seek(qint64 position) { m_position = position; }
    qint64 position() const { return m_position; }
    bool hasFailed() const { return m_hasFailed; }

private:
    std::unique_ptr<FileSnapshot> m_file;
    qint64 m_size = 0;
    qint64 m_position = 0;
    bool m_hasFailed = false;
    std::stop_token m_stop;
    std::function<void(qint64)> m_onRead;
    QByteArray m_buffer;
};

/// Unpacks an archive into a directory: only files and directories with safe names. Hidden files are left
/// out. Stops at the first problem; what is unpacked until then stays there.
ImportProblem unpack(CountedFile &file, ScratchDirectory &directory, const QString &below,
                     const ImportLimits &limits);

} // namespace lexiquill
