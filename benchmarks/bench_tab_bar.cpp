#include <QtTest/QtTest>

class BenchTabBar : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(BenchTabBar)
#include "bench_tab_bar.moc"
