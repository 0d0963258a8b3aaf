#pragma once

// Registers the services under their QML names.

#include "hotkey/hot_key_manager.h"
#include "lookup/dictionary_service.h"
#include "storage/storage_manager.h"
#include "sync/sync_manager.h"
#include "update/update_manager.h"

#include <QJSEngine>
#include <QQmlEngine>

namespace lexiquill {

struct StorageManagerElement {
    Q_GADGET
    QML_FOREIGN(lexiquill::StorageManager)
    QML_NAMED_ELEMENT(StorageManager)
    QML_SINGLETON

public:
    static StorageManager *create(QQmlEngine *engine, QJSEngine *scripts);
};

struct DictionaryServiceElement {
    Q_GADGET
    QML_FOREIGN(lexiquill::DictionaryService)
    QML_NAMED_ELEMENT(DictionaryService)
    QML_SINGLETON

public:
    static DictionaryService *create(QQmlEngine *engine, QJSEngine *scripts);
};

struct HotKeyManagerElement {
    Q_GADGET
    QML_FOREIGN(lexiquill::HotKeyManager)
    QML_NAMED_ELEMENT(HotKeyManager)
    QML_SINGLETON

public:
    static HotKeyManager *create(QQmlEngine *engine, QJSEngine *scripts);
};

struct SyncManagerElement {
    Q_GADGET
    QML_FOREIGN(lexiquill::SyncManager)
    QML_NAMED_ELEMENT(SyncManager)
    QML_SINGLETON

public:
    static SyncManager *create(QQmlEngine *engine, QJSEngine *scripts);
};

struct UpdateManagerElement {
    Q_GADGET
    QML_FOREIGN(lexiquill::UpdateManager)
    QML_NAMED_ELEMENT(UpdateManager)
    QML_SINGLETON

public:
    static UpdateManager *create(QQmlEngine *engine, QJSEngine *scripts);
};

struct HotKeyShortcutElement {
    Q_GADGET
    QML_FOREIGN(lexiquill::HotKeyShortcut)
    QML_VALUE_TYPE(hotKeyShortcut)
};

struct RemoteUpdateInfoElement {
    Q_GADGET
    QML_FOREIGN(lexiquill::RemoteUpdateInfo)
    QML_VALUE_TYPE(remoteUpdateInfo)
};

/// The enumerations of the services, for example `Lexiquill.YoudaoOnline`.
namespace EnumerationsElement {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(lexiquill)
QML_NAMED_ELEMENT(Lexiquill)
} // namespace EnumerationsElement

} // namespace lexiquill
