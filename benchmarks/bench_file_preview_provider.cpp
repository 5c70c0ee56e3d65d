// 256-pixel thumbnails of 4000 x 3000 JPEG photos, per image: FilePreviewProvider with a
// cold cache beside Debian's gdk-pixbuf-thumbnailer on the same files (one process per
// file, as file managers run it, one after the other), and the provider again with the
// thumbnails on disk, and in its memory. Two sets: photos with a camera's light noise,
// and grainy ones.
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

// A landscape of a sky, hills and a scatter of trees, with the sensor noise of a photo:
// amplitude 3 as a camera's processing leaves it, 12 for a grainy picture whose
// entropy-coded data, which no scaling skips, makes most of the cost for both tools.
// A few of them, written again under other names, keep the set-up short.
QByteArray Photo(int seed, int noiseAmplitude)
{
    QImage image(4000, 3000, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    std::mt19937 random(seed);
    QLinearGradient sky(0, 0, 0, 3000);
    sky.setColorAt(0, QColor::fromHsv(seed * 45 % 360, 120, 240));
    sky.setColorAt(1, QColor::fromHsv((seed * 45 + 40) % 360, 60, 200));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    for (int hill = 0; hill < 4; ++hill) {
        QPolygon outline;
        outline << QPoint(0, 3000);
        for (int x = 0; x <= 4000; x += 250)
            outline << QPoint(x, 1200 + hill * 350 + int(random() % 400));
        outline << QPoint(4000, 3000);
        painter.setBrush(QColor::fromHsv((seed * 45 + 100 + hill * 15) % 360, 110, 150 - hill * 25));
        painter.drawPolygon(outline);
    }
    for (int tree = 0; tree < 300; ++tree) {
        const QPoint at(int(random() % 4000), 1500 + int(random() % 1500));
        painter.setBrush(QColor::fromHsv(90 + int(random() % 60), 150, 60 + int(random() % 80)));
        painter.drawEllipse(at, 20 + int(random() % 60), 40 + int(random() % 90));
    }
    painter.end();
    const int span = 2 * noiseAmplitude + 1;
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int noise = int(random() % span) - noiseAmplitude;
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
    QHash<QString, QStringList> m_sets; // by kind: "photo", "grainy"
    QStringList m_photos;               // the set of the row being measured
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
        const int count = Setting("QT_HALVO_BENCH_PHOTOS", 200);
        for (const auto& kind : {std::make_pair(QStringLiteral("photo"), 3), std::make_pair(QStringLiteral("grainy"), 12)}) {
            QVector<QByteArray> photos;
            qint64 bytes = 0;
            for (int seed = 1; seed <= 6; ++seed) {
                photos << Photo(seed, kind.second);
                bytes += photos.last().size();
            }
            for (int i = 0; i < count; ++i) {
                QFile file(m_dir.filePath(QString("%1%2.jpg").arg(kind.first).arg(i, 3, 10, QChar('0'))));
                QVERIFY(file.open(QIODevice::WriteOnly));
                file.write(photos.at(i % photos.size()));
                m_sets[kind.first] << file.fileName();
            }
            qInfo("%s: JPEG files of %.1f MB on average", qPrintable(kind.first), bytes / 6.0 / 1e6);
        }
    }

    void perImage_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("who");
        for (const QString kind : {"photo", "grainy"}) {
            QTest::addRow("%s, FilePreviewProvider, cold cache", qPrintable(kind)) << kind << "cold";
            QTest::addRow("%s, FilePreviewProvider, cold cache, 2 workers", qPrintable(kind)) << kind << "cold2";
            QTest::addRow("%s, gdk-pixbuf-thumbnailer", qPrintable(kind)) << kind << "peer";
            QTest::addRow("%s, gdk-pixbuf-thumbnailer, 2 at a time", qPrintable(kind)) << kind << "peer2";
            QTest::addRow("%s, FilePreviewProvider, warm disk cache", qPrintable(kind)) << kind << "warm";
            QTest::addRow("%s, FilePreviewProvider, warm disk cache, 2 workers", qPrintable(kind)) << kind << "warm2";
            QTest::addRow("%s, FilePreviewProvider, warm memory cache", qPrintable(kind)) << kind << "memory";
        }
    }
    // Milliseconds per image.
    void perImage()
    {
        QFETCH(QString, kind);
        QFETCH(QString, who);
        m_photos = m_sets.value(kind);
        double milliseconds = 0;
        int files = m_photos.size();
        if (who.startsWith("peer")) {
            if (!QFileInfo(kThumbnailer).isExecutable())
                QSKIP("gdk-pixbuf-thumbnailer is not installed (Debian: libgdk-pixbuf2.0-bin)");
            files = qMin(files, Setting("QT_HALVO_BENCH_PEER_PHOTOS", 60));
            const int atOnce = who.endsWith('2') ? 2 : 1;
            QElapsedTimer timer;
            timer.start();
            for (int i = 0; i < files; i += atOnce) {
                std::vector<std::unique_ptr<QProcess>> running;
                for (int j = i; j < qMin(files, i + atOnce); ++j) {
                    running.emplace_back(new QProcess);
                    running.back()->start(kThumbnailer, {"-s", "256", m_photos.at(j), m_dir.filePath(QString("peer%1.png").arg(j))});
                }
                for (const auto& process : running) {
                    QVERIFY(process->waitForFinished(60000));
                    QCOMPARE(process->exitCode(), 0);
                }
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
            // Warm: the thumbnails are on disk (a provider before this one made them), or in
            // this provider's memory too.
            if (who.startsWith("warm")) {
                FilePreviewProvider before;
                before.SetCacheDirectory(provider.GetCacheDirectory());
                Previews(before);
            }
            if (who == "memory") {
                provider.SetMemoryCacheLimit(qint64(files) * 256 * 256 * 4);
                Previews(provider);
            }
            milliseconds = Previews(provider) * 1000 / files;
        }
        qInfo("%s: %.2f ms per image over %d photos of 4000 x 3000", QTest::currentDataTag(), milliseconds, files);
        QTest::setBenchmarkResult(milliseconds, QTest::WalltimeMilliseconds);
    }
};

QTEST_MAIN(BenchFilePreviewProvider)
#include "bench_file_preview_provider.moc"
