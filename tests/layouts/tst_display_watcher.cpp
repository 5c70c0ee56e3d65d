#include <qt_halvo/layouts/display_watcher.h>
#include <qt_halvo/utilities/platform/win32_messages_p.h>

#include <QtGui/QScreen>
#include <QtTest/QtTest>

using OrvantaQT::DisplayWatcher;
using OrvantaQT::Platform::WindowsMessageHeader;

namespace {

bool Feed(DisplayWatcher& watcher, const QByteArray& type, unsigned int message)
{
    WindowsMessageHeader header{nullptr, message};
    long result = 0;
    return watcher.nativeEventFilter(type, &header, &result);
}

} // namespace

class TestDisplayWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void burstsGiveOneSignalASecondLater_data();
    void burstsGiveOneSignalASecondLater();
    void screenChangesAreWatchedToo();
};

void TestDisplayWatcher::burstsGiveOneSignalASecondLater_data()
{
    QTest::addColumn<unsigned int>("first");
    QTest::addColumn<unsigned int>("second");
    QTest::newRow("two display changes") << OrvantaQT::Platform::kWmDisplayChange << OrvantaQT::Platform::kWmDisplayChange;
    QTest::newRow("a setting change, then a display change")
        << OrvantaQT::Platform::kWmSettingChange << OrvantaQT::Platform::kWmDisplayChange;
}

// Two messages 200 ms apart: one signal, a second after the first message. Messages of
// another platform or kind, and none at all, half a second before do not count.
void TestDisplayWatcher::burstsGiveOneSignalASecondLater()
{
    QFETCH(unsigned int, first);
    QFETCH(unsigned int, second);
    DisplayWatcher watcher;
    QSignalSpy changed(&watcher, &DisplayWatcher::DisplayChanged);
    QVERIFY(!Feed(watcher, "xcb_generic_event_t", OrvantaQT::Platform::kWmDisplayChange));
    QVERIFY(!Feed(watcher, "windows_generic_MSG", 0x0010)); // WM_CLOSE
    long result = 0;
    QVERIFY(!watcher.nativeEventFilter("windows_generic_MSG", nullptr, &result));
    QTest::qWait(500);

    QElapsedTimer clock;
    clock.start();
    QVERIFY(!Feed(watcher, "windows_generic_MSG", first)); // never consumed
    QTest::qWait(200);
    QVERIFY(!Feed(watcher, "windows_generic_MSG", second));
    QVERIFY(changed.wait(5000));
    // Not before the quiet second (a coarse timer may be 5 % early).
    QVERIFY2(clock.elapsed() >= 950, qPrintable(QString::number(clock.elapsed())));
    QTest::qWait(1300);
    QCOMPARE(changed.count(), 1);

    // The next change starts a new second.
    Feed(watcher, "windows_generic_MSG", first);
    QVERIFY(changed.wait(5000));
    QCOMPARE(changed.count(), 2);
}

// The work area as a window manager publishes it changes: Qt tells its screens, and the
// watcher tells its listeners.
void TestDisplayWatcher::screenChangesAreWatchedToo()
{
    DisplayWatcher watcher;
    QSignalSpy changed(&watcher, &DisplayWatcher::DisplayChanged);
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const QString area = QStringLiteral("0, 0, %1, %2").arg(screen.width() - 100).arg(screen.height() - 50);
    const QStringList arguments{"-root", "-f", "_NET_WORKAREA", "32c", "-set", "_NET_WORKAREA", area};
    QCOMPARE(QProcess::execute(QStringLiteral("xprop"), arguments), 0);
    QVERIFY(changed.wait(10000));
    QTest::qWait(300);
    QCOMPARE(changed.count(), 1);
}

QTEST_MAIN(TestDisplayWatcher)
#include "tst_display_watcher.moc"
