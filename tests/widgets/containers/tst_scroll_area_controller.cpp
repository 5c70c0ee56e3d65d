#include "test_support.h"

class TestScrollAreaController : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestScrollAreaController)
#include "tst_scroll_area_controller.moc"
