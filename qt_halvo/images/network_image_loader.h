#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtCore/QUrl>
#include <QtGui/QImage>

#include <functional>

class QNetworkAccessManager;

namespace OrvantaQT {

// Loads pictures over the network for widgets, as Qt Quick's image cache does for QML:
// - requests for the same URL at the same time share one download;
// - decoded pictures are kept in a memory cache bounded in bytes (least recently used out
//   first), keyed by URL, size and device pixel ratio; bodies are kept in a
//   QNetworkDiskCache, which honours the server's caching headers and revalidates with
//   ETag and Last-Modified;
// - bodies are decoded off the GUI thread (RunAsync) at the size asked for, never larger,
//   with the EXIF orientation applied;
// - 4xx answers are remembered for a while and not asked again at once; 5xx answers and
//   time-outs are retried with a growing delay; redirects are followed up to a limit;
// - a body that is not a picture, is cut short, or has more pixels than allowed gives an
//   error and one log line.
// A receiver destroyed before its picture comes is not called back, and a download that
// nobody waits for any more is aborted.
class QT_HALVO_EXPORT NetworkImageLoader : public QObject
{
    Q_OBJECT

public:
    // The picture at the asked size (its devicePixelRatio set), or a null image and why.
    using Callback = std::function<void(const QImage& image, const QString& error)>;

    // With the host's own manager (not taken over), or one of its own when null.
    explicit NetworkImageLoader(QNetworkAccessManager* manager = nullptr, QObject* parent = nullptr);
    ~NetworkImageLoader() override;

    // The application's loader, made on first use on the GUI thread; gone with the
    // application object.
    static NetworkImageLoader* Instance();

    QNetworkAccessManager* NetworkAccessManager() const;

    // The picture at url, fitted into logicalSize times devicePixelRatio device pixels
    // (aspect ratio kept; an empty size: as large as it comes). The callback runs on the GUI
    // thread, once, while receiver lives; from the memory cache it runs before Load()
    // returns. A null receiver or callback, or an invalid URL, is logged and ignored.
    void Load(const QUrl& url, const QSize& logicalSize, qreal devicePixelRatio, QObject* receiver, Callback callback);

    // Bytes of decoded pictures kept in memory; 64 MiB by default. 0 keeps none.
    qint64 GetMemoryCacheLimit() const;
    void SetMemoryCacheLimit(qint64 bytes);
    qint64 MemoryCacheSize() const;
    void ClearMemoryCache();

    // The folder of the disk cache; empty (the default for a loader of its own manager
    // without a cache) keeps no bodies on disk. Instance() uses
    // QStandardPaths::CacheLocation + "/images". Ignored when the host's manager has its
    // own cache.
    QString GetDiskCacheDirectory() const;
    void SetDiskCacheDirectory(const QString& directory);
    qint64 GetDiskCacheLimit() const;
    void SetDiskCacheLimit(qint64 bytes);

    // The most pixels (width times height) a source picture may have; 64 megapixels by
    // default. A larger one is refused before it is decoded, and a body of more than four
    // bytes a pixel (and 1 MiB) is not downloaded to the end.
    qint64 GetMaxPixelCount() const;
    void SetMaxPixelCount(qint64 pixels);

    // Redirects followed per request; 5 by default.
    int GetMaxRedirects() const;
    void SetMaxRedirects(int redirects);

    // Retries after 5xx answers and time-outs; 3 by default, the first after
    // GetRetryDelay() ms and each later one after twice the one before.
    int GetRetryCount() const;
    void SetRetryCount(int retries);
    int GetRetryDelay() const;
    void SetRetryDelay(int milliseconds);

    // A request that has had no data for this long is a time-out; 30000 ms by default.
    int GetTimeout() const;
    void SetTimeout(int milliseconds);

    // How long a 4xx answer is given again without asking; 60000 ms by default.
    int GetFailureMemory() const;
    void SetFailureMemory(int milliseconds);

    // Downloads under way (each shared by all who wait for its URL).
    int PendingDownloads() const;

private:
    struct Private;
    Private* d;
};

} // namespace OrvantaQT
