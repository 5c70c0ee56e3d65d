#include "test_support.h"

class TstNotificationWidget : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TstNotificationWidget)
#include "tst_notification_widget.moc"
