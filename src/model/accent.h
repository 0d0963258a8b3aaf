#pragma once

namespace lexiquill {

/// How English is pronounced.
enum class Accent { British, American };

} // namespace lexiquill
