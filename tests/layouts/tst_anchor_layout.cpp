#include <qt_halvo/layouts/anchor_layout.h>
#include <qt_halvo/layouts/desktop_widget.h>
#include <qt_halvo/layouts/display_watcher.h>

#include "log_capture.h"

#include <QtGui/QScreen>
#include <QtTest/QtTest>

using OrvantaQT::AnchorController;
using OrvantaQT::AnchorLayout;
using OrvantaQT::DesktopWidget;

namespace {

// Counts the moves and resizes a widget gets.
class Counted : public QWidget
{
public:
    using QWidget::QWidget;
    int changes = 0;

protected:
    void moveEvent(QMoveEvent*) override { ++changes; }
    void resizeEvent(QResizeEvent*) override { ++changes; }
};

// A 400 x 300 container with a target at (50, 40) 100 x 60, whose inclusive right and
// bottom edges are 149 and 99, and a 30 x 20 widget at the origin. Hidden widgets get
// their move and resize events only when shown.
struct Siblings
{
    Siblings()
    {
        container.resize(400, 300);
        target = new QWidget(&container);
        target->setGeometry(50, 40, 100, 60);
        widget = new Counted(&container);
        widget->setGeometry(0, 0, 30, 20);
    }

    bool Shown()
    {
        container.show();
        return QTest::qWaitForWindowExposed(&container);
    }
    AnchorController* Controller() const
    {
        return widget->property("_a_anchorController").value<AnchorController*>();
    }

    QWidget container;
    QWidget* target = nullptr;
    Counted* widget = nullptr;
};

bool SetWorkArea(const QRect& area)
{
    const QString value = QStringLiteral("%1, %2, %3, %4").arg(area.x()).arg(area.y()).arg(area.width()).arg(area.height());
    const QStringList arguments{"-root", "-f", "_NET_WORKAREA", "32c", "-set", "_NET_WORKAREA", value};
    return QProcess::execute(QStringLiteral("xprop"), arguments) == 0;
}

} // namespace

class TestAnchorLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pinsAnEdgeToATargetsPoint_data();
    void pinsAnEdgeToATargetsPoint();
    void opposingEdgesStretch();
    void followsTheTargetUntilRemoved();
    void childToItsWindow();
    void windowToTheScreenFollowsTheWorkArea();
    void nearestCorner_data();
    void nearestCorner();
};

void TestAnchorLayout::pinsAnEdgeToATargetsPoint_data()
{
    QTest::addColumn<int>("ownPoint");
    QTest::addColumn<int>("targetPoint");
    QTest::addColumn<QRect>("expected");

    // Margins 10, 5, 7, 3 (left, top, right, bottom).
    QTest::newRow("left to right") << int(Qt::AnchorLeft) << int(Qt::AnchorRight) << QRect(159, 0, 30, 20);
    QTest::newRow("right to left") << int(Qt::AnchorRight) << int(Qt::AnchorLeft) << QRect(14, 0, 30, 20);
    QTest::newRow("top to bottom") << int(Qt::AnchorTop) << int(Qt::AnchorBottom) << QRect(0, 104, 30, 20);
    QTest::newRow("bottom to top") << int(Qt::AnchorBottom) << int(Qt::AnchorTop) << QRect(0, 18, 30, 20);
    // Centre lines: 50 + 100 / 2 = 100, and 40 + 60 / 2 = 70, without margins.
    QTest::newRow("centre to centre") << int(Qt::AnchorHorizontalCenter) << int(Qt::AnchorHorizontalCenter)
                                      << QRect(85, 0, 30, 20);
    QTest::newRow("middle to middle") << int(Qt::AnchorVerticalCenter) << int(Qt::AnchorVerticalCenter)
                                      << QRect(0, 60, 30, 20);
    // The orientation is the target point's: a vertical own point on a horizontal line does nothing.
    QTest::newRow("top to left") << int(Qt::AnchorTop) << int(Qt::AnchorLeft) << QRect(0, 0, 30, 20);
    QTest::newRow("left to top") << int(Qt::AnchorLeft) << int(Qt::AnchorTop) << QRect(0, 0, 30, 20);
}

void TestAnchorLayout::pinsAnEdgeToATargetsPoint()
{
    QFETCH(int, ownPoint);
    QFETCH(int, targetPoint);
    QFETCH(QRect, expected);
    Siblings s;
    AnchorLayout::SetupAnchors(s.widget, {{Qt::AnchorPoint(ownPoint), {s.target, Qt::AnchorPoint(targetPoint)}}},
                               QMargins(10, 5, 7, 3));
    QCOMPARE(s.widget->geometry(), expected);
    QCOMPARE(AnchorLayout::WidgetAnchors(s.widget).size(), 1);
}

// Left, then right: the first moves the widget, the second stretches it.
void TestAnchorLayout::opposingEdgesStretch()
{
    Siblings s;
    QVERIFY(s.Shown());
    AnchorLayout::AddAnchors(s.target, s.widget, Qt::Horizontal);
    QCOMPARE(s.widget->geometry(), QRect(50, 0, 100, 20));
    AnchorLayout::AddAnchors(s.target, s.widget, Qt::Vertical);
    QCOMPARE(s.widget->geometry(), QRect(50, 40, 100, 60));
    s.target->setGeometry(10, 20, 200, 150);
    QCOMPARE(s.widget->geometry(), QRect(10, 20, 200, 150));

    // An empty target leaves the widget where it is.
    s.target->setGeometry(0, 0, 0, 0);
    QCOMPARE(s.widget->geometry(), QRect(10, 20, 200, 150));
}

void TestAnchorLayout::followsTheTargetUntilRemoved()
{
    Siblings s;
    QVERIFY(s.Shown());
    AnchorLayout::AddAnchor(s.target, Qt::AnchorRight, s.widget, Qt::AnchorLeft);
    AnchorLayout::AddAnchor(s.target, Qt::AnchorBottom, s.widget, Qt::AnchorTop);
    // On the target's inclusive right and bottom edges.
    QCOMPARE(s.widget->pos(), QPoint(149, 99));

    s.widget->changes = 0;
    s.target->move(20, 30);
    QCOMPARE(s.widget->pos(), QPoint(119, 89));
    // One move per anchor applied, and no more: the controller's own moves do not recurse.
    QCOMPARE(s.widget->changes, 2);

    // Moved or resized by someone else, it goes back.
    s.widget->move(300, 200);
    QCOMPARE(s.widget->pos(), QPoint(119, 89));
    s.widget->resize(60, 40);
    QCOMPARE(s.widget->geometry(), QRect(119, 89, 60, 40));

    // A null target removes the anchor of that own point.
    s.Controller()->SetAnchor(nullptr, Qt::AnchorRight, Qt::AnchorLeft);
    QCOMPARE(AnchorLayout::WidgetAnchors(s.widget).size(), 1);
    s.target->move(0, 0);
    QCOMPARE(s.widget->pos(), QPoint(119, 59));

    // A target deleted later takes its anchors with it.
    s.target->deleteLater();
    QTRY_VERIFY(AnchorLayout::WidgetAnchors(s.widget).isEmpty());
    s.widget->move(5, 5);
    QCOMPARE(s.widget->pos(), QPoint(5, 5));

    // Bad requests are reported and change nothing.
    const LogCapture::Mark mark;
    AnchorLayout::AddAnchor(nullptr, Qt::AnchorLeft, s.widget, Qt::AnchorLeft);
    AnchorLayout::AddAnchors(&s.container, nullptr, Qt::Vertical);
    QCOMPARE(mark.Since().size(), 2);

    QPointer<AnchorController> controller = s.Controller();
    AnchorLayout::RemoveAllDesktopAnchors(s.widget);
    QVERIFY(!controller);
    QVERIFY(!s.widget->property("_a_anchorController").isValid());
}

// Pinned inside the bottom-right corner of its window, through resizes of the window.
void TestAnchorLayout::childToItsWindow()
{
    QWidget window;
    window.resize(400, 300);
    auto* badge = new QWidget(&window);
    badge->resize(40, 20);
    AnchorLayout::SetupAnchors(badge, {{Qt::AnchorRight, {&window, Qt::AnchorRight}}, {Qt::AnchorBottom, {&window, Qt::AnchorBottom}}},
                               QMargins(0, 0, 10, 8));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(badge->geometry(), QRect(400 - 10 - 40, 300 - 8 - 20, 40, 20));
    window.resize(520, 360);
    QTRY_COMPARE(badge->geometry(), QRect(520 - 10 - 40, 360 - 8 - 20, 40, 20));
}

// A window in the bottom-right corner of the work area, 16 px in; when the work area
// changes (a panel appears at the right and bottom), the window follows.
void TestAnchorLayout::windowToTheScreenFollowsTheWorkArea()
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QVERIFY(SetWorkArea(screen));
    QWidget toast;
    toast.resize(200, 80);
    AnchorLayout::SetDesktopPrimaryScreenAnchor(Qt::AlignRight | Qt::AlignBottom, &toast, QMargins(16, 16, 16, 16));
    toast.show();
    QVERIFY(QTest::qWaitForWindowExposed(&toast));
    QTRY_COMPARE(toast.frameGeometry().bottomRight(), screen.bottomRight() - QPoint(16, 16));
    QCOMPARE(DesktopWidget::PrimaryScreenRect(), screen);

    const QRect smaller(0, 0, screen.width() - 100, screen.height() - 50);
    QVERIFY(SetWorkArea(smaller));
    QTRY_COMPARE_WITH_TIMEOUT(toast.frameGeometry().bottomRight(), smaller.bottomRight() - QPoint(16, 16), 10000);

    // One desktop stand-in per widget, and it goes with the anchors.
    const AnchorLayout::Anchors anchors = AnchorLayout::WidgetAnchors(&toast);
    QCOMPARE(anchors.size(), 2);
    QPointer<QWidget> desktop = anchors.first().target;
    QCOMPARE(anchors.last().target, desktop);
    QVERIFY(qobject_cast<DesktopWidget*>(desktop));
    AnchorLayout::RemoveAllDesktopAnchors(&toast);
    QTRY_VERIFY(!desktop);
    QVERIFY(SetWorkArea(screen));
}

void TestAnchorLayout::nearestCorner_data()
{
    QTest::addColumn<QPoint>("pos");
    QTest::addColumn<int>("horizontal");
    QTest::addColumn<int>("vertical");
    QTest::newRow("top left") << QPoint(10, 10) << int(Qt::AnchorLeft) << int(Qt::AnchorTop);
    QTest::newRow("bottom right") << QPoint(700, 500) << int(Qt::AnchorRight) << int(Qt::AnchorBottom);
    QTest::newRow("exactly half") << QPoint(400, 300) << int(Qt::AnchorLeft) << int(Qt::AnchorTop);
    QTest::newRow("just past half") << QPoint(401, 301) << int(Qt::AnchorRight) << int(Qt::AnchorBottom);
}

void TestAnchorLayout::nearestCorner()
{
    QFETCH(QPoint, pos);
    QFETCH(int, horizontal);
    QFETCH(int, vertical);
    const std::vector<Qt::AnchorPoint> corner = AnchorLayout::CalcNearestCorner(QRect(0, 0, 800, 600), pos);
    QCOMPARE(int(corner.at(0)), horizontal);
    QCOMPARE(int(corner.at(1)), vertical);
}

QTEST_MAIN(TestAnchorLayout)
#include "tst_anchor_layout.moc"
