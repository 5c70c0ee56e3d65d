// One scrolling frame of a 100,000 × 5 table with the pointer over a row (the scroll bar
// moved by a wheel line, the viewport repainted at once, or only what the scroll exposed): TableView, which also paints the
// hovered row's strip in a pass of its own, next to a plain QTableView; without a style
// sheet, and with one that colours hovered items (QStyleSheetStyle is the slow part then).

#include <qt_halvo/views/table_view.h>

#include <QtTest/QtTest>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableView>

namespace {

// Cells computed on demand: filling a QStandardItemModel would take longer than the runs.
class ComputedModel : public QAbstractTableModel
{
public:
    int rowCount(const QModelIndex& parent = QModelIndex()) const override { return parent.isValid() ? 0 : 100000; }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override { return parent.isValid() ? 0 : 5; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole)
            return QVariant();
        return QStringLiteral("Row %1, column %2").arg(index.row()).arg(index.column());
    }
};

} // namespace

class BenchTableView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scrollFrame_data()
    {
        QTest::addColumn<bool>("library");
        QTest::addColumn<QString>("sheet");
        QTest::addColumn<bool>("whole");
        const QString hover = QStringLiteral("QTableView::item:hover { background: #ffe0a0; }");
        QTest::newRow("TableView") << true << QString() << true;
        QTest::newRow("QTableView") << false << QString() << true;
        QTest::newRow("TableView, ::item:hover sheet") << true << hover << true;
        QTest::newRow("QTableView, ::item:hover sheet") << false << hover << true;
        // As a window paints it: the rows the scroll moved are copied, only the line that
        // came into view (and the hovered row's strips) are painted.
        QTest::newRow("TableView, exposed line") << true << QString() << false;
        QTest::newRow("QTableView, exposed line") << false << QString() << false;
    }

    void scrollFrame()
    {
        QFETCH(bool, library);
        QFETCH(QString, sheet);
        QFETCH(bool, whole);
        ComputedModel model;
        QScopedPointer<QTableView> view(library ? new OrvantaQT::TableView : new QTableView);
        view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view->setStyleSheet(sheet);
        view->setModel(&model);
        view->setGeometry(100, 100, 800, 600);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.data()));
        // The pointer over a row in the middle, as the window system would report it.
        const QPoint over = view->viewport()->mapTo(view.data(), QPoint(200, 250));
        QEnterEvent enter(over, over, view->mapToGlobal(over));
        QCoreApplication::sendEvent(view->windowHandle(), &enter);
        QTest::mouseMove(view->windowHandle(), over);
        QCoreApplication::processEvents();
        QScrollBar* bar = view->verticalScrollBar();
        const int step = view->verticalHeader()->defaultSectionSize();
        QBENCHMARK {
            bar->setValue(bar->value() + step > bar->maximum() ? 0 : bar->value() + step);
            if (whole)
                view->viewport()->repaint();
            else
                QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
        }
        if (auto* table = qobject_cast<OrvantaQT::TableView*>(view.data()))
            QVERIFY(table->HoveredRow() >= 0);
    }
};

QTEST_MAIN(BenchTableView)
#include "bench_table_view.moc"
