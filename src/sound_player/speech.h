#pragma once

#include "sound_player/sound_outcome.h"

#include <QString>

#include <functional>
#include <memory>

namespace lexiquill {

/// Has the system's speech service speak a text. One instance at a time.
class Speech {
public:
    /// `language`: such as "en-GB". Starts the service if it does not run. Waits for its answers, however
    /// long they take. `started` and `finished` are called by the event loop of the main thread.
    Speech(const QString &text, const QString &language, std::function<void()> started,
           const std::function<void(SoundOutcome)> &finished);
    /// Ends the speech, too.
    ~Speech();
    Q_DISABLE_COPY_MOVE(Speech)

private:
    struct Connection;

    std::unique_ptr<Connection> m_connection;
};

} // namespace lexiquill
