#include "test_support.h"

class TestTwoButtons : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestTwoButtons)
#include "tst_two_buttons.moc"
