#pragma once

#include <cstdlib>

/// Reports a finding unless `holds`.
inline void check(bool holds) {
    if (!holds)
        std::abort();
}
