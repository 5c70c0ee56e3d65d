#include <qt_halvo/widgets/text/link_label.h>

#include <QtGui/QDesktopServices>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>

namespace OrvantaQT {

namespace {

constexpr int kDriveLength = 3;

} // namespace

QString ElidePath(const QString& path, const QFontMetrics& metrics, int width)
{
    if (path.isEmpty())
        return QString();
    if (metrics.horizontalAdvance(path) <= width)
        return path;
    const QString prefix = path.left(kDriveLength);
    const int room = width - metrics.horizontalAdvance(prefix);
    if (room < 1)
        return prefix;
    return prefix + metrics.elidedText(path.mid(kDriveLength), Qt::ElideLeft, room, 0);
}

LinkLabel::LinkLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    SetLinkColor(m_linkColor);
}

LinkLabel::~LinkLabel() = default;

QColor LinkLabel::GetLinkColor() const
{
    return m_linkColor;
}

void LinkLabel::SetLinkColor(const QColor& color)
{
    m_linkColor = color;
    SetForeground(color);
}

bool LinkLabel::GetHoverUnderlineFlag() const
{
    return m_hoverUnderline;
}

void LinkLabel::SetHoverUnderlineFlag(bool underline)
{
    m_hoverUnderline = underline;
}

QString LinkLabel::GetHref() const
{
    return m_href.toString();
}

void LinkLabel::SetHref(const QString& href)
{
    m_href = QUrl(href);
}

QString LinkLabel::GetPath() const
{
    return m_path;
}

void LinkLabel::SetPath(const QString& path)
{
    m_path = path;
    ShowPath();
}

QString LinkLabel::GetCommand() const
{
    return m_command;
}

void LinkLabel::SetCommand(const QString& command)
{
    m_command = command;
}

QSize LinkLabel::sizeHint() const
{
    if (m_path.isEmpty())
        return QLabel::sizeHint();
    return QSize(fontMetrics().horizontalAdvance(m_path), fontMetrics().height());
}

QSize LinkLabel::minimumSizeHint() const
{
    if (m_path.isEmpty())
        return QLabel::minimumSizeHint();
    const QFontMetrics metrics = fontMetrics();
    return metrics.size(Qt::TextSingleLine, ElidePath(m_path, metrics, 0));
}

bool LinkLabel::event(QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            OnClicked();
            event->accept();
            return true;
        }
    }
    return QLabel::event(event);
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        OnClicked();
}

void LinkLabel::enterEvent(QEvent* event)
{
    if (isEnabled()) {
        setCursor(Qt::PointingHandCursor);
        if (m_hoverUnderline)
            SetHoverFont();
    }
    QLabel::enterEvent(event);
}

void LinkLabel::leaveEvent(QEvent* event)
{
    if (isEnabled()) {
        unsetCursor();
        if (m_hoverUnderline)
            SetNormalFont();
    }
    QLabel::leaveEvent(event);
}

void LinkLabel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange)
        UpdatePalette();
    QLabel::changeEvent(event);
}

void LinkLabel::showEvent(QShowEvent* event)
{
    UpdatePalette();
    QWidget::showEvent(event);
}

void LinkLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    if (!m_path.isEmpty())
        ShowPath();
}

void LinkLabel::OnClicked()
{
    if (!m_href.isEmpty()) {
        QDesktopServices::openUrl(m_href);
        return;
    }
    Q_EMIT Clicked();
    if (!m_command.isEmpty())
        Q_EMIT CommandClicked(m_command);
}

void LinkLabel::SetHoverFont()
{
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
}

void LinkLabel::SetNormalFont()
{
    QFont plain = font();
    plain.setUnderline(false);
    setFont(plain);
}

void LinkLabel::UpdatePalette()
{
    SetForeground(isEnabled() ? m_linkColor : QColor(Qt::gray));
}

void LinkLabel::SetForeground(const QColor& color)
{
    QPalette palette = this->palette();
    palette.setBrush(QPalette::All, foregroundRole(), color);
    setPalette(palette);
}

void LinkLabel::ShowPath()
{
    setText(ElidePath(m_path, fontMetrics(), width()));
}

} // namespace OrvantaQT
