#include <qt_halvo/widgets/window/title_bar.h>

#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/widgets/window/frameless_window.h>

#include <QtCore/QEvent>
#include <QtCore/QtMath>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QToolButton>

namespace OrvantaQT {

namespace {

constexpr int kIconSize = 16;
constexpr int kMinimumHeight = 32;

QToolButton* CreateButton(QWidget* parent, const char* role, const QIcon& icon)
{
    auto* button = new QToolButton(parent);
    NameChild(button, "TitleBar", role);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setIcon(icon);
    button->setIconSize(QSize(kIconSize, kIconSize));
    button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    return button;
}

// The title as the window system shows it: each "[*]" that is not doubled stands for the
// mark of a modified window (where the style shows one), "[*][*]" for "[*]" itself.
QString ShownTitle(const QWidget* window)
{
    static const QString placeholder = QStringLiteral("[*]");
    QString title = window->windowTitle();
    const bool marked = window->isWindowModified()
        && window->style()->styleHint(QStyle::SH_TitleBar_ModifyNotification, nullptr, window);
    int index = title.indexOf(placeholder);
    while (index != -1) {
        index += placeholder.size();
        int count = 1;
        while (title.indexOf(placeholder, index) == index) {
            ++count;
            index += placeholder.size();
        }
        if (count % 2) {
            const int last = title.lastIndexOf(placeholder, index - 1);
            if (marked)
                title.replace(last, placeholder.size(), QStringLiteral("*"));
            else
                title.remove(last, placeholder.size());
            index = last;
        }
        index = title.indexOf(placeholder, index);
    }
    return title.replace(placeholder + placeholder, placeholder);
}

QIcon TitleBarIcon(const char* normal, const char* active = nullptr)
{
    QIcon icon(QString::fromLatin1(normal));
    if (active)
        icon.addFile(QString::fromLatin1(active), QSize(), QIcon::Active);
    return icon;
}

} // namespace

TitleBar::TitleBar(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_StyledBackground);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 0, 0, 0);
    layout->setSpacing(6);

    m_icon = new QLabel(this);
    NameChild(m_icon, "TitleBar", "Icon");
    m_icon->setFixedSize(kIconSize, kIconSize);
    layout->addWidget(m_icon);

    m_title = new QLabel(this);
    NameChild(m_title, "TitleBar", "Title");
    m_title->setTextFormat(Qt::PlainText);
    m_title->setMinimumWidth(0);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_title->installEventFilter(this);
    layout->addWidget(m_title, 1);

    m_hostWidgets = new QWidget(this);
    NameChild(m_hostWidgets, "TitleBar", "HostWidgets");
    m_hostLayout = new QHBoxLayout(m_hostWidgets);
    m_hostLayout->setContentsMargins(0, 0, 0, 0);
    m_hostLayout->setSpacing(6);
    m_hostWidgets->hide();
    m_hostWidgets->installEventFilter(this);
    layout->addWidget(m_hostWidgets);

    m_minimize = CreateButton(this, "MinimizeButton", TitleBarIcon(":/title_bar_minimize.svg"));
    m_minimize->setToolTip(tr("Minimize"));
    m_maximize = CreateButton(this, "MaximizeButton", QIcon());
    m_close = CreateButton(this, "CloseButton", TitleBarIcon(":/title_bar_close.svg", ":/title_bar_close_active.svg"));
    m_close->setToolTip(tr("Close"));
    layout->addWidget(m_minimize);
    layout->addWidget(m_maximize);
    layout->addWidget(m_close);
    connect(m_minimize, &QToolButton::clicked, this, &TitleBar::Minimize);
    connect(m_maximize, &QToolButton::clicked, this, &TitleBar::ToggleMaximized);
    connect(m_close, &QToolButton::clicked, this, &TitleBar::CloseWindow);

    WatchWindow();
    UpdateMaximizeButton();
}

TitleBar::~TitleBar() = default;

void TitleBar::AddWidget(QWidget* widget)
{
    if (!widget) {
        QTH_LOG_WARNING("TitleBar: no widget to add");
        return;
    }
    if (widget == this || widget->isAncestorOf(this)) {
        QTH_LOG_WARNING("TitleBar: the bar cannot hold itself or a widget it lies in");
        return;
    }
    m_hostLayout->addWidget(widget);
    widget->show();
    m_hostWidgets->show();
    updateGeometry();
}

bool TitleBar::RemoveWidget(QWidget* widget)
{
    if (!widget || widget->parentWidget() != m_hostWidgets)
        return false;
    m_hostLayout->removeWidget(widget);
    widget->hide();
    widget->setParent(nullptr);
    m_hostWidgets->setVisible(m_hostLayout->count() > 0);
    updateGeometry();
    return true;
}

QList<QWidget*> TitleBar::Widgets() const
{
    QList<QWidget*> widgets;
    for (int i = 0; i < m_hostLayout->count(); ++i) {
        if (QWidget* widget = m_hostLayout->itemAt(i)->widget())
            widgets << widget;
    }
    return widgets;
}

bool TitleBar::IsMinimizeButtonVisible() const
{
    return !m_minimize->isHidden();
}

void TitleBar::SetMinimizeButtonVisible(bool visible)
{
    m_minimize->setVisible(visible);
}

bool TitleBar::IsMaximizeButtonVisible() const
{
    return !m_maximize->isHidden();
}

void TitleBar::SetMaximizeButtonVisible(bool visible)
{
    m_maximize->setVisible(visible);
}

bool TitleBar::IsIconVisible() const
{
    return !m_icon->isHidden();
}

void TitleBar::SetIconVisible(bool visible)
{
    m_icon->setVisible(visible);
}

WindowHitRegions TitleBar::HitRegions() const
{
    WindowHitRegions regions;
    const QWidget* top = window();
    if (!isVisible() || top == this)
        return regions;
    regions.caption = QRect(mapTo(top, QPoint(0, 0)), size());
    for (const QWidget* control : {static_cast<const QWidget*>(m_minimize), static_cast<const QWidget*>(m_maximize),
                                   static_cast<const QWidget*>(m_close), static_cast<const QWidget*>(m_hostWidgets)}) {
        if (control->isVisible())
            regions.controls << QRect(control->mapTo(top, QPoint(0, 0)), control->size());
    }
    return regions;
}

QSize TitleBar::sizeHint() const
{
    QSize hint = QWidget::sizeHint();
    hint.setHeight(qMax(hint.height(), kMinimumHeight));
    return hint;
}

QSize TitleBar::minimumSizeHint() const
{
    QSize hint = QWidget::minimumSizeHint();
    hint.setHeight(qMax(hint.height(), kMinimumHeight));
    return hint;
}

void TitleBar::Minimize()
{
    if (QWidget* top = window(); top && top != this)
        top->showMinimized();
}

void TitleBar::ToggleMaximized()
{
    QWidget* top = window();
    if (!top || top == this)
        return;
    if (auto* frameless = qobject_cast<FramelessWindow*>(top))
        frameless->ToggleMaximized();
    else if (top->isMaximized())
        top->showNormal();
    else
        top->showMaximized();
}

void TitleBar::CloseWindow()
{
    if (QWidget* top = window(); top && top != this)
        top->close();
}

bool TitleBar::IsWindowMaximized() const
{
    const QWidget* top = window();
    if (auto* frameless = qobject_cast<const FramelessWindow*>(top))
        return frameless->IsMaximized();
    return top && top != this && top->isMaximized();
}

void TitleBar::WatchWindow()
{
    QWidget* top = window();
    if (top == m_window)
        return;
    if (m_window) {
        m_window->removeEventFilter(this);
        if (auto* frameless = qobject_cast<FramelessWindow*>(m_window.data()))
            disconnect(frameless, &FramelessWindow::MaximizedChanged, this, nullptr);
    }
    m_window = top != this ? top : nullptr;
    if (m_window) {
        m_window->installEventFilter(this);
        if (auto* frameless = qobject_cast<FramelessWindow*>(m_window.data()))
            connect(frameless, &FramelessWindow::MaximizedChanged, this, &TitleBar::UpdateMaximizeButton);
    }
    UpdateTitle();
    UpdateIcon();
    UpdateMaximizeButton();
}

void TitleBar::UpdateTitle()
{
    const QString title = ShownTitle(m_window ? m_window.data() : this);
    const QString elided = m_title->fontMetrics().elidedText(title, Qt::ElideRight, qMax(0, m_title->width()));
    m_title->setText(elided);
    m_title->setToolTip(elided != title ? title : QString());
}

void TitleBar::UpdateIcon()
{
    const QIcon icon = m_window ? m_window->windowIcon() : windowIcon();
    m_icon->setPixmap(icon.pixmap(m_icon->window()->windowHandle(), QSize(kIconSize, kIconSize)));
}

void TitleBar::UpdateMaximizeButton()
{
    const bool maximized = IsWindowMaximized();
    const QString state = maximized ? QStringLiteral("Maximized") : QStringLiteral("Normal");
    if (m_maximize->property("WindowState").toString() == state)
        return;
    m_maximize->setIcon(TitleBarIcon(maximized ? ":/title_bar_restore.svg" : ":/title_bar_maximize.svg"));
    m_maximize->setToolTip(maximized ? tr("Restore") : tr("Maximize"));
    SetStyleProperty(m_maximize, "WindowState", state, true);
}

bool TitleBar::OnCaption(const QPoint& pos) const
{
    const QWidget* top = window();
    if (top == this)
        return false;
    // A frameless window adds its resize band, which comes before the caption.
    const auto* frameless = qobject_cast<const FramelessWindow*>(top);
    const WindowHitRegions regions = frameless ? frameless->HitRegions() : HitRegions();
    const qreal ratio = devicePixelRatioF();
    const QPoint windowPoint = mapTo(top, pos);
    const WindowHit hit = HitTestWindow(QPoint(qFloor(windowPoint.x() * ratio), qFloor(windowPoint.y() * ratio)),
                                        top->size() * ratio, ratio, regions);
    return hit.area == WindowHit::Caption;
}

void TitleBar::StartMove(const QPoint& globalPos)
{
    m_drag = Drag::Manual;
    m_dragSize = window()->size();
    if (!IsWindowMaximized())
        return;
    // Leaving a maximised window by dragging: the restored window keeps the pointer at the
    // same fraction of its width and at the same height in the bar. The window manager's
    // restore may come later, so the size is the one it goes back to, and the move is done
    // by hand: a move of the window system's would start from where it still has the window.
    QWidget* top = window();
    const QRect maximized = top->geometry();
    const QRect normalBefore = top->normalGeometry();
    const qreal fraction = maximized.width() > 0 ? qreal(m_pressGlobal.x() - maximized.x()) / maximized.width() : 0.5;
    ToggleMaximized();
    const QRect normal = top->geometry() != maximized ? top->geometry() : normalBefore;
    // Moved with its size: a position alone would keep the maximised size the window still has.
    m_dragSize = normal.size();
    m_pressWindowPos = QPoint(globalPos.x() - qRound(fraction * normal.width()),
                              globalPos.y() - (m_pressGlobal.y() - maximized.y()));
    m_pressGlobal = globalPos;
}

bool TitleBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_title && event->type() == QEvent::Resize)
        UpdateTitle();
    // The host may delete or take back its widget without RemoveWidget; the layout has
    // already let go of it here.
    if (watched == m_hostWidgets && event->type() == QEvent::ChildRemoved)
        m_hostWidgets->setVisible(m_hostLayout->count() > 0);
    if (watched == m_window) {
        switch (event->type()) {
        case QEvent::WindowTitleChange:
        case QEvent::ModifiedChange:
            UpdateTitle();
            break;
        case QEvent::WindowIconChange:
        case QEvent::ScreenChangeInternal:
            UpdateIcon();
            break;
        case QEvent::WindowStateChange:
            UpdateMaximizeButton();
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TitleBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !OnCaption(event->pos())) {
        QWidget::mousePressEvent(event);
        return;
    }
    event->accept();
    m_pressGlobal = event->globalPos();
    m_pressWindowPos = window()->pos();
    // The window system's move starts at the press, as it asks, so that the window keeps
    // its place under the pointer; not for a maximised window, which is restored first. The
    // second press of a double click comes as the double click (mouseDoubleClickEvent).
    QWindow* handle = window()->windowHandle();
    m_drag = (!IsWindowMaximized() && handle && handle->startSystemMove()) ? Drag::None : Drag::Pressed;
}

void TitleBar::mouseMoveEvent(QMouseEvent* event)
{
    if (m_drag == Drag::None || !(event->buttons() & Qt::LeftButton)) {
        m_drag = Drag::None;
        QWidget::mouseMoveEvent(event);
        return;
    }
    if (m_drag == Drag::Pressed) {
        if ((event->globalPos() - m_pressGlobal).manhattanLength() < QApplication::startDragDistance())
            return;
        StartMove(event->globalPos());
    }
    if (m_drag == Drag::Manual)
        window()->setGeometry(QRect(m_pressWindowPos + event->globalPos() - m_pressGlobal, m_dragSize));
    event->accept();
}

void TitleBar::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !OnCaption(event->pos())) {
        QWidget::mouseDoubleClickEvent(event);
        return;
    }
    m_drag = Drag::None;
    if (!m_maximize->isHidden())
        ToggleMaximized();
    event->accept();
}

void TitleBar::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::ParentChange:
        WatchWindow();
        break;
    case QEvent::WindowTitleChange:
    case QEvent::ModifiedChange:
        // A bar that is its own window shows its own title.
        if (!m_window)
            UpdateTitle();
        break;
    case QEvent::WindowIconChange:
        if (!m_window)
            UpdateIcon();
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        UpdateTitle();
        break;
    default:
        break;
    }
}

void TitleBar::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // The bar may have been put into its window through a parent of its own.
    WatchWindow();
}

void TitleBar::paintEvent(QPaintEvent*)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

} // namespace OrvantaQT
