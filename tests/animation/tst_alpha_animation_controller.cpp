#include <qt_halvo/animation/alpha_animation_controller.h>

#include "log_capture.h"

#include <qt_halvo_logging.h>

#include <QtCore/QPointer>
#include <QtCore/QPropertyAnimation>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

using OrvantaQT::AlphaAnimationController;

namespace {

const int kWait = 20000;

QString Sheet(const QColor& color, int alpha)
{
    return QStringLiteral("background-color: rgb(%1,%2,%3,%4);").arg(color.red()).arg(color.green()).arg(color.blue()).arg(alpha);
}

// The alpha of every new style sheet the widget is given, in order; -1 for one that is not
// the colour's. A new sheet reaches the widget as a StyleChange event at once.
struct AlphaRecorder : QObject
{
    AlphaRecorder(QWidget* widget, const QColor& color) : widget(widget), color(color) { widget->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        const QString sheet = widget->styleSheet();
        if (event->type() == QEvent::StyleChange && sheet != last) {
            last = sheet;
            const int alpha = sheet.section(QLatin1Char(','), 3).section(QLatin1Char(')'), 0, 0).toInt();
            alphas.append(sheet == Sheet(color, alpha) ? alpha : -1);
        }
        return false;
    }
    QWidget* widget;
    QColor color;
    QString last;
    QVector<int> alphas;
};

// Qt 5.15 warns about the alpha in rgb() on every frame of a fade, and applies it.
QtMessageHandler previousHandler = nullptr;

void DropRgbAlphaWarnings(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type != QtWarningMsg || !message.contains(QLatin1String("color without alpha value but alpha given")))
        previousHandler(type, context, message);
}

} // namespace

class TestAlphaAnimationController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { previousHandler = qInstallMessageHandler(DropRgbAlphaWarnings); }
    void init();
    void cleanup() { delete m_window; }

    void fadesTheParentBackgroundIn_data();
    void fadesTheParentBackgroundIn();
    void withoutAWidgetOrAColourNoSheetIsSet_data();
    void withoutAWidgetOrAColourNoSheetIsSet();
    void alphaOutsideTheRangeIsReportedAndIgnored();
    void goesWithItsParentAndLeavesItAlone();

private:
    QWidget* m_window = nullptr;
    QWidget* m_target = nullptr;
};

void TestAlphaAnimationController::init()
{
    m_window = new QWidget;
    m_window->setAutoFillBackground(true);
    m_window->setPalette(QPalette(Qt::white));
    m_window->resize(160, 120);
    m_target = new QWidget(m_window);
    m_target->setGeometry(20, 20, 100, 60);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void TestAlphaAnimationController::fadesTheParentBackgroundIn_data()
{
    QTest::addColumn<QColor>("color");
    QTest::newRow("translucent blue") << QColor(0, 0, 255, 200);
    QTest::newRow("half green given as HSV") << QColor::fromHsv(120, 255, 255, 128);
}

void TestAlphaAnimationController::fadesTheParentBackgroundIn()
{
    QFETCH(QColor, color);
    // Empty when the middle of the target shows the colour at this alpha over the window's
    // white, within 3 in each channel.
    const auto differs = [this, &color](int alpha) {
        const QPixmap picture = m_window->grab();
        const QColor shown = picture.toImage().pixelColor(m_target->geometry().center() * picture.devicePixelRatio());
        const auto blend = [alpha](int channel) { return (channel * alpha + 255 * (255 - alpha)) / 255; };
        const QColor expected(blend(color.red()), blend(color.green()), blend(color.blue()));
        const bool near = qAbs(shown.red() - expected.red()) <= 3 && qAbs(shown.green() - expected.green()) <= 3
            && qAbs(shown.blue() - expected.blue()) <= 3;
        return near ? QString() : shown.name() + QStringLiteral(" instead of ") + expected.name();
    };
    AlphaRecorder recorder(m_target, color);
    auto* controller = new AlphaAnimationController(m_target, color);
    QCOMPARE(controller->alpha(), 0);
    QCOMPARE(m_target->styleSheet(), Sheet(color, 0));
    QCOMPARE(differs(0), QString());

    controller->Start();
    QTRY_COMPARE_WITH_TIMEOUT(controller->alpha(), color.alpha(), kWait);
    QCOMPARE(m_target->styleSheet(), Sheet(color, color.alpha()));
    QCOMPARE(differs(color.alpha()), QString());
    // It got there step by step, never backwards.
    const QVector<int>& alphas = recorder.alphas;
    QVERIFY(!alphas.contains(-1));
    QCOMPARE(alphas.first(), 0);
    QCOMPARE(alphas.last(), color.alpha());
    QVERIFY(std::is_sorted(alphas.begin(), alphas.end()));
    QVERIFY2(std::any_of(alphas.begin(), alphas.end(), [&](int alpha) { return alpha > 0 && alpha < color.alpha(); }),
             "the background did not fade");
    // The fade's length and curve are part of the class's promise.
    auto* animation = controller->findChild<QPropertyAnimation*>();
    QCOMPARE(animation->duration(), 300);
    QCOMPARE(animation->easingCurve().type(), QEasingCurve::InOutQuad);

    // Once it has ended, Start() fades in again from 0; part way (as the fade's clock would
    // put it), Start() leaves the fade going.
    recorder.alphas.clear();
    controller->Start();
    animation->setCurrentTime(150);
    const int partWay = controller->alpha();
    QVERIFY(partWay > 0 && partWay < color.alpha());
    controller->Start();
    QCOMPARE(controller->alpha(), partWay);
    QTRY_COMPARE_WITH_TIMEOUT(animation->state(), QAbstractAnimation::Stopped, kWait);
    QCOMPARE(alphas.first(), 0);
    QCOMPARE(alphas.last(), color.alpha());
    QVERIFY(std::is_sorted(alphas.begin(), alphas.end()));
}

void TestAlphaAnimationController::withoutAWidgetOrAColourNoSheetIsSet_data()
{
    QTest::addColumn<bool>("parentWidget");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<int>("logged");
    QTest::newRow("made without a parent") << false << QColor(1, 2, 3, 90) << 1;
    QTest::newRow("moved to a plain object") << true << QColor(1, 2, 3, 90) << 0;
    QTest::newRow("invalid colour") << true << QColor() << 1;
}

void TestAlphaAnimationController::withoutAWidgetOrAColourNoSheetIsSet()
{
    QFETCH(bool, parentWidget);
    QFETCH(QColor, color);
    QFETCH(int, logged);
    const LogCapture::Mark mark;
    QObject plainOwner;
    auto* controller = new AlphaAnimationController(parentWidget ? m_target : nullptr, color);
    if (color.isValid())
        controller->setParent(&plainOwner);
    const QString ownSheet = QStringLiteral("color: red;");
    m_target->setStyleSheet(ownSheet);
    QCOMPARE(mark.Since().size(), logged);
    for (const LoggedLine& line : mark.Since())
        QCOMPARE(line.level, Logging_LevelError);

    // The alpha still runs its course (to the end at once here) and can be set; no sheet changes.
    controller->Start();
    controller->findChild<QPropertyAnimation*>()->setCurrentTime(300);
    QCOMPARE(controller->alpha(), color.isValid() ? 90 : 0);
    controller->setAlpha(10);
    QCOMPARE(controller->alpha(), 10);
    QCOMPARE(m_target->styleSheet(), ownSheet);
    QCOMPARE(mark.Since().size(), logged);
}

void TestAlphaAnimationController::alphaOutsideTheRangeIsReportedAndIgnored()
{
    auto* controller = new AlphaAnimationController(m_target, QColor(5, 6, 7, 100));
    for (int alpha : {0, 255, 60}) {
        const LogCapture::Mark mark;
        controller->setAlpha(alpha);
        QVERIFY(mark.Since().isEmpty());
        QCOMPARE(m_target->styleSheet(), Sheet(QColor(5, 6, 7), alpha));
    }
    for (int alpha : {-1, 256, 1000}) {
        const LogCapture::Mark mark;
        controller->setAlpha(alpha);
        QCOMPARE(mark.Since().size(), 1);
        QCOMPARE(mark.Since().first().level, Logging_LevelError);
        QCOMPARE(controller->alpha(), 60);
        QCOMPARE(m_target->styleSheet(), Sheet(QColor(5, 6, 7), 60));
    }
}

void TestAlphaAnimationController::goesWithItsParentAndLeavesItAlone()
{
    // Deleted during a fade, it takes its animation along and leaves the last colour.
    auto* controller = new AlphaAnimationController(m_target, QColor(50, 60, 70, 220));
    QPointer<QPropertyAnimation> animation(controller->findChild<QPropertyAnimation*>());
    controller->Start();
    animation->setCurrentTime(100);
    const QString sheet = m_target->styleSheet();
    delete controller;
    QVERIFY(!animation);
    QCOMPARE(m_target->styleSheet(), sheet);

    // Deleted with its parent, during a fade, likewise.
    QPointer<AlphaAnimationController> guard(new AlphaAnimationController(m_target, QColor(50, 60, 70, 220)));
    animation = guard->findChild<QPropertyAnimation*>();
    guard->Start();
    delete m_target;
    QVERIFY(!guard);
    QVERIFY(!animation);
}

QTEST_MAIN(TestAlphaAnimationController)
#include "tst_alpha_animation_controller.moc"
