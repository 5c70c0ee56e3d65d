#include <qt_halvo/animation/animated_effect.h>

#include "log_capture.h"

#include <qt_halvo_logging.h>

#include <QtCore/QPropertyAnimation>
#include <QtGui/QPainter>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsColorizeEffect>
#include <QtWidgets/QGraphicsOpacityEffect>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <functional>
#include <memory>
#include <tuple>

using OrvantaQT::AnimatedBlurEffect;
using OrvantaQT::AnimatedEffect;
using OrvantaQT::AnimatedOpacityEffect;

namespace {

// Bounds the waits for runs to end; none takes more than a second.
constexpr int kWait = 20000;

// Black on the left half, white on the right: a sharp vertical edge in the middle.
struct Halves : QWidget
{
    using QWidget::QWidget;
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(QRect(0, 0, width() / 2, height()), Qt::black);
        painter.fillRect(QRect(width() / 2, 0, width() - width() / 2, height()), Qt::white);
    }
};

// AnimatedEffect over any effect: the base alone, as a host's own kind would use it.
struct ColorizeEffect : AnimatedEffect
{
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

// The largest difference between neighbouring columns of the row: 255 at the sharp edge,
// far less along a blurred one.
int LargestStep(const QImage& image, int y)
{
    int largest = 0;
    for (int x = 1; x < image.width(); ++x)
        largest = qMax(largest, qAbs(qGray(image.pixel(x, y)) - qGray(image.pixel(x - 1, y))));
    return largest;
}

} // namespace

class TestAnimatedEffect : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void Record() { m_trace.append({Value(), m_effect->isEnabled()}); }

private Q_SLOTS:
    void init();
    void cleanup();

    void runsForwardAndBackward_data();
    void runsForwardAndBackward();
    void playDuringARunTurnsItRoundAndStopHaltsIt_data();
    void playDuringARunTurnsItRoundAndStopHaltsIt();
    void playFromAFinishedHandlerStartsANewRun();
    void outlivesItsWidget();
    void nullArgumentsAreLoggedAndHarmless();

private:
    void Make(const QString& kind, int duration, int backward, bool stopAfterForward);
    double Value() const { return m_effect->property(m_property).toDouble(); }
    QPropertyAnimation* Animation() const { return m_animated->findChild<QPropertyAnimation*>(); }
    // Puts the running animation at this fraction of the way from the start value to the
    // end value, as its clock would; the effects animate without easing.
    void SetProgress(double progress) { Animation()->setCurrentTime(qRound(progress * Animation()->duration())); }
    // A value may be off by the rounding of a run's time to whole ms.
    double Tolerance() const { return (m_end - m_start) * 0.01; }
    QString TraceProblem(bool rising) const;
    QString PictureProblem(bool blurred) const;

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
    m_foreground = new QWidget(m_panel);
    m_foreground->setGeometry(30, 70, 40, 30);
    m_foreground->setPalette(QPalette(Qt::red));
    m_foreground->setAutoFillBackground(true);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void TestAnimatedEffect::cleanup()
{
    m_forward.reset();
    m_backward.reset();
    delete m_window;
    m_trace.clear();
}

// "opacity" and "blur" are the library's two kinds on the panel; "colorize" is the base
// on an effect that is on no widget.
void TestAnimatedEffect::Make(const QString& kind, int duration, int backward, bool stopAfterForward)
{
    if (kind == QLatin1String("opacity")) {
        std::tie(m_start, m_end, m_property) = std::make_tuple(0.2, 0.9, QByteArray("opacity"));
        m_animated = new AnimatedOpacityEffect(m_panel, duration, m_start, m_end, m_window, backward, stopAfterForward);
    } else if (kind == QLatin1String("blur")) {
        std::tie(m_start, m_end, m_property) = std::make_tuple(1.0, 12.0, QByteArray("blurRadius"));
        m_animated = new AnimatedBlurEffect(m_panel, duration, m_start, m_end, m_window, backward, stopAfterForward,
                                            m_foreground);
    } else {
        std::tie(m_start, m_end, m_property) = std::make_tuple(0.1, 0.8, QByteArray("strength"));
        m_animated = new ColorizeEffect(new QGraphicsColorizeEffect(m_window), duration, m_start, m_end, backward,
                                        m_window, stopAfterForward);
    }
    m_effect = m_panel->graphicsEffect() ? m_panel->graphicsEffect() : m_window->findChild<QGraphicsEffect*>();
    // What the effect shows: each value it tells of through its property's signal.
    const QMetaObject* meta = m_effect->metaObject();
    connect(m_effect, meta->property(meta->indexOfProperty(m_property)).notifySignal(), this,
            metaObject()->method(metaObject()->indexOfSlot("Record()")));
    m_forward = std::make_unique<QSignalSpy>(m_animated, &AnimatedEffect::FinishedForward);
    m_backward = std::make_unique<QSignalSpy>(m_animated, &AnimatedEffect::FinishedBackward);
}

// Empty when the trace went one way only, through some value between the start and end
// values, with the effect on all along; else the trace.
QString TestAnimatedEffect::TraceProblem(bool rising) const
{
    const auto inOrder = [rising](const Sample& a, const Sample& b) {
        return rising ? a.value < b.value : a.value > b.value;
    };
    const auto between = [this](const Sample& s) { return s.value > m_start && s.value < m_end; };
    const auto off = [](const Sample& s) { return !s.effectOn; };
    if (std::is_sorted(m_trace.begin(), m_trace.end(), inOrder) && std::any_of(m_trace.begin(), m_trace.end(), between)
        && std::none_of(m_trace.begin(), m_trace.end(), off))
        return QString();
    QStringList parts;
    for (const Sample& s : m_trace)
        parts << QStringLiteral("%1%2").arg(s.value).arg(s.effectOn ? QString() : QStringLiteral("(off)"));
    return parts.join(QLatin1Char(' '));
}

// Empty when the window shows the panel blurred (or sharp) and the red foreground sharp.
QString TestAnimatedEffect::PictureProblem(bool blurred) const
{
    const QImage picture = m_window->grab().toImage();
    const int step = LargestStep(picture, 20);
    if (blurred ? step >= 128 : step != 255)
        return QStringLiteral("largest step across the edge: %1").arg(step);
    const QColor foreground = picture.pixelColor(m_foreground->geometry().center());
    return foreground == QColor(Qt::red) ? QString() : QStringLiteral("foreground: ") + foreground.name();
}

void TestAnimatedEffect::runsForwardAndBackward_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("forward");
    QTest::addColumn<int>("backward");
    QTest::addColumn<int>("expectedBackward");
    QTest::addColumn<bool>("stopAfterForward");
    QTest::addColumn<bool>("forwardFirst");
    // A backward duration below 1 means the forward one.
    const QString opacity = QStringLiteral("opacity");
    QTest::newRow("opacity, holding") << opacity << 150 << 100 << 100 << false << true;
    QTest::newRow("opacity, stopping after forward, backward 0") << opacity << 150 << 0 << 150 << true << true;
    QTest::newRow("opacity, backward from rest") << opacity << 150 << 100 << 100 << false << false;
    QTest::newRow("blur, holding, negative backward") << QStringLiteral("blur") << 150 << -20 << 150 << false << true;
    QTest::newRow("blur, stopping after forward") << QStringLiteral("blur") << 150 << 100 << 100 << true << true;
    QTest::newRow("colorize, holding") << QStringLiteral("colorize") << 150 << 100 << 100 << false << true;
    // Too short for any step between the ends.
    QTest::newRow("opacity, 1 ms each way") << opacity << 1 << 1 << -1 << false << true;
}

void TestAnimatedEffect::runsForwardAndBackward()
{
    QFETCH(QString, kind);
    QFETCH(int, forward);
    QFETCH(int, backward);
    QFETCH(int, expectedBackward);
    QFETCH(bool, stopAfterForward);
    QFETCH(bool, forwardFirst);
    Make(kind, forward, backward, stopAfterForward);
    const bool steps = forward > 1;
    const bool blur = kind == QLatin1String("blur");
    QVERIFY(!m_effect->isEnabled());
    if (kind != QLatin1String("colorize"))
        QCOMPARE(PictureProblem(false), QString());

    if (forwardFirst) {
        m_animated->PlayForward();
        QVERIFY(m_effect->isEnabled());
        QCOMPARE(Value(), m_start);
        QCOMPARE(Animation()->duration(), forward);
        QTRY_COMPARE_WITH_TIMEOUT(m_forward->count(), 1, kWait);
        QCOMPARE(m_backward->count(), 0);
        QCOMPARE(Value(), m_end);
        QCOMPARE(m_effect->isEnabled(), !stopAfterForward);
        if (steps)
            QCOMPARE(TraceProblem(true), QString());
        if (blur)
            QCOMPARE(PictureProblem(!stopAfterForward), QString());
        if (!stopAfterForward) {
            // Stop() switches off the effect that holds the end value.
            m_animated->Stop();
            QVERIFY(!m_effect->isEnabled());
            QCOMPARE(Value(), m_end);
        }
        m_trace.clear();
    }

    // From the end value down to the start value, with the effect on all the way.
    m_animated->PlayBackward();
    QVERIFY(m_effect->isEnabled());
    QCOMPARE(Value(), m_end);
    if (steps)
        QCOMPARE(Animation()->duration(), expectedBackward);
    QTRY_COMPARE_WITH_TIMEOUT(m_backward->count(), 1, kWait);
    QCOMPARE(m_forward->count(), forwardFirst ? 1 : 0);
    QCOMPARE(Value(), m_start);
    QVERIFY(!m_effect->isEnabled());
    if (steps)
        QCOMPARE(TraceProblem(false), QString());
    if (blur)
        QCOMPARE(PictureProblem(false), QString());
}

void TestAnimatedEffect::playDuringARunTurnsItRoundAndStopHaltsIt_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("forward");
    QTest::addColumn<int>("backward");
    QTest::addColumn<bool>("forwardRun");
    QTest::addColumn<bool>("stop");
    const QString opacity = QStringLiteral("opacity");
    QTest::newRow("opacity, forward turned back, quicker way back") << opacity << 800 << 400 << true << false;
    QTest::newRow("opacity, forward turned back, slower way back") << opacity << 400 << 800 << true << false;
    QTest::newRow("blur, backward turned forward, same durations") << QStringLiteral("blur") << 400 << 400 << false
                                                                   << false;
    QTest::newRow("colorize, backward turned forward, quicker way forward") << QStringLiteral("colorize") << 400 << 800
                                                                            << false << false;
    // Stopping is the same for every kind of effect.
    QTest::newRow("opacity, forward stopped") << opacity << 150 << 150 << true << true;
    QTest::newRow("opacity, backward stopped") << opacity << 150 << 150 << false << true;
}

void TestAnimatedEffect::playDuringARunTurnsItRoundAndStopHaltsIt()
{
    QFETCH(QString, kind);
    QFETCH(int, forward);
    QFETCH(int, backward);
    QFETCH(bool, forwardRun);
    QFETCH(bool, stop);
    Make(kind, forward, backward, false);
    forwardRun ? m_animated->PlayForward() : m_animated->PlayBackward();
    SetProgress(0.5);
    const double turningPoint = Value();
    QVERIFY(qAbs(turningPoint - (m_start + m_end) / 2) < Tolerance());
    m_trace.clear();

    if (stop) {
        m_animated->Stop();
        QVERIFY(!m_effect->isEnabled());
        QCOMPARE(Animation()->state(), QAbstractAnimation::Stopped);
        QCoreApplication::processEvents();
        QCOMPARE(Value(), turningPoint);
        QCOMPARE(m_forward->count() + m_backward->count(), 0);
        // A new run starts over from the start value, not from where the last one stopped.
        m_animated->PlayForward();
        QTRY_COMPARE_WITH_TIMEOUT(m_forward->count(), 1, kWait);
        QCOMPARE(m_trace.first().value, m_start);
        QCOMPARE(TraceProblem(true), QString());
        return;
    }
    forwardRun ? m_animated->PlayBackward() : m_animated->PlayForward();
    // Where it was, and still going.
    QVERIFY2(qAbs(Value() - turningPoint) < Tolerance(), qPrintable(QString::number(Value())));
    QCOMPARE(Animation()->state(), QAbstractAnimation::Running);
    QCOMPARE(Animation()->duration(), forwardRun ? backward : forward);
    QTRY_COMPARE_WITH_TIMEOUT(m_forward->count() + m_backward->count(), 1, kWait);
    QCOMPARE(m_forward->count(), forwardRun ? 0 : 1);
    QCOMPARE(Value(), forwardRun ? m_start : m_end);
    QCOMPARE(m_effect->isEnabled(), !forwardRun);
    // On from there, without first going to the other end.
    QVERIFY2(forwardRun ? m_trace.first().value < turningPoint + Tolerance()
                        : m_trace.first().value > turningPoint - Tolerance(),
             qPrintable(QStringLiteral("turned at %1, went on from %2").arg(turningPoint).arg(m_trace.first().value)));
    QCOMPARE(TraceProblem(!forwardRun), QString());
}

void TestAnimatedEffect::playFromAFinishedHandlerStartsANewRun()
{
    // Left alone, the effect would be switched off after the forward run.
    Make(QStringLiteral("opacity"), 100, 100, true);
    connect(m_animated, &AnimatedEffect::FinishedForward, m_animated, &AnimatedEffect::PlayBackward);
    m_animated->PlayForward();
    QTRY_COMPARE_WITH_TIMEOUT(m_backward->count(), 1, kWait);
    QCOMPARE(m_forward->count(), 1);
    QCOMPARE(Value(), m_start);
    QVERIFY(!m_effect->isEnabled());
    QVERIFY(std::all_of(m_trace.begin(), m_trace.end(), [](const Sample& s) { return s.effectOn; }));
}

// Deleted during a run, the widget takes the effect along; the run ends without a word.
void TestAnimatedEffect::outlivesItsWidget()
{
    Make(QStringLiteral("blur"), 300, 300, false);
    m_animated->PlayForward();
    delete m_panel;
    QVERIFY(!m_effect);

    m_animated->PlayForward();
    m_animated->PlayBackward();
    m_animated->Stop();
    m_animated->PlayForward();
    QTRY_COMPARE_WITH_TIMEOUT(Animation()->state(), QAbstractAnimation::Stopped, kWait);
    QCoreApplication::processEvents();
    QCOMPARE(m_forward->count() + m_backward->count(), 0);
}

void TestAnimatedEffect::nullArgumentsAreLoggedAndHarmless()
{
    const std::function<AnimatedEffect*()> makers[] = {
        [] { return new AnimatedOpacityEffect(nullptr, 50, 0.0, 1.0, nullptr, 0, false); },
        [this] { return new AnimatedBlurEffect(nullptr, 50, 1.0, 10.0, nullptr, 0, false, m_foreground); },
        [] { return new ColorizeEffect(nullptr, 50, 0.0, 1.0, 50, nullptr, false); },
    };
    for (const auto& make : makers) {
        const LogCapture::Mark mark;
        std::unique_ptr<AnimatedEffect> animated(make());
        const QVector<LoggedLine> lines = mark.Since();
        QVERIFY(!lines.isEmpty());
        for (const LoggedLine& line : lines)
            QVERIFY2(line.level == Logging_LevelError, qPrintable(line.text));

        QSignalSpy forward(animated.get(), &AnimatedEffect::FinishedForward);
        QSignalSpy backward(animated.get(), &AnimatedEffect::FinishedBackward);
        animated->PlayForward();
        animated->PlayBackward();
        animated->Stop();
        animated->PlayBackward();
        QCOMPARE(animated->findChild<QPropertyAnimation*>()->state(), QAbstractAnimation::Stopped);
        QCoreApplication::processEvents();
        QVERIFY(forward.isEmpty() && backward.isEmpty());
        // Nothing went onto the widgets that were there, and playing logs nothing more.
        QVERIFY(!m_foreground->graphicsEffect() && !m_panel->graphicsEffect());
        QCOMPARE(mark.Since().size(), lines.size());
    }
}

QTEST_MAIN(TestAnimatedEffect)
#include "tst_animated_effect.moc"
