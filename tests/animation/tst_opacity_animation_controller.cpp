#include <qt_halvo/animation/opacity_animation_controller.h>

#include "log_capture.h"

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsOpacityEffect>
#include <QtWidgets/QWidget>

#include <algorithm>

using OrvantaQT::OpacityAnimationController;

namespace {

// Bounds the waits for fades to end; no fade in these tests takes more than a few seconds.
constexpr int kWait = 20000;
constexpr double kHidden = 0.1;
constexpr double kShown = 0.8;

// What the overlay looked like at each step: its opacity, whether the fade effect was on,
// and whether it was visible.
struct Frame
{
    double opacity;
    bool effectOn;
    bool visible;
};

QString Describe(const QVector<Frame>& frames)
{
    QStringList parts;
    for (const Frame& f : frames)
        parts << QStringLiteral("%1%2%3").arg(f.opacity).arg(f.effectOn ? QString() : QStringLiteral("(off)"))
                     .arg(f.visible ? QString() : QStringLiteral("(hidden)"));
    return parts.join(QLatin1Char(' '));
}

// Records the opacity its widget had when it was hidden.
class HideWatcher : public QObject
{
public:
    HideWatcher(QWidget* widget, std::function<double()> opacity) : m_opacity(std::move(opacity))
    {
        widget->installEventFilter(this);
    }
    QVector<double> hiddenAt;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Hide)
            hiddenAt.append(m_opacity());
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<double()> m_opacity;
};

} // namespace

class TestOpacityAnimationController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void showAnimatedShowsAtOnceAndFadesIn_data();
    void showAnimatedShowsAtOnceAndFadesIn();
    void hideAnimatedHidesOnlyAfterTheFadeOut_data();
    void hideAnimatedHidesOnlyAfterTheFadeOut();
    void showingDuringTheFadeOutKeepsTheWidget();
    void hidingDuringTheFadeInTurnsItRound();
    void stopAnimationLeavesTheWidgetAsItIs_data();
    void stopAnimationLeavesTheWidgetAsItIs();
    void outlivesItsWidget_data();
    void outlivesItsWidget();
    void missingWidgetIsLoggedAndHarmless();

private:
    OpacityAnimationController* Make(int duration, int backward, bool stopAfterForward);
    QGraphicsOpacityEffect* Effect() const { return m_effect; }
    double Opacity() const { return m_effect->opacity(); }
    bool FadeStopped() const;

    QWidget* m_window = nullptr;
    QPointer<QWidget> m_overlay;
    QPointer<QGraphicsOpacityEffect> m_effect;
    OpacityAnimationController* m_controller = nullptr;
    QVector<Frame> m_frames;
    std::unique_ptr<HideWatcher> m_hides;
};

void TestOpacityAnimationController::init()
{
    m_window = new QWidget;
    m_window->resize(200, 150);
    m_overlay = new QWidget(m_window);
    m_overlay->setGeometry(20, 20, 100, 80);
    m_overlay->setAutoFillBackground(true);
    m_overlay->hide();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void TestOpacityAnimationController::cleanup()
{
    m_hides.reset();
    delete m_window;
    m_window = nullptr;
    m_controller = nullptr;
    m_frames.clear();
}

OpacityAnimationController* TestOpacityAnimationController::Make(int duration, int backward, bool stopAfterForward)
{
    m_controller = new OpacityAnimationController(m_overlay, duration, kHidden, kShown, backward, m_window,
                                                  stopAfterForward);
    m_effect = qobject_cast<QGraphicsOpacityEffect*>(m_overlay->graphicsEffect());
    if (m_effect) {
        connect(m_effect, &QGraphicsOpacityEffect::opacityChanged, this, [this](qreal opacity) {
            m_frames.append({opacity, m_effect->isEnabled(), m_overlay->isVisible()});
        });
    }
    m_hides = std::make_unique<HideWatcher>(m_overlay, [this] { return m_effect ? m_effect->opacity() : -1.0; });
    return m_controller;
}

// The fade's animation is the one the controller's effect owns.
bool TestOpacityAnimationController::FadeStopped() const
{
    const auto animations = m_controller->findChildren<QAbstractAnimation*>();
    return !animations.isEmpty() && std::all_of(animations.begin(), animations.end(), [](QAbstractAnimation* a) {
        return a->state() == QAbstractAnimation::Stopped;
    });
}

void TestOpacityAnimationController::showAnimatedShowsAtOnceAndFadesIn_data()
{
    QTest::addColumn<bool>("stopAfterForward");
    QTest::newRow("holding the shown opacity") << false;
    QTest::newRow("stopping after the fade-in") << true;
}

void TestOpacityAnimationController::showAnimatedShowsAtOnceAndFadesIn()
{
    QFETCH(bool, stopAfterForward);
    Make(600, 0, stopAfterForward);
    QVERIFY(Effect());
    QVERIFY(!Effect()->isEnabled());
    QVERIFY(!m_overlay->isVisible());

    m_controller->ShowAnimated();
    QVERIFY(m_overlay->isVisible());
    QVERIFY(Effect()->isEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(FadeStopped(), kWait);

    QVERIFY(m_overlay->isVisible());
    QCOMPARE(Opacity(), kShown);
    QCOMPARE(Effect()->isEnabled(), !stopAfterForward);
    // Up from the hidden opacity, visible and faded all the way.
    QVERIFY2(m_frames.size() > 2, qPrintable(Describe(m_frames)));
    QVERIFY2(m_frames.first().opacity < (kHidden + kShown) / 2, qPrintable(Describe(m_frames)));
    QVERIFY2(std::is_sorted(m_frames.begin(), m_frames.end(),
                            [](const Frame& a, const Frame& b) { return a.opacity < b.opacity; }),
             qPrintable(Describe(m_frames)));
    QVERIFY2(std::all_of(m_frames.begin(), m_frames.end(), [](const Frame& f) { return f.visible && f.effectOn; }),
             qPrintable(Describe(m_frames)));
    QVERIFY(m_hides->hiddenAt.isEmpty());
}

void TestOpacityAnimationController::hideAnimatedHidesOnlyAfterTheFadeOut_data()
{
    QTest::addColumn<bool>("stopAfterForward");
    QTest::addColumn<bool>("shownAnimated");
    QTest::newRow("after a fade-in, holding") << false << true;
    QTest::newRow("after a fade-in, stopping after it") << true << true;
    QTest::newRow("shown without a fade") << false << false;
}

void TestOpacityAnimationController::hideAnimatedHidesOnlyAfterTheFadeOut()
{
    QFETCH(bool, stopAfterForward);
    QFETCH(bool, shownAnimated);
    // The fade-out has its own duration.
    Make(50, 1000, stopAfterForward);
    if (shownAnimated) {
        m_controller->ShowAnimated();
        QTRY_VERIFY_WITH_TIMEOUT(FadeStopped() && Opacity() == kShown, kWait);
    } else {
        m_overlay->show();
    }
    m_frames.clear();

    m_controller->HideAnimated();
    QVERIFY(m_overlay->isVisible());
    QVERIFY(Effect()->isEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(!m_overlay->isVisible(), kWait);

    // Hidden once, at the hidden opacity, after a fade-out that the widget showed all along.
    QCOMPARE(m_hides->hiddenAt, QVector<double>{kHidden});
    QVERIFY2(m_frames.size() > 2, qPrintable(Describe(m_frames)));
    QVERIFY2(std::is_sorted(m_frames.begin(), m_frames.end(),
                            [](const Frame& a, const Frame& b) { return a.opacity > b.opacity; }),
             qPrintable(Describe(m_frames)));
    QVERIFY2(m_frames.first().opacity > (kHidden + kShown) / 2, qPrintable(Describe(m_frames)));
    QVERIFY2(std::all_of(m_frames.begin(), m_frames.end(), [](const Frame& f) { return f.visible && f.effectOn; }),
             qPrintable(Describe(m_frames)));
    QVERIFY(!Effect()->isEnabled());
    QVERIFY(FadeStopped());

    // And it shows again the same way.
    m_controller->ShowAnimated();
    QVERIFY(m_overlay->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(FadeStopped() && Opacity() == kShown, kWait);
    QVERIFY(m_overlay->isVisible());
}

void TestOpacityAnimationController::showingDuringTheFadeOutKeepsTheWidget()
{
    Make(1500, 0, false);
    m_controller->ShowAnimated();
    QTRY_VERIFY_WITH_TIMEOUT(FadeStopped() && Opacity() == kShown, kWait);

    m_controller->HideAnimated();
    QTRY_VERIFY_WITH_TIMEOUT(Opacity() < kShown - (kShown - kHidden) * 0.3, kWait);
    QVERIFY(!FadeStopped());
    const double turningPoint = Opacity();
    m_frames.clear();
    m_controller->ShowAnimated();
    QTRY_VERIFY_WITH_TIMEOUT(FadeStopped(), kWait);

    QCOMPARE(Opacity(), kShown);
    QVERIFY(m_overlay->isVisible());
    QVERIFY(m_hides->hiddenAt.isEmpty());
    QVERIFY(Effect()->isEnabled());
    // Back up from where the fade-out was.
    QVERIFY2(!m_frames.isEmpty() && m_frames.first().opacity >= turningPoint - 0.01,
             qPrintable(QStringLiteral("turned at %1: %2").arg(turningPoint).arg(Describe(m_frames))));
}

void TestOpacityAnimationController::hidingDuringTheFadeInTurnsItRound()
{
    Make(1500, 0, true);
    m_controller->ShowAnimated();
    QTRY_VERIFY_WITH_TIMEOUT(Opacity() > kHidden + (kShown - kHidden) * 0.3, kWait);
    QVERIFY(!FadeStopped());
    const double turningPoint = Opacity();
    m_frames.clear();
    m_controller->HideAnimated();
    QTRY_VERIFY_WITH_TIMEOUT(!m_overlay->isVisible(), kWait);

    QCOMPARE(m_hides->hiddenAt, QVector<double>{kHidden});
    QVERIFY(!Effect()->isEnabled());
    QVERIFY2(!m_frames.isEmpty() && m_frames.first().opacity <= turningPoint + 0.01,
             qPrintable(QStringLiteral("turned at %1: %2").arg(turningPoint).arg(Describe(m_frames))));
}

void TestOpacityAnimationController::stopAnimationLeavesTheWidgetAsItIs_data()
{
    QTest::addColumn<bool>("fadingOut");
    QTest::newRow("during the fade-in") << false;
    QTest::newRow("during the fade-out") << true;
}

void TestOpacityAnimationController::stopAnimationLeavesTheWidgetAsItIs()
{
    QFETCH(bool, fadingOut);
    Make(1500, 0, false);
    m_controller->ShowAnimated();
    if (fadingOut) {
        QTRY_VERIFY_WITH_TIMEOUT(FadeStopped() && Opacity() == kShown, kWait);
        m_controller->HideAnimated();
    }
    QTRY_VERIFY_WITH_TIMEOUT(Opacity() > kHidden + 0.2 && Opacity() < kShown - 0.2, kWait);
    QVERIFY(!FadeStopped());

    m_controller->StopAnimation();
    QVERIFY(FadeStopped());
    QVERIFY(!Effect()->isEnabled());
    QCoreApplication::processEvents();
    QVERIFY(m_overlay->isVisible());
    QVERIFY(m_hides->hiddenAt.isEmpty());
}

void TestOpacityAnimationController::outlivesItsWidget_data()
{
    QTest::addColumn<bool>("fading");
    QTest::newRow("at rest") << false;
    QTest::newRow("during the fade-out") << true;
}

void TestOpacityAnimationController::outlivesItsWidget()
{
    QFETCH(bool, fading);
    Make(1500, 0, false);
    m_controller->ShowAnimated();
    QTRY_VERIFY_WITH_TIMEOUT(FadeStopped(), kWait);
    if (fading) {
        m_controller->HideAnimated();
        QTRY_VERIFY_WITH_TIMEOUT(Opacity() < kShown - 0.1, kWait);
    }
    m_hides.reset();
    delete m_overlay;
    QVERIFY(!m_effect);

    m_controller->ShowAnimated();
    m_controller->HideAnimated();
    m_controller->StopAnimation();
    m_controller->HideAnimated();
    QTRY_VERIFY_WITH_TIMEOUT(FadeStopped(), kWait);
}

void TestOpacityAnimationController::missingWidgetIsLoggedAndHarmless()
{
    const LogCapture::Mark mark;
    OpacityAnimationController controller(nullptr, 50, 0.0, 1.0, 0, nullptr, false);
    const QVector<LoggedLine> lines = mark.Since();
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().level, 4);

    controller.ShowAnimated();
    controller.HideAnimated();
    controller.StopAnimation();
    QCoreApplication::processEvents();
    QVERIFY(!m_overlay->isVisible());
    QVERIFY(!m_overlay->graphicsEffect());
    QCOMPARE(mark.Since().size(), 1);
}

QTEST_MAIN(TestOpacityAnimationController)
#include "tst_opacity_animation_controller.moc"
