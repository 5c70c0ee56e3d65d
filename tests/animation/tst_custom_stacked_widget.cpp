#include <qt_halvo/animation/animated_pixmap_render.h>
#include <qt_halvo/animation/custom_stacked_widget.h>
#include <qt_halvo/animation/freeze_pixmap_wrapper.h>

#include <qt_halvo/utilities/hidpi_utils.h>

#include "log_capture.h"

#include <QtTest/QtTest>
#include <QtWidgets/QLabel>

using OrvantaQT::AnimatedPixmapRender;
using OrvantaQT::CustomStackedWidget;
using OrvantaQT::FreezePixmapWrapper;

namespace {

// A shown stack of labelled pages with short slides, recording its signals.
struct Fixture
{
    explicit Fixture(int pages = 3)
    {
        stack.SetDuration(120);
        for (int i = 0; i < pages; ++i) {
            auto* page = new QLabel(QStringLiteral("page %1").arg(i));
            page->setMinimumHeight(30 + 20 * i);
            stack.AddPage(page);
        }
        stack.resize(240, 160);
        QObject::connect(&stack, &CustomStackedWidget::CurrentIndexChanged,
                         [this](int index) { log << QStringLiteral("CurrentIndexChanged(%1)").arg(index); });
        QObject::connect(&stack, &CustomStackedWidget::Finished, [this] { log << QStringLiteral("Finished()"); });
    }

    void Show()
    {
        stack.show();
        QVERIFY(QTest::qWaitForWindowExposed(&stack));
    }

    AnimatedPixmapRender* Render() const { return stack.findChild<AnimatedPixmapRender*>(); }

    CustomStackedWidget stack;
    QStringList log;
};

QStringList Ended(int index)
{
    return {QStringLiteral("CurrentIndexChanged(%1)").arg(index), QStringLiteral("Finished()")};
}

} // namespace

class TestCustomStackedWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void slidesToTheRequestedPage_data();
    void slidesToTheRequestedPage();
    void requestsDuringASlideOrForTheCurrentPageAreIgnored();
    void showPageSwitchesAtOnceWhenChecked();
    void freezingPageStandsInAndGoesWhenTheSlideEnds();
    void heightFollowsTheCurrentPage();
    void reachableByNameFromStyleSheets();
    void badRequestsAreReported();
};

void TestCustomStackedWidget::slidesToTheRequestedPage_data()
{
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<int>("from");
    QTest::addColumn<QString>("request");
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("direction");

    // Next and previous wrap round, and use the opposite directions to an index request.
    QTest::newRow("next") << false << 0 << "next" << 1 << 1;
    QTest::newRow("next from the last wraps") << false << 2 << "next" << 0 << 1;
    QTest::newRow("previous") << false << 2 << "previous" << 1 << 0;
    QTest::newRow("previous from the first wraps") << false << 0 << "previous" << 2 << 0;
    QTest::newRow("current as next") << false << 1 << "current as next" << 1 << 0;
    QTest::newRow("current as previous") << false << 1 << "current as previous" << 1 << 1;
    QTest::newRow("higher index") << false << 0 << "index 2" << 2 << 0;
    QTest::newRow("lower index") << false << 2 << "index 0" << 0 << 1;
    QTest::newRow("vertical next") << true << 0 << "next" << 1 << 3;
    QTest::newRow("vertical previous") << true << 1 << "previous" << 0 << 2;
    QTest::newRow("vertical higher index") << true << 0 << "index 1" << 1 << 2;
    QTest::newRow("vertical lower widget") << true << 2 << "widget 0" << 0 << 3;
}

void TestCustomStackedWidget::slidesToTheRequestedPage()
{
    QFETCH(bool, vertical);
    QFETCH(int, from);
    QFETCH(QString, request);
    QFETCH(int, target);
    QFETCH(int, direction);

    Fixture f;
    f.stack.SetVerticalOrientation(vertical);
    f.stack.setCurrentIndex(from);
    f.Show();

    if (request == QLatin1String("next"))
        f.stack.OnShowNext();
    else if (request == QLatin1String("previous"))
        f.stack.OnShowPrevious();
    else if (request == QLatin1String("current as next"))
        f.stack.OnShowCurrentAsNext();
    else if (request == QLatin1String("current as previous"))
        f.stack.OnShowCurrentAsPrevious();
    else if (request.startsWith(QLatin1String("index")))
        f.stack.SetCurrentPageIndex(request.section(' ', 1).toInt());
    else
        f.stack.SetCurrentPageWidget(f.stack.GetWidget(request.section(' ', 1).toInt()));

    QPointer<AnimatedPixmapRender> render = f.Render();
    QVERIFY(render);
    QCOMPARE(f.stack.currentWidget(), render.data());
    QCOMPARE(render->GetDirection(), direction);
    QCOMPARE(render->size(), f.stack.GetWidget(from)->size());
    QCOMPARE(render->TimeLine().endFrame(), vertical ? render->height() : render->width());
    QVERIFY(f.log.isEmpty());

    QTRY_COMPARE(f.log, Ended(target));
    QCOMPARE(f.stack.GetCurrentPageIndex(), target);
    QCOMPARE(f.stack.GetCount(), 3);
    QTRY_VERIFY(!render);
}

void TestCustomStackedWidget::requestsDuringASlideOrForTheCurrentPageAreIgnored()
{
    Fixture f;
    f.Show();
    f.stack.SetCurrentPageIndex(0);
    QVERIFY(!f.Render());

    f.stack.SetCurrentPageIndex(1);
    AnimatedPixmapRender* render = f.Render();
    f.stack.SetCurrentPageIndex(2);
    f.stack.OnShowNext();
    f.stack.OnShowCurrentAsPrevious();
    QCOMPARE(f.stack.findChildren<AnimatedPixmapRender*>().size(), 1);
    QCOMPARE(f.stack.currentWidget(), render);
    QTRY_COMPARE(f.log, Ended(1));
    QTest::qWait(200);
    QCOMPARE(f.log, Ended(1));
}

void TestCustomStackedWidget::showPageSwitchesAtOnceWhenChecked()
{
    Fixture f;
    f.Show();
    f.stack.ShowPage3(false);
    QCOMPARE(f.stack.GetCurrentPageIndex(), 0);
    f.stack.ShowPage3(true);
    QCOMPARE(f.stack.GetCurrentPageIndex(), 2);
    f.stack.ShowPage1(true);
    QCOMPARE(f.stack.GetCurrentPageIndex(), 0);
    QVERIFY(!f.Render());
    QVERIFY(f.log.isEmpty());
}

void TestCustomStackedWidget::freezingPageStandsInAndGoesWhenTheSlideEnds()
{
    Fixture f;
    f.stack.setCurrentIndex(2);
    f.Show();

    f.stack.StartShowFreezingPage();
    QPointer<FreezePixmapWrapper> freezing = f.stack.findChild<FreezePixmapWrapper*>();
    QVERIFY(freezing);
    QCOMPARE(f.stack.currentWidget(), freezing.data());
    QCOMPARE(freezing->Picture().toImage(), OrvantaQT::GrabHiDpiPixmap(f.stack.GetWidget(2)).toImage());
    QCOMPARE(f.stack.GetCount(), 4);

    // Counted from the page it stands for, among the real pages only: 2 is the last.
    f.stack.OnShowNext();
    QTRY_COMPARE(f.log, Ended(0));
    QTRY_VERIFY(!freezing);
    QCOMPARE(f.stack.GetCount(), 3);
    QCOMPARE(f.stack.GetCurrentPageIndex(), 0);

    f.log.clear();
    f.stack.StartShowFreezingPage();
    f.stack.OnShowPrevious();
    QTRY_COMPARE(f.log, Ended(2));
    QCOMPARE(f.stack.GetCount(), 3);

    f.stack.StartShowFreezingPage();
    freezing = f.stack.findChild<FreezePixmapWrapper*>();
    f.stack.StopShowFreezingPage();
    QCOMPARE(f.stack.GetCount(), 3);
    QTRY_VERIFY(!freezing);
}

void TestCustomStackedWidget::heightFollowsTheCurrentPage()
{
    QWidget parent; // a window would keep a minimum height of its own
    Fixture f;
    f.stack.setParent(&parent);
    f.stack.SetAutoAdjustHeightEnabled(true);
    QCOMPARE(f.stack.height(), f.stack.GetWidget(0)->sizeHint().height());
    QCOMPARE(f.stack.GetWidget(1)->sizePolicy().verticalPolicy(), QSizePolicy::Ignored);
    f.stack.setCurrentIndex(2);
    QCOMPARE(f.stack.height(), f.stack.GetWidget(2)->sizeHint().height());
    QCOMPARE(f.stack.GetWidget(2)->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);

    f.stack.SetAutoAdjustHeightEnabled(false);
    const int height = f.stack.height();
    f.stack.setCurrentIndex(0);
    QCOMPARE(f.stack.height(), height);
}

void TestCustomStackedWidget::reachableByNameFromStyleSheets()
{
    Fixture f;
    QCOMPARE(f.stack.objectName(), QStringLiteral("__qt__passive_CustomStackedWidget"));
    f.stack.setStyleSheet(QStringLiteral("OrvantaQT--CustomStackedWidget { qproperty-Alignment: Vertical; "
                                         "qproperty-TimeLineCurveShape: LinearCurve; qproperty-Offset: 9; }"));
    f.stack.ensurePolished();
    QCOMPARE(f.stack.GetOrientation(), Qt::Vertical);
    QCOMPARE(f.stack.GetTimeLineCurveShape(), CustomStackedWidget::LinearCurve);
    f.Show();
    f.stack.OnShowNext();
    AnimatedPixmapRender* render = f.Render();
    QCOMPARE(render->GetDirection(), 3);
    QCOMPARE(render->TimeLine().endFrame(), render->height() - 9);
    QCOMPARE(render->TimeLine().easingCurve().type(), QEasingCurve::Linear);
    QTRY_COMPARE(f.log, Ended(1));
}

void TestCustomStackedWidget::badRequestsAreReported()
{
    Fixture f;
    f.Show();
    const LogCapture::Mark mark;
    f.stack.SetCurrentPageIndex(7);
    f.stack.SetCurrentPageWidget(nullptr);
    f.stack.AddPage(nullptr);
    f.stack.RemovePage(-1);
    QCOMPARE(mark.Since().size(), 4);
    QVERIFY(!f.Render());
    QCOMPARE(f.stack.GetCount(), 3);

    f.stack.RemovePage(1);
    QCOMPARE(f.stack.GetCount(), 2);
}

QTEST_MAIN(TestCustomStackedWidget)
#include "tst_custom_stacked_widget.moc"
