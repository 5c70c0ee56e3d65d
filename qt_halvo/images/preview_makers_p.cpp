#include "preview_makers_p.h"

#include "image_decoder_p.h"
#include "thumbnail_cache_p.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMimeDatabase>
#include <QtCore/QMutex>
#include <QtGui/QImageReader>
#include <QtGui/QPainter>

#ifdef QT_HALVO_HAVE_POPPLER
#include <poppler-qt5.h>
#endif

#include <memory>

namespace OrvantaQT {

namespace {

#ifdef QT_HALVO_HAVE_POPPLER
constexpr bool kPdfBuiltIn = true;
#else
constexpr bool kPdfBuiltIn = false;
#endif

enum class Kind { Picture, Svg, Text, Pdf, Icon };

QMutex hookMutex;
std::function<void(const QString&)> workHook;

Kind KindOf(const QMimeType& mime)
{
    // SVG is XML and so text: it is asked about first.
    if (mime.inherits(QStringLiteral("image/svg+xml")))
        return Kind::Svg;
    static const QList<QByteArray> pictures = QImageReader::supportedMimeTypes();
    if (pictures.contains(mime.name().toLatin1()))
        return Kind::Picture;
    for (const QString& alias : mime.aliases()) {
        if (pictures.contains(alias.toLatin1()))
            return Kind::Picture;
    }
    if (mime.inherits(QStringLiteral("application/pdf")))
        return Kind::Pdf;
    if (mime.inherits(QStringLiteral("text/plain")))
        return Kind::Text;
    return Kind::Icon;
}

QImage MakePicture(const QString& path, const QSize& bounds, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return {};
    }
    DecodedImage decoded = DecodeImage(&file, bounds, kMaxPreviewPixels);
    *error = decoded.error;
    return decoded.image;
}

// Vectors are drawn at the size they fill, larger or smaller than their own.
QImage MakeSvg(const QString& path, const QSize& bounds, QString* error)
{
    QImageReader reader(path, "svg");
    const QSize own = reader.size();
    if (!own.isEmpty())
        reader.setScaledSize(own.scaled(bounds, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    QImage image = reader.read();
    if (image.isNull())
        *error = QStringLiteral("the drawing cannot be read (%1)").arg(reader.errorString());
    return image;
}

// The first lines on a portrait page, as file managers show text files.
QImage MakeText(const QString& path, const QSize& bounds, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return {};
    }
    const QString text = QString::fromUtf8(file.read(8192));
    if (file.error() != QFile::NoError) {
        *error = file.errorString();
        return {};
    }
    const QSize page = QSize(bounds.height() * 3 / 4, bounds.height()).scaled(bounds, Qt::KeepAspectRatio);
    QImage image(page.expandedTo(QSize(8, 8)), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(QColor(0x99, 0x99, 0x99));
    painter.drawRect(image.rect().adjusted(0, 0, -1, -1));
    QFont font(QStringLiteral("Monospace"));
    font.setStyleHint(QFont::TypeWriter);
    font.setPixelSize(qMax(3, image.height() / 24));
    painter.setFont(font);
    painter.setPen(Qt::black);
    const int margin = qMax(2, image.width() / 16);
    const int lineHeight = painter.fontMetrics().lineSpacing();
    int y = margin;
    for (const QStringRef& line : text.splitRef(QLatin1Char('\n'))) {
        if (y + lineHeight > image.height() - margin)
            break;
        painter.drawText(QRect(margin, y, image.width() - 2 * margin, lineHeight), Qt::AlignLeft | Qt::AlignTop,
                         line.toString().replace(QLatin1Char('\t'), QLatin1String("    ")));
        y += lineHeight;
    }
    return image;
}

QImage MakePdf(const QString& path, const QSize& bounds, QString* error)
{
#ifdef QT_HALVO_HAVE_POPPLER
    std::unique_ptr<Poppler::Document> document(Poppler::Document::load(path));
    if (!document || document->isLocked() || document->numPages() < 1) {
        *error = QStringLiteral("the PDF cannot be opened");
        return {};
    }
    std::unique_ptr<Poppler::Page> page(document->page(0));
    const QSizeF points = page ? page->pageSizeF() : QSizeF();
    if (points.isEmpty()) {
        *error = QStringLiteral("the PDF has no first page");
        return {};
    }
    document->setRenderHint(Poppler::Document::Antialiasing);
    document->setRenderHint(Poppler::Document::TextAntialiasing);
    const double dpi = 72.0 * qMin(bounds.width() / points.width(), bounds.height() / points.height());
    QImage image = page->renderToImage(dpi, dpi);
    if (image.isNull()) {
        *error = QStringLiteral("the PDF's first page cannot be drawn");
        return {};
    }
    // Rounding may give a pixel more than asked.
    return ShrinkInto(image, bounds);
#else
    Q_UNUSED(path)
    Q_UNUSED(bounds)
    *error = QStringLiteral("PDF previews are not built in");
    return {};
#endif
}

// What stands in the fail/ folder: the keys are what counts.
QImage EmptyMark()
{
    QImage mark(1, 1, QImage::Format_ARGB32_Premultiplied);
    mark.fill(Qt::transparent);
    return mark;
}

} // namespace

void SetPreviewWorkHook(std::function<void(const QString& path)> hook)
{
    QMutexLocker lock(&hookMutex);
    workHook = std::move(hook);
}

PreviewWork MakePreview(const QString& path, const QSize& pixels, const QString& cacheRoot)
{
    PreviewWork work;
    const QFileInfo before(path);
    // All that is known of the file before it is read, taken at once.
    const QDateTime mtimeBefore = before.lastModified();
    const qint64 sizeBefore = before.size();
    const bool exists = before.exists();
    const bool directory = before.isDir();
    const bool regular = before.isFile();
    const bool readable = before.isReadable();
    {
        QMutexLocker lock(&hookMutex);
        const auto hook = workHook;
        lock.unlock();
        if (hook)
            hook(path);
    }
    // The name is enough for the icon; the content is read only when no thumbnail exists.
    static const QMimeDatabase mimes;
    QMimeType mime = mimes.mimeTypeForFile(before, QMimeDatabase::MatchExtension);
    work.iconName = mime.iconName();
    work.genericIconName = mime.genericIconName();
    auto fail = [&work](const QString& error) {
        work.image = QImage();
        work.error = error;
        work.badInput = true;
        return work;
    };
    if (!exists)
        return fail(QStringLiteral("the file does not exist"));
    if (directory)
        return fail(QStringLiteral("it is a folder"));
    if (!regular)
        return fail(QStringLiteral("it is not a regular file"));
    if (!readable)
        return fail(QStringLiteral("the file cannot be read"));
    if (sizeBefore == 0)
        return fail(QStringLiteral("the file is empty"));

    // Thumbnails are kept at the cache's size and handed out scaled down.
    QString folder;
    const int edge = cacheRoot.isEmpty() ? 0 : ThumbnailCache::SizeFor(qMax(pixels.width(), pixels.height()), &folder);
    ThumbnailCache::Source source{ThumbnailCache::UriOf(path), mtimeBefore.toSecsSinceEpoch(), sizeBefore, QString()};
    const QString name = ThumbnailCache::FileNameOf(path);
    auto handOut = [&](const QImage& image) {
        work.image = ShrinkInto(image, pixels);
        return work;
    };
    if (edge > 0) {
        const QImage cached = ThumbnailCache::Read(cacheRoot + QLatin1Char('/') + folder + QLatin1Char('/') + name, source);
        if (!cached.isNull())
            return handOut(cached);
        if (!ThumbnailCache::Read(cacheRoot + QLatin1Char('/') + ThumbnailCache::FailFolder() + QLatin1Char('/') + name,
                                  source)
                 .isNull())
            return fail(QStringLiteral("no preview could be made of this version of the file before"));
    }

    mime = mimes.mimeTypeForFile(before);
    work.iconName = mime.iconName();
    work.genericIconName = mime.genericIconName();
    source.mime = mime.name();
    const Kind kind = KindOf(mime);
    if (kind == Kind::Icon || (kind == Kind::Pdf && !kPdfBuiltIn)) {
        work.error = QStringLiteral("no preview of %1 files").arg(mime.name());
        return work;
    }

    const QSize bounds = edge > 0 ? QSize(edge, edge) : pixels;
    QString error;
    QImage image;
    switch (kind) {
    case Kind::Picture: image = MakePicture(path, bounds, &error); break;
    case Kind::Svg: image = MakeSvg(path, bounds, &error); break;
    case Kind::Text: image = MakeText(path, bounds, &error); break;
    case Kind::Pdf: image = MakePdf(path, bounds, &error); break;
    case Kind::Icon: break;
    }

    // A file replaced or removed meanwhile gives no thumbnail of either version.
    const QFileInfo after(path);
    if (!after.exists() || after.lastModified() != mtimeBefore || after.size() != sizeBefore)
        return fail(QStringLiteral("the file changed while it was read"));

    if (edge > 0) {
        QString cacheError;
        const bool written = image.isNull()
            ? ThumbnailCache::Write(cacheRoot + QLatin1Char('/') + ThumbnailCache::FailFolder() + QLatin1Char('/') + name,
                                    EmptyMark(), source, &cacheError)
            : ThumbnailCache::Write(cacheRoot + QLatin1Char('/') + folder + QLatin1Char('/') + name, image, source,
                                    &cacheError);
        if (!written)
            work.cacheProblem = cacheError;
    }
    if (image.isNull())
        return fail(error);
    return handOut(image);
}

} // namespace OrvantaQT
