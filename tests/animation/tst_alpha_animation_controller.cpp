#include <qt_halvo/animation/alpha_animation_controller.h>

#include "log_capture.h"

#include <QtCore/QPointer>
#include <QtCore/QPropertyAnimation>
#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

#include <memory>

using OrvantaQT::AlphaAnimationController;

namespace {

const int kFadeTimeout = 5000;

// Every style sheet the watched widget is given, in order; a new sheet reaches the
// widget as a StyleChange event before setStyleSheet() returns.
class SheetRecorder : public QObject
{
public:
    explicit SheetRecorder(QWidget* widget) : m_widget(widget) { widget->installEventFilter(this); }

    QStringList sheets;

    // The alpha of each recorded sheet, -1 for one that is not a background colour.
    QVector<int> Alphas() const
    {
        static const QRegularExpression pattern(QStringLiteral("^background-color: rgb\\(\\d+,\\d+,\\d+,(\\d+)\\);$"));
        QVector<int> alphas;
        for (const QString& sheet : sheets) {
            const QRegularExpressionMatch match = pattern.match(sheet);
            alphas.append(match.hasMatch() ? match.captured(1).toInt() : -1);
        }
        return alphas;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == m_widget && event->type() == QEvent::StyleChange
            && (sheets.isEmpty() || sheets.last() != m_widget->styleSheet())) {
            sheets.append(m_widget->styleSheet());
        }
        return false;
    }

private:
    QWidget* m_widget;
};

QString Sheet(const QColor& color, int alpha)
{
    return QStringLiteral("background-color: rgb(%1,%2,%3,%4);").arg(color.red()).arg(color.green()).arg(color.blue()).arg(alpha);
}

// The colour over opaque white, as the screen shows it.
QColor OverWhite(const QColor& color, int alpha)
{
    const auto blend = [alpha](int channel) { return (channel * alpha + 255 * (255 - alpha)) / 255; };
    return QColor(blend(color.red()), blend(color.green()), blend(color.blue()));
}

bool Near(const QColor& actual, const QColor& expected)
{
    return qAbs(actual.red() - expected.red()) <= 3 && qAbs(actual.green() - expected.green()) <= 3
        && qAbs(actual.blue() - expected.blue()) <= 3;
}

QString Describe(const QColor& color)
{
    return QStringLiteral("rgb(%1,%2,%3)").arg(color.red()).arg(color.green()).arg(color.blue());
}

// Qt 5.15 warns about the alpha in rgb() on every frame of a fade, and applies it.
QtMessageHandler previousHandler = nullptr;

void DropRgbAlphaWarnings(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg && message.startsWith(QLatin1String("QCssParser::parseColorValue: Specified color without alpha value")))
        return;
    previousHandler(type, context, message);
}

} // namespace

class TestAlphaAnimationController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void fadesTheParentBackgroundIn_data();
    void fadesTheParentBackgroundIn();
    void startDuringAFadeKeepsItGoingAndLaterStartsAgain();
    void withoutAParentWidgetOnlyTheAlphaChanges_data();
    void withoutAParentWidgetOnlyTheAlphaChanges();
    void badInputIsReportedAndIgnored();
    void goesWithItsParentAndLeavesItAlone();

private:
    // The colour the target widget shows, over the window's white.
    QColor Shown() const;

    QWidget* m_window = nullptr;
    QWidget* m_target = nullptr;
};

void TestAlphaAnimationController::initTestCase()
{
    previousHandler = qInstallMessageHandler(DropRgbAlphaWarnings);
}

void TestAlphaAnimationController::init()
{
    m_window = new QWidget;
    m_window->setAutoFillBackground(true);
    QPalette palette = m_window->palette();
    palette.setColor(QPalette::Window, Qt::white);
    m_window->setPalette(palette);
    m_window->resize(160, 120);
    m_target = new QWidget(m_window);
    m_target->setGeometry(20, 20, 100, 60);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void TestAlphaAnimationController::cleanup()
{
    delete m_window;
}

QColor TestAlphaAnimationController::Shown() const
{
    const QPixmap picture = m_window->grab();
    const QPoint centre = m_target->geometry().center() * picture.devicePixelRatio();
    return picture.toImage().pixelColor(centre);
}

void TestAlphaAnimationController::fadesTheParentBackgroundIn_data()
{
    QTest::addColumn<QColor>("color");
    QTest::newRow("translucent blue") << QColor(0, 0, 255, 200);
    QTest::newRow("opaque red") << QColor(200, 30, 40);
    QTest::newRow("half green given as HSV") << QColor::fromHsv(120, 255, 255, 128);
}

void TestAlphaAnimationController::fadesTheParentBackgroundIn()
{
    QFETCH(QColor, color);
    const QColor white(Qt::white);
    SheetRecorder recorder(m_target);
    auto* controller = new AlphaAnimationController(m_target, color);
    QCOMPARE(controller->parent(), m_target);
    QCOMPARE(controller->alpha(), 0);
    QCOMPARE(m_target->styleSheet(), Sheet(color, 0));
    QVERIFY2(Near(Shown(), white), qPrintable(Describe(Shown())));

    controller->Start();
    QTRY_COMPARE_WITH_TIMEOUT(controller->alpha(), color.alpha(), kFadeTimeout);
    QCOMPARE(m_target->styleSheet(), Sheet(color, color.alpha()));
    QCOMPARE(controller->property("alpha").toInt(), color.alpha());
    const QColor expected = OverWhite(color, color.alpha());
    QVERIFY2(Near(Shown(), expected), qPrintable(Describe(Shown()) + QStringLiteral(" instead of ") + Describe(expected)));

    // It got there step by step, never backwards.
    const QVector<int> alphas = recorder.Alphas();
    QVERIFY2(!alphas.contains(-1), qPrintable(recorder.sheets.join(QLatin1Char('\n'))));
    QCOMPARE(alphas.first(), 0);
    QCOMPARE(alphas.last(), color.alpha());
    QVERIFY(std::is_sorted(alphas.begin(), alphas.end()));
    QVERIFY2(std::any_of(alphas.begin(), alphas.end(), [&](int alpha) { return alpha > 0 && alpha < color.alpha(); }),
             "the background did not fade");

    auto* animation = controller->findChild<QPropertyAnimation*>();
    QVERIFY(animation);
    QCOMPARE(animation->duration(), 300);
    QCOMPARE(animation->easingCurve().type(), QEasingCurve::InOutQuad);
}

void TestAlphaAnimationController::startDuringAFadeKeepsItGoingAndLaterStartsAgain()
{
    const QColor color(10, 20, 30, 200);
    SheetRecorder recorder(m_target);
    auto* controller = new AlphaAnimationController(m_target, color);
    bool startedAgain = false;
    // Asked part way, at a point fixed by the fade itself rather than by the clock.
    connect(controller->findChild<QPropertyAnimation*>(), &QVariantAnimation::valueChanged, this,
            [&](const QVariant& value) {
                if (!startedAgain && value.toInt() > 40) {
                    startedAgain = true;
                    QTimer::singleShot(0, controller, &AlphaAnimationController::Start);
                }
            });
    controller->Start();
    QTRY_COMPARE_WITH_TIMEOUT(controller->alpha(), 200, kFadeTimeout);
    QVERIFY(startedAgain);
    QVector<int> alphas = recorder.Alphas();
    QVERIFY2(std::is_sorted(alphas.begin(), alphas.end()), "a second Start() during the fade restarted it");

    // Once it has ended, Start() fades in again from 0.
    recorder.sheets.clear();
    controller->Start();
    QTRY_VERIFY_WITH_TIMEOUT(recorder.Alphas().contains(0), kFadeTimeout);
    QTRY_COMPARE_WITH_TIMEOUT(recorder.Alphas().last(), 200, kFadeTimeout);
    QTRY_COMPARE_WITH_TIMEOUT(controller->alpha(), 200, kFadeTimeout);
    alphas = recorder.Alphas();
    QCOMPARE(alphas.first(), 0);
    QVERIFY(std::is_sorted(alphas.begin(), alphas.end()));
}

void TestAlphaAnimationController::withoutAParentWidgetOnlyTheAlphaChanges_data()
{
    QTest::addColumn<bool>("parentless");
    QTest::newRow("made without a parent") << true;
    QTest::newRow("moved to a plain object") << false;
}

void TestAlphaAnimationController::withoutAParentWidgetOnlyTheAlphaChanges()
{
    QFETCH(bool, parentless);
    QObject plainOwner;
    const LogCapture::Mark mark;
    AlphaAnimationController* controller = nullptr;
    std::unique_ptr<AlphaAnimationController> owned;
    if (parentless) {
        owned = std::make_unique<AlphaAnimationController>(nullptr, QColor(1, 2, 3, 90));
        controller = owned.get();
        QCOMPARE(mark.Since().size(), 1);
        QCOMPARE(mark.Since().first().level, 4);
    } else {
        controller = new AlphaAnimationController(m_target, QColor(1, 2, 3, 90));
        controller->setParent(&plainOwner);
        m_target->setStyleSheet(QStringLiteral("color: red;"));
        QVERIFY(mark.Since().isEmpty());
    }
    controller->Start();
    QTRY_COMPARE_WITH_TIMEOUT(controller->alpha(), 90, kFadeTimeout);
    controller->setAlpha(10);
    QCOMPARE(controller->alpha(), 10);
    QCOMPARE(m_target->styleSheet(), parentless ? QString() : QStringLiteral("color: red;"));
}

void TestAlphaAnimationController::badInputIsReportedAndIgnored()
{
    const QString ownSheet = QStringLiteral("color: red;");
    m_target->setStyleSheet(ownSheet);
    {
        const LogCapture::Mark mark;
        auto* controller = new AlphaAnimationController(m_target, QColor());
        QCOMPARE(mark.Since().size(), 1);
        QCOMPARE(mark.Since().first().level, 4);
        controller->Start();
        QTest::qWait(400);
        QCOMPARE(m_target->styleSheet(), ownSheet);
        delete controller;
    }

    auto* controller = new AlphaAnimationController(m_target, QColor(5, 6, 7, 100));
    controller->setAlpha(60);
    const QString sheet = m_target->styleSheet();
    QCOMPARE(sheet, QStringLiteral("background-color: rgb(5,6,7,60);"));
    for (int alpha : {-1, 256, 1000}) {
        const LogCapture::Mark mark;
        controller->setAlpha(alpha);
        QCOMPARE(mark.Since().size(), 1);
        QCOMPARE(mark.Since().first().level, 4);
        QCOMPARE(controller->alpha(), 60);
        QCOMPARE(m_target->styleSheet(), sheet);
    }
    for (int alpha : {0, 255}) {
        const LogCapture::Mark mark;
        controller->setAlpha(alpha);
        QVERIFY(mark.Since().isEmpty());
        QCOMPARE(controller->alpha(), alpha);
    }
}

void TestAlphaAnimationController::goesWithItsParentAndLeavesItAlone()
{
    const QColor color(50, 60, 70, 220);
    auto* controller = new AlphaAnimationController(m_target, color);
    QPointer<AlphaAnimationController> guard(controller);
    QPointer<QPropertyAnimation> animation(controller->findChild<QPropertyAnimation*>());
    QVERIFY(animation);

    // Deleted during a fade, it leaves the parent with the last colour it gave.
    SheetRecorder recorder(m_target);
    controller->Start();
    QTRY_VERIFY_WITH_TIMEOUT(controller->alpha() > 0, kFadeTimeout);
    delete controller;
    QVERIFY(!animation);
    const QStringList sheets = recorder.sheets;
    QTest::qWait(400);
    QCOMPARE(recorder.sheets, sheets);

    // Deleted with its parent, during a fade, it takes its animation along.
    controller = new AlphaAnimationController(m_target, color);
    guard = controller;
    animation = controller->findChild<QPropertyAnimation*>();
    controller->Start();
    QTRY_VERIFY_WITH_TIMEOUT(controller->alpha() > 0, kFadeTimeout);
    delete m_target;
    m_target = nullptr;
    QVERIFY(!guard);
    QVERIFY(!animation);
    QTest::qWait(100);
}

QTEST_MAIN(TestAlphaAnimationController)
#include "tst_alpha_animation_controller.moc"
