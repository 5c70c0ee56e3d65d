#include "test_support.h"

class TestImageDecoder : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestImageDecoder)
#include "tst_image_decoder.moc"
