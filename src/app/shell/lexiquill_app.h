#pragma once

#include <QQmlEngine>
#include <QString>
#include <QUrl>

namespace lexiquill {

/// The desktop application.
namespace LexiquillApp {

/// Sets up the process-wide state of a graphical application.
void setUpApplication();
/// Lets the engine find the screens.
void prepare(QQmlEngine &engine);
QUrl mainWindowUrl();
/// The name of the program's desktop file, without its suffix.
QString desktopFileName();

} // namespace LexiquillApp

} // namespace lexiquill
