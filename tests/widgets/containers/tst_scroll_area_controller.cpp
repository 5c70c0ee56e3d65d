#include <qt_halvo/widgets/containers/scroll_area_controller.h>

#include "test_support.h"

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <numeric>

using OrvantaQT::ScrollAreaController;

namespace {

constexpr int kRows = 30;
constexpr int kRowPitch = 60;
constexpr int kTop = 20; // room above the first row and below the last

// The pointer through the X server's test extension, so that the input takes Qt's whole
// way (the window's implicit grab, the gesture manager, the delayed press). Positions are
// logical, the server's device pixels. A hand's moves come some milliseconds apart, a
// fling's last move right before the release.
Display* Server()
{
    static Display* display = XOpenDisplay(nullptr);
    return display;
}

void PointerTo(const QPoint& global, bool settle = true)
{
    const QPoint native = global * qApp->devicePixelRatio();
    XTestFakeMotionEvent(Server(), -1, native.x(), native.y(), CurrentTime);
    XFlush(Server());
    if (settle)
        (void)QTest::qWaitFor([&] { return QCursor::pos() == global; }, 1000);
    QTest::qWait(settle ? 20 : 8);
}

void Button(bool down)
{
    XTestFakeButtonEvent(Server(), 1, down ? True : False, CurrentTime);
    XFlush(Server());
    QTest::qWait(40);
}

// Press, move in steps, release: slowly, as a hand that places the content; fast, as a fling.
void Drag(const QPoint& from, const QPoint& to, int steps, bool fling = false)
{
    PointerTo(from);
    Button(true);
    for (int i = 1; i <= steps; ++i)
        PointerTo(from + (to - from) * i / steps, !fling);
    Button(false);
}

void Click(const QPoint& global) { Drag(global, global, 0); }

// A content that takes drops, as a list that items are dragged into does.
class DropTarget : public QWidget
{
protected:
    void dragEnterEvent(QDragEnterEvent* event) override { event->acceptProposedAction(); }
    void dragMoveEvent(QDragMoveEvent* event) override { event->acceptProposedAction(); }
    void dropEvent(QDropEvent* event) override { event->acceptProposedAction(); }
};

// A window with a line edit above a scroll area of rows of a button and a line edit
// (taller and wider than the area), and a line edit below it; the area has a controller
// unless asked otherwise.
struct Page
{
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    QLineEdit* above = new QLineEdit(window.get());
    QScrollArea* area = new QScrollArea(window.get());
    DropTarget* content = new DropTarget;
    QVector<QPushButton*> buttons;
    QVector<QLineEdit*> edits;
    QLineEdit* below;
    QVector<int> clicks = QVector<int>(kRows, 0);
    ScrollAreaController* controller = nullptr;

    explicit Page(bool controlled = true)
    {
        window->move(40, 40);
        window->resize(360, 320);
        above->setGeometry(10, 5, 200, 24);
        area->setGeometry(10, 40, 300, 220);
        // The keyboard goes from the line edits straight to the rows, as in a form.
        area->setFocusPolicy(Qt::NoFocus);
        content->resize(500, kRows * kRowPitch + 2 * kTop);
        content->setAcceptDrops(true);
        for (int i = 0; i < kRows; ++i) {
            buttons << new QPushButton(QStringLiteral("Button %1").arg(i), content);
            buttons[i]->setGeometry(20, kTop + i * kRowPitch + 4, 200, 24);
            QObject::connect(buttons[i], &QPushButton::clicked, content, [this, i] { ++clicks[i]; });
            edits << new QLineEdit(content);
            edits[i]->setGeometry(20, kTop + i * kRowPitch + 32, 200, 24);
        }
        area->setWidget(content);
        below = new QLineEdit(window.get());
        below->setGeometry(10, 280, 200, 24);
        if (controlled)
            controller = OrvantaQT::SetScroller(area);
    }
    bool Show()
    {
        if (!TestSupport::ShowAndWait(window.get()))
            return false;
        window->activateWindow();
        return QTest::qWaitForWindowActive(window.get());
    }
    QScrollBar* Vertical() const { return area->verticalScrollBar(); }
    QWidget* Viewport() const { return area->viewport(); }
    QPoint Scrolled() const { return QPoint(area->horizontalScrollBar()->value(), Vertical()->value()); }
    void ScrollTo(int value) const { Vertical()->setValue(value < 0 ? Vertical()->maximum() : value); }
    QRect InViewport(QWidget* widget) const { return QRect(widget->mapTo(Viewport(), QPoint(0, 0)), widget->size()); }
    int Clicks() const { return std::accumulate(clicks.begin(), clicks.end(), 0); }
    // A fast upward drag near the right edge, which leaves the content flying.
    bool Fling() const
    {
        const QPoint bottom = Viewport()->mapToGlobal(QPoint(Viewport()->width() - 30, 200));
        Drag(bottom, bottom - QPoint(0, 150), 6, true);
        return controller->GetScroller()->state() == QScroller::Scrolling;
    }
};

// A drag and drop of some text over the page's content, as the window delivers it: an
// enter, moves, and a leave or a drop. Points are in the viewport.
struct DragSession
{
    DragSession(const Page& page, const QPoint& enter) : target(page.content), viewport(page.Viewport())
    {
        data.setText(QStringLiteral("item"));
        QDragEnterEvent event(Local(enter), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &event);
        inside = event.isAccepted();
    }
    ~DragSession() { Leave(); }
    void Move(const QPoint& to)
    {
        QDragMoveEvent event(Local(to), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &event);
    }
    void Leave()
    {
        QDragLeaveEvent event;
        if (std::exchange(inside, false) && target)
            QApplication::sendEvent(target, &event);
    }
    void Drop(const QPoint& at)
    {
        QDropEvent event(Local(at), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        if (std::exchange(inside, false))
            QApplication::sendEvent(target, &event);
    }
    QPoint Local(const QPoint& inViewport) const { return target->mapFrom(viewport, inViewport); }

    QPointer<QWidget> target;
    QWidget* viewport;
    QMimeData data;
    bool inside = false;
};

} // namespace

class TestScrollAreaController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setStyle(QStringLiteral("Fusion"));
        qRegisterMetaType<QScroller::State>();
        QVERIFY(Server());
    }

    // One controller per area, a child of it. A null area, a controller made without one
    // and values that are none are logged and change nothing.
    void controllerAndGuards()
    {
        QScrollArea area;
        QCOMPARE(ScrollAreaController::Of(&area), nullptr);
        ScrollAreaController* controller = OrvantaQT::SetScroller(&area);
        QCOMPARE(OrvantaQT::SetScroller(&area), controller);
        QCOMPARE(area.findChildren<ScrollAreaController*>(), QList<ScrollAreaController*>({controller}));
        QCOMPARE(ScrollAreaController::Of(&area), controller);
        QCOMPARE(controller->parent(), &area);
        QCOMPARE(controller->GetScrollArea(), &area);
        QCOMPARE(controller->GetScroller(), QScroller::scroller(area.viewport()));
        QCOMPARE(controller->GetDragStartDistance(), QApplication::startDragDistance());

        const LogCapture::Mark mark;
        QCOMPARE(OrvantaQT::SetScroller(nullptr), nullptr);
        QCOMPARE(ScrollAreaController::Of(nullptr), nullptr);
        ScrollAreaController idle(nullptr);
        QCOMPARE(idle.GetScrollArea(), nullptr);
        QCOMPARE(idle.GetScroller(), nullptr);
        idle.SetDragStartDistance(-1);
        idle.SetFocusMargin(-2);
        idle.SetAutoScrollMargin(-3);
        idle.SetAutoScrollStep(0);
        QCOMPARE(QVector<int>({idle.GetDragStartDistance(), idle.GetFocusMargin(), idle.GetAutoScrollMargin(),
                               idle.GetAutoScrollStep()}),
                 QVector<int>({QApplication::startDragDistance(), 8, 24, 12}));
        idle.SetDragStartDistance(4); // no scroller to give it to
        QCOMPARE(idle.GetDragStartDistance(), 4);
        const QString prefix = QStringLiteral("3 ScrollAreaController: ");
        QCOMPARE(mark.Texts(),
                 QStringList({QStringLiteral("3 SetScroller: no scroll area to scroll"),
                              prefix + "no scroll area; the controller does nothing",
                              prefix + QStringLiteral("a negative drag start distance (-1) is ignored; it stays %1")
                                           .arg(QApplication::startDragDistance()),
                              prefix + "a negative focus margin (-2) is ignored; it stays 8",
                              prefix + "a negative auto-scroll margin (-3) is ignored; it stays 24",
                              prefix + "an auto-scroll step must be positive (0); it stays 12"}));
    }

    void startDistanceInMetres_data()
    {
        QTest::addColumn<bool>("madeShown");
        QTest::newRow("made before the area shows") << false;
        QTest::newRow("made for a shown area") << true;
    }
    // The scroller's distance is the one set in pixels, in metres of the screen's
    // resolution, measured again when the window goes to another screen.
    void startDistanceInMetres()
    {
        QFETCH(bool, madeShown);
        Page page(!madeShown);
        QVERIFY(page.Show());
        if (madeShown)
            page.controller = OrvantaQT::SetScroller(page.area);
        QScroller* scroller = page.controller->GetScroller();
        const auto metres = [&] {
            return scroller->scrollerProperties().scrollMetric(QScrollerProperties::DragStartDistance).toReal();
        };
        const qreal dpi = page.window->screen()->physicalDotsPerInchY();
        page.controller->SetDragStartDistance(40);
        QVERIFY(qAbs(metres() - 39.5 * 0.0254 / dpi) < 1e-6);
        QCOMPARE(page.controller->GetDragStartDistance(), 40);
        // As if another screen had measured it.
        QScrollerProperties stale = scroller->scrollerProperties();
        stale.setScrollMetric(QScrollerProperties::DragStartDistance, 0.5);
        scroller->setScrollerProperties(stale);
        QVERIFY(QMetaObject::invokeMethod(page.window->windowHandle(), "screenChanged",
                                          Q_ARG(QScreen*, page.window->screen())));
        QVERIFY(qAbs(metres() - 39.5 * 0.0254 / dpi) < 1e-6);
        page.controller->SetDragStartDistance(0); // starts at once
        QCOMPARE(metres(), 0.0);
        // A fling runs on until a press.
        QCOMPARE(scroller->scrollerProperties().scrollMetric(QScrollerProperties::MaximumClickThroughVelocity).toReal(), 0.0);
    }

    void clickOrDrag_data()
    {
        QTest::addColumn<bool>("touch"); // a finger, at the default distance; else the mouse, at 30
        QTest::addColumn<bool>("onButton");
        QTest::addColumn<QPoint>("move"); // in logical pixels
        QTest::addColumn<bool>("clicked");
        QTest::addColumn<bool>("dragged");
        QTest::newRow("click on a button") << false << true << QPoint(0, 0) << true << false;
        QTest::newRow("button, moved under the start distance") << false << true << QPoint(-29, 0) << true << false;
        QTest::newRow("button, moved by the start distance") << false << true << QPoint(0, -30) << false << true;
        QTest::newRow("button, moved by it across") << false << true << QPoint(-30, 0) << false << true;
        QTest::newRow("button, dragged") << false << true << QPoint(0, -100) << false << true;
        QTest::newRow("background, dragged") << false << false << QPoint(0, -100) << false << true;
        QTest::newRow("background, moved under the start distance") << false << false << QPoint(0, -29) << false << false;
        QTest::newRow("tap") << true << true << QPoint(0, 0) << true << false;
        QTest::newRow("swipe") << true << true << QPoint(0, -90) << false << true;
    }
    // A press that moves less than the start distance is a click of the button under it;
    // one that moves that far scrolls the area, wherever it starts, and clicks nothing.
    // The distance is in logical pixels: the same at twice the density. A finger does
    // what the left button does.
    void clickOrDrag()
    {
        QFETCH(bool, touch);
        QFETCH(bool, onButton);
        QFETCH(QPoint, move);
        QFETCH(bool, clicked);
        QFETCH(bool, dragged);
        if (!qEnvironmentVariableIsSet("QT_SCALE_FACTOR") && QTest::currentDataTag() == QLatin1String("click on a button"))
            QCOMPARE(TestSupport::RunTestFunctionInChild(QTest::currentTestFunction(), {QStringLiteral("QT_SCALE_FACTOR=2")}),
                     QString());
        Page page;
        // Far from QScroller's own 5 mm (20 pixels at 100 dpi, 10 at twice the density).
        if (!touch)
            page.controller->SetDragStartDistance(30);
        QVERIFY(page.Show());
        QSignalSpy states(page.controller->GetScroller(), &QScroller::stateChanged);
        // The swipe apart from the tap, so that the two make no double tap.
        const int row = touch && dragged ? 2 : 1;
        QPushButton* button = page.buttons[row];
        if (touch) {
            static QTouchDevice* const screen = QTest::createTouchDevice();
            QWidget* window = page.window.get();
            const QPoint start = button->mapTo(window, button->rect().center());
            QTest::touchEvent(window, screen).press(0, start, window);
            for (int i = 1; i <= 3; ++i) {
                QTest::qWait(20);
                QTest::touchEvent(window, screen).move(0, start + move * i / 3, window);
            }
            QTest::touchEvent(window, screen).release(0, start + move, window);
        } else {
            const QPoint start = button->mapToGlobal(onButton ? button->rect().center() : QPoint(button->width() + 30, 10));
            Drag(start, start + move, move.isNull() ? 1 : 4);
        }
        QTRY_COMPARE(page.controller->GetScroller()->state(), QScroller::Inactive);
        QCOMPARE(page.clicks[row], clicked ? 1 : 0);
        QCOMPARE(page.Clicks(), page.clicks[row]);
        QCOMPARE(std::any_of(states.begin(), states.end(),
                             [](const QList<QVariant>& state) { return state.at(0).value<QScroller::State>() == QScroller::Dragging; }),
                 dragged);
        const QPoint scrolled = page.Scrolled();
        QCOMPARE(!scrolled.isNull(), dragged);
        // The content follows the pointer all the way (and may fly on); a finger's exactly.
        const int slack = touch ? 0 : 2;
        if (dragged)
            QVERIFY2(scrolled.x() >= -move.x() - slack && scrolled.y() >= -move.y() - slack
                         && (scrolled.x() == 0) == (move.x() == 0) && (scrolled.y() == 0) == (move.y() == 0),
                     qPrintable(QStringLiteral("%1, %2").arg(scrolled.x()).arg(scrolled.y())));
        QVERIFY(!button->isDown());
    }

    // Deleted alone, the controller leaves no kinetic scrolling behind; a new one brings
    // it back.
    void controllerDeletedAlone()
    {
        Page page(false);
        QVERIFY(page.Show());
        const QPoint start = page.Viewport()->mapToGlobal(QPoint(page.Viewport()->width() - 30, 150));
        delete OrvantaQT::SetScroller(page.area);
        QCOMPARE(ScrollAreaController::Of(page.area), nullptr);
        Drag(start, start - QPoint(0, 100), 4);
        QCOMPARE(page.Vertical()->value(), 0);
        ScrollAreaController* controller = OrvantaQT::SetScroller(page.area);
        QTest::qWait(QApplication::doubleClickInterval());
        Drag(start, start - QPoint(0, 100), 4);
        QTRY_COMPARE(controller->GetScroller()->state(), QScroller::Inactive);
        QVERIFY(page.Vertical()->value() >= 98);
    }

    // After a fling the content keeps moving; the next press stops it where it is and
    // clicks nothing, the one after clicks.
    void pressDuringAFlingStopsIt()
    {
        Page page;
        QVERIFY(page.Show());
        QVERIFY(page.Fling());
        QTRY_VERIFY(page.Vertical()->value() > 180);
        // Over the column of buttons, so that something would be clicked.
        Click(page.Viewport()->mapToGlobal(QPoint(120, 100)));
        QTRY_COMPARE(page.controller->GetScroller()->state(), QScroller::Inactive);
        const int stopped = page.Vertical()->value();
        QVERIFY(stopped < page.Vertical()->maximum());
        QCOMPARE(page.Clicks(), 0);
        QTest::qWait(200);
        QCOMPARE(page.Vertical()->value(), stopped);

        QTest::qWait(QApplication::doubleClickInterval()); // not a double click of the first
        const auto shown = std::find_if(page.buttons.begin(), page.buttons.end(), [&](QPushButton* button) {
            return page.Viewport()->rect().contains(page.InViewport(button));
        });
        QVERIFY(shown != page.buttons.end());
        Click((*shown)->mapToGlobal((*shown)->rect().center()));
        QCOMPARE(page.Clicks(), 1);
        QCOMPARE(page.clicks[page.buttons.indexOf(*shown)], 1);
    }

    // The area, its scroller and the controller go while the content flies and a drag and
    // drop hovers an edge: nothing is left behind that fires later.
    void deletedDuringAFling()
    {
        Page page;
        QPointer<ScrollAreaController> controller = page.controller;
        QVERIFY(page.Show());
        QPointer<QScroller> scroller = controller->GetScroller();
        QVERIFY(page.Fling());
        DragSession drag(page, QPoint(100, page.Viewport()->height() - 2));
        QVERIFY(controller->IsAutoScrolling());
        page.window.reset();
        QVERIFY(!controller);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the scroller's deleteLater()
        QVERIFY(!scroller);
        QVERIFY(QScroller::activeScrollers().isEmpty());
        QTest::qWait(100);
    }

    void focusKeptVisible_data()
    {
        QTest::addColumn<Qt::FocusReason>("reason"); // by a key for Tab and Backtab
        QTest::addColumn<int>("margin"); // -1 for no controller; 8 is the default
        QTest::addColumn<int>("startValue"); // -1 for the maximum
        QTest::addColumn<QString>("focused"); // "tall": taller than the area, "fits": 10 shorter than it less the margins
        QTest::addColumn<bool>("scrolls");
        QTest::newRow("tab in from above") << Qt::TabFocusReason << 8 << -1 << "button 0" << true;
        QTest::newRow("backtab in from below") << Qt::BacktabFocusReason << 8 << 0 << "edit 29" << true;
        QTest::newRow("set by the program") << Qt::OtherFocusReason << 8 << 0 << "edit 12" << true;
        QTest::newRow("set by the program, above") << Qt::OtherFocusReason << 8 << -1 << "edit 12" << true;
        QTest::newRow("set by the program, already in view") << Qt::OtherFocusReason << 8 << 0 << "edit 1" << false;
        // Its top 3 pixels from the viewport's.
        QTest::newRow("set by the program, in the margin") << Qt::OtherFocusReason << 8 << kTop + kRowPitch + 32 - 3 << "edit 1" << true;
        QTest::newRow("wider margin") << Qt::OtherFocusReason << 30 << 0 << "edit 10" << true;
        QTest::newRow("taller than the area: its top") << Qt::OtherFocusReason << 30 << 500 << "tall 20" << true;
        QTest::newRow("fits with the margins: its end") << Qt::OtherFocusReason << 30 << 0 << "fits 20" << true;
        QTest::newRow("clicked: no scroll") << Qt::MouseFocusReason << 8 << 0 << "edit 12" << false;
        QTest::newRow("tab in, no controller") << Qt::TabFocusReason << -1 << -1 << "button 0" << false;
        QTest::newRow("backtab in, no controller") << Qt::BacktabFocusReason << -1 << 0 << "edit 29" << false;
    }
    // The child that the keyboard or the program focuses is scrolled into view with the
    // margin, and no further; a click's focus scrolls nothing.
    void focusKeptVisible()
    {
        QFETCH(Qt::FocusReason, reason);
        QFETCH(int, margin);
        QFETCH(int, startValue);
        QFETCH(QString, focused);
        QFETCH(bool, scrolls);
        Page page(margin >= 0);
        if (margin >= 0 && margin != 8)
            page.controller->SetFocusMargin(margin);
        const int row = focused.section(QLatin1Char(' '), 1).toInt();
        QWidget* target = focused.startsWith(QLatin1String("button")) ? static_cast<QWidget*>(page.buttons[row])
                                                                      : page.edits[row];
        const bool tall = focused.startsWith(QLatin1String("tall"));
        if (tall)
            target->setFixedHeight(400);
        QVERIFY(page.Show());
        if (focused.startsWith(QLatin1String("fits")))
            target->setFixedHeight(page.Viewport()->height() - 2 * margin - 10);
        page.ScrollTo(startValue);
        const int before = page.Vertical()->value();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) {
            QLineEdit* from = reason == Qt::TabFocusReason ? page.above : page.below;
            from->setFocus();
            QTest::keyClick(from, reason == Qt::TabFocusReason ? Qt::Key_Tab : Qt::Key_Backtab);
        } else {
            target->setFocus(reason);
        }
        QVERIFY(target->hasFocus());
        const QRect rect = page.InViewport(target);
        if (!scrolls)
            QCOMPARE(page.Vertical()->value(), before);
        // In view with the margin, at the edge it came from; a tall one at the top.
        else if (tall || page.Vertical()->value() < before)
            QCOMPARE(rect.top(), margin);
        else
            QCOMPARE(rect.bottom() + 1, page.Viewport()->height() - margin);
    }

    void dragAndDropNearAnEdge_data()
    {
        QTest::addColumn<QPoint>("where"); // in the viewport, from its centre towards the edges (-1 or 1 for an edge)
        QTest::addColumn<int>("startValue"); // -1 for the maximum
        QTest::addColumn<QPoint>("direction");
        QTest::newRow("bottom edge") << QPoint(0, 1) << 0 << QPoint(0, 1);
        QTest::newRow("top edge") << QPoint(0, -1) << 500 << QPoint(0, -1);
        QTest::newRow("right edge") << QPoint(1, 0) << 0 << QPoint(1, 0);
        QTest::newRow("bottom right corner") << QPoint(1, 1) << 0 << QPoint(1, 1);
        QTest::newRow("middle") << QPoint(0, 0) << 500 << QPoint(0, 0);
        QTest::newRow("top edge, at the top already") << QPoint(0, -1) << 0 << QPoint(0, 0);
        QTest::newRow("bottom edge, at the end already") << QPoint(0, 1) << -1 << QPoint(0, 0);
    }
    // While a drag hovers the band along an edge, the area scrolls towards it; the timer
    // runs only then, and stops at the end, when the drag moves out of the band, leaves or
    // drops.
    void dragAndDropNearAnEdge()
    {
        QFETCH(QPoint, where);
        QFETCH(int, startValue);
        QFETCH(QPoint, direction);
        Page page;
        ScrollAreaController* controller = page.controller;
        QVERIFY(page.Show());
        page.ScrollTo(startValue);
        const QSize size = page.Viewport()->size();
        const auto at = [&](const QPoint& towards) {
            return QPoint(size.width() / 2 + towards.x() * (size.width() / 2 - 3),
                          size.height() / 2 + towards.y() * (size.height() / 2 - 3));
        };
        QVERIFY(!controller->IsAutoScrolling());
        DragSession drag(page, at(QPoint(0, 0)));
        QVERIFY(drag.inside);
        QVERIFY(!controller->IsAutoScrolling());
        drag.Move(at(where));
        const QPoint before = page.Scrolled();
        QCOMPARE(controller->IsAutoScrolling(), !direction.isNull());
        if (direction.isNull()) {
            QTest::qWait(100);
            QCOMPARE(page.Scrolled(), before);
            return;
        }
        QTRY_VERIFY(qAbs(page.Scrolled().x() - before.x()) >= 3 * qAbs(direction.x())
                    && qAbs(page.Scrolled().y() - before.y()) >= 3 * qAbs(direction.y()));
        const QPoint moved = page.Scrolled() - before;
        QCOMPARE(QPoint((moved.x() > 0) - (moved.x() < 0), (moved.y() > 0) - (moved.y() < 0)), direction);

        drag.Move(at(QPoint(0, 0))); // out of the band: it stops there
        QVERIFY(!controller->IsAutoScrolling());
        drag.Move(at(where)); // back in, then the drag leaves
        QVERIFY(controller->IsAutoScrolling());
        drag.Leave();
        QVERIFY(!controller->IsAutoScrolling());
        DragSession again(page, at(where)); // in again, then a drop
        QVERIFY(controller->IsAutoScrolling());
        again.Drop(at(where));
        QVERIFY(!controller->IsAutoScrolling());
    }

    // The scrolling is faster nearer the edge, ends at the end of the content, is off with
    // a margin of 0, and stops with the area hidden.
    void dragAndDropSpeedEndAndHiding()
    {
        Page page;
        ScrollAreaController* controller = page.controller;
        controller->SetAutoScrollStep(40);
        QVERIFY(page.Show());
        const int edge = page.Viewport()->height() - 1;
        // One tick at the edge goes the whole step, in the band's middle half of it.
        QSignalSpy steps(page.Vertical(), &QScrollBar::valueChanged);
        for (const int inward : {0, 12}) {
            page.Vertical()->setValue(0);
            steps.clear();
            {
                DragSession drag(page, QPoint(100, edge - inward));
                QTRY_VERIFY(steps.count() >= 2);
            }
            QCOMPARE(steps.at(1).at(0).toInt() - steps.at(0).at(0).toInt(), 40 * (24 - inward) / 24);
        }

        // To the end, and no further ticks.
        page.Vertical()->setValue(page.Vertical()->maximum() - 50);
        {
            DragSession drag(page, QPoint(100, edge));
            QTRY_COMPARE(page.Vertical()->value(), page.Vertical()->maximum());
            QTRY_VERIFY(!controller->IsAutoScrolling());
        }

        controller->SetAutoScrollMargin(0);
        page.Vertical()->setValue(0);
        {
            DragSession drag(page, QPoint(100, edge));
            QVERIFY(!controller->IsAutoScrolling());
        }

        controller->SetAutoScrollMargin(24);
        DragSession drag(page, QPoint(100, edge));
        QVERIFY(controller->IsAutoScrolling());
        page.area->hide();
        QVERIFY(!controller->IsAutoScrolling());
        const int value = page.Vertical()->value();
        drag.Move(QPoint(100, edge));
        QVERIFY(!controller->IsAutoScrolling());
        QCOMPARE(page.Vertical()->value(), value);
    }
};

QTEST_MAIN(TestScrollAreaController)
#include "tst_scroll_area_controller.moc"
