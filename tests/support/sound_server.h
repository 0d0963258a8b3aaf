#pragma once

#include "test.h"

#include <QProcess>
#include <QtEndian>

#include <cmath>
#include <numbers>

namespace lexiquill {

/// A sound server of its own, whose only device plays into nothing. What is played there is recorded.
class SoundServer {
public:
    SoundServer() {
        for (const char *name : {"HOME", "XDG_RUNTIME_DIR"})
            m_server.setProcessEnvironment(with(m_server.processEnvironment(), name, m_directory.path()));
        m_server.start(u"pulseaudio"_s,
                       {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"--use-pid-file=no"_s,
                        u"--disable-shm=yes"_s, u"--load=module-null-sink sink_name=test rate=48000"_s,
                        u"--load=module-native-protocol-unix auth-anonymous=1 socket="_s + socket()});
        QTRY_VERIFY(QFile::exists(socket()));
        m_recorder.setProcessEnvironment(with(m_server.processEnvironment(), "PULSE_SERVER", address()));
        m_recorder.start(u"parec"_s, {u"--device=test.monitor"_s, u"--format=s16le"_s, u"--channels=1"_s,
                                      u"--rate=%1"_s.arg(rate), u"--latency-msec=50"_s});
        // The monitor of an idle device delivers silence.
        QTRY_VERIFY(m_recorder.bytesAvailable() > 0);
    }
    ~SoundServer() {
        for (QProcess *const process : {&m_recorder, &m_server}) {
            process->kill();
            process->waitForFinished();
        }
    }
    Q_DISABLE_COPY_MOVE(SoundServer)

    /// The value of PULSE_SERVER for its clients.
    QString address() const { return u"unix:"_s + socket(); }

    /// The milliseconds for which a tone of this frequency has been played so far.
    int heard(int frequency) {
        m_recorded += m_recorder.readAllStandardOutput();
        constexpr qsizetype piece = rate / 50;
        int pieces = 0;
        for (qsizetype at = 0; at + piece <= m_recorded.size() / 2; at += piece)
            pieces += isTone(at, piece, frequency) ? 1 : 0;
        return pieces * 1000 / 50;
    }

private:
    static constexpr int rate = 8000;

    static QProcessEnvironment with(QProcessEnvironment environment, const char *name, const QString &value) {
        if (environment.isEmpty())
            environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(name), value);
        return environment;
    }
    QString socket() const { return m_directory.filePath(u"native"_s); }

    /// Goertzel's algorithm: whether most of the power of some samples is at one frequency.
    bool isTone(qsizetype from, qsizetype count, int frequency) const {
        const double factor = 2 * std::cos(2 * std::numbers::pi * frequency / rate);
        double last = 0;
        double previous = 0;
        double power = 0;
        for (qsizetype i = from; i < from + count; ++i) {
            const double sample = qFromLittleEndian<qint16>(m_recorded.constData() + 2 * i);
            power += sample * sample;
            previous = std::exchange(last, sample + factor * last - previous);
        }
        const double found = (last * last + previous * previous - factor * last * previous) * 2;
        constexpr double quietest = 100 * 100;
        return power > quietest * static_cast<double>(count) &&
               found > 0.7 * power * static_cast<double>(count);
    }

    QTemporaryDir m_directory;
    QProcess m_server;
    QProcess m_recorder;
    QByteArray m_recorded;
};

/// A WAV file with tones of these frequencies one after the other, each `milliseconds` long.
inline QByteArray tones(const QList<int> &frequencies, int milliseconds) {
    constexpr int rate = 24'000;
    const auto number = [](auto value) {
        const auto stored = qToLittleEndian(value);
        return QByteArray(reinterpret_cast<const char *>(&stored), sizeof stored);
    };
    QByteArray samples;
    for (const int frequency : frequencies) {
        for (int i = 0; i < rate / 1000 * milliseconds; ++i)
            samples += number(
                static_cast<qint16>(8000 * std::sin(2 * std::numbers::pi * frequency * i / double{rate})));
    }
    const quint32 size = static_cast<quint32>(samples.size());
    return "RIFF" + number(size + 36) + "WAVEfmt " + number(quint32{16}) + number(quint16{1}) +
           number(quint16{1}) + number(quint32{rate}) + number(quint32{2 * rate}) + number(quint16{2}) +
           number(quint16{16}) + "data" + number(size) + samples;
}

} // namespace lexiquill
