#include <qt_halvo/widgets/window/frameless_window.h>
#include <qt_halvo/widgets/window/title_bar.h>

#include "real_input.h"
#include "test_support.h"

using OrvantaQT::FramelessWindow;
using OrvantaQT::TitleBar;

namespace {

// A frameless window of 400 × 300 at a place on the first or the second screen, shown.
struct TestWindow
{
    FramelessWindow window;
    QLabel* content = new QLabel(QStringLiteral("content"));

    explicit TestWindow(const QPoint& position = QPoint(200, 150), const QSize& size = QSize(400, 300))
    {
        window.setWindowTitle(QStringLiteral("Frameless"));
        window.SetCentralWidget(content);
        window.setGeometry(QRect(position, size));
    }
    bool Show() { return TestSupport::ShowAndWait(&window) && SettledAt(window.geometry()); }
    bool SettledAt(const QRect& geometry) { return TestSupport::SettledAt(&window, geometry); }
    QPoint Global(const QPoint& local) const { return window.mapToGlobal(local); }
    QWidget* Frame() const { return window.findChild<QWidget*>(QStringLiteral("Frame")); }
};

QScreen* Screen(int index)
{
    const QList<QScreen*> screens = QGuiApplication::screens();
    return index < screens.size() ? screens.at(index) : nullptr;
}

// A saved geometry in QWidget's format, made by hand for data no window could save.
QByteArray SavedGeometry(const QRect& normal, qint32 screenNumber, bool maximized, quint16 majorVersion = 3)
{
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_0);
    stream << quint32(0x1D9D0CB) << majorVersion << quint16(0) << normal << normal << screenNumber
           << quint8(maximized) << quint8(0);
    if (majorVersion > 1)
        stream << qint32(1280);
    if (majorVersion > 2)
        stream << normal;
    return data;
}

} // namespace

class TstFramelessWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QCursor::setPos(5, 5); }

    // The window holds the frame, which holds the title bar over the central widget, inside
    // a one-pixel border; without a compositor the border stays, whatever the shadow width.
    void frameAndContent()
    {
        TestWindow w;
        w.window.SetBorderColor(QColor(255, 0, 0));
        w.window.SetShadowWidth(12);
        QVERIFY(w.Show());
        QCOMPARE(w.window.GetShadowWidth(), 12);
        auto* frame = w.Frame();
        QCOMPARE(frame->accessibleName(), QStringLiteral("FramelessWindow_Frame"));
        QCOMPARE(frame->geometry(), QRect(1, 1, 398, 298));
        TitleBar* bar = w.window.GetTitleBar();
        QCOMPARE(bar->objectName(), QStringLiteral("TitleBar"));
        QCOMPARE(bar->parentWidget(), frame);
        QCOMPARE(bar->geometry().topLeft(), QPoint(0, 0));
        QCOMPARE(w.content->geometry(), QRect(0, bar->height(), 398, 298 - bar->height()));
        QVERIFY(!w.window.HasShadow());

        const QImage picture = w.window.grab().toImage();
        QCOMPARE(TestSupport::Pixels(picture, {{0, 0}, {399, 150}, {200, 299}}),
                 TestSupport::Colours("#ffff0000 #ffff0000 #ffff0000"));
        // Inside the border lies the frame.
        QVERIFY(picture.pixelColor(1, 1) != QColor(255, 0, 0));
    }

    // A new central widget replaces the one before, which is deleted; none leaves the title
    // bar at the top.
    void replacesTheCentralWidget()
    {
        TestWindow w;
        QVERIFY(w.Show());
        QPointer<QLabel> first = w.content;
        auto* second = new QLabel(QStringLiteral("second"));
        w.window.SetCentralWidget(second);
        QVERIFY(first.isNull());
        QCOMPARE(w.window.CentralWidget(), second);
        QTRY_VERIFY(second->isVisible());
        w.window.SetCentralWidget(nullptr);
        QVERIFY(!w.window.CentralWidget());
        QTRY_COMPARE(w.window.GetTitleBar()->y(), 0);

        LogCapture::Mark logs;
        w.window.SetCentralWidget(&w.window);
        QCOMPARE(logs.Texts(), QStringList{QStringLiteral(
                     "3 FramelessWindow: a window cannot hold itself or a widget it lies in")});
    }

    // A drag in the band resizes the window by the edges it grabs, by the window system's
    // resize where a window manager runs and by hand where none does.
    void resizesFromTheBand_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QRect>("expected");
        // The window is at (200, 150), 400 × 300; every drag moves by (+30, +20).
        QTest::newRow("left") << QPoint(1, 150) << QRect(230, 150, 370, 300);
        QTest::newRow("right") << QPoint(398, 150) << QRect(200, 150, 430, 300);
        QTest::newRow("top") << QPoint(200, 1) << QRect(200, 170, 400, 280);
        QTest::newRow("bottom") << QPoint(200, 298) << QRect(200, 150, 400, 320);
        QTest::newRow("top-left") << QPoint(1, 1) << QRect(230, 170, 370, 280);
        QTest::newRow("bottom-right") << QPoint(398, 298) << QRect(200, 150, 430, 320);
        QTest::newRow("bottom-left") << QPoint(3, 296) << QRect(230, 150, 370, 320);
        QTest::newRow("top-right") << QPoint(396, 2) << QRect(200, 170, 430, 280);
        QTest::newRow("inside the band's edge") << QPoint(4, 150) << QRect(230, 150, 370, 300);
        QTest::newRow("past the band") << QPoint(5, 150) << QRect(200, 150, 400, 300);
    }
    void resizesFromTheBand()
    {
        QFETCH(QPoint, from);
        QFETCH(QRect, expected);
        TestWindow w;
        QVERIFY(w.Show());
        const QPoint start = w.Global(from);
        TestSupport::RealDrag(start, start + QPoint(30, 20));
        QVERIFY(w.SettledAt(expected));
    }

    // A resize by hand stops at the window's minimum size.
    void resizeStopsAtTheMinimum()
    {
        TestWindow w;
        w.window.setMinimumSize(300, 200);
        QVERIFY(w.Show());
        const QPoint start = w.Global(QPoint(1, 150));
        TestSupport::RealDrag(start, start + QPoint(250, 0));
        QVERIFY(w.SettledAt(QRect(300, 150, 300, 300)));
    }

    // A resize by hand that the maximum stops keeps its cursor while the pointer runs on past
    // the window, until the button is let go there.
    void resizeKeepsItsCursorPastTheWindow()
    {
        if (TestSupport::WindowManagerRuns())
            QSKIP("the window manager shows its own cursor while it resizes");
        TestWindow w;
        w.window.setMaximumWidth(420);
        QVERIFY(w.Show());
        const QPoint start = w.Global(QPoint(398, 150));
        TestSupport::RealMousePress(start);
        for (int step = 1; step <= 5; ++step)
            TestSupport::RealMouseMove(start + QPoint(20 * step, 0));
        QVERIFY(w.SettledAt(QRect(200, 150, 420, 300)));
        QVERIFY(QGuiApplication::overrideCursor());
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::SizeHorCursor);
        // Let go off the window, the pointer shows its own cursor again.
        TestSupport::RealMouseRelease(start + QPoint(100, 0));
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    // Over the band the pointer shows the way it resizes; off it, the cursor of the widget
    // under it again.
    void showsResizeCursors()
    {
        TestWindow w;
        w.content->setCursor(Qt::IBeamCursor);
        QVERIFY(w.Show());
        QWindow* handle = w.window.windowHandle();
        const struct
        {
            QPoint at;
            Qt::CursorShape shape;
        } steps[] = {
            {{200, 200}, Qt::IBeamCursor},     {{1, 200}, Qt::SizeHorCursor},      {{200, 298}, Qt::SizeVerCursor},
            {{1, 1}, Qt::SizeFDiagCursor},     {{398, 1}, Qt::SizeBDiagCursor},    {{398, 298}, Qt::SizeFDiagCursor},
            {{200, 200}, Qt::IBeamCursor},
        };
        // The widget's own cursor shows where no override does.
        const auto shown = [&] {
            return QGuiApplication::overrideCursor() ? QGuiApplication::overrideCursor()->shape()
                                                     : handle->cursor().shape();
        };
        for (const auto& step : steps) {
            TestSupport::RealMouseMove(w.Global(step.at));
            QTRY_COMPARE(shown(), step.shape);
        }
        TestSupport::RealMouseMove(w.Global(QPoint(1, 150)));
        QTRY_VERIFY(QGuiApplication::overrideCursor());
        // Leaving the window, or the window going, takes the override away.
        TestSupport::RealMouseMove(w.Global(QPoint(-20, 150)));
        QTRY_VERIFY(!QGuiApplication::overrideCursor());
        TestSupport::RealMouseMove(w.Global(QPoint(1, 150)));
        QTRY_VERIFY(QGuiApplication::overrideCursor());
        w.window.hide();
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    // Maximised there is no band and no border; restored, both are back, and the window is
    // exactly where it was. Without a window manager the maximise is done by hand.
    void maximizesAndRestores_data()
    {
        QTest::addColumn<int>("screen");
        QTest::addColumn<int>("mode");
        QTest::newRow("first screen") << 0 << int(FramelessWindow::Automatic);
        QTest::newRow("second screen") << 1 << int(FramelessWindow::Automatic);
        QTest::newRow("by hand") << 0 << int(FramelessWindow::Emulated);
        QTest::newRow("by hand on the second screen") << 1 << int(FramelessWindow::Emulated);
    }
    void maximizesAndRestores()
    {
        QFETCH(int, screen);
        QFETCH(int, mode);
        QScreen* target = Screen(screen);
        QVERIFY(target);
        TestWindow w(target->geometry().topLeft() + QPoint(100, 80));
        w.window.SetMaximizeMode(FramelessWindow::MaximizeMode(mode));
        QVERIFY(w.Show());
        const QRect normal = w.window.geometry();
        TestSupport::SignalLog log(&w.window, {"MaximizedChanged(bool)"});

        w.window.ShowMaximized();
        QVERIFY(w.SettledAt(target->availableGeometry()));
        QVERIFY(w.window.IsMaximized());
        const bool byHand = mode == FramelessWindow::Emulated || !TestSupport::WindowManagerRuns();
        QCOMPARE(w.window.IsMaximizeEmulated(), byHand);
        QCOMPARE(w.window.HitRegions().resizeBorder, 0);
        QCOMPARE(w.Frame()->geometry(), QRect(QPoint(0, 0), target->availableGeometry().size()));
        QCOMPARE(log.Take(), QStringList{QStringLiteral("MaximizedChanged(true)")});

        w.window.ShowNormal();
        QVERIFY(w.SettledAt(normal));
        QVERIFY(!w.window.IsMaximized());
        QCOMPARE(w.window.HitRegions().resizeBorder, 5);
        QCOMPARE(log.Take(), QStringList{QStringLiteral("MaximizedChanged(false)")});

        // Asking for what is already so changes nothing.
        w.window.ShowNormal();
        QCOMPARE(log.Take(), QStringList());
    }

    // A window manager that says it maximises but ignores a frameless window: after a
    // moment the window is maximised by hand, and restored to where it was.
    void maximizesByHandWhenTheRequestIsIgnored()
    {
        if (TestSupport::WindowManagerRuns())
            QSKIP("needs a server without a window manager, whose claims the test makes");
        TestSupport::FakeWindowManagerClaims claims;
        TestWindow w;
        QVERIFY(w.Show());
        const QRect normal = w.window.geometry();
        LogCapture::Mark logs;
        w.window.ShowMaximized();
        QVERIFY(!w.window.IsMaximizeEmulated());
        QVERIFY(w.SettledAt(Screen(0)->availableGeometry()));
        QVERIFY(w.window.IsMaximizeEmulated());
        QCOMPARE(logs.Texts(), QStringList{QStringLiteral(
                     "2 FramelessWindow: the window manager did not maximise the window; it is maximised by hand")});
        w.window.ShowNormal();
        QVERIFY(w.SettledAt(normal));
    }

    // Saved and restored, alone or through QWidget's own functions, the window comes back
    // on its screen and in its state.
    void savesAndRestoresGeometry_data()
    {
        QTest::addColumn<int>("screen");
        QTest::addColumn<bool>("maximized");
        QTest::newRow("first screen") << 0 << false;
        QTest::newRow("second screen") << 1 << false;
        QTest::newRow("maximised on the second screen") << 1 << true;
    }
    void savesAndRestoresGeometry()
    {
        QFETCH(int, screen);
        QFETCH(bool, maximized);
        QScreen* target = Screen(screen);
        QVERIFY(target);
        const QRect normal(target->geometry().topLeft() + QPoint(120, 90), QSize(420, 310));
        QByteArray saved;
        {
            TestWindow w(normal.topLeft(), normal.size());
            w.window.SetMaximizeMode(FramelessWindow::Emulated);
            QVERIFY(w.Show());
            if (maximized) {
                w.window.ShowMaximized();
                QVERIFY(w.SettledAt(target->availableGeometry()));
            }
            saved = w.window.SaveGeometry();
        }

        TestWindow restored(QPoint(10, 10));
        restored.window.SetMaximizeMode(FramelessWindow::Emulated);
        QVERIFY(restored.window.RestoreGeometry(saved));
        QVERIFY(restored.Show());
        QVERIFY(restored.SettledAt(maximized ? target->availableGeometry() : normal));
        QCOMPARE(restored.window.IsMaximized(), maximized);
        restored.window.ShowNormal();
        QVERIFY(restored.SettledAt(normal));

        // QWidget reads it as one of its own.
        QWidget plain;
        QVERIFY(plain.restoreGeometry(saved));
        QCOMPARE(plain.normalGeometry().size(), normal.size());
        QCOMPARE(plain.isMaximized(), maximized);
    }

    // What QWidget saved, the window restores.
    void restoresWhatQWidgetSaved()
    {
        QWidget plain;
        plain.setWindowFlags(Qt::FramelessWindowHint);
        plain.setGeometry(300, 200, 350, 250);
        QVERIFY(TestSupport::ShowAndWait(&plain));
        QTRY_COMPARE(plain.geometry(), QRect(300, 200, 350, 250));
        const QByteArray saved = plain.saveGeometry();
        TestWindow w(QPoint(10, 10));
        QVERIFY(w.window.RestoreGeometry(saved));
        QVERIFY(w.Show());
        QVERIFY(w.SettledAt(QRect(300, 200, 350, 250)));
    }

    // A geometry saved on a screen that is gone, or off every screen, comes back inside
    // the screen that holds most of it, or the primary one; older versions of the format
    // restore too.
    void clampsToAScreenThatExists_data()
    {
        QTest::addColumn<QRect>("saved");
        QTest::addColumn<int>("screenNumber");
        QTest::addColumn<QRect>("expected");
        QTest::addColumn<int>("version");
        QTest::newRow("right of every screen") << QRect(5000, 100, 400, 300) << 2 << QRect(880, 100, 400, 300) << 3;
        QTest::newRow("below the second screen") << QRect(1400, 900, 400, 300) << 1 << QRect(1400, 468, 400, 300) << 3;
        QTest::newRow("over the gap below the second screen")
            << QRect(1200, 900, 400, 300) << 1 << QRect(880, 724, 400, 300) << 3;
        QTest::newRow("half off the left") << QRect(-200, 100, 400, 300) << 0 << QRect(0, 100, 400, 300) << 3;
        QTest::newRow("larger than the screen") << QRect(1300, 10, 2000, 2000) << 1 << QRect(1280, 0, 1024, 768) << 3;
        QTest::newRow("version 1, on screen") << QRect(250, 260, 300, 200) << 0 << QRect(250, 260, 300, 200) << 1;
    }
    void clampsToAScreenThatExists()
    {
        QFETCH(QRect, saved);
        QFETCH(int, screenNumber);
        QFETCH(QRect, expected);
        QFETCH(int, version);
        TestWindow w(QPoint(10, 10));
        QVERIFY(w.window.RestoreGeometry(SavedGeometry(saved, screenNumber, false, quint16(version))));
        QVERIFY(w.Show());
        QVERIFY(w.SettledAt(expected));
    }

    // Data that is no saved geometry leaves the window as it is, with one log line.
    void rejectsWhatIsNotASavedGeometry_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QString>("message");
        const QString notOne = QStringLiteral("3 FramelessWindow: %1 bytes that are not a saved geometry; the window stays where it is");
        const QString cut = QStringLiteral("3 FramelessWindow: the saved geometry is cut short or empty; the window stays where it is");
        const QByteArray good = SavedGeometry(QRect(300, 300, 300, 200), 0, false);
        QTest::newRow("empty") << QByteArray() << notOne.arg(0);
        QTest::newRow("text") << QByteArray("not a geometry at all") << notOne.arg(21);
        QTest::newRow("a later version") << SavedGeometry(QRect(300, 300, 300, 200), 0, false, 4)
                                         << notOne.arg(SavedGeometry(QRect(300, 300, 300, 200), 0, false, 4).size());
        QTest::newRow("cut short") << good.left(20) << cut;
        QTest::newRow("empty rectangle") << SavedGeometry(QRect(), 0, false) << cut;
    }
    void rejectsWhatIsNotASavedGeometry()
    {
        QFETCH(QByteArray, data);
        QFETCH(QString, message);
        TestWindow w;
        LogCapture::Mark logs;
        QVERIFY(!w.window.RestoreGeometry(data));
        QCOMPARE(logs.Texts(), QStringList{message});
        QCOMPARE(w.window.geometry(), QRect(200, 150, 400, 300));
    }

    // With a compositor the shadow takes the border's place: a margin of the shadow's width
    // that the band covers too, drawn dark and fading outwards.
    void drawsAShadowWhereComposited()
    {
        if (TestSupport::WindowManagerRuns())
            QSKIP("the test plays the compositor on a server of its own");
        TestSupport::FakeCompositor compositor;
        TestWindow w;
        w.window.SetShadowWidth(12);
        QVERIFY(w.Show());
        QVERIFY(w.window.HasShadow());
        QCOMPARE(w.Frame()->geometry(), QRect(13, 13, 374, 274));
        QCOMPARE(w.window.HitRegions().resizeBorder, 17);
        const QImage picture = w.window.grab().toImage();
        const int outer = picture.pixelColor(1, 150).alpha();
        const int inner = picture.pixelColor(11, 150).alpha();
        QVERIFY2(outer < inner && inner > 20, qPrintable(QStringLiteral("%1 %2").arg(outer).arg(inner)));
        // The shadow takes its colour from the style sheet's property.
        QCOMPARE(picture.pixelColor(11, 150).red(), 0);
        w.window.SetShadowColor(QColor(255, 0, 0, 120));
        const QColor red = w.window.grab().toImage().pixelColor(11, 150);
        QVERIFY2(red.red() > 0 && red.green() == 0, qPrintable(red.name(QColor::HexArgb)));
        w.window.ShowMaximized();
        QVERIFY(!w.window.HasShadow());
        QTRY_COMPARE(w.Frame()->geometry().topLeft(), QPoint(0, 0));
    }

    // Values out of range are logged and change nothing.
    void guards()
    {
        FramelessWindow window;
        LogCapture::Mark logs;
        window.SetResizeBorderWidth(-1);
        window.SetShadowWidth(-3);
        window.SetShadowWidth(65);
        window.SetMaximizeMode(FramelessWindow::MaximizeMode(7));
        QCOMPARE(logs.Texts(),
                 QStringList({QStringLiteral("3 FramelessWindow: a negative resize border (-1) is ignored"),
                              QStringLiteral("3 FramelessWindow: a shadow of -3 pixels is ignored (0 to 64)"),
                              QStringLiteral("3 FramelessWindow: a shadow of 65 pixels is ignored (0 to 64)"),
                              QStringLiteral("3 FramelessWindow: maximise mode 7 is not one; the mode stays")}));
        QCOMPARE(window.GetResizeBorderWidth(), 5);
        QCOMPARE(window.GetShadowWidth(), 0);
        QCOMPARE(window.GetMaximizeMode(), FramelessWindow::Automatic);
    }

    // Closing or deleting the window in the middle of a resize by hand is safe.
    void deletedDuringAResize()
    {
        auto* w = new TestWindow;
        QVERIFY(w->Show());
        const QPoint start = w->Global(QPoint(398, 150));
        TestSupport::RealMousePress(start);
        TestSupport::RealMouseMove(start + QPoint(10, 0));
        delete w;
        TestSupport::RealMouseMove(start + QPoint(20, 0));
        TestSupport::RealMouseRelease(start + QPoint(20, 0));
    }
};

QTEST_MAIN(TstFramelessWindow)
#include "tst_frameless_window.moc"
