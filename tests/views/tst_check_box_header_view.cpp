#include <qt_halvo/views/check_box_header_view.h>

#include "test_support.h"

class TestCheckBoxHeaderView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void builds() { QVERIFY(true); }
};

QTEST_MAIN(TestCheckBoxHeaderView)
#include "tst_check_box_header_view.moc"
