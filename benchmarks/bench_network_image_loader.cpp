// 200 pictures from a loopback server into 200 labels: a cold start, then with the memory
// cache warm, with only the disk cache warm (fresh by max-age, and revalidated by ETag),
// next to a bare QNetworkAccessManager with QImage::loadFromData on the GUI thread.
#include <qt_halvo/images/network_image_label.h>
#include <qt_halvo/images/network_image_loader.h>

#include "http_test_server.h"

#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtGui/QPainter>
#include <QtTest/QtTest>
#include <QtWidgets/QLabel>

#include <functional>
#include <memory>

using OrvantaQT::NetworkImageLabel;
using OrvantaQT::NetworkImageLoader;
using TestSupport::HttpAnswer;

namespace {

constexpr int kCount = 200;
const QSize kLabelSize(100, 75);

QByteArray Jpeg(int index)
{
    QImage image(400, 300, QImage::Format_RGB32);
    image.fill(QColor::fromHsv(index * 360 / kCount, 200, 220));
    QPainter painter(&image);
    painter.setPen(Qt::white);
    painter.drawText(image.rect(), Qt::AlignCenter, QString::number(index));
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPG", 85);
    return bytes;
}

} // namespace

class BenchNetworkImageLoader : public QObject
{
    Q_OBJECT

    TestSupport::HttpTestServer server;
    QTemporaryDir folder;
    std::unique_ptr<NetworkImageLoader> loader;
    int coldRuns = 0; // Qt Test calls a benchmark function more than once

    // Loads all pictures of a folder of the server into new labels; the milliseconds until
    // all are shown.
    qint64 IntoLabels(const QString& prefix)
    {
        QWidget host;
        QVector<NetworkImageLabel*> labels;
        QElapsedTimer clock;
        clock.start();
        for (int i = 0; i < kCount; ++i) {
            auto* label = new NetworkImageLabel(&host);
            label->SetLoader(loader.get());
            label->resize(kLabelSize);
            label->SetUrl(server.Url(prefix + QString::number(i)));
            labels << label;
        }
        const auto shown = [&labels] {
            return std::all_of(labels.begin(), labels.end(), [](NetworkImageLabel* label) {
                return label->GetState() != NetworkImageLabel::State::Loading;
            });
        };
        while (!shown())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        const qint64 elapsed = clock.elapsed();
        for (NetworkImageLabel* label : labels) {
            if (label->GetState() != NetworkImageLabel::State::Shown)
                qWarning("%s", qPrintable(label->ErrorString()));
        }
        return elapsed;
    }

    // Each run of the body starts from the same caches.
    void Run(const char* what, const QString& prefix, const std::function<void()>& prepare)
    {
        qint64 elapsed = 0;
        QBENCHMARK_ONCE {
            prepare();
            server.ResetCounts();
            elapsed = IntoLabels(prefix);
        }
        qInfo("%s: %lld ms for %d labels, %d requests (%d answered 304), memory cache %lld KiB", what, elapsed, kCount,
              server.TotalHits(), server.NotModified(), loader->MemoryCacheSize() / 1024);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(server.IsListening());
        for (int i = 0; i < kCount; ++i) {
            HttpAnswer fresh;
            fresh.body = Jpeg(i);
            fresh.headers << qMakePair(QByteArray("Content-Type"), QByteArray("image/jpeg"));
            HttpAnswer revalidated = fresh;
            fresh.headers << qMakePair(QByteArray("Cache-Control"), QByteArray("max-age=3600"));
            revalidated.headers << qMakePair(QByteArray("Cache-Control"), QByteArray("no-cache"))
                                << qMakePair(QByteArray("ETag"), "\"" + QByteArray::number(i) + "\"");
            server.SetRoute(QStringLiteral("/fresh/%1").arg(i), fresh);
            server.SetRoute(QStringLiteral("/etag/%1").arg(i), revalidated);
        }
        qInfo("platform %s, %d pictures of 400 x 300 (JPEG) into labels of 100 x 75", qPrintable(QGuiApplication::platformName()),
              kCount);
    }

    void cold()
    {
        Run("cold", QStringLiteral("/fresh/"), [this] {
            loader.reset(new NetworkImageLoader);
            loader->SetDiskCacheDirectory(folder.filePath(QString::number(++coldRuns)));
        });
    }

    void warmMemory()
    {
        Run("memory cache warm", QStringLiteral("/fresh/"), [] {});
    }

    void warmDisk()
    {
        Run("disk cache warm, max-age", QStringLiteral("/fresh/"), [this] { loader->ClearMemoryCache(); });
    }

    void warmDiskRevalidated()
    {
        IntoLabels(QStringLiteral("/etag/")); // into the disk cache
        Run("disk cache warm, no-cache + ETag", QStringLiteral("/etag/"), [this] { loader->ClearMemoryCache(); });
    }

    // The peer: a bare manager, no sharing and no cache, decoded and scaled on the GUI thread.
    void peerBareManager()
    {
        server.ResetCounts();
        QNetworkAccessManager manager;
        QWidget host;
        int done = 0;
        qint64 elapsed = 0;
        QBENCHMARK_ONCE {
            QElapsedTimer clock;
            clock.start();
            for (int i = 0; i < kCount; ++i) {
                auto* label = new QLabel(&host);
                label->resize(kLabelSize);
                QNetworkReply* reply = manager.get(QNetworkRequest(server.Url(QStringLiteral("/fresh/%1").arg(i))));
                connect(reply, &QNetworkReply::finished, label, [reply, label, &done] {
                    QImage image;
                    image.loadFromData(reply->readAll());
                    label->setPixmap(QPixmap::fromImage(image.scaled(kLabelSize, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
                    reply->deleteLater();
                    ++done;
                });
            }
            while (done < kCount)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
            elapsed = clock.elapsed();
        }
        qInfo("peer, bare QNetworkAccessManager + QImage::loadFromData: %lld ms for %d labels, %d requests", elapsed,
              kCount, server.TotalHits());
    }
};

QTEST_MAIN(BenchNetworkImageLoader)
#include "bench_network_image_loader.moc"
