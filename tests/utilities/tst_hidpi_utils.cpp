// Scaling and back-end choices are process-wide and come before the application object: a
// probe (this executable run again, on an X server of its own or none) prints what they did.

#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/styles/style_sheet_p.h>
#include <qt_halvo/utilities/hidpi_utils.h>

#include "test_support.h"

#include <cstdio>
#include <unistd.h>

using namespace OrvantaQT;

// In the probe: the choice, then the factor, attributes and variables it leaves, and its log.
static int RunProbe(const QByteArray& what, int width, int height)
{
    const LogCapture::Mark mark;
    if (what == "scale")
        EnableHiDpiScaling(QSize(width, height));
    else if (what == "backend")
        InitGraphicalBackend();
    const auto on = [](Qt::ApplicationAttribute attribute) { return int(QCoreApplication::testAttribute(attribute)); };
    std::printf("factor %g, enable %d, pixmaps %d, disable %d, gles %d, QT_SCALE_FACTOR %s, QT_ANGLE_PLATFORM %s\n",
                GetQtScaleFactor(), on(Qt::AA_EnableHighDpiScaling), on(Qt::AA_UseHighDpiPixmaps),
                on(Qt::AA_DisableHighDpiScaling), on(Qt::AA_UseOpenGLES), qgetenv("QT_SCALE_FACTOR").constData(),
                qgetenv("QT_ANGLE_PLATFORM").constData());
    std::printf("%s\n", qPrintable(mark.Texts().join('\n')));
    return 0;
}

class TestHiDpiUtils : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choicesBeforeTheApplication_data()
    {
        QTest::addColumn<QString>("arguments"); // of this executable; "--xvfb": on a 1366 x 768 screen at 150 %
        QTest::addColumn<QString>("environment"); // "NAME=value;..."
        QTest::addColumn<QStringList>("expected"); // what the probe prints

        // Its first line once the factor was set: Qt's own scaling stays on above one.
        const QString set = "factor %1, enable %2, pixmaps %2, disable %3, gles 0, QT_SCALE_FACTOR %1, QT_ANGLE_PLATFORM ";
        const QString untouched = set.arg("1").arg(0).arg(0).replace("FACTOR 1", "FACTOR ");
        const QString measured = "2 GetDisplayInfo succeeded: DPI: 144, scaling: 150%. Monitors: "
                                 "Resolution: 1366x768, work area: 1366x%1, physical DPI: 76.";
        const QString lowered = "3 EnableHiDpiScaling - console doesn't fit monitor resolution with system scaling. Set scale to %1.";
        QTest::newRow("150 %, fits at 1.25") << "--xvfb --probe scale 1000 600" << ""
                                             << QStringList{set.arg("1.25").arg(1).arg(0), measured.arg(768), lowered.arg("1.250000")};
        QTest::newRow("work area counts") << "--xvfb --probe scale 1000 600" << "QT_HALVO_XVFB_WORKAREA=0, 0, 1366, 700"
                                          << QStringList{set.arg("1").arg(0).arg(1), measured.arg(700), lowered.arg("1.000000")};
        QTest::newRow("no display") << "--probe scale 1000 600" << ""
                                    << QStringList{set.arg("1").arg(1).arg(0).replace("FACTOR 1", "FACTOR "), "4 GetDisplayInfo failed",
                                                   "2 EnableHiDpiScaling - use system scaling."};
        QTest::newRow("unreadable QT_SCALE_FACTOR") << "--probe none 0 0" << "QT_SCALE_FACTOR=abc"
                                                    << QStringList{QString(untouched).replace("FACTOR ,", "FACTOR abc,")};
        // The other back-end choices are Windows' only.
        QTest::newRow("back-end left to Qt") << "--probe backend 0 0" << "QT_OPENGL=desktop"
                                             << QStringList{untouched, "2 Graphical backend will be set by Qt framework"};
    }

    void choicesBeforeTheApplication()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, environment);
        QFETCH(QStringList, expected);
        const TestSupport::ChildResult probe = TestSupport::RunSelf(
            arguments.split(' '), QStringList{"DISPLAY=", "QT_SCALE_FACTOR=", "QT_OPENGL=", "QT_ANGLE_PLATFORM=", "QT_HALVO_XVFB_SCREEN=1366x768x24",
                                              "QT_HALVO_XVFB_DPI=144", "QT_HALVO_XVFB_XFT_DPI=144"} + environment.split(';'));
        QVERIFY(probe.finished);
        QCOMPARE(probe.output.split('\n', Qt::SkipEmptyParts), expected);
    }

    void minimumConsoleSizeFromTheSheet()
    {
        ResetStyleState();
        QCOMPARE(GetMinimumConsoleSize(), QSize(0, 0));
        QTemporaryFile sheet;
        QVERIFY(sheet.open() && sheet.write("/* Stylesheet Constants\nminConsoleWidth = 1024\nminConsoleHeight = 700\n*/") && sheet.flush());
        LoadGlobalStyleSheet(sheet.fileName());
        QCOMPARE(GetMinimumConsoleSize(), QSize(1024, 700));
    }

    void grabHiDpiPixmap()
    {
        const qreal ratio = qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble(); // registered at 1 and at 2
        QWidget window;
        window.resize(40, 30);
        QWidget square(&window);
        square.setGeometry(10, 10, 10, 10);
        square.setAutoFillBackground(true);
        square.setPalette(QPalette(Qt::red)); // its window colour too
        QVERIFY(TestSupport::ShowAndWait(&window));
        const QPixmap pixmap = GrabHiDpiPixmap(&window);
        QCOMPARE(pixmap.devicePixelRatio(), ratio);
        QCOMPARE(pixmap.size(), QSize(40, 30) * ratio);
        // The window's own background is left out; its children are drawn.
        const QImage image = pixmap.toImage();
        QCOMPARE(image.pixel(QPoint(2, 2) * ratio), 0u);
        QCOMPARE(image.pixel(QPoint(15, 15) * ratio), qRgb(255, 0, 0));
        const LogCapture::Mark mark;
        QVERIFY(GrabHiDpiPixmap(nullptr).isNull() && mark.Contains(4, "GrabHiDpiPixmap: no widget"));
    }
};

int main(int argc, char** argv)
{
    if (argc == 6 && qstrcmp(argv[1], "--xvfb") == 0) { // the probe on an X server of its own
        argv[1] = argv[0];
        argv[0] = const_cast<char*>(QT_HALVO_XVFB_SCRIPT);
        return execv(argv[0], argv);
    }
    if (argc == 5 && qstrcmp(argv[1], "--probe") == 0)
        return RunProbe(argv[2], QByteArray(argv[3]).toInt(), QByteArray(argv[4]).toInt());
    QApplication application(argc, argv);
    TestHiDpiUtils test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hidpi_utils.moc"
