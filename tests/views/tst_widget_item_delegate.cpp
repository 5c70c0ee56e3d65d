#include <qt_halvo/views/widget_item_delegate.h>

#include "test_support.h"

class TestWidgetItemDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void builds() { QVERIFY(true); }
};

QTEST_MAIN(TestWidgetItemDelegate)
#include "tst_widget_item_delegate.moc"
