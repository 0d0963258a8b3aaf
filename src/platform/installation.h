#pragma once

#include <QString>

#include <optional>

namespace lexiquill {

/// How this program came onto the machine.
struct Installation {
    /// The application bundle that an update replaces: the one that the program runs from, or else the place
    /// where applications of this user lie.
    QString applicationPath;
    /// Whether the system's package manager keeps the program up to date, so that it must not do so itself.
    bool isManagedBySystem = false;

    /// Tells by the directory of the program's executable file.
    static Installation of(const QString &executableDirectory, const QString &homeDirectory);
};

enum class ReplacementObstacle {
    UnreadableName, ///< the path is no text, so it cannot be written into a script
    NotWritable,
    NoUnpacker, ///< the program that unpacks archives is missing
};

/// Makes the directory around the bundle if it is missing. Returns why no bundle can be unpacked and put
/// there; nothing when it can.
std::optional<ReplacementObstacle> obstacleToReplacing(const QString &applicationPath);

} // namespace lexiquill
