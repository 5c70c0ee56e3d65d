#include <qt_halvo/animation/card_animation_widget.h>
#include <qt_halvo/animation/card_widget.h>

#include "test_support.h"

using OrvantaQT::CardAnimationWidget;
using OrvantaQT::CardWidget;
using TestSupport::Words;

class TestCardWidget : public QObject
{
    Q_OBJECT

    std::unique_ptr<CardWidget> m_card;
    std::unique_ptr<TestSupport::SignalLog> m_log;
    QVector<int> m_progress; // on every step
    bool m_pageShown = true; // on every step, the animation page
    CardAnimationWidget* Page() const { return m_card->findChild<CardAnimationWidget*>(); }
    int Progress() const { return m_card->property("card_progress").toInt(); }
    bool Rests(bool closed) const { return m_card->currentIndex() == std::min(int(closed), m_card->count() - 1) && Progress() == closed * 100; }

private Q_SLOTS:
    void transitions_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QStringList>("logged");
        const QStringList C = Words("Collapsed() Collapsed(true)"), E = Words("Expanded() Expanded(true)");
        const QStringList c{"Collapsed(false)"}, e{"Expanded(false)"};
        QTest::newRow("closing") << "collapse" << e + C;
        QTest::newRow("opening") << "collapse rest uncollapse" << e + C + c + E;
        QTest::newRow("closing, turned by a request") << "collapse half expand" << e + E;
        QTest::newRow("opening, turned by a request") << "collapse rest expand half collapse" << e + C + c + C;
        QTest::newRow("closing, turned by reverseState()") << "collapse half reverseState" << e + E;
        // Jumps come to rest at once; after a resize the animation page, of the old size, goes.
        QTest::newRow("DoShow() while closing") << "collapse half DoShow" << e + E;
        QTest::newRow("DoHide() while closing") << "collapse half DoHide" << e + C;
        QTest::newRow("resize while closing") << "collapse half resize" << e + C;
        // Stopped where it is; started afresh, the machine settles opened.
        QTest::newRow("Pause() and Resume() while closing") << "collapse half pause" << e + E;
        QTest::newRow("one face: no animation page") << "alone collapse" << e + C;
    }
    // A shown card starts on its first face, the requests made before it ran ignored. Then it
    // goes through the animation page, with the curves a style sheet gave it, steadily, resting
    // only at the end; a turn goes back from where it is.
    void transitions()
    {
        QFETCH(QString, script);
        QFETCH(QStringList, logged);
        m_card.reset(new CardWidget);
        m_card->setStyleSheet("OrvantaQT--CardWidget { qproperty-overlayCurveType: InQuad; qproperty-blurCurveType: InQuad; }");
        for (int i = script.startsWith("alone") ? 1 : 0; i < 2; ++i)
            m_card->addWidget(new QLabel(QString("face %1").arg(i)));
        m_card->resize(200, 120);
        m_log.reset(new TestSupport::SignalLog(m_card.get(), {"Collapsed()", "Collapsed(bool)", "Expanded()", "Expanded(bool)"}));
        m_progress.clear(), m_pageShown = true;
        connect(m_card.get(), &CardWidget::Expanding, this, [this] {
            m_progress << Progress();
            m_pageShown = m_pageShown && Page() && m_card->currentWidget() == Page();
        });
        m_card->collapse(), m_card->reverseState();
        QVERIFY(TestSupport::ShowAndWait(m_card.get()));
        QTRY_COMPARE(m_log->lines, Words("Expanded() Expanded(true)"));
        QTest::qWait(50);
        QVERIFY(m_log->Take().size() == 2 && Rests(false) && !Page() && m_progress.isEmpty());
        int from = 0, stepsBefore = 0;
        for (const QString& step : script.split(' ')) {
            from = Progress(), stepsBefore = m_progress.size();
            if (step == "collapse" || step == "expand" || step == "uncollapse") {
                const bool leaving = Rests(step != "collapse");
                step == "uncollapse" ? m_card->setCollapsed(false) : void(QMetaObject::invokeMethod(m_card.get(), step.toLatin1()));
                QVERIFY(!leaving || (m_card->count() < 2 ? !Page() : Page()->GetDuration() == (step == "collapse" ? 600 : 500)));
                if (leaving && Page() && step == "collapse") { // the blur goes over the first half, the overlay over the second
                    const int blur = (Page()->SetProgress(25), Page()->BlurAmount()), overlay = (Page()->SetProgress(75), Page()->OverlayOffset());
                    QVERIFY(blur == Page()->height() / 4 && overlay == Page()->height() / 4);
                }
            } else if (step == "half") {
                QTRY_VERIFY(!m_progress.isEmpty() && m_progress.last() > 20 && m_progress.last() < 80);
            } else if (step == "rest") {
                QTRY_VERIFY(Rests(true) && !Page());
                m_progress.clear();
            } else if (step == "resize") {
                m_card->resize(260, 150);
            } else if (step == "pause") {
                m_card->Pause();
                QTRY_VERIFY(!m_card->findChild<QStateMachine*>()->isRunning());
                QTest::qWait(100);
                m_card->expand(); // not running: ignored
                QVERIFY(Progress() == m_progress.last() && m_log->lines.size() == 1);
                m_card->Resume();
            } else if (step != "alone") {
                QMetaObject::invokeMethod(m_card.get(), step.toLatin1(), Qt::DirectConnection);
                QVERIFY(step == "reverseState" || (m_log->lines == logged && m_card->currentIndex() == int(step == "DoHide")));
            }
        }
        const bool endsClosed = logged.last() == "Collapsed(true)";
        QTRY_VERIFY(Rests(endsClosed) && !Page());
        QCOMPARE(m_log->lines, logged);
        const QVector<int> steps = m_progress.mid(stepsBefore);
        const QString last = script.section(' ', -1);
        if (last == "collapse" || last == "expand" || last == "reverseState" || last == "resize") {
            QVERIFY(steps.size() > 2 && TestSupport::IsMonotonic(steps, endsClosed) && m_pageShown == (last != "resize" && m_card->count() > 1));
            QVERIFY((endsClosed ? steps.first() >= from : steps.first() <= from) && steps.last() == (endsClosed ? 100 : 0));
        }
    }
};

QTEST_MAIN(TestCardWidget)
#include "tst_card_widget.moc"
