#include <qt_halvo/views/accessibility_factory.h>

#include "test_support.h"

class TestAccessibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void builds() { QVERIFY(true); }
};

QTEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
