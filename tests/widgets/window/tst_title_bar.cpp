#include <qt_halvo/widgets/window/frameless_window.h>
#include <qt_halvo/widgets/window/title_bar.h>

#include "real_input.h"
#include "test_support.h"

#include <memory>

using OrvantaQT::FramelessWindow;
using OrvantaQT::TitleBar;

namespace {

enum Kind { Frameless, Plain };

// A window of 500 × 300 at (200, 150) whose title bar holds a push button and a line edit of
// the host's: a FramelessWindow, or a plain QWidget without the system's frame that has a
// TitleBar at the top of its layout.
struct TestWindow
{
    std::unique_ptr<QWidget> window;
    TitleBar* bar = nullptr;
    QPushButton* button = new QPushButton(QStringLiteral("Search"));
    QLineEdit* edit = new QLineEdit;

    explicit TestWindow(Kind kind = Frameless, FramelessWindow::MaximizeMode mode = FramelessWindow::Automatic)
    {
        if (kind == Frameless) {
            auto* frameless = new FramelessWindow;
            frameless->SetMaximizeMode(mode);
            frameless->SetCentralWidget(new QLabel(QStringLiteral("content")));
            bar = frameless->GetTitleBar();
            window.reset(frameless);
        } else {
            window.reset(new QWidget(nullptr, Qt::FramelessWindowHint));
            auto* layout = new QVBoxLayout(window.get());
            layout->setContentsMargins(0, 0, 0, 0);
            bar = new TitleBar;
            layout->addWidget(bar);
            layout->addWidget(new QLabel(QStringLiteral("content")), 1);
        }
        window->setWindowTitle(QStringLiteral("Window"));
        edit->setFixedWidth(100);
        bar->AddWidget(button);
        bar->AddWidget(edit);
        window->setGeometry(200, 150, 500, 300);
    }
    bool Show() { return TestSupport::ShowAndWait(window.get()) && SettledAt(window->geometry()); }
    bool SettledAt(const QRect& geometry) { return TestSupport::SettledAt(window.get(), geometry); }
    QWidget* Child(const QString& name) const { return bar->findChild<QWidget*>(name); }
    QLabel* Title() const { return bar->findChild<QLabel*>(QStringLiteral("Title")); }
    // A point of the caption: on the title, near its left end.
    QPoint Caption() const { return Title()->mapToGlobal(QPoint(10, Title()->height() / 2)); }
    // What the window is now: "hidden", "minimized", "maximized" or "normal".
    QString State() const
    {
        auto* frameless = qobject_cast<FramelessWindow*>(window.get());
        if (!window->isVisible())
            return QStringLiteral("hidden");
        if (window->windowState() & Qt::WindowMinimized)
            return QStringLiteral("minimized");
        const bool maximized = frameless ? frameless->IsMaximized() : window->isMaximized();
        return maximized ? QStringLiteral("maximized") : QStringLiteral("normal");
    }
};

QPoint Centre(const QWidget* widget)
{
    return widget->mapToGlobal(widget->rect().center());
}

// Presses and releases in place, twice for a double click.
void Click(const QPoint& global, int times = 1)
{
    for (int i = 0; i < times; ++i) {
        TestSupport::RealMousePress(global);
        TestSupport::RealMouseRelease(global);
    }
}

// The places a window moves to, in order, while it lives.
struct MoveLog : QObject
{
    QWidget* window;
    QList<QPoint> places;
    explicit MoveLog(QWidget* watched) : window(watched) { window->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Move && (places.isEmpty() || places.last() != window->pos()))
            places << window->pos();
        return false;
    }
};

} // namespace

class TstTitleBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QCursor::setPos(5, 5); }

    // From left to right: the icon, the title, the host's widgets and the three buttons,
    // named for style sheets and accessibility. The icon is the window's, and changes with it.
    void childrenAndIcon()
    {
        const auto filled = [](Qt::GlobalColor colour) {
            QPixmap pixmap(16, 16);
            pixmap.fill(colour);
            return QIcon(pixmap);
        };
        TestWindow w;
        w.window->setWindowIcon(filled(Qt::red));
        QVERIFY(w.Show());
        QList<QWidget*> children = w.bar->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        std::sort(children.begin(), children.end(), [](QWidget* a, QWidget* b) { return a->x() < b->x(); });
        QStringList seen;
        for (QWidget* child : children)
            seen << QStringLiteral("%1 %2 '%3'").arg(child->objectName(), child->accessibleName(), child->toolTip());
        QCOMPARE(seen, QStringList({QStringLiteral("Icon TitleBar_Icon ''"), QStringLiteral("Title TitleBar_Title ''"),
                                    QStringLiteral("HostWidgets TitleBar_HostWidgets ''"),
                                    QStringLiteral("MinimizeButton TitleBar_MinimizeButton 'Minimize'"),
                                    QStringLiteral("MaximizeButton TitleBar_MaximizeButton 'Maximize'"),
                                    QStringLiteral("CloseButton TitleBar_CloseButton 'Close'")}));
        QWidget* icon = w.Child(QStringLiteral("Icon"));
        const auto middle = [&] { return TestSupport::Render(icon).pixelColor(icon->rect().center()); };
        QCOMPARE(middle(), QColor(Qt::red));
        w.window->setWindowIcon(filled(Qt::blue));
        QCOMPARE(middle(), QColor(Qt::blue));
    }

    // The title is the window's, elided at the right while the bar is too narrow for it (the
    // whole title then in the tool tip), and whole again when the bar widens.
    void titleFollowsTheWindow()
    {
        TestWindow w;
        w.window->resize(900, 300);
        QVERIFY(w.Show());
        QLabel* title = w.Title();
        QCOMPARE(title->text(), QStringLiteral("Window"));
        const QString longTitle = QStringLiteral("Quarterly figures of the northern warehouses, second draft");
        w.window->setWindowTitle(longTitle);
        QCOMPARE(title->text(), longTitle);
        QCOMPARE(title->toolTip(), QString());

        w.window->resize(330, 300);
        QVERIFY(w.SettledAt(QRect(200, 150, 330, 300)));
        QTRY_VERIFY(title->text().endsWith(QChar(0x2026)));
        QVERIFY2(longTitle.startsWith(title->text().chopped(1)), qPrintable(title->text()));
        QVERIFY(title->fontMetrics().horizontalAdvance(title->text()) <= title->width());
        QCOMPARE(title->toolTip(), longTitle);

        w.window->resize(800, 300);
        QVERIFY(w.SettledAt(QRect(200, 150, 800, 300)));
        QTRY_COMPARE(title->text(), longTitle);
        QCOMPARE(title->toolTip(), QString());
    }

    // The title is the one the window system shows: "[*]" stands for the mark of a modified
    // window, "[*][*]" for "[*]" itself.
    void titleShowsTheModifiedMark_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<bool>("modified");
        QTest::addColumn<QString>("shown");
        QTest::newRow("no placeholder") << "Notes" << false << "Notes";
        QTest::newRow("unmodified") << "Notes[*]" << false << "Notes";
        QTest::newRow("modified") << "Notes[*]" << true << "Notes*";
        QTest::newRow("escaped") << "Notes [*][*]" << false << "Notes [*]";
    }
    void titleShowsTheModifiedMark()
    {
        QFETCH(QString, title);
        QFETCH(bool, modified);
        QFETCH(QString, shown);
        TestWindow w;
        w.window->resize(900, 300);
        w.window->setWindowTitle(title);
        QVERIFY(w.Show());
        w.window->setWindowModified(modified);
        QCOMPARE(w.window->windowHandle()->title(), shown);
        QCOMPARE(w.Title()->text(), shown);
    }

    // Each button does its deed to the window around the bar, whichever kind it is.
    void buttons_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("state");
        for (const Kind kind : {Frameless, Plain}) {
            const char* name = kind == Frameless ? "frameless window" : "plain widget";
            QTest::addRow("%s, minimise", name) << int(kind) << "MinimizeButton" << "minimized";
            QTest::addRow("%s, maximise", name) << int(kind) << "MaximizeButton" << "maximized";
            QTest::addRow("%s, close", name) << int(kind) << "CloseButton" << "hidden";
        }
    }
    void buttons()
    {
        QFETCH(int, kind);
        QFETCH(QString, button);
        QFETCH(QString, state);
        TestWindow w(Kind(kind), FramelessWindow::Emulated);
        QVERIFY(w.Show());
        Click(Centre(w.Child(button)));
        QTRY_COMPARE(w.State(), state);
        QCOMPARE(w.Child(QStringLiteral("MaximizeButton"))->property("WindowState").toString(),
                 QLatin1String(state == "maximized" ? "Maximized" : "Normal"));
    }

    // Maximised and restored by the button, by a double click on the caption or by the
    // window's own functions: the button shows which, and the window comes back to exactly
    // where it was.
    void maximizesAndRestores_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("way");
        for (const QString way : {"button", "double click", "window"}) {
            QTest::addRow("%s", qPrintable(way)) << int(FramelessWindow::Automatic) << way;
            QTest::addRow("%s, by hand", qPrintable(way)) << int(FramelessWindow::Emulated) << way;
        }
    }
    void maximizesAndRestores()
    {
        QFETCH(int, mode);
        QFETCH(QString, way);
        TestWindow w(Frameless, FramelessWindow::MaximizeMode(mode));
        QVERIFY(w.Show());
        auto* window = static_cast<FramelessWindow*>(w.window.get());
        QWidget* maximize = w.Child(QStringLiteral("MaximizeButton"));
        const QRect normal = window->geometry();
        const auto toggle = [&](bool maximized) {
            if (way == "button")
                Click(Centre(maximize));
            else if (way == "double click")
                Click(w.Caption(), 2);
            else
                window->SetMaximized(maximized);
        };

        toggle(true);
        const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(w.SettledAt(available));
        QVERIFY(window->IsMaximized());
        QCOMPARE(maximize->property("WindowState"), QVariant(QStringLiteral("Maximized")));
        QCOMPARE(maximize->toolTip(), QStringLiteral("Restore"));

        toggle(false);
        QVERIFY(w.SettledAt(normal));
        QVERIFY(!window->IsMaximized());
        QCOMPARE(maximize->property("WindowState"), QVariant(QStringLiteral("Normal")));
        QCOMPARE(maximize->toolTip(), QStringLiteral("Maximize"));
    }

    // A press and drag on the caption moves the window by the drag: through the window
    // manager where one runs, by hand where none does.
    void dragOnTheCaptionMoves_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QPoint>("drag");
        for (const Kind kind : {Frameless, Plain}) {
            const char* name = kind == Frameless ? "frameless window" : "plain widget";
            QTest::addRow("%s, down and right", name) << int(kind) << QPoint(60, 40);
            QTest::addRow("%s, up and left", name) << int(kind) << QPoint(-70, -50);
        }
    }
    void dragOnTheCaptionMoves()
    {
        QFETCH(int, kind);
        QFETCH(QPoint, drag);
        TestWindow w{Kind(kind)};
        QVERIFY(w.Show());
        const QRect before = w.window->geometry();
        const QPoint start = w.Caption();
        TestSupport::RealDrag(start, start + drag);
        QVERIFY(w.SettledAt(before.translated(drag)));
    }

    // Moved by hand, the window stays put for a shaky click, under the start distance, and
    // then follows the whole drag; a window manager's move follows it from the press.
    void shortDragOnTheCaption()
    {
        TestWindow w{Frameless};
        QVERIFY(w.Show());
        const QRect before = w.window->geometry();
        const QPoint start = w.Caption();
        const QPoint shaky(3, 2);
        QVERIFY(shaky.manhattanLength() < QApplication::startDragDistance());
        TestSupport::RealDrag(start, start + shaky, 2);
        const QRect expected = TestSupport::WindowManagerRuns() ? before.translated(shaky) : before;
        QVERIFY(w.SettledAt(expected));
    }

    // A press on a host widget or a button of the bar keeps the window where it is, however
    // far the pointer goes: moved by the test afterwards, the window makes that move alone.
    void dragOnAControlDoesNotMove_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("host push button") << "host button";
        QTest::newRow("host line edit") << "host edit";
        QTest::newRow("minimise button") << "MinimizeButton";
        QTest::newRow("maximise button") << "MaximizeButton";
        QTest::newRow("close button") << "CloseButton";
    }
    void dragOnAControlDoesNotMove()
    {
        QFETCH(QString, target);
        TestWindow w;
        QVERIFY(w.Show());
        QWidget* control = target == "host button" ? w.button : target == "host edit" ? w.edit : w.Child(target);
        const QRect before = w.window->geometry();
        MoveLog moves(w.window.get());
        TestSupport::RealDrag(Centre(control), Centre(control) + QPoint(40, 60));
        QCOMPARE(w.State(), QStringLiteral("normal"));
        QCOMPARE(w.window->geometry(), before);
        w.window->move(before.topLeft() + QPoint(30, 20));
        QVERIFY(w.SettledAt(before.translated(30, 20)));
        QCOMPARE(moves.places, QList<QPoint>{before.topLeft() + QPoint(30, 20)});
    }

    // The host's widgets keep their clicks: the button is clicked, the line edit takes the
    // focus, and the window stays.
    void hostWidgetsKeepTheirClicks()
    {
        TestWindow w;
        QVERIFY(w.Show());
        const QRect before = w.window->geometry();
        TestSupport::SignalLog log(w.button, {"clicked(bool)"});
        Click(Centre(w.button));
        QCOMPARE(log.Take(), QStringList{QStringLiteral("clicked(false)")});
        Click(Centre(w.edit));
        QTRY_VERIFY(w.edit->hasFocus());
        QCOMPARE(w.window->geometry(), before);
    }

    // A double click on a host widget is the widget's; on the maximise button it is two
    // clicks of that button, and never a double click on the caption besides. The window
    // sits in the screen's top right corner, so that the button stays under the pointer
    // while the window is maximised.
    void doubleClickOnAControl_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QStringList>("changes");
        QTest::newRow("host push button") << "host button" << QStringList();
        QTest::newRow("host line edit") << "host edit" << QStringList();
        QTest::newRow("maximise button") << "MaximizeButton"
                                         << TestSupport::Words("MaximizedChanged(true) MaximizedChanged(false)");
    }
    void doubleClickOnAControl()
    {
        QFETCH(QString, target);
        QFETCH(QStringList, changes);
        TestWindow w(Frameless, FramelessWindow::Emulated);
        w.window->move(QGuiApplication::primaryScreen()->availableGeometry().topRight() - QPoint(499, 0));
        QVERIFY(w.Show());
        QWidget* control = target == "host button" ? w.button : target == "host edit" ? w.edit : w.Child(target);
        const QRect before = w.window->geometry();
        TestSupport::SignalLog log(w.window.get(), {"MaximizedChanged(bool)"});
        Click(Centre(control), 2);
        QCOMPARE(log.Take(), changes);
        QCOMPARE(w.State(), QStringLiteral("normal"));
        QCOMPARE(w.window->geometry(), before);
    }

    // Dragging a maximised window restores it to its normal size under the pointer, which
    // keeps its place across the bar (as a fraction of the width) and its height in it.
    void dragRestoresAMaximizedWindow_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("maximised") << int(FramelessWindow::Automatic);
        QTest::newRow("maximised by hand") << int(FramelessWindow::Emulated);
    }
    void dragRestoresAMaximizedWindow()
    {
        QFETCH(int, mode);
        TestWindow w(Frameless, FramelessWindow::MaximizeMode(mode));
        QVERIFY(w.Show());
        auto* window = static_cast<FramelessWindow*>(w.window.get());
        const QSize normal = window->size();
        window->ShowMaximized();
        const QRect maximized = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(w.SettledAt(maximized));
        QTRY_COMPARE(w.bar->width(), maximized.width());

        const QPoint press = w.Title()->mapToGlobal(QPoint(w.Title()->width() / 2, w.Title()->height() / 2));
        const qreal fraction = qreal(press.x() - maximized.x()) / maximized.width();
        const QPoint release = press + QPoint(-100, 200);
        TestSupport::RealDrag(press, release);
        QTRY_VERIFY(!window->IsMaximized());
        const QRect expected(release - QPoint(qRound(fraction * normal.width()), press.y() - maximized.y()), normal);
        QVERIFY(w.SettledAt(expected));
    }

    // The host's widgets in the order added; one removed comes back without a parent, and
    // the host area hides once none is left, however they went.
    void hostWidgets()
    {
        TitleBar bar;
        QWidget* area = bar.findChild<QWidget*>(QStringLiteral("HostWidgets"));
        QVERIFY(area->isHidden());
        auto* first = new QPushButton(QStringLiteral("first"));
        auto* second = new QLineEdit;
        auto* third = new QLabel(QStringLiteral("third"));
        bar.AddWidget(first);
        bar.AddWidget(second);
        bar.AddWidget(third);
        QCOMPARE(bar.Widgets(), (QList<QWidget*>{first, second, third}));
        QVERIFY(bar.isAncestorOf(second));
        QVERIFY(!area->isHidden());

        std::unique_ptr<QWidget> removed(second);
        QVERIFY(bar.RemoveWidget(second));
        QCOMPARE(second->parentWidget(), nullptr);
        QCOMPARE(bar.Widgets(), (QList<QWidget*>{first, third}));
        QLineEdit stranger;
        QVERIFY(!bar.RemoveWidget(second));
        QVERIFY(!bar.RemoveWidget(&stranger));
        QVERIFY(!bar.RemoveWidget(nullptr));
        QVERIFY(!bar.RemoveWidget(area));

        QVERIFY(bar.RemoveWidget(first));
        delete first;
        QVERIFY(!area->isHidden());
        delete third;
        QCOMPARE(bar.Widgets(), QList<QWidget*>());
        QVERIFY(area->isHidden());
    }

    // What the bar cannot hold is logged and left where it is.
    void addWidgetGuards_data()
    {
        QTest::addColumn<int>("which");
        QTest::addColumn<QString>("message");
        const QString itself = QStringLiteral("3 TitleBar: the bar cannot hold itself or a widget it lies in");
        QTest::newRow("nothing") << 0 << QStringLiteral("3 TitleBar: no widget to add");
        QTest::newRow("the bar") << 1 << itself;
        QTest::newRow("its parent") << 2 << itself;
        QTest::newRow("its window") << 3 << itself;
    }
    void addWidgetGuards()
    {
        QFETCH(int, which);
        QFETCH(QString, message);
        QWidget window;
        auto* parent = new QWidget(&window);
        auto* bar = new TitleBar(parent);
        QWidget* const widgets[] = {nullptr, bar, parent, &window};
        LogCapture::Mark logs;
        bar->AddWidget(widgets[which]);
        QCOMPARE(logs.Texts(), QStringList{message});
        QCOMPARE(bar->Widgets(), QList<QWidget*>());
        QCOMPARE(bar->parentWidget(), parent);
        QCOMPARE(parent->parentWidget(), &window);
    }

    // Mouse events the bar does not use, of another button, go on to the widget it lies in.
    void passesOnWhatItDoesNotUse()
    {
        struct : QObject
        {
            QList<QEvent::Type> seen;
            bool eventFilter(QObject*, QEvent* event) override
            {
                if (dynamic_cast<QMouseEvent*>(event))
                    seen << event->type();
                return false;
            }
        } parentSees;
        QWidget parent;
        auto* bar = new TitleBar(&parent);
        parent.installEventFilter(&parentSees);
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonDblClick}) {
            QMouseEvent event(type, QPointF(50, 10), Qt::RightButton, Qt::RightButton, Qt::NoModifier);
            QApplication::sendEvent(bar, &event);
        }
        QCOMPARE(parentSees.seen, QList<QEvent::Type>({QEvent::MouseButtonPress, QEvent::MouseMove,
                                                       QEvent::MouseButtonDblClick}));
    }

    // A bar that is a window of its own has no window to act on: its buttons and a double
    // click leave it as it is.
    void topLevelBar()
    {
        TitleBar bar;
        bar.setWindowTitle(QStringLiteral("Alone"));
        bar.resize(400, 32);
        QVERIFY(TestSupport::ShowAndWait(&bar));
        QTRY_VERIFY(bar.findChild<QWidget*>(QStringLiteral("Title"))->width() > 20);
        for (const char* name : {"MinimizeButton", "MaximizeButton", "CloseButton", "Title"}) {
            QWidget* target = bar.findChild<QWidget*>(QString::fromLatin1(name));
            Click(Centre(target), 2);
            QVERIFY2(bar.isVisible() && bar.windowState() == Qt::WindowNoState, name);
            QCOMPARE(bar.findChild<QWidget*>(QStringLiteral("MaximizeButton"))->property("WindowState"),
                     QVariant(QStringLiteral("Normal")));
        }
        // Its title is its own, and follows its own changes and modified mark.
        auto* title = bar.findChild<QLabel*>(QStringLiteral("Title"));
        QCOMPARE(title->text(), QStringLiteral("Alone"));
        bar.setWindowTitle(QStringLiteral("Still alone[*]"));
        QCOMPARE(title->text(), QStringLiteral("Still alone"));
        bar.setWindowModified(true);
        QCOMPARE(title->text(), QStringLiteral("Still alone*"));
    }

    // A bar put into another window, alone, inside a widget of its own or from being a
    // window itself, shows that window's title from then on.
    void followsTheWindowItIsMovedInto_data()
    {
        QTest::addColumn<QString>("from");
        QTest::newRow("alone") << "window";
        QTest::newRow("inside a container") << "container";
        QTest::newRow("a window itself") << "top level";
    }
    void followsTheWindowItIsMovedInto()
    {
        QFETCH(QString, from);
        QWidget first, second;
        first.setWindowTitle(QStringLiteral("First"));
        second.setWindowTitle(QStringLiteral("Second"));
        for (QWidget* window : {&first, &second}) {
            new QVBoxLayout(window);
            window->resize(400, 100);
        }
        auto* bar = new TitleBar;
        QWidget* moved = bar;
        if (from == "container") {
            moved = new QWidget;
            (new QVBoxLayout(moved))->addWidget(bar);
        }
        if (from != "top level")
            first.layout()->addWidget(moved);
        else
            bar->setWindowTitle(QStringLiteral("Alone"));
        QWidget* shown = from != "top level" ? &first : bar;
        QVERIFY(TestSupport::ShowAndWait(shown));
        QVERIFY(TestSupport::ShowAndWait(&second));
        auto* title = bar->findChild<QLabel*>(QStringLiteral("Title"));
        QTRY_COMPARE(title->text(), shown->windowTitle());

        second.layout()->addWidget(moved);
        QTRY_VERIFY(bar->isVisible());
        QTRY_COMPARE(title->text(), QStringLiteral("Second"));
        first.setWindowTitle(QStringLiteral("First, renamed"));
        QCOMPARE(title->text(), QStringLiteral("Second"));
        second.setWindowTitle(QStringLiteral("Second, renamed"));
        QCOMPARE(title->text(), QStringLiteral("Second, renamed"));
    }
};

QTEST_MAIN(TstTitleBar)
#include "tst_title_bar.moc"
