#include <qt_halvo/animation/animated_effect.h>
#include <qt_halvo/animation/graphics_background_blur_effect.h>

#include "log_capture.h"

#include <QtCore/QPropertyAnimation>
#include <QtGui/QPainter>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsBlurEffect>
#include <QtWidgets/QGraphicsColorizeEffect>
#include <QtWidgets/QGraphicsOpacityEffect>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <functional>

using OrvantaQT::AnimatedBlurEffect;
using OrvantaQT::AnimatedEffect;
using OrvantaQT::AnimatedOpacityEffect;
using OrvantaQT::GraphicsBackgroundBlurEffect;

namespace {

// Bounds the waits for runs to end; no run in these tests takes more than a few seconds.
constexpr int kWait = 20000;

// Black on the left half, white on the right: a sharp vertical edge in the middle.
class Halves : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(QRect(0, 0, width() / 2, height()), Qt::black);
        painter.fillRect(QRect(width() / 2, 0, width() - width() / 2, height()), Qt::white);
    }
};

class Solid : public QWidget
{
public:
    Solid(QColor color, QWidget* parent) : QWidget(parent), m_color(color) {}

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), m_color); }

private:
    QColor m_color;
};

// AnimatedEffect over any effect: the base alone, as a host's own kind would use it.
class ColorizeEffect : public AnimatedEffect
{
public:
    ColorizeEffect(QGraphicsEffect* effect, int duration, double start, double end, int backward, QObject* parent,
                   bool stopAfterForward)
        : AnimatedEffect(effect, parent, stopAfterForward)
    {
        SetAnimator(duration, "strength", start, end, backward);
    }
};

// Each value the animated property took, and whether the effect was on at that moment.
struct Sample
{
    double value;
    bool effectOn;
};

bool AllOn(const QVector<Sample>& trace)
{
    return std::all_of(trace.begin(), trace.end(), [](const Sample& s) { return s.effectOn; });
}

bool Rising(const QVector<Sample>& trace)
{
    return std::is_sorted(trace.begin(), trace.end(), [](const Sample& a, const Sample& b) { return a.value < b.value; });
}

bool Falling(const QVector<Sample>& trace)
{
    return std::is_sorted(trace.begin(), trace.end(), [](const Sample& a, const Sample& b) { return a.value > b.value; });
}

bool HasValueBetween(const QVector<Sample>& trace, double low, double high)
{
    return std::any_of(trace.begin(), trace.end(), [=](const Sample& s) { return s.value > low && s.value < high; });
}

QString Describe(const QVector<Sample>& trace)
{
    QStringList parts;
    for (const Sample& s : trace)
        parts << QStringLiteral("%1%2").arg(s.value).arg(s.effectOn ? QString() : QStringLiteral("(off)"));
    return parts.join(QLatin1Char(' '));
}

// The difference between two neighbouring columns of the row: large at a sharp edge,
// small everywhere along a blurred one.
int LargestStep(const QImage& image, int y)
{
    int largest = 0;
    for (int x = 1; x < image.width(); ++x)
        largest = qMax(largest, qAbs(qGray(image.pixel(x, y)) - qGray(image.pixel(x - 1, y))));
    return largest;
}

// Makes an effect from bad arguments; given a widget that may serve as foreground.
using Factory = std::function<AnimatedEffect*(QWidget*)>;

} // namespace

Q_DECLARE_METATYPE(Factory)

class TestAnimatedEffect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void installsItsEffectSwitchedOff_data();
    void installsItsEffectSwitchedOff();
    void forwardRunHoldsTheEndValueUnlessStoppedAfterForward_data();
    void forwardRunHoldsTheEndValueUnlessStoppedAfterForward();
    void backwardRunEndsWithTheEffectOff_data();
    void backwardRunEndsWithTheEffectOff();
    void eachWayTakesItsDuration_data();
    void eachWayTakesItsDuration();
    void runsOfOneMillisecondFinish_data();
    void runsOfOneMillisecondFinish();
    void playDuringARunTurnsItRoundFromTheCurrentValue_data();
    void playDuringARunTurnsItRoundFromTheCurrentValue();
    void playFromAFinishedHandlerStartsANewRun_data();
    void playFromAFinishedHandlerStartsANewRun();
    void stopHaltsTheRunAndSwitchesTheEffectOff_data();
    void stopHaltsTheRunAndSwitchesTheEffectOff();
    void outlivesItsWidget_data();
    void outlivesItsWidget();
    void blurRunBlursThePictureAroundTheForeground();
    void nullArgumentsAreLoggedAndHarmless_data();
    void nullArgumentsAreLoggedAndHarmless();

private:
    AnimatedEffect* Make(const QString& kind, int duration, int backward, bool stopAfterForward);
    QGraphicsEffect* Effect() const { return m_effect; }
    double Value() const { return Effect()->property(m_property).toDouble(); }
    QPropertyAnimation* Animation() const { return m_animated->findChild<QPropertyAnimation*>(); }
    void Record(qreal value);
    void WaitUntilPartWay(double fraction);
    void RunForward();
    QImage Grab() const { return m_window->grab().toImage(); }

    QWidget* m_window = nullptr;
    QPointer<QWidget> m_panel;
    QWidget* m_foreground = nullptr;
    QPointer<QGraphicsEffect> m_effect;
    AnimatedEffect* m_animated = nullptr;
    QByteArray m_property;
    double m_start = 0;
    double m_end = 0;
    QVector<Sample> m_trace;
    std::unique_ptr<QSignalSpy> m_forward;
    std::unique_ptr<QSignalSpy> m_backward;
};

void TestAnimatedEffect::init()
{
    m_window = new QWidget;
    m_window->resize(200, 120);
    m_panel = new Halves(m_window);
    m_panel->setGeometry(0, 0, 200, 120);
    m_foreground = new Solid(Qt::red, m_panel);
    m_foreground->setGeometry(30, 70, 40, 30);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void TestAnimatedEffect::cleanup()
{
    m_forward.reset();
    m_backward.reset();
    delete m_window;
    m_window = nullptr;
    m_animated = nullptr;
    m_trace.clear();
}

// "opacity" and "blur" are the library's two kinds on the panel; "colorize" is the base
// on an effect that is on no widget.
AnimatedEffect* TestAnimatedEffect::Make(const QString& kind, int duration, int backward, bool stopAfterForward)
{
    if (kind == QLatin1String("opacity")) {
        m_start = 0.2;
        m_end = 0.9;
        m_property = "opacity";
        m_animated = new AnimatedOpacityEffect(m_panel, duration, m_start, m_end, m_window, backward, stopAfterForward);
        m_effect = m_panel->graphicsEffect();
        if (auto* effect = qobject_cast<QGraphicsOpacityEffect*>(m_effect))
            connect(effect, &QGraphicsOpacityEffect::opacityChanged, this, &TestAnimatedEffect::Record);
    } else if (kind == QLatin1String("blur")) {
        m_start = 1.0;
        m_end = 12.0;
        m_property = "blurRadius";
        m_animated = new AnimatedBlurEffect(m_panel, duration, m_start, m_end, m_window, backward, stopAfterForward,
                                            m_foreground);
        m_effect = m_panel->graphicsEffect();
        if (auto* effect = qobject_cast<QGraphicsBlurEffect*>(m_effect))
            connect(effect, &QGraphicsBlurEffect::blurRadiusChanged, this, &TestAnimatedEffect::Record);
    } else {
        m_start = 0.1;
        m_end = 0.8;
        m_property = "strength";
        auto* effect = new QGraphicsColorizeEffect(m_window);
        m_animated = new ColorizeEffect(effect, duration, m_start, m_end, backward, m_window, stopAfterForward);
        m_effect = effect;
        connect(effect, &QGraphicsColorizeEffect::strengthChanged, this, &TestAnimatedEffect::Record);
    }
    m_forward = std::make_unique<QSignalSpy>(m_animated, &AnimatedEffect::FinishedForward);
    m_backward = std::make_unique<QSignalSpy>(m_animated, &AnimatedEffect::FinishedBackward);
    return m_animated;
}

void TestAnimatedEffect::Record(qreal value)
{
    m_trace.append({value, m_effect && m_effect->isEnabled()});
}

// Waits until a forward run has covered the fraction of its way, or a backward run has
// left that fraction of it to go.
void TestAnimatedEffect::WaitUntilPartWay(double fraction)
{
    const double mark = m_start + (m_end - m_start) * fraction;
    const QAbstractAnimation::Direction direction = Animation()->direction();
    QTRY_VERIFY_WITH_TIMEOUT(direction == QAbstractAnimation::Forward ? Value() >= mark : Value() <= mark, kWait);
    QVERIFY2(Animation()->state() == QAbstractAnimation::Running, "the run ended before the test could sample it");
}

void TestAnimatedEffect::RunForward()
{
    const int before = m_forward->count();
    m_animated->PlayForward();
    QTRY_COMPARE_WITH_TIMEOUT(m_forward->count(), before + 1, kWait);
}

void TestAnimatedEffect::installsItsEffectSwitchedOff_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("opacity") << QStringLiteral("opacity");
    QTest::newRow("blur") << QStringLiteral("blur");
}

void TestAnimatedEffect::installsItsEffectSwitchedOff()
{
    QFETCH(QString, kind);
    Make(kind, 100, 100, false);
    QVERIFY(Effect());
    QVERIFY(!Effect()->isEnabled());
    if (kind == QLatin1String("opacity")) {
        QVERIFY(qobject_cast<QGraphicsOpacityEffect*>(Effect()));
    } else {
        auto* blur = qobject_cast<GraphicsBackgroundBlurEffect*>(Effect());
        QVERIFY(blur);
        QCOMPARE(blur->blurHints(), QGraphicsBlurEffect::AnimationHint);
    }
    // The panel's picture is untouched while the effect rests.
    QCOMPARE(LargestStep(Grab(), 20), 255);
}

void TestAnimatedEffect::forwardRunHoldsTheEndValueUnlessStoppedAfterForward_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("stopAfterForward");
    for (const char* kind : {"opacity", "blur", "colorize"}) {
        QTest::addRow("%s, holding", kind) << QString::fromLatin1(kind) << false;
        QTest::addRow("%s, stopping after forward", kind) << QString::fromLatin1(kind) << true;
    }
}

void TestAnimatedEffect::forwardRunHoldsTheEndValueUnlessStoppedAfterForward()
{
    QFETCH(QString, kind);
    QFETCH(bool, stopAfterForward);
    Make(kind, 400, 100, stopAfterForward);

    m_animated->PlayForward();
    QVERIFY(Effect()->isEnabled());
    QTRY_COMPARE_WITH_TIMEOUT(m_forward->count(), 1, kWait);
    QCOMPARE(m_backward->count(), 0);
    QCOMPARE(Value(), m_end);
    QCOMPARE(Effect()->isEnabled(), !stopAfterForward);

    QVERIFY2(HasValueBetween(m_trace, m_start, m_end), qPrintable(Describe(m_trace)));
    QVERIFY2(Rising(m_trace), qPrintable(Describe(m_trace)));
    QVERIFY2(AllOn(m_trace), qPrintable(Describe(m_trace)));

    // Once over, it stays over.
    QCoreApplication::processEvents();
    QCOMPARE(m_forward->count(), 1);
    QCOMPARE(Effect()->isEnabled(), !stopAfterForward);
}

void TestAnimatedEffect::backwardRunEndsWithTheEffectOff_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("stopAfterForward");
    QTest::addColumn<bool>("forwardFirst");
    for (const char* kind : {"opacity", "blur", "colorize"}) {
        QTest::addRow("%s, after a forward run", kind) << QString::fromLatin1(kind) << false << true;
        QTest::addRow("%s, after a forward run that stopped", kind) << QString::fromLatin1(kind) << true << true;
        QTest::addRow("%s, from rest", kind) << QString::fromLatin1(kind) << false << false;
    }
}

void TestAnimatedEffect::backwardRunEndsWithTheEffectOff()
{
    QFETCH(QString, kind);
    QFETCH(bool, stopAfterForward);
    QFETCH(bool, forwardFirst);
    Make(kind, 100, 300, stopAfterForward);
    if (forwardFirst)
        RunForward();
    const int forwards = m_forward->count();
    m_trace.clear();

    m_animated->PlayBackward();
    QVERIFY(Effect()->isEnabled());
    QTRY_COMPARE_WITH_TIMEOUT(m_backward->count(), 1, kWait);
    QCOMPARE(m_forward->count(), forwards);
    QCOMPARE(Value(), m_start);
    QVERIFY(!Effect()->isEnabled());

    // From the end value down to the start value, with the effect on all the way.
    QVERIFY2(HasValueBetween(m_trace, m_start, m_end), qPrintable(Describe(m_trace)));
    QVERIFY2(Falling(m_trace), qPrintable(Describe(m_trace)));
    QVERIFY2(m_trace.first().value > m_start + (m_end - m_start) / 2, qPrintable(Describe(m_trace)));
    QVERIFY2(AllOn(m_trace), qPrintable(Describe(m_trace)));
}

void TestAnimatedEffect::eachWayTakesItsDuration_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("backward");
    QTest::addColumn<int>("expectedBackward");
    for (const char* kind : {"opacity", "blur"}) {
        QTest::addRow("%s, own backward duration", kind) << QString::fromLatin1(kind) << 300 << 300;
        QTest::addRow("%s, backward duration 0", kind) << QString::fromLatin1(kind) << 0 << 700;
        QTest::addRow("%s, negative backward duration", kind) << QString::fromLatin1(kind) << -20 << 700;
    }
    // The base takes the durations as they are given.
    QTest::newRow("colorize, own backward duration") << QStringLiteral("colorize") << 300 << 300;
}

void TestAnimatedEffect::eachWayTakesItsDuration()
{
    QFETCH(QString, kind);
    QFETCH(int, backward);
    QFETCH(int, expectedBackward);
    Make(kind, 700, backward, false);
    QVERIFY(Animation());

    m_animated->PlayBackward();
    QCOMPARE(Animation()->duration(), expectedBackward);
    QTRY_COMPARE_WITH_TIMEOUT(m_backward->count(), 1, kWait);
    m_animated->PlayForward();
    QCOMPARE(Animation()->duration(), 700);
    m_animated->Stop();
    m_animated->PlayBackward();
    QCOMPARE(Animation()->duration(), expectedBackward);
    m_animated->Stop();
}

void TestAnimatedEffect::runsOfOneMillisecondFinish_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("opacity") << QStringLiteral("opacity");
    QTest::newRow("blur") << QStringLiteral("blur");
    QTest::newRow("colorize") << QStringLiteral("colorize");
}

void TestAnimatedEffect::runsOfOneMillisecondFinish()
{
    QFETCH(QString, kind);
    Make(kind, 1, 1, false);
    RunForward();
    QCOMPARE(Value(), m_end);
    QVERIFY(Effect()->isEnabled());
    m_animated->PlayBackward();
    QTRY_COMPARE_WITH_TIMEOUT(m_backward->count(), 1, kWait);
    QCOMPARE(m_forward->count(), 1);
    QCOMPARE(Value(), m_start);
    QVERIFY(!Effect()->isEnabled());
}

void TestAnimatedEffect::playDuringARunTurnsItRoundFromTheCurrentValue_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("forward");
    QTest::addColumn<int>("backward");
    QTest::addColumn<bool>("forwardFirst");
    QTest::newRow("opacity, forward turned back, quicker way back") << QStringLiteral("opacity") << 3000 << 1000 << true;
    QTest::newRow("opacity, forward turned back, slower way back") << QStringLiteral("opacity") << 1500 << 3000 << true;
    QTest::newRow("blur, backward turned forward, same durations") << QStringLiteral("blur") << 1500 << 1500 << false;
}

void TestAnimatedEffect::playDuringARunTurnsItRoundFromTheCurrentValue()
{
    QFETCH(QString, kind);
    QFETCH(int, forward);
    QFETCH(int, backward);
    QFETCH(bool, forwardFirst);
    Make(kind, forward, backward, false);
    // A value may pass the turning point by the rounding of the run's time to whole ms.
    const double tolerance = (m_end - m_start) * 0.01;

    if (forwardFirst) {
        m_animated->PlayForward();
        WaitUntilPartWay(0.3);
        const double turningPoint = Value();
        m_trace.clear();
        m_animated->PlayBackward();
        QTRY_COMPARE_WITH_TIMEOUT(m_backward->count(), 1, kWait);
        QCOMPARE(m_forward->count(), 0);
        QVERIFY(!Effect()->isEnabled());
        QCOMPARE(Value(), m_start);
        // Down from where it was, without first going up to the end.
        QVERIFY2(m_trace.size() > 1, qPrintable(Describe(m_trace)));
        QVERIFY2(m_trace.first().value <= turningPoint + tolerance,
                 qPrintable(QStringLiteral("turned at %1: %2").arg(turningPoint).arg(Describe(m_trace))));
        QVERIFY2(Falling(m_trace), qPrintable(Describe(m_trace)));
    } else {
        RunForward();
        m_animated->PlayBackward();
        WaitUntilPartWay(0.7);
        const double turningPoint = Value();
        m_trace.clear();
        m_animated->PlayForward();
        QTRY_COMPARE_WITH_TIMEOUT(m_forward->count(), 2, kWait);
        QCOMPARE(m_backward->count(), 0);
        QVERIFY(Effect()->isEnabled());
        QCOMPARE(Value(), m_end);
        QVERIFY2(m_trace.size() > 1, qPrintable(Describe(m_trace)));
        QVERIFY2(m_trace.first().value >= turningPoint - tolerance,
                 qPrintable(QStringLiteral("turned at %1: %2").arg(turningPoint).arg(Describe(m_trace))));
        QVERIFY2(Rising(m_trace), qPrintable(Describe(m_trace)));
    }
    QVERIFY2(AllOn(m_trace), qPrintable(Describe(m_trace)));
}

void TestAnimatedEffect::playFromAFinishedHandlerStartsANewRun_data()
{
    QTest::addColumn<bool>("forwardFirst");
    QTest::addColumn<bool>("stopAfterForward");
    QTest::newRow("back after forward, stopping after forward") << true << true;
    QTest::newRow("back after forward, holding") << true << false;
    QTest::newRow("forward after backward") << false << false;
}

void TestAnimatedEffect::playFromAFinishedHandlerStartsANewRun()
{
    QFETCH(bool, forwardFirst);
    QFETCH(bool, stopAfterForward);
    Make(QStringLiteral("opacity"), 200, 200, stopAfterForward);
    // Once: turn round at the first end reached.
    auto turnRound = std::make_shared<QMetaObject::Connection>();
    if (forwardFirst) {
        *turnRound = connect(m_animated, &AnimatedEffect::FinishedForward, this, [this, turnRound] {
            disconnect(*turnRound);
            m_animated->PlayBackward();
        });
        m_animated->PlayForward();
        QTRY_COMPARE_WITH_TIMEOUT(m_backward->count(), 1, kWait);
        QCOMPARE(m_forward->count(), 1);
        QCOMPARE(Value(), m_start);
        QVERIFY(!Effect()->isEnabled());
    } else {
        *turnRound = connect(m_animated, &AnimatedEffect::FinishedBackward, this, [this, turnRound] {
            disconnect(*turnRound);
            m_animated->PlayForward();
        });
        m_animated->PlayBackward();
        QTRY_COMPARE_WITH_TIMEOUT(m_forward->count(), 1, kWait);
        QCOMPARE(m_backward->count(), 1);
        QCOMPARE(Value(), m_end);
        QVERIFY(Effect()->isEnabled());
    }
    QVERIFY2(AllOn(m_trace), qPrintable(Describe(m_trace)));
}

void TestAnimatedEffect::stopHaltsTheRunAndSwitchesTheEffectOff_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("when");
    // Stopping is the same for every kind of effect.
    const QString kind = QStringLiteral("opacity");
    QTest::newRow("during a forward run") << kind << QStringLiteral("forward");
    QTest::newRow("during a backward run") << kind << QStringLiteral("backward");
    QTest::newRow("holding the end value") << kind << QStringLiteral("holding");
}

void TestAnimatedEffect::stopHaltsTheRunAndSwitchesTheEffectOff()
{
    QFETCH(QString, kind);
    QFETCH(QString, when);
    Make(kind, 1500, 1500, false);
    if (when == QLatin1String("forward")) {
        m_animated->PlayForward();
        WaitUntilPartWay(0.3);
    } else {
        RunForward();
        if (when == QLatin1String("backward")) {
            m_animated->PlayBackward();
            WaitUntilPartWay(0.7);
        }
    }
    const int forwards = m_forward->count();
    const double value = Value();
    m_animated->Stop();
    QVERIFY(!Effect()->isEnabled());
    QCOMPARE(Animation()->state(), QAbstractAnimation::Stopped);
    QCoreApplication::processEvents();
    QCOMPARE(Value(), value);
    QCOMPARE(m_forward->count(), forwards);
    QCOMPARE(m_backward->count(), 0);

    // A new run starts over from the start value.
    m_trace.clear();
    RunForward();
    QVERIFY2(m_trace.first().value < m_start + (m_end - m_start) / 2, qPrintable(Describe(m_trace)));
    QVERIFY(Effect()->isEnabled());
}

void TestAnimatedEffect::outlivesItsWidget_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("running");
    for (const char* kind : {"opacity", "blur"}) {
        QTest::addRow("%s, at rest", kind) << QString::fromLatin1(kind) << false;
        QTest::addRow("%s, during a run", kind) << QString::fromLatin1(kind) << true;
    }
}

void TestAnimatedEffect::outlivesItsWidget()
{
    QFETCH(QString, kind);
    QFETCH(bool, running);
    Make(kind, 1500, 1500, false);
    QPointer<QGraphicsEffect> effect(Effect());
    if (running) {
        m_animated->PlayForward();
        WaitUntilPartWay(0.2);
    }
    delete m_panel;
    QVERIFY(!effect);

    m_animated->PlayForward();
    m_animated->PlayBackward();
    m_animated->Stop();
    m_animated->PlayForward();
    QTRY_COMPARE_WITH_TIMEOUT(Animation()->state(), QAbstractAnimation::Stopped, kWait);
    QCoreApplication::processEvents();
    QCOMPARE(m_forward->count(), 0);
    QCOMPARE(m_backward->count(), 0);
}

void TestAnimatedEffect::blurRunBlursThePictureAroundTheForeground()
{
    Make(QStringLiteral("blur"), 150, 150, false);
    const QRect inForeground = m_foreground->geometry();
    RunForward();
    QImage picture = Grab();
    // The black and white halves now run into each other over several columns,
    QVERIFY2(LargestStep(picture, 20) < 128, qPrintable(QString::number(LargestStep(picture, 20))));
    // and the red foreground is painted sharp over the blur.
    for (int y = inForeground.top(); y <= inForeground.bottom(); ++y) {
        for (int x = inForeground.left(); x <= inForeground.right(); ++x)
            QCOMPARE(picture.pixelColor(x, y), QColor(Qt::red));
    }

    m_animated->PlayBackward();
    QTRY_COMPARE_WITH_TIMEOUT(m_backward->count(), 1, kWait);
    picture = Grab();
    QCOMPARE(LargestStep(picture, 20), 255);
    QCOMPARE(picture.pixelColor(inForeground.center()), QColor(Qt::red));
}

void TestAnimatedEffect::nullArgumentsAreLoggedAndHarmless_data()
{
    QTest::addColumn<Factory>("make");
    QTest::newRow("opacity without a widget") << Factory([](QWidget* foreground) {
        Q_UNUSED(foreground);
        return new AnimatedOpacityEffect(nullptr, 50, 0.0, 1.0, nullptr, 0, false);
    });
    QTest::newRow("blur without a widget") << Factory([](QWidget* foreground) {
        return new AnimatedBlurEffect(nullptr, 50, 1.0, 10.0, nullptr, 0, false, foreground);
    });
    QTest::newRow("blur without a widget nor a foreground") << Factory(
        [](QWidget*) { return new AnimatedBlurEffect(nullptr, 50, 1.0, 10.0, nullptr, 0, true, nullptr); });
    QTest::newRow("base without an effect") << Factory(
        [](QWidget*) { return new ColorizeEffect(nullptr, 50, 0.0, 1.0, 50, nullptr, false); });
}

void TestAnimatedEffect::nullArgumentsAreLoggedAndHarmless()
{
    QFETCH(Factory, make);
    const LogCapture::Mark mark;
    std::unique_ptr<AnimatedEffect> animated(make(m_foreground));
    const QVector<LoggedLine> lines = mark.Since();
    QVERIFY(!lines.isEmpty());
    for (const LoggedLine& line : lines)
        QVERIFY2(line.level == 4, qPrintable(line.text));

    QSignalSpy forward(animated.get(), &AnimatedEffect::FinishedForward);
    QSignalSpy backward(animated.get(), &AnimatedEffect::FinishedBackward);
    animated->PlayForward();
    animated->PlayBackward();
    animated->Stop();
    animated->PlayBackward();
    QCOMPARE(animated->findChild<QPropertyAnimation*>()->state(), QAbstractAnimation::Stopped);
    QCoreApplication::processEvents();
    QVERIFY(forward.isEmpty());
    QVERIFY(backward.isEmpty());
    // Nothing went onto the widgets that were there.
    QVERIFY(!m_foreground->graphicsEffect());
    QVERIFY(!m_panel->graphicsEffect());
    QCOMPARE(mark.Since().size(), lines.size());
}

QTEST_MAIN(TestAnimatedEffect)
#include "tst_animated_effect.moc"
