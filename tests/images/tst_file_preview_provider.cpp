#include "test_support.h"

class TestFilePreviewProvider : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(TestFilePreviewProvider)
#include "tst_file_preview_provider.moc"
