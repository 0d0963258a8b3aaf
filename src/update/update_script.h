#pragma once

#include <QByteArray>
#include <QString>

namespace lexiquill {

/// The paths that an update uses while it is installed.
struct UpdatePaths {
    QString archive;         ///< the downloaded zip archive
    QString unpackDirectory; ///< where it is unpacked
    QString script;          ///< the installer script
    QString log;             ///< the output of the script

    /// The paths in `directory`; the names are fixed.
    static UpdatePaths in(const QString &directory);
};

/// The operating system whose commands a script uses.
enum class ScriptPlatform { MacOS, Linux };

/// The bash script that waits for the process `pid` to end, replaces `applicationPath` with the bundle from
/// the archive, and starts it. Paths may contain any character except NUL.
QByteArray updateScript(ScriptPlatform platform, const UpdatePaths &paths, const QString &applicationPath,
                        qint64 pid);

/// The text as one word of a bash command line; a plain text is unchanged.
QString shellWord(const QString &text);

} // namespace lexiquill
