// 256-pixel thumbnails of 4000 x 3000 JPEG photos, per image: FilePreviewProvider with a
// cold cache beside Debian's gdk-pixbuf-thumbnailer on the same files (one process per
// file, as file managers run it, one after the other), and the provider again with the
// cache warm. The photos are noisy, as real ones are: decoding the JPEG's entropy-coded
// data, which no scaling skips, is most of the cost for both.
// QT_HALVO_BENCH_PHOTOS sets how many photos (200), QT_HALVO_BENCH_PEER_PHOTOS how many of
// them the thumbnailer gets (60: it is the slow one on a small machine).

#include <qt_halvo/images/file_preview_provider.h>

#include <QtGui/QPainter>
#include <QtTest/QtTest>

#include <random>

using OrvantaQT::FilePreviewProvider;

namespace {

const char* const kThumbnailer = "/usr/bin/gdk-pixbuf-thumbnailer";

int Setting(const char* name, int fallback)
{
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(name, &ok);
    return ok && value > 0 ? value : fallback;
}

// A gradient with noise, so the coder has real work; a few of them, written again under
// other names, keep the set-up short.
QByteArray Photo(int seed)
{
    QImage image(4000, 3000, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient gradient(0, 0, 4000, 3000);
    gradient.setColorAt(0, QColor::fromHsv(seed * 45 % 360, 200, 230));
    gradient.setColorAt(1, QColor::fromHsv((seed * 45 + 120) % 360, 160, 60));
    painter.fillRect(image.rect(), gradient);
    painter.end();
    std::mt19937 random(seed);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int noise = int(random() % 25) - 12;
            const QRgb p = line[x];
            line[x] = qRgb(qBound(0, qRed(p) + noise, 255), qBound(0, qGreen(p) + noise, 255),
                           qBound(0, qBlue(p) + noise, 255));
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "jpg", 85);
    return bytes;
}

} // namespace

class BenchFilePreviewProvider : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QStringList m_photos;
    int m_runs = 0;

    // Seconds for previews of all photos through provider.
    double Previews(FilePreviewProvider& provider)
    {
        int answered = 0;
        int previews = 0;
        QObject receiver;
        QEventLoop loop;
        QElapsedTimer timer;
        timer.start();
        for (const QString& photo : qAsConst(m_photos)) {
            provider.RequestPreview(photo, QSize(256, 256), 1.0, &receiver,
                                    [&](const QImage& image, const QString& error) {
                                        previews += error.isEmpty() && image.width() == 256;
                                        if (++answered == m_photos.size())
                                            loop.quit();
                                    });
        }
        loop.exec();
        const double seconds = timer.nsecsElapsed() / 1e9;
        if (previews != m_photos.size())
            qWarning("only %d of %d previews made", previews, int(m_photos.size()));
        return seconds;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QVector<QByteArray> photos;
        for (int seed = 1; seed <= 6; ++seed)
            photos << Photo(seed);
        const int count = Setting("QT_HALVO_BENCH_PHOTOS", 200);
        for (int i = 0; i < count; ++i) {
            QFile file(m_dir.filePath(QString("photo%1.jpg").arg(i, 3, 10, QChar('0'))));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(photos.at(i % photos.size()));
            m_photos << file.fileName();
        }
    }

    void perImage_data()
    {
        QTest::addColumn<QString>("who");
        QTest::newRow("FilePreviewProvider, cold cache") << "cold";
        QTest::newRow("FilePreviewProvider, cold cache, 2 workers") << "cold2";
        QTest::newRow("gdk-pixbuf-thumbnailer") << "peer";
        QTest::newRow("FilePreviewProvider, warm cache") << "warm";
        QTest::newRow("FilePreviewProvider, warm cache, 2 workers") << "warm2";
    }
    // Milliseconds per image.
    void perImage()
    {
        QFETCH(QString, who);
        double milliseconds = 0;
        int files = m_photos.size();
        if (who == "peer") {
            if (!QFileInfo(kThumbnailer).isExecutable())
                QSKIP("gdk-pixbuf-thumbnailer is not installed (Debian: libgdk-pixbuf2.0-bin)");
            files = qMin(files, Setting("QT_HALVO_BENCH_PEER_PHOTOS", 60));
            QElapsedTimer timer;
            timer.start();
            for (int i = 0; i < files; ++i) {
                const int code = QProcess::execute(kThumbnailer, {"-s", "256", m_photos.at(i),
                                                                  m_dir.filePath(QString("peer%1.png").arg(i))});
                QCOMPARE(code, 0);
            }
            milliseconds = timer.nsecsElapsed() / 1e6 / files;
            QCOMPARE(QImage(m_dir.filePath("peer0.png")).width(), 256);
        } else {
            FilePreviewProvider provider;
            // By default half the pool's threads work on previews: one on a 2-core machine.
            if (who.endsWith('2'))
                provider.SetMaxWorkers(2);
            // Qt Test may run a row more than once: each cold run gets a cache of its own.
            provider.SetCacheDirectory(m_dir.filePath(QString("cache-%1-%2").arg(who).arg(++m_runs)));
            if (who.startsWith("warm"))
                Previews(provider);
            milliseconds = Previews(provider) * 1000 / files;
        }
        qInfo("%s: %.2f ms per image over %d photos of 4000 x 3000", QTest::currentDataTag(), milliseconds, files);
        QTest::setBenchmarkResult(milliseconds, QTest::WalltimeMilliseconds);
    }
};

QTEST_MAIN(BenchFilePreviewProvider)
#include "bench_file_preview_provider.moc"
