#include <qt_halvo/images/network_image_loader.h>

#include "image_decoder_p.h"
#include "image_memory_cache_p.h"

#include <qt_halvo/application/run_async.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QStandardPaths>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtCore/QtMath>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkDiskCache>
#include <QtNetwork/QNetworkReply>

#include <memory>

namespace OrvantaQT {

namespace {

// Device pixels asked for: never more than the logical size times the ratio.
QSize DeviceBounds(const QSize& logical, qreal ratio)
{
    if (logical.isEmpty())
        return QSize();
    return QSize(qMax(1, qFloor(logical.width() * ratio + 1e-6)), qMax(1, qFloor(logical.height() * ratio + 1e-6)));
}

QString CacheKey(const QUrl& url, const QSize& bounds, qreal ratio)
{
    return QStringLiteral("%1 %2x%3 %4")
        .arg(url.toString(QUrl::FullyEncoded))
        .arg(bounds.width())
        .arg(bounds.height())
        .arg(ratio);
}

struct Waiter
{
    QPointer<QObject> receiver;
    NetworkImageLoader::Callback callback;
    QSize bounds; // device pixels
    qreal ratio = 1.0;
    QString key;
};

struct Download
{
    quint64 id = 0;
    QUrl url;     // as asked: the key of the download
    QUrl current; // after redirects
    QSet<QUrl> visited;
    QPointer<QNetworkReply> reply;
    QVector<Waiter> waiters;
    // Deleted later: a download may end inside their own signals.
    QTimer* timeout = new QTimer;
    QTimer* retry = new QTimer;
    int attempt = 0;
    bool timedOut = false;
    QByteArray body;

    ~Download()
    {
        timeout->stop();
        retry->stop();
        timeout->deleteLater();
        retry->deleteLater();
    }
};

QPointer<NetworkImageLoader> g_instance;

} // namespace

struct NetworkImageLoader::Private
{
    NetworkImageLoader* q = nullptr;
    QPointer<QNetworkAccessManager> manager;
    QPointer<QNetworkDiskCache> diskCache; // ours, when we made one
    QString diskDirectory;
    qint64 diskLimit = 256 * 1024 * 1024;

    ImageMemoryCache memory{64 * 1024 * 1024};

    qint64 maxPixels = 64 * 1000 * 1000;
    int maxRedirects = 5;
    int retryCount = 3;
    int retryDelay = 500;
    int timeout = 30000;
    int failureMemory = 60000;

    QHash<QUrl, std::shared_ptr<Download>> downloads;
    QHash<QUrl, QPair<QString, qint64>> failures; // why, and until when (ms since epoch)
    quint64 nextId = 1;
    QSet<QObject*> watched; // receivers whose destruction we follow

    void ApplyDiskCache()
    {
        if (!manager)
            return;
        if (manager->cache() && manager->cache() != diskCache) {
            QTH_LOG_WARNING("NetworkImageLoader: the network access manager has a cache of its own; the disk cache "
                            "folder \"%s\" is not used",
                            qPrintable(diskDirectory));
            return;
        }
        if (diskDirectory.isEmpty()) {
            manager->setCache(nullptr);
            return;
        }
        auto* cache = new QNetworkDiskCache;
        cache->setCacheDirectory(diskDirectory);
        cache->setMaximumCacheSize(diskLimit);
        manager->setCache(cache); // the manager takes it over, and drops the one before
        diskCache = cache;
    }

    void Start(const std::shared_ptr<Download>& download)
    {
        if (!manager) {
            Fail(download, QStringLiteral("no network access manager"), false);
            return;
        }
        QNetworkRequest request(download->current);
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
        request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::PreferNetwork);
        QNetworkReply* reply = manager->get(request);
        download->reply = reply;
        download->timedOut = false;
        download->timeout->start(timeout);
        const quint64 id = download->id;
        auto alive = [this, id](const QUrl& url) {
            const auto found = downloads.find(url);
            return found != downloads.end() && found.value()->id == id ? found.value() : nullptr;
        };
        const QUrl url = download->url;
        QObject::connect(reply, &QNetworkReply::downloadProgress, q, [this, alive, url](qint64 received, qint64 total) {
            auto current = alive(url);
            if (!current)
                return;
            // No picture within the pixel limit needs more bytes than its pixels at four bytes
            // each, and a little for headers: a larger body is not kept in memory.
            const qint64 limit = maxPixels * 4 + 1024 * 1024;
            if (received > limit || total > limit) {
                Abort(*current);
                Fail(current, QStringLiteral("the body is larger than %1 bytes").arg(limit), false);
                return;
            }
            current->timeout->start();
        });
        QObject::connect(reply, &QNetworkReply::finished, q, [this, alive, url, reply] {
            reply->deleteLater();
            if (auto current = alive(url)) {
                if (current->reply == reply)
                    Finished(current, reply);
            }
        });
    }

    void Finished(const std::shared_ptr<Download>& download, QNetworkReply* reply)
    {
        download->timeout->stop();
        download->reply = nullptr;
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (download->timedOut) {
            Retry(download, QStringLiteral("no data for %1 ms").arg(timeout));
            return;
        }
        if (status >= 300 && status < 400 && status != 304) {
            const QUrl target = download->current.resolved(reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl());
            if (download->visited.size() >= maxRedirects) {
                Fail(download, QStringLiteral("more than %1 redirects").arg(maxRedirects), false);
            } else if (download->visited.contains(target) || target == download->url) {
                Fail(download, QStringLiteral("a redirect loop at %1").arg(target.toString()), false);
            } else if (!target.isValid()) {
                Fail(download, QStringLiteral("a redirect without a place to go"), false);
            } else {
                download->visited.insert(target);
                download->current = target;
                Start(download);
            }
            return;
        }
        if (status >= 400 && status < 500) {
            Fail(download, QStringLiteral("HTTP %1").arg(status), true);
            return;
        }
        if (status >= 500) {
            Retry(download, QStringLiteral("HTTP %1").arg(status));
            return;
        }
        if (reply->error() != QNetworkReply::NoError) {
            Fail(download, reply->errorString(), false);
            return;
        }
        download->body = reply->readAll();
        const QVariant length = reply->header(QNetworkRequest::ContentLengthHeader);
        if (length.isValid() && length.toLongLong() > download->body.size()) {
            Fail(download,
                 QStringLiteral("%1 bytes of %2 came").arg(download->body.size()).arg(length.toLongLong()), false);
            return;
        }
        Decode(download);
    }

    void Retry(const std::shared_ptr<Download>& download, const QString& why)
    {
        if (download->attempt >= retryCount) {
            Fail(download, why, false);
            return;
        }
        download->retry->start(int(qMin<qint64>(INT_MAX, qint64(retryDelay) << qMin(download->attempt, 30))));
        ++download->attempt;
    }

    void Decode(const std::shared_ptr<Download>& download)
    {
        // Each size asked for is decoded once, whoever asked for it.
        QHash<QString, QPair<QSize, qreal>> sizes;
        for (const Waiter& waiter : download->waiters)
            sizes.insert(waiter.key, qMakePair(waiter.bounds, waiter.ratio));
        auto results = std::make_shared<QHash<QString, DecodedImage>>();
        const QByteArray body = download->body;
        const qint64 pixels = maxPixels;
        const quint64 id = download->id;
        const QUrl url = download->url;
        RunAsync(
            [results, sizes, body, pixels] {
                for (auto it = sizes.begin(); it != sizes.end(); ++it) {
                    QBuffer buffer;
                    buffer.setData(body);
                    buffer.open(QIODevice::ReadOnly);
                    DecodedImage decoded = DecodeImage(&buffer, it.value().first, pixels);
                    decoded.image.setDevicePixelRatio(it.value().second);
                    results->insert(it.key(), decoded);
                }
            },
            [this, results, id, url] {
                const auto found = downloads.find(url);
                if (found == downloads.end() || found.value()->id != id)
                    return;
                const std::shared_ptr<Download> download = found.value(); // outlives its removal
                Decoded(download, *results);
            },
            q);
    }

    void Decoded(const std::shared_ptr<Download>& download, const QHash<QString, DecodedImage>& results)
    {
        QString error;
        for (auto it = results.begin(); it != results.end(); ++it) {
            if (it.value().image.isNull())
                error = it.value().error;
            else
                memory.Insert(it.key(), it.value().image);
        }
        if (!error.isEmpty()) {
            Fail(download, error, false);
            return;
        }
        QVector<Waiter> served;
        QVector<Waiter> later;
        for (const Waiter& waiter : download->waiters)
            (results.contains(waiter.key) ? served : later) << waiter;
        download->waiters = later;
        if (later.isEmpty())
            downloads.remove(download->url);
        else
            Decode(download); // sizes asked for while decoding
        for (const Waiter& waiter : served) {
            if (waiter.receiver)
                waiter.callback(results.value(waiter.key).image, QString());
        }
    }

    void Fail(const std::shared_ptr<Download>& download, const QString& why, bool remember)
    {
        QTH_LOG_WARNING("NetworkImageLoader: %s: %s", qPrintable(download->url.toString()), qPrintable(why));
        if (remember)
            failures.insert(download->url, qMakePair(why, QDateTime::currentMSecsSinceEpoch() + failureMemory));
        downloads.remove(download->url);
        const QVector<Waiter> waiters = download->waiters;
        for (const Waiter& waiter : waiters) {
            if (waiter.receiver)
                waiter.callback(QImage(), why);
        }
    }

    // Drops waiters whose receiver is gone, and downloads nobody waits for.
    void Sweep()
    {
        for (auto it = downloads.begin(); it != downloads.end();) {
            Download& download = *it.value();
            download.waiters.erase(std::remove_if(download.waiters.begin(), download.waiters.end(),
                                                  [](const Waiter& waiter) { return !waiter.receiver; }),
                                   download.waiters.end());
            if (!download.waiters.isEmpty()) {
                ++it;
                continue;
            }
            Abort(download);
            it = downloads.erase(it);
        }
    }

    static void Abort(Download& download)
    {
        download.timeout->stop();
        download.retry->stop();
        if (QNetworkReply* reply = download.reply) {
            download.reply = nullptr;
            reply->abort();
        }
    }
};

NetworkImageLoader::NetworkImageLoader(QNetworkAccessManager* manager, QObject* parent)
    : QObject(parent), d(new Private)
{
    d->q = this;
    d->manager = manager ? manager : new QNetworkAccessManager(this);
}

NetworkImageLoader::~NetworkImageLoader()
{
    for (const auto& download : qAsConst(d->downloads))
        Private::Abort(*download);
    d->downloads.clear();
    delete d;
    d = nullptr;
}

NetworkImageLoader* NetworkImageLoader::Instance()
{
    QCoreApplication* application = QCoreApplication::instance();
    if (!application || QThread::currentThread() != application->thread()) {
        QTH_LOG_WARNING("NetworkImageLoader::Instance: needs the application object and its thread");
        return nullptr;
    }
    if (!g_instance) {
        g_instance = new NetworkImageLoader(nullptr, application);
        g_instance->SetDiskCacheDirectory(QStandardPaths::writableLocation(QStandardPaths::CacheLocation)
                                          + QStringLiteral("/images"));
    }
    return g_instance;
}

QNetworkAccessManager* NetworkImageLoader::NetworkAccessManager() const { return d->manager; }

void NetworkImageLoader::Load(const QUrl& url, const QSize& logicalSize, qreal devicePixelRatio, QObject* receiver,
                              Callback callback)
{
    if (!receiver || !callback) {
        QTH_LOG_WARNING("NetworkImageLoader::Load: no %s for %s", receiver ? "callback" : "receiver",
                        qPrintable(url.toString()));
        return;
    }
    if (!url.isValid() || url.isRelative()) {
        QTH_LOG_WARNING("NetworkImageLoader::Load: \"%s\" is not a URL to load", qPrintable(url.toString()));
        return;
    }
    const bool negative = logicalSize != QSize() && (logicalSize.width() < 0 || logicalSize.height() < 0);
    if (negative || !(devicePixelRatio > 0)) {
        QTH_LOG_WARNING("NetworkImageLoader::Load: size %dx%d at ratio %g cannot be asked for", logicalSize.width(),
                        logicalSize.height(), devicePixelRatio);
        return;
    }
    const QSize bounds = DeviceBounds(logicalSize, devicePixelRatio);
    const QString key = CacheKey(url, bounds, devicePixelRatio);
    const QImage cached = d->memory.Find(key);
    if (!cached.isNull()) {
        callback(cached, QString());
        return;
    }
    const auto failure = d->failures.constFind(url);
    if (failure != d->failures.constEnd()) {
        if (QDateTime::currentMSecsSinceEpoch() < failure.value().second) {
            callback(QImage(), failure.value().first);
            return;
        }
        d->failures.remove(url);
    }
    std::shared_ptr<Download>& download = d->downloads[url];
    const bool start = !download;
    if (start) {
        download = std::make_shared<Download>();
        download->id = d->nextId++;
        download->url = download->current = url;
        download->timeout->setSingleShot(true);
        download->retry->setSingleShot(true);
        Download* raw = download.get();
        connect(download->timeout, &QTimer::timeout, this, [raw] {
            raw->timedOut = true;
            if (raw->reply)
                raw->reply->abort();
        });
        const QUrl key = url;
        connect(download->retry, &QTimer::timeout, this, [this, key] {
            if (auto current = d->downloads.value(key))
                d->Start(current);
        });
    }
    download->waiters << Waiter{receiver, std::move(callback), bounds, devicePixelRatio, key};
    if (!d->watched.contains(receiver)) {
        d->watched.insert(receiver);
        connect(receiver, &QObject::destroyed, this, [this, receiver] {
            d->watched.remove(receiver);
            d->Sweep();
        });
    }
    if (start) {
        const std::shared_ptr<Download> starting = download; // the hash's entry may go inside Start()
        d->Start(starting);
    }
}

qint64 NetworkImageLoader::GetMemoryCacheLimit() const { return d->memory.Limit(); }

void NetworkImageLoader::SetMemoryCacheLimit(qint64 bytes) { d->memory.SetLimit(bytes); }

qint64 NetworkImageLoader::MemoryCacheSize() const { return d->memory.Size(); }

void NetworkImageLoader::ClearMemoryCache() { d->memory.Clear(); }

QString NetworkImageLoader::GetDiskCacheDirectory() const { return d->diskDirectory; }

void NetworkImageLoader::SetDiskCacheDirectory(const QString& directory)
{
    if (d->diskDirectory == directory)
        return;
    d->diskDirectory = directory;
    d->ApplyDiskCache();
}

qint64 NetworkImageLoader::GetDiskCacheLimit() const { return d->diskLimit; }

void NetworkImageLoader::SetDiskCacheLimit(qint64 bytes)
{
    d->diskLimit = qMax<qint64>(0, bytes);
    if (d->diskCache)
        d->diskCache->setMaximumCacheSize(d->diskLimit);
}

qint64 NetworkImageLoader::GetMaxPixelCount() const { return d->maxPixels; }
void NetworkImageLoader::SetMaxPixelCount(qint64 pixels) { d->maxPixels = qMax<qint64>(1, pixels); }
int NetworkImageLoader::GetMaxRedirects() const { return d->maxRedirects; }
void NetworkImageLoader::SetMaxRedirects(int redirects) { d->maxRedirects = qMax(0, redirects); }
int NetworkImageLoader::GetRetryCount() const { return d->retryCount; }
void NetworkImageLoader::SetRetryCount(int retries) { d->retryCount = qMax(0, retries); }
int NetworkImageLoader::GetRetryDelay() const { return d->retryDelay; }
void NetworkImageLoader::SetRetryDelay(int milliseconds) { d->retryDelay = qMax(0, milliseconds); }
int NetworkImageLoader::GetTimeout() const { return d->timeout; }
void NetworkImageLoader::SetTimeout(int milliseconds) { d->timeout = qMax(1, milliseconds); }
int NetworkImageLoader::GetFailureMemory() const { return d->failureMemory; }
void NetworkImageLoader::SetFailureMemory(int milliseconds) { d->failureMemory = qMax(0, milliseconds); }
int NetworkImageLoader::PendingDownloads() const { return d->downloads.size(); }

} // namespace OrvantaQT
