// The test harness runs every test on a private X server; these checks fail when it
// does not, before the widget tests fail in more puzzling ways.

#include <QtGui/QCursor>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWidget>

namespace {

class EventCounter : public QObject
{
public:
    using QObject::QObject;
    int Count(QEvent::Type type) const { return m_counts.value(type); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        ++m_counts[event->type()];
        return QObject::eventFilter(watched, event);
    }

private:
    QHash<int, int> m_counts;
};

} // namespace

class TestDesktopSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runsOnAnXServer();
    void pointerEntersAndLeavesWidgets();
    void keyboardFocusFollowsTheActiveWindow();
};

void TestDesktopSession::runsOnAnXServer()
{
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
    QVERIFY(!qEnvironmentVariableIsEmpty("DISPLAY"));
}

void TestDesktopSession::pointerEntersAndLeavesWidgets()
{
    QWidget window;
    window.setGeometry(100, 100, 300, 200);
    auto* target = new QWidget(&window);
    target->setGeometry(50, 50, 100, 80);
    EventCounter counter;
    target->installEventFilter(&counter);
    QCursor::setPos(10, 10);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    const QPoint inside = target->mapToGlobal(target->rect().center());
    QCursor::setPos(inside);
    QTRY_COMPARE(counter.Count(QEvent::Enter), 1);
    QCOMPARE(QApplication::widgetAt(inside), target);

    QCursor::setPos(window.mapToGlobal(QPoint(5, 5)));
    QTRY_COMPARE(counter.Count(QEvent::Leave), 1);
    QCOMPARE(QApplication::widgetAt(QCursor::pos()), &window);
}

void TestDesktopSession::keyboardFocusFollowsTheActiveWindow()
{
    QWidget first;
    first.setGeometry(100, 100, 200, 100);
    auto* edit = new QLineEdit(&first);
    (new QVBoxLayout(&first))->addWidget(edit);
    first.show();
    first.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&first));
    edit->setFocus();
    QTRY_VERIFY(edit->hasFocus());
    QTest::keyClicks(edit, QStringLiteral("typed"));
    QCOMPARE(edit->text(), QStringLiteral("typed"));

    QWidget second;
    second.setGeometry(400, 100, 200, 100);
    second.show();
    second.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&second));
    QTRY_VERIFY(!edit->hasFocus());
}

QTEST_MAIN(TestDesktopSession)
#include "tst_desktop_session.moc"
