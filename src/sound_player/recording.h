#pragma once

#include "sound_player/sound_outcome.h"

#include <QAudioDecoder>
#include <QAudioDevice>
#include <QAudioSink>
#include <QBuffer>
#include <QTimer>

#include <functional>
#include <memory>

namespace lexiquill {

/// Plays a sound file once, or its beginning if it is longer than any spoken word. The file is decoded before
/// the first sound, so that neither its start nor its end is lost.
class Recording {
public:
    /// `started` is called before the first sound, `finished` once.
    Recording(const QString &file, std::function<void()> started, std::function<void(SoundOutcome)> finished);
    Q_DISABLE_COPY_MOVE(Recording)

private:
    void take();
    void play();

    std::function<void()> m_started;
    std::function<void(SoundOutcome)> m_finished;
    QAudioDevice m_device;
    QAudioFormat m_format;
    QByteArray m_samples;
    QBuffer m_source;
    QTimer m_silence; ///< until the decoder must have found something
    QAudioDecoder m_decoder;
    std::unique_ptr<QAudioSink> m_sink;
};

} // namespace lexiquill
