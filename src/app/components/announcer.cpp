#include "app/components/announcer.h"

#include <QAccessible>

namespace lexiquill {

void Announcer::announce(QQuickItem *alert) {
    if (alert == nullptr || !QAccessible::isActive())
        return;
    // Some screen readers speak on the alert event, others when an alert appears.
    for (const QAccessible::Event kind : {QAccessible::Alert, QAccessible::ObjectShow}) {
        QAccessibleEvent event(alert, kind);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace lexiquill
