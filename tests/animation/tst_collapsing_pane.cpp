#include <qt_halvo/animation/collapsing_pane.h>

#include "test_support.h"

using OrvantaQT::CollapsingPane;
using TestSupport::Words;

class TestCollapsingPane : public QObject
{
    Q_OBJECT

    std::unique_ptr<QWidget> m_window;
    CollapsingPane* m_pane = nullptr;
    QPointer<QLabel> m_content; // a 60 x 40 red swatch, to know the snapshot by
    std::unique_ptr<TestSupport::SignalLog> m_log;
    QVector<int> m_heights, m_times, m_shown; // on every step: the maximum height, the time into the motion, the height
    bool m_behindSnapshot = true; // on every step: the snapshot shown, the content hidden
    // A pane with a swatch in a 300 x 400 window not shown yet, above a stretch (its minimum
    // height decides its height) or alone (opened, it has more room than its content needs).
    void Make(bool stretch)
    {
        m_window.reset(new QWidget);
        m_window->resize(300, 400);
        auto* layout = new QVBoxLayout(m_window.get());
        layout->addWidget(m_pane = new CollapsingPane);
        if (stretch)
            layout->addStretch();
        QPixmap swatch(60, 40);
        swatch.fill(Qt::red);
        (m_content = new QLabel)->setPixmap(swatch);
        m_pane->setWidget(m_content);
        m_log.reset(new TestSupport::SignalLog(m_pane, {"Collapsed()", "Collapsed(bool)", "Expanded()", "Expanded(bool)"}));
        m_heights.clear(), m_times.clear(), m_shown.clear(), m_behindSnapshot = true;
        QAbstractAnimation* motion = m_pane->findChild<QStateMachine*>()->defaultAnimations().first(); // the maximum height's
        connect(m_pane, &CollapsingPane::Expanding, this, [this, motion] {
            m_heights << m_pane->maximumHeight(), m_times << motion->currentTime(), m_shown << m_pane->height();
            m_behindSnapshot = m_behindSnapshot && Snapshot()->isVisible() && !(m_content && m_content->isVisible());
        });
    }
    QLabel* Snapshot() const { return m_pane->findChild<QLabel*>(QString(), Qt::FindDirectChildrenOnly); }
    // Opened: free in height, the live content in place, as wide as the pane and of its own
    // height. Closed: hidden, of no height.
    bool Rests(bool opened) const
    {
        const QWidget* content = m_pane->widget();
        return m_pane->isVisible() == opened && m_pane->minimumHeight() == 0 && m_pane->maximumHeight() == (opened ? QWIDGETSIZE_MAX : 0)
            && (!opened || (!Snapshot()->isVisible() && m_pane->layout()->count() == 1 && content->isVisible() && content->x() == 0
                            && content->width() == m_pane->width() && content->height() == std::max(content->minimumHeight(), content->sizeHint().height())));
    }

private Q_SLOTS:
    void requests_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QStringList>("logged");
        QTest::addColumn<int>("height"); // at rest, and where the last motion, if any, went
        const QStringList C = Words("Collapsed() Collapsed(true)"), E = Words("Expanded() Expanded(true)");
        const QStringList c{"Collapsed(false)"}, e{"Expanded(false)"};
        // Before the pane runs ("run" shows it) requests choose where it starts, at once.
        QTest::newRow("nothing") << "run" << C << 0;
        QTest::newRow("expand()") << "expand run" << E << 40;
        QTest::newRow("setCollapsed(false) after collapse()") << "collapse uncollapse run" << E << 40;
        QTest::newRow("SetInitiallyOpened(true)") << "initially run" << E << 40;
        QTest::newRow("ResetInitiallyOpened()") << "initially reset run" << C << 0;
        // Afterwards show and hide put it at rest at once, also half way; it ignores requests
        // for the state it rests in.
        QTest::newRow("its own state, opened") << "expand run expand uncollapse show" << E << 40;
        QTest::newRow("hide() when opened") << "expand run hide" << E + e + C << 0;
        QTest::newRow("SetInitiallyOpened(true) when closed") << "run initially" << C + c + E << 40;
        QTest::newRow("ResetInitiallyOpened() when opened") << "expand run reset" << E + e + C << 0;
        QTest::newRow("show() half way") << "Linear:4000 run expand half show" << C + c + E << 40;
        QTest::newRow("hide() half way") << "Linear:4000 expand run collapse half hide" << E + e + C << 0;
        // Motions follow the easing and duration (set by name from a style sheet, or reset) from where the pane
        // is; a turn keeps the height to open to, leaving the closed state takes the content's.
        QTest::newRow("opening") << "run expand" << C + c + E << 40;
        QTest::newRow("closing") << "OutQuad:800 expand run collapse" << E + e + C << 0;
        QTest::newRow("opening by ReverseState()") << "InOutQuad:900 run reverse" << C + c + E << 40;
        QTest::newRow("closing by ReverseState(), reset") << "OutQuad:800 unstyle expand run reverse" << E + e + C << 0;
        QTest::newRow("opening, turned") << "Linear:1500 run expand half collapse" << C + c + C << 0;
        QTest::newRow("closing, turned") << "Linear:1500 expand run collapse half grow expand" << E + e + E << 40;
        QTest::newRow("closing, turned by ReverseState()") << "Linear:1500 expand run collapse half grow reverse" << E + e + E << 40;
        QTest::newRow("opening to the content's new height") << "run grow expand" << C + c + E << 70;
        QTest::newRow("opening to new content") << "roomy run replace expand" << C + c + E << 120;
    }
    void requests()
    {
        QFETCH(QString, script);
        QFETCH(QStringList, logged);
        QFETCH(int, height);
        QVERIFY(!CollapsingPane().isVisible());
        Make(!script.startsWith("roomy"));
        QEasingCurve curve(QEasingCurve::OutQuart);
        int duration = 700, from = 0, stepsBefore = 0;
        const QHash<QString, std::function<void()>> steps{
            {"expand", [&] { m_pane->expand(); }}, {"collapse", [&] { m_pane->collapse(); }}, {"reverse", [&] { m_pane->reverseState(); }},
            {"show", [&] { m_pane->setVisible(true); }}, {"hide", [&] { m_pane->hide(); }}, {"uncollapse", [&] { m_pane->setCollapsed(false); }},
            {"initially", [&] { m_pane->SetInitiallyOpened(true); }}, {"reset", [&] { m_pane->ResetInitiallyOpened(); }},
            {"grow", [&] { m_content->setMinimumHeight(70); }}, {"half", [&] { QTRY_VERIFY(!m_heights.isEmpty() && qAbs(m_heights.last() - 20) < 10); }},
            {"run", [&] { QVERIFY(TestSupport::ShowAndWait(m_window.get())); QTRY_VERIFY(!m_log->lines.isEmpty()); }}, {"roomy", [] {}},
            {"replace", [&] { // the same content stays; new content goes in at once, the old one later
                 m_pane->setWidget(m_content);
                 QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                 m_pane->setWidget(new QLabel("replacement"));
                 m_pane->widget()->setMinimumHeight(120);
                 QVERIFY(m_content);
                 QTRY_VERIFY(!m_content);
             }},
            {"unstyle", [&] { QVERIFY(m_pane->metaObject()->property(m_pane->metaObject()->indexOfProperty("easing")).reset(m_pane)
                                      && m_pane->metaObject()->property(m_pane->metaObject()->indexOfProperty("duration")).reset(m_pane)); }}};
        for (const QString& step : script.split(' ')) {
            if (step.contains(':')) {
                m_pane->setStyleSheet(QString("OrvantaQT--CollapsingPane { qproperty-easing: %1; qproperty-duration: %2; }").arg(step.section(':', 0, 0), step.section(':', 1)));
                m_pane->ensurePolished();
                curve.setType(QEasingCurve::Type(QMetaEnum::fromType<QEasingCurve::Type>().keyToValue(qPrintable(step.section(':', 0, 0)))));
                duration = step.section(':', 1).toInt();
                continue;
            }
            if (step == "unstyle")
                curve.setType(QEasingCurve::OutQuart), duration = 700;
            from = m_pane->maximumHeight() == QWIDGETSIZE_MAX ? m_pane->height() : m_pane->maximumHeight();
            stepsBefore = m_heights.size();
            steps[step]();
        }
        QTRY_VERIFY(Rests(height > 0));
        const int moved = m_heights.size();
        QTest::qWait(100);
        QVERIFY(m_log->lines == logged && m_heights.size() == moved && m_behindSnapshot);
        // Every step of the last motion where its easing and duration put it, and the pane that high.
        const QString last = script.section(' ', -1);
        const bool animated = last == "expand" || last == "collapse" || last == "reverse";
        QVERIFY(animated ? moved > stepsBefore + 2 && m_heights.last() == height : moved == stepsBefore);
        for (int i = stepsBefore; i < moved; ++i) {
            const qreal expected = from + (height - from) * curve.valueForProgress(m_times[i] / qreal(duration));
            QVERIFY2(m_heights[i] == from || qAbs(m_heights[i] - expected) <= 1, qPrintable(QString::number(i)));
        }
        QVERIFY(!animated || std::any_of(m_shown.cbegin(), m_shown.cend(), [](int shown) { return shown > 0 && shown < 40; }));
        QVERIFY(!animated || !m_content || Snapshot()->pixmap(Qt::ReturnByValue).toImage().pixelColor(59, 30) == Qt::red);
    }
};

QTEST_MAIN(TestCollapsingPane)
#include "tst_collapsing_pane.moc"
