#include <qt_halvo/animation/animated_pixmap_render.h>
#include <qt_halvo/animation/custom_stacked_widget.h>
#include <qt_halvo/animation/freeze_pixmap_wrapper.h>

#include "test_support.h"

using OrvantaQT::AnimatedPixmapRender;
using OrvantaQT::CustomStackedWidget;
using TestSupport::Render;

class TestCustomStackedWidget : public QObject
{
    Q_OBJECT

    std::unique_ptr<CustomStackedWidget> m_stack;
    std::unique_ptr<TestSupport::SignalLog> m_log;
    // Three pages of red, green and blue, 30, 50 and 70 high, and short slides.
    void Make()
    {
        m_stack.reset(new CustomStackedWidget);
        m_stack->SetDuration(120);
        for (const char* colour : {"red", "lime", "blue"}) {
            m_stack->AddPage(new QLabel(colour));
            m_stack->GetWidget(m_stack->GetCount() - 1)->setStyleSheet(QString("background: %1; min-height: %2px").arg(colour).arg(10 + 20 * m_stack->GetCount()));
        }
        m_stack->resize(240, 160);
        m_log.reset(new TestSupport::SignalLog(m_stack.get(), {"CurrentIndexChanged(int)", "Finished()"}));
    }
    AnimatedPixmapRender* Slide() const { return m_stack->findChild<AnimatedPixmapRender*>(); }

private Q_SLOTS:
    void slidesToTheRequestedPage_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<QString>("script"); // of slots, functions and their pages, and the freezing page
        QTest::addColumn<int>("target");
        QTest::addColumn<int>("direction"); // 0 and 1 across, 2 and 3 down
        // Next and previous wrap round, and go the other way from an index request.
        QTest::newRow("next") << 0 << "OnShowNext" << 1 << 1;
        QTest::newRow("next from the last") << 2 << "OnShowNext" << 0 << 1;
        QTest::newRow("previous") << 2 << "OnShowPrevious" << 1 << 0;
        QTest::newRow("previous from the first") << 0 << "OnShowPrevious" << 2 << 0;
        QTest::newRow("current as next") << 1 << "OnShowCurrentAsNext" << 1 << 0;
        QTest::newRow("current as previous") << 1 << "OnShowCurrentAsPrevious" << 1 << 1;
        QTest::newRow("higher index") << 0 << "index 2" << 2 << 0;
        QTest::newRow("lower index") << 2 << "index 0" << 0 << 1;
        QTest::newRow("down, higher index") << 0 << "index 1" << 1 << 2;
        QTest::newRow("up, lower widget") << 2 << "widget 0" << 0 << 3;
        QTest::newRow("styled: down, linear, 9 pixels short") << 1 << "OnShowPrevious" << 0 << 2;
        // A freezing page stands in for the current page until the slide ends; slides count
        // from the page it stands for, among the real pages.
        QTest::newRow("freezing, next from the last") << 2 << "freeze OnShowNext" << 0 << 1;
        QTest::newRow("freezing, previous from the first") << 0 << "freeze OnShowPrevious" << 2 << 0;
        QTest::newRow("freezing stopped, next") << 2 << "freeze stop page1 OnShowNext" << 1 << 1;
    }
    void slidesToTheRequestedPage()
    {
        QFETCH(int, from);
        QFETCH(QString, script);
        QFETCH(int, target);
        QFETCH(int, direction);
        Make();
        const bool styled = QTest::currentDataTag() == QLatin1String("styled: down, linear, 9 pixels short");
        m_stack->SetVerticalOrientation(direction > 1 && !styled); // else by the names style sheets and forms use
        m_stack->setStyleSheet(styled ? "OrvantaQT--CustomStackedWidget { qproperty-Alignment: Vertical; qproperty-TimeLineCurveShape: "
                                        "LinearCurve; qproperty-Offset: 9; }" : "");
        m_stack->setCurrentIndex(from);
        QVERIFY(TestSupport::ShowAndWait(m_stack.get()));
        QPointer<QWidget> freezing;
        for (QStringList steps = script.split(' '); !steps.isEmpty();) {
            const QString step = steps.takeFirst();
            if (step == "freeze") {
                const QImage page = Render(m_stack->currentWidget());
                m_stack->StartShowFreezingPage();
                freezing = m_stack->currentWidget();
                QVERIFY(qobject_cast<OrvantaQT::FreezePixmapWrapper*>(freezing) && Render(freezing) == page);
            } else if (step == "stop") {
                m_stack->StopShowFreezingPage();
            } else if (step == "page1") {
                m_stack->ShowPage1(true);
            } else if (step == "index") {
                m_stack->SetCurrentPageIndex(steps.takeFirst().toInt());
            } else if (step == "widget") {
                m_stack->SetCurrentPageWidget(m_stack->GetWidget(steps.takeFirst().toInt()));
            } else {
                QMetaObject::invokeMethod(m_stack.get(), step.toLatin1());
            }
            m_log->Note(QString::number(m_stack->GetCount())); // at once: the pages, the freezing page and a slide
        }
        QPointer<AnimatedPixmapRender> slide = Slide();
        QVERIFY(slide && m_stack->currentWidget() == slide && slide->GetDirection() == direction);
        QTimeLine& timeLine = slide->TimeLine();
        QCOMPARE(timeLine.endFrame(), (direction > 1 ? slide->height() : slide->width()) - (styled ? 9 : 0));
        QCOMPARE(timeLine.easingCurve().type(), styled ? QEasingCurve::Linear : QEasingCurve::InCurve);
        // Requests while it slides are dropped, not queued.
        m_stack->SetCurrentPageIndex((target + 1) % 3);
        m_stack->OnShowNext();
        QVERIFY(m_stack->findChildren<AnimatedPixmapRender*>().size() == 1 && m_stack->currentWidget() == slide);
        // At its end it shows the page it goes to, short by the offset.
        timeLine.setPaused(true);
        timeLine.setCurrentTime(timeLine.duration());
        const QImage end = Render(slide);
        QCOMPARE(end.pixelColor(5, 5), QColor(static_cast<QLabel*>(m_stack->GetWidget(target))->text()));
        QCOMPARE(end.pixelColor(5, end.height() - 3).alpha(), styled ? 0 : 255);
        timeLine.setPaused(false);
        const QString counts = script.contains("stop") ? "4 3 3 4" : script.contains("freeze") ? "4 5" : "4";
        QTRY_COMPARE(m_log->lines, TestSupport::Words(qPrintable(QString("%1 CurrentIndexChanged(%2) Finished()").arg(counts).arg(target))));
        QVERIFY(m_stack->GetCurrentPageIndex() == target && m_stack->GetCount() == 3);
        QTRY_VERIFY(!slide && !freezing);
        m_stack->OnShowNext();
        QVERIFY2(Slide(), "the next request after the end slides again");
    }
    // The slots for checkable buttons switch without a slide; the stack can take the height of
    // its current page.
    void withoutASlide()
    {
        QWidget parent; // a window would keep a minimum height of its own
        Make();
        m_stack->setParent(&parent);
        QCOMPARE(m_stack->objectName(), "__qt__passive_CustomStackedWidget");
        m_stack->SetAutoAdjustHeightEnabled(true);
        m_stack->ShowPage3(false);
        QCOMPARE(m_stack->height(), 30);
        m_stack->ShowPage3(true);
        QCOMPARE(m_stack->height(), 70);
        m_stack->SetAutoAdjustHeightEnabled(false);
        m_stack->ShowPage2(true);
        QVERIFY(m_stack->height() == 70 && m_stack->GetCurrentPageIndex() == 1 && !Slide() && m_log->lines.isEmpty());
        m_stack->RemovePage(1);
        QVERIFY(m_stack->GetCount() == 2 && m_stack->GetCurrentPageIndex() == 1);
        m_stack->setParent(nullptr);
    }
};

QTEST_MAIN(TestCustomStackedWidget)
#include "tst_custom_stacked_widget.moc"
