// What a CheckBoxHeaderView over 100,000 rows pays when one row's check changes (dataChanged on
// that row), next to the plain way measured in the same run: counting the check column again
// from the model on every dataChanged. Off screen; times are per change.

#include <qt_halvo/views/check_box_header_view.h>

#include <QtCore/QAbstractTableModel>
#include <QtTest/QtTest>

using OrvantaQT::CheckBoxHeaderView;

namespace {

constexpr int kRows = 100000;

// Rows whose check states live in a plain array; Flip() changes one and says so.
class Checks : public QAbstractTableModel
{
public:
    Checks() : m_checked(kRows, false) {}
    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : kRows; }
    int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : 2; }
    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        return QAbstractTableModel::flags(index) | (index.column() == 0 ? Qt::ItemIsUserCheckable : Qt::NoItemFlags);
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::CheckStateRole || index.column() != 0)
            return QVariant();
        return m_checked[index.row()] ? Qt::Checked : Qt::Unchecked;
    }
    void Flip(int row)
    {
        m_checked[row] = !m_checked[row];
        Q_EMIT dataChanged(index(row, 0), index(row, 0), {Qt::CheckStateRole});
    }

private:
    QVector<bool> m_checked;
};

} // namespace

class BenchCheckBoxHeaderView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_DISCARD_LOGGING_LIBRARY);
        qInfo("%d rows, platform %s", kRows, qPrintable(QGuiApplication::platformName()));
    }

    void oneRowChanged_data()
    {
        QTest::addColumn<bool>("plain");
        QTest::newRow("CheckBoxHeaderView") << false;
        QTest::newRow("plain rescan of the column (peer)") << true;
    }
    void oneRowChanged()
    {
        QFETCH(bool, plain);
        Checks model;
        CheckBoxHeaderView header;
        int counted = -1;
        if (plain) {
            QObject::connect(&model, &QAbstractItemModel::dataChanged, &model, [&] {
                counted = 0;
                for (int row = 0; row < model.rowCount(QModelIndex()); ++row)
                    counted += model.data(model.index(row, 0), Qt::CheckStateRole).toInt() == Qt::Checked;
            });
        } else {
            header.setModel(&model);
        }
        int row = 0;
        QBENCHMARK {
            model.Flip(row);
            row = (row + 7919) % kRows;
        }
        // Both ways see the same rows checked.
        const int checked = plain ? counted : header.CheckedCount();
        int expected = 0;
        for (int i = 0; i < kRows; ++i)
            expected += model.data(model.index(i, 0), Qt::CheckStateRole).toInt() == Qt::Checked;
        QCOMPARE(checked, expected);
    }
};

QTEST_MAIN(BenchCheckBoxHeaderView)
#include "bench_check_box_header_view.moc"
