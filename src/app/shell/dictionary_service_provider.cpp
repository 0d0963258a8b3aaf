#include "app/shell/dictionary_service_provider.h"

#include "platform/application_endpoint.h"

#include <QCoreApplication>
#include <QTimer>

namespace lexiquill {

DictionaryServiceProvider::DictionaryServiceProvider(std::function<void(const QString &)> perform)
    : m_perform(std::move(perform)) {}

std::optional<QString> DictionaryServiceProvider::lookup(const QString &text) const {
    const QString trimmed = text.trimmed().left(ApplicationRequests::longestText);
    if (trimmed.isEmpty())
        return QStringLiteral("No valid text provided.");
    QTimer::singleShot(0, QCoreApplication::instance(), [perform = m_perform, trimmed] { perform(trimmed); });
    return std::nullopt;
}

} // namespace lexiquill
