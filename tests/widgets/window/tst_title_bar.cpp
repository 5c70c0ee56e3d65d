#include "test_support.h"

class TstTitleBar : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TstTitleBar)
#include "tst_title_bar.moc"
