#include <qt_halvo/views/table_view.h>

#include <QtTest/QtTest>

class BenchTableView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placeholder() {}
};

QTEST_MAIN(BenchTableView)
#include "bench_table_view.moc"
