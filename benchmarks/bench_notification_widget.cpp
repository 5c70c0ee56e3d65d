#include <QtTest/QtTest>

class Bench : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(Bench)
#include "bench_notification_widget.moc"
