#include <qt_halvo/images/file_preview_widget.h>

#include "refit_timer_p.h"

#include <qt_halvo/animation/busy_indicator_ring.h>
#include <qt_halvo/images/file_preview_provider.h>
#include <qt_halvo/utilities/child_names_p.h>

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

namespace OrvantaQT {

struct FilePreviewWidget::Private
{
    QString path;
    QPointer<FilePreviewProvider> provider;
    bool providerSet = false;
    BusyIndicatorRing* ring = nullptr;
    QImage preview;
    QString error;
    bool loading = false;
    // Answers to earlier requests are told apart from the current one by this.
    quint64 request = 0;
    RefitTimer* refit = nullptr;
};

FilePreviewWidget::FilePreviewWidget(QWidget* parent) : QWidget(parent), d(new Private)
{
    d->ring = NameChild(new BusyIndicatorRing(this), "FilePreviewWidget", "BusyIndicator");
    d->ring->SetRunning(false);
    d->ring->hide();
    // The preview shown stays, fitted, until the sharp one comes.
    d->refit = new RefitTimer(this, [this] { Ask(true); });
}

FilePreviewWidget::~FilePreviewWidget()
{
    delete d;
}

QString FilePreviewWidget::GetPath() const
{
    return d->path;
}

void FilePreviewWidget::SetPath(const QString& path)
{
    if (path == d->path)
        return;
    d->path = path;
    Ask();
    Q_EMIT PathChanged(path);
}

FilePreviewProvider* FilePreviewWidget::GetProvider() const
{
    return d->providerSet ? d->provider.data() : FilePreviewProvider::Instance();
}

void FilePreviewWidget::SetProvider(FilePreviewProvider* provider)
{
    if (d->providerSet && provider == d->provider)
        return;
    d->providerSet = provider != nullptr;
    d->provider = provider;
    Ask();
}

bool FilePreviewWidget::IsLoading() const
{
    return d->loading;
}

QImage FilePreviewWidget::Preview() const
{
    return d->preview;
}

QString FilePreviewWidget::ErrorString() const
{
    return d->error;
}

BusyIndicatorRing* FilePreviewWidget::BusyIndicator() const
{
    return d->ring;
}

QSize FilePreviewWidget::sizeHint() const
{
    return QSize(256, 256);
}

void FilePreviewWidget::Ask(bool keepShown)
{
    ++d->request;
    if (!keepShown)
        d->preview = QImage();
    d->error.clear();
    d->refit->Asked();
    FilePreviewProvider* provider = GetProvider();
    d->loading = !d->path.isEmpty() && !size().isEmpty() && provider;
    if (!d->loading)
        d->preview = QImage();
    const bool ring = d->loading && d->preview.isNull();
    d->ring->SetRunning(ring);
    d->ring->setVisible(ring);
    update();
    if (!d->loading)
        return;
    const quint64 request = d->request;
    provider->RequestPreview(d->path, size(), devicePixelRatioF(), this,
                             [this, request](const QImage& preview, const QString& error) {
                                 if (request != d->request)
                                     return;
                                 d->loading = false;
                                 d->preview = preview;
                                 d->error = error;
                                 d->ring->SetRunning(false);
                                 d->ring->hide();
                                 update();
                                 Q_EMIT PreviewShown();
                             });
}

void FilePreviewWidget::paintEvent(QPaintEvent*)
{
    // A move to a screen of another pixel ratio tells nothing but this paint.
    if (!d->path.isEmpty() && !d->refit->IsWaiting())
        d->refit->Check();
    QPainter painter(this);
    // A style sheet's background and border for the widget, as for any QWidget subclass.
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    if (d->preview.isNull())
        return;
    // Asked for at this size, the preview fits as it is; after a resize it is shrunk to
    // fit until the one for the new size comes.
    QSizeF shown = QSizeF(d->preview.size()) / d->preview.devicePixelRatio();
    if (shown.width() > width() || shown.height() > height()) {
        shown.scale(size(), Qt::KeepAspectRatio);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
    }
    QRectF target(QPointF(), shown);
    target.moveCenter(QRectF(rect()).center());
    painter.drawImage(target, d->preview);
}

void FilePreviewWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    QRect ring(QPoint(), d->ring->sizeHint().boundedTo(size()));
    ring.moveCenter(rect().center());
    d->ring->setGeometry(ring);
    if (d->path.isEmpty())
        return;
    // Nothing asked for yet (no size before): at once; otherwise once the resizing stops.
    if (d->refit->AskedSize().isEmpty())
        Ask();
    else
        d->refit->Check();
}

void FilePreviewWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    // Moved to a screen of another pixel ratio: the sharp preview is asked for.
    if (!d->path.isEmpty())
        d->refit->Check();
}

} // namespace OrvantaQT
