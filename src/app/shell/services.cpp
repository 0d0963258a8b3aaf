#include "app/shell/services.h"

#include <QtGlobal>

namespace lexiquill {

namespace {

Services *currentServices = nullptr;

} // namespace

Services &Services::current() {
    Q_ASSERT(currentServices != nullptr);
    return *currentServices;
}

void Services::setCurrent(Services *services) {
    currentServices = services;
}

} // namespace lexiquill
