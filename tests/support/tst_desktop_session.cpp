// The test harness runs every test on a private X server; this fails when it does not,
// before the widget tests fail in more puzzling ways.

#include "test_support.h"

// Counts the pointer's comings and goings.
class Target : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;
    int entered = 0;
    int left = 0;
    void enterEvent(QEvent*) override { ++entered; }
    void leaveEvent(QEvent*) override { ++left; }
};

class TestDesktopSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pointerAndKeyboardReachWidgets()
    {
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
        QWidget window;
        window.setGeometry(100, 100, 300, 200);
        auto* target = new Target(&window);
        target->setGeometry(50, 50, 100, 30);
        QCursor::setPos(10, 10);
        QVERIFY(TestSupport::ShowAndWait(&window));
        const QPoint inside = target->mapToGlobal(target->rect().center());
        QCursor::setPos(inside);
        QTRY_COMPARE(target->entered, 1);
        QCOMPARE(QApplication::widgetAt(inside), target);
        QCursor::setPos(window.mapToGlobal(QPoint(5, 5)));
        QTRY_COMPARE(target->left, 1);
        QCOMPARE(QApplication::widgetAt(QCursor::pos()), &window);

        // Keyboard focus comes with the active window, and goes with it.
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        target->setFocus();
        QTRY_VERIFY(target->hasFocus());
        QTest::keyClicks(target, QStringLiteral("typed"));
        QCOMPARE(target->text(), QStringLiteral("typed"));
        QWidget second;
        second.setGeometry(450, 100, 200, 100);
        QVERIFY(TestSupport::ShowAndWait(&second));
        second.activateWindow();
        QTRY_VERIFY(!target->hasFocus());
    }
};

QTEST_MAIN(TestDesktopSession)
#include "tst_desktop_session.moc"
