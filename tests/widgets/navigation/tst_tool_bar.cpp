#include "test_support.h"

class TestToolBar : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestToolBar)
#include "tst_tool_bar.moc"
