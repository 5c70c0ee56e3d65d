#include <qt_halvo/layouts/info_overlay_widget.h>

#include <qt_halvo/animation/busy_indicator_ring.h>
#include <qt_halvo/layouts/overlay_conroller.h>
#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QVBoxLayout>

namespace OrvantaQT {

namespace {

// Room kept between the overlay and the container's sides.
constexpr int kSideMargin = 16;
// Lines longer than this many average characters are wrapped.
constexpr int kLineCharacters = 48;

// Texts span the overlay, so that their wrapped height is the one the overlay is sized
// for, and centre their lines themselves; the other parts are centred at their own width.
template <typename Part>
Part* AddPart(Part* part, const char* role, QVBoxLayout* layout, Qt::Alignment alignment = Qt::AlignHCenter)
{
    NameChild(part, "InfoOverlayWidget", role);
    part->setVisible(false);
    layout->addWidget(part, 0, alignment);
    return part;
}

} // namespace

InfoOverlayWidget::InfoOverlayWidget(QWidget* container)
    : QWidget(container)
    , m_container(container)
{
    auto* layout = new QVBoxLayout(this);
    m_iconLabel = AddPart(new QLabel(this), "Icon", layout);
    m_title = AddPart(new QLabel(this), "Title", layout, Qt::Alignment());
    m_text = AddPart(new QLabel(this), "Text", layout, Qt::Alignment());
    m_busy = AddPart(new BusyIndicatorRing(this), "BusyIndicator", layout);
    m_action = AddPart(new QPushButton(this), "ActionButton", layout);
    for (QLabel* label : {m_iconLabel, m_title, m_text}) {
        label->setAlignment(Qt::AlignCenter);
        label->setTextFormat(Qt::PlainText);
    }
    m_text->setWordWrap(true);
    QFont titleFont = m_title->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.2);
    m_title->setFont(titleFont);
    // Everything but the button lets the mouse through to the overlay, and from there the
    // events, which the overlay does not take, go on to the container.
    for (QWidget* part : {static_cast<QWidget*>(m_iconLabel), static_cast<QWidget*>(m_title),
                          static_cast<QWidget*>(m_text), static_cast<QWidget*>(m_busy)})
        part->setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(m_action, &QPushButton::clicked, this, &InfoOverlayWidget::ActionTriggered);
    const int large = style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, this);
    m_iconSize = QSize(2 * large, 2 * large);

    if (!container) {
        QTH_LOG_ERROR("InfoOverlayWidget: no container to show the message over; it is not placed");
        return;
    }
    container->installEventFilter(this);
    new OverlayConroller(this, Qt::AlignCenter, true);
    FitToContainer();
}

InfoOverlayWidget::~InfoOverlayWidget() = default;

QIcon InfoOverlayWidget::GetIcon() const
{
    return m_icon;
}

void InfoOverlayWidget::SetIcon(const QIcon& icon)
{
    m_icon = icon;
    UpdateIcon();
}

QSize InfoOverlayWidget::GetIconSize() const
{
    return m_iconSize;
}

void InfoOverlayWidget::SetIconSize(const QSize& size)
{
    if (size == m_iconSize)
        return;
    if (size.isEmpty()) {
        QTH_LOG_WARNING("InfoOverlayWidget: an icon size of %d x %d is ignored", size.width(), size.height());
        return;
    }
    m_iconSize = size;
    UpdateIcon();
}

QString InfoOverlayWidget::GetTitle() const
{
    return m_title->text();
}

void InfoOverlayWidget::SetTitle(const QString& title)
{
    if (title == m_title->text())
        return;
    m_title->setText(title);
    m_title->setVisible(!title.isEmpty());
    FitToContainer();
}

QString InfoOverlayWidget::GetText() const
{
    return m_text->text();
}

void InfoOverlayWidget::SetText(const QString& text)
{
    if (text == m_text->text())
        return;
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
    FitToContainer();
}

bool InfoOverlayWidget::IsBusy() const
{
    return !m_busy->isHidden();
}

void InfoOverlayWidget::SetBusy(bool busy)
{
    if (busy == IsBusy())
        return;
    m_busy->setVisible(busy);
    FitToContainer();
}

QString InfoOverlayWidget::GetActionText() const
{
    return m_action->text();
}

void InfoOverlayWidget::SetActionText(const QString& text)
{
    if (text == m_action->text())
        return;
    m_action->setText(text);
    m_action->setVisible(!text.isEmpty());
    FitToContainer();
}

void InfoOverlayWidget::SetPreset(Preset preset, const QString& text)
{
    switch (preset) {
    case Preset::NoResults:
        SetIcon(style()->standardIcon(QStyle::SP_MessageBoxInformation, nullptr, this));
        SetTitle(tr("No results"));
        SetBusy(false);
        SetActionText(QString());
        break;
    case Preset::Loading:
        SetIcon(QIcon());
        SetTitle(tr("Loading…"));
        SetBusy(true);
        SetActionText(QString());
        break;
    case Preset::ConnectionLost:
        SetIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this));
        SetTitle(tr("Connection lost"));
        SetBusy(false);
        SetActionText(tr("Retry"));
        break;
    }
    SetText(text);
}

BusyIndicatorRing* InfoOverlayWidget::BusyIndicator() const
{
    return m_busy;
}

QPushButton* InfoOverlayWidget::ActionButton() const
{
    return m_action;
}

void InfoOverlayWidget::UpdateIcon()
{
    m_iconLabel->setPixmap(m_icon.isNull() ? QPixmap() : m_icon.pixmap(m_iconSize));
    m_iconLabel->setVisible(!m_icon.isNull());
    FitToContainer();
}

void InfoOverlayWidget::FitToContainer()
{
    if (!m_container)
        return;
    QLayout* own = layout();
    own->activate();
    const int room = qMax(0, m_container->width() - 2 * kSideMargin);
    const int widest = qMax(own->sizeHint().width(), fontMetrics().averageCharWidth() * kLineCharacters);
    const int width = qMin(room, m_text->isHidden() ? own->sizeHint().width() : widest);
    const int height = own->hasHeightForWidth() ? own->totalHeightForWidth(width) : own->sizeHint().height();
    // The controller places the overlay on its resize.
    resize(width, qMin(height, m_container->height()));
}

bool InfoOverlayWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_container && event->type() == QEvent::Resize)
        FitToContainer();
    return QWidget::eventFilter(watched, event);
}

void InfoOverlayWidget::paintEvent(QPaintEvent*)
{
    // Only a style sheet's background; none by default.
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void InfoOverlayWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        FitToContainer();
}

} // namespace OrvantaQT
