#include <qt_halvo/views/closable_list_view.h>
#include <qt_halvo/views/closable_tree_view.h>

#include "accessibility_recorder.h"
#include "test_support.h"

#include <QtGui/QStandardItemModel>

using OrvantaQT::ClosableListView;
using OrvantaQT::ClosableTreeView;

namespace {

// Fusion with a 14-pixel close button filled by its state, and hovered rows yellow unless
// the view says "plainHover".
class MarkStyle : public QProxyStyle
{
public:
    MarkStyle() : QProxyStyle(QStringLiteral("Fusion")) {}
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override
    {
        const State state = option->state;
        if (element == PE_IndicatorTabClose)
            painter->fillRect(option->rect, state & State_Sunken ? Qt::blue : state & State_MouseOver ? Qt::green : Qt::red);
        else if (element == PE_PanelItemViewItem && (state & State_MouseOver) && !widget->property("plainHover").toBool())
            painter->fillRect(option->rect, Qt::yellow);
        else
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        const bool close = metric == PM_TabCloseIndicatorWidth || metric == PM_TabCloseIndicatorHeight;
        return close ? 14 : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

// The row's name (the first word of its text) and column.
QString Name(const QModelIndex& index)
{
    return index.isValid() ? index.data().toString().section(' ', 0, 0) + '/' + QString::number(index.column()) : QString();
}

using Act = void (*)(QWidget*, Qt::MouseButton, Qt::KeyboardModifiers, QPoint, int);
using Verb = std::function<void(struct Host&, const QString&)>;

// Rows r0..r7 (columns b, c; long texts) in a list, or in a tree where r1 has a child k1;
// a window of their own, rows alternating, r1 current, not focused, hovered rows tracked.
struct Host
{
    explicit Host(bool tree) : view(tree ? Listen<ClosableTreeView>() : Listen<ClosableListView>())
    {
        const auto item = [](const QString& name) { return new QStandardItem(name + ' ' + QString(40, 'W')); };
        for (const QString row : {"0", "1", "2", "3", "4", "5", "6", "7"})
            model.appendRow({item("r" + row), item("b" + row), item("c" + row)});
        model.item(1)->appendRow(item("k1"));
        view->setStyle(&style);
        view->setFont(TestSupport::TestFont());
        view->viewport()->setAttribute(Qt::WA_Hover);
        view->setFocusPolicy(Qt::NoFocus);
        view->setAlternatingRowColors(true);
        view->setModel(&model);
        if (auto* treeView = qobject_cast<QTreeView*>(view))
            treeView->expandAll();
        view->setCurrentIndex(Index("r1"));
        view->setGeometry(100, 100, 300, 240);
    }
    ~Host() { delete view; }
    template <typename View>
    QAbstractItemView* Listen()
    {
        auto* made = new View;
        QObject::connect(made, &View::CloseRequested, [this](const QModelIndex& index) {
            requests << Name(index);
            if (onClose)
                onClose(index);
        });
        return made;
    }
    template <typename Value>
    Value Ask(Value (ClosableListView::*list)() const, Value (ClosableTreeView::*tree)() const) const
    {
        auto* listView = qobject_cast<ClosableListView*>(view);
        return listView ? (listView->*list)() : (static_cast<ClosableTreeView*>(view.data())->*tree)();
    }
    QRect Button() const { return Ask(&ClosableListView::CloseButtonRect, &ClosableTreeView::CloseButtonRect); }
    QModelIndex Shown() const { return Ask(&ClosableListView::CloseButtonIndex, &ClosableTreeView::CloseButtonIndex); }
    QModelIndex Index(const QString& name) const
    {
        for (const int column : {0, 1, 2})
            for (const QStandardItem* item : model.findItems(name + ' ', Qt::MatchStartsWith | Qt::MatchRecursive, column))
                return item->index();
        return QModelIndex();
    }
    // The middle of the shown part of a row, the button, or where the last step was.
    QPoint At(const QString& place)
    {
        if (place != QLatin1String("here"))
            here = (place == QLatin1String("button") ? Button() : view->visualRect(Index(place)) & view->viewport()->rect()).center();
        return here;
    }
    // Steps "verb:what" apart by spaces: (m|r)click, (m)press, (m)release at a row, the
    // button or here; hover, enter (no move) or drag (the left button held) to one; leave; key; remove a row; clear,
    // reset, replace or null the model; replace the viewport; focus; rtl; plainhover; scroll; closing:deletes or
    // closing:removes (what the slot does).
    void Run(const QString& script)
    {
        const auto mouse = [](Act act, Qt::MouseButton button) {
            return Verb([=](Host& h, const QString& at) { act(h.view->viewport(), button, {}, h.At(at), -1); });
        };
        const auto change = [](const std::function<void(Host&)>& change) { return Verb([=](Host& h, const QString&) { change(h); }); };
        static const QHash<QString, Verb> verbs{
            {"click", mouse(QTest::mouseClick, Qt::LeftButton)}, {"mclick", mouse(QTest::mouseClick, Qt::MiddleButton)},
            {"press", mouse(QTest::mousePress, Qt::LeftButton)}, {"mpress", mouse(QTest::mousePress, Qt::MiddleButton)},
            {"release", mouse(QTest::mouseRelease, Qt::LeftButton)}, {"mrelease", mouse(QTest::mouseRelease, Qt::MiddleButton)},
            {"rclick", mouse(QTest::mouseClick, Qt::RightButton)},
            {"hover", [](Host& h, const QString& at) { TestSupport::PointerTo(h.view->viewport(), h.At(at)); }},
            {"enter", [](Host& h, const QString& at) {
                 QEnterEvent enter(h.At(at), h.At(at), h.view->viewport()->mapToGlobal(h.At(at)));
                 QCoreApplication::sendEvent(h.view->viewport(), &enter);
             }},
            {"leave", change([](Host& h) { QEvent leave(QEvent::Leave); QCoreApplication::sendEvent(h.view->viewport(), &leave); })},
            {"drag", [](Host& h, const QString& at) {
                 QMouseEvent move(QEvent::MouseMove, h.At(at), Qt::NoButton, Qt::LeftButton, {});
                 QCoreApplication::sendEvent(h.view->viewport(), &move);
             }},
            {"key", [](Host& h, const QString& key) {
                 const int code = QKeySequence(key)[0];
                 QTest::keyClick(h.view, Qt::Key(code & ~Qt::KeyboardModifierMask), Qt::KeyboardModifiers(code & Qt::KeyboardModifierMask));
             }},
            {"remove", [](Host& h, const QString& row) { h.model.removeRow(h.Index(row).row(), h.Index(row).parent()); }},
            {"scroll", [](Host& h, const QString& by) { h.view->verticalScrollBar()->setValue(by.toInt()); }},
            {"clear", change([](Host& h) { h.model.removeRows(0, h.model.rowCount()); })},
            {"reset", change([](Host& h) { h.model.clear(); for (int i = 0; i < 12; ++i) h.model.appendRow(new QStandardItem("n")); })},
            {"replace", change([](Host& h) { h.view->setModel(new QStringListModel({"other"}, h.view)); })},
            {"null", change([](Host& h) { h.view->setModel(nullptr); })},
            {"viewport", change([](Host& h) {
                 auto* viewport = new QWidget;
                 viewport->setAttribute(Qt::WA_Hover);
                 h.view->setViewport(viewport);
             })},
            {"rtl", change([](Host& h) { h.view->setLayoutDirection(Qt::RightToLeft); })},
            {"plainhover", change([](Host& h) { h.view->setProperty("plainHover", true); })},
            {"focus", change([](Host& h) {
                 h.view->setFocusPolicy(Qt::StrongFocus);
                 h.view->activateWindow();
                 h.view->setFocus();
                 QTRY_VERIFY(h.view->hasFocus());
             })},
            {"closing", [](Host& h, const QString& what) {
                 h.onClose = [&h, what](const QModelIndex& index) {
                     what == QLatin1String("deletes") ? delete h.view : void(h.model.removeRow(index.row(), index.parent()));
                 };
             }}};
        for (const QString& step : script.split(' ', Qt::SkipEmptyParts))
            verbs.value(step.section(':', 0, 0))(*this, step.section(':', 1));
    }
    // "requests|button's row|selected row|colours of the button (3 pixels from the trailing
    // edge, halfway down the row), of the margin before it, of the row above its text";
    // without a button, the colour of the row where the last step was.
    QString Observed()
    {
        if (!view)
            return QStringLiteral("gone");
        const QModelIndex shown = Shown(); // at once
        QCoreApplication::processEvents();
        const QImage image = TestSupport::Render(view->viewport());
        const QPalette palette = view->palette();
        const QHash<QString, QString> tones{{"#ff0000", "red"}, {"#00ff00", "lime"}, {"#0000ff", "blue"}, {"#ffff00", "yellow"},
            {palette.base().color().name(), "base"}, {palette.alternateBase().color().name(), "alternate"}, {palette.highlight().color().name(), "selected"}};
        const QRect row = view->visualRect(shown.isValid() ? shown : view->indexAt(here));
        const int end = view->isRightToLeft() ? 0 : image.width() - 1, inward = view->isRightToLeft() ? 1 : -1;
        QStringList colours;
        for (const QPoint at : {QPoint(end + inward * 10, row.center().y()), QPoint(end + inward * 18, row.center().y()), QPoint(150, row.top() + 2)})
            colours << tones.value(image.pixelColor(at).name(), "other");
        const QString selected = Name(view->selectionModel()->selectedIndexes().value(0).siblingAtColumn(0)).section('/', 0, 0);
        return QStringList{requests.join(','), Name(shown), selected, shown.isValid() ? colours.join(' ') : row.isEmpty() ? "-" : colours[2]}.join('|');
    }

    MarkStyle style;
    QStandardItemModel model;
    QPointer<QAbstractItemView> view;
    QStringList requests;
    QPoint here;
    std::function<void(const QModelIndex&)> onClose;
};

} // namespace

class TestClosableViews : public QObject
{
    Q_OBJECT

    static QTestData& Row(bool tree, const char* name) { return QTest::addRow("%s %s", tree ? "tree" : "list", name) << tree; }

private Q_SLOTS:
    void init() { QCursor::setPos(0, 0); }

    void scripts_data()
    {
        QTest::addColumn<bool>("tree");
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("expected");
        for (const bool tree : {false, true}) {
            // Which row shows the button, where and in which state; no text in its margin.
            Row(tree, "hovered") << "hover:r4" << "|r4/0|r1|red yellow yellow";
            Row(tree, "entered, no move") << "enter:r4" << "|r4/0|r1|red yellow yellow";
            Row(tree, "left") << "hover:r2 leave" << (tree ? "||r1|alternate" : "||r1|base");
            Row(tree, "hovered, right to left") << "rtl hover:r4" << "|r4/0|r1|red yellow yellow";
            // (Fusion tints a list's focused item.)
            Row(tree, "current, focused") << "focus" << (tree ? "|r1/0|r1|red selected selected" : "|r1/0|r1|red other other");
            Row(tree, "current, focused, right to left") << "rtl focus" << (tree ? "|r1/0|r1|red selected selected" : "|r1/0|r1|red other other");
            Row(tree, "hovered, focused") << "focus hover:r5" << "|r5/0|r1|red yellow yellow";
            Row(tree, "pointer on the button") << "hover:r3 hover:button" << "|r3/0|r1|lime yellow yellow";
            Row(tree, "pressed on the button") << "hover:r3 press:button" << "|r3/0|r1|blue yellow yellow";
            // Clicks and keys.
            Row(tree, "button click") << "hover:r3 click:button" << "r3/0|r3/0|r1|lime yellow yellow";
            Row(tree, "two button clicks") << "hover:r3 click:button click:button" << "r3/0,r3/0|r3/0|r1|lime yellow yellow";
            Row(tree, "row click") << "hover:r3 click:r3" << "|r3/0|r3|red yellow yellow";
            Row(tree, "middle click") << "hover:r3 mclick:r3" << "r3/0|r3/0|r1|red yellow yellow";
            Row(tree, "middle click, released on another row") << "mpress:r3 mrelease:r4" << "|r4/0|r1|red yellow yellow";
            Row(tree, "right click on the button") << "hover:r3 rclick:button" << "|r3/0|r3|lime yellow yellow";
            Row(tree, "dragged from the button") << "hover:r3 press:button drag:r6 release:r6" << "|r6/0|r1|red yellow yellow";
            Row(tree, "Delete") << "key:Del" << "r1/0||r1|base";
            Row(tree, "keypad Delete") << "key:Num+Del" << "r1/0||r1|base";
            Row(tree, "Shift+Delete") << "key:Shift+Del" << "||r1|base";
            // Rows going: the row now under the pointer shows hovered with its button.
            Row(tree, "row removed by the slot") << "closing:removes hover:r4 click:button" << "r4/0|r5/0|r1|lime yellow yellow";
            Row(tree, "hovered row removed") << "hover:r4 remove:r4" << "|r5/0|r1|red yellow yellow";
            Row(tree, "row above removed") << "hover:r4 remove:r2" << "|r5/0|r1|red yellow yellow";
            Row(tree, "row below removed") << "hover:r4 remove:r5" << "|r4/0|r1|red yellow yellow";
            Row(tree, "last row removed, hovered") << "hover:r7 remove:r7" << "||r1|-";
            Row(tree, "all rows removed") << "hover:r4 clear" << "|||-";
            // Between press and release: nothing closed, no stale button.
            Row(tree, "model reset") << "hover:r3 press:button reset release:here" << "|n/0||lime yellow yellow";
            Row(tree, "pressed row removed") << "hover:r3 press:button remove:r3 release:here" << "|r4/0|r1|lime yellow yellow";
            Row(tree, "model replaced") << "hover:r3 press:button replace release:here" << "|||-";
            Row(tree, "model taken away") << "hover:r3 press:button null release:here" << "|||-";
            // A viewport set later shows the button and takes its clicks.
            Row(tree, "viewport replaced") << "viewport hover:r4 click:button" << "r4/0|r4/0|r1|lime yellow yellow";
            Row(tree, "viewport replaced under the pointer") << "hover:r3 viewport hover:r5" << "|r5/0|r1|red yellow yellow";
            // The slot deletes the view.
            Row(tree, "view deleted on a click") << "closing:deletes hover:r3 click:button" << "gone";
            Row(tree, "view deleted on a middle click") << "closing:deletes mclick:r3" << "gone";
            Row(tree, "view deleted on Delete") << "closing:deletes key:Del" << "gone";
        }
        // The margin has the row's own background: lists alternate by row, trees by the rows shown.
        Row(false, "alternate row") << "plainhover hover:r3" << "|r3/0|r1|red alternate alternate";
        Row(true, "row after a child") << "plainhover hover:r3" << "|r3/0|r1|red base base";
        Row(true, "row after a child, scrolled by one") << "plainhover scroll:1 hover:r3" << "|r3/0|r1|red base base";
        Row(true, "row after a child, scrolled by two") << "plainhover scroll:2 hover:r2" << "|r2/0|r1|red alternate alternate";
        Row(true, "child row's button") << "hover:k1 click:button" << "k1/0|k1/0|r1|lime yellow base";
        Row(true, "middle click on the last column") << "mclick:c4" << "r4/0|r4/0|r1|red yellow yellow";
    }
    // Requests name the row's first column; a press on the button neither selects nor
    // drags; nothing is logged.
    void scripts()
    {
        QFETCH(bool, tree);
        QFETCH(QString, script);
        QFETCH(QString, expected);
        const LogCapture::Mark mark;
        Host host(tree);
        QVERIFY(TestSupport::ShowAndWait(host.view));
        host.Run(script);
        QCOMPARE(host.Observed(), expected);
        QCOMPARE(mark.Texts(), QStringList());
        if (!host.view || !host.Shown().isValid())
            return;
        const QRect button = host.Button(), row = host.view->visualRect(host.Shown());
        QCOMPARE(button.size(), QSize(14, 14));
        QCOMPARE(host.view->isRightToLeft() ? button.left() : host.view->viewport()->width() - 1 - button.right(), 3);
        QVERIFY(qAbs((button.top() - row.top()) - (row.bottom() - button.bottom())) <= 1); // centred
    }

    // A pressable object of its own under the view, named after its row, where it is drawn;
    // screen readers hear when it appears, moves and goes.
    void accessibility()
    {
        if (!TestSupport::OnScreenReaderBus()) { // Qt tells of updates only with a screen reader's bus there
            const TestSupport::ScreenReaderBus bus;
            QVERIFY(!bus.Address().isEmpty());
            QCOMPARE(TestSupport::RunTestFunctionInChild("accessibility", bus.Environment()), QString());
            return;
        }
        for (const bool tree : {false, true}) {
            Host host(tree);
            QVERIFY(TestSupport::ShowAndWait(host.view));
            QTRY_VERIFY(QAccessible::isActive());
            TestSupport::AccessibilityRecorder recorder;
            QObject* object = host.view->findChild<QObject*>(QStringLiteral("CloseButton"));
            QAccessibleInterface* button = QAccessible::queryAccessibleInterface(object);
            QVERIFY(button && button->isValid() && button->state().invisible);
            QCOMPARE(button->role(), QAccessible::Button);
            QCOMPARE(button->parent(), QAccessible::queryAccessibleInterface(host.view));
            host.Run(QStringLiteral("hover:r2"));
            QCOMPARE(recorder.Take(object), QStringList({"ObjectShow CloseButton", "NameChanged CloseButton", "LocationChanged CloseButton"}));
            QCOMPARE(button->text(QAccessible::Name), "Close r2 " + QString(40, 'W'));
            QCOMPARE(button->rect(), QRect(host.view->viewport()->mapToGlobal(host.Button().topLeft()), QSize(14, 14)));
            QVERIFY(!button->state().invisible);
            host.Run(QStringLiteral("hover:r3"));
            QCOMPARE(recorder.Take(object), QStringList({"NameChanged CloseButton", "LocationChanged CloseButton"}));
            host.model.setData(host.Index("r3"), "r3 renamed");
            host.model.setData(host.Index("r4"), "r4 renamed");
            QCOMPARE(recorder.Take(object), QStringList{"NameChanged CloseButton"});
            QCOMPARE(button->text(QAccessible::Name), QStringLiteral("Close r3 renamed"));
            button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
            QCOMPARE(host.requests, QStringList{"r3/0"});
            TestSupport::PointerTo(host.view->viewport(), QPoint(5, host.view->viewport()->height() - 2));
            QCOMPARE(recorder.Take(object), QStringList{"ObjectHide CloseButton"});
            QVERIFY(button->state().invisible && button->rect().isNull());
            const LogCapture::Mark mark;
            button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
            QCOMPARE(host.requests.size(), 1);
            QCOMPARE(mark.Texts(), QStringList{"3 ClosableView: the close button was pressed while no row shows it; nothing is closed"});
        }
    }
};

QTEST_MAIN(TestClosableViews)
#include "tst_closable_views.moc"
