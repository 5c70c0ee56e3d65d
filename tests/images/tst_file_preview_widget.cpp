#include "test_support.h"

class TestFilePreviewWidget : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestFilePreviewWidget)
#include "tst_file_preview_widget.moc"
