#include <qt_halvo/widgets/navigation/tool_bar.h>
#include <qt_halvo/widgets/navigation/tool_bar_button.h>

#include "test_support.h"

#include <functional>

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
        if (metric == PM_ToolBarItemSpacing)
            return 2;
        if (metric == PM_ToolBarSeparatorExtent)
            return 8;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
};

// The band colours of ":/tool_bar_button.png" inside their borders.
const QColor kHoveredBand(226, 236, 249);
const QColor kPressedBand(200, 218, 243);

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
    ToolBarButton* Button(const char* text) const { return bar->ButtonForAction(actions.value(QLatin1String(text))); }
    void SetWidth(int width) { bar->resize(width, bar->height()); }

    // What shows on the bar, from the leading edge: button texts, "|" for separators,
    // object names for other widgets.
    QString OnBar() const
    {
        QVector<QWidget*> shown;
        for (QWidget* child : bar->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (child->isVisibleTo(bar) && child != bar->OverflowButton())
                shown << child;
        }
        std::sort(shown.begin(), shown.end(), [](QWidget* a, QWidget* b) { return a->x() < b->x(); });
        QStringList names;
        for (QWidget* child : shown) {
            if (auto* button = qobject_cast<ToolBarButton*>(child))
                names << button->text();
            else
                names << (child->objectName() == QLatin1String("Separator") ? QStringLiteral("|") : child->objectName());
        }
        return names.join(QLatin1Char(' '));
    }
    // What the overflow menu lists, in order.
    QString InMenu() const
    {
        QStringList names;
        for (QAction* action : bar->OverflowMenu()->actions()) {
            if (action->isVisible())
                names << (action->isSeparator() ? QStringLiteral("|") : action->text());
        }
        return names.join(QLatin1Char(' '));
    }
    // Every widget of the bar's and of its menu's, deep.
    QSet<QWidget*> Widgets() const
    {
        QSet<QWidget*> widgets;
        for (QWidget* widget : bar->findChildren<QWidget*>())
            widgets.insert(widget);
        return widgets;
    }
};

QString Texts(const QVector<QAction*>& actions)
{
    QStringList texts;
    for (QAction* action : actions)
        texts << (action->isSeparator() ? QStringLiteral("|") : action->text());
    return texts.join(QLatin1Char(' '));
}

// Records the texts of the actions the bar reports triggered.
QStringList* RecordTriggered(ToolBar* bar, QStringList* lines)
{
    QObject::connect(bar, &ToolBar::ActionTriggered, bar,
                     [lines](QAction* action) { *lines << QStringLiteral("bar: ") + action->text(); });
    return lines;
}

// Opens the overflow menu as a popup and clicks the entry with the text.
bool ClickInOverflowMenu(ToolBar* bar, const QString& text)
{
    QMenu* menu = bar->OverflowMenu();
    menu->popup(bar->mapToGlobal(QPoint(0, bar->height())));
    if (!QTest::qWaitForWindowExposed(menu))
        return false;
    for (QAction* action : menu->actions()) {
        if (action->text() == text) {
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
            return QTest::qWaitFor([menu] { return !menu->isVisible(); });
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

protected:
    QWidget* createWidget(QWidget* parent) override
    {
        ++made;
        auto* label = new QLabel(QStringLiteral("made"), parent);
        label->setObjectName(QStringLiteral("Made"));
        label->setFixedSize(40, 24);
        return label;
    }
};

QImage SolidPicture(const QColor& colour, const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    return image;
}

using Call = std::function<bool(ToolBar&)>;
using Change = std::function<void(ToolBar*, ToolBarButton*)>;

// What shows on the bar and in the overflow menu at widths of the bar of Bar.
struct Order
{
    const char* name;
    int width;
    const char* onBar;
    const char* inMenu;
};
const Order kOrders[] = {
    {"everything fits", 286, "A B | C W M D", ""},
    {"a pixel short", 285, "A B | C W M", "D"},
    {"the menu button goes", 240, "A B | C W", "M D"},
    {"a separator at the cut", 150, "A B", "C W M D"},
    {"the separator does not fit", 115, "A B", "C W M D"},
    {"a separator inside the menu", 100, "A", "B | C W M D"},
    {"the minimum width", 26, "", "A B | C W M D"},
    {"under the minimum", 10, "", "A B | C W M D"},
};
const Order& OrderAt(int width)
{
    return *std::find_if(std::begin(kOrders), std::end(kOrders), [width](const Order& order) { return order.width == width; });
}

} // namespace

Q_DECLARE_METATYPE(Call)
Q_DECLARE_METATYPE(Change)

class TestToolBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new BarStyle); }

    void overflowOrder_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("onBar");
        QTest::addColumn<QString>("inMenu");
        for (const Order& order : kOrders)
            QTest::newRow(order.name) << order.width << QString::fromLatin1(order.onBar) << QString::fromLatin1(order.inMenu);
    }
    // The items that do not fit beside the overflow button go to its menu in their
    // order; a separator neither ends the bar nor opens the menu. The overflow button
    // shows at the trailing edge only when the menu has something.
    void overflowOrder()
    {
        QFETCH(int, width);
        QFETCH(QString, onBar);
        QFETCH(QString, inMenu);
        Bar fixture(width);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        ToolBar* bar = fixture.bar;
        QCOMPARE(fixture.OnBar(), onBar);
        QCOMPARE(fixture.InMenu(), inMenu);
        QCOMPARE(Texts(bar->OverflowActions()), inMenu);

        QWidget* overflow = bar->OverflowButton();
        QCOMPARE(overflow->isVisible(), !inMenu.isEmpty());
        for (QWidget* child : bar->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!child->isVisible() || child == overflow)
                continue;
            QVERIFY2(bar->contentsRect().contains(child->geometry()), qPrintable(child->objectName()));
            if (overflow->isVisible())
                QVERIFY(child->geometry().right() < overflow->x());
        }
        if (overflow->isVisible()) {
            QCOMPARE(overflow->geometry().right(), width - 4);
            QCOMPARE(overflow->geometry().top(), 3);
        }

        // The line edit itself is in the menu or on the bar; the menu button as a submenu.
        const bool editInMenu = inMenu.contains(QLatin1Char('W'));
        QCOMPARE(fixture.edit->parentWidget(), editInMenu ? static_cast<QWidget*>(bar->OverflowMenu()) : bar);
        QCOMPARE(bar->WidgetForAction(fixture.editAction), editInMenu ? nullptr : fixture.edit);
        if (inMenu.contains(QLatin1Char('M')))
            QCOMPARE(bar->OverflowActions().at(inMenu.split(QLatin1Char(' ')).indexOf(QStringLiteral("M")))->menu(),
                     fixture.menu);
    }

    // The preferred width holds every item, a pixel less does not; the minimum holds the
    // overflow button alone. The height is the tallest item's, margins included.
    void sizeHints()
    {
        Bar fixture;
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        ToolBar* bar = fixture.bar;
        QCOMPARE(bar->sizeHint().height(), 30);
        fixture.SetWidth(bar->sizeHint().width());
        QCOMPARE(fixture.InMenu(), QString());
        fixture.SetWidth(bar->sizeHint().width() - 1);
        QCOMPARE(fixture.InMenu(), QStringLiteral("D"));
        fixture.SetWidth(bar->minimumSizeHint().width());
        QCOMPARE(fixture.OnBar(), QString());
        QVERIFY(bar->contentsRect().contains(bar->OverflowButton()->geometry()));
        QCOMPARE(bar->minimumSizeHint().height(), 30);

        // A hidden action takes no room; a new text asks for more.
        const int full = bar->sizeHint().width();
        fixture.actions.value(QStringLiteral("C"))->setVisible(false);
        QCOMPARE(bar->sizeHint().width(), full - 42);
        fixture.SetWidth(full - 42);
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B | W M D"));
        fixture.actions.value(QStringLiteral("C"))->setVisible(true);
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B | C W"));
        QCOMPARE(fixture.InMenu(), QStringLiteral("M D"));
        QCoreApplication::processEvents(); // what showing and hiding items asked for
        fixture.Button("D")->setFixedWidth(60);
        QTRY_COMPARE(bar->sizeHint().width(), full + 20);
    }

    // Narrowed and widened again, the bar shows at each width what one made at that width
    // shows, with the very same widgets: no child is added, the line edit goes to the
    // menu and comes back.
    void itemsComeBack()
    {
        Bar fixture;
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        const QSet<QWidget*> widgets = fixture.Widgets();
        QVERIFY(widgets.contains(fixture.edit));
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
            QCOMPARE(fixture.OnBar(), QString::fromLatin1(OrderAt(width).onBar));
            QCOMPARE(fixture.InMenu(), QString::fromLatin1(OrderAt(width).inMenu));
            if (width == 26) // everything has been made
                fixture.bar->installEventFilter(&children);
        }
        QCOMPARE(log.Take().size(), 6);
        fixture.SetWidth(286);
        QCOMPARE(log.Take(), QStringList());
        QCOMPARE(fixture.Widgets(), widgets);
        QCOMPARE(children.added, 0);
        QCOMPARE(fixture.edit->parentWidget(), fixture.bar);
        QVERIFY(fixture.edit->isVisible());
        QCOMPARE(fixture.bar->WidgetForAction(fixture.editAction), fixture.edit);
    }

    // A QWidgetAction that makes its widgets gives the menu a widget of its own and the
    // bar a new one when it comes back; the old ones go.
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
        QTRY_VERIFY(!first);
        fixture.SetWidth(fixture.bar->sizeHint().width());
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B | C W M D Made"));
        QCOMPARE(made->made, 3);
    }

    // Open, the overflow menu shows the line edit inside it and the menu button's menu
    // as a submenu whose actions the bar reports.
    void overflowMenuHoldsWidgetsAndMenus()
    {
        Bar fixture(100);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QMenu* overflow = fixture.bar->OverflowMenu();
        overflow->popup(fixture.bar->mapToGlobal(QPoint(0, 30)));
        QVERIFY(QTest::qWaitForWindowExposed(overflow));
        QVERIFY(fixture.edit->isVisible());
        QCOMPARE(fixture.edit->window(), overflow);
        QVERIFY(overflow->rect().contains(fixture.edit->geometry()));

        QAction* entry = fixture.bar->OverflowActions().at(4);
        QCOMPARE(entry->text(), QStringLiteral("M"));
        QCOMPARE(entry->menu(), fixture.menu);
        QStringList lines;
        RecordTriggered(fixture.bar, &lines);
        overflow->setActiveAction(entry);
        QTest::keyClick(overflow, Qt::Key_Right);
        QVERIFY(QTest::qWaitForWindowExposed(fixture.menu));
        QTest::keyClick(fixture.menu, Qt::Key_Down);
        QCOMPARE(fixture.menu->activeAction()->text(), QStringLiteral("M2"));
        QTest::keyClick(fixture.menu, Qt::Key_Return);
        QTRY_VERIFY(!overflow->isVisible());
        QCOMPARE(lines, QStringList({QStringLiteral("bar: M2")}));
    }

    void overflowButtonOpensMenu()
    {
        Bar fixture(150);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        ToolBarButton* overflow = fixture.bar->OverflowButton();
        QCOMPARE(overflow->objectName(), QStringLiteral("OverflowButton"));
        QCOMPARE(overflow->accessibleName(), QStringLiteral("ToolBar_OverflowButton"));
        QCOMPARE(fixture.bar->OverflowMenu()->objectName(), QStringLiteral("OverflowMenu"));
        QCOMPARE(overflow->focusPolicy(), Qt::NoFocus);
        QVERIFY(!overflow->icon().isNull());
        QString shown;
        QTimer::singleShot(0, this, [&] {
            QTRY_VERIFY(fixture.bar->OverflowMenu()->isVisible());
            shown = fixture.InMenu();
            fixture.bar->OverflowMenu()->hide();
        });
        QTest::mouseClick(overflow, Qt::LeftButton, Qt::NoModifier, overflow->rect().center());
        QCOMPARE(shown, QStringLiteral("C W M D"));
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
            ToolBarButton* button = nullptr;
            if (ownAction) {
                auto* action = new QAction(QStringLiteral("E"), &fixture.window);
                action->setCheckable(checkable);
                button = fixture.bar->AddAction(action);
                connect(action, &QAction::triggered, &fixture.window, [&lines] { lines << QStringLiteral("triggered"); });
            } else {
                button = fixture.bar->AddButton(new ToolBarButton);
                button->setText(QStringLiteral("E"));
                button->setCheckable(checkable);
                // A button without an action has nothing but its clicks to tell.
                connect(button, &QAbstractButton::clicked, &fixture.window, [&lines] { lines << QStringLiteral("clicked"); });
            }
            QVERIFY(button);
            button->setFixedSize(40, 24);
            connect(button, &QAbstractButton::toggled, &fixture.window,
                    [&lines](bool on) { lines << QStringLiteral("toggled ") + (on ? "true" : "false"); });
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
    // A button added with a menu of its own (not its action's) goes into the overflow
    // menu as that submenu, under its text, and comes back as it was. Its menu deleted,
    // it is a plain entry that clicks the button.
    void addedButtonWithMenu()
    {
        QFETCH(bool, withAction);
        Bar fixture(100);
        QAction open(QStringLiteral("N"));
        auto* button = withAction ? new ToolBarButton(&open) : new ToolBarButton;
        button->setText(QStringLiteral("N"));
        auto* own = new QMenu;
        own->addAction(QStringLiteral("N1"));
        button->setMenu(own);
        button->setPopupMode(withAction ? QToolButton::MenuButtonPopup : QToolButton::InstantPopup);
        QCOMPARE(fixture.bar->AddButton(button), button);
        QCOMPARE(fixture.bar->ActionForButton(button) == &open, withAction);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QAction* entry = fixture.bar->OverflowActions().last();
        QCOMPARE(fixture.InMenu(), QStringLiteral("B | C W M D N"));
        QCOMPARE(entry->menu(), own);
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

    // A button added without an action is followed by the bar's action for it: text,
    // icon, tooltip, enabled and check state, on the bar and in the overflow menu.
    void addedButtonActionFollows()
    {
        Bar fixture;
        auto* button = new ToolBarButton;
        button->setText(QStringLiteral("Pin"));
        button->setToolTip(QStringLiteral("Pin the page"));
        QPixmap red(16, 16);
        red.fill(Qt::red);
        button->setIcon(QIcon(red));
        button->setCheckable(true);
        button->setChecked(true);
        fixture.bar->AddButton(button);
        button->setFixedSize(40, 24);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QAction* action = fixture.bar->ActionForButton(button);
        QVERIFY(action);
        const auto state = [](QAction* action) {
            return QStringLiteral("%1|%2|%3|%4|%5")
                .arg(action->text(), action->toolTip())
                .arg(action->icon().pixmap(16).toImage().pixelColor(8, 8).name())
                .arg(action->isEnabled())
                .arg(action->isChecked());
        };
        QCOMPARE(state(action), QStringLiteral("Pin|Pin the page|#ff0000|1|1"));
        fixture.SetWidth(100);
        QCOMPARE(fixture.bar->OverflowActions().last(), action);
        button->setText(QStringLiteral("Unpin"));
        button->setEnabled(false);
        button->setChecked(false);
        fixture.bar->OverflowMenu()->popup(QPoint(0, 0));
        QVERIFY(QTest::qWaitForWindowExposed(fixture.bar->OverflowMenu()));
        QCOMPARE(state(action), QStringLiteral("Unpin|Pin the page|#ff0000|0|0"));
        fixture.bar->OverflowMenu()->hide();
    }

    // A new size of an item reaches the layout the bar is in.
    void sizeReachesParentLayout()
    {
        QWidget window;
        auto* column = new QVBoxLayout(&window);
        column->setContentsMargins(0, 0, 0, 0);
        auto* bar = new ToolBar;
        column->addWidget(bar);
        column->addStretch();
        ToolBarButton* button = bar->AddAction(QStringLiteral("Tall"));
        window.resize(300, 200);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QTRY_COMPARE(bar->height(), bar->sizeHint().height());
        button->setFixedHeight(60);
        QTRY_COMPARE(bar->height(), 66);
        QCOMPARE(button->geometry(), QRect(3, 3, button->width(), 60));
    }

    // The style properties follow the pointer and the check state, and the button is
    // painted from the band of its state.
    void hoveredAndSelected()
    {
        QCursor::setPos(0, 0);
        Bar fixture;
        fixture.window.move(100, 100);
        QAction* action = fixture.actions.value(QStringLiteral("B"));
        action->setCheckable(true);
        ToolBarButton* button = fixture.Button("B");
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        const auto band = [button] { return TestSupport::Render(button).pixelColor(3, 12); };
        QTRY_COMPARE(button->property("hovered"), QVariant(false));
        QCOMPARE(button->property("selected"), QVariant(false));
        QCOMPARE(band(), QColor(Qt::transparent));
        QCOMPARE(button->CurrentBand(), ToolBarButton::Band::Normal);

        QCursor::setPos(button->mapToGlobal(button->rect().center()));
        QTRY_COMPARE(button->property("hovered"), QVariant(true));
        QCOMPARE(button->CurrentBand(), ToolBarButton::Band::Hovered);
        QCOMPARE(band(), kHoveredBand);
        action->setChecked(true);
        QCOMPARE(button->property("selected"), QVariant(true));
        QCOMPARE(band(), kPressedBand);

        QCursor::setPos(0, 0);
        QTRY_COMPARE(button->property("hovered"), QVariant(false));
        QCOMPARE(band(), kPressedBand);
        action->setChecked(false);
        QCOMPARE(button->property("selected"), QVariant(false));
        QCOMPARE(band(), QColor(Qt::transparent));
        QCOMPARE(fixture.Button("A")->property("hovered"), QVariant(false));
    }

    // The bar is its picture stretched: corners as drawn, the middle between the top and
    // bottom of the gradient. Another picture, none, or a style sheet take its place.
    void paintsBackground()
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
        for (int y = 0; y < 6; ++y) {
            for (int x = 0; x < 6; ++x) {
                QCOMPARE(painted.pixel(x, y), picture.pixel(x, y));
                QCOMPARE(painted.pixel(194 + x, 34 + y), picture.pixel(26 + x, 26 + y));
            }
        }
        const QColor middle = painted.pixelColor(100, 20);
        QCOMPARE(middle.alpha(), 255);
        QVERIFY(middle.blue() < picture.pixelColor(16, 1).blue() && middle.blue() > picture.pixelColor(16, 30).blue());

        QTemporaryDir folder;
        const QString red = folder.filePath(QStringLiteral("red.png"));
        QVERIFY(SolidPicture(Qt::red, QSize(16, 16)).save(red));
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
    }

    // The borders can come from a style sheet through the one-number property.
    void bordersFromStyleSheet()
    {
        ToolBar bar;
        ToolBarButton button;
        bar.setStyleSheet(QStringLiteral("OrvantaQT--ToolBar { qproperty-backgroundBorder: 4; }"));
        button.setStyleSheet(QStringLiteral("OrvantaQT--ToolBarButton { qproperty-backgroundBorder: 2; }"));
        bar.ensurePolished();
        button.ensurePolished();
        QCOMPARE(bar.GetBackgroundBorders(), QMargins(4, 4, 4, 4));
        QCOMPARE(button.GetBackgroundBorders(), QMargins(2, 2, 2, 2));
    }

    // A style sheet rule that applies to a button paints it instead of the picture, in
    // the states the rule's selector names.
    void styleSheetTakesOverButton()
    {
        Bar fixture;
        QAction* action = fixture.actions.value(QStringLiteral("A"));
        action->setCheckable(true);
        ToolBarButton* button = fixture.Button("A");
        fixture.window.setStyleSheet(
            QStringLiteral("OrvantaQT--ToolBarButton[selected=\"true\"] { background: #ff0000; border: none; }"));
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QCOMPARE(TestSupport::Render(button).pixelColor(3, 12), QColor(Qt::transparent));
        action->setChecked(true);
        QCOMPARE(TestSupport::Render(button).pixelColor(3, 12), QColor(Qt::red));
        QCOMPARE(TestSupport::Render(fixture.Button("B")).pixelColor(3, 12), QColor(Qt::transparent));
    }

    // Over the band the style draws the icon, and the small arrow of a menu that opens
    // on a press unless it is turned off (as on the overflow button).
    void labelOverBand()
    {
        ToolBarButton button;
        button.resize(40, 24);
        QPixmap red(16, 16);
        red.fill(Qt::red);
        button.setIcon(QIcon(red));
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
        QImage nothing(without.size(), without.format()); // the normal band is clear
        nothing.fill(Qt::transparent);
        QCOMPARE(without, nothing);

        // Another picture's bands.
        QTemporaryDir folder;
        const QString bands = folder.filePath(QStringLiteral("bands.png"));
        QImage picture(24, 72, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::blue);
        QPainter(&picture).fillRect(0, 24, 24, 24, Qt::green);
        QVERIFY(picture.save(bands));
        menuButton.SetBackgroundImage(bands);
        menuButton.setDown(true);
        QCOMPARE(TestSupport::Render(&menuButton).pixelColor(3, 12), QColor(Qt::green));
        menuButton.SetBackgroundImage(QString());
        QCOMPARE(TestSupport::Render(&menuButton), nothing);
    }

    void settersRepaint_data()
    {
        QTest::addColumn<Change>("change");
        QTest::addColumn<bool>("ofBar"); // else of the button
        QTest::newRow("bar picture") << Change([](ToolBar* bar, ToolBarButton*) {
            bar->SetBackgroundImage(QStringLiteral(":/tool_bar_button.png"));
        }) << true;
        QTest::newRow("bar borders") << Change([](ToolBar* bar, ToolBarButton*) { bar->SetBackgroundBorder(2); }) << true;
        QTest::newRow("button picture") << Change([](ToolBar*, ToolBarButton* button) {
            button->SetBackgroundImage(QStringLiteral(":/tool_bar_background.png"));
        }) << false;
        QTest::newRow("button borders") << Change([](ToolBar*, ToolBarButton* button) {
            button->SetBackgroundBorders(QMargins(1, 2, 3, 4));
        }) << false;
        QTest::newRow("menu indicator") << Change([](ToolBar*, ToolBarButton* button) {
            button->SetMenuIndicatorVisible(false);
        }) << false;
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

    // A menu opening under the pointer does not end the hover of its button.
    void hoverKeptWhileMenuOpens()
    {
        QCursor::setPos(0, 0);
        Bar fixture;
        fixture.window.move(100, 100);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        ToolBarButton* button = fixture.Button("M");
        QCursor::setPos(button->mapToGlobal(button->rect().center()));
        QTRY_COMPARE(button->property("hovered"), QVariant(true));
        QVariant hoveredWhileOpen;
        QTimer::singleShot(0, this, [&] {
            QTRY_VERIFY(fixture.menu->isVisible());
            QTest::qWait(50);
            hoveredWhileOpen = button->property("hovered");
            fixture.menu->hide();
        });
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, button->rect().center());
        QCOMPARE(hoveredWhileOpen, QVariant(true));
        QCOMPARE(TestSupport::Render(button).pixelColor(3, 12), kHoveredBand);
        QCursor::setPos(0, 0);
    }

    void guards_data()
    {
        QTest::addColumn<Call>("call");
        QTest::addColumn<QString>("logged");
        QTest::newRow("null action") << Call([](ToolBar& bar) { return !bar.AddAction(static_cast<QAction*>(nullptr)); })
                                     << "3 ToolBar: no action to add";
        QTest::newRow("null inserted") << Call([](ToolBar& bar) { return !bar.InsertAction(nullptr, nullptr); })
                                       << "3 ToolBar: no action to insert";
        QTest::newRow("null menu") << Call([](ToolBar& bar) { return !bar.AddMenu(nullptr); })
                                   << "3 ToolBar: no menu to add";
        QTest::newRow("null widget") << Call([](ToolBar& bar) { return !bar.AddWidget(nullptr); })
                                     << "3 ToolBar: no widget to add";
        QTest::newRow("null button") << Call([](ToolBar& bar) { return !bar.AddButton(nullptr); })
                                     << "3 ToolBar: no button to add";
        QTest::newRow("button twice") << Call([](ToolBar& bar) {
            auto* button = bar.AddButton(new ToolBarButton);
            return button && !bar.AddButton(button);
        }) << "3 ToolBar: the button is already on a tool bar";
        QTest::newRow("the overflow button") << Call([](ToolBar& bar) { return !bar.AddButton(bar.OverflowButton()); })
                                             << "3 ToolBar: the button is already on a tool bar";
        QTest::newRow("button of an action on the bar") << Call([](ToolBar& bar) {
            ToolBarButton* first = bar.AddAction(QStringLiteral("Save"));
            return !bar.AddButton(new ToolBarButton(first->defaultAction(), &bar));
        }) << "3 ToolBar: the button's action \"Save\" is already on the bar";
        QTest::newRow("negative spacing") << Call([](ToolBar& bar) {
            bar.SetSpacing(-4);
            return bar.GetSpacing() == 2;
        }) << "3 ToolBar: a negative spacing (-4) ignored";
        QTest::newRow("negative borders") << Call([](ToolBar& bar) {
            bar.SetBackgroundBorders(QMargins(1, -2, 3, 4));
            return bar.GetBackgroundBorders() == QMargins(6, 6, 6, 6);
        }) << "3 ToolBar: negative picture borders (1, -2, 3, 4) ignored";
        QTest::newRow("missing picture") << Call([](ToolBar& bar) {
            bar.resize(50, 30);
            bar.SetBackgroundImage(QStringLiteral(":/no_such_picture.png"));
            return TestSupport::Render(&bar).pixelColor(25, 15) == QColor(Qt::transparent);
        }) << "3 ToolBar: no picture at \":/no_such_picture.png\"; painted without one";
        QTest::newRow("button without action") << Call([](ToolBar&) {
            ToolBarButton button(static_cast<QAction*>(nullptr));
            return !button.defaultAction();
        }) << "3 ToolBarButton: no action; the button has none";
        QTest::newRow("button, missing picture") << Call([](ToolBar&) {
            ToolBarButton button;
            button.resize(30, 30);
            button.setDown(true);
            button.SetBackgroundImage(QStringLiteral("/no/such.png"));
            return TestSupport::Render(&button).pixelColor(3, 15) == QColor(Qt::transparent);
        }) << "3 ToolBarButton: no picture at \"/no/such.png\"; painted without one";
        QTest::newRow("button, negative border") << Call([](ToolBar&) {
            ToolBarButton button;
            button.SetBackgroundBorder(-1);
            return button.GetBackgroundBorder() == 6;
        }) << "3 ToolBarButton: negative picture borders (-1, -1, -1, -1) ignored";
    }
    // Bad input is refused with one log line and changes nothing.
    void guards()
    {
        QFETCH(Call, call);
        QFETCH(QString, logged);
        ToolBar bar;
        const LogCapture::Mark mark;
        QVERIFY(call(bar));
        QCOMPARE(mark.Texts(), QStringList(logged));
    }

    void itemDeleted_data()
    {
        QTest::addColumn<QString>("item"); // D an action, W a QWidgetAction, M a menu
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("onBar");
        QTest::addColumn<QString>("inMenu");
        QTest::newRow("action on the bar") << "D" << 286 << "A B | C W M" << "";
        QTest::newRow("action in the overflow menu") << "D" << 100 << "A" << "B | C W M";
        QTest::newRow("QWidgetAction on the bar") << "W" << 286 << "A B | C M D" << "";
        QTest::newRow("QWidgetAction in the overflow menu") << "W" << 150 << "A B" << "C M D";
        QTest::newRow("menu on the bar") << "M" << 286 << "A B | C W D" << "";
        QTest::newRow("menu in the overflow menu") << "M" << 150 << "A B" << "C W D";
    }
    // Deleting an action, a QWidgetAction or a button's menu takes the item off the bar or
    // out of the overflow menu, its widget along; what is left still fits as before.
    void itemDeleted()
    {
        QFETCH(QString, item);
        QFETCH(int, width);
        QFETCH(QString, onBar);
        QFETCH(QString, inMenu);
        Bar fixture(width);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QPointer<QWidget> widget = item == QLatin1String("W") ? static_cast<QWidget*>(fixture.edit) : fixture.Button(qPrintable(item));
        QVERIFY(widget);
        if (item == QLatin1String("M"))
            delete fixture.menu;
        else
            delete fixture.actions.take(item);
        QCOMPARE(fixture.OnBar(), onBar);
        QCOMPARE(fixture.InMenu(), inMenu);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!widget);
        if (!inMenu.isEmpty()) {
            fixture.bar->OverflowMenu()->popup(QPoint(0, 0));
            QVERIFY(QTest::qWaitForWindowExposed(fixture.bar->OverflowMenu()));
            fixture.bar->OverflowMenu()->hide();
        }
        fixture.SetWidth(fixture.bar->sizeHint().width());
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B | C W M D").remove(QLatin1Char(' ') + item));
        QVERIFY(!fixture.bar->OverflowButton()->isVisible());
    }

    // Receivers of the bar's signals and of a click from the overflow menu may change the
    // bar at once.
    void receiversChangeTheBar()
    {
        Bar fixture;
        auto* button = fixture.bar->AddButton(new ToolBarButton);
        button->setText(QStringLiteral("E"));
        button->setFixedSize(40, 24);
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        connect(fixture.bar, &ToolBar::OverflowChanged, &fixture.window, [&] { delete fixture.actions.take("C"); });
        connect(button, &QAbstractButton::clicked, &fixture.window, [&] { delete fixture.actions.take("D"); });
        fixture.SetWidth(150);
        QCOMPARE(fixture.OnBar(), QStringLiteral("A B")); // W no longer fits after the separator
        QCOMPARE(fixture.InMenu(), QStringLiteral("W M D E"));
        QVERIFY(ClickInOverflowMenu(fixture.bar, QStringLiteral("E")));
        QCOMPARE(fixture.InMenu(), QStringLiteral("W M E"));
    }

    // A button or a separator deleted by hand leaves the bar; its action stays.
    void widgetsDeletedByHand()
    {
        Bar fixture;
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        delete fixture.Button("C");
        delete fixture.bar->WidgetForAction(fixture.actions.value(QStringLiteral("|")));
        QTRY_COMPARE(fixture.OnBar(), QStringLiteral("A B W M D"));
        QVERIFY(fixture.actions.value(QStringLiteral("C")));
        QCOMPARE(fixture.bar->sizeHint().width(), 286 - 52);
        auto* added = fixture.bar->AddButton(new ToolBarButton);
        delete added;
        QCOMPARE(fixture.bar->actions().size(), 7);

        // A QWidgetAction's widget deleted leaves its action a plain entry of the menu.
        delete fixture.edit;
        QTRY_COMPARE(fixture.OnBar(), QStringLiteral("A B M D"));
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
        ToolBarButton* first = fixture.bar->InsertAction(fixture.actions.value(QStringLiteral("A")), new QAction(
            QStringLiteral("Z"), &fixture.window));
        first->setFixedSize(40, 24);
        QTRY_COMPARE(fixture.OnBar(), QStringLiteral("Z A B | C W M Spacer D"));
        delete first->defaultAction();
        QCOMPARE(fixture.Button("D")->geometry().right(), 400 - 4);
        QCOMPARE(fixture.Button("A")->x(), 3);
        fixture.bar->setLayoutDirection(Qt::RightToLeft);
        QCOMPARE(fixture.Button("A")->geometry().right(), 400 - 4);
        QCOMPARE(fixture.Button("D")->x(), 3);
        fixture.SetWidth(200);
        QCOMPARE(fixture.bar->OverflowButton()->x(), 3);
        QVERIFY(fixture.Button("A")->geometry().right() == 200 - 4);
    }

    // A spacing of the bar's own replaces the style's; reset brings it back.
    void spacing()
    {
        Bar fixture;
        QVERIFY(TestSupport::ShowAndWait(&fixture.window));
        QCOMPARE(fixture.Button("B")->x(), 45);
        fixture.bar->SetSpacing(10);
        QCOMPARE(fixture.Button("B")->x(), 53);
        QCOMPARE(fixture.InMenu(), QStringLiteral("M D"));
        fixture.bar->ResetSpacing();
        QCOMPARE(fixture.Button("B")->x(), 45);
        QCOMPARE(fixture.InMenu(), QString());
        QCOMPARE(TestSupport::FirstNotReset(fixture.bar, {{"spacing", 10}}), QString());
    }

    // The icon size and button style go to every button, the overflow button's icon size
    // too; the buttons the bar makes take no focus, as QToolBar's, and Tab passes them.
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
        auto* after = new QLineEdit;
        column->addWidget(after);
        QCOMPARE(made->focusPolicy(), Qt::NoFocus);
        QCOMPARE(added->focusPolicy(), Qt::TabFocus);
        const int extent = bar->style()->pixelMetric(QStyle::PM_ToolBarIconSize);
        QCOMPARE(made->iconSize(), QSize(extent, extent));
        QCOMPARE(bar->OverflowButton()->iconSize(), QSize(extent, extent));
        QCOMPARE(TestSupport::FirstNotReset(bar, {{"iconSize", QSize(40, 40)}}), QString());
        QCOMPARE(made->iconSize(), QSize(extent, extent));
        bar->SetIconSize(QSize(40, 40));
        bar->SetToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        for (QToolButton* button : {static_cast<QToolButton*>(made), static_cast<QToolButton*>(added)}) {
            QCOMPARE(button->iconSize(), QSize(40, 40));
            QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
        }
        QCOMPARE(bar->OverflowButton()->iconSize(), QSize(40, 40));
        QVERIFY(bar->sizeHint().height() > 40);

        QVERIFY(TestSupport::ShowAndWait(&window));
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        before->setFocus();
        QVERIFY(before->hasFocus());
        QTest::keyClick(before, Qt::Key_Tab);
        QTRY_VERIFY(added->hasFocus());
        QTest::keyClick(added, Qt::Key_Tab);
        QTRY_VERIFY(after->hasFocus());
    }
};

QTEST_MAIN(TestToolBar)
#include "tst_tool_bar.moc"
