#include <qt_halvo/images/file_preview_provider.h>

#include "image_decoder_p.h"
#include "image_memory_cache_p.h"
#include "preview_makers_p.h"
#include "thumbnail_cache_p.h"

#include <qt_halvo/application/run_async.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>
#include <QtCore/QVector>
#include <QtGui/QIcon>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

#include <memory>

namespace OrvantaQT {

namespace {

struct Request
{
    QString path;
    QSize pixels;
    qreal ratio = 1.0;
    QString memoryKey;
    QPointer<QObject> receiver;
    FilePreviewProvider::Callback callback;
};

// The MIME type's icon from the theme, or the style's file icon, which always exists.
QImage FallbackIcon(const PreviewWork& work, const QSize& pixels, qreal ratio)
{
    QIcon icon = QIcon::fromTheme(work.iconName);
    if (icon.isNull())
        icon = QIcon::fromTheme(work.genericIconName);
    if (icon.isNull() && qobject_cast<QApplication*>(QCoreApplication::instance()))
        icon = QApplication::style()->standardIcon(QStyle::SP_FileIcon);
    QImage image = ShrinkInto(icon.pixmap(pixels).toImage(), pixels);
    image.setDevicePixelRatio(ratio);
    return image;
}

// The memory cache's key: the file as it is now, at this size. Empty for what is not a
// file, which is never kept.
QString MemoryKey(const QString& path, const QSize& pixels, qreal ratio)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return QString();
    return QStringLiteral("%1 %2x%3 %4 %5 %6")
        .arg(info.absoluteFilePath())
        .arg(pixels.width())
        .arg(pixels.height())
        .arg(ratio)
        .arg(info.lastModified().toMSecsSinceEpoch())
        .arg(info.size());
}

} // namespace

struct FilePreviewProvider::Private
{
    bool cacheSet = false;
    QString cacheDirectory;
    int maxWorkers = qMax(1, QThreadPool::globalInstance()->maxThreadCount() / 2);
    int running = 0;
    ImageMemoryCache memory{32 * 1024 * 1024};
    QVector<Request> waiting;
    // A cache that cannot be written is told once, not for every file.
    bool cacheProblemLogged = false;

    void StartWaiting(FilePreviewProvider* owner);
};

FilePreviewProvider::FilePreviewProvider(QObject* parent) : QObject(parent), d(new Private) {}

FilePreviewProvider::~FilePreviewProvider()
{
    delete d;
}

FilePreviewProvider* FilePreviewProvider::Instance()
{
    static QPointer<FilePreviewProvider> instance;
    if (!instance)
        instance = new FilePreviewProvider(QCoreApplication::instance());
    return instance;
}

void FilePreviewProvider::RequestPreview(const QString& path, const QSize& size, qreal devicePixelRatio,
                                         QObject* receiver, Callback callback)
{
    if (!receiver || !callback) {
        QTH_LOG_WARNING("FilePreviewProvider: a preview of \"%s\" asked for without a %s; ignored",
                        qUtf8Printable(path), receiver ? "callback" : "receiver");
        return;
    }
    if (size.isEmpty() || !(devicePixelRatio > 0)) {
        QTH_LOG_WARNING("FilePreviewProvider: a preview of \"%s\" asked for at %d x %d pixels, ratio %g; nothing to draw",
                        qUtf8Printable(path), size.width(), size.height(), double(devicePixelRatio));
        // The answer still comes later, as every answer does.
        QTimer::singleShot(0, receiver, [callback] { callback(QImage(), tr("No size to draw a preview at")); });
        return;
    }
    const QSize pixels(qMax(1, qRound(size.width() * devicePixelRatio)), qMax(1, qRound(size.height() * devicePixelRatio)));
    const QString key = MemoryKey(path, pixels, devicePixelRatio);
    const QImage kept = key.isEmpty() ? QImage() : d->memory.Find(key);
    if (!kept.isNull()) {
        QMetaObject::invokeMethod(receiver, [kept, callback] { callback(kept, QString()); }, Qt::QueuedConnection);
        return;
    }
    d->waiting.append(Request{path, pixels, devicePixelRatio, key, receiver, std::move(callback)});
    d->StartWaiting(this);
}

void FilePreviewProvider::Private::StartWaiting(FilePreviewProvider* owner)
{
    while (running < maxWorkers && !waiting.isEmpty()) {
        // The latest first: it is what a scrolled view shows now.
        Request request = waiting.takeLast();
        if (!request.receiver)
            continue;
        ++running;
        auto work = std::make_shared<PreviewWork>();
        const QString root = owner->GetCacheDirectory();
        RunAsync([work, request, root] { *work = MakePreview(request.path, request.pixels, root); },
                 [this, owner, work, request] {
                     --running;
                     if (!work->cacheProblem.isEmpty() && !cacheProblemLogged) {
                         cacheProblemLogged = true;
                         QTH_LOG_WARNING("FilePreviewProvider: thumbnails are not kept: %s",
                                         qUtf8Printable(work->cacheProblem));
                     }
                     if (work->badInput)
                         QTH_LOG_WARNING("FilePreviewProvider: no preview of \"%s\": %s", qUtf8Printable(request.path),
                                         qUtf8Printable(work->error));
                     QImage image = work->image;
                     if (image.isNull())
                         image = FallbackIcon(*work, request.pixels, request.ratio);
                     else
                         image.setDevicePixelRatio(request.ratio);
                     if (work->error.isEmpty() && !request.memoryKey.isEmpty())
                         memory.Insert(request.memoryKey, image);
                     if (request.receiver)
                         request.callback(image, work->error);
                     StartWaiting(owner);
                 },
                 owner, owner);
    }
}

QString FilePreviewProvider::GetCacheDirectory() const
{
    return d->cacheSet ? d->cacheDirectory : ThumbnailCache::DefaultRoot();
}

void FilePreviewProvider::SetCacheDirectory(const QString& directory)
{
    if (d->cacheSet && directory == d->cacheDirectory)
        return;
    d->cacheSet = true;
    d->cacheDirectory = directory;
    d->cacheProblemLogged = false;
}

qint64 FilePreviewProvider::GetMemoryCacheLimit() const { return d->memory.Limit(); }

void FilePreviewProvider::SetMemoryCacheLimit(qint64 bytes) { d->memory.SetLimit(bytes); }

qint64 FilePreviewProvider::MemoryCacheSize() const { return d->memory.Size(); }

void FilePreviewProvider::ClearMemoryCache() { d->memory.Clear(); }

int FilePreviewProvider::GetMaxWorkers() const
{
    return d->maxWorkers;
}

void FilePreviewProvider::SetMaxWorkers(int workers)
{
    if (workers < 1) {
        QTH_LOG_WARNING("FilePreviewProvider: %d workers asked for; at least 1 is kept", workers);
        workers = 1;
    }
    if (workers == d->maxWorkers)
        return;
    d->maxWorkers = workers;
    d->StartWaiting(this);
}

int FilePreviewProvider::PendingRequests() const
{
    return int(std::count_if(d->waiting.begin(), d->waiting.end(),
                             [](const Request& request) { return !request.receiver.isNull(); }));
}

bool FilePreviewProvider::CanPreviewPdf()
{
#ifdef QT_HALVO_HAVE_POPPLER
    return true;
#else
    return false;
#endif
}

} // namespace OrvantaQT
