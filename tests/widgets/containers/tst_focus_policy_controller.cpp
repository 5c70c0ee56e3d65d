#include "test_support.h"

class TestFocusPolicyController : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestFocusPolicyController)
#include "tst_focus_policy_controller.moc"
