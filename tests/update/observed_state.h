#pragma once

#include "update/update_manager.h"

#include <functional>

namespace lexiquill {

/// Reports each change that a screen would see, as "property=value". The value of a release is its version.
inline void observe(UpdateManager &manager, const std::function<void(const QString &)> &report) {
    const auto watch = [&](void (UpdateManager::*changed)(), const char *property) {
        QObject::connect(&manager, changed, &manager, [&manager, report, property] {
            const QVariant value = manager.property(property);
            const QString text = value.canConvert<RemoteUpdateInfo>()
                                     ? value.value<RemoteUpdateInfo>().version
                                     : value.toString();
            report(QString::fromLatin1(property) + u'=' + text);
        });
    };
    watch(&UpdateManager::isCheckingChanged, "isChecking");
    watch(&UpdateManager::availableUpdateChanged, "availableUpdate");
    watch(&UpdateManager::showUpdateSheetChanged, "showUpdateSheet");
    watch(&UpdateManager::isDownloadingChanged, "isDownloading");
    watch(&UpdateManager::downloadProgressChanged, "downloadProgress");
    watch(&UpdateManager::statusMessageChanged, "statusMessage");
    watch(&UpdateManager::errorMessageChanged, "errorMessage");
}

} // namespace lexiquill
