#include <qt_halvo/layouts/display_watcher.h>
#include <qt_halvo/utilities/platform/win32_messages_p.h>

#include "test_support.h"

using OrvantaQT::DisplayWatcher;
using namespace OrvantaQT::Platform;

class TestDisplayWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void burstsGiveOneSignalASecondAfterTheirFirst_data()
    {
        QTest::addColumn<unsigned int>("message"); // 0: a window manager publishes a new work area
        QTest::newRow("display change") << kWmDisplayChange;
        QTest::newRow("setting change") << kWmSettingChange;
        QTest::newRow("work area") << 0u;
    }

    void burstsGiveOneSignalASecondAfterTheirFirst()
    {
        QFETCH(unsigned int, message);
        DisplayWatcher watcher;
        QSignalSpy changed(&watcher, &DisplayWatcher::DisplayChanged);
        const auto feed = [&watcher](const QByteArray& type, unsigned int id) {
            WindowsMessageHeader header{nullptr, id};
            QVERIFY(!watcher.nativeEventFilter(type, &header, nullptr)); // never consumed
        };
        auto change = [&, height = 900]() mutable {
            if (message)
                return feed("windows_generic_MSG", message);
            QVERIFY(TestSupport::SetWorkArea(QRect(0, 0, 1000, --height)));
        };
        // Messages of other platforms or kinds, or none, do not count (or the signal would come early).
        feed("xcb_generic_event_t", kWmDisplayChange);
        feed("windows_generic_MSG", 0x0010); // WM_CLOSE
        QVERIFY(!watcher.nativeEventFilter("windows_generic_MSG", nullptr, nullptr));
        QTest::qWait(500);

        QElapsedTimer clock;
        clock.start();
        change();
        change();
        QVERIFY(changed.wait(5000));
        // Not before the quiet second (a coarse timer may be 5 % early); load only delays it.
        QVERIFY2(clock.elapsed() >= 950, qPrintable(QString::number(clock.elapsed())));
        QTest::qWait(1300);
        QCOMPARE(changed.count(), 1);
        change(); // starts a new second
        QVERIFY(changed.wait(5000));
        QCOMPARE(changed.count(), 2);
    }
};

QTEST_MAIN(TestDisplayWatcher)
#include "tst_display_watcher.moc"
