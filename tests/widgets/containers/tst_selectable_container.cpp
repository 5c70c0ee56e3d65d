#include "test_support.h"

class TestSelectableContainer : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestSelectableContainer)
#include "tst_selectable_container.moc"
