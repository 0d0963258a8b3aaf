#pragma once

namespace lexiquill {

/// The exit status of lexiquill-sound-player.
enum class SoundOutcome {
    Played = 0,
    NoDevice = 4,        ///< there is no audio output device
    Unplayable = 5,      ///< not a sound, or a format that cannot be decoded
    NoSpeechService = 6, ///< the system's speech service is not installed or does not answer
    NoVoice = 7,         ///< the speech service has no engine that can speak
    NoPlayer = 127,      ///< the player or a library that it needs is missing; the dynamic linker's status
};

} // namespace lexiquill
