#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtGui/QImage>

#include <functional>

namespace OrvantaQT {

// Thumbnails of files, as KDE's KIO previews make them and as the desktop's shared
// thumbnail cache (freedesktop.org) keeps them:
// - pictures in any format Qt reads (decoded at the size asked for, the EXIF orientation
//   applied), SVG, plain text (its first lines drawn on a page), PDF (the first page,
//   where the library was built with poppler-qt5) and anything else (the MIME type's icon
//   from the theme, or a generic one);
// - thumbnails are read from and written to the shared cache
//   ($XDG_CACHE_HOME/thumbnails/normal, large, x-large, xx-large: PNG with Thumb::URI and
//   Thumb::MTime), made again when the file's time changes; files that cannot be
//   previewed are recorded under fail/;
// - the previews last served are kept in memory, bounded in bytes, for the same file at
//   the same time and size;
// - the work runs on Qt's thread pool (RunAsync) with a bounded number of workers, the
//   latest request first (a scrolled view wants what it shows now), and requests whose
//   receiver is gone are dropped.
class QT_HALVO_EXPORT FilePreviewProvider : public QObject
{
    Q_OBJECT

public:
    // The preview (its devicePixelRatio set), or the fallback icon and why there is no
    // preview; a null image only for a request that cannot be served at all.
    using Callback = std::function<void(const QImage& preview, const QString& error)>;

    explicit FilePreviewProvider(QObject* parent = nullptr);
    ~FilePreviewProvider() override;

    // The application's provider, made on first use on the GUI thread.
    static FilePreviewProvider* Instance();

    // A preview of the file at path fitted into size times devicePixelRatio device
    // pixels. The callback runs on the GUI thread, once, while receiver lives. A null
    // receiver or callback is logged and ignored.
    void RequestPreview(const QString& path, const QSize& size, qreal devicePixelRatio, QObject* receiver, Callback callback);

    // The thumbnail cache's root; $XDG_CACHE_HOME/thumbnails (or ~/.cache/thumbnails) by
    // default. An empty one keeps no thumbnails.
    QString GetCacheDirectory() const;
    void SetCacheDirectory(const QString& directory);

    // Previews kept in memory, in bytes (32 MiB by default), least recently used out
    // first. A file whose time or size changed is not served from them.
    qint64 GetMemoryCacheLimit() const;
    void SetMemoryCacheLimit(qint64 bytes);
    qint64 MemoryCacheSize() const;
    void ClearMemoryCache();

    // Requests worked on at once; half the thread pool's threads, at least 1, by default.
    int GetMaxWorkers() const;
    void SetMaxWorkers(int workers);

    // Requests waiting for a worker.
    int PendingRequests() const;

    // Whether PDF files get their first page (the library was built with poppler-qt5).
    static bool CanPreviewPdf();

private:
    struct Private;
    Private* d;
};

} // namespace OrvantaQT
