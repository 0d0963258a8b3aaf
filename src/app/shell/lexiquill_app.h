#pragma once

#include <QQmlEngine>
#include <QUrl>

namespace lexiquill {

/// The desktop application.
namespace LexiquillApp {

/// Sets up the process-wide state of a graphical application.
void setUpApplication();
/// Lets the engine find the screens.
void prepare(QQmlEngine &engine);
QUrl mainWindowUrl();

} // namespace LexiquillApp

} // namespace lexiquill
