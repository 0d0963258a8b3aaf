#include "app/search/pronunciation.h"
#include "app/test_services.h"
#include "http_server.h"
#include "settings/server_addresses.h"
#include "stardict_writer.h"
#include "support/speech_server.h"

#include <memory>

using namespace lexiquill;

class PronunciationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        // There is neither a sound device nor a speech service at first.
        qputenv("PULSE_SERVER", "unix:/nonexistent");
        qputenv("SPEECHD_ADDRESS", "unix_socket:/nonexistent");
        m_services = std::make_unique<TestServices>();
        m_services->makeCurrent();
    }
    void cleanup() { m_services.reset(); }

    /// A word, an accent, and the address.
    void audioAddress_data() {
        addRows("ice cream       | uk | ice%20cream&type=1\n"
                "ice cream       | us | ice%20cream&type=2\n"
                "AT&T            | us | AT%26T&type=2\n"
                "a+b=c?#%        | uk | a%2Bb%3Dc%3F%23%25&type=1\n"
                "café            | uk | caf%C3%A9&type=1\n"
                "                | us |\n");
    }
    void audioAddress() {
        QFETCH(const QStringList, cells);
        const QUrl url = pronunciationUrl(u"https://dict.example"_s, u' ' + cells[0] + u' ',
                                          cells[1] == u"uk" ? Accent::British : Accent::American);
        const QByteArray start = "https://dict.example/dictvoice?audio=";
        QCOMPARE(url.toEncoded(), cells[2].isEmpty() ? QByteArray() : start + cells[2].toLatin1());
    }

    /// Whatever the server sends instead of a recording, and whatever the machine can play, there is a
    /// message that names both the reason and the missing speech service.
    void unplayableSounds_data() {
        columns<ServedAnswer, QString>("answer", "message");
        QTest::newRow("broken connection")
            << ServedAnswer{.manner = ServedAnswer::Manner::Reset} << u"请检查网络连接后重试。"_s;
        QTest::newRow("no recording") << ServedAnswer{.status = 404} << u"服务器没有提供这个词的发音。"_s;
        QTest::newRow("page") << ServedAnswer{.body = "\r\n<html>"} << u"服务器没有提供这个词的发音。"_s;
        QTest::newRow("sound without a device") << ServedAnswer{.body = "sound"} << QString();
    }
    void unplayableSounds() {
        QFETCH(const ServedAnswer, answer);
        QFETCH(const QString, message);
        const HttpServer server(answer);
        m_services->defaults().set(ServerAddresses::youdaoKey, server.base());
        Pronunciation pronunciation;
        QSignalSpy failures(&pronunciation, &Pronunciation::failed);
        pronunciation.play(u"apple"_s);
        QVERIFY(pronunciation.isFetching());
        QVERIFY(failures.wait(30'000));
        QCOMPARE(
            failures[0][0].toString(),
            message.isEmpty()
                ? u"无法播放发音：没有可用的音频输出设备。"_s
                : u"无法播放发音：%1也无法由系统语音朗读：语音服务 (speech-dispatcher) 没有安装或没有回应。"_s
                      .arg(message));
        QVERIFY(!pronunciation.isFetching());
        QVERIFY(!pronunciation.isSynthetic());
    }

    /// The recording of a dictionary is played first when words are looked up offline, else when there is no
    /// other one. A test machine cannot play it, but then the reason has nothing to do with the server.
    void soundsOfDictionaries_data() {
        columns<DictionarySourceMode, int>("mode", "requests");
        QTest::newRow("offline") << DictionarySourceMode::AppleOffline << 0;
        QTest::newRow("online") << DictionarySourceMode::YoudaoOnline << 1;
    }
    void soundsOfDictionaries() {
        QFETCH(const DictionarySourceMode, mode);
        const HttpServer server(ServedAnswer{.status = 404});
        m_services->defaults().set(ServerAddresses::youdaoKey, server.base());
        m_services->dictionary().setCurrentMode(mode);
        addDictionary(u"sound://a.wav"_s, {u"a.wav"_s});
        Pronunciation pronunciation;
        QSignalSpy failures(&pronunciation, &Pronunciation::failed);
        pronunciation.play(u"zyzzyva"_s);
        QVERIFY(failures.wait(30'000));
        QCOMPARE(failures[0][0].toString(), u"无法播放发音：没有可用的音频输出设备。"_s);
        QTEST(static_cast<int>(server.requests().size()), "requests");
    }

    /// The links of an article, an accent, and the file that is played.
    void accentsOfDictionaries_data() {
        addRows("us/a.mp3 uk/b.mp3                | uk | uk/b.mp3\n"
                "zyzzyva__gb_1.mp3 zyzzyva__us_1.mp3 | us | zyzzyva__us_1.mp3\n"
                "breProns/z.mp3 ameProns/z.mp3    | us | ameProns/z.mp3\n"
                "us/a.mp3 z.mp3                   | uk | z.mp3\n"
                "bus.mp3 usage.mp3                | us | bus.mp3\n");
    }
    void accentsOfDictionaries() {
        QFETCH(const QStringList, cells);
        const QStringList files = cells[0].split(u' ');
        addDictionary(u"sound://"_s + files.join(u"'></a><a href='sound://"_s), files);
        DictionaryShelf &shelf = static_cast<Services &>(*m_services).shelf;
        const auto sound = shelf.sound(u"zyzzyva"_s, cells[1] == u"uk" ? Accent::British : Accent::American);
        QVERIFY(sound);
        QCOMPARE(QString::fromUtf8(sound->bytes), cells[2]);
    }

    void wordsWithoutRecordingAreSpoken_data() {
        columns<QString, QByteArray, QString>("word", "text", "language");
        QTest::newRow("lines") << u"a\r\n.\r\nQUIT\r\n\tb"_s << "a . QUIT b"_ba << u"en-GB"_s;
        QTest::newRow("dots") << u".."_s << "..."_ba << u"en-GB"_s;
        QTest::newRow("markup") << u"<audio src='x'/>"_s << "<audio src='x'/>"_ba << u"en-GB"_s;
        QTest::newRow("control characters")
            << u"a\u0000\u001B[2J\u0085\u2028b\u00ADc"_s << "a [2J bc"_ba << u"en-GB"_s;
        QTest::newRow("half a character") << QString(u'a') + QChar(0xD83D) << "a"_ba << u"en-GB"_s;
        QTest::newRow("long") << u"ab "_s.repeated(100'000) << "ab "_ba.repeated(66) + "ab" << u"en-GB"_s;
        QTest::newRow("Chinese") << u"苹果"_s << u"苹果"_s.toUtf8() << u"zh-CN"_s;
    }
    void wordsWithoutRecordingAreSpoken() {
        QFETCH(const QString, word);
        SpeechServer speech;
        qputenv("SPEECHD_ADDRESS", speech.address().toUtf8());
        const HttpServer server(ServedAnswer{.status = 404});
        m_services->defaults().set(ServerAddresses::youdaoKey, server.base());
        Pronunciation pronunciation;
        QSignalSpy failures(&pronunciation, &Pronunciation::failed);
        pronunciation.play(word, WindowPreferences::Accent::British);
        QTRY_VERIFY(pronunciation.isSynthetic());
        QVERIFY(!pronunciation.isFetching());
        QTEST(speech.texts.join('\n'), "text");
        QTEST(speech.languages.join(u' '), "language");
        pronunciation.cancel();
        QVERIFY(!pronunciation.isSynthetic());
        QCOMPARE(failures.size(), 0);
    }

    void theNextWordStopsTheOneBefore() {
        SpeechServer speech;
        speech.isQuick = false;
        qputenv("SPEECHD_ADDRESS", speech.address().toUtf8());
        {
            Pronunciation pronunciation;
            pronunciation.play(u"first"_s);
            QTRY_VERIFY(pronunciation.isSynthetic());
            WindowPreferences(m_services->defaults()).setAccent(WindowPreferences::Accent::British);
            pronunciation.play(u"second"_s);
            QVERIFY(!pronunciation.isSynthetic());
            QTRY_COMPARE(speech.cancelled, 1);
            QTRY_VERIFY(pronunciation.isSynthetic());
        }
        QTRY_COMPARE(speech.cancelled, 2);
        QCOMPARE(speech.texts.join(' '), "first second");
        QCOMPARE(speech.languages, QStringList({u"en-US"_s, u"en-GB"_s}));
    }

    void aServiceThatDoesNotAnswerIsGivenUp() {
        SpeechServer speech;
        speech.isSilent = true;
        qputenv("SPEECHD_ADDRESS", speech.address().toUtf8());
        Pronunciation pronunciation;
        QSignalSpy failures(&pronunciation, &Pronunciation::failed);
        pronunciation.play(u"word"_s);
        QVERIFY(failures.wait(30'000));
        QVERIFY(failures[0][0].toString().contains(u"没有回应"_s));
    }

private:
    /// A dictionary with an article on "zyzzyva". Each file contains its own name.
    static void addDictionary(const QString &links, const QStringList &files) {
        const QString directory = DictionaryShelf::importedDirectory() + u"/d"_s;
        for (const QString &file : files)
            QVERIFY(writeFile(directory + u"/res/"_s + file, file.toUtf8()));
        const QByteArray article = u"<a href='%1'></a> weevil"_s.arg(links).toUtf8();
        QCOMPARE(tools::writeStarDict(directory, u"d"_s, {{"zyzzyva", {{'h', article}}, {}}},
                                      {.typeSequence = "h"}),
                 QString());
    }

    std::unique_ptr<TestServices> m_services;
};

QTEST_MAIN(PronunciationTest)

#include "pronunciation_test.moc"
