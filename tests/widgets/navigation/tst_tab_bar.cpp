#include "test_support.h"

class TestTabBar : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestTabBar)
#include "tst_tab_bar.moc"
