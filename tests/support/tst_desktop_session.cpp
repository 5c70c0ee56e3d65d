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
        // Keys go to the focus widget of the active window.
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        target->setFocus();
        QTest::keyClicks(nullptr, "typed");
        QCOMPARE(target->text(), QStringLiteral("typed"));
    }
};

QTEST_MAIN(TestDesktopSession)
#include "tst_desktop_session.moc"
