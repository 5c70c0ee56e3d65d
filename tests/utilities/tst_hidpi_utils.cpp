// Scaling and back-end choices are process-wide and come before the application object,
// so those cases run this executable again as a probe ("--probe <what> <width> <height>"),
// on an X server of a chosen size and DPI, and compare what it prints.

#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/styles/style_sheet_p.h>
#include <qt_halvo/utilities/hidpi_utils.h>

#include "test_support.h"

#include <cstdio>

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
    for (const LoggedLine& line : mark.Since())
        std::printf("%d %s\n", line.level, qPrintable(line.text));
    return 0;
}

class TestHiDpiUtils : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choicesBeforeTheApplication_data()
    {
        QTest::addColumn<QString>("arguments"); // of the probe
        QTest::addColumn<QString>("screen"); // "<Xft.dpi>,<work area>" of a 1366 x 768 screen at 144 DPI; null: none
        QTest::addColumn<QString>("environment"); // "NAME=value"
        QTest::addColumn<QStringList>("expected"); // what the probe prints

        // The probe's first line once the factor was set: Qt's own scaling stays on above one.
        const QString set = "factor %1, enable %2, pixmaps %2, disable %3, gles 0, QT_SCALE_FACTOR %1, QT_ANGLE_PLATFORM ";
        const QString system = set.arg("1").arg(1).arg(0).replace("FACTOR 1", "FACTOR ");
        const QString untouched = set.arg("1").arg(0).arg(0).replace("FACTOR 1", "FACTOR ");
        const QString measured = "2 GetDisplayInfo succeeded: DPI: %1, scaling: %2%. Monitors: "
                                 "Resolution: 1366x768, work area: 1366x%3, physical DPI: 76.";
        const QString lowered = "3 EnableHiDpiScaling - console doesn't fit monitor resolution with system scaling. Set scale to %1.";
        const QString systemScaling = "2 EnableHiDpiScaling - use system scaling.";
        QTest::newRow("150 %, fits") << "scale 800 500" << "144," << ""
                                     << QStringList{system, measured.arg(144).arg(150).arg(768), systemScaling};
        QTest::newRow("150 %, fits at 1.25") << "scale 1000 600" << "144," << ""
                                             << QStringList{set.arg("1.25").arg(1).arg(0), measured.arg(144).arg(150).arg(768),
                                                            lowered.arg("1.250000")};
        QTest::newRow("work area counts") << "scale 1000 600" << "144,0, 0, 1366, 700" << ""
                                          << QStringList{set.arg("1").arg(0).arg(1), measured.arg(144).arg(150).arg(700),
                                                         lowered.arg("1.000000")};
        QTest::newRow("100 %, no fit") << "scale 2000 1000" << "," << ""
                                       << QStringList{set.arg("1").arg(0).arg(1), measured.arg(96).arg(100).arg(768),
                                                      lowered.arg("1.000000")};
        QTest::newRow("no display") << "scale 1000 600" << QString() << ""
                                    << QStringList{system, "4 GetDisplayInfo failed", systemScaling};
        QTest::newRow("unreadable QT_SCALE_FACTOR") << "none 0 0" << QString() << "QT_SCALE_FACTOR=abc"
                                                    << QStringList{QString(untouched).replace("FACTOR ,", "FACTOR abc,")};
        // The other back-end choices are Windows' only.
        QTest::newRow("back-end") << "backend 0 0" << QString() << "" << QStringList{untouched};
        QTest::newRow("back-end left to Qt") << "backend 0 0" << QString() << "QT_OPENGL=desktop"
                                             << QStringList{untouched, "2 Graphical backend will be set by Qt framework"};
    }

    void choicesBeforeTheApplication()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, screen);
        QFETCH(QString, environment);
        QFETCH(QStringList, expected);
        QProcessEnvironment changed = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"QT_SCALE_FACTOR", "QT_OPENGL", "QT_ANGLE_PLATFORM", "DISPLAY"})
            changed.remove(QString::fromLatin1(name));
        if (!environment.isEmpty())
            changed.insert(environment.section('=', 0, 0), environment.section('=', 1));
        QStringList command = QStringList{QCoreApplication::applicationFilePath(), "--probe"} + arguments.split(' ');
        if (!screen.isNull()) { // see with_xvfb.sh
            changed.insert("QT_HALVO_XVFB_SCREEN", "1366x768x24");
            changed.insert("QT_HALVO_XVFB_DPI", "144");
            changed.insert("QT_HALVO_XVFB_XFT_DPI", screen.section(',', 0, 0));
            changed.insert("QT_HALVO_XVFB_WORKAREA", screen.section(',', 1));
            command.prepend(QStringLiteral(QT_HALVO_XVFB_SCRIPT));
        }
        QProcess probe;
        probe.setProcessEnvironment(changed);
        probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        probe.start(command.takeFirst(), command);
        QVERIFY(probe.waitForFinished(60000));
        QCOMPARE(QString::fromLocal8Bit(probe.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts), expected);
    }

    void minimumConsoleSizeFromTheSheet()
    {
        ResetStyleState();
        QCOMPARE(GetMinimumConsoleSize(), QSize(0, 0));
        QTemporaryDir dir;
        QFile sheet(dir.filePath("console.qss"));
        QVERIFY(sheet.open(QIODevice::WriteOnly));
        sheet.write("/* Stylesheet Constants\nminConsoleWidth = 1024\nminConsoleHeight = 700\n*/");
        sheet.close();
        LoadGlobalStyleSheet(sheet.fileName());
        QCOMPARE(GetMinimumConsoleSize(), QSize(1024, 700));
    }

    void grabHiDpiPixmap()
    {
        // Registered twice: as it is, and with QT_SCALE_FACTOR=2.
        const qreal ratio = qEnvironmentVariableIsSet("QT_SCALE_FACTOR") ? qEnvironmentVariable("QT_SCALE_FACTOR").toDouble() : 1.0;
        QWidget window;
        window.resize(40, 30);
        QWidget square(&window);
        square.setGeometry(10, 10, 10, 10);
        square.setAutoFillBackground(true);
        square.setPalette(QPalette(Qt::red)); // its window colour too
        QVERIFY(TestSupport::ShowAndWait(&window));
        QCOMPARE(window.devicePixelRatioF(), ratio);

        const QPixmap pixmap = GrabHiDpiPixmap(&window);
        QCOMPARE(pixmap.devicePixelRatio(), ratio);
        QCOMPARE(pixmap.size(), QSize(40, 30) * ratio);
        // The window's own background is left out; its children are drawn.
        const QImage image = pixmap.toImage();
        QCOMPARE(qAlpha(image.pixel(QPoint(2, 2) * ratio)), 0);
        QCOMPARE(image.pixel(QPoint(15, 15) * ratio), qRgb(255, 0, 0));
        QCOMPARE(qAlpha(image.pixel(QPoint(21, 21) * ratio)), 0);

        const LogCapture::Mark mark;
        QVERIFY(GrabHiDpiPixmap(nullptr).isNull());
        QVERIFY(mark.Contains(4, "GrabHiDpiPixmap: no widget"));
    }
};

int main(int argc, char** argv)
{
    if (argc == 5 && qstrcmp(argv[1], "--probe") == 0)
        return RunProbe(argv[2], QByteArray(argv[3]).toInt(), QByteArray(argv[4]).toInt());
    QApplication application(argc, argv);
    TestHiDpiUtils test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hidpi_utils.moc"
