// Measures the contrast of the colours that the screens show, in light and in dark mode, by the formula of
// the accessibility guidelines for web content.

#include "app/shell/app_context.h"
#include "app/shell/content_view.h"
#include "app/shell/desktop_appearance.h"
#include "app/shell/lexiquill_app.h"
#include "app/test_services.h"
#include "support/test.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>

#include <cmath>

using namespace lexiquill;

namespace {

double luminance(const QColor &color) {
    const auto linear = [](double channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double ratio(const QColor &one, const QColor &other) {
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor composited(const QColor &front, const QColor &ground, double opacity = 1) {
    const double alpha = front.alphaF() * opacity;
    const auto channel = [alpha](double a, double b) {
        return a * alpha + b * (1 - alpha);
    };
    return QColor::fromRgbF(static_cast<float>(channel(front.redF(), ground.redF())),
                            static_cast<float>(channel(front.greenF(), ground.greenF())),
                            static_cast<float>(channel(front.blueF(), ground.blueF())));
}

/// Finds the texts and symbols of a window that have too little contrast with what is painted below them.
class Inspection {
public:
    explicit Inspection(const QQuickWindow &window) {
        m_grounds += {QRectF({}, window.size()), window.color(), 1};
        visit(*window.contentItem(), 1);
    }
    const QStringList &faults() const { return m_faults; }
    qsizetype count() const { return m_count; }

private:
    struct Ground {
        QRectF area;
        QColor color;
        double opacity;
    };

    void visit(const QQuickItem &item, double opacity) {
        // Disabled controls need no contrast.
        if (!item.isVisible() || !item.isEnabled())
            return;
        opacity *= item.opacity();
        QList<QQuickItem *> children = item.childItems();
        std::stable_sort(children.begin(), children.end(),
                         [](const QQuickItem *a, const QQuickItem *b) { return a->z() < b->z(); });
        for (const QQuickItem *const child : std::as_const(children)) {
            if (child->z() < 0)
                visit(*child, opacity);
        }
        paint(item, opacity);
        for (const QQuickItem *const child : std::as_const(children)) {
            if (child->z() >= 0)
                visit(*child, opacity);
        }
    }
    void paint(const QQuickItem &item, double opacity) {
        const QRectF area = item.mapRectToScene(item.boundingRect());
        const auto color = item.property("color").value<QColor>();
        const QString text = item.property("text").toString();
        const QString symbol = item.property("symbol").toString();
        if (item.inherits("QQuickRectangle"))
            m_grounds += {area, color, opacity};
        else if (item.inherits("QQuickText") && !text.isEmpty())
            measure(text, area, color, opacity, 4.5);
        else if (item.inherits("lexiquill::SymbolIcon") && !symbol.isEmpty())
            measure(symbol, area, color, opacity, 3);
    }
    void measure(const QString &name, const QRectF &area, const QColor &color, double opacity,
                 double minimum) {
        QColor ground;
        for (const Ground &each : std::as_const(m_grounds)) {
            if (each.area.contains(area.center()))
                ground = composited(each.color, ground, each.opacity);
        }
        ++m_count;
        const double measured = ratio(composited(color, ground, opacity), ground);
        if (measured < minimum)
            m_faults += u"%1 (%2 on %3): %4"_s.arg(name, color.name(QColor::HexArgb), ground.name())
                            .arg(measured, 0, 'f', 2);
    }

    QList<Ground> m_grounds; ///< in the order in which they are painted
    QStringList m_faults;
    qsizetype m_count = 0;
};

} // namespace

class ContrastTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Colours of states and marks: the colour, its ground, what the ground lies on, and the least ratio.
    void pairs_data() {
        addRows(
            "accent on white            | Theme.accent         | Theme.card         | Theme.card | 3\n"
            "accent on the sidebar      | Theme.sign(Theme.accent) | Theme.sidebarGround | Theme.card | 3\n"
            "selected sidebar row       | '#FFFFFF'            | Theme.selected     | Theme.card | 4.5\n"
            "hovered quiet sidebar row  | Theme.secondaryText  | Theme.hover   | Theme.sidebarGround | 4.5\n"
            "pressed quiet sidebar row  | Theme.secondaryText  | Theme.pressed | Theme.sidebarGround | 4.5\n"
            "selected suggestion        | Theme.tertiaryText   | Theme.selection    | Theme.card | 4.5\n"
            "hovered suggestion         | Theme.tertiaryText   | Theme.hover        | Theme.card | 4.5\n"
            "placeholder                | Theme.tertiaryText   | Theme.field        | Theme.card | 4.5\n"
            "text on a button           | Theme.text           | Theme.fill         | Theme.card | 4.5\n"
            "note on a button           | Theme.secondaryText  | Theme.fill         | Theme.card | 4.5\n"
            "badge                      | '#FFFFFF' | Theme.strong(Theme.red)       | Theme.card | 4.5\n"
            "blue tag   | Theme.onTint(Theme.blue)   | Theme.tint(Theme.blue)   | Theme.ground | 4.5\n"
            "green tag  | Theme.onTint(Theme.green)  | Theme.tint(Theme.green)  | Theme.ground | 4.5\n"
            "purple tag | Theme.onTint(Theme.purple) | Theme.tint(Theme.purple) | Theme.ground | 4.5\n"
            "orange tag | Theme.onTint(Theme.orange) | Theme.tint(Theme.orange) | Theme.ground | 4.5\n"
            "red tag    | Theme.onTint(Theme.red)    | Theme.tint(Theme.red)    | Theme.ground | 4.5\n"
            "gray tag   | Theme.onTint(Theme.gray)   | Theme.tint(Theme.gray)   | Theme.ground | 4.5\n"
            "failure in a sheet         | Theme.onTint(Theme.red)   | Theme.sheet   | Theme.card | 4.5\n"
            "success in a sheet         | Theme.onTint(Theme.green) | Theme.sheet   | Theme.card | 4.5\n"
            "green sign                 | Theme.sign(Theme.green)   | Theme.ground  | Theme.card | 3\n"
            "orange sign                | Theme.sign(Theme.orange)  | Theme.ground  | Theme.card | 3\n"
            "gray sign                  | Theme.sign(Theme.gray)    | Theme.sheet   | Theme.card | 3\n"
            "outline of a field         | Theme.controlBorder  | Theme.ground       | Theme.card | 3\n"
            "outline of a segment       | Theme.controlBorder  | Theme.fill         | Theme.card | 3\n"
            "focus on a field           | Theme.focus          | Theme.field        | Theme.card | 3\n"
            "focus on a button          | Theme.focus          | Theme.fill         | Theme.card | 3\n"
            "focus on the sidebar       | Theme.focus          | Theme.sidebarGround | Theme.card | 3\n"
            "focus on blue              | Theme.focusGap       | Theme.selected     | Theme.card | 3\n"
            "focus on red               | Theme.focusGap | Theme.strong(Theme.red)  | Theme.card | 3\n"
            "progress                   | Theme.accent         | Theme.track        | Theme.card | 3\n");
    }
    void pairs() {
        QFETCH(const QStringList, cells);
        TestServices services;
        AppContext context(services);
        QQmlEngine engine;
        LexiquillApp::prepare(engine);
        for (const bool isDark : {false, true}) {
            context.appearance().setPreference(isDark);
            QQmlComponent component(&engine);
            component.setData("import QtQuick\nimport Lexiquill\nQtObject { property color front: " +
                                  cells[1].toUtf8() + "; property color ground: " + cells[2].toUtf8() +
                                  "; property color surface: " + cells[3].toUtf8() + " }",
                              {});
            const std::unique_ptr<QObject> colors(component.create());
            QVERIFY2(colors != nullptr, qPrintable(component.errorString()));
            const auto color = [&colors](const char *name) {
                return colors->property(name).value<QColor>();
            };
            const QColor ground = composited(color("ground"), color("surface"));
            const double measured = ratio(composited(color("front"), ground), ground);
            QVERIFY2(measured >= cells[4].toDouble(),
                     qPrintable(u"%1, %2"_s.arg(isDark ? u"dark"_s : u"light"_s).arg(measured)));
        }
    }

    void everythingShownIsReadable_data() {
        addRows("search      | MainWindow {}  | 0\n"
                "article     | MainWindow {}  | concise\n"
                "review      | MainWindow {}  | 1\n"
                "wordbook    | MainWindow {}  | 2\n"
                "statistics  | MainWindow {}  | 3\n"
                "collapsed   | MainWindow { width: 600 }  | 0\n"
                "preferences | Window { visible: true; width: 880; height: 4000; PreferencesSheet { visible: "
                "true } } | 0\n"
                "account     | Window { visible: true; width: 880; height: 600; AccountSheet { visible: true "
                "} } | 0\n"
                "update      | Window { visible: true; width: 880; height: 600; UpdateSheet { visible: true "
                "} } | 0\n");
    }
    void everythingShownIsReadable() {
        QFETCH(const QStringList, cells);
        TestServices services;
        AppContext context(services);
        for (const bool isDark : {false, true}) {
            context.appearance().setPreference(isDark);
            QQmlApplicationEngine engine;
            LexiquillApp::prepare(engine);
            engine.loadData("import QtQuick\nimport QtQuick.Window\nimport Lexiquill\n" + cells[1].toUtf8());
            auto *const window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
            QVERIFY(window != nullptr);
            window->show();
            bool isTab = false;
            const int tab = cells[2].toInt(&isTab);
            if (isTab)
                context.content().setSelectedTab(static_cast<ContentView::TabItem>(tab));
            else
                context.content().handleExternalWordLookup(cells[2]);
            QTRY_VERIFY(Inspection(*window).count() > (isTab ? 2 : 30));
            QTest::qWait(300); // until the screen has taken its place
            const QStringList faults = Inspection(*window).faults();
            QVERIFY2(faults.isEmpty(),
                     qPrintable((isDark ? u"dark: "_s : u"light: "_s) + faults.join(u"; "_s)));
        }
    }
};

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    LexiquillApp::setUpApplication();
    ContrastTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "contrast_test.moc"
