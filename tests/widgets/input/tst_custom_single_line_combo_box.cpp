#include "test_support.h"

class TestStub : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestStub)
#include "tst_custom_single_line_combo_box.moc"
