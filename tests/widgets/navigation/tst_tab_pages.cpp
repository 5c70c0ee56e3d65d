#include "test_support.h"

class TestTabPages : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestTabPages)
#include "tst_tab_pages.moc"
