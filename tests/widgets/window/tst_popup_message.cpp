#include "test_support.h"

class TstPopupMessage : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TstPopupMessage)
#include "tst_popup_message.moc"
