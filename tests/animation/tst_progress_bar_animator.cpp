#include <qt_halvo/animation/progress_bar_animator.h>

#include "test_support.h"

using OrvantaQT::ProgressBarAnimator;

class TestProgressBarAnimator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The bar moves one way to the new value; a change on the way turns round from where
    // the bar is.
    void animatesAndTurnsRound()
    {
        QProgressBar bar;
        bar.setRange(0, 200);
        auto* animator = new ProgressBarAnimator(&bar);
        animator->SetDuration(200);
        animator->SetEasing(QEasingCurve::Linear);
        QVector<int> values;
        connect(&bar, &QProgressBar::valueChanged, this, [&values](int value) { values << value; });
        animator->SetValue(150);
        QCOMPARE(animator->GetValue(), 150);
        QTRY_VERIFY(values.size() >= 3 && values.last() >= 40);
        const int turnedAt = bar.value();
        QVERIFY(turnedAt < 150 && TestSupport::IsMonotonic(values, true) && values.first() < 20);
        values.clear();
        animator->SetValue(10);
        QTRY_COMPARE(bar.value(), 10);
        QVERIFY(TestSupport::IsMonotonic(values, false) && values.size() > 2);
        QVERIFY2(values.first() <= turnedAt && values.first() > turnedAt - 20, "no jump back to the start");
        // Done: the same value again changes nothing.
        values.clear();
        animator->SetValue(10);
        QTest::qWait(30);
        QVERIFY(values.isEmpty() && !animator->IsAnimating());
        // Moved by someone else, the bar is brought back.
        bar.setValue(3);
        animator->SetValue(10);
        QTRY_COMPARE(bar.value(), 10);
    }
    // Busy shows the style's sweep (a 0..0 range) and comes back to the range and the last
    // value asked for, also one asked for while busy.
    void busyAndBack()
    {
        QProgressBar bar;
        bar.setRange(5, 50);
        bar.setValue(20);
        auto* animator = new ProgressBarAnimator(&bar);
        animator->SetBusy(true);
        QCOMPARE(QVector<int>({bar.minimum(), bar.maximum()}), QVector<int>({0, 0}));
        animator->SetValue(40);
        QVERIFY(!animator->IsAnimating());
        animator->SetBusy(false);
        QCOMPARE(QVector<int>({bar.minimum(), bar.maximum(), bar.value()}), QVector<int>({5, 50, 40}));
        QCOMPARE(bar.text(), QString("77%"));
        animator->SetValue(45); // no longer busy: moves
        QVERIFY(animator->IsAnimating());
        // A range the host sets while busy stays.
        animator->SetBusy(true);
        QCOMPARE(bar.maximum(), 0);
        bar.setRange(0, 10);
        animator->SetBusy(false);
        QCOMPARE(QVector<int>({bar.minimum(), bar.maximum(), bar.value()}), QVector<int>({0, 10, 10}));
    }
    void setAtOnce_data()
    {
        QTest::addColumn<bool>("animationsOff");
        QTest::addColumn<int>("duration");
        QTest::newRow("animations off") << true << 400;
        QTest::newRow("duration 0") << false << 0;
    }
    void setAtOnce()
    {
        QFETCH(bool, animationsOff);
        QFETCH(int, duration);
        TestSupport::StillStyle still;
        QProgressBar bar;
        if (animationsOff)
            bar.setStyle(&still);
        auto* animator = new ProgressBarAnimator(&bar);
        animator->SetDuration(duration);
        animator->SetValue(60);
        QCOMPARE(bar.value(), 60);
    }
    void badInputAndDeletion()
    {
        const LogCapture::Mark mark;
        ProgressBarAnimator lone(nullptr);
        lone.SetValue(3), lone.SetBusy(true);
        auto* bar = new QProgressBar;
        bar->setRange(0, 100);
        auto* animator = new ProgressBarAnimator(bar);
        animator->SetDuration(-1);
        animator->SetValue(140);
        QCOMPARE(animator->GetValue(), 100);
        QCOMPARE(mark.Texts(), QStringList({"4 ProgressBarAnimator: no progress bar to drive; it does nothing",
                                            "3 ProgressBarAnimator: a negative duration (-1 ms) is ignored",
                                            "3 ProgressBarAnimator: 140 is outside the bar's range 0..100; 100 is shown"}));
        QTRY_VERIFY(bar->value() > 0);
        delete bar; // mid-animation, with its animator
        QTest::qWait(30);
    }
};

QTEST_MAIN(TestProgressBarAnimator)
#include "tst_progress_bar_animator.moc"
