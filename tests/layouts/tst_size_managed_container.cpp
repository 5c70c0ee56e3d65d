#include "test_support.h"

class TestStub : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestStub)
#include "tst_size_managed_container.moc"
