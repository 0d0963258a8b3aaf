#include "app/qml_services.h"

#include "app/services.h"

namespace lexiquill {

namespace {

/// The engine must never delete a service.
template <typename Service> Service *lent(Service &service) {
    QJSEngine::setObjectOwnership(&service, QJSEngine::CppOwnership);
    return &service;
}

} // namespace

StorageManager *StorageManagerElement::create(QQmlEngine *, QJSEngine *) {
    return lent(Services::current().storage());
}

DictionaryService *DictionaryServiceElement::create(QQmlEngine *, QJSEngine *) {
    return lent(Services::current().dictionary());
}

HotKeyManager *HotKeyManagerElement::create(QQmlEngine *, QJSEngine *) {
    return lent(Services::current().hotKeys());
}

SyncManager *SyncManagerElement::create(QQmlEngine *, QJSEngine *) {
    return lent(Services::current().sync());
}

UpdateManager *UpdateManagerElement::create(QQmlEngine *, QJSEngine *) {
    return lent(Services::current().updater());
}

} // namespace lexiquill
