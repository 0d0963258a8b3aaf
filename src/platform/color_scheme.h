#pragma once

#include <functional>
#include <memory>
#include <optional>

namespace lexiquill {

/// Reports whether the desktop prefers dark colours, as soon as it is known and at each change; no value
/// means that the desktop has no preference. Reports nothing after it is destroyed.
class ColorScheme {
public:
    virtual ~ColorScheme() = default;
};

std::unique_ptr<ColorScheme> watchColorScheme(std::function<void(std::optional<bool> isDark)> report);

} // namespace lexiquill
