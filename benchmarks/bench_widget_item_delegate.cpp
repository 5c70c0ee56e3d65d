#include <qt_halvo/views/widget_item_delegate.h>

#include <QtTest/QtTest>

class BenchWidgetItemDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placeholder() {}
};

QTEST_MAIN(BenchWidgetItemDelegate)
#include "bench_widget_item_delegate.moc"
