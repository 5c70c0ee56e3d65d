#include <qt_halvo/animation/two_state_animator.h>

#include "log_capture.h"

#include <QtCore/QPropertyAnimation>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

using OrvantaQT::TwoStateAnimator;

// What the animator drives in these tests.
class Dial : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(qreal level READ Level WRITE SetLevel)

public:
    qreal Level() const { return m_level; }
    void SetLevel(qreal level)
    {
        m_level = level;
        history.append(level);
    }

    QVector<qreal> history;

private:
    qreal m_level = -1;
};

namespace {

// Records the animator's signals by name, in the order they come.
QStringList* Record(TwoStateAnimator& animator)
{
    auto* log = new QStringList;
    QObject::connect(&animator, QOverload<>::of(&TwoStateAnimator::FirstStateEntered), [log] { *log << QStringLiteral("First()"); });
    QObject::connect(&animator, QOverload<bool>::of(&TwoStateAnimator::FirstStateEntered),
                     [log](bool on) { *log << QStringLiteral("First(%1)").arg(on); });
    QObject::connect(&animator, QOverload<>::of(&TwoStateAnimator::SecondStateEntered), [log] { *log << QStringLiteral("Second()"); });
    QObject::connect(&animator, QOverload<bool>::of(&TwoStateAnimator::SecondStateEntered),
                     [log](bool on) { *log << QStringLiteral("Second(%1)").arg(on); });
    return log;
}

// Lets the machine start: it does on the next pass of the event loop.
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
    void cleanup();

    void changesAnimateAndSignalInOrder();
    void requestsBeforeTheMachineRunsTakeEffectAtOnce();
    void boolFormsMirrorEachOther_data();
    void boolFormsMirrorEachOther();
    void requestForTheCurrentStateDoesNothing();
    void reversalTurnsRoundFromTheCurrentValue();
    void newValuesShowOnTheNextEntry();
    void missingAnimationIsReported();

private:
    TwoStateAnimator* MakeAnimator(int duration);

    Dial* m_dial = nullptr;
    QPropertyAnimation* m_animation = nullptr;
};

void TestTwoStateAnimator::init()
{
    m_dial = new Dial;
    m_animation = new QPropertyAnimation(m_dial, "level", m_dial);
}

void TestTwoStateAnimator::cleanup()
{
    delete m_dial;
}

TwoStateAnimator* TestTwoStateAnimator::MakeAnimator(int duration)
{
    m_animation->setDuration(duration);
    return new TwoStateAnimator(m_animation, 0.0, 100.0, m_dial);
}

void TestTwoStateAnimator::changesAnimateAndSignalInOrder()
{
    TwoStateAnimator* animator = MakeAnimator(150);
    std::unique_ptr<QStringList> log(Record(*animator));
    LetTheMachineStart();
    QCOMPARE(m_dial->Level(), 0.0);
    QCOMPARE(*log, QStringList({QStringLiteral("First()"), QStringLiteral("First(1)")}));

    log->clear();
    m_dial->history.clear();
    animator->setSecondState();
    // The state is entered when its animation starts, not when it ends.
    QCOMPARE(*log, QStringList({QStringLiteral("First(0)"), QStringLiteral("Second()"), QStringLiteral("Second(1)")}));
    QVERIFY(m_dial->Level() < 100.0);
    QTRY_COMPARE(m_dial->Level(), 100.0);
    QVERIFY2(m_dial->history.size() > 2, "the change was not animated");

    log->clear();
    animator->setFirstState();
    QCOMPARE(*log, QStringList({QStringLiteral("Second(0)"), QStringLiteral("First()"), QStringLiteral("First(1)")}));
    QTRY_COMPARE(m_dial->Level(), 0.0);
}

void TestTwoStateAnimator::requestsBeforeTheMachineRunsTakeEffectAtOnce()
{
    TwoStateAnimator* animator = MakeAnimator(150);
    std::unique_ptr<QStringList> log(Record(*animator));
    animator->setSecondState();
    QCOMPARE(m_dial->Level(), 100.0);
    m_dial->history.clear();
    LetTheMachineStart();
    QCOMPARE(*log, QStringList({QStringLiteral("Second()"), QStringLiteral("Second(1)")}));
    QTest::qWait(50);
    QVERIFY2(m_dial->history.isEmpty() || m_dial->history == QVector<qreal>{100.0}, "the request was animated");
}

void TestTwoStateAnimator::boolFormsMirrorEachOther_data()
{
    QTest::addColumn<bool>("beforeStart");
    QTest::newRow("before the machine runs") << true;
    QTest::newRow("while it runs") << false;
}

void TestTwoStateAnimator::boolFormsMirrorEachOther()
{
    QFETCH(bool, beforeStart);
    TwoStateAnimator* animator = MakeAnimator(30);
    if (!beforeStart)
        LetTheMachineStart();
    animator->setSecondState(true);
    QTRY_COMPARE(m_dial->Level(), 100.0);
    animator->setFirstState(false);
    QTest::qWait(60);
    QCOMPARE(m_dial->Level(), 100.0);
    animator->setSecondState(false);
    QTRY_COMPARE(m_dial->Level(), 0.0);
    animator->setFirstState(false);
    QTRY_COMPARE(m_dial->Level(), 100.0);
}

void TestTwoStateAnimator::requestForTheCurrentStateDoesNothing()
{
    TwoStateAnimator* animator = MakeAnimator(30);
    LetTheMachineStart();
    std::unique_ptr<QStringList> log(Record(*animator));
    m_dial->history.clear();
    animator->setFirstState();
    Q_EMIT animator->EnterFirstState();
    QTest::qWait(60);
    QVERIFY(log->isEmpty());
    QVERIFY(m_dial->history.isEmpty());

    // Nor during the entry animation of that state.
    animator->setSecondState();
    log->clear();
    animator->setSecondState();
    QVERIFY(log->isEmpty());
    QTRY_COMPARE(m_dial->Level(), 100.0);
}

void TestTwoStateAnimator::reversalTurnsRoundFromTheCurrentValue()
{
    TwoStateAnimator* animator = MakeAnimator(600);
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

void TestTwoStateAnimator::newValuesShowOnTheNextEntry()
{
    TwoStateAnimator* animator = MakeAnimator(20);
    LetTheMachineStart();
    animator->setFirstValue(5.0);
    animator->setSecondValue(50.0);
    QCOMPARE(animator->GetFirstValue(), QVariant(5.0));
    QCOMPARE(animator->GetSecondValue(), QVariant(50.0));
    QCOMPARE(m_dial->Level(), 0.0);
    animator->setSecondState();
    QTRY_COMPARE(m_dial->Level(), 50.0);
    animator->setFirstState();
    QTRY_COMPARE(m_dial->Level(), 5.0);
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
