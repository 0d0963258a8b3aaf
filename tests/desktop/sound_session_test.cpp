// What a user hears on a real desktop, from the keyboard and the buttons of the window.

#include "desktop/desktop_session.h"
#include "http_server.h"
#include "support/sound_server.h"
#include "support/speech_server.h"

using namespace lexiquill;

namespace {

constexpr int britishTone = 600;
constexpr int americanTone = 1000;

ServedAnswer recording(const ServedRequest &request, int milliseconds) {
    if (!request.target.startsWith("/dictvoice?audio="))
        return {.status = 404};
    return {.body = tones({request.target.endsWith("&type=1") ? britishTone : americanTone}, milliseconds)};
}

} // namespace

class SoundSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_sound = std::make_unique<SoundServer>();
        m_speech = std::make_unique<SpeechServer>();
        m_http = std::make_unique<HttpServer>(
            [this](const ServedRequest &request) { return recording(request, m_milliseconds); });
        m_milliseconds = 400;
        m_desktop = std::make_unique<DesktopSession>();
        QVERIFY(m_desktop->isRunning());
        m_desktop->home.setWordbook("[]");
        m_desktop->home.environment.insert(u"PULSE_SERVER"_s, m_sound->address());
        m_desktop->home.environment.insert(u"SPEECHD_ADDRESS"_s, m_speech->address());
        set(u"dictionarySourceMode=appleOffline\n"_s);
    }
    void cleanup() {
        m_desktop.reset();
        m_http.reset();
    }

    void bothAccentsAreHeard() {
        m_desktop->startApplication();
        lookUp(u"apple"_s);
        QVERIFY(tree().press(u"push button"_s, u"英式发音"_s));
        QTRY_VERIFY(m_sound->heard(britishTone) >= 300);
        QVERIFY(tree().press(u"push button"_s, u"美式发音"_s));
        QTRY_VERIFY(m_sound->heard(americanTone) >= 300);
        QCOMPARE(asked(), u"apple&type=1 apple&type=2"_s);
    }

    void cardsPronounceTheirWordOnce() {
        set(u"dictionarySourceMode=appleOffline\nlexiquill_pronounces_cards=true\nlexiquill_accent=british\n"_s);
        m_desktop->startApplication();
        lookUp(u"apple"_s);
        QTRY_VERIFY(m_sound->heard(britishTone) >= 300);
        QVERIFY(tree().press(u"push button"_s, u"记住了"_s));
        lookUp(u"banana"_s);
        QTRY_COMPARE(asked(), u"apple&type=1 banana&type=1"_s);
        m_desktop->press(u"ctrl+3"_s);
        QTRY_COMPARE(tree().focusedName(), u"筛选单词、释义或笔记"_s);
        m_desktop->press(u"Down Down Up"_s);
        QTRY_VERIFY(tree().shows(u"heading"_s, u"复习历史"_s));
        m_desktop->press(u"ctrl+1"_s);
        lookUp(u"cherry"_s);
        QTRY_COMPARE(asked(), u"apple&type=1 banana&type=1 cherry&type=1"_s);
    }

    void hiddenCardsAreSilent() {
        std::atomic<bool> isAsked = false;
        std::atomic<bool> isHidden = false;
        m_http->setHandler([&](const ServedRequest &) -> ServedAnswer {
            isAsked = true;
            isHidden.wait(false);
            return {.status = 404};
        });
        set(u"lexiquill_pronounces_cards=true\ndictionarySourceMode=youdaoOnline\n"_s);
        m_desktop->startApplication();
        m_desktop->type(u"apple"_s);
        m_desktop->press(u"Return"_s);
        QTRY_VERIFY(isAsked);
        m_desktop->closeWindow();
        isHidden = true;
        isHidden.notify_all();
        QTRY_COMPARE(m_desktop->home.words()->size(), 1);
        QCOMPARE(m_desktop->run().status, 0);
        QTRY_VERIFY(tree().shows(u"heading"_s, u"apple"_s));
        QTest::qWait(1000);
        QVERIFY(!m_http->targets().contains(u"dictvoice"_s));
    }

    void closingTheCardStopsTheSound_data() { addRows("typing\nscreen\nwindow"); }
    void closingTheCardStopsTheSound() {
        QFETCH(const QStringList, cells);
        m_milliseconds = 15'000;
        m_desktop->startApplication();
        lookUp(u"apple"_s);
        QVERIFY(tree().press(u"push button"_s, u"英式发音"_s));
        QTRY_VERIFY(m_sound->heard(britishTone) > 0);
        // Another accent replaces the first.
        QVERIFY(tree().press(u"push button"_s, u"美式发音"_s));
        QTRY_VERIFY(m_sound->heard(americanTone) > 0);
        const int british = m_sound->heard(britishTone);
        if (cells[0] == u"typing")
            m_desktop->type(u"b"_s);
        else if (cells[0] == u"screen")
            m_desktop->press(u"ctrl+3"_s);
        else
            m_desktop->closeWindow();
        const auto isQuiet = [this] {
            const int before = m_sound->heard(americanTone);
            QTest::qWait(1000);
            return m_sound->heard(americanTone) == before;
        };
        QTRY_VERIFY(isQuiet());
        QVERIFY(m_sound->heard(americanTone) < 10'000);
        QVERIFY(m_sound->heard(britishTone) <= british + 100);
    }

    void wordsWithoutRecordingAreSpoken() {
        m_http->setHandler([](const ServedRequest &) { return ServedAnswer{.status = 404}; });
        m_desktop->startApplication();
        lookUp(u"apple"_s);
        QVERIFY(tree().press(u"push button"_s, u"英式发音"_s));
        QTRY_VERIFY(tree().shows(u"label"_s, u"由系统语音朗读"_s));
        QCOMPARE(m_speech->texts, QList<QByteArray>{"apple"});
        QCOMPARE(m_speech->languages, QStringList(u"en-GB"_s));
    }

private:
    const AccessibleTree &tree() const { return m_desktop->tree(); }
    void set(const QString &moreSettings) const {
        m_desktop->home.setOnlineBase(m_http->base(), moreSettings);
    }
    void lookUp(const QString &word) const {
        m_desktop->press(u"ctrl+1"_s);
        QTRY_COMPARE(tree().focusedName(), u"查词"_s);
        m_desktop->press(u"ctrl+a"_s);
        m_desktop->type(word);
        m_desktop->press(u"Return"_s);
        QTRY_VERIFY(tree().shows(u"heading"_s, word));
    }
    /// The recordings that were asked for.
    QString asked() const { return m_http->targets().remove(u"/dictvoice?audio="_s); }

    std::unique_ptr<SoundServer> m_sound;
    std::unique_ptr<SpeechServer> m_speech;
    std::unique_ptr<HttpServer> m_http;
    std::unique_ptr<DesktopSession> m_desktop;
    std::atomic<int> m_milliseconds;
};

QTEST_GUILESS_MAIN(SoundSessionTest)

#include "sound_session_test.moc"
