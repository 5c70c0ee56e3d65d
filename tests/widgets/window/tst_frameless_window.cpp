#include "test_support.h"

class TstFramelessWindow : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TstFramelessWindow)
#include "tst_frameless_window.moc"
