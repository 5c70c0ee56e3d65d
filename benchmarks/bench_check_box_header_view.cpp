#include <qt_halvo/views/check_box_header_view.h>

#include <QtTest/QtTest>

class BenchCheckBoxHeaderView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placeholder() {}
};

QTEST_MAIN(BenchCheckBoxHeaderView)
#include "bench_check_box_header_view.moc"
