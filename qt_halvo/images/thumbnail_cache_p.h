// The freedesktop.org thumbnail cache shared by file managers: one PNG per file and size,
// named by the MD5 of the file's URI, that records which file and which version of it
// it shows. Safe on any thread.
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <QtCore/QString>
#include <QtGui/QImage>

namespace OrvantaQT::ThumbnailCache {

// The cache's root by default: $XDG_CACHE_HOME/thumbnails, or ~/.cache/thumbnails.
QT_HALVO_AUTOTEST_EXPORT QString DefaultRoot();

// The edge of the smallest cache size covering `pixels` (128, 256, 512 or 1024) and its
// folder; 0 when none does.
QT_HALVO_AUTOTEST_EXPORT int SizeFor(int pixels, QString* folder = nullptr);

// The file's URI as thumbnails record it, and the cache's file name for it.
QT_HALVO_AUTOTEST_EXPORT QByteArray UriOf(const QString& path);
QT_HALVO_AUTOTEST_EXPORT QString FileNameOf(const QString& path);

// Where failures of this library are recorded, under the root.
QT_HALVO_AUTOTEST_EXPORT QString FailFolder();

// What a thumbnail says of the file it was made from.
struct Source
{
    QByteArray uri;
    qint64 mtime = 0;  // seconds since the epoch
    qint64 size = 0;
    QString mime;
};

// The thumbnail in file when it was made from this version of the file; null otherwise.
QImage Read(const QString& file, const Source& source);

// Writes image as file (folders made 0700, the file 0600, through a temporary file in the
// same folder so readers never see half of it); false with why on failure.
bool Write(const QString& file, const QImage& image, const Source& source, QString* error);

} // namespace OrvantaQT::ThumbnailCache
