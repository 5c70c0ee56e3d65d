#include "thumbnail_cache_p.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QUrl>
#include <QtGui/QImageReader>
#include <QtGui/QImageWriter>

namespace OrvantaQT::ThumbnailCache {

namespace {

const char* const kUri = "Thumb::URI";
const char* const kMTime = "Thumb::MTime";
const char* const kSize = "Thumb::Size";
const char* const kMime = "Thumb::Mime";

// Makes each missing folder from root down, private to the user as thumbnails reveal
// what the user has seen.
bool MakeFolders(const QString& folder)
{
    const QString clean = QDir::cleanPath(folder);
    if (QFileInfo(clean).isDir())
        return true;
    const QString parent = QFileInfo(clean).path();
    if (parent == clean || !MakeFolders(parent))
        return false;
    if (!QDir().mkdir(clean))
        return QFileInfo(clean).isDir();
    return QFile::setPermissions(clean, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

QString DefaultRoot()
{
    QString base = qEnvironmentVariable("XDG_CACHE_HOME");
    // Relative values are to be ignored.
    if (base.isEmpty() || QDir::isRelativePath(base))
        base = QDir::homePath() + QLatin1String("/.cache");
    return base + QLatin1String("/thumbnails");
}

int SizeFor(int pixels, QString* folder)
{
    static const struct {
        int edge;
        const char* name;
    } kSizes[] = {{128, "normal"}, {256, "large"}, {512, "x-large"}, {1024, "xx-large"}};
    for (const auto& size : kSizes) {
        if (pixels <= size.edge) {
            if (folder)
                *folder = QLatin1String(size.name);
            return size.edge;
        }
    }
    return 0;
}

QByteArray UriOf(const QString& path)
{
    return QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toEncoded();
}

QString FileNameOf(const QString& path)
{
    return QString::fromLatin1(QCryptographicHash::hash(UriOf(path), QCryptographicHash::Md5).toHex())
        + QLatin1String(".png");
}

QString FailFolder()
{
    return QStringLiteral("fail/qt_halvo-" QT_HALVO_VERSION_TEXT);
}

QImage Read(const QString& file, const Source& source)
{
    if (!QFileInfo::exists(file))
        return {};
    // The reader's text() also cuts keys at their first colon; the image's keeps them whole.
    const QImage image(file, "png");
    if (image.text(QLatin1String(kUri)).toUtf8() != source.uri
        || image.text(QLatin1String(kMTime)) != QString::number(source.mtime))
        return {};
    // The size is optional, but where it is kept it catches a file rewritten within the
    // same second.
    const QString size = image.text(QLatin1String(kSize));
    if (!size.isEmpty() && size != QString::number(source.size))
        return {};
    return image;
}

bool Write(const QString& file, const QImage& image, const Source& source, QString* error)
{
    const QString folder = QFileInfo(file).path();
    if (!MakeFolders(folder)) {
        *error = QStringLiteral("cannot make the folder %1").arg(folder);
        return false;
    }
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly) || !out.setPermissions(QFile::ReadOwner | QFile::WriteOwner)) {
        *error = QStringLiteral("cannot write in %1: %2").arg(folder, out.errorString());
        return false;
    }
    // On the image, not the writer: the writer's text takes the first colon as the end of
    // the key, and these keys have two.
    QImage tagged = image;
    tagged.setText(QLatin1String(kUri), QString::fromUtf8(source.uri));
    tagged.setText(QLatin1String(kMTime), QString::number(source.mtime));
    tagged.setText(QLatin1String(kSize), QString::number(source.size));
    if (!source.mime.isEmpty())
        tagged.setText(QLatin1String(kMime), source.mime);
    tagged.setText(QStringLiteral("Software"), QStringLiteral("qt_halvo " QT_HALVO_VERSION_TEXT));
    QImageWriter writer(&out, "png");
    // Light compression: at the default level writing a thumbnail takes two thirds as long
    // as decoding a large photo at 1/8 scale; this level is three times faster, for files
    // a fifth larger.
    writer.setQuality(80);
    if (!writer.write(tagged) || !out.commit()) {
        *error = QStringLiteral("cannot write %1: %2").arg(file, writer.errorString());
        return false;
    }
    return true;
}

} // namespace OrvantaQT::ThumbnailCache
