// The work of one preview, on a worker thread: the cache looked up, the file's kind
// decided, its thumbnail drawn and the cache written.
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <functional>

namespace OrvantaQT {

struct PreviewWork
{
    QImage image;          // null: the GUI thread draws the type's icon
    QString error;         // why there is no preview
    bool badInput = false; // the error is worth a log line
    QString iconName;      // the MIME type's icons, for the fallback
    QString genericIconName;
    QString cacheProblem;  // the cache could not be written (the preview is still there)
};

// Thumbnails of at most this many source pixels are refused before decoding.
constexpr qint64 kMaxPreviewPixels = 16384LL * 16384LL;

// The preview of path fitted into `pixels`, using and filling the cache under cacheRoot
// (none when empty).
PreviewWork MakePreview(const QString& path, const QSize& pixels, const QString& cacheRoot);

// Tests only: called on the worker with the path once the file's time and size are
// taken, before its preview is made, so a test can hold workers busy or change the file.
QT_HALVO_AUTOTEST_EXPORT void SetPreviewWorkHook(std::function<void(const QString& path)> hook);

} // namespace OrvantaQT
