#include <qt_halvo/animation/disappearing_widget.h>
#include <qt_halvo/animation/disappearing_widget_p.h>

#include "test_support.h"

using OrvantaQT::DisappearingWidget;
using OrvantaQT::LiveDisappearingWidgets;
using TestSupport::Words;

QGraphicsOpacityEffect* EffectOf(QWidget* widget) { return qobject_cast<QGraphicsOpacityEffect*>(widget->graphicsEffect()); }

class TestDisappearingWidget : public QObject
{
    Q_OBJECT

    QWidget* m_window = nullptr;
    DisappearingWidget* m_widget = nullptr;
    std::unique_ptr<TestSupport::SignalLog> m_log;
    QVector<qreal> m_opacities; // each opacity the effect was given

    // 300 ms from 10 % to 60 %; the machine starts on the next pass of the event loop.
    void Make()
    {
        m_widget = new DisappearingWidget(m_window);
        m_widget->setObjectName("pane");
        m_widget->setDuration(300);
        m_widget->setInvisibleOpacity(10);
        m_widget->setVisibleOpacity(60);
        m_log.reset(new TestSupport::SignalLog(
            m_widget, {"Appeared()", "Appeared(bool)", "Disappeared()", "Disappeared(bool)", "DebugOutput(QString)"}));
        connect(EffectOf(m_widget), &QGraphicsOpacityEffect::opacityChanged, m_log.get(),
                [this](qreal opacity) { m_opacities << opacity; });
    }
    qreal Opacity() const { return EffectOf(m_widget)->opacity(); }
    int Percent() const { return qRound(Opacity() * 100); } // a fade may end a rounding error off its level
    // What a change of state sends, a line for debugging last.
    static QStringList Entered(bool visible)
    {
        return Words(visible ? "Disappeared(false) Appeared() Appeared(true)" : "Appeared(false) Disappeared() Disappeared(true)")
               << QString("DebugOutput(pane: %1 in 300 ms)").arg(visible ? "appears to opacity 0.6" : "disappears to opacity 0.1");
    }

private Q_SLOTS:
    void init() { m_window = new QWidget; }
    void cleanup() { m_log.reset(); delete m_window; m_opacities.clear(); }

    // A slot, its argument for the visible state, and the state asked for before the loop runs.
    void requestsFadeAndSignalInOrder_data()
    {
        QTest::addColumn<QByteArray>("slot");
        QTest::addColumn<bool>("visibleArgument");
        QTest::addColumn<QString>("first");
        QTest::newRow("setAppeared, none first") << QByteArray("setAppeared") << true << QString();
        QTest::newRow("setAppeared, invisible first") << QByteArray("setAppeared") << true << "invisible";
        QTest::newRow("setDisappeared, visible first") << QByteArray("setDisappeared") << false << "visible";
        QTest::newRow("setInitialyVisible, visible first") << QByteArray("setInitialyVisible") << true << "visible";
    }
    void requestsFadeAndSignalInOrder()
    {
        QFETCH(QByteArray, slot);
        QFETCH(bool, visibleArgument);
        QFETCH(QString, first);
        const auto ask = [&](bool visible) {
            return QMetaObject::invokeMethod(m_widget, slot.constData(), Q_ARG(bool, visible == visibleArgument));
        };
        Make();
        const bool visible = first == "visible";
        QVERIFY(first.isEmpty() || ask(visible));
        QCoreApplication::processEvents();
        // Straight into the state asked for, invisible if none was, without a fade.
        QCOMPARE(m_log->Take(), Entered(visible).mid(1));
        QCOMPARE(m_opacities, QVector<qreal>{visible ? 0.6 : 0.1});
        // Later each change fades, and its state is entered as it starts.
        m_opacities.clear();
        QVERIFY(ask(!visible));
        QCOMPARE(m_log->Take(), Entered(!visible));
        QTRY_COMPARE(Percent(), visible ? 10 : 60);
        QVERIFY(m_opacities.size() > 2 && TestSupport::IsMonotonic(m_opacities, !visible));
    }

    void propertiesAreCheckedAndUsed()
    {
        Make();
        const LogCapture::Mark mark;
        m_widget->setInvisibleOpacity(0);
        m_widget->setVisibleOpacity(100);
        m_widget->setDuration(0);
        m_widget->setEasing(QEasingCurve::InQuad);
        // Out of range, opacities are clamped to 0..100 %, and a negative duration and a curve
        // type that is not predefined are ignored; only these are logged.
        m_widget->setInvisibleOpacity(-1);
        m_widget->setVisibleOpacity(101);
        m_widget->setDuration(-1);
        m_widget->setEasing(QEasingCurve::Custom);
        m_widget->setEasing(QEasingCurve::Type(QEasingCurve::NCurveTypes + 3));
        QCOMPARE(mark.Since().size(), 5);
        QCOMPARE(m_widget->getInvisibleOpacity(), 0);
        QCOMPARE(m_widget->getVisibleOpacity(), 100);
        // What is kept is used: no fade without a duration, and half way through by the curve.
        QCoreApplication::processEvents();
        m_widget->appear();
        QTRY_COMPARE(m_opacities, (QVector<qreal>{0.0, 1.0}));
        m_widget->setDuration(40);
        m_widget->disappear();
        m_widget->findChild<QPropertyAnimation*>()->setCurrentTime(20); // as the fade's clock would put it
        QCOMPARE(Opacity(), 1 - QEasingCurve(QEasingCurve::InQuad).valueForProgress(0.5));
        QTRY_COMPARE(Percent(), 0);
    }

    void listHoldsTheLiveWidgetsAndUpdateReachesThem()
    {
        QVector<DisappearingWidget*> made;
        QStringList rerenders; // switching its effect off and on is what renders a widget anew
        for (const char* name : {"a", "b", "c"}) {
            made << new DisappearingWidget(m_window);
            connect(EffectOf(made.last()), &QGraphicsEffect::enabledChanged, made.last(),
                    [&rerenders, name](bool on) { rerenders << name + QString(on ? "+" : "-"); });
        }
        made[1]->hide();
        QCOMPARE(LiveDisappearingWidgets(), made);
        made[1]->Update();
        QCOMPARE(std::exchange(rerenders, {}), Words("b- b+"));
        // All of them, hidden or not; one deleted meanwhile is skipped.
        bool deleted = false;
        connect(EffectOf(made[0]), &QGraphicsEffect::enabledChanged, made[0], [&] {
            if (!std::exchange(deleted, true))
                delete made.takeLast();
        });
        DisappearingWidget::UpdateAllVisibleWidgets();
        QCOMPARE(std::exchange(rerenders, {}), Words("a- a+ b- b+"));
        made << new DisappearingWidget(m_window);
        QCOMPARE(LiveDisappearingWidgets(), made);

        // With its effect replaced, each request logs an error and does nothing, and the
        // updates pass it by without a word.
        made[1]->setGraphicsEffect(new QGraphicsBlurEffect);
        const LogCapture::Mark mark;
        made[1]->appear();
        made[1]->Update();
        made[1]->setVisibleOpacity(50);
        QCOMPARE(mark.Since().size(), 3);
        QCOMPARE(made[1]->getVisibleOpacity(), 100);
        DisappearingWidget::UpdateAllVisibleWidgets();
        QCOMPARE(rerenders, Words("a- a+"));
        QCOMPARE(mark.Since().size(), 3);
        delete m_window;
        m_window = nullptr;
        QVERIFY(LiveDisappearingWidgets().isEmpty());
    }
};

QTEST_MAIN(TestDisappearingWidget)
#include "tst_disappearing_widget.moc"
