#include <qt_halvo/animation/card_animation_widget.h>
#include <qt_halvo/animation/card_widget.h>

#include "open_close_test_support.h"

#include <QtTest/QtTest>
#include <QtWidgets/QLabel>

using OrvantaQT::CardAnimationWidget;
using OrvantaQT::CardWidget;

namespace {

// The rest signals of leaving one face and coming to rest on a face.
QStringList Moved(bool fromClosed, bool toClosed)
{
    const QString from = fromClosed ? QStringLiteral("Collapsed") : QStringLiteral("Expanded");
    const QString to = toClosed ? QStringLiteral("Collapsed") : QStringLiteral("Expanded");
    return {from + "(false)", to + "()", to + "(true)"};
}

// A card with two faces, recording its signals and every step of its progress.
struct Fixture
{
    explicit Fixture(int pages = 2)
    {
        for (int i = 0; i < pages; ++i)
            card.addWidget(new QLabel(i == 0 ? QStringLiteral("opened") : QStringLiteral("closed")));
        card.resize(200, 120);
        RecordRestSignals(&card, &log);
        QObject::connect(&card, &CardWidget::Expanding, [this] {
            progress << Progress();
            animationPageShown = animationPageShown && AnimationPage() && card.currentWidget() == AnimationPage();
        });
    }

    void Show()
    {
        card.show();
        QVERIFY(QTest::qWaitForWindowExposed(&card));
        QTRY_COMPARE(log, (QStringList{"Expanded()", "Expanded(true)"}));
        Clear();
    }

    void Clear()
    {
        log.clear();
        progress.clear();
        animationPageShown = true;
    }

    CardAnimationWidget* AnimationPage() const { return card.findChild<CardAnimationWidget*>(); }
    int Progress() const { return card.property("card_progress").toInt(); }
    bool RestsOn(int page) const { return card.currentIndex() == page && Progress() == page * 100; }

    QStringList log;
    QVector<int> progress;
    bool animationPageShown = true;
    CardWidget card; // last, so it goes first
};

} // namespace

class TestCardWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsOpenedAndIgnoresEarlyRequests();
    void transitions_data();
    void transitions();
    void cutShort_data();
    void cutShort();
    void styledCurveReachesTheAnimationPage();
};

void TestCardWidget::startsOpenedAndIgnoresEarlyRequests()
{
    Fixture f;
    f.card.collapse();
    f.card.reverseState();
    f.Show();
    QTest::qWait(50);
    QVERIFY(f.log.isEmpty());
    QVERIFY(f.RestsOn(0));
    QVERIFY(!f.AnimationPage());
}

void TestCardWidget::transitions_data()
{
    QTest::addColumn<bool>("closing");
    QTest::addColumn<QString>("turn"); // how it is turned round half way, if at all
    for (const bool closing : {true, false}) {
        const char* way = closing ? "closing" : "opening";
        QTest::addRow("%s", way) << closing << QString();
        QTest::addRow("%s, turned by %s", way, closing ? "DoExpand()" : "DoCollapse()") << closing << "request";
        QTest::addRow("%s, turned by ReverseState()", way) << closing << "ReverseState()";
    }
}

// Through the animation page, steadily, resting only at the end: a turn goes back from
// where the transition is.
void TestCardWidget::transitions()
{
    QFETCH(bool, closing);
    QFETCH(QString, turn);
    Fixture f;
    f.Show();
    if (!closing) {
        f.card.collapse();
        QTRY_VERIFY(f.RestsOn(1));
        f.Clear();
    }

    f.card.setCollapsed(closing);
    QCOMPARE(f.log, QStringList{closing ? "Expanded(false)" : "Collapsed(false)"});
    QPointer<CardAnimationWidget> page = f.AnimationPage();
    QVERIFY(page);
    QCOMPARE(page->GetDuration(), closing ? 600 : 500);
    const bool endsClosed = closing == turn.isEmpty();
    int from = closing ? 0 : 100;
    int stepsBefore = 0;
    if (!turn.isEmpty()) {
        QTRY_VERIFY(!f.progress.isEmpty() && f.progress.last() > 20 && f.progress.last() < 80);
        from = f.progress.last();
        stepsBefore = f.progress.size();
        if (turn == QLatin1String("request"))
            f.card.setCollapsed(!closing);
        else
            f.card.reverseState();
    }

    QTRY_VERIFY(f.RestsOn(endsClosed ? 1 : 0));
    QCOMPARE(f.log, Moved(!closing, endsClosed));
    const QVector<int> steps = f.progress.mid(stepsBefore);
    QVERIFY(steps.size() > 2);
    QVERIFY(IsMonotonic(steps, endsClosed));
    QVERIFY(endsClosed ? steps.first() >= from : steps.first() <= from);
    QVERIFY(turn.isEmpty() || (steps.first() > 0 && steps.first() < 100));
    QCOMPARE(steps.last(), endsClosed ? 100 : 0);
    QVERIFY(f.animationPageShown);
    QTRY_VERIFY(!page);
}

void TestCardWidget::cutShort_data()
{
    QTest::addColumn<int>("pages");
    QTest::addColumn<bool>("moving"); // closing when the event comes
    QTest::addColumn<QString>("event");
    QTest::addColumn<bool>("closed");
    QTest::newRow("DoShow() while closing") << 2 << true << "DoShow()" << false;
    QTest::newRow("DoHide() while closing") << 2 << true << "DoHide()" << true;
    QTest::newRow("DoHide() while opened") << 2 << false << "DoHide()" << true;
    // The animation page's pictures have the old size.
    QTest::newRow("resize while closing") << 2 << true << "resize" << true;
    // Stopped where it is; started afresh, the machine settles opened.
    QTest::newRow("Pause() and Resume() while closing") << 2 << true << "Pause()" << false;
    QTest::newRow("one page: no animation page") << 1 << true << QString() << true;
}

void TestCardWidget::cutShort()
{
    QFETCH(int, pages);
    QFETCH(bool, moving);
    QFETCH(QString, event);
    QFETCH(bool, closed);
    Fixture f(pages);
    f.Show();
    if (moving) {
        f.card.collapse();
        QCOMPARE(bool(f.AnimationPage()), pages > 1);
        if (pages > 1)
            QTRY_VERIFY(!f.progress.isEmpty() && f.progress.last() > 10);
    }

    const QStringList log = Moved(false, closed);
    const int index = pages > 1 && closed ? 1 : 0;
    if (event == QLatin1String("DoShow()"))
        Q_EMIT f.card.DoShow();
    else if (event == QLatin1String("DoHide()"))
        Q_EMIT f.card.DoHide();
    else if (event == QLatin1String("resize"))
        f.card.resize(260, 150);
    if (event.startsWith(QLatin1String("Do"))) { // a jump comes to rest at once
        QCOMPARE(f.log, log);
        QCOMPARE(f.card.currentIndex(), index);
    }
    if (event == QLatin1String("Pause()")) {
        QSignalSpy stopped(f.card.findChild<QStateMachine*>(), &QStateMachine::stopped);
        f.card.Pause();
        QTRY_COMPARE(stopped.count(), 1);
        const int paused = f.Progress();
        QVERIFY(paused < 100);
        QTest::qWait(100);
        QCOMPARE(f.Progress(), paused);
        f.card.expand(); // not running: ignored
        QCOMPARE(f.log, QStringList{"Expanded(false)"});
        f.card.Resume();
    }

    QTRY_COMPARE(f.log, log);
    QTRY_VERIFY(!f.AnimationPage());
    QTRY_COMPARE(f.Progress(), closed ? 100 : 0);
    QCOMPARE(f.card.currentIndex(), index);
}

void TestCardWidget::styledCurveReachesTheAnimationPage()
{
    Fixture f;
    f.card.setStyleSheet(
        QStringLiteral("OrvantaQT--CardWidget { qproperty-overlayCurveType: InQuad; qproperty-blurRadius: 7; }"));
    f.Show();
    QCOMPARE(f.card.GetBlurRadius(), 7u);
    f.card.collapse();
    // Closing, the overlay comes up over the second half: InQuad half way through it.
    CardAnimationWidget* page = f.AnimationPage();
    page->SetProgress(75);
    QCOMPARE(page->OverlayOffset(), page->height() / 4);

    const QMetaObject* meta = f.card.metaObject();
    for (const char* name : {"overlayCurveType", "blurCurveType", "blurRadius"})
        QVERIFY(meta->property(meta->indexOfProperty(name)).reset(&f.card));
    QCOMPARE(f.card.GetOverlayCurveType(), QEasingCurve::OutQuart);
    QCOMPARE(f.card.GetBlurCurveType(), QEasingCurve::Linear);
    QCOMPARE(f.card.GetBlurRadius(), 30u);
}

QTEST_MAIN(TestCardWidget)
#include "tst_card_widget.moc"
