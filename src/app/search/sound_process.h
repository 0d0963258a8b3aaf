#pragma once

#include "sound_player/sound_outcome.h"

#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QTimer>

namespace lexiquill {

/// Runs lexiquill-sound-player, one at a time.
class SoundProcess : public QObject {
    Q_OBJECT

public:
    explicit SoundProcess(QObject *parent = nullptr);
    ~SoundProcess() override;

    /// Starts the player and stops the one before; see src/main/sound_player_main.cpp for the arguments.
    void start(const QStringList &arguments);
    /// Stops the sound; does not emit finished().
    void stop();

Q_SIGNALS:
    /// The sound begins.
    void started();
    /// A player that crashed or did not begin in time counts as Unplayable.
    void finished(SoundOutcome outcome);

private:
    void end(SoundOutcome outcome);

    QPointer<QProcess> m_player; ///< null while nothing plays
    QTimer m_patience;
};

} // namespace lexiquill
