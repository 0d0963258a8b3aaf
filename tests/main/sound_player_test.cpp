// The program that plays recordings and speaks, with a real sound server and a speech service that only
// listens.

#include "sound_player/sound_outcome.h"
#include "support/sound_server.h"
#include "support/speech_server.h"

#include <memory>
#include <utility>

using namespace lexiquill;

class SoundPlayerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.remove(u"QT_MEDIA_BACKEND"_s);
        m_environment.insert(u"PULSE_SERVER"_s, u"unix:/nonexistent"_s);
        m_environment.insert(u"SPEECHD_ADDRESS"_s, u"unix_socket:/nonexistent"_s);
    }

    void wholeRecordingsAreHeard_data() { addRows("wav\nmp3"); }
    void wholeRecordingsAreHeard() {
        QFETCH(const QStringList, cells);
        SoundServer server;
        QVERIFY(writeFile(file(u"wav"_s), tones({600, 1000, 1400}, 300)));
        if (cells[0] == u"mp3")
            QCOMPARE(QProcess::execute(u"lame"_s, {u"--quiet"_s, file(u"wav"_s), file(u"mp3"_s)}), 0);
        // The name need not show the format.
        QFile::remove(file(u"sound"_s));
        QVERIFY(QFile::rename(file(cells[0]), file(u"sound"_s)));
        m_environment.insert(u"PULSE_SERVER"_s, server.address());
        QCOMPARE(run({file(u"sound"_s)}), SoundOutcome::Played);
        for (const int frequency : {600, 1000, 1400}) {
            QTRY_VERIFY2(server.heard(frequency) >= 240, qPrintable(QString::number(frequency)));
            QVERIFY(server.heard(frequency) <= 340);
        }
    }

    void unplayable_data() {
        columns<QByteArray, bool, SoundOutcome>("content", "hasDevice", "outcome");
        QTest::newRow("no sound") << "no sound"_ba << true << SoundOutcome::Unplayable;
        QTest::newRow("header only") << tones({600}, 100).first(44) << true << SoundOutcome::Unplayable;
        QTest::newRow("no device") << tones({600}, 100) << false << SoundOutcome::NoDevice;
    }
    void unplayable() {
        QFETCH(const QByteArray, content);
        QFETCH(const bool, hasDevice);
        QFETCH(const SoundOutcome, outcome);
        std::unique_ptr<SoundServer> server;
        if (hasDevice) {
            server = std::make_unique<SoundServer>();
            m_environment.insert(u"PULSE_SERVER"_s, server->address());
        }
        QVERIFY(writeFile(file(u"wav"_s), content));
        QCOMPARE(run({file(u"wav"_s)}), outcome);
    }

    void speechNeedsAVoice() {
        QCOMPARE(run({u"en-US"_s, u"word"_s}), SoundOutcome::NoSpeechService);
        SpeechServer server;
        server.modules = u"dummy"_s;
        m_environment.insert(u"SPEECHD_ADDRESS"_s, server.address());
        QCOMPARE(run({u"en-US"_s, u"word"_s}), SoundOutcome::NoVoice);
    }

private:
    QString file(const QString &name) const { return m_directory.filePath(name); }
    SoundOutcome run(const QStringList &arguments) const {
        QProcess player;
        player.setProcessEnvironment(m_environment);
        player.start(QStringLiteral(LEXIQUILL_BUILD_TREE "/libexec/lexiquill-sound-player"), arguments);
        const auto wait = [&player] {
            QTRY_COMPARE(player.state(), QProcess::NotRunning);
        };
        wait();
        return static_cast<SoundOutcome>(player.exitStatus() == QProcess::NormalExit ? player.exitCode()
                                                                                     : -1);
    }

    QTemporaryDir m_directory;
    QProcessEnvironment m_environment;
};

QTEST_GUILESS_MAIN(SoundPlayerTest)

#include "sound_player_test.moc"
