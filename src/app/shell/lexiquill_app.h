#pragma once

#include <QQmlEngine>
#include <QUrl>

#include <functional>

namespace lexiquill {

class StorageManager;
struct Services;

/// The desktop application.
namespace LexiquillApp {

/// Runs the application until it quits, and returns its exit status. `loadWords` reads the wordbook, on
/// another thread; `makeServices` makes the rest when that is done, on this one.
int run(int argc, char **argv, const std::function<StorageManager &()> &loadWords,
        const std::function<Services &()> &makeServices);

/// Sets up the process-wide state of a graphical application.
void setUpApplication();
/// Makes the screens known to the engine.
void prepare(QQmlEngine &engine);
QUrl mainWindowUrl();

} // namespace LexiquillApp

} // namespace lexiquill
