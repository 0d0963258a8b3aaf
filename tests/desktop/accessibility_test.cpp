// What assistive tools see of the running program: roles, states and announcements.

#include "desktop/desktop_session.h"

using namespace lexiquill;

class AccessibilityTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_announced.clear();
        m_desktop = std::make_unique<DesktopSession>();
        QVERIFY(m_desktop->isRunning());
        m_desktop->home.setWordbook("[]");
    }
    void cleanup() { m_desktop.reset(); }

    void roles() {
        m_desktop->startApplication();
        QTRY_VERIFY(shows(u"page tab list"_s, u"页面"_s));
        QTRY_VERIFY(tree().find(u"page tab"_s, u"查词词典"_s).isSelected);
        QVERIFY(tree().press(u"page tab"_s, u"记忆曲线"_s));
        QTRY_VERIFY(tree().find(u"page tab"_s, u"记忆曲线"_s).isSelected);
        QVERIFY(!tree().find(u"page tab"_s, u"查词词典"_s).isSelected);

        m_desktop->press(u"ctrl+1"_s);
        m_desktop->type(u"apple"_s);
        m_desktop->press(u"Return"_s);
        QTRY_VERIFY(shows(u"list"_s, u"名词"_s));
        QVERIFY(shows(u"list item"_s, u"2. 苹果树"_s));

        m_desktop->press(u"F10"_s);
        QTRY_VERIFY(shows(u"popup menu"_s, u"菜单"_s));
        m_desktop->press(u"Down Down Down"_s);
        QTRY_COMPARE(tree().focusedName(), u"快捷键设置..."_s);
        QVERIFY(shows(u"menu item"_s, u"快捷键设置..."_s));
        m_desktop->press(u"Return"_s);
        QTRY_VERIFY(shows(u"dialog"_s, u"偏好设置"_s));
        QVERIFY(tree().find(u"radio button"_s, u"Option + 空格 (极简聚焦, 推荐)"_s).isChecked);
        QVERIFY(!tree().find(u"radio button"_s, u"Option + D"_s).isChecked);

        m_desktop->press(u"Escape shift+F10"_s);
        QTRY_VERIFY(shows(u"popup menu"_s, u"编辑"_s));
        QVERIFY(shows(u"menu item"_s, u"全选"_s));
    }

    void choicesOfABox() {
        m_desktop->startApplication();
        m_desktop->press(u"ctrl+comma"_s);
        QVERIFY(tree().press(u"combo box"_s, u"按键"_s));
        QTRY_VERIFY(shows(u"list"_s, u"按键"_s));
        QVERIFY(shows(u"list item"_s, u"Space"_s));
    }

    void announcements() {
        m_desktop->setServer(u"http://127.0.0.1:9"_s);
        m_desktop->startApplication();
        QTRY_COMPARE(tree().focusedName(), u"查词"_s);
        QVERIFY(m_desktop->tree().listenForAppearance(this, SLOT(announce(QDBusMessage))));
        // The program learns of the listener by a signal.
        QTest::qWait(1000);
        // The second time, the message of the first is still shown.
        for (int count = 1; count <= 2; ++count) {
            m_desktop->press(u"ctrl+u"_s);
            QTRY_COMPARE(m_announced.filter(u"alert message 检查更新失败"_s).size(), count);
        }
    }

private:
    const AccessibleTree &tree() const { return std::as_const(*m_desktop).tree(); }
    bool shows(const QString &role, const QString &name) const { return tree().shows(role, name); }

    std::unique_ptr<DesktopSession> m_desktop;
    QStringList m_announced;

public Q_SLOTS:
    void announce(const QDBusMessage &signal) {
        if (signal.arguments().value(0) == u"showing"_s && signal.arguments().value(1) == 1)
            m_announced += tree().sender(signal);
    }
};

QTEST_GUILESS_MAIN(AccessibilityTest)

#include "accessibility_test.moc"
