import QtMultimedia
import QtQuick

/// Plays a sound file once.
Item {
    id: player

    required property url file

    /// Ends the process with a SoundOutcome as exit status, after pending events.
    function finish(outcome: int): void {
        Qt.callLater(Qt.exit, outcome);
    }

    Component.onCompleted: {
        if (devices.audioOutputs.length === 0)
            player.finish(4);
        else
            media.active = true;
    }

    MediaDevices {
        id: devices
    }
    // Without an output device, even creating a MediaPlayer can terminate the process.
    Loader {
        id: media

        active: false
        sourceComponent: MediaPlayer {
            audioOutput: AudioOutput {}
            source: player.file
            onErrorOccurred: player.finish(5)
            onPlaybackStateChanged: if (playbackState === MediaPlayer.StoppedState)
                player.finish(0)
            Component.onCompleted: play()
        }
    }
}
