#include <QtTest/QtTest>

class BenchFilePreviewProvider : public QObject
{
    Q_OBJECT
};

QTEST_MAIN(BenchFilePreviewProvider)
#include "bench_file_preview_provider.moc"
