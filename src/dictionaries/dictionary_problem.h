#pragma once

#include <QMetaType>

namespace lexiquill {

/// Why a dictionary, or a file that should become one, cannot be used.
enum class DictionaryProblem {
    None,
    Unreadable,    ///< a file is missing or may not be read
    UnknownFormat, ///< the content is not what the name of the file promises
    NewerFormat,   ///< a version of the format that is not supported
    Encrypted,     ///< needs a key that only the dictionary's maker gives
    Damaged,       ///< the parts of the files contradict each other
    TooLarge,      ///< more than this program reads
    NoUnpacker,    ///< compressed in a way for which a library is missing
};

} // namespace lexiquill
