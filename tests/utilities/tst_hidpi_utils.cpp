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

// Runs the probe with these additions to the environment: on an X server of its own when
// they choose a screen (see with_xvfb.sh), else on none at all.
Report Probe(const QString& arguments, const QStringList& environment)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"QT_SCALE_FACTOR", "QT_OPENGL", "QT_ANGLE_PLATFORM", "DISPLAY", "QT_HALVO_XVFB_SCREEN"})
        env.remove(QString::fromLatin1(name));
    for (const QString& assignment : environment)
        env.insert(assignment.section(QLatin1Char('='), 0, 0), assignment.section(QLatin1Char('='), 1));
    QStringList programArguments{QCoreApplication::applicationFilePath(), QStringLiteral("--probe")};
    programArguments += arguments.split(QLatin1Char(' '));
    const QString program = env.contains(QStringLiteral("QT_HALVO_XVFB_SCREEN")) ? QStringLiteral(QT_HALVO_XVFB_SCRIPT)
                                                                                 : programArguments.takeFirst();
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

// A 1366 x 768 screen; an empty Xft.dpi is left unset, an empty work area unpublished.
QStringList Screen(const QString& xftDpi, const QString& workArea = QString())
{
    return {QStringLiteral("QT_HALVO_XVFB_SCREEN=1366x768x24"), QStringLiteral("QT_HALVO_XVFB_DPI=144"),
            QStringLiteral("QT_HALVO_XVFB_XFT_DPI=") + xftDpi, QStringLiteral("QT_HALVO_XVFB_WORKAREA=") + workArea};
}

const QString kSucceeded = QStringLiteral("2 GetDisplayInfo succeeded: DPI: %1, scaling: %2%. Monitors: "
                                          "Resolution: 1366x768, work area: 1366x%3, physical DPI: 76.");
const QString kSystemScaling = QStringLiteral("2 EnableHiDpiScaling - use system scaling.");
const QString kLowered =
    QStringLiteral("3 EnableHiDpiScaling - console doesn't fit monitor resolution with system scaling. Set scale to %1.");

// What the probe reports once EnableHiDpiScaling chose the factor ("unset": system
// scaling); read after the choice, the factor is the one chosen, and Qt's own scaling
// stays on above a factor of one.
Report Chosen(const QString& factor, const QStringList& log)
{
    const bool one = factor == QLatin1String("1");
    return Report{{"log", log.join(QLatin1Char('|'))}, {"QT_SCALE_FACTOR", factor},
                  {"factor", factor == QLatin1String("unset") ? QStringLiteral("1") : factor},
                  {"disable", one ? "1" : "0"}, {"enable", one ? "0" : "1"}, {"pixmaps", one ? "0" : "1"}};
}

} // namespace

class TestHiDpiUtils : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choicesBeforeTheApplication_data();
    void choicesBeforeTheApplication();
    void minimumConsoleSizeFromTheSheet();
    void grabHiDpiPixmap();
};

void TestHiDpiUtils::choicesBeforeTheApplication_data()
{
    QTest::addColumn<QString>("arguments"); // of the probe
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<Report>("expected"); // of what the probe reports

    const QString succeeded150 = kSucceeded.arg(144).arg(150).arg(768);
    QTest::newRow("150 %, fits only at 1.25")
        << "scale 1000 600" << Screen("144") << Chosen("1.25", {succeeded150, kLowered.arg("1.250000")});
    QTest::newRow("150 %, fits") << "scale 800 500" << Screen("144") << Chosen("unset", {succeeded150, kSystemScaling});
    QTest::newRow("negative side") << "scale -1 600" << Screen("144")
                                   << Chosen("unset", {succeeded150, kSystemScaling});
    QTest::newRow("work area counts") << "scale 1000 600" << Screen("144", "0, 0, 1366, 700")
                                      << Chosen("1", {kSucceeded.arg(144).arg(150).arg(700), kLowered.arg("1.000000")});
    QTest::newRow("100 %, no fit") << "scale 2000 1000" << Screen("")
                                   << Chosen("1", {kSucceeded.arg(96).arg(100).arg(768), kLowered.arg("1.000000")});
    QTest::newRow("no display") << "scale 1000 600" << QStringList()
                                << Chosen("unset", {QStringLiteral("4 GetDisplayInfo failed"), kSystemScaling});
    QTest::newRow("unreadable QT_SCALE_FACTOR")
        << "nothing" << QStringList{"QT_SCALE_FACTOR=abc"} << Report{{"factor", "1"}};
    QTest::newRow("back-end left to Qt")
        << "backend" << QStringList{"QT_OPENGL=desktop"}
        << Report{{"log", "2 Graphical backend will be set by Qt framework"}, {"gles", "0"}, {"QT_ANGLE_PLATFORM", "unset"}};
    // The other back-end choices are Windows' only.
    QTest::newRow("back-end") << "backend" << QStringList()
                              << Report{{"log", ""}, {"gles", "0"}, {"QT_ANGLE_PLATFORM", "unset"}};
}

void TestHiDpiUtils::choicesBeforeTheApplication()
{
    QFETCH(QString, arguments);
    QFETCH(QStringList, environment);
    QFETCH(Report, expected);
    const Report report = Probe(arguments, environment);
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
    square.setPalette(QPalette(Qt::red)); // its window colour too
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
