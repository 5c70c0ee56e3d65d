#include <QtTest/QtTest>

class BenchNetworkImageLoader : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(BenchNetworkImageLoader)
#include "bench_network_image_loader.moc"
