#include <qt_halvo/widgets/containers/scroll_area_controller.h>

#include "test_support.h"

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <numeric>

using OrvantaQT::ScrollAreaController;

namespace {

constexpr int kRows = 30;
constexpr int kRowPitch = 60;
// Room above the first row and below the last.
constexpr int kTop = 20;

// The pointer through the X server's test extension, so that the input takes Qt's whole
// way (the window's implicit grab, the gesture manager, the delayed press). Positions are
// logical; the server's are device pixels. A hand's moves come some milliseconds apart, a
// fling's last move right before the release.
namespace Pointer {

Display* Server()
{
    static Display* display = XOpenDisplay(nullptr);
    return display;
}

void Move(const QPoint& global, bool settle = true)
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

void Click(const QPoint& global)
{
    Move(global);
    Button(true);
    Button(false);
}

// Press, move in steps, release: slowly, as a hand that places the content; fast, as a
// fling.
void Drag(const QPoint& from, const QPoint& to, int steps, bool fling = false)
{
    Move(from);
    Button(true);
    for (int i = 1; i <= steps; ++i)
        Move(from + (to - from) * i / steps, !fling);
    Button(false);
}

} // namespace Pointer

// A content that takes drops, as a list that items are dragged into does.
class DropTarget : public QWidget
{
protected:
    void dragEnterEvent(QDragEnterEvent* event) override { event->acceptProposedAction(); }
    void dragMoveEvent(QDragMoveEvent* event) override { event->acceptProposedAction(); }
    void dropEvent(QDropEvent* event) override { event->acceptProposedAction(); }
};

// A window with a line edit above a scroll area of rows of a button and a line edit
// (taller and wider than the area), and a line edit below it.
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

    Page()
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
            auto* button = new QPushButton(QStringLiteral("Button %1").arg(i), content);
            button->setGeometry(20, kTop + i * kRowPitch + 4, 200, 24);
            QObject::connect(button, &QPushButton::clicked, content, [this, i] { ++clicks[i]; });
            buttons << button;
            auto* edit = new QLineEdit(content);
            edit->setGeometry(20, kTop + i * kRowPitch + 32, 200, 24);
            edits << edit;
        }
        area->setWidget(content);
        below = new QLineEdit(window.get());
        below->setGeometry(10, 280, 200, 24);
    }
    bool Show()
    {
        if (!TestSupport::ShowAndWait(window.get()))
            return false;
        window->activateWindow();
        return QTest::qWaitForWindowActive(window.get());
    }
    QScrollBar* Vertical() const { return area->verticalScrollBar(); }
    QScrollBar* Horizontal() const { return area->horizontalScrollBar(); }
    QWidget* Viewport() const { return area->viewport(); }
    QPoint Global(QWidget* widget) const { return widget->mapToGlobal(widget->rect().center()); }
    // A point of the viewport on the desktop.
    QPoint InViewportGlobal(const QPoint& point) const { return Viewport()->mapToGlobal(point); }
    // Where a widget is in the viewport.
    QRect InViewport(QWidget* widget) const
    {
        return QRect(widget->mapTo(Viewport(), QPoint(0, 0)), widget->size());
    }
    int Clicks() const { return std::accumulate(clicks.begin(), clicks.end(), 0); }
};

// The scroller's states as they come.
class StateLog
{
public:
    explicit StateLog(QScroller* scroller)
        : m_connection(QObject::connect(scroller, &QScroller::stateChanged,
                                        [this](QScroller::State state) { m_states << state; }))
    {
    }
    ~StateLog() { QObject::disconnect(m_connection); }
    bool Saw(QScroller::State state) const { return m_states.contains(state); }

private:
    QVector<QScroller::State> m_states;
    QMetaObject::Connection m_connection;
};

// A drag and drop of some text over a widget of the page, as the window delivers it:
// an enter, moves, and a leave or a drop. Points are in the viewport.
class DragSession
{
public:
    DragSession(QWidget* target, QWidget* viewport, const QPoint& enter)
        : m_target(target)
        , m_viewport(viewport)
    {
        m_data.setText(QStringLiteral("item"));
        QDragEnterEvent event(Local(enter), Qt::CopyAction, &m_data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_target, &event);
        m_inside = event.isAccepted();
    }
    ~DragSession() { Leave(); }
    void Move(const QPoint& to)
    {
        QDragMoveEvent event(Local(to), Qt::CopyAction, &m_data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_target, &event);
    }
    void Leave()
    {
        if (!std::exchange(m_inside, false) || !m_target)
            return;
        QDragLeaveEvent event;
        QApplication::sendEvent(m_target, &event);
    }
    void Drop(const QPoint& at)
    {
        if (!std::exchange(m_inside, false))
            return;
        QDropEvent event(Local(at), Qt::CopyAction, &m_data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_target, &event);
    }
    bool IsInside() const { return m_inside; }

private:
    QPoint Local(const QPoint& inViewport) const { return m_target->mapFrom(m_viewport, inViewport); }

    QPointer<QWidget> m_target;
    QWidget* m_viewport;
    QMimeData m_data;
    bool m_inside = false;
};

} // namespace

class TestScrollAreaController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setStyle(QStringLiteral("Fusion"));
        QVERIFY(Pointer::Server());
    }

    // One controller per area, a child of it; a null area is logged once and gets none.
    void oneControllerPerArea()
    {
        QScrollArea area;
        QCOMPARE(ScrollAreaController::Of(&area), nullptr);
        ScrollAreaController* controller = OrvantaQT::SetScroller(&area);
        QVERIFY(controller);
        QCOMPARE(OrvantaQT::SetScroller(&area), controller);
        QCOMPARE(area.findChildren<ScrollAreaController*>().size(), 1);
        QCOMPARE(ScrollAreaController::Of(&area), controller);
        QCOMPARE(controller->parent(), &area);
        QCOMPARE(controller->GetScrollArea(), &area);
        QCOMPARE(controller->GetScroller(), QScroller::scroller(area.viewport()));
        QCOMPARE(controller->GetDragStartDistance(), QApplication::startDragDistance());

        const LogCapture::Mark mark;
        QCOMPARE(OrvantaQT::SetScroller(nullptr), nullptr);
        QCOMPARE(ScrollAreaController::Of(nullptr), nullptr);
        QCOMPARE(mark.Texts(), QStringList({QStringLiteral("3 SetScroller: no scroll area to scroll")}));
    }

    // A controller made without an area, and values that are none, are logged and change
    // nothing.
    void guards()
    {
        const LogCapture::Mark mark;
        ScrollAreaController idle(nullptr);
        QCOMPARE(idle.GetScrollArea(), nullptr);
        QCOMPARE(idle.GetScroller(), nullptr);
        idle.SetDragStartDistance(-1);
        idle.SetFocusMargin(-2);
        idle.SetAutoScrollMargin(-3);
        idle.SetAutoScrollStep(0);
        QCOMPARE(idle.GetDragStartDistance(), QApplication::startDragDistance());
        QCOMPARE(idle.GetFocusMargin(), 8);
        QCOMPARE(idle.GetAutoScrollMargin(), 24);
        QCOMPARE(idle.GetAutoScrollStep(), 12);
        idle.SetDragStartDistance(4); // no scroller to give it to
        QCOMPARE(idle.GetDragStartDistance(), 4);
        QCOMPARE(mark.Texts(),
                 QStringList({QStringLiteral("3 ScrollAreaController: no scroll area; the controller does nothing"),
                              QStringLiteral("3 ScrollAreaController: a negative drag start distance (-1) is ignored; it stays %1")
                                  .arg(QApplication::startDragDistance()),
                              QStringLiteral("3 ScrollAreaController: a negative focus margin (-2) is ignored; it stays 8"),
                              QStringLiteral("3 ScrollAreaController: a negative auto-scroll margin (-3) is ignored; it stays 24"),
                              QStringLiteral("3 ScrollAreaController: an auto-scroll step must be positive (0); it stays 12")}));
    }

    // The scroller's distance is the one set in pixels, in metres of the screen's
    // resolution, measured again when the window goes to another screen.
    void startDistanceInMetres()
    {
        Page page;
        ScrollAreaController* controller = OrvantaQT::SetScroller(page.area);
        QVERIFY(page.Show());
        QScroller* scroller = controller->GetScroller();
        const auto metres = [&] {
            return scroller->scrollerProperties().scrollMetric(QScrollerProperties::DragStartDistance).toReal();
        };
        const qreal dpi = page.window->screen()->physicalDotsPerInchY();
        controller->SetDragStartDistance(40);
        QVERIFY(qAbs(metres() - 39.5 * 0.0254 / dpi) < 1e-6);
        QCOMPARE(controller->GetDragStartDistance(), 40);
        // As if another screen had measured it.
        QScrollerProperties stale = scroller->scrollerProperties();
        stale.setScrollMetric(QScrollerProperties::DragStartDistance, 0.5);
        scroller->setScrollerProperties(stale);
        QVERIFY(QMetaObject::invokeMethod(page.window->windowHandle(), "screenChanged",
                                          Q_ARG(QScreen*, page.window->screen())));
        QVERIFY(qAbs(metres() - 39.5 * 0.0254 / dpi) < 1e-6);
        // A distance of 0 starts at once.
        controller->SetDragStartDistance(0);
        QCOMPARE(metres(), 0.0);
        // A fling runs on until a press.
        QCOMPARE(scroller->scrollerProperties().scrollMetric(QScrollerProperties::MaximumClickThroughVelocity).toReal(), 0.0);
    }

    void clickOrDrag_data()
    {
        QTest::addColumn<bool>("onButton");
        QTest::addColumn<QPoint>("move"); // in logical pixels
        QTest::addColumn<bool>("clicked");
        QTest::addColumn<bool>("dragged");
        QTest::newRow("click on a button") << true << QPoint(0, 0) << true << false;
        QTest::newRow("button, moved under the start distance") << true << QPoint(-29, 0) << true << false;
        QTest::newRow("button, moved by the start distance") << true << QPoint(0, -30) << false << true;
        QTest::newRow("button, moved by it across") << true << QPoint(-30, 0) << false << true;
        QTest::newRow("button, dragged") << true << QPoint(0, -100) << false << true;
        QTest::newRow("background, dragged") << false << QPoint(0, -100) << false << true;
        QTest::newRow("background, moved under the start distance") << false << QPoint(0, -29) << false << false;
    }
    // A press that moves less than the start distance is a click of the button under it;
    // one that moves that far scrolls the area, wherever it starts, and clicks nothing.
    // The distance is in logical pixels: the same at twice the density.
    void clickOrDrag()
    {
        QFETCH(bool, onButton);
        QFETCH(QPoint, move);
        QFETCH(bool, clicked);
        QFETCH(bool, dragged);
        if (!qEnvironmentVariableIsSet("QT_SCALE_FACTOR") && QTest::currentDataTag() == QLatin1String("click on a button"))
            QCOMPARE(TestSupport::RunTestFunctionInChild(QTest::currentTestFunction(), {QStringLiteral("QT_SCALE_FACTOR=2")}),
                     QString());
        Page page;
        ScrollAreaController* controller = OrvantaQT::SetScroller(page.area);
        // Far from QScroller's own 5 mm (20 pixels at 100 dpi, 10 at twice the density).
        controller->SetDragStartDistance(30);
        QVERIFY(page.Show());
        StateLog states(controller->GetScroller());
        QPushButton* button = page.buttons[1];
        const QPoint start = onButton ? page.Global(button) : button->mapToGlobal(QPoint(button->width() + 30, 10));
        Pointer::Drag(start, start + move, move.isNull() ? 1 : 4);
        QTRY_COMPARE(controller->GetScroller()->state(), QScroller::Inactive);
        QCOMPARE(page.clicks[1], clicked ? 1 : 0);
        QCOMPARE(page.Clicks(), page.clicks[1]);
        QCOMPARE(states.Saw(QScroller::Dragging), dragged);
        const QPoint scrolled(page.Horizontal()->value(), page.Vertical()->value());
        QCOMPARE(!scrolled.isNull(), dragged);
        // The content follows the pointer all the way (and may fly on).
        if (dragged)
            QVERIFY2(scrolled.x() >= -move.x() - 2 && scrolled.y() >= -move.y() - 2 && (scrolled.x() == 0) == (move.x() == 0)
                         && (scrolled.y() == 0) == (move.y() == 0),
                     qPrintable(QStringLiteral("%1, %2").arg(scrolled.x()).arg(scrolled.y())));
        QVERIFY(!button->isDown());
    }

    // Deleted alone, the controller leaves no kinetic scrolling behind; a new one brings
    // it back.
    void controllerDeletedAlone()
    {
        Page page;
        QVERIFY(page.Show());
        const QPoint start = page.InViewportGlobal(QPoint(page.Viewport()->width() - 30, 150));
        delete OrvantaQT::SetScroller(page.area);
        QCOMPARE(ScrollAreaController::Of(page.area), nullptr);
        Pointer::Drag(start, start - QPoint(0, 100), 4);
        QCOMPARE(page.Vertical()->value(), 0);
        ScrollAreaController* controller = OrvantaQT::SetScroller(page.area);
        QTest::qWait(QApplication::doubleClickInterval());
        Pointer::Drag(start, start - QPoint(0, 100), 4);
        QTRY_COMPARE(controller->GetScroller()->state(), QScroller::Inactive);
        QVERIFY(page.Vertical()->value() >= 98);
    }

    void touch_data()
    {
        QTest::addColumn<int>("row"); // apart, so that the rows make no double tap
        QTest::addColumn<QPoint>("move");
        QTest::addColumn<bool>("clicked");
        QTest::newRow("tap") << 1 << QPoint(0, 0) << true;
        QTest::newRow("swipe") << 2 << QPoint(0, -90) << false;
    }
    // A finger does what the left button does: a tap clicks, a swipe scrolls.
    void touch()
    {
        QFETCH(int, row);
        QFETCH(QPoint, move);
        QFETCH(bool, clicked);
        static QTouchDevice* const screen = QTest::createTouchDevice();
        Page page;
        ScrollAreaController* controller = OrvantaQT::SetScroller(page.area);
        QVERIFY(page.Show());
        QWidget* window = page.window.get();
        const QPoint start = page.buttons[row]->mapTo(window, page.buttons[row]->rect().center());
        QTest::touchEvent(window, screen).press(0, start, window);
        for (int i = 1; i <= 3; ++i) {
            QTest::qWait(20);
            QTest::touchEvent(window, screen).move(0, start + move * i / 3, window);
        }
        QTest::touchEvent(window, screen).release(0, start + move, window);
        QTRY_COMPARE(controller->GetScroller()->state(), QScroller::Inactive);
        QCOMPARE(page.clicks[row], clicked ? 1 : 0);
        QCOMPARE(page.Clicks(), page.clicks[row]);
        QVERIFY2(page.Vertical()->value() >= -move.y(), qPrintable(QString::number(page.Vertical()->value())));
        QCOMPARE(page.Vertical()->value() > 0, !clicked);
    }

    // After a fling the content keeps moving; the next press stops it where it is and
    // clicks nothing, the one after clicks.
    void pressDuringAFlingStopsIt()
    {
        Page page;
        ScrollAreaController* controller = OrvantaQT::SetScroller(page.area);
        QVERIFY(page.Show());
        QScroller* scroller = controller->GetScroller();
        const QPoint bottom = page.InViewportGlobal(QPoint(page.Viewport()->width() - 30, 200));
        Pointer::Drag(bottom, bottom - QPoint(0, 150), 6, true);
        QCOMPARE(scroller->state(), QScroller::Scrolling);
        QTRY_VERIFY(page.Vertical()->value() > 180);

        // Over the column of buttons, so that something would be clicked.
        const QPoint onColumn = page.InViewportGlobal(QPoint(120, 100));
        Pointer::Click(onColumn);
        QTRY_COMPARE(scroller->state(), QScroller::Inactive);
        const int stopped = page.Vertical()->value();
        QVERIFY(stopped < page.Vertical()->maximum());
        QCOMPARE(page.Clicks(), 0);
        QTest::qWait(200);
        QCOMPARE(page.Vertical()->value(), stopped);

        // Not a double click of the first.
        QTest::qWait(QApplication::doubleClickInterval());
        const auto shown = std::find_if(page.buttons.begin(), page.buttons.end(), [&](QPushButton* button) {
            return page.Viewport()->rect().contains(page.InViewport(button));
        });
        QVERIFY(shown != page.buttons.end());
        QPushButton* button = *shown;
        Pointer::Click(page.Global(button));
        QCOMPARE(page.Clicks(), 1);
        QCOMPARE(page.clicks[page.buttons.indexOf(button)], 1);
    }

    // The area, its scroller and the controller go while the content flies: nothing is
    // left behind that fires later.
    void deletedDuringAFling()
    {
        Page page;
        QPointer<ScrollAreaController> controller = OrvantaQT::SetScroller(page.area);
        QVERIFY(page.Show());
        QPointer<QScroller> scroller = controller->GetScroller();
        const QPoint bottom = page.InViewportGlobal(QPoint(page.Viewport()->width() - 30, 200));
        Pointer::Drag(bottom, bottom - QPoint(0, 150), 6, true);
        QCOMPARE(scroller->state(), QScroller::Scrolling);
        // A drag and drop hovers an edge too.
        DragSession drag(page.content, page.Viewport(), QPoint(100, page.Viewport()->height() - 2));
        QVERIFY(controller->IsAutoScrolling());
        page.window.reset();
        QVERIFY(!controller);
        QTRY_VERIFY(!scroller);
        QVERIFY(QScroller::activeScrollers().isEmpty());
        QTest::qWait(100);
    }

    void focusKeptVisible_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("controlled");
        QTest::addColumn<int>("startValue"); // -1 for the maximum
        QTest::addColumn<QString>("focused");
        QTest::addColumn<bool>("scrolls");
        QTest::newRow("tab in from above") << "tab" << true << -1 << "button 0" << true;
        QTest::newRow("backtab in from below") << "backtab" << true << 0 << "edit 29" << true;
        QTest::newRow("set by the program") << "other" << true << 0 << "edit 12" << true;
        QTest::newRow("set by the program, above") << "other" << true << -1 << "edit 12" << true;
        QTest::newRow("set by the program, already in view") << "other" << true << 0 << "edit 1" << false;
        // Its top 3 pixels from the viewport's.
        QTest::newRow("set by the program, in the margin") << "other" << true << kTop + kRowPitch + 32 - 3 << "edit 1" << true;
        QTest::newRow("clicked: no scroll") << "mouse" << true << 0 << "edit 12" << false;
        QTest::newRow("tab in, no controller") << "tab" << false << -1 << "button 0" << false;
        QTest::newRow("backtab in, no controller") << "backtab" << false << 0 << "edit 29" << false;
    }
    // The child that the keyboard or the program focuses is scrolled into view with the
    // margin, and no further; a click's focus scrolls nothing.
    void focusKeptVisible()
    {
        QFETCH(QString, how);
        QFETCH(bool, controlled);
        QFETCH(int, startValue);
        QFETCH(QString, focused);
        QFETCH(bool, scrolls);
        Page page;
        ScrollAreaController* controller = controlled ? OrvantaQT::SetScroller(page.area) : nullptr;
        QVERIFY(page.Show());
        page.Vertical()->setValue(startValue < 0 ? page.Vertical()->maximum() : startValue);
        const int before = page.Vertical()->value();
        const int row = focused.section(QLatin1Char(' '), 1).toInt();
        QWidget* target = focused.startsWith(QLatin1String("button")) ? static_cast<QWidget*>(page.buttons[row])
                                                                      : page.edits[row];
        if (how == QLatin1String("tab")) {
            page.above->setFocus();
            QTest::keyClick(page.above, Qt::Key_Tab);
        } else if (how == QLatin1String("backtab")) {
            page.below->setFocus();
            QTest::keyClick(page.below, Qt::Key_Backtab);
        } else {
            target->setFocus(how == QLatin1String("mouse") ? Qt::MouseFocusReason : Qt::OtherFocusReason);
        }
        QVERIFY(target->hasFocus());
        const QRect rect = page.InViewport(target);
        if (!scrolls) {
            QCOMPARE(page.Vertical()->value(), before);
            return;
        }
        const int margin = controller->GetFocusMargin();
        // In view with the margin, at the edge it came from.
        if (page.Vertical()->value() < before)
            QCOMPARE(rect.top(), margin);
        else
            QCOMPARE(rect.bottom() + 1, page.Viewport()->height() - margin);
    }

    // A wider margin keeps more room; a child taller than the area shows its top.
    void focusMargin()
    {
        Page page;
        ScrollAreaController* controller = OrvantaQT::SetScroller(page.area);
        controller->SetFocusMargin(30);
        QVERIFY(page.Show());
        page.edits[10]->setFocus();
        QCOMPARE(page.InViewport(page.edits[10]).bottom() + 1, page.Viewport()->height() - 30);
        page.edits[20]->setMinimumHeight(400);
        page.edits[20]->resize(200, 400);
        page.edits[20]->setFocus();
        QCOMPARE(page.InViewport(page.edits[20]).top(), 30);
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
        ScrollAreaController* controller = OrvantaQT::SetScroller(page.area);
        QVERIFY(page.Show());
        page.Vertical()->setValue(startValue < 0 ? page.Vertical()->maximum() : startValue);
        const QSize size = page.Viewport()->size();
        const auto at = [&](const QPoint& towards) {
            return QPoint(size.width() / 2 + towards.x() * (size.width() / 2 - 3),
                          size.height() / 2 + towards.y() * (size.height() / 2 - 3));
        };
        QVERIFY(!controller->IsAutoScrolling());
        DragSession drag(page.content, page.Viewport(), at(QPoint(0, 0)));
        QVERIFY(drag.IsInside());
        QVERIFY(!controller->IsAutoScrolling());
        drag.Move(at(where));
        const QPoint before(page.Horizontal()->value(), page.Vertical()->value());
        if (direction.isNull()) {
            QVERIFY(!controller->IsAutoScrolling());
            QTest::qWait(100);
            QCOMPARE(QPoint(page.Horizontal()->value(), page.Vertical()->value()), before);
            return;
        }
        QVERIFY(controller->IsAutoScrolling());
        QTRY_VERIFY(qAbs(page.Horizontal()->value() - before.x()) >= 3 * qAbs(direction.x())
                    && qAbs(page.Vertical()->value() - before.y()) >= 3 * qAbs(direction.y()));
        const QPoint moved = QPoint(page.Horizontal()->value(), page.Vertical()->value()) - before;
        QCOMPARE(QPoint((moved.x() > 0) - (moved.x() < 0), (moved.y() > 0) - (moved.y() < 0)), direction);

        // Out of the band: it stops there.
        drag.Move(at(QPoint(0, 0)));
        QVERIFY(!controller->IsAutoScrolling());
        // Back in, then the drag leaves.
        drag.Move(at(where));
        QVERIFY(controller->IsAutoScrolling());
        drag.Leave();
        QVERIFY(!controller->IsAutoScrolling());
        // In again, then a drop.
        DragSession again(page.content, page.Viewport(), at(where));
        QVERIFY(controller->IsAutoScrolling());
        again.Drop(at(where));
        QVERIFY(!controller->IsAutoScrolling());
    }

    // The scrolling is faster nearer the edge, ends at the end of the content, and is off
    // with a margin of 0.
    void dragAndDropSpeedAndEnd()
    {
        Page page;
        ScrollAreaController* controller = OrvantaQT::SetScroller(page.area);
        controller->SetAutoScrollStep(40);
        QVERIFY(page.Show());
        const int height = page.Viewport()->height();
        // One tick at the edge goes the whole step, in the band's middle half of it.
        QSignalSpy steps(page.Vertical(), &QScrollBar::valueChanged);
        {
            DragSession drag(page.content, page.Viewport(), QPoint(100, height - 1));
            QTRY_VERIFY(steps.count() >= 2);
        }
        QCOMPARE(steps.at(1).at(0).toInt() - steps.at(0).at(0).toInt(), 40);
        page.Vertical()->setValue(0);
        steps.clear();
        {
            DragSession drag(page.content, page.Viewport(), QPoint(100, height - 1 - 12));
            QTRY_VERIFY(steps.count() >= 2);
        }
        QCOMPARE(steps.at(1).at(0).toInt() - steps.at(0).at(0).toInt(), 40 * 12 / 24);

        // To the end, and no further ticks.
        page.Vertical()->setValue(page.Vertical()->maximum() - 50);
        {
            DragSession drag(page.content, page.Viewport(), QPoint(100, height - 1));
            QTRY_COMPARE(page.Vertical()->value(), page.Vertical()->maximum());
            QTRY_VERIFY(!controller->IsAutoScrolling());
        }

        controller->SetAutoScrollMargin(0);
        page.Vertical()->setValue(0);
        DragSession drag(page.content, page.Viewport(), QPoint(100, height - 1));
        QVERIFY(!controller->IsAutoScrolling());
    }

    // Hidden, the area scrolls no more for a drag; its timer stops with it.
    void hiddenAreaStopsScrolling()
    {
        Page page;
        ScrollAreaController* controller = OrvantaQT::SetScroller(page.area);
        QVERIFY(page.Show());
        DragSession drag(page.content, page.Viewport(), QPoint(100, page.Viewport()->height() - 1));
        QVERIFY(controller->IsAutoScrolling());
        page.area->hide();
        QVERIFY(!controller->IsAutoScrolling());
        const int value = page.Vertical()->value();
        drag.Move(QPoint(100, page.Viewport()->height() - 1));
        QVERIFY(!controller->IsAutoScrolling());
        QCOMPARE(page.Vertical()->value(), value);
    }
};

QTEST_MAIN(TestScrollAreaController)
#include "tst_scroll_area_controller.moc"
