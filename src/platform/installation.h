#pragma once

#include <QString>

#include <optional>

namespace lexiquill {

/// How this program is installed.
struct Installation {
    /// The application bundle that an update replaces: the one that the program runs from, or else the
    /// default path in this user's directory of applications.
    QString applicationPath;
    /// Whether the system's package manager updates the program, so that it must not update itself.
    bool isManagedBySystem = false;

    /// Derived from the directory of the program's executable file.
    static Installation of(const QString &executableDirectory, const QString &homeDirectory);
};

enum class ReplacementObstacle {
    UnreadableName, ///< the path is not valid text, so it cannot be written into a script
    NotWritable,
    NoUnpacker, ///< the program that unpacks archives is missing
};

/// Creates the directory around the bundle if it is missing. Returns why no bundle can be unpacked and put
/// there; no value when it can.
std::optional<ReplacementObstacle> obstacleToReplacing(const QString &applicationPath);

} // namespace lexiquill
