#include "test_support.h"

class TestTransparentWidgets : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestTransparentWidgets)
#include "tst_transparent_widgets.moc"
