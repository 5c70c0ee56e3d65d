#include <qt_halvo/views/closable_list_view.h>
#include <qt_halvo/views/closable_tree_view.h>

#include "accessibility_recorder.h"
#include "test_support.h"

#include <QtGui/QStandardItemModel>

using OrvantaQT::ClosableListView;
using OrvantaQT::ClosableTreeView;

namespace {

// Fusion with a 14-pixel close button filled by its state and hovered rows yellow.
class MarkStyle : public QProxyStyle
{
public:
    MarkStyle() : QProxyStyle(QStringLiteral("Fusion")) {}
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        const State state = option->state;
        if (element == PE_IndicatorTabClose)
            painter->fillRect(option->rect, state & State_Sunken ? Qt::blue : state & State_MouseOver ? Qt::green : Qt::red);
        else if (element == PE_PanelItemViewItem && (state & State_MouseOver))
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

QString Name(const QModelIndex& index)
{
    return index.isValid() ? index.data().toString() + QLatin1Char('/') + QString::number(index.column()) : QString();
}

QString Tone(const QColor& colour)
{
    static const QHash<QString, QString> tones{{"#ff0000", "red"}, {"#00ff00", "lime"}, {"#0000ff", "blue"},
                                               {"#ffff00", "yellow"}, {"#ffffff", "white"}};
    return tones.value(colour.name(), QStringLiteral("other"));
}

// Rows r0..r7 of three columns in a list, or in a tree where r1 has a child k1; in a window
// of their own, r1 current, not focused, hovered rows tracked as styles that show them do.
struct Host
{
    explicit Host(bool tree, bool rtl = false)
        : view(tree ? Listen<ClosableTreeView>() : Listen<ClosableListView>())
    {
        for (int row = 0; row < 8; ++row) {
            const QString number = QString::number(row);
            model.appendRow({new QStandardItem("r" + number), new QStandardItem("b" + number), new QStandardItem("c" + number)});
        }
        model.item(1)->appendRow(new QStandardItem(QStringLiteral("k1")));
        view->setStyle(&style);
        view->setFont(TestSupport::TestFont());
        view->setLayoutDirection(rtl ? Qt::RightToLeft : Qt::LeftToRight);
        view->viewport()->setAttribute(Qt::WA_Hover);
        view->setFocusPolicy(Qt::NoFocus);
        view->setModel(&model);
        if (auto* treeView = qobject_cast<QTreeView*>(view))
            treeView->expandAll();
        view->setCurrentIndex(Index(QStringLiteral("r1")));
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
    QRect Button() const
    {
        auto* list = qobject_cast<ClosableListView*>(view);
        return list ? list->CloseButtonRect() : static_cast<ClosableTreeView*>(view.data())->CloseButtonRect();
    }
    QString Shown() const
    {
        auto* list = qobject_cast<ClosableListView*>(view);
        return Name(list ? list->CloseButtonIndex() : static_cast<ClosableTreeView*>(view.data())->CloseButtonIndex());
    }
    QModelIndex Index(const QString& text) const
    {
        for (int column = 0; column < 3; ++column) {
            if (const auto found = model.findItems(text, Qt::MatchRecursive, column); !found.isEmpty())
                return found[0]->index();
        }
        return QModelIndex();
    }
    QPoint At(const QString& place)
    {
        if (place != QLatin1String("here"))
            here = place == QLatin1String("button") ? Button().center() : view->visualRect(Index(place)).center();
        return here;
    }
    // Steps "verb:what" apart by spaces: (m|r)click, (m)press, (m)release at a row, the
    // button or here (where the last step was); hover, drag (the left button held) to a row; key; remove a row; clear, reset,
    // replace or null the model; focus the view; closing:removes|deletes (the slot does).
    void Run(const QString& script)
    {
        using Mouse = QPair<int, Qt::MouseButton>;
        static const QHash<QString, Mouse> mouse{
            {"click", {0, Qt::LeftButton}},    {"press", {1, Qt::LeftButton}},    {"release", {2, Qt::LeftButton}},
            {"mclick", {0, Qt::MiddleButton}}, {"mpress", {1, Qt::MiddleButton}}, {"mrelease", {2, Qt::MiddleButton}},
            {"rclick", {0, Qt::RightButton}}};
        QWidget* port = view->viewport();
        for (const QString& step : script.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            const QString verb = step.section(QLatin1Char(':'), 0, 0), what = step.section(QLatin1Char(':'), 1);
            const Mouse press = mouse.value(verb, {-1, Qt::NoButton});
            if (press.first == 0)
                QTest::mouseClick(port, press.second, {}, At(what));
            if (press.first == 1)
                QTest::mousePress(port, press.second, {}, At(what));
            if (press.first == 2)
                QTest::mouseRelease(port, press.second, {}, At(what));
            if (verb == QLatin1String("hover"))
                TestSupport::PointerTo(port, At(what));
            if (verb == QLatin1String("drag")) {
                QMouseEvent move(QEvent::MouseMove, At(what), Qt::NoButton, Qt::LeftButton, {});
                QCoreApplication::sendEvent(port, &move);
            }
            if (verb == QLatin1String("key")) {
                const int key = QKeySequence(what)[0];
                QTest::keyClick(view, Qt::Key(key & ~Qt::KeyboardModifierMask), Qt::KeyboardModifiers(key & Qt::KeyboardModifierMask));
            }
            if (verb == QLatin1String("remove"))
                model.removeRow(Index(what).row(), Index(what).parent());
            if (verb == QLatin1String("clear"))
                model.removeRows(0, model.rowCount());
            if (verb == QLatin1String("reset")) {
                model.clear();
                for (int row = 0; row < 12; ++row)
                    model.appendRow(new QStandardItem(QStringLiteral("n")));
            }
            if (verb == QLatin1String("replace") || verb == QLatin1String("null"))
                view->setModel(verb == QLatin1String("null") ? nullptr : new QStringListModel({"other"}, view));
            if (verb == QLatin1String("focus")) {
                view->setFocusPolicy(Qt::StrongFocus);
                view->activateWindow();
                view->setFocus();
                QTRY_VERIFY(view->hasFocus());
            }
            if (verb == QLatin1String("closing") && what == QLatin1String("removes"))
                onClose = [this](const QModelIndex& index) { model.removeRow(index.row(), index.parent()); };
            if (verb == QLatin1String("closing") && what == QLatin1String("deletes"))
                onClose = [this](const QModelIndex&) { delete view; };
        }
    }
    // "requests|button's row|selected row|colours of the button and of its row"
    QString Observed()
    {
        if (!view)
            return QStringLiteral("gone");
        const QString shown = Shown(); // at once
        QCoreApplication::processEvents();
        const QImage image = TestSupport::Render(view->viewport());
        const QString colours = shown.isEmpty() ? QStringLiteral("-")
            : Tone(image.pixelColor(Button().center())) + ' ' + Tone(image.pixelColor(150, Button().center().y()));
        return QStringList{requests.join(','), shown, view->selectionModel()->selectedIndexes().value(0).siblingAtColumn(0).data().toString(), colours}.join('|');
    }

    MarkStyle style;
    QStandardItemModel model;
    QPointer<QAbstractItemView> view;
    QStringList requests;
    QPoint here;
    std::function<void(const QModelIndex&)> onClose;
};

// Runs a test function again in a child process that sees an accessibility bus: Qt tells of
// accessibility updates only while there is one. A private message bus, published on the X
// server where Qt looks for one, stands in for it. Empty when the child passed.
QString InChildWithAccessibilityBus(const char* function)
{
    QProcess bus;
    bus.setStandardErrorFile(QProcess::nullDevice());
    bus.start(QStringLiteral("dbus-daemon"), {"--session", "--nofork", "--print-address=1"});
    if (!bus.waitForReadyRead(10000))
        return QStringLiteral("no dbus-daemon");
    const QString address = QString::fromLocal8Bit(bus.readLine()).trimmed();
    QProcess::execute(QStringLiteral("xprop"), {"-root", "-f", "AT_SPI_BUS", "8s", "-set", "AT_SPI_BUS", address});
    const QString failure = TestSupport::RunTestFunctionInChild(
        function, {"DBUS_SESSION_BUS_ADDRESS=" + address, "QT_HALVO_TEST_ACCESSIBILITY_BUS=1"});
    QProcess::execute(QStringLiteral("xprop"), {"-root", "-remove", "AT_SPI_BUS"});
    bus.terminate();
    bus.waitForFinished();
    return failure;
}

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
            // Which row shows the button, and the button's state.
            Row(tree, "hovered") << "hover:r4" << "|r4/0|r1|red yellow";
            Row(tree, "current, focused") << "focus" << "|r1/0|r1|red other";
            Row(tree, "hovered, focused") << "focus hover:r5" << "|r5/0|r1|red yellow";
            Row(tree, "pointer on the button") << "hover:r3 hover:button" << "|r3/0|r1|lime yellow";
            Row(tree, "pressed on the button") << "hover:r3 press:button" << "|r3/0|r1|blue yellow";
            // Clicks and keys.
            Row(tree, "button click") << "hover:r3 click:button" << "r3/0|r3/0|r1|lime yellow";
            Row(tree, "button double click") << "hover:r3 click:button click:button" << "r3/0,r3/0|r3/0|r1|lime yellow";
            Row(tree, "row click") << "hover:r3 click:r3" << "|r3/0|r3|red yellow";
            Row(tree, "middle click") << "hover:r3 mclick:r3" << "r3/0|r3/0|r1|red yellow";
            Row(tree, "middle click, released on another row") << "mpress:r3 mrelease:r4" << "|r4/0|r1|red yellow";
            Row(tree, "right click on the button") << "hover:r3 rclick:button" << "|r3/0|r3|lime yellow";
            Row(tree, "dragged from the button") << "hover:r3 press:button drag:r6 release:r6" << "|r6/0|r1|red yellow";
            Row(tree, "Delete") << "key:Del" << "r1/0||r1|-";
            Row(tree, "keypad Delete") << "key:Num+Del" << "r1/0||r1|-";
            Row(tree, "Shift+Delete") << "key:Shift+Del" << "||r1|-";
            // Rows going: the row now under the pointer shows hovered with its button.
            Row(tree, "row removed by the slot") << "closing:removes hover:r4 click:button" << "r4/0|r5/0|r1|lime yellow";
            Row(tree, "hovered row removed") << "hover:r4 remove:r4" << "|r5/0|r1|red yellow";
            Row(tree, "row above removed") << "hover:r4 remove:r2" << "|r5/0|r1|red yellow";
            Row(tree, "row below removed") << "hover:r4 remove:r5" << "|r4/0|r1|red yellow";
            Row(tree, "last row removed, hovered") << "hover:r7 remove:r7" << "||r1|-";
            Row(tree, "all rows removed") << "hover:r4 clear" << "|||-";
            // Between press and release: nothing closed, no stale button.
            Row(tree, "model reset") << "hover:r3 press:button reset release:here" << "|n/0||lime yellow";
            Row(tree, "pressed row removed") << "hover:r3 press:button remove:r3 release:here" << "|r4/0|r1|lime yellow";
            Row(tree, "model replaced") << "hover:r3 press:button replace release:here" << "|||-";
            Row(tree, "model taken away") << "hover:r3 press:button null release:here" << "|||-";
            // The slot deletes the view.
            Row(tree, "view deleted on a click") << "closing:deletes hover:r3 click:button" << "gone";
            Row(tree, "view deleted on a middle click") << "closing:deletes mclick:r3" << "gone";
            Row(tree, "view deleted on Delete") << "closing:deletes key:Del" << "gone";
        }
        Row(true, "child row's button") << "hover:k1 click:button" << "k1/0|k1/0|r1|lime white";
        Row(true, "middle click on the last column") << "mclick:c4" << "r4/0|r4/0|r1|red yellow";
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
    }

    void placement_data()
    {
        QTest::addColumn<bool>("tree");
        QTest::addColumn<bool>("rtl");
        QTest::addColumn<bool>("select");
        QTest::addColumn<int>("scroll");
        for (const bool tree : {false, true}) {
            for (const bool rtl : {false, true}) {
                Row(tree, rtl ? "right to left" : "left to right") << rtl << false << 0;
                Row(tree, rtl ? "selected, right to left" : "selected") << rtl << true << 0;
            }
        }
        Row(true, "scrolled by a row") << false << false << 1;
    }
    // At the row's trailing end, centred, the style's size; no text shows in the margin
    // before it, which has the row's background: plain, alternate (a tree alternates by the
    // rows shown) or selected.
    void placement()
    {
        QFETCH(bool, tree);
        QFETCH(bool, rtl);
        QFETCH(bool, select);
        QFETCH(int, scroll);
        Host host(tree, rtl);
        for (int i = 0; i < 8; ++i)
            host.model.item(i, tree ? 2 : 0)->setText(QStringLiteral("W").repeated(60));
        host.view->setAlternatingRowColors(true);
        host.view->resize(300, 120);
        QVERIFY(TestSupport::ShowAndWait(host.view));
        host.view->verticalScrollBar()->setValue(scroll);
        const QModelIndex index = host.model.index(3, 0);
        if (select)
            host.view->selectionModel()->select(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        const QRect row = host.view->visualRect(index);
        TestSupport::PointerTo(host.view->viewport(), QPoint(150, row.center().y()));
        const QRect button = host.Button();
        QCOMPARE(button.size(), QSize(14, 14));
        QVERIFY(qAbs((button.top() - row.top()) - (row.bottom() - button.bottom())) <= 1);
        QCOMPARE(rtl ? button.left() : button.right(), rtl ? 3 : host.view->viewport()->width() - 4);
        const int edge = rtl ? button.right() : button.left(), y = button.center().y(), toText = rtl ? 1 : -1;
        const QImage image = TestSupport::Render(host.view->viewport());
        const QColor background = image.pixelColor(edge + toText * 120, row.top() + 1);
        int inked = 0;
        for (int x = 4; x <= 120; ++x)
            inked += image.pixelColor(edge + toText * x, y) != background;
        QVERIFY2(inked > 0, "no text in the row before the button");
        for (int x = 1; x <= 3; ++x)
            QCOMPARE(image.pixelColor(edge + toText * x, y).name(), background.name());
        QCOMPARE(Tone(image.pixelColor(button.center())), QStringLiteral("red"));
    }

    void repaintsTheRowsItMovesBetween_data()
    {
        QTest::addColumn<bool>("tree");
        Row(false, "");
        Row(true, "");
    }
    void repaintsTheRowsItMovesBetween()
    {
        QFETCH(bool, tree);
        Host host(tree);
        QVERIFY(TestSupport::ShowAndWait(host.view));
        host.Run(QStringLiteral("hover:r2"));
        struct : QObject
        {
            QRegion painted;
            bool eventFilter(QObject*, QEvent* event) override
            {
                painted += event->type() == QEvent::Paint ? static_cast<QPaintEvent*>(event)->region() : QRegion();
                return false;
            }
        } paints;
        QVERIFY(TestSupport::Repaints(host.view->viewport(), [&] {
            host.view->viewport()->installEventFilter(&paints);
            host.Run(QStringLiteral("hover:r6"));
        }));
        const int width = host.view->viewport()->width();
        const QRect from = host.view->visualRect(host.Index("r2")), to = host.view->visualRect(host.Index("r6"));
        QCOMPARE(paints.painted, QRegion(0, from.top(), width, from.height()) + QRegion(0, to.top(), width, to.height()));
    }

    // A pressable object of its own under the view, named after its row, where it is drawn;
    // screen readers hear when it appears, moves and goes.
    void accessibility()
    {
        if (!qEnvironmentVariableIsSet("QT_HALVO_TEST_ACCESSIBILITY_BUS")) {
            const QString failure = InChildWithAccessibilityBus("accessibility");
            QVERIFY2(failure.isEmpty(), qPrintable(failure));
            return;
        }
        for (const bool tree : {false, true}) {
            Host host(tree);
            QVERIFY(TestSupport::ShowAndWait(host.view));
            QTRY_VERIFY(QAccessible::isActive());
            TestSupport::AccessibilityRecorder recorder;
            QObject* object = host.view->findChild<QObject*>(QStringLiteral("CloseButton"));
            QAccessibleInterface* button = QAccessible::queryAccessibleInterface(object);
            QVERIFY(button && button->isValid());
            QCOMPARE(button->role(), QAccessible::Button);
            QCOMPARE(button->parent(), QAccessible::queryAccessibleInterface(host.view));
            QVERIFY(button->state().invisible);
            host.Run(QStringLiteral("hover:r2"));
            QCOMPARE(recorder.Take(object), QStringList({"ObjectShow CloseButton", "NameChanged CloseButton", "LocationChanged CloseButton"}));
            QCOMPARE(button->text(QAccessible::Name), QStringLiteral("Close r2"));
            QCOMPARE(button->rect(), QRect(host.view->viewport()->mapToGlobal(host.Button().topLeft()), QSize(14, 14)));
            QVERIFY(!button->state().invisible);
            host.Run(QStringLiteral("hover:r3"));
            QCOMPARE(recorder.Take(object), QStringList({"NameChanged CloseButton", "LocationChanged CloseButton"}));
            QCOMPARE(button->text(QAccessible::Name), QStringLiteral("Close r3"));
            button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
            QCOMPARE(host.requests, QStringList{"r3/0"});
            TestSupport::PointerTo(host.view->viewport(), QPoint(5, host.view->viewport()->height() - 2));
            QCOMPARE(recorder.Take(object), QStringList{"ObjectHide CloseButton"});
            QVERIFY(button->state().invisible);
            QCOMPARE(button->rect(), QRect());
            const LogCapture::Mark mark;
            button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
            QCOMPARE(host.requests.size(), 1);
            QCOMPARE(mark.Texts(), QStringList{"3 ClosableView: the close button was pressed while no row shows it; nothing is closed"});
        }
    }
};

QTEST_MAIN(TestClosableViews)
#include "tst_closable_views.moc"
