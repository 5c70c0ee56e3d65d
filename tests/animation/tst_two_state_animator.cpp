#include <qt_halvo/animation/two_state_animator.h>

#include "log_capture.h"

#include <QtCore/QPropertyAnimation>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

using OrvantaQT::TwoStateAnimator;

// What the animator drives in these tests; it keeps every level it is given.
class Dial : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(qreal level READ Level WRITE SetLevel)

public:
    qreal Level() const { return m_level; }
    void SetLevel(qreal level) { history.append(m_level = level); }

    QVector<qreal> history;

private:
    qreal m_level = -1;
};

namespace {

QStringList Names(const char* names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// The machine starts on the next pass of the event loop.
void LetTheMachineStart()
{
    QCoreApplication::processEvents();
}

} // namespace

class TestTwoStateAnimator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { delete m_dial; }

    void changesAnimateAndSignalInOrder();
    void requestsBeforeStartAndForTheCurrentState();
    void reversalTurnsRoundFromTheCurrentValue();
    void missingAnimationIsReported();

private:
    // Between 0 and 100; the signals are recorded by name in m_log.
    TwoStateAnimator* Make(int duration);

    Dial* m_dial = nullptr;
    QPropertyAnimation* m_animation = nullptr;
    QStringList m_log;
};

void TestTwoStateAnimator::init()
{
    m_dial = new Dial;
    m_animation = new QPropertyAnimation(m_dial, "level", m_dial);
    m_log.clear();
}

TwoStateAnimator* TestTwoStateAnimator::Make(int duration)
{
    m_animation->setDuration(duration);
    auto* animator = new TwoStateAnimator(m_animation, 0.0, 100.0, m_dial);
    QStringList* log = &m_log;
    connect(animator, QOverload<>::of(&TwoStateAnimator::FirstStateEntered), [log] { *log << "First()"; });
    connect(animator, QOverload<bool>::of(&TwoStateAnimator::FirstStateEntered),
            [log](bool on) { *log << QStringLiteral("First(%1)").arg(on); });
    connect(animator, QOverload<>::of(&TwoStateAnimator::SecondStateEntered), [log] { *log << "Second()"; });
    connect(animator, QOverload<bool>::of(&TwoStateAnimator::SecondStateEntered),
            [log](bool on) { *log << QStringLiteral("Second(%1)").arg(on); });
    return animator;
}

void TestTwoStateAnimator::changesAnimateAndSignalInOrder()
{
    TwoStateAnimator* animator = Make(150);
    LetTheMachineStart();
    QCOMPARE(m_dial->Level(), 0.0);
    QCOMPARE(m_log, Names("First() First(1)"));

    m_log.clear();
    m_dial->history.clear();
    animator->setSecondState();
    // The state is entered when its animation starts, not when it ends.
    QCOMPARE(m_log, Names("First(0) Second() Second(1)"));
    QVERIFY(m_dial->Level() < 100.0);
    QTRY_COMPARE(m_dial->Level(), 100.0);
    QVERIFY2(m_dial->history.size() > 2, "the change was not animated");

    m_log.clear();
    animator->setFirstState();
    QCOMPARE(m_log, Names("Second(0) First() First(1)"));
    QTRY_COMPARE(m_dial->Level(), 0.0);

    // New values show on the next entry of their state.
    animator->setFirstValue(5.0);
    animator->setSecondValue(50.0);
    QCOMPARE(m_dial->Level(), 0.0);
    animator->setSecondState();
    QTRY_COMPARE(m_dial->Level(), 50.0);
    animator->setFirstState();
    QTRY_COMPARE(m_dial->Level(), 5.0);
}

void TestTwoStateAnimator::requestsBeforeStartAndForTheCurrentState()
{
    TwoStateAnimator* animator = Make(150);
    // Before the machine runs the value is set at once and the machine starts there,
    // without animation. setSecondState(on) and setFirstState(!on) ask for the same state.
    animator->setSecondState(true);
    QCOMPARE(m_dial->Level(), 100.0);
    animator->setFirstState(false);
    m_dial->history.clear();
    LetTheMachineStart();
    QCOMPARE(m_log, Names("Second() Second(1)"));
    QTest::qWait(50);
    QVERIFY2(m_dial->history.isEmpty() || m_dial->history == QVector<qreal>{100.0}, "the request was animated");

    // At rest, asking for the state it is in does nothing.
    m_log.clear();
    m_dial->history.clear();
    animator->setFirstState(false);
    animator->setSecondState();
    Q_EMIT animator->EnterSecondState();
    QTest::qWait(60);
    QVERIFY(m_log.isEmpty());
    QVERIFY(m_dial->history.isEmpty());

    animator->setSecondState(false);
    QTRY_COMPARE(m_dial->Level(), 0.0);
    // Nor during the entry animation of that state.
    animator->setFirstState(false);
    m_log.clear();
    animator->setSecondState();
    QVERIFY(m_log.isEmpty());
    QTRY_COMPARE(m_dial->Level(), 100.0);
}

void TestTwoStateAnimator::reversalTurnsRoundFromTheCurrentValue()
{
    TwoStateAnimator* animator = Make(600);
    LetTheMachineStart();
    animator->setSecondState();
    QTRY_VERIFY(m_dial->Level() > 20.0);
    const qreal turningPoint = m_dial->Level();
    QVERIFY(turningPoint < 90.0);

    m_dial->history.clear();
    animator->setFirstState();
    QTRY_COMPARE_WITH_TIMEOUT(m_dial->Level(), 0.0, 3000);
    const QVector<qreal> path = m_dial->history;
    QVERIFY(path.size() > 2);
    // Back from where it was: no jump to either end, and downwards all the way.
    QVERIFY2(qAbs(path.first() - turningPoint) < 15.0, qPrintable(QString::number(path.first())));
    QVERIFY(std::is_sorted(path.rbegin(), path.rend()));
}

void TestTwoStateAnimator::missingAnimationIsReported()
{
    const LogCapture::Mark mark;
    TwoStateAnimator animator(nullptr, 0, 1, nullptr);
    animator.setSecondState();
    animator.setFirstValue(3);
    QCOMPARE(animator.GetFirstValue(), QVariant(3));
    QCOMPARE(mark.Since().size(), 1);
    QCOMPARE(mark.Since().first().level, 4);
}

QTEST_MAIN(TestTwoStateAnimator)
#include "tst_two_state_animator.moc"
