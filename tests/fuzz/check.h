#pragma once

#include <cstdlib>

/// A finding unless `holds`.
inline void check(bool holds) {
    if (!holds)
        std::abort();
}
