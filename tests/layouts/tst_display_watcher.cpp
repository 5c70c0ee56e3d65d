#include <qt_halvo/layouts/display_watcher.h>
#include <qt_halvo/utilities/platform/win32_messages_p.h>

#include "test_support.h"

using OrvantaQT::DisplayWatcher;
using namespace OrvantaQT::Platform;

class TestDisplayWatcher : public QObject
{
    Q_OBJECT

    // Never consumed.
    static void Feed(DisplayWatcher& watcher, const QByteArray& type, unsigned int message)
    {
        WindowsMessageHeader header{nullptr, message};
        long result = 0;
        QVERIFY(!watcher.nativeEventFilter(type, &header, &result));
    }

private Q_SLOTS:
    void burstsGiveOneSignalASecondAfterTheirFirst_data()
    {
        QTest::addColumn<unsigned int>("message");
        QTest::newRow("display change") << kWmDisplayChange;
        QTest::newRow("setting change") << kWmSettingChange;
    }

    void burstsGiveOneSignalASecondAfterTheirFirst()
    {
        QFETCH(unsigned int, message);
        DisplayWatcher watcher;
        QSignalSpy changed(&watcher, &DisplayWatcher::DisplayChanged);
        // Messages of another platform or kind, or none at all, do not count: half a second
        // later they would have made the signal come early.
        Feed(watcher, "xcb_generic_event_t", kWmDisplayChange);
        Feed(watcher, "windows_generic_MSG", 0x0010); // WM_CLOSE
        QVERIFY(!watcher.nativeEventFilter("windows_generic_MSG", nullptr, nullptr));
        QTest::qWait(500);

        QElapsedTimer clock;
        clock.start();
        Feed(watcher, "windows_generic_MSG", message);
        Feed(watcher, "windows_generic_MSG", kWmDisplayChange);
        QVERIFY(changed.wait(5000));
        // Not before the quiet second (a coarse timer may be 5 % early); only load delays it.
        QVERIFY2(clock.elapsed() >= 950, qPrintable(QString::number(clock.elapsed())));
        QTest::qWait(1300);
        QCOMPARE(changed.count(), 1);

        // The next change starts a new second.
        Feed(watcher, "windows_generic_MSG", message);
        QVERIFY(changed.wait(5000));
        QCOMPARE(changed.count(), 2);
    }

    // The work area, as a window manager publishes it, changes: Qt tells its screens, and
    // the watcher its listeners.
    void screenChangesAreWatchedToo()
    {
        DisplayWatcher watcher;
        QSignalSpy changed(&watcher, &DisplayWatcher::DisplayChanged);
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        const QString area = QStringLiteral("0, 0, %1, %2").arg(screen.width() - 100).arg(screen.height() - 50);
        QCOMPARE(QProcess::execute(QStringLiteral("xprop"), {"-root", "-f", "_NET_WORKAREA", "32c", "-set", "_NET_WORKAREA", area}), 0);
        QVERIFY(changed.wait(10000));
        QTest::qWait(300);
        QCOMPARE(changed.count(), 1);
    }
};

QTEST_MAIN(TestDisplayWatcher)
#include "tst_display_watcher.moc"
