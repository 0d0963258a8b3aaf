import QtMultimedia
import QtQuick

/// Plays a sound file. In a file of its own, because the multimedia libraries are only loaded for it.
Item {
    id: player

    signal failed(message: string)

    function play(file: url): void {
        if (devices.audioOutputs.length === 0) {
            player.failed("无法播放发音：没有可用的音频输出设备。");
            return;
        }
        media.stop();
        media.source = file;
        media.play();
    }

    MediaDevices {
        id: devices
    }
    MediaPlayer {
        id: media

        audioOutput: AudioOutput {}
        onErrorOccurred: player.failed("无法播放发音：音频格式不受支持。")
    }
}
