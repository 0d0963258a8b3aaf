#pragma once

#include <QString>

/// The names of the application on the session bus.
namespace lexiquill::BusNames {
inline const QString service = QStringLiteral("com.lexiquill.Lexiquill");
inline const QString path = QStringLiteral("/com/lexiquill/Lexiquill");
inline const QString applicationInterface = QStringLiteral("org.freedesktop.Application");
} // namespace lexiquill::BusNames
