#include <qt_halvo/views/table_view.h>

#include "test_support.h"

class TestTableView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void builds() { QVERIFY(true); }
};

QTEST_MAIN(TestTableView)
#include "tst_table_view.moc"
