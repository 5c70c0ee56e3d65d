#include <qt_halvo/widgets/navigation/tool_bar.h>
#include <qt_halvo/widgets/navigation/tool_bar_button.h>

#include "test_support.h"

#include <functional>
#include <tuple>

using OrvantaQT::ToolBar;
using OrvantaQT::ToolBarButton;

namespace {

// Items 2 apart and separators 8 wide, whatever Fusion says.
class BarStyle : public QProxyStyle
{
public:
    BarStyle() : QProxyStyle(QStringLiteral("Fusion")) {}
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        if (metric == PM_ToolBarItemSpacing || metric == PM_ToolBarSeparatorExtent)
            return metric == PM_ToolBarItemSpacing ? 2 : 8;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
};

// The band colours of ":/tool_bar_button.png" inside their borders, and no band.
const char kHovered[] = "#ffe2ecf9";
const char kPressed[] = "#ffc8daf3";
const char kClear[] = "#00000000";

// Where the real pointer waits, over no window: a button leaves its hover only when the
// pointer is not over it.
const QPoint kAway(2000, 2000);

// A button's "hovered" and "selected" style properties, its band and the colour it paints.
QStringList Look(ToolBarButton* button)
{
    const char* const bands[] = {"Hovered", "Pressed", "Normal"};
    return {button->property("hovered").toString(), button->property("selected").toString(),
            QLatin1String(bands[int(button->CurrentBand())]),
            TestSupport::Render(button).pixelColor(3, 12).name(QColor::HexArgb)};
}

// "A | B": the texts of the actions, "|" for separators.
QString Names(const QList<QAction*>& actions, bool visibleOnly = false)
{
    QStringList names;
    for (QAction* action : actions) {
        if (action->isVisible() || !visibleOnly)
            names << (action->isSeparator() ? QStringLiteral("|") : action->text());
    }
    return names.join(QLatin1Char(' '));
}

QImage Solid(const QColor& colour, const QSize& size = QSize(16, 16))
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    return image;
}

// A bar of "A B | C W M D" in a window: buttons 40 wide, W a line edit 60 wide through a
// QWidgetAction, M a button for a menu of M1 and M2, all 24 high; the overflow button is
// 20 wide. Margins of 3 make 286 pixels the width that holds everything.
struct Bar
{
    QWidget window;
    ToolBar* bar = new ToolBar(&window);
    QMenu* menu = new QMenu(QStringLiteral("M"), &window);
    QLineEdit* edit = new QLineEdit;
    QWidgetAction* editAction = new QWidgetAction(&window);
    QHash<QString, QAction*> actions;

    explicit Bar(int width = 286)
    {
        for (const char* text : {"A", "B"})
            Add(bar->AddAction(QLatin1String(text)));
        actions[QStringLiteral("|")] = bar->AddSeparator();
        Add(bar->AddAction(QStringLiteral("C")));
        edit->setObjectName(QStringLiteral("W"));
        edit->setFixedSize(60, 24);
        editAction->setText(QStringLiteral("W"));
        editAction->setDefaultWidget(edit);
        QVERIFY(!bar->AddAction(editAction)); // no button for it
        actions[QStringLiteral("W")] = editAction;
        menu->addAction(QStringLiteral("M1"));
        menu->addAction(QStringLiteral("M2"));
        Add(bar->AddMenu(menu));
        Add(bar->AddAction(QStringLiteral("D")));
        bar->OverflowButton()->setFixedSize(20, 24);
        window.resize(400, 60);
        bar->setGeometry(0, 0, width, 30);
    }
    void Add(ToolBarButton* button)
    {
        QVERIFY(button);
        button->setFixedSize(40, 24);
        actions[button->text()] = button->defaultAction();
    }
    // Puts a button of the caller's on the bar with AddButton, with the text.
    void Adopt(ToolBarButton* button, const char* text)
    {
        button->setText(QLatin1String(text));
        QCOMPARE(bar->AddButton(button), button);
        button->setFixedSize(40, 24);
    }
    ToolBarButton* Button(const char* text) const { return bar->ButtonForAction(actions.value(QLatin1String(text))); }
    void SetWidth(int width) { bar->resize(width, bar->height()); }

    // What shows on the bar, from the left: texts, "|" for separators, other widgets' names.
    QString OnBar() const
    {
        QMultiMap<int, QString> names;
        for (QWidget* child : bar->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!child->isVisibleTo(bar) || child == bar->OverflowButton())
                continue;
            auto* button = qobject_cast<ToolBarButton*>(child);
            const bool separator = child->objectName() == QLatin1String("Separator");
            names.insert(child->x(), button ? button->text() : separator ? QStringLiteral("|") : child->objectName());
        }
        return names.values().join(QLatin1Char(' '));
    }
    QString InMenu() const { return Names(bar->OverflowMenu()->actions(), true); }
    // Every widget of the bar's and of its menu's, deep.
    QSet<QWidget*> Widgets() const
    {
        const QList<QWidget*> widgets = bar->findChildren<QWidget*>();
        return QSet<QWidget*>(widgets.begin(), widgets.end());
    }
    // "A B | C / W M D": on the bar, then in the overflow menu.
    QString Layout() const { return QStringLiteral("%1 / %2").arg(OnBar(), InMenu()).trimmed(); }
};

// Records the texts of the actions the bar reports triggered.
void RecordTriggered(ToolBar* bar, QStringList* lines)
{
    QObject::connect(bar, &ToolBar::ActionTriggered, bar,
                     [lines](QAction* action) { *lines << QStringLiteral("bar: ") + action->text(); });
}

// Opens the overflow menu under the bar as a popup.
bool OpenOverflowMenu(ToolBar* bar)
{
    bar->OverflowMenu()->popup(bar->mapToGlobal(QPoint(0, bar->height())));
    return QTest::qWaitForWindowExposed(bar->OverflowMenu());
}

// Opens the overflow menu and clicks the entry with the text.
bool ClickInOverflowMenu(ToolBar* bar, const QString& text)
{
    QMenu* menu = bar->OverflowMenu();
    if (!OpenOverflowMenu(bar))
        return false;
    for (QAction* action : menu->actions()) {
        if (action->text() == text) {
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
            return !menu->isVisible();
        }
    }
    menu->hide();
    return false;
}

// A QWidgetAction that makes a label for every container that asks, and counts them.
class MadeWidgetAction : public QWidgetAction
{
public:
    using QWidgetAction::QWidgetAction;
    using QWidgetAction::createdWidgets;
    int made = 0;
    QWidget* createWidget(QWidget* parent) override
    {
        ++made;
        auto* label = new QLabel(QStringLiteral("made"), parent);
        label->setObjectName(QStringLiteral("Made"));
        label->setFixedSize(40, 24);
        return label;
    }
};

using Call = std::function<bool(ToolBar&, ToolBarButton&)>;
using Change = std::function<void(ToolBar*, ToolBarButton*)>;

// What a bar of Bar shows at some widths: on the bar / in the overflow menu.
const std::tuple<const char*, int, const char*> kOrders[] = {
    {"everything fits", 286, "A B | C W M D /"},
    {"a pixel short", 285, "A B | C W M / D"},
    {"the menu button goes", 240, "A B | C W / M D"},
    {"a separator at the cut", 150, "A B / C W M D"},
    {"the separator does not fit", 115, "A B / C W M D"},
    {"a separator inside the menu", 100, "A / B | C W M D"},
    {"the minimum width", 26, "/ A B | C W M D"},
    {"under the minimum", 10, "/ A B | C W M D"},
};
QString LayoutAt(int width)
{
    const auto order = std::find_if(std::begin(kOrders), std::end(kOrders),
                                    [width](const auto& order) { return std::get<1>(order) == width; });
    return QLatin1String(std::get<2>(*order));
}

} // namespace

Q_DECLARE_METATYPE(Call)
Q_DECLARE_METATYPE(Change)

class TestToolBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setStyle(new BarStyle);
        QCursor::setPos(kAway);
    }

    void overflowOrder_data()
    {
        QTest::addColumn<int>("width");
        for (const auto& [name, width, layout] : kOrders)
            QTest::newRow(name) << width;
    }
    // Items that do not fit beside the overflow button go to its menu, in order; a separator
    // neither ends the bar nor opens the menu. The button shows, at the trailing edge, only then.
    void overflowOrder()
    {
        QFETCH(int, width);
        Bar fixture(width);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        ToolBar* bar = fixture.bar;
        QWidget* overflow = bar->OverflowButton();
        const QString inMenu = fixture.InMenu();
        QCOMPARE(fixture.Layout(), LayoutAt(width));
        QCOMPARE(Names(bar->OverflowActions().toList()), inMenu);
        QCOMPARE(overflow->isVisible(), !inMenu.isEmpty());
        for (QWidget* child : bar->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (child->isVisible() && child != overflow) {
                QVERIFY2(bar->contentsRect().contains(child->geometry()), qPrintable(child->objectName()));
                QVERIFY(!overflow->isVisible() || child->geometry().right() < overflow->x());
            }
        }
        if (overflow->isVisible())
            QCOMPARE(overflow->geometry(), QRect(width - 23, 3, 20, 24));
        // The line edit itself is in the menu or on the bar; the menu button as a submenu.
        const bool editInMenu = inMenu.contains(QLatin1Char('W'));
        QCOMPARE(fixture.edit->parentWidget(), editInMenu ? static_cast<QWidget*>(bar->OverflowMenu()) : bar);
        QCOMPARE(bar->WidgetForAction(fixture.editAction), editInMenu ? nullptr : fixture.edit);
        if (inMenu.contains(QLatin1Char('M')))
            QCOMPARE(bar->OverflowActions().at(inMenu.split(QLatin1Char(' ')).indexOf(QStringLiteral("M")))->menu(),
                     fixture.menu);
    }

    // The preferred width holds every item (286: see overflowOrder), the minimum the overflow
    // button; the height is the tallest item's. The bar's own spacing replaces the style's.
    void sizeHintsAndSpacing()
    {
        Bar fixture;
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        ToolBar* bar = fixture.bar;
        QCOMPARE(std::make_tuple(bar->sizeHint(), bar->minimumSizeHint()),
                 std::make_tuple(QSize(286, 30), QSize(26, 30)));
        const auto spaced = [&] { return std::make_tuple(fixture.Button("B")->x(), fixture.InMenu()); };
        QCOMPARE(spaced(), std::make_tuple(45, QString()));
        bar->SetSpacing(10);
        QCOMPARE(spaced(), std::make_tuple(53, QStringLiteral("M D")));
        bar->ResetSpacing();
        QCOMPARE(spaced(), std::make_tuple(45, QString()));
        QCOMPARE(TestSupport::FirstNotReset(bar, {{"spacing", 10}}), QString());
        // A hidden action takes no room (hidden in the menu too); a new size asks for more.
        fixture.SetWidth(26);
        fixture.actions.value(QStringLiteral("C"))->setVisible(false);
        QCOMPARE(bar->sizeHint().width(), 286 - 42);
        fixture.SetWidth(286 - 42);
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B | W M D"));
        fixture.actions.value(QStringLiteral("C"))->setVisible(true);
        QCOMPARE(fixture.Layout(), QStringLiteral("A B | C W / M D"));
        fixture.Button("D")->setFixedWidth(60);
        QCoreApplication::sendPostedEvents(bar, QEvent::LayoutRequest);
        QCOMPARE(bar->sizeHint().width(), 286 + 20);
    }

    // Narrowed and widened, the bar shows what a fresh one would, with the same widgets: no
    // child is made, and the line edit comes back from the menu.
    void itemsComeBack()
    {
        Bar fixture;
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        const QSet<QWidget*> widgets = fixture.Widgets();
        struct : QObject
        {
            QObject* edit = nullptr; // moves, is not made
            int added = 0;
            bool eventFilter(QObject*, QEvent* event) override
            {
                added += event->type() == QEvent::ChildAdded && static_cast<QChildEvent*>(event)->child() != edit;
                return false;
            }
        } children;
        children.edit = fixture.edit;
        TestSupport::SignalLog log(fixture.bar, {"OverflowChanged()"});
        for (const int width : {26, 150, 286, 100, 240, 286}) {
            fixture.SetWidth(width);
            QCOMPARE(fixture.Layout(), LayoutAt(width));
            if (width == 26) // everything has been made
                fixture.bar->installEventFilter(&children);
        }
        QCOMPARE(log.Take().size(), 6);
        fixture.SetWidth(286);
        QCOMPARE(log.Take(), QStringList());
        QCOMPARE(fixture.Widgets(), widgets);
        QCOMPARE(children.added, 0);
        QCOMPARE(fixture.bar->WidgetForAction(fixture.editAction), fixture.edit);
    }

    // A new width moves, shows and hides the buttons without asking their sizes again.
    void resizeMeasuresNothing()
    {
        struct Measured : ToolBarButton
        {
            mutable int asked = 0;
            QSize sizeHint() const override { return ++asked, ToolBarButton::sizeHint(); }
        };
        Bar fixture;
        auto* measured = new Measured;
        fixture.Adopt(measured, "X");
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        measured->asked = 0;
        for (const int width : {26, 150, 400, 100, 286})
            fixture.SetWidth(width);
        QCOMPARE(measured->asked, 0);
        QCOMPARE(fixture.InMenu(), QStringLiteral("D X"));
    }

    // A QWidgetAction that makes widgets makes one for the menu and a new one for the bar.
    void madeWidgetsMoveByMaking()
    {
        Bar fixture(286 + 42);
        auto* made = new MadeWidgetAction(&fixture.window);
        made->setText(QStringLiteral("X"));
        fixture.bar->AddAction(made);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B | C W M D Made"));
        QCOMPARE(made->made, 1);
        QPointer<QWidget> first = fixture.bar->WidgetForAction(made);
        fixture.SetWidth(100);
        QCOMPARE(fixture.InMenu(), QStringLiteral("B | C W M D X"));
        QCOMPARE(made->made, 2);
        QCOMPARE(made->createdWidgets().size(), 1);
        QCOMPARE(made->createdWidgets().first()->parentWidget(), fixture.bar->OverflowMenu());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!first);
        fixture.SetWidth(fixture.bar->sizeHint().width());
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B | C W M D Made"));
        QCOMPARE(made->made, 3);
    }

    // The overflow button, named for style sheets, opens the menu; there the line edit shows
    // inside it, and the menu button's menu is a submenu whose actions the bar reports.
    void overflowMenu()
    {
        Bar fixture(150);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        ToolBarButton* button = fixture.bar->OverflowButton();
        QMenu* overflow = fixture.bar->OverflowMenu();
        QCOMPARE(QStringList({button->objectName(), button->accessibleName(), overflow->objectName()}),
                 TestSupport::Words("OverflowButton ToolBar_OverflowButton OverflowMenu"));
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
        QVERIFY(!button->icon().isNull() && !button->IsMenuIndicatorVisible()); // the icon says it
        QString shown;
        QTimer::singleShot(0, this, [&] {
            QVERIFY(overflow->isVisible());
            shown = fixture.InMenu();
            overflow->hide();
        });
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, button->rect().center());
        QCOMPARE(shown, QStringLiteral("C W M D"));

        QVERIFY(OpenOverflowMenu(fixture.bar));
        QVERIFY(fixture.edit->isVisible());
        QCOMPARE(fixture.edit->window(), overflow);
        QVERIFY(overflow->rect().contains(fixture.edit->geometry()));
        QStringList lines;
        RecordTriggered(fixture.bar, &lines);
        overflow->setActiveAction(fixture.menu->menuAction());
        QTest::keyClick(overflow, Qt::Key_Right);
        QVERIFY(QTest::qWaitForWindowExposed(fixture.menu));
        QTest::keyClick(fixture.menu, Qt::Key_Down);
        QCOMPARE(fixture.menu->activeAction()->text(), QStringLiteral("M2"));
        QTest::keyClick(fixture.menu, Qt::Key_Return);
        QVERIFY(!overflow->isVisible());
        QCOMPARE(lines, QStringList({QStringLiteral("bar: M2")}));
    }

    void triggerLikeClick_data()
    {
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<bool>("ownAction"); // else AddButton of a button without one
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("action") << false << true << QStringList{"bar: E", "triggered"};
        QTest::newRow("checkable action") << true << true << QStringList{"toggled true", "bar: E", "triggered"};
        QTest::newRow("added button") << false << false << QStringList{"bar: E", "clicked"};
        QTest::newRow("checkable added button") << true << false << QStringList{"toggled true", "bar: E", "clicked"};
    }
    // Triggering an item from the overflow menu does what clicking its button does: the
    // same signals in the same order, the same check state after, reported once by the bar.
    void triggerLikeClick()
    {
        QFETCH(bool, checkable);
        QFETCH(bool, ownAction);
        QFETCH(QStringList, expected);
        QStringList ways[2];
        for (const bool viaMenu : {false, true}) {
            Bar fixture;
            QStringList& lines = ways[viaMenu];
            auto* action = ownAction ? new QAction(QStringLiteral("E"), &fixture.window) : nullptr;
            ToolBarButton* button = nullptr;
            if (action) {
                action->setCheckable(checkable);
                fixture.Add(button = fixture.bar->AddAction(action));
                connect(action, &QAction::triggered, &fixture.window, [&lines] { lines << QStringLiteral("triggered"); });
            } else { // a button without an action has nothing but its clicks to tell
                fixture.Adopt(button = new ToolBarButton, "E");
                button->setCheckable(checkable);
                connect(button, &QAbstractButton::clicked, &fixture.window, [&lines] { lines << QStringLiteral("clicked"); });
            }
            connect(button, &QAbstractButton::toggled, &fixture.window,
                    [&lines](bool on) { lines << QStringLiteral("toggled ") + QVariant(on).toString(); });
            RecordTriggered(fixture.bar, &lines);
            fixture.SetWidth(viaMenu ? 100 : fixture.bar->sizeHint().width());
            QVERIFY(TestSupport::ShowAndWait(&fixture.window));
            if (viaMenu) {
                QVERIFY2(fixture.InMenu().endsWith(QLatin1String(" E")), qPrintable(fixture.InMenu()));
                QVERIFY(ClickInOverflowMenu(fixture.bar, QStringLiteral("E")));
            } else {
                QVERIFY(button->isVisible());
                QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, button->rect().center());
            }
            QCOMPARE(button->isChecked(), checkable);
            if (checkable && viaMenu) { // the menu shows the state the button has now
                fixture.bar->OverflowMenu()->popup(QPoint(0, 0));
                QVERIFY(fixture.bar->OverflowActions().last()->isChecked());
                fixture.bar->OverflowMenu()->hide();
            }
        }
        QCOMPARE(ways[true], ways[false]);
        QCOMPARE(ways[false], expected);
    }

    void addedButtonWithMenu_data()
    {
        QTest::addColumn<bool>("withAction");
        QTest::newRow("no action") << false;
        QTest::newRow("an action, the menu on the arrow") << true;
    }
    // A button's own menu (not its action's) is its submenu in the overflow menu and comes
    // back with it; once the menu is deleted, the entry clicks the button.
    void addedButtonWithMenu()
    {
        QFETCH(bool, withAction);
        Bar fixture(100);
        QAction open(QStringLiteral("N"));
        auto* button = withAction ? new ToolBarButton(&open) : new ToolBarButton;
        auto* own = new QMenu;
        own->addAction(QStringLiteral("N1"));
        button->setMenu(own);
        button->setPopupMode(withAction ? QToolButton::MenuButtonPopup : QToolButton::InstantPopup);
        fixture.Adopt(button, "N");
        QCOMPARE(fixture.bar->ActionForButton(button) == &open, withAction);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QCOMPARE(fixture.InMenu(), QStringLiteral("B | C W M D N"));
        QCOMPARE(fixture.bar->OverflowActions().last()->menu(), own);
        fixture.SetWidth(fixture.bar->sizeHint().width());
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B | C W M D N"));
        QVERIFY(fixture.bar->OverflowMenu()->actions().isEmpty());
        QCOMPARE(button->menu(), own);
        int clicks = 0;
        connect(button, &QAbstractButton::clicked, [&clicks] { ++clicks; });
        delete own;
        fixture.SetWidth(100);
        QVERIFY(!fixture.bar->OverflowActions().last()->menu());
        QVERIFY(ClickInOverflowMenu(fixture.bar, QStringLiteral("N")));
        QCOMPARE(clicks, withAction ? 0 : 1); // with one, its action stands for it
    }

    // The bar's action for a button added without one follows its text, icon, tooltip,
    // enabled and check state, on the bar and in the overflow menu.
    void addedButtonActionFollows()
    {
        Bar fixture;
        auto* button = new ToolBarButton;
        button->setToolTip(QStringLiteral("Pin the page"));
        button->setIcon(QIcon(QPixmap::fromImage(Solid(Qt::red))));
        button->setCheckable(true);
        button->setChecked(true);
        fixture.Adopt(button, "Pin");
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QAction* action = fixture.bar->ActionForButton(button);
        QVERIFY(action);
        const auto state = [action] {
            return QStringList{action->text(), action->toolTip(),
                               action->icon().pixmap(16).toImage().pixelColor(8, 8).name(),
                               QVariant(action->isEnabled()).toString(), QVariant(action->isChecked()).toString()};
        };
        QCOMPARE(state(), QStringList({"Pin", "Pin the page", "#ff0000", "true", "true"}));
        fixture.SetWidth(100);
        QCOMPARE(fixture.bar->OverflowActions().last(), action);
        button->setText(QStringLiteral("Unpin"));
        button->setEnabled(false);
        button->setChecked(false);
        QVERIFY(OpenOverflowMenu(fixture.bar));
        QCOMPARE(state(), QStringList({"Unpin", "Pin the page", "#ff0000", "false", "false"}));
        fixture.bar->OverflowMenu()->hide();
    }

    void buttonStates_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("text") << "B";
        QTest::newRow("icon") << "C";
        QTest::newRow("menu") << "M";
        QTest::newRow("menu on the arrow") << "D";
    }
    // On every kind of button "hovered" and "selected" follow the pointer and the check, and
    // the band follows them.
    void buttonStates()
    {
        QFETCH(QString, text);
        Bar fixture;
        fixture.actions.value(QStringLiteral("C"))->setIcon(QIcon(QPixmap::fromImage(Solid(Qt::red))));
        fixture.Button("D")->setMenu(new QMenu(&fixture.window));
        fixture.Button("D")->setPopupMode(QToolButton::MenuButtonPopup);
        QAction* action = fixture.actions.value(text);
        action->setCheckable(true);
        ToolBarButton* button = fixture.Button(qPrintable(text));
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QCOMPARE(Look(button), QStringList({"false", "false", "Normal", kClear}));
        TestSupport::PointerTo(button, button->rect().center());
        QCOMPARE(Look(button), QStringList({"true", "false", "Hovered", kHovered}));
        action->setChecked(true);
        QCOMPARE(Look(button), QStringList({"true", "true", "Pressed", kPressed}));
        TestSupport::PointerTo(&fixture.window, QPoint(5, 50));
        QCOMPARE(Look(button), QStringList({"false", "true", "Pressed", kPressed}));
        action->setChecked(false);
        QCOMPARE(Look(button), QStringList({"false", "false", "Normal", kClear}));
        QCOMPARE(fixture.Button("A")->property("hovered"), QVariant(false));
    }

    // Left while the pointer is still over it, as when its menu opens, a button stays hovered;
    // a style sheet paints the states it names.
    void hoverKeptAndStyleSheet()
    {
        Bar fixture;
        fixture.window.move(100, 100);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        ToolBarButton* menuButton = fixture.Button("M");
        TestSupport::PointerTo(menuButton, menuButton->rect().center());
        QEvent leave(QEvent::Leave);
        for (const bool over : {true, false}) {
            QCursor::setPos(over ? menuButton->mapToGlobal(menuButton->rect().center()) : kAway);
            QApplication::sendEvent(menuButton, &leave);
            QCOMPARE(menuButton->property("hovered"), QVariant(over));
        }

        QAction* first = fixture.actions.value(QStringLiteral("A"));
        first->setCheckable(true);
        // Painted by the sheet, a button at rest is flat, as a tool bar's.
        fixture.window.setStyleSheet(QStringLiteral("OrvantaQT--ToolBarButton { color: #0000ff; }"
            "OrvantaQT--ToolBarButton[selected=\"true\"] { background: #ff0000; border: none; }"));
        QCOMPARE(Look(fixture.Button("A")).last(), QString(kClear));
        first->setChecked(true);
        QCOMPARE(Look(fixture.Button("A")).last(), QStringLiteral("#ffff0000"));
        QCOMPARE(Look(fixture.Button("B")).last(), QString(kClear));
    }

    // The bar's picture is stretched, corners as drawn; another one, none or a style sheet
    // replaces it. A button is its state's band with the label the style draws over it.
    void paintsPictures()
    {
        QWidget window;
        auto* bar = new ToolBar(&window);
        bar->setGeometry(0, 0, 200, 40);
        window.resize(220, 60);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QCOMPARE(bar->GetBackgroundImage(), QStringLiteral(":/tool_bar_background.png"));
        QCOMPARE(bar->GetBackgroundBorders(), QMargins(6, 6, 6, 6));
        const QImage picture = QImage(QStringLiteral(":/tool_bar_background.png"))
                                   .convertToFormat(QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(picture.size(), QSize(32, 32));
        const QImage painted = TestSupport::Render(bar);
        QCOMPARE(painted.copy(0, 0, 6, 6), picture.copy(0, 0, 6, 6));
        QCOMPARE(painted.copy(194, 34, 6, 6), picture.copy(26, 26, 6, 6));
        const QColor middle = painted.pixelColor(100, 20);
        QCOMPARE(middle.alpha(), 255);
        QVERIFY(middle.blue() < picture.pixelColor(16, 1).blue() && middle.blue() > picture.pixelColor(16, 30).blue());
        QTemporaryDir folder;
        const QString red = folder.filePath(QStringLiteral("red.png"));
        QVERIFY(Solid(Qt::red).save(red));
        QVERIFY(TestSupport::Repaints(bar, [&] { bar->SetBackgroundImage(red); }));
        QCOMPARE(TestSupport::Render(bar).pixelColor(100, 20), QColor(Qt::red));
        bar->SetBackgroundImage(QString());
        QCOMPARE(TestSupport::Render(bar).pixelColor(100, 20), QColor(Qt::transparent));
        bar->setProperty("backgroundImage", QStringLiteral(":/tool_bar_background.png"));
        QCOMPARE(TestSupport::Render(bar), painted);
        bar->setStyleSheet(QStringLiteral("OrvantaQT--ToolBar { background: #102030; }"));
        QCOMPARE(TestSupport::Render(bar).pixelColor(1, 1), QColor(0x10, 0x20, 0x30));
        bar->setStyleSheet(QStringLiteral("QLabel { color: red; }")); // applies to no bar
        QCOMPARE(TestSupport::Render(bar), painted);
        bar->setStyleSheet(QStringLiteral("OrvantaQT--ToolBar { qproperty-backgroundBorder: 4; }"));
        QCOMPARE(bar->GetBackgroundBorders(), QMargins(4, 4, 4, 4));

        // A button: its icon over the band, the menu arrow unless turned off (as on the
        // overflow button), another picture's bands.
        ToolBarButton button;
        button.resize(40, 24);
        button.setIcon(QIcon(QPixmap::fromImage(Solid(Qt::red))));
        button.setIconSize(QSize(16, 16));
        QCOMPARE(TestSupport::Render(&button).pixelColor(20, 12), QColor(Qt::red));
        ToolBarButton menuButton;
        menuButton.resize(40, 24);
        QMenu menu;
        menu.addAction(QStringLiteral("One"));
        menuButton.setMenu(&menu);
        menuButton.setPopupMode(QToolButton::InstantPopup);
        QVERIFY(menuButton.IsMenuIndicatorVisible());
        const QImage withArrow = TestSupport::Render(&menuButton);
        menuButton.SetMenuIndicatorVisible(false);
        const QImage without = TestSupport::Render(&menuButton);
        QVERIFY(!TestSupport::Changed(withArrow, without).isEmpty());
        const QImage nothing = Solid(Qt::transparent, without.size()); // the normal band is clear
        QCOMPARE(without, nothing);
        const QString bands = folder.filePath(QStringLiteral("bands.png"));
        QImage stripes = Solid(Qt::blue, QSize(24, 72));
        QPainter(&stripes).fillRect(0, 24, 24, 24, Qt::green);
        QVERIFY(stripes.save(bands));
        menuButton.SetBackgroundImage(bands);
        menuButton.setDown(true);
        QCOMPARE(TestSupport::Render(&menuButton).pixelColor(3, 12), QColor(Qt::green));
        menuButton.SetBackgroundImage(QString());
        QCOMPARE(TestSupport::Render(&menuButton), nothing);
        menuButton.setStyleSheet(QStringLiteral("OrvantaQT--ToolBarButton { qproperty-backgroundBorder: 0; }"));
        QCOMPARE(menuButton.GetBackgroundBorders(), QMargins(0, 0, 0, 0));
    }

    void settersRepaint_data()
    {
        QTest::addColumn<Change>("change");
        QTest::addColumn<bool>("ofBar"); // else of the button
        QTest::newRow("bar borders") << Change([](auto* bar, auto*) { bar->SetBackgroundBorder(2); }) << true;
        QTest::newRow("button picture")
            << Change([](auto*, auto* button) { button->SetBackgroundImage(":/tool_bar_background.png"); }) << false;
        QTest::newRow("button borders")
            << Change([](auto*, auto* button) { button->SetBackgroundBorders(QMargins(1, 2, 3, 4)); }) << false;
        QTest::newRow("menu indicator")
            << Change([](auto*, auto* button) { button->SetMenuIndicatorVisible(false); }) << false;
    }
    // What changes the picture paints again.
    void settersRepaint()
    {
        QFETCH(Change, change);
        QFETCH(bool, ofBar);
        Bar fixture;
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        ToolBarButton* button = fixture.Button("M");
        QWidget* changed = ofBar ? static_cast<QWidget*>(fixture.bar) : button;
        QVERIFY(TestSupport::Repaints(changed, [&] { change(fixture.bar, button); }));
    }

    void guards_data()
    {
        QTest::addColumn<Call>("call");
        QTest::addColumn<QString>("logged");
        const auto row = [](const char* name, const Call& call, const char* logged) {
            QTest::newRow(name) << call << QStringLiteral("3 ") + QLatin1String(logged);
        };
        row("null action", [](auto& bar, auto&) { return !bar.AddAction(static_cast<QAction*>(nullptr)); },
            "ToolBar: no action to add");
        row("null inserted", [](auto& bar, auto&) { return !bar.InsertAction(nullptr, nullptr); },
            "ToolBar: no action to insert");
        row("null menu", [](auto& bar, auto&) { return !bar.AddMenu(nullptr); }, "ToolBar: no menu to add");
        row("null widget", [](auto& bar, auto&) { return !bar.AddWidget(nullptr); }, "ToolBar: no widget to add");
        row("null button", [](auto& bar, auto&) { return !bar.AddButton(nullptr); }, "ToolBar: no button to add");
        row("button twice", [](auto& bar, auto& button) { return bar.AddButton(&button) && !bar.AddButton(&button); },
            "ToolBar: the button is already on a tool bar");
        row("the overflow button", [](auto& bar, auto&) { return !bar.AddButton(bar.OverflowButton()); },
            "ToolBar: the button is already on a tool bar");
        row("button of an action on the bar", [](auto& bar, auto& button) {
            button.setDefaultAction(bar.AddAction(QStringLiteral("Save"))->defaultAction());
            return !bar.AddButton(&button);
        }, "ToolBar: the button's action \"Save\" is already on the bar");
        row("negative spacing", [](auto& bar, auto&) { bar.SetSpacing(-4); return bar.GetSpacing() == 2; },
            "ToolBar: a negative spacing (-4) ignored");
        row("negative borders", [](auto& bar, auto&) {
            bar.SetBackgroundBorders(QMargins(1, -2, 3, 4));
            return bar.GetBackgroundBorders() == QMargins(6, 6, 6, 6);
        }, "ToolBar: negative picture borders (1, -2, 3, 4) ignored");
        row("missing picture", [](auto& bar, auto&) {
            bar.SetBackgroundImage(QStringLiteral(":/no_such_picture.png"));
            return TestSupport::Render(&bar).pixelColor(25, 15) == QColor(Qt::transparent);
        }, "ToolBar: no picture at \":/no_such_picture.png\"; painted without one");
        row("button without action",
            [](auto&, auto&) { return !ToolBarButton(static_cast<QAction*>(nullptr)).defaultAction(); },
            "ToolBarButton: no action; the button has none");
        row("button, missing picture", [](auto&, auto& button) {
            button.setDown(true);
            button.SetBackgroundImage(QStringLiteral("/no/such.png"));
            return TestSupport::Render(&button).pixelColor(3, 15) == QColor(Qt::transparent);
        }, "ToolBarButton: no picture at \"/no/such.png\"; painted without one");
        row("button, negative border", [](auto&, auto& button) {
            button.SetBackgroundBorder(-1);
            return button.GetBackgroundBorder() == 6;
        }, "ToolBarButton: negative picture borders (-1, -1, -1, -1) ignored");
    }
    // Bad input is refused with one log line and changes nothing.
    void guards()
    {
        QFETCH(Call, call);
        QFETCH(QString, logged);
        ToolBar bar;
        ToolBarButton button; // gone first, should the bar have taken it
        bar.resize(50, 30);
        button.resize(30, 30);
        const LogCapture::Mark mark;
        QVERIFY(call(bar, button));
        QCOMPARE(mark.Texts(), QStringList(logged));
    }

    void itemDeleted_data()
    {
        QTest::addColumn<QString>("item"); // D an action, W a QWidgetAction, M a menu
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("layout");
        QTest::newRow("action on the bar") << "D" << 286 << "A B | C W M /";
        QTest::newRow("action in the overflow menu") << "D" << 100 << "A / B | C W M";
        QTest::newRow("QWidgetAction on the bar") << "W" << 286 << "A B | C M D /";
        QTest::newRow("QWidgetAction in the overflow menu") << "W" << 150 << "A B / C M D";
        QTest::newRow("menu on the bar") << "M" << 286 << "A B | C W D /";
        QTest::newRow("menu in the overflow menu") << "M" << 150 << "A B / C W D";
    }
    // Deleting an action, a QWidgetAction or a button's menu takes the item off the bar or
    // out of the overflow menu, its widget along; what is left still fits as before.
    void itemDeleted()
    {
        QFETCH(QString, item);
        QFETCH(int, width);
        QFETCH(QString, layout);
        Bar fixture(width);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QPointer<QWidget> widget = item == QLatin1String("W") ? static_cast<QWidget*>(fixture.edit) : fixture.Button(qPrintable(item));
        QVERIFY(widget);
        if (item == QLatin1String("M"))
            delete fixture.menu;
        else
            delete fixture.actions.take(item);
        QCOMPARE(fixture.Layout(), layout);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!widget);
        if (!layout.endsWith(QLatin1Char('/'))) { // the menu opens without it
            QVERIFY(OpenOverflowMenu(fixture.bar));
            fixture.bar->OverflowMenu()->hide();
        }
        fixture.SetWidth(fixture.bar->sizeHint().width());
        QCOMPARE(fixture.Layout(), QStringLiteral("A B | C W M D /").remove(QLatin1Char(' ') + item));
        QVERIFY(!fixture.bar->OverflowButton()->isVisible());
    }

    // Receivers of the bar's signals and of a click in the overflow menu may change the bar.
    void receiversChangeTheBar()
    {
        Bar fixture;
        auto* button = new ToolBarButton;
        fixture.Adopt(button, "E");
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        connect(fixture.bar, &ToolBar::OverflowChanged, &fixture.window, [&] { delete fixture.actions.take("C"); });
        connect(button, &QAbstractButton::clicked, &fixture.window, [&] { delete fixture.actions.take("D"); });
        fixture.SetWidth(150);
        QCOMPARE(fixture.Layout(), QStringLiteral("A B / W M D E")); // W no longer fits after the separator
        QVERIFY(ClickInOverflowMenu(fixture.bar, QStringLiteral("E")));
        QCOMPARE(fixture.InMenu(), QStringLiteral("W M E"));
    }

    // A button or a separator deleted by hand leaves the bar; its action stays. A
    // QWidgetAction's widget deleted leaves its action a plain entry of the menu.
    void widgetsDeletedByHand()
    {
        Bar fixture;
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        delete fixture.Button("C");
        delete fixture.bar->WidgetForAction(fixture.actions.value(QStringLiteral("|")));
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B W M D"));
        QCOMPARE(fixture.bar->sizeHint().width(), 286 - 52);
        delete fixture.bar->AddButton(new ToolBarButton);
        QCOMPARE(Names(fixture.bar->actions()), QStringLiteral("A B | C W M D"));
        delete fixture.edit;
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B M D"));
        fixture.SetWidth(80);
        QCOMPARE(fixture.InMenu(), QStringLiteral("B W M D"));
        fixture.SetWidth(286);
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B M D"));
    }

    // Removing the action of a widget added by AddWidget gives the widget back to the
    // action, hidden and without a parent; the bar's actions and their widgets go with it.
    void addedWidgets()
    {
        QPointer<QLabel> removed = new QLabel(QStringLiteral("removed"));
        QPointer<QLabel> held = new QLabel(QStringLiteral("held"));
        {
            ToolBar bar;
            QAction* removedAction = bar.AddWidget(removed);
            bar.AddWidget(held);
            QCOMPARE(bar.WidgetForAction(removedAction), removed.data());
            QCOMPARE(removed->parentWidget(), &bar);
            bar.removeAction(removedAction);
            QVERIFY(!removed->parentWidget());
            QVERIFY(removed->isHidden());
            QVERIFY(!bar.WidgetForAction(removedAction));
            QCOMPARE(held->parentWidget(), &bar);
        }
        QVERIFY(!held);
        QVERIFY(!removed);
    }

    // Widths left over go to items that expand; right to left the bar starts at the right.
    void expandingAndMirrored()
    {
        Bar fixture(400);
        auto* spacer = new QWidget;
        spacer->setObjectName(QStringLiteral("Spacer"));
        spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        fixture.bar->InsertAction(fixture.actions.value(QStringLiteral("D")), fixture.bar->AddWidget(spacer));
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B | C W M Spacer D"));
        auto* inserted = new QAction(QStringLiteral("Z"), &fixture.window);
        fixture.bar->InsertAction(fixture.actions.value(QStringLiteral("A")), inserted)->setFixedSize(40, 24);
        QCoreApplication::sendPostedEvents(fixture.bar, QEvent::LayoutRequest);
        QCOMPARE(fixture.OnBar(), QStringLiteral("Z A B | C W M Spacer D"));
        delete inserted;
        QWidget* a = fixture.Button("A");
        QWidget* d = fixture.Button("D");
        QCOMPARE(std::make_tuple(a->x(), d->geometry().right()), std::make_tuple(3, 400 - 4));
        fixture.bar->setLayoutDirection(Qt::RightToLeft);
        QCOMPARE(std::make_tuple(d->x(), a->geometry().right()), std::make_tuple(3, 400 - 4));
        // New margins move the items at once, without a new size.
        fixture.bar->setContentsMargins(10, 0, 10, 0);
        QCOMPARE(std::make_tuple(d->x(), a->geometry().right()), std::make_tuple(10, 400 - 11));
        fixture.SetWidth(200);
        QCOMPARE(std::make_tuple(fixture.bar->OverflowButton()->x(), a->geometry().right()),
                 std::make_tuple(10, 200 - 11));
    }

    // Icon size and button style reach every button; the bar's own buttons take no focus (Tab
    // passes them, as in QToolBar); a new size of an item reaches the parent layout.
    void buttonsFollowTheBar()
    {
        QWidget window;
        auto* column = new QVBoxLayout(&window);
        auto* before = new QLineEdit;
        auto* bar = new ToolBar;
        column->addWidget(before);
        column->addWidget(bar);
        ToolBarButton* made = bar->AddAction(QStringLiteral("Made"));
        ToolBarButton* added = bar->AddButton(new ToolBarButton);
        added->setText(QStringLiteral("Added"));
        auto* after = new QLineEdit; // after the buttons in the focus chain
        column->addWidget(after);
        QCOMPARE(made->focusPolicy(), Qt::NoFocus);
        QCOMPARE(added->focusPolicy(), Qt::TabFocus);
        const auto looks = [&] {
            return std::make_tuple(made->iconSize(), added->iconSize(), bar->OverflowButton()->iconSize(),
                                   made->toolButtonStyle(), added->toolButtonStyle());
        };
        const QSize standard(QSize(1, 1) * bar->style()->pixelMetric(QStyle::PM_ToolBarIconSize));
        QCOMPARE(looks(), std::make_tuple(standard, standard, standard, Qt::ToolButtonIconOnly,
                                          Qt::ToolButtonIconOnly));
        QCOMPARE(TestSupport::FirstNotReset(bar, {{"iconSize", QSize(40, 40)}}), QString());
        QCOMPARE(made->iconSize(), standard);
        bar->SetIconSize(QSize(40, 40));
        bar->SetToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        const QSize large(40, 40);
        QCOMPARE(looks(), std::make_tuple(large, large, large, Qt::ToolButtonTextUnderIcon,
                                          Qt::ToolButtonTextUnderIcon));
        QVERIFY(bar->sizeHint().height() > 40);

        const auto layOut = [] { // the bar's layout request, then the one it makes of the window's layout
            for (int round = 0; round < 2; ++round)
                QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        };
        QVERIFY(TestSupport::ShowAndWait(&window));
        layOut();
        QCOMPARE(bar->height(), bar->sizeHint().height());
        made->setFixedHeight(100);
        layOut();
        QCOMPARE(bar->height(), 106);
        QCOMPARE(made->geometry(), QRect(3, 3, made->width(), 100));
        QCOMPARE(added->height(), 100); // buttons share the row's height
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        before->setFocus();
        QVERIFY(before->hasFocus());
        QTest::keyClick(before, Qt::Key_Tab);
        QVERIFY(added->hasFocus());
        QTest::keyClick(added, Qt::Key_Tab);
        QVERIFY(after->hasFocus());
    }
};

QTEST_MAIN(TestToolBar)
#include "tst_tool_bar.moc"
