#include <qt_halvo/animation/card_animation_widget.h>
#include <qt_halvo/animation/card_widget.h>

#include "open_close_test_support.h"

#include <QtTest/QtTest>
#include <QtWidgets/QLabel>

using OrvantaQT::CardAnimationWidget;
using OrvantaQT::CardWidget;

namespace {

QLabel* Face(const QString& text, const QColor& colour)
{
    auto* face = new QLabel(text);
    face->setAutoFillBackground(true);
    QPalette palette = face->palette();
    palette.setColor(QPalette::Window, colour);
    face->setPalette(palette);
    return face;
}

// A shown card with two faces, recording its signals and every step of its progress.
struct Fixture
{
    explicit Fixture(int pages = 2)
    {
        card = new CardWidget;
        card->addWidget(Face(QStringLiteral("opened"), Qt::red));
        if (pages > 1)
            card->addWidget(Face(QStringLiteral("closed"), Qt::blue));
        card->resize(200, 120);
        RecordRestSignals(card, &log);
        QObject::connect(card, &CardWidget::Expanding, [this] {
            progress << card->property("card_progress").toInt();
            animationPageShown = animationPageShown && AnimationPage() && card->currentWidget() == AnimationPage();
        });
    }
    ~Fixture() { delete card; }

    void Show()
    {
        card->show();
        QVERIFY(QTest::qWaitForWindowExposed(card));
        QTRY_COMPARE(log, (QStringList{"Expanded()", "Expanded(true)"}));
        log.clear();
    }

    CardAnimationWidget* AnimationPage() const { return card->findChild<CardAnimationWidget*>(); }

    void ClearRecords()
    {
        log.clear();
        progress.clear();
        animationPageShown = true;
    }

    bool RestsOn(int page) const
    {
        return card->currentIndex() == page && card->property("card_progress").toInt() == page * 100;
    }

    CardWidget* card = nullptr;
    QStringList log;
    QVector<int> progress;
    bool animationPageShown = true;
};

} // namespace

class TestCardWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsOpenedAndIgnoresEarlyRequests();
    void closesAndOpensThroughTheAnimationPage();
    void opposingRequestTurnsTheTransitionRound_data();
    void opposingRequestTurnsTheTransitionRound();
    void showAndHideJump();
    void onePageChangesStateWithoutAnimationPage();
    void resizeDuringTransitionDropsTheAnimationPage();
    void pauseStopsAndResumeSettlesOpened();
    void curveTypesReachTheNextTransition();
};

void TestCardWidget::startsOpenedAndIgnoresEarlyRequests()
{
    Fixture f;
    f.card->collapse();
    f.card->reverseState();
    f.Show();
    QTest::qWait(50);
    QVERIFY(f.log.isEmpty());
    QVERIFY(f.RestsOn(0));
    QVERIFY(!f.AnimationPage());
}

void TestCardWidget::closesAndOpensThroughTheAnimationPage()
{
    Fixture f;
    f.Show();

    f.card->collapse();
    QCOMPARE(f.log, QStringList{"Expanded(false)"});
    QPointer<CardAnimationWidget> page = f.AnimationPage();
    QVERIFY(page);
    QCOMPARE(f.card->currentWidget(), page.data());
    QCOMPARE(page->GetDuration(), 600);
    QTRY_COMPARE(f.log, (QStringList{"Expanded(false)", "Collapsed()", "Collapsed(true)"}));
    QVERIFY(f.progress.size() > 2);
    QVERIFY(IsMonotonic(f.progress, true));
    QCOMPARE(f.progress.last(), 100);
    QVERIFY(f.animationPageShown);
    QVERIFY(f.RestsOn(1));
    QTRY_VERIFY(!page);

    f.ClearRecords();
    f.card->expand();
    QCOMPARE(f.log, QStringList{"Collapsed(false)"});
    QCOMPARE(f.AnimationPage()->GetDuration(), 500);
    QTRY_COMPARE(f.log, (QStringList{"Collapsed(false)", "Expanded()", "Expanded(true)"}));
    QVERIFY(IsMonotonic(f.progress, false));
    QCOMPARE(f.progress.last(), 0);
    QVERIFY(f.animationPageShown);
    QVERIFY(f.RestsOn(0));
}

void TestCardWidget::opposingRequestTurnsTheTransitionRound_data()
{
    QTest::addColumn<bool>("closing");
    QTest::addColumn<bool>("byReverseState");
    QTest::newRow("closing, DoExpand()") << true << false;
    QTest::newRow("closing, ReverseState()") << true << true;
    QTest::newRow("opening, DoCollapse()") << false << false;
    QTest::newRow("opening, ReverseState()") << false << true;
}

void TestCardWidget::opposingRequestTurnsTheTransitionRound()
{
    QFETCH(bool, closing);
    QFETCH(bool, byReverseState);
    Fixture f;
    f.Show();
    if (!closing) {
        f.card->collapse();
        QTRY_VERIFY(f.RestsOn(1));
    }
    f.ClearRecords();

    f.card->setCollapsed(closing);
    QTRY_VERIFY(!f.progress.isEmpty() && f.progress.last() > 20 && f.progress.last() < 80);
    const int turning = f.progress.last();
    const int stepsBefore = f.progress.size();
    QPointer<CardAnimationWidget> page = f.AnimationPage();
    if (byReverseState)
        f.card->reverseState();
    else
        f.card->setCollapsed(!closing);

    QTRY_VERIFY(f.RestsOn(closing ? 0 : 1));
    const QVector<int> after = f.progress.mid(stepsBefore);
    QVERIFY(after.size() > 1);
    QVERIFY(IsMonotonic(after, !closing));
    QVERIFY(closing ? after.first() <= turning : after.first() >= turning);
    QVERIFY(after.first() > 0 && after.first() < 100);
    QCOMPARE(f.log.last(), closing ? QStringLiteral("Expanded(true)") : QStringLiteral("Collapsed(true)"));
    // The moving states are not rest states: nothing was left or entered on the way.
    QCOMPARE(f.log.size(), 3);
    QVERIFY(f.animationPageShown);
}

void TestCardWidget::showAndHideJump()
{
    Fixture f;
    f.Show();
    f.card->collapse();
    QTRY_VERIFY(!f.progress.isEmpty());
    Q_EMIT f.card->DoShow();
    QCOMPARE(f.log, (QStringList{"Expanded(false)", "Expanded()", "Expanded(true)"}));
    QCOMPARE(f.card->currentIndex(), 0);
    QTRY_VERIFY(!f.AnimationPage());

    f.ClearRecords();
    Q_EMIT f.card->DoHide();
    QCOMPARE(f.log, (QStringList{"Expanded(false)", "Collapsed()", "Collapsed(true)"}));
    QCOMPARE(f.card->currentIndex(), 1);
    QTRY_VERIFY(!f.AnimationPage());
}

void TestCardWidget::onePageChangesStateWithoutAnimationPage()
{
    Fixture f(1);
    f.Show();
    f.card->collapse();
    QVERIFY(!f.AnimationPage());
    QTRY_COMPARE(f.log, (QStringList{"Expanded(false)", "Collapsed()", "Collapsed(true)"}));
    QVERIFY(f.animationPageShown == f.progress.isEmpty());
}

void TestCardWidget::resizeDuringTransitionDropsTheAnimationPage()
{
    Fixture f;
    f.Show();
    f.card->collapse();
    QPointer<CardAnimationWidget> page = f.AnimationPage();
    QTRY_VERIFY(!f.progress.isEmpty());
    f.card->resize(260, 150);
    QTRY_VERIFY(!page);
    QTRY_VERIFY(f.RestsOn(1));
    QCOMPARE(f.log.last(), QStringLiteral("Collapsed(true)"));
}

void TestCardWidget::pauseStopsAndResumeSettlesOpened()
{
    Fixture f;
    f.Show();
    QSignalSpy stopped(f.card->findChild<QStateMachine*>(), &QStateMachine::stopped);
    f.card->collapse();
    QTRY_VERIFY(!f.progress.isEmpty() && f.progress.last() > 10);
    f.card->Pause();
    QTRY_COMPARE(stopped.count(), 1);
    const int paused = f.card->property("card_progress").toInt();
    QTest::qWait(100);
    QCOMPARE(f.card->property("card_progress").toInt(), paused);
    QVERIFY(paused < 100);
    f.card->expand(); // not running: ignored
    QCOMPARE(f.log, QStringList{"Expanded(false)"});

    f.card->Resume();
    QTRY_COMPARE(f.log, (QStringList{"Expanded(false)", "Expanded()", "Expanded(true)"}));
    QTRY_VERIFY(f.RestsOn(0));
}

void TestCardWidget::curveTypesReachTheNextTransition()
{
    Fixture f;
    f.card->setStyleSheet(QStringLiteral("OrvantaQT--CardWidget { qproperty-overlayCurveType: InQuad; qproperty-blurRadius: 7; }"));
    f.card->ensurePolished();
    QCOMPARE(f.card->GetOverlayCurveType(), QEasingCurve::InQuad);
    QCOMPARE(f.card->GetBlurRadius(), 7u);
    f.Show();

    f.card->collapse();
    CardAnimationWidget* page = f.AnimationPage();
    // Closing, the overlay comes up over the second half: InQuad half way through it.
    page->SetProgress(75);
    QCOMPARE(page->OverlayOffset(), page->height() / 4);

    const QMetaObject* meta = f.card->metaObject();
    for (const char* name : {"overlayCurveType", "blurCurveType", "blurRadius"})
        QVERIFY(meta->property(meta->indexOfProperty(name)).reset(f.card));
    QCOMPARE(f.card->GetOverlayCurveType(), QEasingCurve::OutQuart);
    QCOMPARE(f.card->GetBlurCurveType(), QEasingCurve::Linear);
    QCOMPARE(f.card->GetBlurRadius(), 30u);
}

QTEST_MAIN(TestCardWidget)
#include "tst_card_widget.moc"
