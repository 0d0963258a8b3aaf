#include "sound_player/recording.h"

#include <QMediaDevices>
#include <QUrl>

#include <chrono>
#include <utility>

namespace lexiquill {

using namespace std::chrono_literals;

namespace {

/// Longer than any spoken word.
constexpr std::chrono::microseconds longestSound = 20s;
/// The decoder does not tell when it gives a file up, so it may take this long for each piece of sound.
constexpr std::chrono::seconds longestSilence = 3s;
/// Played after the sound, because the sink drops what it still holds when it stops.
constexpr std::chrono::microseconds trailingSilence = 500ms;

} // namespace

Recording::Recording(const QString &file, std::function<void()> started,
                     std::function<void(SoundOutcome)> finished)
    : m_started(std::move(started)),
      m_finished(std::move(finished)),
      m_device(QMediaDevices::defaultAudioOutput()) {
    if (m_device.isNull()) {
        m_finished(SoundOutcome::NoDevice);
        return;
    }
    m_format = m_device.preferredFormat();
    m_format.setSampleFormat(QAudioFormat::Int16);
    m_silence.setSingleShot(true);
    m_silence.callOnTimeout([this] { play(); });
    QObject::connect(&m_decoder, &QAudioDecoder::bufferReady, [this] { take(); });
    QObject::connect(&m_decoder, &QAudioDecoder::finished, [this] { play(); });
    QObject::connect(&m_decoder, qOverload<QAudioDecoder::Error>(&QAudioDecoder::error), [this] { play(); });
    m_decoder.setAudioFormat(m_format);
    m_decoder.setSource(QUrl::fromLocalFile(file));
    m_silence.start(longestSilence);
    m_decoder.start();
}

void Recording::take() {
    const QAudioBuffer buffer = m_decoder.read();
    if (m_sink || !buffer.isValid())
        return;
    m_silence.start(longestSilence);
    m_samples.append(buffer.constData<char>(), buffer.byteCount());
    if (m_samples.size() >= m_format.bytesForDuration(longestSound.count()))
        play();
}

void Recording::play() {
    if (m_sink)
        return;
    m_silence.stop();
    if (m_samples.isEmpty()) {
        m_finished(SoundOutcome::Unplayable);
        return;
    }
    m_samples.append(m_format.bytesForDuration(trailingSilence.count()), '\0');
    m_source.setData(m_samples);
    m_source.open(QIODevice::ReadOnly);
    m_sink = std::make_unique<QAudioSink>(m_device, m_format);
    QObject::connect(m_sink.get(), &QAudioSink::stateChanged, [this](QAudio::State state) {
        // A busy machine can make it idle in the middle.
        if ((state == QAudio::IdleState && m_source.atEnd()) || state == QAudio::StoppedState)
            m_finished(m_sink->error() == QAudio::OpenError || m_sink->error() == QAudio::FatalError
                           ? SoundOutcome::NoDevice
                           : SoundOutcome::Played);
    });
    m_started();
    m_sink->start(&m_source);
    m_decoder.stop();
}

} // namespace lexiquill
