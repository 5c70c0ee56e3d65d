#include <qt_halvo/animation/disappearing_widget.h>
#include <qt_halvo/animation/disappearing_widget_p.h>

#include "log_capture.h"

#include <QtCore/QPointer>
#include <QtCore/QPropertyAnimation>
#include <QtGui/QPainter>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsBlurEffect>
#include <QtWidgets/QGraphicsOpacityEffect>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <memory>

Q_DECLARE_METATYPE(QMargins)

using OrvantaQT::DisappearingWidget;
using OrvantaQT::LiveDisappearingWidgets;

namespace {

const int kFadeTimeout = 5000;

QGraphicsOpacityEffect* EffectOf(DisappearingWidget* widget)
{
    return qobject_cast<QGraphicsOpacityEffect*>(widget->graphicsEffect());
}

// The animation that fades the widget.
QPropertyAnimation* FadeOf(DisappearingWidget* widget)
{
    const QList<QPropertyAnimation*> animations = widget->findChildren<QPropertyAnimation*>();
    for (QPropertyAnimation* animation : animations) {
        if (animation->targetObject() == widget->graphicsEffect() && animation->propertyName() == "opacity")
            return animation;
    }
    return nullptr;
}

// Calls a slot by its name, with a bool when argument is 0 (false) or 1 (true).
bool Ask(DisappearingWidget* widget, const QByteArray& slot, int argument)
{
    if (argument < 0)
        return QMetaObject::invokeMethod(widget, slot.constData());
    return QMetaObject::invokeMethod(widget, slot.constData(), Q_ARG(bool, argument == 1));
}

// The widget's notifications by name, in the order they come, while the log lives.
class SignalLog : public QObject
{
public:
    explicit SignalLog(DisappearingWidget* widget)
    {
        connect(widget, QOverload<>::of(&DisappearingWidget::Appeared), this, [this] { lines << QStringLiteral("Appeared()"); });
        connect(widget, QOverload<bool>::of(&DisappearingWidget::Appeared), this,
                [this](bool on) { lines << QStringLiteral("Appeared(%1)").arg(Text(on)); });
        connect(widget, QOverload<>::of(&DisappearingWidget::Disappeared), this,
                [this] { lines << QStringLiteral("Disappeared()"); });
        connect(widget, QOverload<bool>::of(&DisappearingWidget::Disappeared), this,
                [this](bool on) { lines << QStringLiteral("Disappeared(%1)").arg(Text(on)); });
    }

    QStringList lines;

private:
    static QString Text(bool on) { return on ? QStringLiteral("true") : QStringLiteral("false"); }
};

const QStringList kEnteredVisible = {QStringLiteral("Appeared()"), QStringLiteral("Appeared(true)")};
const QStringList kEnteredInvisible = {QStringLiteral("Disappeared()"), QStringLiteral("Disappeared(true)")};
const QStringList kToVisible = QStringList{QStringLiteral("Disappeared(false)")} + kEnteredVisible;
const QStringList kToInvisible = QStringList{QStringLiteral("Appeared(false)")} + kEnteredInvisible;

// Every opacity the effect is given, in order, while the log lives.
class OpacityLog : public QObject
{
public:
    explicit OpacityLog(QGraphicsOpacityEffect* effect)
    {
        connect(effect, &QGraphicsOpacityEffect::opacityChanged, this, [this](qreal opacity) { values.append(opacity); });
    }

    bool HasStepBetween(qreal low, qreal high) const
    {
        return std::any_of(values.begin(), values.end(),
                           [=](qreal opacity) { return opacity > low + 0.001 && opacity < high - 0.001; });
    }

    QVector<qreal> values;
};

// A widget with fixed hints, for the layout tests.
class Block : public QWidget
{
public:
    Block(QSize hint, QSize minimum) : m_hint(hint), m_minimum(minimum) {}
    QSize sizeHint() const override { return m_hint; }
    QSize minimumSizeHint() const override { return m_minimum; }

private:
    QSize m_hint;
    QSize m_minimum;
};

// Content that paints itself red. (An opaque child, one that fills its background,
// would keep the window from painting its own background beneath it, faded or not.)
class RedPatch : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), QColor(255, 0, 0)); }
};

// Lets the machine start: it does on the next pass of the event loop.
void LetTheMachineStart()
{
    QCoreApplication::processEvents();
}

} // namespace

class TestDisappearingWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void startsInvisible();
    void requestsBeforeTheLoopRunsTakeEffectAtOnce_data();
    void requestsBeforeTheLoopRunsTakeEffectAtOnce();
    void changesFadeAndSignalInOrder_data();
    void changesFadeAndSignalInOrder();
    void requestForTheCurrentStateIsIgnored();
    void reversalTurnsRoundFromTheCurrentOpacity();
    void opacityLevels_data();
    void opacityLevels();
    void durationAndEasing_data();
    void durationAndEasing();
    void fadesWhatIsPainted();
    void listHoldsTheLiveWidgets();
    void updateReachesEveryWidget();
    void replacedEffectIsReported_data();
    void replacedEffectIsReported();
    void sizeHintsFollowTheLayout_data();
    void sizeHintsFollowTheLayout();

private:
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
    QCOMPARE(LiveDisappearingWidgets(), QVector<DisappearingWidget*>());
}

void TestDisappearingWidget::startsInvisible()
{
    auto* widget = new DisappearingWidget(m_window);
    SignalLog log(widget);
    QGraphicsOpacityEffect* effect = EffectOf(widget);
    QVERIFY(effect);
    QVERIFY(widget->testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(widget->property("initialyVisible").toBool(), false);
    QCOMPARE(widget->getInvisibleOpacity(), 0);
    QCOMPARE(widget->getVisibleOpacity(), 100);

    LetTheMachineStart();
    QTRY_COMPARE(log.lines, kEnteredInvisible);
    QCOMPARE(effect->opacity(), 0.0);
}

void TestDisappearingWidget::requestsBeforeTheLoopRunsTakeEffectAtOnce_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<int>("argument");
    QTest::addColumn<bool>("visible");
    QTest::newRow("setInitialyVisible(true)") << QByteArray("setInitialyVisible") << 1 << true;
    QTest::newRow("appear()") << QByteArray("appear") << -1 << true;
    QTest::newRow("setAppeared(true)") << QByteArray("setAppeared") << 1 << true;
    QTest::newRow("setDisappeared(false)") << QByteArray("setDisappeared") << 0 << true;
    QTest::newRow("setInitialyVisible(false)") << QByteArray("setInitialyVisible") << 0 << false;
    QTest::newRow("disappear()") << QByteArray("disappear") << -1 << false;
    QTest::newRow("setAppeared(false)") << QByteArray("setAppeared") << 0 << false;
    QTest::newRow("setDisappeared(true)") << QByteArray("setDisappeared") << 1 << false;
}

void TestDisappearingWidget::requestsBeforeTheLoopRunsTakeEffectAtOnce()
{
    QFETCH(QByteArray, slot);
    QFETCH(int, argument);
    QFETCH(bool, visible);
    auto* widget = new DisappearingWidget(m_window);
    widget->setDuration(100);
    // Levels of their own, so that the effect's initial 1.0 cannot pass for either.
    widget->setVisibleOpacity(60);
    widget->setInvisibleOpacity(10);
    const qreal wanted = visible ? 0.6 : 0.1;
    SignalLog log(widget);
    QGraphicsOpacityEffect* effect = EffectOf(widget);

    QVERIFY(Ask(widget, slot, argument));
    QCOMPARE(effect->opacity(), wanted);
    if (slot == "setInitialyVisible")
        QCOMPARE(widget->initialyVisible(), visible);

    OpacityLog opacities(effect);
    LetTheMachineStart();
    QTRY_COMPARE(log.lines, visible ? kEnteredVisible : kEnteredInvisible);
    // Long enough for a fade to have shown itself.
    QTest::qWait(250);
    QCOMPARE(log.lines, visible ? kEnteredVisible : kEnteredInvisible);
    QCOMPARE(effect->opacity(), wanted);
    QVERIFY2(std::all_of(opacities.values.begin(), opacities.values.end(), [=](qreal opacity) { return qFuzzyCompare(opacity, wanted); }),
             "the change was animated");
}

void TestDisappearingWidget::changesFadeAndSignalInOrder_data()
{
    QTest::addColumn<QByteArray>("show");
    QTest::addColumn<int>("showArgument");
    QTest::addColumn<QByteArray>("hide");
    QTest::addColumn<int>("hideArgument");
    QTest::newRow("appear() and disappear()") << QByteArray("appear") << -1 << QByteArray("disappear") << -1;
    QTest::newRow("setAppeared") << QByteArray("setAppeared") << 1 << QByteArray("setAppeared") << 0;
    QTest::newRow("setDisappeared") << QByteArray("setDisappeared") << 0 << QByteArray("setDisappeared") << 1;
    QTest::newRow("setInitialyVisible") << QByteArray("setInitialyVisible") << 1 << QByteArray("setInitialyVisible")
                                        << 0;
}

void TestDisappearingWidget::changesFadeAndSignalInOrder()
{
    QFETCH(QByteArray, show);
    QFETCH(int, showArgument);
    QFETCH(QByteArray, hide);
    QFETCH(int, hideArgument);
    auto* widget = new DisappearingWidget(m_window);
    widget->setDuration(400);
    SignalLog log(widget);
    QSignalSpy debug(widget, &DisappearingWidget::DebugOutput);
    QGraphicsOpacityEffect* effect = EffectOf(widget);
    LetTheMachineStart();
    QTRY_COMPARE(log.lines, kEnteredInvisible);
    QCOMPARE(debug.count(), 1);

    log.lines.clear();
    debug.clear();
    OpacityLog opacities(effect);
    QVERIFY(Ask(widget, show, showArgument));
    // The state is entered when its fade starts.
    QCOMPARE(log.lines, kToVisible);
    QCOMPARE(debug.count(), 1);
    QVERIFY(!debug.first().first().toString().isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(effect->opacity(), 1.0, kFadeTimeout);
    QVERIFY2(opacities.HasStepBetween(0.0, 1.0), "the widget did not fade in");
    QVERIFY(std::is_sorted(opacities.values.begin(), opacities.values.end()));

    log.lines.clear();
    debug.clear();
    opacities.values.clear();
    QVERIFY(Ask(widget, hide, hideArgument));
    QCOMPARE(log.lines, kToInvisible);
    QCOMPARE(debug.count(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(effect->opacity(), 0.0, kFadeTimeout);
    QVERIFY2(opacities.HasStepBetween(0.0, 1.0), "the widget did not fade out");
    QVERIFY(std::is_sorted(opacities.values.rbegin(), opacities.values.rend()));
    QCOMPARE(log.lines, kToInvisible);
}

void TestDisappearingWidget::requestForTheCurrentStateIsIgnored()
{
    auto* widget = new DisappearingWidget(m_window);
    widget->setDuration(400);
    QGraphicsOpacityEffect* effect = EffectOf(widget);
    LetTheMachineStart();
    QTRY_COMPARE(effect->opacity(), 0.0);

    SignalLog log(widget);
    OpacityLog opacities(effect);
    widget->disappear();
    widget->setAppeared(false);
    QTest::qWait(100);
    QVERIFY(log.lines.isEmpty());
    QVERIFY(opacities.values.isEmpty());

    // Nor during the fade into that state: it goes on, without starting over.
    widget->appear();
    log.lines.clear();
    QTRY_VERIFY_WITH_TIMEOUT(!opacities.values.isEmpty() && opacities.values.last() > 0.0, kFadeTimeout);
    widget->appear();
    widget->setInitialyVisible(true);
    QVERIFY(log.lines.isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(effect->opacity(), 1.0, kFadeTimeout);
    QVERIFY(std::is_sorted(opacities.values.begin(), opacities.values.end()));
    QVERIFY(log.lines.isEmpty());
}

void TestDisappearingWidget::reversalTurnsRoundFromTheCurrentOpacity()
{
    auto* widget = new DisappearingWidget(m_window);
    widget->setDuration(1000);
    widget->setEasing(QEasingCurve::Linear);
    QGraphicsOpacityEffect* effect = EffectOf(widget);
    LetTheMachineStart();
    QTRY_COMPARE(effect->opacity(), 0.0);

    SignalLog log(widget);
    OpacityLog opacities(effect);
    qreal turningPoint = -1;
    QStringList logAtTurn;
    bool asked = false;
    // Turned round at a point the fade itself reaches, not at a time.
    connect(effect, &QGraphicsOpacityEffect::opacityChanged, this, [&](qreal opacity) {
        if (asked || opacity <= 0.3)
            return;
        asked = true;
        QTimer::singleShot(0, widget, [&] {
            turningPoint = effect->opacity();
            opacities.values.clear();
            log.lines.clear();
            widget->disappear();
            logAtTurn = log.lines;
        });
    });
    widget->appear();
    QTRY_VERIFY_WITH_TIMEOUT(turningPoint >= 0, kFadeTimeout);
    QVERIFY2(turningPoint < 0.9, qPrintable(QString::number(turningPoint)));
    QCOMPARE(logAtTurn, kToInvisible);

    QTRY_COMPARE_WITH_TIMEOUT(effect->opacity(), 0.0, kFadeTimeout);
    const QVector<qreal> path = opacities.values;
    QVERIFY(path.size() > 2);
    // Back from where it was: no jump to either end, and downwards all the way.
    QVERIFY2(qAbs(path.first() - turningPoint) < 0.15, qPrintable(QString::number(path.first())));
    QVERIFY(std::is_sorted(path.rbegin(), path.rend()));
    QCOMPARE(log.lines, kToInvisible);
}

void TestDisappearingWidget::opacityLevels_data()
{
    QTest::addColumn<bool>("visibleLevel");
    QTest::addColumn<int>("percent");
    QTest::addColumn<int>("stored");
    QTest::addColumn<bool>("reported");
    QTest::newRow("visible 150") << true << 150 << 100 << true;
    QTest::newRow("visible 101") << true << 101 << 100 << true;
    QTest::newRow("visible 40") << true << 40 << 40 << false;
    QTest::newRow("visible 0") << true << 0 << 0 << false;
    QTest::newRow("visible -1") << true << -1 << 0 << true;
    QTest::newRow("invisible -5") << false << -5 << 0 << true;
    QTest::newRow("invisible 25") << false << 25 << 25 << false;
    QTest::newRow("invisible 100") << false << 100 << 100 << false;
    QTest::newRow("invisible 300") << false << 300 << 100 << true;
}

void TestDisappearingWidget::opacityLevels()
{
    QFETCH(bool, visibleLevel);
    QFETCH(int, percent);
    QFETCH(int, stored);
    QFETCH(bool, reported);
    auto* widget = new DisappearingWidget(m_window);
    widget->setDuration(30);
    QGraphicsOpacityEffect* effect = EffectOf(widget);
    const char* property = visibleLevel ? "visibleOpacity" : "invisibleOpacity";
    {
        const LogCapture::Mark mark;
        QVERIFY(widget->setProperty(property, percent));
        QCOMPARE(mark.Since().size(), reported ? 1 : 0);
        if (reported)
            QCOMPARE(mark.Since().first().level, 4);
    }
    QCOMPARE(widget->property(property).toInt(), stored);
    QCOMPARE(visibleLevel ? widget->getVisibleOpacity() : widget->getInvisibleOpacity(), stored);

    // The state shows the stored level.
    LetTheMachineStart();
    QTRY_COMPARE(effect->opacity(), visibleLevel ? 0.0 : stored * 0.01);
    widget->appear();
    QTRY_COMPARE_WITH_TIMEOUT(effect->opacity(), visibleLevel ? stored * 0.01 : 1.0, kFadeTimeout);
    widget->disappear();
    QTRY_COMPARE_WITH_TIMEOUT(effect->opacity(), visibleLevel ? 0.0 : stored * 0.01, kFadeTimeout);
}

void TestDisappearingWidget::durationAndEasing_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("stored");
    QTest::addColumn<bool>("reported");
    const int linear = QEasingCurve::Linear;
    QTest::newRow("duration 40") << QByteArray("duration") << 40 << 40 << false;
    QTest::newRow("duration 0") << QByteArray("duration") << 0 << 0 << false;
    QTest::newRow("duration -1") << QByteArray("duration") << -1 << 250 << true;
    QTest::newRow("easing OutCubic") << QByteArray("easing") << int(QEasingCurve::OutCubic) << int(QEasingCurve::OutCubic)
                                     << false;
    QTest::newRow("easing InOutBounce") << QByteArray("easing") << int(QEasingCurve::InOutBounce)
                                        << int(QEasingCurve::InOutBounce) << false;
    QTest::newRow("easing Custom") << QByteArray("easing") << int(QEasingCurve::Custom) << linear << true;
    // Still inside the range of values the enumeration can hold.
    QTest::newRow("easing out of range") << QByteArray("easing") << int(QEasingCurve::NCurveTypes) + 3 << linear << true;
}

void TestDisappearingWidget::durationAndEasing()
{
    QFETCH(QByteArray, property);
    QFETCH(int, value);
    QFETCH(int, stored);
    QFETCH(bool, reported);
    auto* widget = new DisappearingWidget(m_window);
    QPropertyAnimation* fade = FadeOf(widget);
    QVERIFY(fade);
    {
        const LogCapture::Mark mark;
        QVERIFY(widget->setProperty(property.constData(), value));
        QCOMPARE(mark.Since().size(), reported ? 1 : 0);
        if (reported)
            QCOMPARE(mark.Since().first().level, 4);
    }
    QCOMPARE(widget->property(property.constData()).toInt(), stored);
    if (property == "duration") {
        QCOMPARE(widget->duration(), stored);
        QCOMPARE(fade->duration(), stored);
    } else {
        QCOMPARE(int(widget->easing()), stored);
        QCOMPARE(int(fade->easingCurve().type()), stored);
    }

    LetTheMachineStart();
    widget->appear();
    QTRY_COMPARE_WITH_TIMEOUT(EffectOf(widget)->opacity(), 1.0, kFadeTimeout);
}

void TestDisappearingWidget::fadesWhatIsPainted()
{
    m_window->setAutoFillBackground(true);
    QPalette white = m_window->palette();
    white.setColor(QPalette::Window, Qt::white);
    m_window->setPalette(white);
    auto* widget = new DisappearingWidget(m_window);
    widget->setGeometry(20, 20, 120, 80);
    widget->setDuration(100);
    auto* content = new RedPatch(widget);
    content->setGeometry(0, 0, 120, 80);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));

    const auto shown = [this, widget] {
        const QPixmap picture = m_window->grab();
        return picture.toImage().pixelColor(widget->geometry().center() * picture.devicePixelRatio());
    };
    const auto near = [](const QColor& actual, const QColor& expected) {
        return qAbs(actual.red() - expected.red()) <= 3 && qAbs(actual.green() - expected.green()) <= 3
            && qAbs(actual.blue() - expected.blue()) <= 3;
    };
    QTRY_COMPARE(EffectOf(widget)->opacity(), 0.0);
    QVERIFY2(near(shown(), Qt::white), qPrintable(shown().name()));
    widget->appear();
    QTRY_VERIFY_WITH_TIMEOUT(near(shown(), QColor(255, 0, 0)), kFadeTimeout);
    widget->setInvisibleOpacity(50);
    widget->disappear();
    QTRY_VERIFY_WITH_TIMEOUT(near(shown(), QColor(255, 127, 127)), kFadeTimeout);
    QTRY_COMPARE_WITH_TIMEOUT(EffectOf(widget)->opacity(), 0.5, kFadeTimeout);
    QVERIFY2(near(shown(), QColor(255, 127, 127)), qPrintable(shown().name()));
}

void TestDisappearingWidget::listHoldsTheLiveWidgets()
{
    QCOMPARE(LiveDisappearingWidgets(), QVector<DisappearingWidget*>());
    auto* first = new DisappearingWidget(m_window);
    auto second = std::make_unique<DisappearingWidget>();
    auto* holder = new QWidget(m_window);
    auto* third = new DisappearingWidget(holder);
    auto* nested = new DisappearingWidget(third);
    QCOMPARE(LiveDisappearingWidgets(), QVector<DisappearingWidget*>({first, second.get(), third, nested}));

    // Deleted during a fade.
    LetTheMachineStart();
    second->setDuration(2000);
    second->appear();
    second.reset();
    QCOMPARE(LiveDisappearingWidgets(), QVector<DisappearingWidget*>({first, third, nested}));

    delete holder;
    QCOMPARE(LiveDisappearingWidgets(), QVector<DisappearingWidget*>({first}));
    auto* fourth = new DisappearingWidget(m_window);
    QCOMPARE(LiveDisappearingWidgets(), QVector<DisappearingWidget*>({first, fourth}));
    delete first;
    QCOMPARE(LiveDisappearingWidgets(), QVector<DisappearingWidget*>({fourth}));
}

void TestDisappearingWidget::updateReachesEveryWidget()
{
    auto* shownWidget = new DisappearingWidget(m_window);
    shownWidget->setGeometry(0, 0, 50, 50);
    // Painting is left out while the widget is fully transparent.
    shownWidget->setInitialyVisible(true);
    auto* hiddenWidget = new DisappearingWidget(m_window);
    hiddenWidget->hide();
    std::unique_ptr<DisappearingWidget> topLevel(new DisappearingWidget);
    // Inside a plain container: Qt cannot paint one graphics effect inside another.
    auto* holder = new QWidget(m_window);
    holder->setGeometry(60, 0, 50, 50);
    auto* nested = new DisappearingWidget(holder);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    LetTheMachineStart();

    const QVector<DisappearingWidget*> widgets{shownWidget, hiddenWidget, topLevel.get(), nested};
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (DisappearingWidget* widget : widgets)
        spies.push_back(std::make_unique<QSignalSpy>(EffectOf(widget), &QGraphicsEffect::enabledChanged));
    const auto switchedOffAndOn = [](const QSignalSpy& spy) {
        return spy.count() == 2 && spy.at(0).at(0).toBool() == false && spy.at(1).at(0).toBool() == true;
    };

    // Update() re-renders its own widget only.
    hiddenWidget->Update();
    for (int i = 0; i < widgets.size(); ++i) {
        QCOMPARE(spies[i]->count(), widgets[i] == hiddenWidget ? 2 : 0);
        spies[i]->clear();
    }

    DisappearingWidget::UpdateAllVisibleWidgets();
    for (int i = 0; i < widgets.size(); ++i) {
        QVERIFY2(switchedOffAndOn(*spies[i]), qPrintable(QString::number(i)));
        QVERIFY(EffectOf(widgets[i])->isEnabled());
        spies[i]->clear();
    }
    // And the shown one is painted anew.
    int paints = 0;
    struct PaintCounter : QObject
    {
        int* count;
        explicit PaintCounter(int* c) : count(c) {}
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Paint)
                ++*count;
            return false;
        }
    } counter(&paints);
    QTest::qWait(50);
    shownWidget->installEventFilter(&counter);
    DisappearingWidget::UpdateAllVisibleWidgets();
    QTRY_VERIFY(paints > 0);
    shownWidget->removeEventFilter(&counter);
    for (auto& spy : spies)
        spy->clear();

    // A widget deleted while the others are updated is skipped.
    connect(EffectOf(shownWidget), &QGraphicsEffect::enabledChanged, shownWidget, [&](bool enabled) {
        if (!enabled && hiddenWidget) {
            delete hiddenWidget;
            hiddenWidget = nullptr;
        }
    });
    DisappearingWidget::UpdateAllVisibleWidgets();
    QVERIFY(switchedOffAndOn(*spies[0]));
    QVERIFY(switchedOffAndOn(*spies[2]));
    QVERIFY(switchedOffAndOn(*spies[3]));
    QCOMPARE(LiveDisappearingWidgets(), QVector<DisappearingWidget*>({shownWidget, topLevel.get(), nested}));
}

void TestDisappearingWidget::replacedEffectIsReported_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<int>("argument");
    QTest::newRow("appear()") << QByteArray("appear") << -1;
    QTest::newRow("disappear()") << QByteArray("disappear") << -1;
    QTest::newRow("setAppeared(true)") << QByteArray("setAppeared") << 1;
    QTest::newRow("setDisappeared(false)") << QByteArray("setDisappeared") << 0;
    QTest::newRow("setInitialyVisible(true)") << QByteArray("setInitialyVisible") << 1;
    QTest::newRow("Update()") << QByteArray("Update") << -1;
}

void TestDisappearingWidget::replacedEffectIsReported()
{
    QFETCH(QByteArray, slot);
    QFETCH(int, argument);
    auto* widget = new DisappearingWidget(m_window);
    auto* other = new DisappearingWidget(m_window);
    widget->setDuration(30);
    LetTheMachineStart();
    auto* blur = new QGraphicsBlurEffect;
    widget->setGraphicsEffect(blur);
    SignalLog log(widget);
    QSignalSpy otherEffect(EffectOf(other), &QGraphicsEffect::enabledChanged);

    const LogCapture::Mark mark;
    QVERIFY(Ask(widget, slot, argument));
    QCOMPARE(mark.Since().size(), 1);
    QCOMPARE(mark.Since().first().level, 4);
    widget->setVisibleOpacity(50);
    widget->setInvisibleOpacity(50);
    QCOMPARE(mark.Since().size(), 3);
    QCOMPARE(widget->getVisibleOpacity(), 100);
    QCOMPARE(widget->getInvisibleOpacity(), 0);

    // The other widgets are still updated, without a word about this one.
    DisappearingWidget::UpdateAllVisibleWidgets();
    QCOMPARE(otherEffect.count(), 2);
    QCOMPARE(mark.Since().size(), 3);
    QTest::qWait(100);
    QVERIFY(log.lines.isEmpty());
    QCOMPARE(widget->graphicsEffect(), blur);
}

void TestDisappearingWidget::sizeHintsFollowTheLayout_data()
{
    QTest::addColumn<QMargins>("layoutMargins");
    QTest::addColumn<QMargins>("widgetMargins");
    QTest::newRow("no margins") << QMargins() << QMargins();
    QTest::newRow("layout margins") << QMargins(3, 4, 5, 6) << QMargins();
    QTest::newRow("layout and widget margins") << QMargins(3, 4, 5, 6) << QMargins(1, 2, 7, 8);
}

void TestDisappearingWidget::sizeHintsFollowTheLayout()
{
    QFETCH(QMargins, layoutMargins);
    QFETCH(QMargins, widgetMargins);
    auto* widget = new DisappearingWidget(m_window);
    QCOMPARE(widget->sizeHint(), QWidget().sizeHint());
    QCOMPARE(widget->minimumSizeHint(), QWidget().minimumSizeHint());

    widget->setContentsMargins(widgetMargins);
    auto* layout = new QVBoxLayout(widget);
    layout->setContentsMargins(layoutMargins);
    layout->setSpacing(2);
    layout->addWidget(new Block(QSize(80, 30), QSize(20, 10)));
    layout->addWidget(new Block(QSize(60, 20), QSize(50, 5)));
    const int width = layoutMargins.left() + layoutMargins.right();
    const int height = layoutMargins.top() + layoutMargins.bottom() + 2;
    const QSize widgetExtra(widgetMargins.left() + widgetMargins.right(), widgetMargins.top() + widgetMargins.bottom());
    QCOMPARE(widget->sizeHint(), QSize(80 + width, 50 + height));
    QCOMPARE(widget->minimumSizeHint(), QSize(50 + width, 15 + height) + widgetExtra);
    QCOMPARE(widget->sizeHint(), layout->sizeHint());
    QCOMPARE(widget->minimumSizeHint(), layout->totalMinimumSize());

    layout->addWidget(new Block(QSize(100, 10), QSize(70, 10)));
    QCOMPARE(widget->sizeHint(), QSize(100 + width, 62 + height));
    QCOMPARE(widget->minimumSizeHint(), QSize(70 + width, 27 + height) + widgetExtra);
}

QTEST_MAIN(TestDisappearingWidget)
#include "tst_disappearing_widget.moc"
