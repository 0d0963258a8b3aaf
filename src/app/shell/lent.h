#pragma once

#include <QJSEngine>

namespace lexiquill {

/// Passes an object to QML that the engine does not own and must never delete.
template <typename Object> Object *lent(Object &object) {
    QJSEngine::setObjectOwnership(&object, QJSEngine::CppOwnership);
    return &object;
}

} // namespace lexiquill
