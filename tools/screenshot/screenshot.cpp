// Usage: screenshot [--screen NAME] [--size WIDTHxHEIGHT] [--scale FACTOR] [--dark] [--wordbook FILE]
//     [--sample COUNT] [--word WORD] [--user NAME] [--release stalled|broken] [--open DICTIONARY]...
//     [--steps STEPS] [--wait MS] OUTPUT.png
// Draws the main window into a picture, after a short time and without a display. The screen NAME is a tab
// (dictionary, weeklyReview, history, statistics) or a sheet (preferences, account, update, about). The
// wordbook is read from FILE, or has COUNT sample words; otherwise it is that of the first start. With
// --user, the user NAME is logged in to a test server; with --release, that server also has a newer release.
// See takeSteps() for STEPS. For several pictures, run the program several times: every run has its own
// services and wordbook.

#include "app/shell/app_context.h"
#include "app/shell/lexiquill_app.h"
#include "app/test_services.h"
#include "http_server.h"
#include "steps.h"

#include <QCommandLineParser>
#include <QFile>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTimer>

#include <cstdio>

using namespace lexiquill;

namespace {

/// Selects the tab, or opens the sheet, of that name.
bool show(const QString &screen, Services &services) {
    const QMetaEnum tabs = QMetaEnum::fromType<ContentView::TabItem>();
    const QByteArray name = screen.left(1).toUpper().toLatin1() + screen.mid(1).toLatin1();
    bool isTab = false;
    const int tab = tabs.keyToValue(name.constData(), &isTab);
    if (isTab)
        AppContext::current().content().setSelectedTab(static_cast<ContentView::TabItem>(tab));
    else if (screen == QLatin1StringView("preferences"))
        services.hotKeys.setShowSettingsSheet(true);
    else if (screen == QLatin1StringView("account"))
        services.sync.setShowAccountSheet(true);
    else if (screen == QLatin1StringView("about"))
        AppContext::current().content().setShowAbout(true);
    else if (screen == QLatin1StringView("update")) {
        services.updater.setShowUpdateSheet(true);
        AppContext::current().content().updates().present();
    } else
        return false;
    return true;
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    // The scale factor must be known before there is an application.
    for (int i = 1; i + 1 < argc; ++i) {
        if (qstrcmp(argv[i], "--scale") == 0)
            qputenv("QT_SCALE_FACTOR", argv[i + 1]);
    }
    QGuiApplication application(argc, argv);
    LexiquillApp::setUpApplication();

    QCommandLineParser parser;
    const QCommandLineOption screen(QStringLiteral("screen"), {}, QStringLiteral("NAME"),
                                    QStringLiteral("dictionary"));
    const QCommandLineOption size(QStringLiteral("size"), {}, QStringLiteral("WxH"),
                                  QStringLiteral("880x600"));
    const QCommandLineOption scale(QStringLiteral("scale"), {}, QStringLiteral("FACTOR"));
    const QCommandLineOption dark(QStringLiteral("dark"));
    const QCommandLineOption wordbook(QStringLiteral("wordbook"), {}, QStringLiteral("FILE"));
    const QCommandLineOption word(QStringLiteral("word"), {}, QStringLiteral("WORD"));
    const QCommandLineOption wait(QStringLiteral("wait"), {}, QStringLiteral("MS"), QStringLiteral("600"));
    const QCommandLineOption sample(QStringLiteral("sample"), {}, QStringLiteral("COUNT"));
    const QCommandLineOption user(QStringLiteral("user"), {}, QStringLiteral("NAME"));
    const QCommandLineOption release(QStringLiteral("release"), {}, QStringLiteral("DOWNLOAD"));
    const QCommandLineOption steps(QStringLiteral("steps"), {}, QStringLiteral("STEPS"));
    const QCommandLineOption open(QStringLiteral("open"), {}, QStringLiteral("PATH"));
    parser.addOptions({screen, size, scale, dark, wordbook, word, wait, sample, user, release, steps, open});
    parser.addPositionalArgument(QStringLiteral("output"), {});
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(EXIT_FAILURE);

    QByteArray words;
    if (parser.isSet(wordbook)) {
        QFile file(parser.value(wordbook));
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read the wordbook\n");
            return EXIT_FAILURE;
        }
        words = file.readAll();
    } else if (parser.isSet(sample)) {
        words = sampleWordbook(TestServices(QByteArrayLiteral("[]")).offlineDictionaries(),
                               parser.value(sample).toInt());
    }
    HttpServer server(ServedAnswer{});
    serveSamples(server, parser.value(release));
    TestServices services(words, server.base());
    if (parser.isSet(user))
        services.sync().login(parser.value(user), QStringLiteral("password"), [](bool, const auto &) {});
    AppContext context(services);
    context.appearance().setPreference(parser.isSet(dark));
    QQmlApplicationEngine engine;
    LexiquillApp::prepare(engine);
    engine.load(LexiquillApp::mainWindowUrl());
    if (engine.rootObjects().isEmpty() || !show(parser.value(screen), services)) {
        std::fprintf(stderr, "no such screen\n");
        return EXIT_FAILURE;
    }
    for (const QString &path : parser.values(open))
        context.imports().open({QUrl::fromLocalFile(path)}, false);
    auto *const window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    const QStringList sides = parser.value(size).split(u'x');
    window->resize(sides.value(0).toInt(), sides.value(1).toInt());
    window->show();
    AppContext::current().content().handleExternalWordLookup(parser.value(word));
    int status = EXIT_FAILURE;
    QTimer::singleShot(parser.value(wait).toInt(), &application, [&] {
        if (takeSteps(*window, parser.value(steps)) &&
            window->grabWindow().save(parser.positionalArguments().constFirst(), "PNG", 0))
            status = EXIT_SUCCESS;
        QCoreApplication::quit();
    });
    QGuiApplication::exec();
    return status;
}
