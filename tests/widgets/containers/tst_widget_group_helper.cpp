#include "test_support.h"

class TestWidgetGroupHelper : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestWidgetGroupHelper)
#include "tst_widget_group_helper.moc"
