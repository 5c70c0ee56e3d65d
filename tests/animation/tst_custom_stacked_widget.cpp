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

// A stack of three labelled pages with short slides, recording its signals.
struct Fixture
{
    Fixture()
    {
        stack.SetDuration(120);
        for (int i = 0; i < 3; ++i) {
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
    void freezingPageStandsInAndGoesWhenTheSlideEnds();
    void heightFollowsTheCurrentPage();
    void switchesWithoutASlide();
};

void TestCustomStackedWidget::slidesToTheRequestedPage_data()
{
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<int>("from");
    QTest::addColumn<QString>("request");
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("direction");
    QTest::addColumn<QString>("styleSheet");

    // Next and previous wrap round, and use the opposite directions to an index request.
    QTest::newRow("next") << false << 0 << "next" << 1 << 1 << QString();
    QTest::newRow("next from the last wraps") << false << 2 << "next" << 0 << 1 << QString();
    QTest::newRow("previous") << false << 2 << "previous" << 1 << 0 << QString();
    QTest::newRow("previous from the first wraps") << false << 0 << "previous" << 2 << 0 << QString();
    QTest::newRow("current as next") << false << 1 << "current as next" << 1 << 0 << QString();
    QTest::newRow("current as previous") << false << 1 << "current as previous" << 1 << 1 << QString();
    QTest::newRow("higher index") << false << 0 << "index 2" << 2 << 0 << QString();
    QTest::newRow("lower index") << false << 2 << "index 0" << 0 << 1 << QString();
    QTest::newRow("vertical higher index") << true << 0 << "index 1" << 1 << 2 << QString();
    QTest::newRow("vertical lower widget") << true << 2 << "widget 0" << 0 << 3 << QString();
    // Set by the names style sheets and forms use.
    QTest::newRow("styled vertical next") << true << 0 << "next" << 1 << 3
                            << "OrvantaQT--CustomStackedWidget { qproperty-Alignment: Vertical; "
                               "qproperty-TimeLineCurveShape: LinearCurve; qproperty-Offset: 9; }";
}

void TestCustomStackedWidget::slidesToTheRequestedPage()
{
    QFETCH(bool, vertical);
    QFETCH(int, from);
    QFETCH(QString, request);
    QFETCH(int, target);
    QFETCH(int, direction);
    QFETCH(QString, styleSheet);

    Fixture f;
    if (styleSheet.isEmpty())
        f.stack.SetVerticalOrientation(vertical);
    else
        f.stack.setStyleSheet(styleSheet);
    f.stack.setCurrentIndex(from);
    f.Show();

    const int page = request.section(' ', 1).toInt();
    if (request == QLatin1String("next"))
        f.stack.OnShowNext();
    else if (request == QLatin1String("previous"))
        f.stack.OnShowPrevious();
    else if (request == QLatin1String("current as next"))
        f.stack.OnShowCurrentAsNext();
    else if (request == QLatin1String("current as previous"))
        f.stack.OnShowCurrentAsPrevious();
    else if (request.startsWith(QLatin1String("index")))
        f.stack.SetCurrentPageIndex(page);
    else
        f.stack.SetCurrentPageWidget(f.stack.GetWidget(page));

    QPointer<AnimatedPixmapRender> render = f.Render();
    QVERIFY(render);
    QCOMPARE(f.stack.currentWidget(), render.data());
    QCOMPARE(render->GetDirection(), direction);
    QCOMPARE(render->size(), f.stack.GetWidget(from)->size());
    const QTimeLine& timeLine = render->TimeLine();
    QCOMPARE(timeLine.endFrame(), (vertical ? render->height() : render->width()) - (styleSheet.isEmpty() ? 0 : 9));
    QCOMPARE(timeLine.easingCurve().type(), styleSheet.isEmpty() ? QEasingCurve::InCurve : QEasingCurve::Linear);

    // Requests while it slides are dropped, not queued.
    f.stack.SetCurrentPageIndex((target + 1) % 3);
    f.stack.OnShowNext();
    f.stack.OnShowCurrentAsPrevious();
    QCOMPARE(f.stack.findChildren<AnimatedPixmapRender*>().size(), 1);
    QCOMPARE(f.stack.currentWidget(), render.data());
    QVERIFY(f.log.isEmpty());

    QTRY_COMPARE(f.log, Ended(target));
    QCOMPARE(f.stack.GetCurrentPageIndex(), target);
    QCOMPARE(f.stack.GetCount(), 3);
    QTRY_VERIFY(!render);
    QTest::qWait(50);
    QVERIFY(!f.Render());
    QCOMPARE(f.log, Ended(target));
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
    f.stack.setCurrentIndex(2);
    QCOMPARE(f.stack.height(), f.stack.GetWidget(2)->sizeHint().height());

    f.stack.SetAutoAdjustHeightEnabled(false);
    const int height = f.stack.height();
    f.stack.setCurrentIndex(0);
    QCOMPARE(f.stack.height(), height);
}

// Bad requests are reported; one for the current page, and the slots for checkable
// buttons, switch without a slide.
void TestCustomStackedWidget::switchesWithoutASlide()
{
    Fixture f;
    QCOMPARE(f.stack.objectName(), QStringLiteral("__qt__passive_CustomStackedWidget"));
    f.Show();
    const LogCapture::Mark mark;
    f.stack.SetCurrentPageIndex(7);
    f.stack.SetCurrentPageWidget(nullptr);
    f.stack.AddPage(nullptr);
    f.stack.RemovePage(-1);
    QCOMPARE(mark.Since().size(), 4);
    QCOMPARE(f.stack.GetCount(), 3);

    f.stack.SetCurrentPageIndex(0);
    f.stack.ShowPage3(false);
    QCOMPARE(f.stack.GetCurrentPageIndex(), 0);
    f.stack.ShowPage3(true);
    QCOMPARE(f.stack.GetCurrentPageIndex(), 2);
    f.stack.ShowPage1(true);
    QCOMPARE(f.stack.GetCurrentPageIndex(), 0);
    QVERIFY(!f.Render());
    QVERIFY(f.log.isEmpty());

    f.stack.RemovePage(1);
    QCOMPARE(f.stack.GetCount(), 2);
}

QTEST_MAIN(TestCustomStackedWidget)
#include "tst_custom_stacked_widget.moc"
