#include "app/shell/qml_services.h"

#include "app/shell/lent.h"
#include "app/shell/services.h"

namespace lexiquill {

StorageManager *StorageManagerElement::create(QQmlEngine *, QJSEngine *) {
    return lent(Services::current().storage);
}

DictionaryService *DictionaryServiceElement::create(QQmlEngine *, QJSEngine *) {
    return lent(Services::current().dictionary);
}

HotKeyManager *HotKeyManagerElement::create(QQmlEngine *, QJSEngine *) {
    return lent(Services::current().hotKeys);
}

SyncManager *SyncManagerElement::create(QQmlEngine *, QJSEngine *) {
    return lent(Services::current().sync);
}

UpdateManager *UpdateManagerElement::create(QQmlEngine *, QJSEngine *) {
    return lent(Services::current().updater);
}

} // namespace lexiquill
