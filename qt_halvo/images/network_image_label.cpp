#include <qt_halvo/images/network_image_label.h>

#include "image_decoder_p.h"
#include "refit_timer_p.h"

#include <qt_halvo/animation/widget_animations_p.h>
#include <qt_halvo/images/network_image_loader.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtCore/QVariantAnimation>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

#include <memory>

namespace OrvantaQT {

namespace {

// Waits for one request: deleting it tells the loader nobody waits any more, and an
// answer for a request given up never reaches the label.
class Ticket : public QObject
{
public:
    using QObject::QObject;
};

} // namespace

struct NetworkImageLabel::Private
{
    NetworkImageLabel* q = nullptr;
    QUrl url;
    QPixmap placeholder;
    QPixmap errorPixmap;
    int fadeDuration = 250;
    QPointer<NetworkImageLoader> loader;
    bool loaderSet = false;
    State state = State::Empty;
    QImage image;
    QPixmap pixmap; // the image, drawn from
    QString error;
    QPointer<Ticket> ticket;
    QVariantAnimation* fade = nullptr;
    RefitTimer* refit = nullptr;

    NetworkImageLoader* Loader() const { return loaderSet ? loader.data() : NetworkImageLoader::Instance(); }

    void SetState(State next)
    {
        if (state == next)
            return;
        state = next;
        Q_EMIT q->StateChanged(state);
    }

    void Drop()
    {
        delete ticket;
        refit->Stop();
    }

    void Ask()
    {
        Drop();
        refit->Asked();
        NetworkImageLoader* current = Loader();
        if (!current) {
            Show(QImage(), NetworkImageLabel::tr("No loader for pictures"), false);
            return;
        }
        Ticket* asking = new Ticket(q);
        ticket = asking;
        // An answer from the memory cache comes before Load() returns: shown without a fade.
        auto waiting = std::make_shared<bool>(false);
        current->Load(url, q->size(), q->devicePixelRatioF(), asking, [this, asking, waiting](const QImage& picture, const QString& why) {
            if (ticket != asking)
                return;
            delete asking;
            Show(picture, why, *waiting);
        });
        *waiting = true;
    }

    void Show(const QImage& picture, const QString& why, bool mayFade)
    {
        if (picture.isNull()) {
            image = QImage();
            pixmap = QPixmap();
            error = why;
            fade->stop();
            SetState(State::Failed);
            q->update();
            return;
        }
        const bool first = state != State::Shown;
        image = picture;
        pixmap = QPixmap::fromImage(picture);
        error.clear();
        if (first && mayFade && fadeDuration > 0 && WidgetAnimationsEnabled(q) && q->isVisible()) {
            fade->setDuration(fadeDuration);
            fade->start();
        } else if (first) {
            fade->stop();
        }
        SetState(State::Shown);
        q->update();
    }

    qreal Opacity() const
    {
        return fade->state() != QAbstractAnimation::Stopped ? fade->currentValue().toReal() : 1.0;
    }

    void DrawCentred(QPainter& painter, const QPixmap& drawn) const
    {
        if (drawn.isNull())
            return;
        const QSize logical = (QSizeF(drawn.size()) / drawn.devicePixelRatio()).toSize();
        const QSize fitted = FitInto(logical, q->size());
        QRect target(QPoint(), fitted);
        target.moveCenter(q->rect().center());
        painter.drawPixmap(target, drawn);
    }
};

NetworkImageLabel::NetworkImageLabel(QWidget* parent) : QWidget(parent), d(new Private)
{
    d->q = this;
    d->fade = new QVariantAnimation(this);
    d->fade->setObjectName(QStringLiteral("Fade"));
    d->fade->setStartValue(0.0);
    d->fade->setEndValue(1.0);
    d->fade->setDuration(d->fadeDuration);
    connect(d->fade, &QVariantAnimation::valueChanged, this, [this] { update(); });
    connect(d->fade, &QVariantAnimation::finished, this, [this] { update(); });
    d->refit = new RefitTimer(this, [this] {
        if (d->state == State::Shown)
            d->Ask();
    });
}

NetworkImageLabel::~NetworkImageLabel()
{
    delete d;
    d = nullptr;
}

QUrl NetworkImageLabel::GetUrl() const { return d->url; }

void NetworkImageLabel::SetUrl(const QUrl& url)
{
    if (d->url == url)
        return;
    d->url = url;
    d->Drop();
    d->fade->stop();
    d->image = QImage();
    d->pixmap = QPixmap();
    d->error.clear();
    Q_EMIT UrlChanged(url);
    if (url.isEmpty()) {
        d->SetState(State::Empty);
    } else if (!url.isValid() || url.isRelative()) {
        QTH_LOG_WARNING("NetworkImageLabel: \"%s\" is not a URL to load", qPrintable(url.toString()));
        d->Show(QImage(), tr("Not a valid address"), false);
    } else {
        d->SetState(State::Loading);
        d->Ask();
    }
    updateGeometry();
    update();
}

QPixmap NetworkImageLabel::GetPlaceholder() const { return d->placeholder; }

void NetworkImageLabel::SetPlaceholder(const QPixmap& pixmap)
{
    if (d->placeholder.cacheKey() == pixmap.cacheKey())
        return;
    d->placeholder = pixmap;
    updateGeometry();
    update();
}

QPixmap NetworkImageLabel::GetErrorPixmap() const { return d->errorPixmap; }

void NetworkImageLabel::SetErrorPixmap(const QPixmap& pixmap)
{
    if (d->errorPixmap.cacheKey() == pixmap.cacheKey())
        return;
    d->errorPixmap = pixmap;
    update();
}

int NetworkImageLabel::GetFadeDuration() const { return d->fadeDuration; }

void NetworkImageLabel::SetFadeDuration(int milliseconds)
{
    milliseconds = qMax(0, milliseconds);
    if (d->fadeDuration == milliseconds)
        return;
    d->fadeDuration = milliseconds;
    if (milliseconds == 0 && d->fade->state() == QAbstractAnimation::Running) {
        d->fade->stop();
        update();
    }
}

NetworkImageLoader* NetworkImageLabel::GetLoader() const { return d->Loader(); }

void NetworkImageLabel::SetLoader(NetworkImageLoader* loader)
{
    if (d->loaderSet && d->loader == loader)
        return;
    d->loader = loader;
    d->loaderSet = loader != nullptr;
    if (d->state == State::Loading || d->state == State::Shown)
        d->Ask();
}

NetworkImageLabel::State NetworkImageLabel::GetState() const { return d->state; }
QImage NetworkImageLabel::Image() const { return d->image; }
QString NetworkImageLabel::ErrorString() const { return d->error; }

QSize NetworkImageLabel::sizeHint() const
{
    if (!d->image.isNull())
        return (QSizeF(d->image.size()) / d->image.devicePixelRatio()).toSize();
    if (!d->placeholder.isNull())
        return (QSizeF(d->placeholder.size()) / d->placeholder.devicePixelRatio()).toSize();
    return QSize(64, 64);
}

void NetworkImageLabel::paintEvent(QPaintEvent*)
{
    // A move to a screen of another ratio tells nothing but this paint.
    if (d->state == State::Shown && !d->refit->IsWaiting())
        d->refit->Check();
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    // A style sheet's background and border for the label, as for any QWidget subclass.
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    const qreal opacity = d->Opacity();
    switch (d->state) {
    case State::Empty:
        break;
    case State::Loading:
        d->DrawCentred(painter, d->placeholder);
        break;
    case State::Failed: {
        QPixmap error = d->errorPixmap;
        if (error.isNull()) {
            const int side = qMin(32, qMin(width(), height()));
            error = style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this).pixmap(QSize(side, side));
        }
        d->DrawCentred(painter, error);
        break;
    }
    case State::Shown:
        if (opacity < 1.0)
            d->DrawCentred(painter, d->placeholder);
        painter.setOpacity(opacity);
        d->DrawCentred(painter, d->pixmap);
        break;
    }
}

void NetworkImageLabel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (d->state == State::Shown)
        d->refit->Check();
}

} // namespace OrvantaQT
