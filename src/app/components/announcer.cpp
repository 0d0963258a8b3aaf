#include "app/components/announcer.h"

#include <QAccessible>

namespace lexiquill {

void Announcer::announce(QQuickItem *message) {
    if (message == nullptr)
        return;
    // Screen readers on Linux follow what is shown, others only alerts. Qt's own event comes before the text.
    for (const QAccessible::Event type : {QAccessible::ObjectShow, QAccessible::Alert}) {
        QAccessibleEvent event(message, type);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace lexiquill
