#include "app/app_delegate.h"

#include <QCoreApplication>

namespace lexiquill {

AppDelegate &AppDelegate::shared() {
    static auto *const instance = new AppDelegate;
    return *instance;
}

AppDelegate *AppDelegate::create(QQmlEngine *, QJSEngine *) {
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

void AppDelegate::terminate() {
    QCoreApplication::quit();
}

} // namespace lexiquill
