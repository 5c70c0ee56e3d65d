#include <qt_halvo/layouts/info_overlay_widget.h>
#include <qt_halvo/views/header_view.h>
#include <qt_halvo/views/table_view.h>

#include "test_support.h"

#include <functional>

using OrvantaQT::HeaderView;
using OrvantaQT::TableView;

namespace {

// Which cells were last painted hovered.
struct Recorder : QStyledItemDelegate
{
    mutable QMap<QPair<int, int>, bool> hovered;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        hovered[{index.row(), index.column()}] = option.state & QStyle::State_MouseOver;
        QStyledItemDelegate::paint(painter, option, index);
    }
};

// A 3-column table of "row:column" cells in a window with room beside it, hovered rows red.
struct Host
{
    QWidget window;
    TableView* view = new TableView(&window);
    QPointer<QStandardItemModel> model = new QStandardItemModel(0, 3);
    Recorder* recorder = new Recorder;
    explicit Host(int rows = 20)
    {
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < 3; ++column)
                model->setItem(row, column, new QStandardItem(QStringLiteral("%1:%2").arg(row).arg(column)));
        }
        window.setGeometry(100, 100, 420, 300);
        view->setGeometry(0, 0, 380, 260);
        view->setFont(TestSupport::TestFont());
        recorder->setParent(view);
        view->setItemDelegate(recorder);
        view->setModel(model);
        view->setStyleSheet(QStringLiteral("QTableView::item:hover { background: #ff0000; }"));
    }
    ~Host() { delete model; }
    QPoint Cell(int row, int column = 1) const { return view->visualRect(model->index(row, column)).center(); }
    // The row's cells and the grid line below them, across the viewport.
    QRegion Strip(int row) const
    {
        return row < 0 ? QRegion() : QRegion(0, view->rowViewportPosition(row), view->viewport()->width(), view->rowHeight(row));
    }
    void PointAt(int row) // -1: beside the view
    {
        row < 0 ? TestSupport::PointerTo(&window, {410, 290}) : TestSupport::PointerTo(view->viewport(), Cell(row));
    }
    // The cells a full repaint paints hovered, and the red ones of the rows shown.
    QStringList Hovered()
    {
        recorder->hovered.clear();
        view->viewport()->repaint();
        const QImage image = TestSupport::Render(view->viewport());
        QStringList cells;
        for (auto it = recorder->hovered.cbegin(); it != recorder->hovered.cend(); ++it) {
            const QRect cell = view->visualRect(model ? model->index(it.key().first, it.key().second) : QModelIndex());
            const bool red = image.pixelColor(cell.right() - 3, cell.center().y()) == Qt::red;
            if (it.value() || red)
                cells << QStringLiteral("%1:%2%3").arg(it.key().first).arg(it.key().second).arg(red ? "" : " not red");
        }
        return cells;
    }
    void Help(QWidget* area, const QPoint& at)
    {
        QHelpEvent help(QEvent::ToolTip, at, area->mapToGlobal(at));
        QCoreApplication::sendEvent(area, &help);
    }
};

QStringList Row(int row)
{
    return row < 0 ? QStringList() : QStringList{QStringLiteral("%1:0").arg(row), QStringLiteral("%1:1").arg(row), QStringLiteral("%1:2").arg(row)};
}

using Action = std::function<void(Host&)>;

} // namespace

Q_DECLARE_METATYPE(Action)

class TestTableView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QCursor::setPos(0, 0);
        QToolTip::hideText();
        QTRY_VERIFY(!QToolTip::isVisible());
    }

    void hoverMarksTheWholeRow_data()
    {
        QTest::addColumn<QVector<int>>("rows"); // where the pointer goes in turn; -1 beside the view
        QTest::newRow("one row") << QVector<int>{3};
        QTest::newRow("row to row") << QVector<int>{1, 4, 0};
        QTest::newRow("out and back") << QVector<int>{2, -1, 5};
    }
    // Every cell of the row under the pointer, and no other, is painted hovered (for the
    // delegate and the style sheet); a move repaints the strips of the old and new rows.
    void hoverMarksTheWholeRow()
    {
        QFETCH(QVector<int>, rows);
        Host host;
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        TestSupport::SignalLog log(host.view, {"HoveredRowChanged(int)"});
        struct : QObject {
            QRegion painted;
            bool eventFilter(QObject*, QEvent* e) override { if (e->type() == QEvent::Paint) painted += static_cast<QPaintEvent*>(e)->region(); return false; }
        } paints;
        int before = -1;
        for (int row : rows) {
            QCoreApplication::processEvents();
            host.view->viewport()->installEventFilter(&paints);
            paints.painted = QRegion();
            host.PointAt(row);
            QCoreApplication::processEvents();
            host.view->viewport()->removeEventFilter(&paints);
            QCOMPARE(paints.painted, host.Strip(std::exchange(before, row)) + host.Strip(row));
            QCOMPARE(host.view->HoveredRow(), row);
            QCOMPARE(log.Take(), QStringList(QStringLiteral("HoveredRowChanged(%1)").arg(row)));
            QCOMPARE(host.Hovered(), Row(row));
        }
    }

    void hoverFollowsThePointer_data()
    {
        QTest::addColumn<Action>("change");
        QTest::addColumn<int>("row"); // hovered after it, the pointer still over row 2
        const int lines = QApplication::wheelScrollLines();
        QTest::newRow("wheel") << Action([](Host& h) {
            QWheelEvent wheel(h.Cell(2), h.view->viewport()->mapToGlobal(h.Cell(2)), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(h.view->viewport(), &wheel);
        }) << 2 + lines;
        QTest::newRow("row above removed") << Action([](Host& h) { h.model->removeRow(0); }) << 2;
        QTest::newRow("rows from it removed") << Action([](Host& h) { h.model->setRowCount(2); }) << -1;
        QTest::newRow("row hidden") << Action([](Host& h) { h.view->setRowHidden(2, true); }) << 3;
        QTest::newRow("reset") << Action([](Host& h) { h.model->clear(); }) << -1;
        QTest::newRow("null model") << Action([](Host& h) { h.view->setModel(nullptr); }) << -1;
        QTest::newRow("model deleted") << Action([](Host& h) { delete h.model; }) << -1;
        QTest::newRow("hidden") << Action([](Host& h) { h.view->hide(); }) << -1;
    }
    // Rows that come under a still pointer are hovered; no row stays hovered that is not.
    void hoverFollowsThePointer()
    {
        QFETCH(Action, change);
        QFETCH(int, row);
        Host host;
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        host.PointAt(2);
        change(host);
        QTRY_COMPARE(host.view->HoveredRow(), row);
        QCOMPARE(host.Hovered(), Row(row));
    }

    void cutTextTips_data()
    {
        QTest::addColumn<bool>("header"); // a title, else a cell
        QTest::addColumn<int>("width"); // -1: as wide as Qt finds the column needs
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("tip"); // the model's
        QTest::addColumn<QString>("shown");
        const QString longText = QStringLiteral("A text far too long");
        for (bool header : {false, true}) {
            const char* where = header ? "title" : "cell";
            QTest::addRow("%s fits", where) << header << 200 << "Short" << "" << "";
            QTest::addRow("%s elided", where) << header << 60 << longText << "" << longText;
            QTest::addRow("%s at the size it asks for", where) << header << -1 << longText << "" << "";
            QTest::addRow("%s model tip, elided", where) << header << 60 << longText << "Model" << "Model";
            QTest::addRow("%s model tip, fits", where) << header << 200 << "Short" << "Model" << "Model";
        }
        QTest::newRow("cell lines cut") << false << 200 << "One\nTwo\nThree" << "" << "One\nTwo\nThree";
    }
    // A cell or a title shows a tip of its whole text only when the text is cut; the
    // model's tip wins. A tip that shows hides over a cell that has none.
    void cutTextTips()
    {
        QFETCH(bool, header);
        QFETCH(int, width);
        QFETCH(QString, text);
        QFETCH(QString, tip);
        QFETCH(QString, shown);
        Host host;
        QWidget* area = header ? host.view->horizontalHeader()->viewport() : host.view->viewport();
        host.view->horizontalHeader()->setStretchLastSection(false);
        host.view->setColumnWidth(0, width);
        host.view->setColumnWidth(1, 40);
        const QVariant tipData = tip.isEmpty() ? QVariant() : tip;
        for (const auto& [column, value] : {std::make_pair(0, text), std::make_pair(1, QStringLiteral("Cut for sure"))}) {
            if (header)
                host.model->setHeaderData(column, Qt::Horizontal, value);
            else
                host.model->setData(host.model->index(0, column), value);
        }
        header ? host.model->setHeaderData(0, Qt::Horizontal, tipData, Qt::ToolTipRole)
               : host.model->setData(host.model->index(0, 0), tipData, Qt::ToolTipRole);
        if (width < 0)
            host.view->resizeColumnToContents(0);
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        const auto at = [&](int column) { return QPoint(host.Cell(0, column).x(), area->height() / 2); };
        host.Help(area, header ? at(1) : host.Cell(0, 1));
        QCOMPARE(QToolTip::text(), QStringLiteral("Cut for sure"));
        host.Help(area, header ? at(0) : host.Cell(0, 0));
        QTRY_COMPARE(QToolTip::isVisible(), !shown.isEmpty());
        if (!shown.isEmpty())
            QCOMPARE(QToolTip::text(), shown);
    }

    void emptyOverlay_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<Action>("change");
        QTest::addColumn<bool>("shown");
        const Action none = [](Host&) {};
        QTest::newRow("no rows") << 0 << none << true;
        QTest::newRow("rows") << 2 << none << false;
        QTest::newRow("rows inserted") << 0 << Action([](Host& h) { h.model->insertRow(0); }) << false;
        QTest::newRow("all removed") << 2 << Action([](Host& h) { h.model->removeRows(0, 2); }) << true;
        QTest::newRow("reset") << 2 << Action([](Host& h) { h.model->clear(); }) << true;
        QTest::newRow("layout changed") << 2 << Action([](Host& h) {
            h.model->blockSignals(true);
            h.model->setRowCount(0);
            h.model->blockSignals(false);
            Q_EMIT h.model->layoutChanged();
        }) << true;
        QTest::newRow("null model") << 2 << Action([](Host& h) { h.view->setModel(nullptr); }) << true;
        QTest::newRow("model deleted") << 2 << Action([](Host& h) { delete h.model; }) << true;
        QTest::newRow("replaced by a full one") << 0 << Action([](Host& h) {
            h.view->setModel(new QStringListModel({"a"}, h.view));
            h.model->insertRow(0); // the old one no longer counts
            h.view->setModel(new QStringListModel(h.view));
        }) << true;
        QTest::newRow("root without rows") << 2 << Action([](Host& h) { h.view->setRootIndex(h.model->index(0, 0)); }) << true;
        QTest::newRow("root of another model") << 2 << Action([](Host& h) {
            QStringListModel other({"a"});
            h.view->setRootIndex(other.index(0, 0));
        }) << false;
        QTest::newRow("own text") << 0 << Action([](Host& h) { h.view->SetEmptyText(QStringLiteral("Nothing")); }) << true;
        QTest::newRow("no text") << 0 << Action([](Host& h) { h.view->SetEmptyText(QString()); }) << false;
    }
    // The overlay covers the viewport, with its text, exactly while the model has no rows
    // under the root; bad roots are refused with one log line.
    void emptyOverlay()
    {
        QFETCH(int, rows);
        QFETCH(Action, change);
        QFETCH(bool, shown);
        Host host(rows);
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        const LogCapture::Mark mark;
        change(host);
        QCoreApplication::processEvents();
        OrvantaQT::InfoOverlayWidget* overlay = host.view->EmptyOverlay();
        QCOMPARE(overlay->isVisible(), shown);
        QCOMPARE(overlay->GetText(), host.view->GetEmptyText());
        QCOMPARE(overlay->parentWidget(), host.view->viewport());
        QVERIFY(host.view->viewport()->rect().contains(overlay->geometry()));
        QCOMPARE(mark.Texts(), QTest::currentDataTag() == QByteArray("root of another model")
                                   ? QStringList("3 TableView: a root index of another model is ignored; the root stays")
                                   : QStringList());
        QCOMPARE(host.view->GetEmptyText(), QTest::currentDataTag() == QByteArray("own text") ? "Nothing" : QTest::currentDataTag() == QByteArray("no text") ? "" : "No items");
    }

    void smoothScrolling_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::newRow("vertical") << Qt::Vertical;
        QTest::newRow("horizontal") << Qt::Horizontal;
    }
    // Per pixel both ways; a notch moves by a row's height per wheel line.
    void smoothScrolling()
    {
        QFETCH(Qt::Orientation, orientation);
        Host host;
        for (int column = 0; column < 3; ++column)
            host.view->setColumnWidth(column, 300);
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QCOMPARE(host.view->verticalScrollMode(), QAbstractItemView::ScrollPerPixel);
        QCOMPARE(host.view->horizontalScrollMode(), QAbstractItemView::ScrollPerPixel);
        const QPoint delta = orientation == Qt::Vertical ? QPoint(0, -120) : QPoint(-120, 0);
        QWheelEvent wheel(QPointF(50, 50), host.view->viewport()->mapToGlobal(QPoint(50, 50)), {}, delta, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(host.view->viewport(), &wheel);
        QScrollBar* bar = orientation == Qt::Vertical ? host.view->verticalScrollBar() : host.view->horizontalScrollBar();
        QCOMPARE(bar->value(), QApplication::wheelScrollLines() * host.view->rowHeight(0));
    }

    void headerDefaults_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::newRow("horizontal") << Qt::Horizontal;
        QTest::newRow("vertical") << Qt::Vertical;
    }
    // Sections are highlighted with the selection and sort by a click, with no arrow before;
    // across, the last one stretches and titles start at the left.
    void headerDefaults()
    {
        QFETCH(Qt::Orientation, orientation);
        Host host;
        const bool across = orientation == Qt::Horizontal;
        auto* header = across ? qobject_cast<HeaderView*>(host.view->horizontalHeader()) : new HeaderView(orientation);
        QVERIFY(header);
        if (!across)
            host.view->setVerticalHeader(header);
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        const QRect second = across ? QRect(header->sectionViewportPosition(1), 0, header->sectionSize(1), header->height())
                                    : QRect(0, header->sectionViewportPosition(1), header->width(), header->sectionSize(1));
        QCOMPARE(header->sortIndicatorSection(), -1);
        const QImage plain = TestSupport::Render(header);
        host.view->selectionModel()->select(host.model->index(1, 1), QItemSelectionModel::Select);
        QVERIFY(!TestSupport::Changed(plain, TestSupport::Render(header), second).isEmpty());
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, second.center());
        QCOMPARE(header->sortIndicatorSection(), 1);
        QCOMPARE(header->stretchLastSection(), across);
        QCOMPARE(header->defaultAlignment(), across ? Qt::AlignLeft | Qt::AlignVCenter : QHeaderView(orientation).defaultAlignment());
    }

    // The section under the pointer, and the "hovered" style property while it is over
    // the header, which style sheets see.
    void headerHover()
    {
        Host host;
        QHeaderView* header = host.view->horizontalHeader();
        header->setStyleSheet(QStringLiteral("OrvantaQT--HeaderView[hovered=\"true\"]::section { background: #00ff00; border: none; }"));
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        TestSupport::SignalLog log(header, {"HoveredSectionChanged(int)"});
        for (int section : {1, 0, -1, 2}) {
            section < 0 ? host.PointAt(3) : TestSupport::PointerTo(header->viewport(), {host.Cell(0, section).x(), 5});
            QCOMPARE(log.Take(), QStringList(QStringLiteral("HoveredSectionChanged(%1)").arg(section)));
            QCOMPARE(header->property("hoveredSection"), QVariant(section));
            QCOMPARE(header->property("hovered"), QVariant(section >= 0));
            QCOMPARE(TestSupport::Render(header).pixelColor(host.Cell(0, 0).x() + 20, header->height() - 4) == Qt::green, section >= 0);
        }
    }
};

QTEST_MAIN(TestTableView)
#include "tst_table_view.moc"
