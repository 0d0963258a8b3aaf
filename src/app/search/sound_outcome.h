#pragma once

namespace lexiquill {

/// The exit status of lexiquill-sound-player.
enum class SoundOutcome {
    Played = 0,
    NoMultimedia = 3, ///< Qt's multimedia components are not installed
    NoDevice = 4,     ///< there is nothing to hear it from
    Unplayable = 5,   ///< no sound, or in a format that cannot be decoded here
};

} // namespace lexiquill
