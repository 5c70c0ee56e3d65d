#include <qt_halvo/views/closable_list_view.h>

#include "test_support.h"

class TestClosableViews : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void builds() { QVERIFY(true); }
};

QTEST_MAIN(TestClosableViews)
#include "tst_closable_views.moc"
