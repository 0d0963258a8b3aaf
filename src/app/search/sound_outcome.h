#pragma once

namespace lexiquill {

/// The exit status of lexiquill-sound-player.
enum class SoundOutcome {
    Played = 0,
    NoMultimedia = 3, ///< Qt's multimedia components are not installed
    NoDevice = 4,     ///< there is no audio output device
    Unplayable = 5,   ///< not a sound, or a format that cannot be decoded
};

} // namespace lexiquill
