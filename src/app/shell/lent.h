#pragma once

#include <QJSEngine>

namespace lexiquill {

/// Hands an object to QML that belongs to somebody else: the engine must never delete it.
template <typename Object> Object *lent(Object &object) {
    QJSEngine::setObjectOwnership(&object, QJSEngine::CppOwnership);
    return &object;
}

} // namespace lexiquill
