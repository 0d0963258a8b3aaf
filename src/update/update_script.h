#pragma once

#include <QByteArray>
#include <QString>

namespace lexiquill {

/// The places that an update uses while it is installed.
struct UpdatePaths {
    QString archive;         ///< the downloaded zip archive
    QString unpackDirectory; ///< where it is unpacked
    QString script;          ///< the installer script
    QString log;             ///< what the script says

    /// The fixed names in a directory.
    static UpdatePaths in(const QString &directory);
};

/// The operating system whose commands a script uses.
enum class ScriptPlatform { MacOS, Linux };

/// The bash script that waits for the process `pid` to end, puts the bundle from the archive into the place
/// of `applicationPath`, and starts it. Paths may hold any character but NUL.
QByteArray updateScript(ScriptPlatform platform, const UpdatePaths &paths, const QString &applicationPath,
                        qint64 pid);

/// The text as one word of a bash command line; a plain one stays as it is.
QString shellWord(const QString &text);

} // namespace lexiquill
