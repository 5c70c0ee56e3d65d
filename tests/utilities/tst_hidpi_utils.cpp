// Scaling and back-end choices are process-wide and must precede the application
// object, so those cases run this executable again as a probe ("--probe <what> ..."),
// on an X server of a chosen size and DPI, and read what it reports.

#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/styles/style_sheet_p.h>
#include <qt_halvo/utilities/hidpi_utils.h>

#include "log_capture.h"

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

#include <cstdio>

using namespace OrvantaQT;

// The X server a probe runs on.
struct Display
{
    QString screen;   // empty: no X server at all
    QString xftDpi;   // empty: unset
    QString workArea; // empty: none published
};
Q_DECLARE_METATYPE(Display)

namespace {

using Report = QMap<QString, QString>;

// ---- the probe, in the child process

int RunProbe(const QStringList& arguments)
{
    const LogCapture::Mark mark;
    if (arguments.value(0) == QLatin1String("scale"))
        EnableHiDpiScaling(QSize(arguments.value(1).toInt(), arguments.value(2).toInt()));
    else if (arguments.value(0) == QLatin1String("backend"))
        InitGraphicalBackend();
    const auto flag = [](Qt::ApplicationAttribute attribute) { return QCoreApplication::testAttribute(attribute) ? "1" : "0"; };
    const auto variable = [](const char* name) { return qEnvironmentVariableIsSet(name) ? qgetenv(name) : QByteArray("unset"); };
    QStringList lines;
    for (const LoggedLine& line : mark.Since())
        lines << QString::number(line.level) + QLatin1Char(' ') + line.text;
    std::printf("factor=%g\nenable=%s\npixmaps=%s\ndisable=%s\ngles=%s\nQT_SCALE_FACTOR=%s\nQT_ANGLE_PLATFORM=%s\nlog=%s\n",
                GetQtScaleFactor(), flag(Qt::AA_EnableHighDpiScaling), flag(Qt::AA_UseHighDpiPixmaps),
                flag(Qt::AA_DisableHighDpiScaling), flag(Qt::AA_UseOpenGLES), variable("QT_SCALE_FACTOR").constData(),
                variable("QT_ANGLE_PLATFORM").constData(), qPrintable(lines.join(QLatin1Char('|'))));
    return 0;
}

// ---- the parent side

Report Probe(const Display& display, const QStringList& arguments, const QStringList& environment = {})
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("QT_SCALE_FACTOR"));
    env.remove(QStringLiteral("QT_OPENGL"));
    env.remove(QStringLiteral("QT_ANGLE_PLATFORM"));
    for (const QString& assignment : environment)
        env.insert(assignment.section(QLatin1Char('='), 0, 0), assignment.section(QLatin1Char('='), 1));
    QString program = QCoreApplication::applicationFilePath();
    QStringList programArguments = QStringList{QStringLiteral("--probe")} + arguments;
    if (display.screen.isEmpty()) {
        env.remove(QStringLiteral("DISPLAY"));
    } else {
        env.insert(QStringLiteral("QT_HALVO_XVFB_SCREEN"), display.screen + QStringLiteral("x24"));
        env.insert(QStringLiteral("QT_HALVO_XVFB_DPI"), QStringLiteral("144"));
        env.insert(QStringLiteral("QT_HALVO_XVFB_XFT_DPI"), display.xftDpi);
        env.insert(QStringLiteral("QT_HALVO_XVFB_WORKAREA"), display.workArea);
        programArguments.prepend(program);
        program = QStringLiteral(QT_HALVO_XVFB_SCRIPT);
    }
    QProcess probe;
    probe.setProcessEnvironment(env);
    probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    probe.start(program, programArguments);
    Report report;
    if (!probe.waitForFinished(60000) || probe.exitCode() != 0)
        return report;
    for (const QString& line : QString::fromUtf8(probe.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        report.insert(line.section(QLatin1Char('='), 0, 0), line.section(QLatin1Char('='), 1));
    return report;
}

const QString kSucceeded = QStringLiteral("2 GetDisplayInfo succeeded: DPI: %1, scaling: %2%. Monitors: "
                                          "Resolution: 1366x768, work area: 1366x%3, physical DPI: 76.");
const QString kSystemScaling = QStringLiteral("2 EnableHiDpiScaling - use system scaling.");
const QString kLowered =
    QStringLiteral("3 EnableHiDpiScaling - console doesn't fit monitor resolution with system scaling. Set scale to %1.");

} // namespace

class TestHiDpiUtils : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scalingChoice_data();
    void scalingChoice();
    void environmentChoices_data();
    void environmentChoices();
    void minimumConsoleSizeFromTheSheet();
    void grabHiDpiPixmap();
};

void TestHiDpiUtils::scalingChoice_data()
{
    QTest::addColumn<Display>("display");
    QTest::addColumn<QSize>("console");
    QTest::addColumn<QString>("scaleFactor"); // "unset": system scaling
    QTest::addColumn<QStringList>("log");

    const Display scaled150{QStringLiteral("1366x768"), QStringLiteral("144"), QString()};
    const QString succeeded150 = kSucceeded.arg(144).arg(150).arg(768);
    QTest::newRow("150 %, fits only at 1.25") << scaled150 << QSize(1000, 600) << "1.25"
                                              << QStringList{succeeded150, kLowered.arg("1.250000")};
    QTest::newRow("150 %, fits") << scaled150 << QSize(800, 500) << "unset" << QStringList{succeeded150, kSystemScaling};
    QTest::newRow("negative side") << scaled150 << QSize(-1, 600) << "unset" << QStringList{succeeded150, kSystemScaling};
    QTest::newRow("work area counts") << Display{"1366x768", "144", "0, 0, 1366, 700"} << QSize(1000, 600) << "1"
                                      << QStringList{kSucceeded.arg(144).arg(150).arg(700), kLowered.arg("1.000000")};
    QTest::newRow("100 %, no fit") << Display{"1366x768", QString(), QString()} << QSize(2000, 1000) << "1"
                                   << QStringList{kSucceeded.arg(96).arg(100).arg(768), kLowered.arg("1.000000")};
    QTest::newRow("no display") << Display{} << QSize(1000, 600) << "unset"
                                << QStringList{QStringLiteral("4 GetDisplayInfo failed"), kSystemScaling};
}

void TestHiDpiUtils::scalingChoice()
{
    QFETCH(Display, display);
    QFETCH(QSize, console);
    QFETCH(QString, scaleFactor);
    QFETCH(QStringList, log);
    const Report report =
        Probe(display, {QStringLiteral("scale"), QString::number(console.width()), QString::number(console.height())});
    QVERIFY2(!report.isEmpty(), "the probe failed");
    QCOMPARE(report.value(QStringLiteral("log")).split(QLatin1Char('|')), log);
    QCOMPARE(report.value(QStringLiteral("QT_SCALE_FACTOR")), scaleFactor);
    // Read after the choice, the factor is the one chosen.
    QCOMPARE(report.value(QStringLiteral("factor")), scaleFactor == QLatin1String("unset") ? QStringLiteral("1") : scaleFactor);
    // Qt's own scaling stays on above a factor of one.
    const QString disabled = scaleFactor == QLatin1String("1") ? QStringLiteral("1") : QStringLiteral("0");
    const QString enabled = scaleFactor == QLatin1String("1") ? QStringLiteral("0") : QStringLiteral("1");
    QCOMPARE(report.value(QStringLiteral("disable")), disabled);
    QCOMPARE(report.value(QStringLiteral("enable")), enabled);
    QCOMPARE(report.value(QStringLiteral("pixmaps")), enabled);
}

void TestHiDpiUtils::environmentChoices_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<Report>("expected"); // of what the probe reports

    QTest::newRow("unreadable QT_SCALE_FACTOR") << QStringList{"nothing"} << QStringList{"QT_SCALE_FACTOR=abc"}
                                                << Report{{"factor", "1"}};
    QTest::newRow("QT_SCALE_FACTOR") << QStringList{"nothing"} << QStringList{"QT_SCALE_FACTOR=1.5"}
                                     << Report{{"factor", "1.5"}};
    QTest::newRow("back-end left to Qt")
        << QStringList{"backend"} << QStringList{"QT_OPENGL=desktop"}
        << Report{{"log", "2 Graphical backend will be set by Qt framework"}, {"gles", "0"}, {"QT_ANGLE_PLATFORM", "unset"}};
    // The other choices are Windows' only.
    QTest::newRow("back-end") << QStringList{"backend"} << QStringList()
                              << Report{{"log", ""}, {"gles", "0"}, {"QT_ANGLE_PLATFORM", "unset"}};
}

void TestHiDpiUtils::environmentChoices()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, environment);
    QFETCH(Report, expected);
    const Report report = Probe(Display{}, arguments, environment);
    QVERIFY2(!report.isEmpty(), "the probe failed");
    for (auto it = expected.cbegin(); it != expected.cend(); ++it)
        QCOMPARE(it.key() + QLatin1Char('=') + report.value(it.key()), it.key() + QLatin1Char('=') + it.value());
}

void TestHiDpiUtils::minimumConsoleSizeFromTheSheet()
{
    ResetStyleState();
    QCOMPARE(GetMinimumConsoleSize(), QSize(0, 0));
    QTemporaryDir dir;
    QFile sheet(dir.filePath(QStringLiteral("console.qss")));
    QVERIFY(sheet.open(QIODevice::WriteOnly));
    sheet.write("/* Stylesheet Constants\nminConsoleWidth = 1024\nminConsoleHeight = 700\n*/");
    sheet.close();
    LoadGlobalStyleSheet(sheet.fileName());
    QCOMPARE(GetMinimumConsoleSize(), QSize(1024, 700));
}

void TestHiDpiUtils::grabHiDpiPixmap()
{
    // Registered twice: as it is, and with QT_SCALE_FACTOR=2.
    const qreal ratio = qEnvironmentVariableIsSet("QT_SCALE_FACTOR") ? qEnvironmentVariable("QT_SCALE_FACTOR").toDouble() : 1.0;
    QWidget window;
    window.resize(40, 30);
    QWidget square(&window);
    square.setGeometry(10, 10, 10, 10);
    square.setAutoFillBackground(true);
    QPalette palette = square.palette();
    palette.setColor(QPalette::Window, Qt::red);
    square.setPalette(palette);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.devicePixelRatioF(), ratio);

    const QPixmap pixmap = GrabHiDpiPixmap(&window);
    QCOMPARE(pixmap.devicePixelRatio(), ratio);
    QCOMPARE(pixmap.size(), QSize(40, 30) * ratio);
    const QImage image = pixmap.toImage();
    // The window's own background is left out; its children are drawn.
    QCOMPARE(qAlpha(image.pixel(QPoint(2, 2) * ratio)), 0);
    QCOMPARE(image.pixel(QPoint(15, 15) * ratio), qRgb(255, 0, 0));
    QCOMPARE(qAlpha(image.pixel(QPoint(21, 21) * ratio)), 0);

    const LogCapture::Mark mark;
    QVERIFY(GrabHiDpiPixmap(nullptr).isNull());
    QVERIFY(mark.Contains(4, QStringLiteral("GrabHiDpiPixmap: no widget")));
}

int main(int argc, char** argv)
{
    if (argc > 1 && qstrcmp(argv[1], "--probe") == 0) {
        QStringList arguments;
        for (int i = 2; i < argc; ++i)
            arguments << QString::fromLocal8Bit(argv[i]);
        return RunProbe(arguments);
    }
    QApplication application(argc, argv);
    TestHiDpiUtils test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hidpi_utils.moc"
