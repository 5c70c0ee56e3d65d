#include <QtTest/QtTest>

class BenchToolBar : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(BenchToolBar)
#include "bench_tool_bar.moc"
