#include <qt_halvo/views/widget_item_delegate.h>

#include "test_support.h"

#include <QtTest/qtestspontaneevent.h>

#include <functional>
#include <memory>

using OrvantaQT::WidgetItemDelegate;

namespace {

constexpr int kRow = 30;

// A check box, a label with the row's text and a button at the right end of every row.
class RowDelegate : public WidgetItemDelegate
{
public:
    using WidgetItemDelegate::WidgetItemDelegate;
    std::function<QList<QWidget*>()> make; // instead of the three widgets
    mutable int created = 0;
    mutable QStringList filled; // "row before" or "row in paint": filled before the view paints a row or from paint()
    mutable bool painting = false;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painting = true;
        WidgetItemDelegate::paint(painter, option, index);
        painting = false;
    }
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return {200, kRow}; }

protected:
    QList<QWidget*> CreateItemWidgets(const QModelIndex&) const override
    {
        ++created;
        if (make)
            return make();
        QList<QWidget*> widgets{new QCheckBox, new QLabel, new QPushButton};
        for (int i = 0; i < 3; ++i)
            widgets[i]->setObjectName(QString::fromLatin1("check label button").split(' ')[i]);
        widgets[0]->setGeometry(4, 5, 20, 20); // once: the delegate keeps it there in every row
        return widgets;
    }
    void UpdateItemWidgets(const QList<QWidget*>& widgets, const QStyleOptionViewItem& option,
                           const QPersistentModelIndex& index) const override
    {
        if (widgets.size() != 3)
            return;
        filled << QStringLiteral("%1 %2").arg(index.row()).arg(painting ? "in paint" : "before");
        static_cast<QLabel*>(widgets[1])->setText(index.data().toString());
        widgets[1]->setGeometry(30, 5, 100, 20);
        widgets[2]->setGeometry(option.rect.width() - 64, 2, 60, 26);
    }
};

void Settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// A list, table or tree of "row N" texts, ten rows high, over a line edit; the delegate
// outlives the view.
struct Host
{
    std::unique_ptr<RowDelegate> delegate;
    QStringListModel model;
    QWidget window;
    QAbstractItemView* view;
    QLineEdit* after;
    explicit Host(int rows = 50, const QString& kind = QStringLiteral("list"))
    {
        QStringList texts;
        for (int i = 0; i < rows; ++i)
            texts << QStringLiteral("row %1").arg(i);
        model.setStringList(texts);
        view = kind == QLatin1String("tree") ? new QTreeView
             : kind == QLatin1String("table") ? static_cast<QAbstractItemView*>(new QTableView) : new QListView;
        if (auto* tree = qobject_cast<QTreeView*>(view)) {
            tree->setHeaderHidden(true);
            tree->setRootIsDecorated(false);
            tree->setUniformRowHeights(true);
        } else if (auto* table = qobject_cast<QTableView*>(view)) {
            table->horizontalHeader()->hide();
            table->horizontalHeader()->setStretchLastSection(true);
            table->verticalHeader()->hide();
            table->verticalHeader()->setDefaultSectionSize(kRow);
        } else {
            static_cast<QListView*>(view)->setUniformItemSizes(true);
        }
        view->setModel(&model);
        view->setFrameShape(QFrame::NoFrame);
        view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view->setTabKeyNavigation(false);
        view->setFixedSize(300, 10 * kRow);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(view);
        layout->addWidget(after = new QLineEdit);
        after->setObjectName(QStringLiteral("after"));
        delegate.reset(new RowDelegate(view));
    }
    bool Show()
    {
        const bool shown = TestSupport::ShowAndWait(&window);
        QApplication::setActiveWindow(&window);
        Settle();
        return shown;
    }
    QModelIndex At(int row) { return model.index(row); }
    void Hide(int row)
    {
        if (auto* list = qobject_cast<QListView*>(view))
            list->setRowHidden(row, true);
        else if (auto* table = qobject_cast<QTableView*>(view))
            table->setRowHidden(row, true);
        else
            static_cast<QTreeView*>(view)->setRowHidden(row, QModelIndex(), true);
    }
};

QVector<QModelIndex> VisibleRows(Host& h)
{
    QVector<QModelIndex> rows;
    const QRect area = h.view->viewport()->rect();
    for (int row = qMax(0, h.view->indexAt(QPoint(1, 0)).row() - 1); row < h.model.rowCount(); ++row) {
        const QRect rect = h.view->visualRect(h.At(row));
        if (rect.intersects(area))
            rows << h.At(row);
        else if (rect.isValid() && rect.top() >= area.bottom())
            break;
    }
    return rows;
}

// "text @x,y" of every label a row should show (or "@x,y" of every button), and of those shown.
QStringList Expected(Host& h, bool labels)
{
    QStringList places;
    for (const QModelIndex& index : VisibleRows(h)) {
        const QRect rect = h.view->visualRect(index);
        places << (labels ? QStringLiteral("%1 @%2,%3").arg(index.data().toString()).arg(rect.x() + 30).arg(rect.y() + 5)
                          : QStringLiteral("@%1,%2").arg(rect.right() + 1 - 64).arg(rect.y() + 2));
    }
    places.sort();
    return places;
}

QStringList Shown(Host& h, bool labels)
{
    QStringList places;
    for (QWidget* widget : h.view->viewport()->findChildren<QWidget*>(labels ? "label" : "button")) {
        if (widget->isVisibleTo(h.view->viewport()))
            places << QStringLiteral("%1@%2,%3").arg(labels ? static_cast<QLabel*>(widget)->text() + ' ' : QString())
                          .arg(widget->x()).arg(widget->y());
    }
    places.sort();
    return places;
}

// The shown widget of that name over the row.
QWidget* Find(Host& h, const QString& name, int row)
{
    for (QWidget* widget : h.view->viewport()->findChildren<QWidget*>(name)) {
        if (widget->isVisible() && widget->geometry().intersects(h.view->visualRect(h.At(row))))
            return widget;
    }
    return nullptr;
}

// Where the focus is: "row:widget" inside a row, "view:current row" or the widget's name.
QString Focus(Host& h)
{
    QWidget* focus = QApplication::focusWidget();
    if (focus == h.view)
        return QStringLiteral("view:%1").arg(h.view->currentIndex().row());
    const QPersistentModelIndex row = h.delegate->FocusedIndex();
    const QString column = row.column() > 0 ? QStringLiteral(".%1").arg(row.column()) : QString();
    return row.isValid() ? QStringLiteral("%1%2:%3").arg(row.row()).arg(column, focus->objectName())
                         : focus ? focus->objectName() : QStringLiteral("none");
}

using Action = std::function<void(Host&)>;
using Check = std::function<QString(Host&)>;

} // namespace

Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(Check)

class TestWidgetItemDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void liveSetsStayFew_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<double>("to"); // of the way down
        for (const int height : {10 * kRow, 4 * kRow + 7}) {
            for (const double to : {0.0, 0.5, 1.0})
                QTest::addRow("%d high, to %.1f", height, to) << height << to;
        }
    }
    // 100,000 rows: sets for the rows in sight and a few more, whatever was scrolled past,
    // each showing its own row.
    void liveSetsStayFew()
    {
        QFETCH(int, height);
        QFETCH(double, to);
        Host h(100000);
        h.view->setFixedHeight(height);
        QVERIFY(h.Show());
        const int end = h.view->verticalScrollBar()->maximum();
        for (int step = 0; step <= 10; ++step) {
            h.view->verticalScrollBar()->setValue(int(end * to * step / 10) + step * 7);
            Settle();
            const int visible = VisibleRows(h).size();
            QVERIFY(visible >= height / kRow);
            QVERIFY(h.delegate->LiveWidgetSetCount() <= visible + 4);
            QCOMPARE(h.view->viewport()->children().size(), 3 * h.delegate->LiveWidgetSetCount());
            QCOMPARE(Shown(h, true), Expected(h, true));
        }
        QVERIFY(h.delegate->created <= VisibleRows(h).size() + 4);
    }

    void placedOverRows_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<Action>("change");
        const QVector<QPair<const char*, Action>> changes{
            {"scrolled", [](Host& h) { h.view->verticalScrollBar()->setValue(95); }},
            {"scrolled to the end", [](Host& h) { h.view->verticalScrollBar()->setValue(1 << 20); }},
            {"narrower", [](Host& h) { h.view->setFixedWidth(210); }},
            {"shorter", [](Host& h) { h.view->setFixedHeight(3 * kRow); }},
            {"rows inserted above", [](Host& h) { h.model.insertRows(1, 2); h.model.setData(h.At(1), "new"); }},
            {"rows removed above", [](Host& h) { h.model.removeRows(0, 3); }},
            {"rows moved", [](Host& h) { h.model.moveRows(QModelIndex(), 0, 2, QModelIndex(), 9); }},
            {"sorted", [](Host& h) { h.model.sort(0, Qt::DescendingOrder); }},
            {"data changed", [](Host& h) { h.model.setData(h.At(2), "edited"); }},
            {"model reset", [](Host& h) { h.model.setStringList({"a", "b", "c"}); }},
            {"row hidden", [](Host& h) { h.Hide(1); }},
        };
        for (const char* kind : {"list", "table", "tree"}) {
            for (const auto& change : changes)
                QTest::addRow("%s, %s", kind, change.first) << QString::fromLatin1(kind) << change.second;
        }
    }
    // The widgets of every row in sight over it, with its data, and none elsewhere.
    void placedOverRows()
    {
        QFETCH(QString, kind);
        QFETCH(Action, change);
        Host h(50, kind);
        QVERIFY(h.Show());
        QCOMPARE(Shown(h, true), Expected(h, true));
        change(h);
        Settle();
        QVERIFY(h.delegate->LiveWidgetSetCount() <= VisibleRows(h).size() + 4);
        QCOMPARE(Shown(h, true), Expected(h, true));
        QCOMPARE(Shown(h, false), Expected(h, false));
    }

    void firstFrame_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("by"); // pixels scrolled, from the top or (negative) back up from the end
        for (const char* kind : {"list", "table", "tree"}) {
            for (const int by : {kRow, kRow + 15, 3 * kRow, -kRow})
                QTest::addRow("%s, %d", kind, by) << QString::fromLatin1(kind) << by;
        }
    }
    // The first frame after a scroll shows the rows that came in with their widgets, filled
    // before the view paints: the button of the new edge row as that of its neighbour.
    void firstFrame()
    {
        QFETCH(QString, kind);
        QFETCH(int, by);
        Host h(50, kind);
        QScrollBar* bar = h.view->verticalScrollBar();
        QVERIFY(h.Show());
        bar->setValue(by < 0 ? bar->maximum() : 0);
        Settle();
        h.delegate->filled.clear();
        bar->setValue(by < 0 ? bar->maximum() + by : by);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest); // one frame out
        const QPoint at = h.view->viewport()->mapTo(&h.window, QPoint());
        const QImage picture = h.window.windowHandle()->screen()->grabWindow(h.window.winId(), at.x(), at.y(),
            h.view->viewport()->width(), h.view->viewport()->height()).toImage();
        QCOMPARE(Shown(h, true), Expected(h, true));
        const QVector<QModelIndex> rows = VisibleRows(h);
        const QModelIndex came = by < 0 ? rows.first() : rows.last();
        const QRect edge = h.view->visualRect(came);
        QVERIFY(h.delegate->filled.contains(QStringLiteral("%1 before").arg(came.row())));
        QCOMPARE(h.delegate->filled.filter("in paint"), QStringList());
        const QRect button = QRect(edge.right() - 63, edge.top() + 2, 60, 26) & h.view->viewport()->rect();
        const int neighbour = by < 0 ? kRow : -kRow;
        QCOMPARE(picture.copy(button), picture.copy(button.translated(0, neighbour)));
        QVERIFY(picture.copy(button) != picture.copy(button.translated(-100, 0))); // not the bare row
    }

    void tabOrder_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("current"); // when the view gets the focus and the first Tab
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("path");
        QTest::newRow("table of two columns") << "wide" << 0 << "Tab Tab Tab Tab Tab Backtab Backtab"
                                              << "0:check 0:button 0.1:check 0.1:button 1:check 0.1:button 0.1:check";
        QTest::newRow("table of two columns, back in") << "wide" << 0 << "after End Backtab" << "after after 49.1:button";
        for (const char* kind : {"list", "table", "tree"}) {
            QTest::addRow("%s, through a row and back", kind)
                << kind << 0 << "Tab Tab Tab Backtab Backtab Backtab"
                << "0:check 0:button 1:check 0:button 0:check view:0";
            QTest::addRow("%s, below the page", kind)
                << kind << 8 << "Tab Tab Tab Tab Tab Tab Tab Backtab"
                << "8:check 8:button 9:check 9:button 10:check 10:button 11:check 10:button";
            QTest::addRow("%s, off the end", kind) << kind << 49 << "Tab Tab Tab" << "49:check 49:button after";
            QTest::addRow("%s, back in", kind) << kind << 3 << "after Backtab Backtab" << "after 3:button 3:check";
            QTest::addRow("%s, past forty hidden rows", kind) << kind << 0 << "Hide Tab Tab Tab" << "view:0 0:check 0:button 41:check";
            QTest::addRow("%s, fewer rows in sight", kind) << kind << 0 << "after Shrink" << "after after";
            QTest::addRow("%s, back in past a view without focus", kind) << kind << 5 << "after NoFocus Backtab" << "after after 5:button";
            QTest::addRow("%s, back in, current out of sight", kind) << kind << 0 << "after End Backtab" << "after after 49:button";
        }
    }
    // Tab goes from widget to widget, row after row, into view; the current index follows.
    // Backtab from the line edit after the view ("after") comes back to the current row, or
    // to the bottom one when it is scrolled away ("End"), also when the view takes no focus.
    // The other words: rows 1 to 40 hidden, the view made two rows high.
    void tabOrder()
    {
        QFETCH(QString, kind);
        QFETCH(int, current);
        QFETCH(QString, keys);
        QFETCH(QString, path);
        Host h(50, kind == QLatin1String("wide") ? QStringLiteral("table") : kind);
        if (kind == QLatin1String("wide"))
            h.view->setModel(new QStandardItemModel(50, 2, h.view));
        QVERIFY(h.Show());
        h.view->setCurrentIndex(h.view->model()->index(current, 0));
        h.view->setFocus();
        Settle();
        QStringList went;
        for (const QString& key : keys.split(' ')) {
            const QHash<QString, Action> actions{
                {"after", [](Host& h) { h.after->setFocus(Qt::OtherFocusReason); }},
                {"NoFocus", [](Host& h) { h.view->setFocusPolicy(Qt::NoFocus); }},
                {"End", [](Host& h) { h.view->verticalScrollBar()->setValue(h.view->verticalScrollBar()->maximum()); }},
                {"Shrink", [](Host& h) { h.view->setFixedHeight(2 * kRow); }},
                {"Hide", [](Host& h) { for (int row = 1; row <= 40; ++row) h.Hide(row); }},
            };
            if (actions.contains(key))
                actions.value(key)(h);
            else
                QTest::keyClick(QApplication::focusWidget(), key == QLatin1String("Tab") ? Qt::Key_Tab : Qt::Key_Backtab);
            Settle();
            went << Focus(h);
            if (h.delegate->FocusedIndex().isValid()) {
                QCOMPARE(h.view->currentIndex(), QModelIndex(h.delegate->FocusedIndex()));
                QVERIFY(h.view->viewport()->rect().contains(QApplication::focusWidget()->geometry()));
            }
        }
        QCOMPARE(went.join(' '), path);
    }

    void blockedEvents_data()
    {
        QTest::addColumn<QString>("setUp"); // widget of row 3, types blocked ("default", "none" or one), input
        QTest::addColumn<QString>("expected"); // current row, selection, what the widget did
        QTest::newRow("button, default") << "button|default|click" << "0 [] clicked";
        QTest::newRow("button, none") << "button|none|click" << "3 [3] view clicked, clicked";
        QTest::newRow("check, default") << "check|default|click" << "0 [] toggled";
        QTest::newRow("check, none") << "check|none|click" << "3 [3] view clicked, toggled";
        QTest::newRow("label, default") << "label|default|click" << "0 [] ";
        QTest::newRow("label, none") << "label|none|click" << "3 [3] view clicked";
        QTest::newRow("label double click, default") << "label|default|double" << "0 [] ";
        QTest::newRow("label drag, default") << "label|default|drag" << "0 [] ";
        QTest::newRow("label drag, presses blocked") << "label|MouseButtonPress|drag" << "0 [] ";
        QTest::newRow("label drag, none") << "label|none|drag" << "3 [3] view clicked";
        QTest::newRow("label wheel, default") << "label|default|wheel" << "0 [] scrolled";
        QTest::newRow("label wheel, blocked") << "label|Wheel|wheel" << "0 [] ";
        QTest::newRow("label, after a click reached the view") << "label|default|first, click" << "0 [] ";
        QTest::newRow("label, presses blocked, after a click") << "label|MouseButtonPress|first, click" << "0 [] ";
        QTest::newRow("Page Down on a button") << "button|default|PageDown" << "12 [12] ";
        QTest::newRow("Page Down on a button, blocked") << "button|KeyPress|PageDown" << "3 [] ";
    }
    // Events of the blocked types stay with the widget; the others reach the view too, once.
    void blockedEvents()
    {
        QFETCH(QString, setUp);
        QFETCH(QString, expected);
        const QString widget = setUp.section('|', 0, 0), blocked = setUp.section('|', 1, 1), input = setUp.section('|', 2);
        Host h;
        QVERIFY(h.Show());
        QWidget* target = Find(h, widget, 3);
        QVERIFY(target);
        if (input.startsWith(QLatin1String("first"))) { // the row's check box, all events to the view too
            h.delegate->SetBlockedEventTypes(Find(h, QStringLiteral("check"), 3), {});
            QTest::mouseClick(Find(h, QStringLiteral("check"), 3), Qt::LeftButton, {}, QPoint(3, 3));
            QCOMPARE(h.view->currentIndex().row(), 3);
        }
        QCOMPARE(h.delegate->BlockedEventTypes(target),
                 QList<QEvent::Type>({QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick}));
        if (blocked != QLatin1String("default")) {
            const int type = QEvent::staticMetaObject.enumerator(QEvent::staticMetaObject.indexOfEnumerator("Type")).keyToValue(qPrintable(blocked));
            h.delegate->SetBlockedEventTypes(target, type < 0 ? QList<QEvent::Type>() : QList<QEvent::Type>{QEvent::Type(type)});
        }
        QStringList did; // what the widget and the view did, in order
        if (auto* button = qobject_cast<QAbstractButton*>(target))
            connect(button, &QAbstractButton::clicked, this, [&did, button] { did << (button->isCheckable() ? "toggled" : "clicked"); });
        h.view->setCurrentIndex(h.At(0));
        h.view->clearSelection();
        connect(h.view, &QAbstractItemView::clicked, this, [&did] { did << "view clicked"; });
        if (input.endsWith(QLatin1String("click"))) {
            QTest::mouseClick(target, Qt::LeftButton, {}, QPoint(3, 3));
        } else if (input == QLatin1String("double")) {
            QTest::mouseDClick(target, Qt::LeftButton, {}, QPoint(3, 3));
        } else if (input == QLatin1String("drag")) {
            QTest::mousePress(target, Qt::LeftButton, {}, QPoint(3, 3));
            QMouseEvent move(QEvent::MouseMove, QPointF(9, 9), target->mapToGlobal(QPoint(9, 9)), Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(target, &move);
            QTest::mouseRelease(target, Qt::LeftButton, {}, QPoint(9, 9));
        } else if (input == QLatin1String("wheel")) {
            QWheelEvent wheel(QPointF(3, 3), QPointF(target->mapToGlobal(QPoint(3, 3))), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QSpontaneKeyEvent::setSpontaneous(&wheel); // as the window system's: those go up to the parents
            QApplication::instance()->notify(target, &wheel);
            if (h.view->verticalScrollBar()->value() > 0)
                did << "scrolled";
        } else {
            target->setFocus(Qt::OtherFocusReason);
            QCOMPARE(h.view->currentIndex().row(), 3);
            QTest::keyClick(target, Qt::Key_PageDown);
        }
        QStringList selected;
        for (const QModelIndex& index : h.view->selectionModel()->selectedIndexes())
            selected << QString::number(index.row());
        QCOMPARE(QStringLiteral("%1 [%2] %3").arg(h.view->currentIndex().row()).arg(selected.join(',')).arg(did.join(", ")), expected);
    }

    void badInput_data()
    {
        QTest::addColumn<Check>("check");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QStringList>("logged");
        const auto placed = [](Host& h) {
            return QStringLiteral("%1 %2").arg(Shown(h, true) == Expected(h, true) ? "placed" : "misplaced").arg(Focus(h));
        };
        const auto after = [placed](const Action& change) {
            return Check([=](Host& h) {
                change(h);
                Settle();
                return placed(h);
            });
        };
        QTest::newRow("no view") << Check([](Host& h) {
            RowDelegate bare(nullptr);
            bare.SetBlockedEventTypes(nullptr, {});
            const auto paint = [&h](const QAbstractItemDelegate& delegate) {
                QImage image(100, kRow, QImage::Format_ARGB32);
                image.fill(Qt::white);
                QPainter painter(&image);
                QStyleOptionViewItem option;
                option.rect = image.rect();
                delegate.paint(&painter, option, h.At(0));
                painter.end();
                return image;
            };
            const QImage plain = paint(QStyledItemDelegate());
            return QStringLiteral("%1 %2 %3 %4 %5").arg(bare.ItemView() ? "view" : "none").arg(bare.LiveWidgetSetCount())
                .arg(bare.BlockedEventTypes(nullptr).size()).arg(paint(bare) == plain ? "as styled" : "unlike")
                .arg(paint(*h.delegate) == plain ? "with text" : "no text");
        }) << "none 0 0 as styled no text"
           << QStringList{"3 WidgetItemDelegate: no view to host the widgets of the rows in; it paints as a QStyledItemDelegate",
                          "3 WidgetItemDelegate: no widget to block events of",
                          "3 WidgetItemDelegate: no widget to tell the blocked events of"};
        const auto made = [](int rows, QList<QWidget*> (*make)()) {
            return Check([=](Host&) {
                Host other(rows);
                other.delegate->make = make;
                other.Show();
                return QStringLiteral("%1 %2").arg(other.delegate->LiveWidgetSetCount()).arg(other.view->viewport()->children().size());
            });
        };
        QTest::newRow("null widgets made") << made(50, [] { return QList<QWidget*>{nullptr, new QLabel, nullptr}; }) << "10 10"
                                           << QStringList{"3 WidgetItemDelegate: CreateItemWidgets gave a null widget; the row goes on without it"};
        QTest::newRow("no widgets made") << made(2, [] { return QList<QWidget*>(); }) << "2 0" << QStringList();
        QTest::newRow("no model") << after([](Host& h) { h.view->setModel(nullptr); }) << "placed view:-1" << QStringList();
        QTest::newRow("model replaced") << Check([](Host& h) {
            auto* other = new QStringListModel({"one", "two"}, h.view);
            h.view->setModel(other);
            h.model.setData(h.At(0), "old model");
            Settle();
            return Shown(h, true).join(',') + ' ' + Focus(h);
        }) << "one @30,5,two @30,35 view:0" << QStringList();
        QTest::newRow("focused row removed") << after([](Host& h) { h.model.removeRows(1, 3); }) << "placed view:1" << QStringList();
        QTest::newRow("focused row reset") << after([](Host& h) { h.model.setStringList({"a"}); }) << "placed view:-1" << QStringList();
        QTest::newRow("widget deleted by the host") << Check([placed](Host& h) {
            delete Find(h, QStringLiteral("label"), 2);
            Settle();
            return QStringLiteral("%1 %2").arg(placed(h)).arg(h.delegate->LiveWidgetSetCount());
        }) << "placed view:2 10"
           << QStringList{"3 WidgetItemDelegate: a widget of a row was deleted or taken by the host; the delegate owns "
                          "them, and makes the row's widgets again"};
        QTest::newRow("view deleted first") << Check([](Host& h) {
            delete h.view;
            return QStringLiteral("%1 %2 %3").arg(h.delegate->ItemView() ? "view" : "none").arg(h.delegate->LiveWidgetSetCount())
                .arg(h.delegate->FocusedIndex().isValid() ? "focused" : "no focus");
        }) << "none 0 no focus" << QStringList();
    }
    // Each one safe, the rows shown as they should be, and said once in the log when it is
    // the host's mistake. The button of row 2 has the focus before.
    void badInput()
    {
        QFETCH(Check, check);
        QFETCH(QString, expected);
        QFETCH(QStringList, logged);
        Host h;
        QVERIFY(h.Show());
        QVERIFY(Find(h, QStringLiteral("button"), 2));
        Find(h, QStringLiteral("button"), 2)->setFocus(Qt::TabFocusReason);
        QCOMPARE(Focus(h), QStringLiteral("2:button"));
        const LogCapture::Mark mark;
        QCOMPARE(check(h), expected);
        QCOMPARE(mark.Texts(), logged);
    }
};

QTEST_MAIN(TestWidgetItemDelegate)
#include "tst_widget_item_delegate.moc"
