#include "app/shell/lexiquill_app.h"

#include "app/search/article_images.h"
#include "app/search/article_markup.h"

#include <QFont>
#include <QGuiApplication>
#include <QTranslator>

namespace lexiquill {

namespace {

/// Chinese texts of Qt's own file dialog, which is used if the desktop has none.
class FileDialogTexts : public QTranslator {
public:
    using QTranslator::QTranslator;

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char * /*comment*/,
                      int /*count*/) const override {
        if (qstrcmp(context, "FileDialog") != 0)
            return {};
        if (qstrcmp(text, "File name") == 0)
            return QStringLiteral("文件名");
        return qstrcmp(text, "Filter") == 0 ? QStringLiteral("类型") : QString();
    }
};

} // namespace

void LexiquillApp::prepare(QQmlEngine &engine) {
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    // The engine takes the provider.
    engine.addImageProvider(articleImageProvider, new ArticleImages);
}

QString LexiquillApp::desktopFileName() {
    return QStringLiteral("com.lexiquill.Lexiquill");
}

QUrl LexiquillApp::mainWindowUrl() {
    return QUrl(QStringLiteral("qrc:/qt/qml/Lexiquill/shell/MainWindow.qml"));
}

void LexiquillApp::setUpApplication() {
    QCoreApplication::setApplicationName(QStringLiteral("Lexiquill"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Lexiquill"));
    QGuiApplication::setDesktopFileName(desktopFileName());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QCoreApplication::installTranslator(new FileDialogTexts(qGuiApp));
    // Use Chinese glyph forms in every locale. Set for the font family, because the controls take their font
    // from the desktop and not from the application.
    QFont::insertSubstitution(QGuiApplication::font().family(), QStringLiteral("Noto Sans CJK SC"));
}

} // namespace lexiquill
