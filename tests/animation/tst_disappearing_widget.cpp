#include <qt_halvo/animation/disappearing_widget.h>
#include <qt_halvo/animation/disappearing_widget_p.h>

#include "log_capture.h"

#include <qt_halvo_logging.h>

#include <QtCore/QPointer>
#include <QtCore/QPropertyAnimation>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsBlurEffect>
#include <QtWidgets/QGraphicsOpacityEffect>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <memory>

using OrvantaQT::DisappearingWidget;
using OrvantaQT::LiveDisappearingWidgets;
using Widgets = QVector<DisappearingWidget*>;

namespace {

// Bounds the waits for fades to end; none takes more than half a second.
const int kWait = 20000;

QGraphicsOpacityEffect* EffectOf(DisappearingWidget* widget)
{
    return qobject_cast<QGraphicsOpacityEffect*>(widget->graphicsEffect());
}

QPropertyAnimation* FadeOf(DisappearingWidget* widget)
{
    return widget->findChild<QPropertyAnimation*>(QString(), Qt::FindDirectChildrenOnly);
}

// Calls a slot by its name: "appear()" or "setAppeared(true)".
bool Ask(DisappearingWidget* widget, const QByteArray& call)
{
    const QByteArray slot = call.left(call.indexOf('('));
    if (call.endsWith("()"))
        return QMetaObject::invokeMethod(widget, slot.constData());
    return QMetaObject::invokeMethod(widget, slot.constData(), Q_ARG(bool, call.endsWith("(true)")));
}

// The widget's notifications by name, and the opacities its effect is given, in the
// order they come, while the log lives.
class Log : public QObject
{
public:
    explicit Log(DisappearingWidget* widget)
    {
        const auto note = [this](const char* name) {
            return [this, name](bool on) { lines << QString(name).arg(on); };
        };
        connect(widget, QOverload<>::of(&DisappearingWidget::Appeared), this, [this] { lines << "Appeared()"; });
        connect(widget, QOverload<bool>::of(&DisappearingWidget::Appeared), this, note("Appeared(%1)"));
        connect(widget, QOverload<>::of(&DisappearingWidget::Disappeared), this, [this] { lines << "Disappeared()"; });
        connect(widget, QOverload<bool>::of(&DisappearingWidget::Disappeared), this, note("Disappeared(%1)"));
        connect(EffectOf(widget), &QGraphicsOpacityEffect::opacityChanged, this, [this](qreal o) { opacities << o; });
    }
    void Clear() { lines.clear(), opacities.clear(); }

    QStringList lines;
    QVector<qreal> opacities;
};

const QStringList kEnteredVisible{"Appeared()", "Appeared(1)"};
const QStringList kEnteredInvisible{"Disappeared()", "Disappeared(1)"};
const QStringList kToVisible = QStringList{"Disappeared(0)"} + kEnteredVisible;
const QStringList kToInvisible = QStringList{"Appeared(0)"} + kEnteredInvisible;

// Empty when the opacities went one way only, through some step between 0 and 1; else them.
QString FadeProblem(const QVector<qreal>& opacities, bool rising)
{
    const bool oneWay = rising ? std::is_sorted(opacities.begin(), opacities.end())
                               : std::is_sorted(opacities.rbegin(), opacities.rend());
    const bool between = std::any_of(opacities.begin(), opacities.end(), [](qreal o) { return o > 0.001 && o < 0.999; });
    if (oneWay && between)
        return QString();
    QStringList values;
    for (qreal opacity : opacities)
        values << QString::number(opacity);
    return values.join(QLatin1Char(' '));
}

// A widget with fixed hints, for the layout tests.
struct Block : QWidget
{
    Block(QSize hint, QSize minimum) : hint(hint), minimum(minimum) {}
    QSize sizeHint() const override { return hint; }
    QSize minimumSizeHint() const override { return minimum; }
    QSize hint, minimum;
};

// Lets the machine start: it does on the next pass of the event loop.
void LetTheMachineStart() { QCoreApplication::processEvents(); }

} // namespace

class TestDisappearingWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void requestsBeforeTheLoopRunsTakeEffectAtOnce_data();
    void requestsBeforeTheLoopRunsTakeEffectAtOnce();
    void changesFadeAndSignalInOrder_data();
    void changesFadeAndSignalInOrder();
    void propertiesAreCheckedAndUsed_data();
    void propertiesAreCheckedAndUsed();
    void listHoldsTheLiveWidgetsAndUpdateReachesThem();
    void replacedEffectIsReported();
    void sizeHintsFollowTheLayout();

private:
    DisappearingWidget* Make(int duration);

    QWidget* m_window = nullptr;
};

void TestDisappearingWidget::init()
{
    m_window = new QWidget;
    m_window->resize(200, 150);
}

void TestDisappearingWidget::cleanup()
{
    delete m_window;
    QCOMPARE(LiveDisappearingWidgets(), Widgets());
}

DisappearingWidget* TestDisappearingWidget::Make(int duration)
{
    auto* widget = new DisappearingWidget(m_window);
    widget->setDuration(duration);
    widget->setEasing(QEasingCurve::Linear);
    return widget;
}

void TestDisappearingWidget::requestsBeforeTheLoopRunsTakeEffectAtOnce_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<bool>("visible");
    QTest::newRow("nothing asked") << QByteArray() << false;
    QTest::newRow("setInitialyVisible(true)") << QByteArray("setInitialyVisible(true)") << true;
    QTest::newRow("appear()") << QByteArray("appear()") << true;
    QTest::newRow("setAppeared(false)") << QByteArray("setAppeared(false)") << false;
}

void TestDisappearingWidget::requestsBeforeTheLoopRunsTakeEffectAtOnce()
{
    QFETCH(QByteArray, call);
    QFETCH(bool, visible);
    // Long, so that a fade started by mistake would still be running when looked at.
    DisappearingWidget* widget = Make(1000);
    // Levels of their own, so that the effect's initial opacity cannot pass for either.
    widget->setVisibleOpacity(60);
    widget->setInvisibleOpacity(10);
    const qreal wanted = visible ? 0.6 : 0.1;
    Log log(widget);
    if (!call.isEmpty()) {
        QVERIFY(Ask(widget, call));
        QCOMPARE(EffectOf(widget)->opacity(), wanted);
    }
    QCOMPARE(widget->initialyVisible(), call == "setInitialyVisible(true)");

    LetTheMachineStart();
    QTRY_COMPARE(log.lines, visible ? kEnteredVisible : kEnteredInvisible);
    QCoreApplication::processEvents();
    QCOMPARE(log.lines, visible ? kEnteredVisible : kEnteredInvisible);
    QCOMPARE(FadeOf(widget)->state(), QAbstractAnimation::Stopped);
    QCOMPARE(EffectOf(widget)->opacity(), wanted);
    QVERIFY2(std::all_of(log.opacities.begin(), log.opacities.end(), [=](qreal o) { return qFuzzyCompare(o, wanted); }),
             "the change was animated");
}

void TestDisappearingWidget::changesFadeAndSignalInOrder_data()
{
    QTest::addColumn<QByteArray>("show");
    QTest::addColumn<QByteArray>("hide");
    QTest::newRow("appear() and disappear()") << QByteArray("appear()") << QByteArray("disappear()");
    QTest::newRow("setAppeared") << QByteArray("setAppeared(true)") << QByteArray("setAppeared(false)");
    QTest::newRow("setDisappeared") << QByteArray("setDisappeared(false)") << QByteArray("setDisappeared(true)");
    QTest::newRow("setInitialyVisible") << QByteArray("setInitialyVisible(true)")
                                        << QByteArray("setInitialyVisible(false)");
}

void TestDisappearingWidget::changesFadeAndSignalInOrder()
{
    QFETCH(QByteArray, show);
    QFETCH(QByteArray, hide);
    DisappearingWidget* widget = Make(150);
    Log log(widget);
    QSignalSpy debug(widget, &DisappearingWidget::DebugOutput);
    const auto ask = [&](bool visible) {
        log.Clear();
        debug.clear();
        return Ask(widget, visible ? show : hide);
    };
    const auto opacity = [widget] { return EffectOf(widget)->opacity(); };
    LetTheMachineStart();
    QTRY_COMPARE(log.lines, kEnteredInvisible);
    QCOMPARE(debug.count(), 1);
    // At rest, asking for the state it is in does nothing.
    QVERIFY(ask(false));
    QCoreApplication::processEvents();
    QVERIFY(log.lines.isEmpty() && log.opacities.isEmpty() && debug.isEmpty());

    // The state is entered when its fade starts. Asked for again half way (as the fade's
    // clock would put it), the fade goes on.
    QVERIFY(ask(true));
    QCOMPARE(log.lines, kToVisible);
    QCOMPARE(debug.count(), 1);
    QVERIFY(!debug.first().first().toString().isEmpty());
    FadeOf(widget)->setCurrentTime(75);
    QVERIFY(Ask(widget, show));
    QCOMPARE(FadeOf(widget)->currentTime(), 75);
    QTRY_COMPARE_WITH_TIMEOUT(opacity(), 1.0, kWait);
    QCOMPARE(FadeProblem(log.opacities, true), QString());
    QCOMPARE(log.lines, kToVisible);

    // Turned round half way, it goes back from where it was.
    QVERIFY(ask(false));
    QCOMPARE(log.lines, kToInvisible);
    QCOMPARE(debug.count(), 1);
    FadeOf(widget)->setCurrentTime(75);
    const qreal turningPoint = opacity();
    QVERIFY(qAbs(turningPoint - 0.5) < 0.01);
    QVERIFY(ask(true));
    QCOMPARE(log.lines, kToVisible);
    QCOMPARE(opacity(), turningPoint);
    QTRY_COMPARE_WITH_TIMEOUT(opacity(), 1.0, kWait);
    QCOMPARE(FadeProblem(log.opacities, true), QString());

    QVERIFY(ask(false));
    QTRY_COMPARE_WITH_TIMEOUT(opacity(), 0.0, kWait);
    QCOMPARE(FadeProblem(log.opacities, false), QString());
    QCOMPARE(log.lines, kToInvisible);
}

void TestDisappearingWidget::propertiesAreCheckedAndUsed_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("stored");
    QTest::addColumn<bool>("reported");
    // Opacities in percent, clamped to 0..100.
    QTest::newRow("visible 101") << QByteArray("visibleOpacity") << 101 << 100 << true;
    QTest::newRow("visible 0") << QByteArray("visibleOpacity") << 0 << 0 << false;
    QTest::newRow("visible -1") << QByteArray("visibleOpacity") << -1 << 0 << true;
    QTest::newRow("invisible 25") << QByteArray("invisibleOpacity") << 25 << 25 << false;
    QTest::newRow("invisible 100") << QByteArray("invisibleOpacity") << 100 << 100 << false;
    QTest::newRow("invisible 300") << QByteArray("invisibleOpacity") << 300 << 100 << true;
    // A bad duration or easing leaves the one before (40 ms, linear).
    QTest::newRow("duration 0") << QByteArray("duration") << 0 << 0 << false;
    QTest::newRow("duration -1") << QByteArray("duration") << -1 << 40 << true;
    const int linear = QEasingCurve::Linear;
    QTest::newRow("easing OutCubic") << QByteArray("easing") << int(QEasingCurve::OutCubic) << int(QEasingCurve::OutCubic)
                                     << false;
    QTest::newRow("easing Custom") << QByteArray("easing") << int(QEasingCurve::Custom) << linear << true;
    // Still inside the range of values the enumeration can hold.
    QTest::newRow("easing out of range") << QByteArray("easing") << int(QEasingCurve::NCurveTypes) + 3 << linear << true;
}

void TestDisappearingWidget::propertiesAreCheckedAndUsed()
{
    QFETCH(QByteArray, property);
    QFETCH(int, value);
    QFETCH(int, stored);
    QFETCH(bool, reported);
    DisappearingWidget* widget = Make(40);
    const LogCapture::Mark mark;
    QVERIFY(widget->setProperty(property.constData(), value));
    QCOMPARE(mark.Since().size(), reported ? 1 : 0);
    if (reported)
        QCOMPARE(mark.Since().first().level, Logging_LevelError);
    QCOMPARE(widget->property(property.constData()).toInt(), stored);

    // Each state shows its level.
    const qreal visible = property == "visibleOpacity" ? stored * 0.01 : 1.0;
    const qreal invisible = property == "invisibleOpacity" ? stored * 0.01 : 0.0;
    LetTheMachineStart();
    QTRY_COMPARE(EffectOf(widget)->opacity(), invisible);
    widget->appear();
    QTRY_COMPARE_WITH_TIMEOUT(EffectOf(widget)->opacity(), visible, kWait);
    widget->disappear();
    QTRY_COMPARE_WITH_TIMEOUT(EffectOf(widget)->opacity(), invisible, kWait);
}

void TestDisappearingWidget::listHoldsTheLiveWidgetsAndUpdateReachesThem()
{
    QCOMPARE(LiveDisappearingWidgets(), Widgets());
    auto* first = new DisappearingWidget(m_window);
    auto* hidden = new DisappearingWidget(m_window);
    hidden->hide();
    auto deleted = std::make_unique<DisappearingWidget>();
    std::unique_ptr<DisappearingWidget> topLevel(new DisappearingWidget);
    // Inside a plain container: Qt cannot paint one graphics effect inside another.
    auto* holder = new QWidget(m_window);
    auto* nested = new DisappearingWidget(holder);
    QCOMPARE(LiveDisappearingWidgets(), Widgets({first, hidden, deleted.get(), topLevel.get(), nested}));
    // Deleted among the others, during a fade.
    LetTheMachineStart();
    deleted->appear();
    deleted.reset();
    QCOMPARE(LiveDisappearingWidgets(), Widgets({first, hidden, topLevel.get(), nested}));

    const Widgets widgets = LiveDisappearingWidgets();
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (DisappearingWidget* widget : widgets)
        spies.push_back(std::make_unique<QSignalSpy>(EffectOf(widget), &QGraphicsEffect::enabledChanged));
    // Switching the effect off and on is what renders a widget anew. Clears the spy.
    const auto rerendered = [&spies](int i) {
        const bool offAndOn = spies[i]->count() == 2 && !spies[i]->at(0).at(0).toBool() && spies[i]->at(1).at(0).toBool();
        spies[i]->clear();
        return offAndOn;
    };
    // Update() renders its own widget only; UpdateAllVisibleWidgets() every one alive.
    hidden->Update();
    QVERIFY(!rerendered(0) && rerendered(1) && !rerendered(2) && !rerendered(3));
    DisappearingWidget::UpdateAllVisibleWidgets();
    QVERIFY(rerendered(0) && rerendered(1) && rerendered(2) && rerendered(3));

    // A widget deleted while the others are updated is skipped.
    connect(EffectOf(first), &QGraphicsEffect::enabledChanged, first, [&hidden](bool enabled) {
        if (!enabled && hidden) {
            delete hidden;
            hidden = nullptr;
        }
    });
    DisappearingWidget::UpdateAllVisibleWidgets();
    QVERIFY(rerendered(0) && rerendered(2) && rerendered(3));
    QCOMPARE(LiveDisappearingWidgets(), Widgets({first, topLevel.get(), nested}));
    delete holder;
    QCOMPARE(LiveDisappearingWidgets(), Widgets({first, topLevel.get()}));
    auto* last = new DisappearingWidget(m_window);
    QCOMPARE(LiveDisappearingWidgets(), Widgets({first, topLevel.get(), last}));
}

void TestDisappearingWidget::replacedEffectIsReported()
{
    DisappearingWidget* widget = Make(30);
    auto* other = new DisappearingWidget(m_window);
    LetTheMachineStart();
    Log log(widget);
    auto* blur = new QGraphicsBlurEffect;
    widget->setGraphicsEffect(blur);
    QSignalSpy otherEffect(EffectOf(other), &QGraphicsEffect::enabledChanged);

    // Each call logs one error and does nothing.
    for (const char* call : {"appear()", "disappear()", "setAppeared(true)", "setDisappeared(false)",
                             "setInitialyVisible(true)", "Update()"}) {
        const LogCapture::Mark mark;
        QVERIFY(Ask(widget, call));
        QCOMPARE(mark.Since().size(), 1);
        QCOMPARE(mark.Since().first().level, Logging_LevelError);
    }
    const LogCapture::Mark mark;
    widget->setVisibleOpacity(50);
    widget->setInvisibleOpacity(50);
    QCOMPARE(mark.Since().size(), 2);
    QCOMPARE(widget->getVisibleOpacity(), 100);
    QCOMPARE(widget->getInvisibleOpacity(), 0);

    // The other widgets are still updated, without a word about this one.
    DisappearingWidget::UpdateAllVisibleWidgets();
    QCOMPARE(otherEffect.count(), 2);
    QCOMPARE(mark.Since().size(), 2);
    QCoreApplication::processEvents();
    QVERIFY(log.lines.isEmpty());
    QCOMPARE(widget->graphicsEffect(), blur);
}

void TestDisappearingWidget::sizeHintsFollowTheLayout()
{
    auto* widget = new DisappearingWidget(m_window);
    QCOMPARE(widget->sizeHint(), QWidget().sizeHint());
    QCOMPARE(widget->minimumSizeHint(), QWidget().minimumSizeHint());

    // The layout's margins (3 + 5, 4 + 6) and spacing (2) count in both; the widget's own
    // margins (1 + 3, 2 + 4) only in the minimum.
    widget->setContentsMargins(1, 2, 3, 4);
    auto* layout = new QVBoxLayout(widget);
    layout->setContentsMargins(3, 4, 5, 6);
    layout->setSpacing(2);
    layout->addWidget(new Block(QSize(80, 30), QSize(20, 10)));
    layout->addWidget(new Block(QSize(60, 20), QSize(50, 5)));
    const QSize margins(8, 10);
    const QSize own(4, 6);
    QCOMPARE(widget->sizeHint(), QSize(80, 30 + 2 + 20) + margins);
    QCOMPARE(widget->minimumSizeHint(), QSize(50, 10 + 2 + 5) + margins + own);
    layout->addWidget(new Block(QSize(100, 10), QSize(70, 10)));
    QCOMPARE(widget->sizeHint(), QSize(100, 30 + 2 + 20 + 2 + 10) + margins);
    QCOMPARE(widget->minimumSizeHint(), QSize(70, 10 + 2 + 5 + 2 + 10) + margins + own);
}

QTEST_MAIN(TestDisappearingWidget)
#include "tst_disappearing_widget.moc"
