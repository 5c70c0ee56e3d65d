#include "test_support.h"

class TestNetworkImageLabel : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestNetworkImageLabel)
#include "tst_network_image_label.moc"
