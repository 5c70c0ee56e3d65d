#include <qt_halvo/layouts/info_overlay_widget.h>
#include <qt_halvo/views/header_view.h>
#include <qt_halvo/views/table_view.h>

#include "test_support.h"

using namespace TestSupport;
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

// "row:column" cells in 3 columns, in a window with room beside the view; hovered cells red.
struct Host
{
    QWidget window;
    TableView* view = new TableView(&window);
    QPointer<QStandardItemModel> model = new QStandardItemModel(0, 3);
    Recorder* recorder = new Recorder;
    explicit Host(int rows = 20)
    {
        for (int cell = 0; cell < rows * 3; ++cell)
            model->setItem(cell / 3, cell % 3, new QStandardItem(QStringLiteral("%1:%2").arg(cell / 3).arg(cell % 3)));
        window.setGeometry(100, 100, 420, 300);
        view->setGeometry(0, 0, 380, 260);
        view->setFont(TestFont());
        recorder->setParent(view);
        view->setItemDelegate(recorder);
        view->setModel(model);
        view->setStyleSheet(QStringLiteral("QTableView::item:hover { background: #ff0000; }"));
    }
    ~Host() { delete model; }
    QPoint Cell(int row, int column = 1) const { return view->visualRect(model->index(row, column)).center(); }
    void PointAt(int row) { row < 0 ? PointerTo(&window, {410, 290}) : PointerTo(view->viewport(), Cell(row)); } // -1: beside
    // The cells a full repaint paints hovered or red.
    QStringList Hovered()
    {
        recorder->hovered.clear();
        const QImage image = Render(view->viewport());
        QStringList cells;
        for (auto it = recorder->hovered.cbegin(); it != recorder->hovered.cend(); ++it) {
            const QRect cell = view->visualRect(model ? model->index(it.key().first, it.key().second) : QModelIndex());
            const bool red = image.pixelColor(cell.right() - 3, cell.center().y()) == Qt::red;
            if (it.value() || red)
                cells << QStringLiteral("%1:%2%3").arg(it.key().first).arg(it.key().second).arg(red ? "" : " not red");
        }
        return cells;
    }
    QStringList Painted() const
    {
        QStringList cells;
        for (const auto& cell : recorder->hovered.keys())
            cells << QStringLiteral("%1:%2").arg(cell.first).arg(cell.second);
        return cells;
    }
    static QStringList Row(int row) { return row < 0 ? QStringList() : QString("%1:0 %1:1 %1:2").arg(row).split(' '); }
    static void Help(QWidget* area, const QPoint& at) // as the pointer resting there
    {
        QHelpEvent help(QEvent::ToolTip, at, area->mapToGlobal(at));
        QCoreApplication::sendEvent(area, &help);
    }
};

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
    // delegate and the style sheet); a move repaints the cells of the old and new rows only.
    void hoverMarksTheWholeRow()
    {
        QFETCH(QVector<int>, rows);
        Host host;
        QVERIFY(ShowAndWait(&host.window));
        SignalLog log(host.view, {"HoveredRowChanged(int)"});
        int before = -1;
        for (int row : rows) {
            QCoreApplication::processEvents();
            host.recorder->hovered.clear();
            host.PointAt(row);
            QCoreApplication::processEvents();
            QStringList repainted = Host::Row(std::exchange(before, row)) + Host::Row(row);
            repainted.sort();
            QCOMPARE(host.Painted(), repainted);
            QCOMPARE(host.view->HoveredRow(), row);
            QCOMPARE(log.Take(), QStringList(QStringLiteral("HoveredRowChanged(%1)").arg(row)));
            QCOMPARE(host.Hovered(), Host::Row(row));
        }
    }

    void hoverFollowsThePointer_data()
    {
        QTest::addColumn<Action>("change");
        QTest::addColumn<int>("row"); // hovered after it, the pointer still where row 2 was
        QTest::newRow("wheel") << Action([](Host& h) {
            QWheelEvent wheel(h.Cell(2), h.view->viewport()->mapToGlobal(h.Cell(2)), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(h.view->viewport(), &wheel);
        }) << 2 + QApplication::wheelScrollLines();
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
        QVERIFY(ShowAndWait(&host.window));
        host.PointAt(2);
        change(host);
        QTRY_COMPARE(host.view->HoveredRow(), row);
        QCOMPARE(host.Hovered(), Host::Row(row));
    }

    void cutTextTips_data()
    {
        QTest::addColumn<bool>("header"); // a title, else a cell
        QTest::addColumn<int>("width"); // -1: the narrowest at which Qt paints the whole text; -2: a pixel less
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("tip"); // the model's
        QTest::addColumn<QString>("shown");
        const QString longText = QStringLiteral("A text far too long");
        for (bool header : {false, true}) {
            const char* where = header ? "title" : "cell";
            QTest::addRow("%s fits", where) << header << 200 << "Short" << "" << (header ? "The header's own" : "");
            QTest::addRow("%s elided", where) << header << 60 << longText << "" << longText;
            QTest::addRow("%s as wide as Qt needs", where) << header << -1 << longText << "" << (header ? "The header's own" : "");
            QTest::addRow("%s a pixel narrower", where) << header << -2 << longText << "" << longText;
            QTest::addRow("%s model tip, elided", where) << header << 60 << longText << "Model" << "Model";
            QTest::addRow("%s model tip, fits", where) << header << 200 << "Short" << "Model" << "Model";
        }
        QTest::newRow("cell lines cut") << false << 200 << "One\nTwo\nThree" << "" << "One\nTwo\nThree";
    }
    // A cell or a title shows a tip of its whole text exactly when Qt paints the text cut;
    // the model's tip wins, and over a title that fits the header's own shows. A tip that
    // shows hides over a cell that has none.
    void cutTextTips()
    {
        QFETCH(bool, header);
        QFETCH(int, width);
        QFETCH(QString, text);
        QFETCH(QString, tip);
        QFETCH(QString, shown);
        Host host;
        QWidget* area = header ? host.view->horizontalHeader()->viewport() : host.view->viewport();
        host.view->horizontalHeader()->setToolTip(QStringLiteral("The header's own")); // only over titles that fit
        host.view->horizontalHeader()->setStretchLastSection(false);
        host.view->setColumnWidth(0, width);
        host.view->setColumnWidth(1, 40);
        const QVariant tipData = tip.isEmpty() ? QVariant() : tip;
        for (const auto& [column, value] : {std::make_pair(0, text), std::make_pair(1, QStringLiteral("Cut for sure"))})
            header ? host.model->setHeaderData(column, Qt::Horizontal, value) : host.model->setData(host.model->index(0, column), value);
        header ? host.model->setHeaderData(0, Qt::Horizontal, tipData, Qt::ToolTipRole)
               : host.model->setData(host.model->index(0, 0), tipData, Qt::ToolTipRole);
        QVERIFY(ShowAndWait(&host.window));
        if (width < 0) {
            const auto painted = [&](int pixels, int upTo) {
                host.view->setColumnWidth(0, pixels);
                return Render(area).copy(0, 0, upTo, header ? area->height() : host.view->rowHeight(0) - 1);
            };
            int edge = 40;
            while (edge < 300 && painted(edge, edge - 2) != painted(300, edge - 2))
                ++edge;
            host.view->setColumnWidth(0, edge + 1 + width);
        }
        const auto at = [&](int column) { return header ? QPoint(host.Cell(0, column).x(), area->height() / 2) : host.Cell(0, column); };
        Host::Help(area, at(1));
        QCOMPARE(QToolTip::text(), QStringLiteral("Cut for sure"));
        Host::Help(area, at(0));
        if (shown.isEmpty())
            QTRY_VERIFY(!QToolTip::isVisible());
        else
            QCOMPARE(QToolTip::text(), shown);
        QTest::qWait(400); // a tip hidden by what comes after the event would be gone by now
        QCOMPARE(QToolTip::isVisible(), !shown.isEmpty());
    }

    void emptyOverlay_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<Action>("change");
        QTest::addColumn<bool>("shown");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("logged");
        const Action none = [](Host&) {};
        QTest::newRow("no rows") << 0 << none << true << "No items" << "";
        QTest::newRow("rows") << 2 << none << false << "No items" << "";
        QTest::newRow("rows inserted") << 0 << Action([](Host& h) { h.model->insertRow(0); }) << false << "No items" << "";
        QTest::newRow("all removed") << 2 << Action([](Host& h) { h.model->removeRows(0, 2); }) << true << "No items" << "";
        QTest::newRow("reset") << 2 << Action([](Host& h) { h.model->clear(); }) << true << "No items" << "";
        QTest::newRow("layout changed") << 2 << Action([](Host& h) {
            QSignalBlocker blocker(h.model.data()); // rows gone, told only by layoutChanged
            h.model->setRowCount(0);
            blocker.unblock();
            Q_EMIT h.model->layoutChanged();
        }) << true << "No items" << "";
        QTest::newRow("null model") << 2 << Action([](Host& h) { h.view->setModel(nullptr); }) << true << "No items" << "";
        QTest::newRow("model deleted") << 2 << Action([](Host& h) { delete h.model; }) << true << "No items" << "";
        QTest::newRow("replaced") << 0 << Action([](Host& h) {
            h.view->setModel(new QStringListModel({"a"}, h.view));
            h.model->insertRow(0); // the old one no longer counts
            h.view->setModel(new QStringListModel(h.view));
        }) << true << "No items" << "";
        QTest::newRow("root without rows") << 2 << Action([](Host& h) { h.view->setRootIndex(h.model->index(0, 0)); }) << true << "No items" << "";
        QTest::newRow("root of another model") << 2 << Action([](Host& h) { h.view->setRootIndex(QStringListModel({"a"}).index(0, 0)); }) << false << "No items" << "3 TableView: a root index of another model is ignored; the root stays";
        QTest::newRow("own text") << 0 << Action([](Host& h) { h.view->SetEmptyText("Nothing"); }) << true << "Nothing" << "";
        QTest::newRow("no text") << 0 << Action([](Host& h) { h.view->SetEmptyText(QString()); }) << false << "" << "";
    }
    // The overlay is over the viewport, with its text, exactly while the model has no rows
    // under the root; bad roots are refused with one log line.
    void emptyOverlay()
    {
        QFETCH(int, rows);
        QFETCH(Action, change);
        QFETCH(bool, shown);
        QFETCH(QString, text);
        QFETCH(QString, logged);
        Host host(rows);
        QVERIFY(ShowAndWait(&host.window));
        const LogCapture::Mark mark;
        change(host);
        QCoreApplication::processEvents();
        OrvantaQT::InfoOverlayWidget* overlay = host.view->EmptyOverlay();
        QCOMPARE(overlay->isVisible(), shown);
        QCOMPARE(host.view->GetEmptyText(), text);
        QCOMPARE(overlay->GetText(), text);
        QCOMPARE(overlay->parentWidget(), host.view->viewport());
        QVERIFY(host.view->viewport()->rect().contains(overlay->geometry()));
        QCOMPARE(mark.Texts(), logged.isEmpty() ? QStringList() : QStringList(logged));
    }

    // A viewport set later hovers whole rows and carries the overlay, with what the old
    // one showed.
    void replacedViewport()
    {
        Host host(0);
        host.view->SetEmptyText("Nothing");
        host.view->EmptyOverlay()->SetTitle("Empty");
        QVERIFY(ShowAndWait(&host.window));
        const QPointer<OrvantaQT::InfoOverlayWidget> old = host.view->EmptyOverlay();
        auto* viewport = new QWidget;
        host.view->setViewport(viewport);
        QCoreApplication::processEvents();
        OrvantaQT::InfoOverlayWidget* overlay = host.view->EmptyOverlay();
        QVERIFY(!old);
        QCOMPARE(overlay->parentWidget(), viewport);
        QCOMPARE(overlay->objectName(), QStringLiteral("EmptyOverlay"));
        QCOMPARE(overlay->GetText(), QStringLiteral("Nothing"));
        QCOMPARE(overlay->GetTitle(), QStringLiteral("Empty"));
        QVERIFY(overlay->isVisible());
        QVERIFY(viewport->rect().contains(overlay->geometry()));
        for (int cell = 0; cell < 5 * 3; ++cell)
            host.model->setItem(cell / 3, cell % 3, new QStandardItem(QStringLiteral("%1:%2").arg(cell / 3).arg(cell % 3)));
        QVERIFY(!overlay->isVisible());
        host.PointAt(3);
        QTRY_COMPARE(host.view->HoveredRow(), 3);
        QCOMPARE(host.Hovered(), Host::Row(3));
    }

    void defaults_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::newRow("horizontal") << Qt::Horizontal;
        QTest::newRow("vertical") << Qt::Vertical;
    }
    // Header sections are highlighted with the selection and sort by a click, with no arrow
    // before; across, the last one stretches and titles start at the left. Scrolling is per
    // pixel, a row's height a wheel line.
    void defaults()
    {
        QFETCH(Qt::Orientation, orientation);
        Host host;
        const bool across = orientation == Qt::Horizontal;
        auto* header = across ? qobject_cast<HeaderView*>(host.view->horizontalHeader()) : new HeaderView(orientation);
        QVERIFY(header);
        if (!across)
            host.view->setVerticalHeader(header);
        QVERIFY(ShowAndWait(&host.window));
        const QRect second = across ? QRect(header->sectionViewportPosition(1), 0, header->sectionSize(1), header->height())
                                    : QRect(0, header->sectionViewportPosition(1), header->width(), header->sectionSize(1));
        QCOMPARE(header->sortIndicatorSection(), -1);
        QCOMPARE(HeaderView(orientation).property("hovered"), QVariant(false)); // without a model too
        const QImage plain = Render(header);
        host.view->selectionModel()->select(host.model->index(1, 1), QItemSelectionModel::Select);
        QVERIFY(!Changed(plain, Render(header), second).isEmpty());
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, second.topLeft() + QPoint(10, 10));
        QCOMPARE(header->sortIndicatorSection(), 1);
        header->setSortIndicator(1, Qt::AscendingOrder); // the click selected the section too: only the arrow differs
        const QImage sorted = Render(header);
        header->setSortIndicator(-1, Qt::AscendingOrder);
        QVERIFY(!Changed(sorted, Render(header), second).isEmpty());
        QCOMPARE(header->stretchLastSection(), across);
        QCOMPARE(header->defaultAlignment(), across ? Qt::AlignLeft | Qt::AlignVCenter : QHeaderView(orientation).defaultAlignment());
        QCOMPARE(across ? host.view->horizontalScrollMode() : host.view->verticalScrollMode(), QAbstractItemView::ScrollPerPixel);
        QWheelEvent wheel(QPointF(50, 50), host.view->viewport()->mapToGlobal(QPoint(50, 50)), {}, across ? QPoint(-120, 0) : QPoint(0, -120),
                          Qt::NoButton, {}, Qt::NoScrollPhase, false);
        for (int column = 0; column < 3; ++column)
            host.view->setColumnWidth(column, 300);
        QScrollBar* bar = across ? host.view->horizontalScrollBar() : host.view->verticalScrollBar();
        QTRY_VERIFY(bar->maximum() > 0);
        QCoreApplication::sendEvent(host.view->viewport(), &wheel);
        QCOMPARE(bar->value(), QApplication::wheelScrollLines() * host.view->rowHeight(0));
    }

    // The section under the pointer, and the "hovered" style property while it is over
    // the header, which style sheets see.
    void headerHover()
    {
        Host host;
        QHeaderView* header = host.view->horizontalHeader();
        header->setStyleSheet(QStringLiteral("OrvantaQT--HeaderView[hovered=\"true\"]::section { background: #00ff00; border: none; }"));
        QVERIFY(ShowAndWait(&host.window));
        SignalLog log(header, {"HoveredSectionChanged(int)"});
        const auto green = [&] { return Render(header).pixelColor(host.Cell(0, 0).x() + 20, header->height() - 4) == Qt::green; };
        QVERIFY(!green());
        for (int section : {1, 2, -1, 0}) {
            section < 0 ? host.PointAt(3) : PointerTo(header->viewport(), {host.Cell(0, section).x(), 5});
            QCOMPARE(log.Take(), QStringList(QStringLiteral("HoveredSectionChanged(%1)").arg(section)));
            QCOMPARE(header->property("hoveredSection"), QVariant(section));
            QCOMPARE(header->property("hovered"), QVariant(section >= 0));
            QCOMPARE(green(), section >= 0);
        }
        header->moveSection(0, 1); // sections that move or change size under a still pointer
        header->resizeSection(1, 10);
        QCOMPARE(log.Take(), Words("HoveredSectionChanged(1) HoveredSectionChanged(0)"));
    }
};

QTEST_MAIN(TestTableView)
#include "tst_table_view.moc"
