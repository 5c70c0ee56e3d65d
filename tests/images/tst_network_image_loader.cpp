#include "test_support.h"

class TestNetworkImageLoader : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestNetworkImageLoader)
#include "tst_network_image_loader.moc"
