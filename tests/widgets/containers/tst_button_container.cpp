#include "test_support.h"

class TestButtonContainer : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestButtonContainer)
#include "tst_button_container.moc"
