#include "test_support.h"

class TstWindowHitTest : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TstWindowHitTest)
#include "tst_window_hit_test.moc"
