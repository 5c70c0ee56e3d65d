#include "test_support.h"

class TestIconWithLabel : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestIconWithLabel)
#include "tst_icon_with_label.moc"
