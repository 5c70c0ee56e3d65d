#include <qt_halvo/animation/two_state_animator.h>

#include "test_support.h"

using OrvantaQT::TwoStateAnimator;
using TestSupport::SignalLog;
using TestSupport::Words;

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

class TestTwoStateAnimator : public QObject
{
    Q_OBJECT

    Dial* m_dial = nullptr;
    TwoStateAnimator* m_animator = nullptr;
    std::unique_ptr<SignalLog> m_log;

    // Between 0 and 100. The machine starts on the next pass of the event loop.
    void Make(int duration, bool start = true)
    {
        auto* animation = new QPropertyAnimation(m_dial, "level", m_dial);
        animation->setDuration(duration);
        m_animator = new TwoStateAnimator(animation, 0.0, 100.0, m_dial);
        m_log.reset(new SignalLog(m_animator, {"FirstStateEntered()", "FirstStateEntered(bool)", "SecondStateEntered()",
                                               "SecondStateEntered(bool)"}));
        if (start)
            QCoreApplication::processEvents();
    }

private Q_SLOTS:
    void init() { m_dial = new Dial; }
    void cleanup() { delete m_dial; }

    void changesAnimateAndSignalInOrder()
    {
        Make(150);
        QCOMPARE(m_dial->Level(), 0.0);
        QCOMPARE(m_log->Take(), Words("FirstStateEntered() FirstStateEntered(true)"));
        m_dial->history.clear();
        m_animator->setSecondState();
        // The state is entered when its animation starts, not when it ends.
        QCOMPARE(m_log->Take(), Words("FirstStateEntered(false) SecondStateEntered() SecondStateEntered(true)"));
        QVERIFY(m_dial->Level() < 100.0);
        QTRY_COMPARE(m_dial->Level(), 100.0);
        QVERIFY2(m_dial->history.size() > 2, "the change was not animated");
        m_animator->setFirstState();
        QCOMPARE(m_log->Take(), Words("SecondStateEntered(false) FirstStateEntered() FirstStateEntered(true)"));
        QTRY_COMPARE(m_dial->Level(), 0.0);
        // New values show on the next entry of their state.
        m_animator->setFirstValue(5.0);
        m_animator->setSecondValue(50.0);
        QCOMPARE(m_dial->Level(), 0.0);
        m_animator->setSecondState();
        QTRY_COMPARE(m_dial->Level(), 50.0);
        m_animator->setFirstState();
        QTRY_COMPARE(m_dial->Level(), 5.0);
    }

    void requestsBeforeStartAndForTheCurrentState()
    {
        Make(150, false);
        // Before the machine runs the value is set at once and the machine starts there,
        // without animation. setSecondState(on) and setFirstState(!on) ask for the same state.
        m_animator->setSecondState(true);
        QCOMPARE(m_dial->Level(), 100.0);
        m_animator->setFirstState(false);
        m_dial->history.clear();
        QCoreApplication::processEvents();
        QCOMPARE(m_log->Take(), Words("SecondStateEntered() SecondStateEntered(true)"));
        QTest::qWait(50);
        QVERIFY2(m_dial->history.isEmpty() || m_dial->history == QVector<qreal>{100.0}, "the request was animated");
        // At rest, asking for the state it is in does nothing.
        m_dial->history.clear();
        m_animator->setFirstState(false);
        m_animator->setSecondState();
        Q_EMIT m_animator->EnterSecondState();
        QTest::qWait(60);
        QCOMPARE(m_log->Take(), QStringList());
        QVERIFY(m_dial->history.isEmpty());
        m_animator->setSecondState(false);
        QTRY_COMPARE(m_dial->Level(), 0.0);
        // Nor during the entry animation of that state.
        m_animator->setFirstState(false);
        m_log->Take();
        m_animator->setSecondState();
        QCOMPARE(m_log->Take(), QStringList());
        QTRY_COMPARE(m_dial->Level(), 100.0);
    }

    void reversalTurnsRoundFromTheCurrentValue()
    {
        Make(600);
        m_animator->setSecondState();
        m_dial->findChild<QPropertyAnimation*>()->setCurrentTime(300); // half way, as its clock would put it
        m_dial->history.clear();
        m_animator->setFirstState();
        QTRY_COMPARE(m_dial->Level(), 0.0);
        // Back from where it was: no jump to either end, and downwards all the way.
        QVERIFY(m_dial->history.size() > 2 && qAbs(m_dial->history.first() - 50.0) < 15.0);
        QVERIFY(TestSupport::IsMonotonic(m_dial->history, false));
    }

    void missingAnimationIsReported()
    {
        const LogCapture::Mark mark;
        TwoStateAnimator animator(nullptr, 0, 1, nullptr);
        animator.setSecondState();
        animator.setFirstValue(3);
        QCOMPARE(mark.Texts(), QStringList("4 TwoStateAnimator: no animation or no animated object; the animator does nothing"));
    }
};

QTEST_MAIN(TestTwoStateAnimator)
#include "tst_two_state_animator.moc"
