#include "platform/installation.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace lexiquill {

Installation Installation::of(const QString &executableDirectory, const QString &homeDirectory) {
    // Programs that an administrator has built are in /usr/local; the package manager does not update them.
    const bool isManaged = executableDirectory.startsWith(QLatin1StringView("/usr/")) &&
                           !executableDirectory.startsWith(QLatin1StringView("/usr/local/"));
    const qsizetype lastSlash = executableDirectory.lastIndexOf(u'/');
    const QString around = executableDirectory.left(lastSlash);
    const bool isBundle =
        QStringView(executableDirectory).sliced(lastSlash + 1) == QLatin1StringView("bin") &&
        around.endsWith(QLatin1StringView(".app"));
    return {.applicationPath =
                isBundle ? around : homeDirectory + QStringLiteral("/Applications/Lexiquill.app"),
            .isManagedBySystem = isManaged};
}

std::optional<ReplacementObstacle> obstacleToReplacing(const QString &applicationPath) {
    // A file name may be invalid text; then it cannot be written into a script.
    if (applicationPath.contains(QChar::ReplacementCharacter))
        return ReplacementObstacle::UnreadableName;
    const QFileInfo bundle(applicationPath);
    const QString parent = bundle.absolutePath();
    const bool isReplaceable =
        (!bundle.exists() && !bundle.isSymLink()) || (bundle.isDir() && bundle.isWritable());
    if (!isReplaceable || !QDir().mkpath(parent) || !QFileInfo(parent).isWritable())
        return ReplacementObstacle::NotWritable;
    if (QStandardPaths::findExecutable(QStringLiteral("unzip")).isEmpty())
        return ReplacementObstacle::NoUnpacker;
    return std::nullopt;
}

} // namespace lexiquill
