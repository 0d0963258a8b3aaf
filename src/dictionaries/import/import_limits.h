#pragma once

#include <QtGlobal>

namespace lexiquill {

/// What may be imported from one path.
struct ImportLimits {
    qint64 size = qint64{4} << 30; ///< bytes in all files
    int files = 20'000;            ///< files and directories
    /// An archive may unpack to `freeSize` bytes and `ratio` times its own size.
    qint64 freeSize = qint64{64} << 20;
    qint64 ratio = 200;
    int depth = 16;      ///< of directories
    int nameSize = 255;  ///< bytes of one name
    int pathSize = 1024; ///< bytes of a path in an archive
};

} // namespace lexiquill
