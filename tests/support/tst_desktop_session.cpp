// The test harness runs every test on a private X server; these checks fail when it does
// not, before the widget tests fail in more puzzling ways.

#include "test_support.h"

// Counts the pointer's comings and goings.
class Target : public QWidget
{
public:
    using QWidget::QWidget;
    int entered = 0;
    int left = 0;

protected:
    void enterEvent(QEvent*) override { ++entered; }
    void leaveEvent(QEvent*) override { ++left; }
};

class TestDesktopSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pointerEntersAndLeavesWidgets()
    {
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
        QWidget window;
        window.setGeometry(100, 100, 300, 200);
        Target* target = new Target(&window);
        target->setGeometry(50, 50, 100, 80);
        QCursor::setPos(10, 10);
        QVERIFY(TestSupport::ShowAndWait(&window));

        const QPoint inside = target->mapToGlobal(target->rect().center());
        QCursor::setPos(inside);
        QTRY_COMPARE(target->entered, 1);
        QCOMPARE(QApplication::widgetAt(inside), target);
        QCursor::setPos(window.mapToGlobal(QPoint(5, 5)));
        QTRY_COMPARE(target->left, 1);
        QCOMPARE(QApplication::widgetAt(QCursor::pos()), &window);
    }

    void keyboardFocusFollowsTheActiveWindow()
    {
        QLineEdit first;
        first.setGeometry(100, 100, 200, 30);
        first.show();
        first.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&first));
        QTRY_VERIFY(first.hasFocus());
        QTest::keyClicks(&first, QStringLiteral("typed"));
        QCOMPARE(first.text(), QStringLiteral("typed"));

        QWidget second;
        second.setGeometry(400, 100, 200, 100);
        second.show();
        second.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&second));
        QTRY_VERIFY(!first.hasFocus());
    }
};

QTEST_MAIN(TestDesktopSession)
#include "tst_desktop_session.moc"
