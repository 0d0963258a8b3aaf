#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace lexiquill {

/// The lookup service for other programs.
class DictionaryServiceProvider {
public:
    /// `perform` is called with each text that can be looked up, from the event loop.
    explicit DictionaryServiceProvider(std::function<void(const QString &)> perform);

    /// Looks the text up asynchronously. Returns an error message if the text is blank.
    std::optional<QString> lookup(const QString &text) const;

private:
    std::function<void(const QString &)> m_perform;
};

} // namespace lexiquill
