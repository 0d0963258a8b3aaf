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

    void aRecordingStopsWithItsInput() {
        SoundServer server;
        QVERIFY(writeFile(file(u"wav"_s), tones({1000}, 10'000)));
        m_environment.insert(u"PULSE_SERVER"_s, server.address());
        const auto player = start({file(u"wav"_s)});
        QTRY_VERIFY(server.heard(1000) > 200);
        player->closeWriteChannel();
        QTRY_COMPARE(player->state(), QProcess::NotRunning);
        QVERIFY(server.heard(1000) < 8'000);
    }

    void unplayable_data() {
        columns<QByteArray, bool, SoundOutcome>("content", "hasDevice", "outcome");
        QTest::newRow("no sound") << "no sound"_ba << true << SoundOutcome::Unplayable;
        QTest::newRow("empty") << QByteArray() << true << SoundOutcome::Unplayable;
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

    void textsAreSpokenAsTheyAre_data() {
        columns<QString, QByteArray>("text", "sent");
        QTest::newRow("phrase") << u"ice cream"_s << "ice cream"_ba;
        QTest::newRow("end of the text") << u"."_s << ".."_ba;
        QTest::newRow("dots") << u"...word"_s << "....word"_ba;
        QTest::newRow("command") << u"QUIT"_s << "QUIT"_ba;
        QTest::newRow("markup") << u"<speak>a&b</speak>"_s << "<speak>a&b</speak>"_ba;
        QTest::newRow("option") << u"--version"_s << "--version"_ba;
        QTest::newRow("not ASCII") << u"café"_s << "café"_ba;
    }
    void textsAreSpokenAsTheyAre() {
        QFETCH(const QString, text);
        SpeechServer server;
        m_environment.insert(u"SPEECHD_ADDRESS"_s, server.address());
        QCOMPARE(run({u"en-GB"_s, text}), SoundOutcome::Played);
        QTEST(server.texts.join('\n'), "sent");
        QCOMPARE(server.languages, QStringList(u"en-GB"_s));
    }

    void speechStopsWithItsInput() {
        SpeechServer server;
        server.isQuick = false;
        m_environment.insert(u"SPEECHD_ADDRESS"_s, server.address());
        const auto player = start({u"en-US"_s, u"word"_s});
        QTRY_VERIFY(player->canReadLine());
        player->closeWriteChannel();
        QTRY_COMPARE(player->state(), QProcess::NotRunning);
        QCOMPARE(server.cancelled, 1);
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
    std::unique_ptr<QProcess> start(const QStringList &arguments) const {
        auto player = std::make_unique<QProcess>();
        player->setProcessEnvironment(m_environment);
        player->start(QStringLiteral(LEXIQUILL_BUILD_TREE "/libexec/lexiquill-sound-player"), arguments);
        return player;
    }
    SoundOutcome run(const QStringList &arguments) const {
        const auto player = start(arguments);
        [&player] {
            QTRY_COMPARE(player->state(), QProcess::NotRunning);
        }();
        return static_cast<SoundOutcome>(player->exitStatus() == QProcess::NormalExit ? player->exitCode()
                                                                                      : -1);
    }

    QTemporaryDir m_directory;
    QProcessEnvironment m_environment;
};

QTEST_GUILESS_MAIN(SoundPlayerTest)

#include "sound_player_test.moc"
