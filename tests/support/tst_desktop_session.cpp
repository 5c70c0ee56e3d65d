// The test harness runs every test on a private X server; this fails when it does not,
// before the widget tests fail in more puzzling ways.

#include "test_support.h"

class TestDesktopSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pointerAndFocusReachWidgets()
    {
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
        QWidget window;
        window.setGeometry(100, 100, 300, 200);
        auto* target = new QLineEdit(&window);
        target->setGeometry(50, 50, 100, 30);
        QCursor::setPos(10, 10);
        QVERIFY(TestSupport::ShowAndWait(&window));
        const QPoint inside = target->mapToGlobal(target->rect().center());
        QCursor::setPos(inside);
        QTRY_VERIFY(target->underMouse());
        QCOMPARE(QApplication::widgetAt(inside), target);
        QCursor::setPos(window.mapToGlobal(QPoint(5, 5)));
        QTRY_VERIFY(!target->underMouse());
        QCOMPARE(QApplication::widgetAt(QCursor::pos()), &window);
        // The window takes the keyboard focus.
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
};

QTEST_MAIN(TestDesktopSession)
#include "tst_desktop_session.moc"
