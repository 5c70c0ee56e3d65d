#include <qt_halvo/animation/animated_effect.h>

#include "test_support.h"

using OrvantaQT::AnimatedBlurEffect;
using OrvantaQT::AnimatedEffect;
using OrvantaQT::AnimatedOpacityEffect;
using TestSupport::SignalLog;
using TestSupport::Words;

class TestAnimatedEffect : public QObject
{
    Q_OBJECT

    QPointer<QWidget> m_panel;
    QWidget* m_foreground = nullptr; // red, on the panel
    AnimatedEffect* m_animated = nullptr;
    QPointer<QGraphicsEffect> m_effect;
    QByteArray m_property;
    double m_start = 0;
    double m_end = 0;
    QVector<double> m_values; // every value the effect showed
    std::unique_ptr<SignalLog> m_log; // the finished signals, with "on" and "off" for the effect

    void Make(bool blur, int forward, int backward, bool stopAfterForward)
    {
        std::tie(m_start, m_end, m_property) = blur ? std::make_tuple(1.0, 12.0, QByteArray("blurRadius"))
                                                    : std::make_tuple(0.2, 0.9, QByteArray("opacity"));
        m_animated = blur ? static_cast<AnimatedEffect*>(new AnimatedBlurEffect(
                                m_panel, forward, m_start, m_end, this, backward, stopAfterForward, m_foreground))
                          : new AnimatedOpacityEffect(m_panel, forward, m_start, m_end, this, backward, stopAfterForward);
        m_effect = m_panel->graphicsEffect();
        connect(m_effect, blur ? SIGNAL(blurRadiusChanged(qreal)) : SIGNAL(opacityChanged(qreal)), SLOT(Record()));
        m_log.reset(new SignalLog(m_animated, {"FinishedForward()", "FinishedBackward()"}));
        connect(m_effect, &QGraphicsEffect::enabledChanged, m_log.get(), [this](bool on) { m_log->Note(on ? "on" : "off"); });
        m_values.clear();
    }
    double Value() const { return m_effect->property(m_property).toDouble(); }
    QPropertyAnimation* Animation() const { return m_animated->findChild<QPropertyAnimation*>(); }
    // A value may be off by the rounding of a run's time to whole ms.
    bool Near(double value, double expected) const { return qAbs(value - expected) < (m_end - m_start) * 0.01; }

public Q_SLOTS:
    void Record() { m_values << Value(); }

private Q_SLOTS:
    void init()
    {
        m_panel = new QWidget;
        m_panel->resize(200, 120);
        m_foreground = new QWidget(m_panel);
        m_foreground->setGeometry(30, 70, 40, 30);
        m_foreground->setPalette(QPalette(Qt::red));
        m_foreground->setAutoFillBackground(true);
    }
    void cleanup() { m_log.reset(); delete std::exchange(m_animated, nullptr); delete m_panel; }

    void runsForwardAndBackward_data()
    {
        QTest::addColumn<bool>("blur");
        QTest::addColumn<int>("forward");
        QTest::addColumn<int>("backward");
        QTest::addColumn<bool>("stopAfterForward");
        QTest::newRow("opacity, holding") << false << 300 << 200 << false;
        QTest::newRow("opacity, stopping after forward, backward 0") << false << 300 << 0 << true;
        QTest::newRow("blur, holding, backward -20") << true << 300 << -20 << false;
        QTest::newRow("blur, stopping after forward") << true << 300 << 200 << true;
        QTest::newRow("opacity, 1 ms each way, too short for a step") << false << 1 << 1 << false;
    }
    void runsForwardAndBackward()
    {
        QFETCH(bool, blur);
        QFETCH(int, forward);
        QFETCH(int, backward);
        QFETCH(bool, stopAfterForward);
        Make(blur, forward, backward, stopAfterForward);
        // Off at rest and after every backward run; after a forward one, held on or off as made.
        const char* expected[2][2] = {{"FinishedBackward() off", "on FinishedBackward() off"},
                                      {"on FinishedForward()", "on FinishedForward() off"}};
        for (const bool forwardRun : {true, false}) {
            m_values.clear();
            m_log->Take();
            forwardRun ? m_animated->PlayForward() : m_animated->PlayBackward();
            if (!forwardRun && forward > 1) // a backward duration below 1 means the forward one
                QCOMPARE(Animation()->duration(), backward > 0 ? backward : forward);
            QTRY_COMPARE(m_log->lines, Words(expected[forwardRun][stopAfterForward]));
            QCOMPARE(Value(), forwardRun ? m_end : m_start);
            QVERIFY(TestSupport::IsMonotonic(m_values, forwardRun) && (forward == 1 || m_values.size() > 2));
            if (blur && forwardRun && !stopAfterForward) // the foreground is kept sharp
                QCOMPARE(m_panel->grab().toImage().pixelColor(50, 85), QColor(Qt::red));
        }
    }

    // progress: how far from the start value towards the end value; -1 for before the first step.
    void playDuringARunTurnsItRoundAndStopHaltsIt_data()
    {
        QTest::addColumn<int>("forward");
        QTest::addColumn<int>("backward");
        QTest::addColumn<bool>("forwardRun");
        QTest::addColumn<double>("progress");
        QTest::addColumn<bool>("stop");
        QTest::newRow("forward turned back, quicker way back") << 800 << 400 << true << 0.5 << false;
        QTest::newRow("backward turned forward, quicker way forward") << 400 << 800 << false << 0.5 << false;
        // Turned at the end it set out from, it must not finish there and start over.
        QTest::newRow("forward turned back at once") << 800 << 400 << true << -1.0 << false;
        QTest::newRow("backward turned forward at once") << 400 << 800 << false << -1.0 << false;
        QTest::newRow("forward stopped") << 150 << 150 << true << 0.5 << true;
        QTest::newRow("backward stopped") << 150 << 150 << false << 0.5 << true;
    }
    void playDuringARunTurnsItRoundAndStopHaltsIt()
    {
        QFETCH(int, forward);
        QFETCH(int, backward);
        QFETCH(bool, forwardRun);
        QFETCH(double, progress);
        QFETCH(bool, stop);
        Make(false, forward, backward, false);
        forwardRun ? m_animated->PlayForward() : m_animated->PlayBackward();
        if (progress >= 0) // as the run's clock would put it; there is no easing
            Animation()->setCurrentTime(qRound((forwardRun ? progress : 1 - progress) * Animation()->duration()));
        const double turningPoint = Value();
        QVERIFY(Near(turningPoint, progress >= 0 ? m_start + progress * (m_end - m_start) : forwardRun ? m_start : m_end));
        m_values.clear();
        m_log->Take();
        if (stop) {
            // Where it is, switched off, without a word; a new run starts over.
            m_animated->Stop();
            QCoreApplication::processEvents();
            QCOMPARE(m_log->Take(), Words("off"));
            QCOMPARE(Value(), turningPoint);
            m_animated->PlayForward();
            QCOMPARE(Value(), m_start);
            return;
        }
        forwardRun ? m_animated->PlayBackward() : m_animated->PlayForward();
        QTRY_COMPARE(m_log->lines, Words(forwardRun ? "FinishedBackward() off" : "FinishedForward()"));
        QCOMPARE(Value(), forwardRun ? m_start : m_end);
        // On from where it turned, one way, without a visit to the other end.
        QVERIFY(TestSupport::IsMonotonic(m_values, !forwardRun));
        QVERIFY(Near(m_values.first(), turningPoint) || (m_values.first() < turningPoint) == forwardRun);
    }

    void runStartedOnFinishedGoesOn()
    {
        // Left alone, the effect would be switched off after the forward run.
        Make(false, 100, 100, true);
        connect(m_animated, &AnimatedEffect::FinishedForward, m_animated, &AnimatedEffect::PlayBackward);
        m_animated->PlayForward();
        QTRY_COMPARE(m_log->lines, Words("on FinishedForward() FinishedBackward() off"));
        QCOMPARE(Value(), m_start);
    }

    void withoutItsWidgetNothingRuns()
    {
        const LogCapture::Mark mark;
        std::unique_ptr<AnimatedEffect> none(new AnimatedOpacityEffect(nullptr, 50, 0.0, 1.0, nullptr, 0, false));
        QCOMPARE(mark.Since().first().level, 4); // an error
        const int logged = mark.Since().size();
        // Deleted during a run, the widget takes the effect along, and the run ends quietly.
        Make(true, 300, 300, false);
        m_animated->PlayForward();
        delete m_panel;
        for (AnimatedEffect* animated : {m_animated, none.get()}) {
            animated->PlayForward();
            animated->PlayBackward();
            animated->Stop();
        }
        QCoreApplication::processEvents();
        QCOMPARE(m_log->lines, Words("on"));
        QCOMPARE(mark.Since().size(), logged);
    }
};

QTEST_MAIN(TestAnimatedEffect)
#include "tst_animated_effect.moc"
