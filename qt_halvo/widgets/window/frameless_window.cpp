#include <qt_halvo/widgets/window/frameless_window.h>

#include <qt_halvo/animation/blur_pyramid_p.h>
#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/utilities/border_pixmap_painter.h>
#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/utilities/platform/frameless_window_p.h>
#include <qt_halvo/widgets/window/title_bar.h>

#include <QtCore/QDataStream>
#include <QtCore/QTimer>
#include <QtCore/QtMath>
#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QVBoxLayout>

#include <cstdint>

namespace OrvantaQT {

namespace {

// QWidget::saveGeometry()'s format, version 3.0.
constexpr quint32 kGeometryMagic = 0x1D9D0CB;
constexpr quint16 kGeometryMajorVersion = 3;
// How long a window manager that says it maximises has to do it before it is done by hand.
constexpr int kMaximizeCheckDelay = 600;

Platform::FramelessHit ToPlatformHit(const WindowHit& hit)
{
    using Platform::FramelessHit;
    if (hit.area == WindowHit::Caption)
        return FramelessHit::Caption;
    if (hit.area == WindowHit::Client)
        return FramelessHit::Client;
    const Qt::Edges edges = hit.edges;
    if (edges == (Qt::TopEdge | Qt::LeftEdge))
        return FramelessHit::TopLeft;
    if (edges == (Qt::TopEdge | Qt::RightEdge))
        return FramelessHit::TopRight;
    if (edges == (Qt::BottomEdge | Qt::LeftEdge))
        return FramelessHit::BottomLeft;
    if (edges == (Qt::BottomEdge | Qt::RightEdge))
        return FramelessHit::BottomRight;
    if (edges & Qt::LeftEdge)
        return FramelessHit::Left;
    if (edges & Qt::RightEdge)
        return FramelessHit::Right;
    if (edges & Qt::TopEdge)
        return FramelessHit::Top;
    return FramelessHit::Bottom;
}

Platform::FramelessHit NativeHitTest(void* context, int x, int y)
{
    const auto* window = static_cast<const FramelessWindow*>(context);
    const qreal ratio = window->devicePixelRatioF();
    return ToPlatformHit(HitTestWindow(QPoint(x, y), window->size() * ratio, ratio, window->HitRegions()));
}

Qt::CursorShape ResizeCursor(Qt::Edges edges)
{
    if (edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::TopEdge | Qt::RightEdge) || edges == (Qt::BottomEdge | Qt::LeftEdge))
        return Qt::SizeBDiagCursor;
    return (edges & (Qt::LeftEdge | Qt::RightEdge)) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

// One edge of a resize by hand: the start and the length of the span after moving the
// edge by delta, within the limits, the other edge kept.
void ResizeSpan(int& start, int& length, int delta, bool movesStart, int minimum, int maximum)
{
    const int end = start + length;
    length = qBound(minimum, movesStart ? length - delta : length + delta, qMax(minimum, maximum));
    if (movesStart)
        start = end - length;
}

QScreen* ScreenHolding(const QRect& rect)
{
    QScreen* best = nullptr;
    qint64 bestArea = 0;
    for (QScreen* screen : QGuiApplication::screens()) {
        const QRect common = screen->geometry().intersected(rect);
        const qint64 area = qint64(common.width()) * common.height();
        if (area > bestArea) {
            bestArea = area;
            best = screen;
        }
    }
    return best;
}

} // namespace

FramelessWindow::FramelessWindow(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint
                          | Qt::WindowCloseButtonHint)
    , m_maximizeCheck(new QTimer(this))
{
    // Whether transparent parts are composited can only be chosen before the native window
    // exists; without it they would be black, and the border stands in for the shadow.
    m_compositing = Platform::CompositingManagerRunning();
    if (m_compositing)
        setAttribute(Qt::WA_TranslucentBackground);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(0);
    m_frame = NameChild(new QWidget(this), "FramelessWindow", "Frame");
    m_frame->setAttribute(Qt::WA_StyledBackground);
    m_frame->setAutoFillBackground(true);
    m_frame->setBackgroundRole(QPalette::Window);
    layout->addWidget(m_frame);

    m_frameLayout = new QVBoxLayout(m_frame);
    m_frameLayout->setContentsMargins(0, 0, 0, 0);
    m_frameLayout->setSpacing(0);
    m_titleBar = NameChild(new TitleBar(m_frame), "FramelessWindow", "TitleBar");
    m_frameLayout->addWidget(m_titleBar);
    m_frameLayout->addStretch(1);

    m_maximizeCheck->setSingleShot(true);
    m_maximizeCheck->setInterval(kMaximizeCheckDelay);
    connect(m_maximizeCheck, &QTimer::timeout, this, &FramelessWindow::CheckMaximized);
    UpdateFrame();
}

FramelessWindow::~FramelessWindow()
{
    SetResizeCursor({});
}

TitleBar* FramelessWindow::GetTitleBar() const
{
    return m_titleBar;
}

void FramelessWindow::SetCentralWidget(QWidget* widget)
{
    if (widget == m_central)
        return;
    if (widget && (widget == this || widget->isAncestorOf(this))) {
        QTH_LOG_WARNING("FramelessWindow: a window cannot hold itself or a widget it lies in");
        return;
    }
    delete m_central;
    // The stretch that kept the title bar at the top while there was no content.
    if (m_frameLayout->count() > 1 && !m_frameLayout->itemAt(1)->widget())
        delete m_frameLayout->takeAt(1);
    m_central = widget;
    if (widget) {
        widget->setParent(m_frame);
        m_frameLayout->addWidget(widget, 1);
        widget->show();
    } else {
        m_frameLayout->addStretch(1);
    }
}

QWidget* FramelessWindow::CentralWidget() const
{
    return m_central;
}

int FramelessWindow::GetResizeBorderWidth() const
{
    return m_resizeBorderWidth;
}

void FramelessWindow::SetResizeBorderWidth(int width)
{
    if (width < 0) {
        QTH_LOG_WARNING("FramelessWindow: a negative resize border (%d) is ignored", width);
        return;
    }
    m_resizeBorderWidth = width;
}

int FramelessWindow::GetShadowWidth() const
{
    return m_shadowWidth;
}

void FramelessWindow::SetShadowWidth(int width)
{
    if (width < 0 || width > 64) {
        QTH_LOG_WARNING("FramelessWindow: a shadow of %d pixels is ignored (0 to 64)", width);
        return;
    }
    if (width == m_shadowWidth)
        return;
    m_shadowWidth = width;
    m_shadow = QPixmap();
    UpdateFrame();
}

QColor FramelessWindow::GetShadowColor() const
{
    return m_shadowColor;
}

void FramelessWindow::SetShadowColor(const QColor& color)
{
    if (color == m_shadowColor)
        return;
    m_shadowColor = color;
    m_shadow = QPixmap();
    update();
}

QColor FramelessWindow::GetBorderColor() const
{
    return m_borderColor;
}

void FramelessWindow::SetBorderColor(const QColor& color)
{
    if (color == m_borderColor)
        return;
    m_borderColor = color;
    update();
}

FramelessWindow::MaximizeMode FramelessWindow::GetMaximizeMode() const
{
    return m_maximizeMode;
}

void FramelessWindow::SetMaximizeMode(MaximizeMode mode)
{
    if (mode != Automatic && mode != Emulated) {
        QTH_LOG_WARNING("FramelessWindow: maximise mode %d is not one; the mode stays", static_cast<int>(mode));
        return;
    }
    m_maximizeMode = mode;
}

bool FramelessWindow::IsMaximized() const
{
    return m_emulatedMaximize || (windowState() & Qt::WindowMaximized);
}

bool FramelessWindow::IsMaximizeEmulated() const
{
    return m_emulatedMaximize;
}

bool FramelessWindow::HasShadow() const
{
    return m_compositing && m_shadowWidth > 0 && !IsMaximized() && !isFullScreen();
}

WindowHitRegions FramelessWindow::HitRegions() const
{
    WindowHitRegions regions = m_titleBar->HitRegions();
    regions.resizeBorder = (IsMaximized() || isFullScreen()) ? 0 : m_resizeBorderWidth + ShadowMargin();
    return regions;
}

int FramelessWindow::ShadowMargin() const
{
    return HasShadow() ? m_shadowWidth : 0;
}

void FramelessWindow::ShowMaximized()
{
    SetMaximized(true);
    show();
}

void FramelessWindow::ShowNormal()
{
    if (isFullScreen())
        setWindowState(windowState() & ~Qt::WindowFullScreen);
    SetMaximized(false);
    show();
}

void FramelessWindow::ToggleMaximized()
{
    SetMaximized(!IsMaximized());
}

void FramelessWindow::SetMaximized(bool maximized)
{
    if (maximized == IsMaximized())
        return;
    if (maximized) {
        m_restoreGeometry = geometry();
        if (m_maximizeMode == Automatic && Platform::WindowManagerMaximizes()) {
            setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowMaximized);
            if (isVisible())
                m_maximizeCheck->start();
        } else {
            EmulateMaximize();
        }
        return;
    }
    if (m_emulatedMaximize) {
        m_emulatedMaximize = false;
        setGeometry(m_restoreGeometry);
        ReportMaximized();
    } else {
        setWindowState(windowState() & ~Qt::WindowMaximized);
    }
}

void FramelessWindow::EmulateMaximize()
{
    // Drop a request the window manager left unanswered.
    if (windowState() & Qt::WindowMaximized)
        setWindowState(windowState() & ~Qt::WindowMaximized);
    QScreen* screen = ScreenHolding(geometry());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen) {
        QTH_LOG_WARNING("FramelessWindow: no screen to maximise the window on");
        return;
    }
    m_emulatedMaximize = true;
    ReportMaximized();
    setGeometry(screen->availableGeometry());
}

void FramelessWindow::CheckMaximized()
{
    if (!isVisible() || !(windowState() & Qt::WindowMaximized) || m_emulatedMaximize)
        return;
    QScreen* screen = ScreenHolding(geometry());
    if (!screen)
        return;
    const QRect available = screen->availableGeometry();
    if (width() * 10 >= available.width() * 9 && height() * 10 >= available.height() * 9)
        return;
    QTH_LOG_INFO("FramelessWindow: the window manager did not maximise the window; it is maximised by hand");
    EmulateMaximize();
}

void FramelessWindow::ReportMaximized()
{
    const bool maximized = IsMaximized();
    UpdateFrame();
    if (maximized == m_reportedMaximized)
        return;
    m_reportedMaximized = maximized;
    Q_EMIT MaximizedChanged(maximized);
}

void FramelessWindow::UpdateFrame()
{
    const int margin = (IsMaximized() || isFullScreen()) ? 0 : ShadowMargin() + 1;
    if (layout()->contentsMargins() != QMargins(margin, margin, margin, margin))
        layout()->setContentsMargins(margin, margin, margin, margin);
    update();
}

QByteArray FramelessWindow::SaveGeometry() const
{
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_0);
    const QList<QScreen*> screens = QGuiApplication::screens();
    QScreen* screen = ScreenHolding(geometry());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect normal = m_emulatedMaximize ? m_restoreGeometry : normalGeometry();
    stream << kGeometryMagic << kGeometryMajorVersion << quint16(0) << frameGeometry()
           << (normal.isValid() ? normal : geometry()) << qint32(screen ? screens.indexOf(screen) : 0)
           << quint8(IsMaximized()) << quint8(isFullScreen())
           << qint32(screen ? screen->geometry().width() : 0) << geometry();
    return data;
}

bool FramelessWindow::RestoreGeometry(const QByteArray& geometry)
{
    QDataStream stream(geometry);
    stream.setVersion(QDataStream::Qt_4_0);
    quint32 magic = 0;
    quint16 major = 0, minor = 0;
    QRect frame, normal, client;
    qint32 screenNumber = 0, screenWidth = 0;
    quint8 maximized = 0, fullScreen = 0;
    stream >> magic >> major >> minor;
    if (magic != kGeometryMagic || major < 1 || major > kGeometryMajorVersion) {
        QTH_LOG_WARNING("FramelessWindow: %d bytes that are not a saved geometry; the window stays where it is",
                        int(geometry.size()));
        return false;
    }
    stream >> frame >> normal >> screenNumber >> maximized >> fullScreen;
    if (major > 1)
        stream >> screenWidth;
    if (major > 2)
        stream >> client;
    if (stream.status() != QDataStream::Ok || !normal.isValid()) {
        QTH_LOG_WARNING("FramelessWindow: the saved geometry is cut short or empty; the window stays where it is");
        return false;
    }

    if (isFullScreen())
        setWindowState(windowState() & ~Qt::WindowFullScreen);
    SetMaximized(false);
    setGeometry(RestoredGeometry(normal, screenNumber));
    if (fullScreen)
        setWindowState(windowState() | Qt::WindowFullScreen);
    else if (maximized)
        SetMaximized(true);
    return true;
}

QRect FramelessWindow::RestoredGeometry(const QRect& saved, int screenNumber) const
{
    const QList<QScreen*> screens = QGuiApplication::screens();
    QScreen* screen = ScreenHolding(saved);
    if (!screen && screenNumber >= 0 && screenNumber < screens.size())
        screen = screens.at(screenNumber);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return saved;
    const QRect available = screen->availableGeometry();
    QRect rect(saved.topLeft(), saved.size().boundedTo(available.size()).expandedTo(minimumSize()));
    if (rect.right() > available.right())
        rect.moveRight(available.right());
    if (rect.bottom() > available.bottom())
        rect.moveBottom(available.bottom());
    if (rect.left() < available.left())
        rect.moveLeft(available.left());
    if (rect.top() < available.top())
        rect.moveTop(available.top());
    return rect;
}

bool FramelessWindow::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::WinIdChange:
    case QEvent::Show:
        if (windowHandle() && windowHandle() != m_watchedWindow) {
            if (m_watchedWindow)
                m_watchedWindow->removeEventFilter(this);
            m_watchedWindow = windowHandle();
            m_watchedWindow->installEventFilter(this);
            Platform::PrepareFramelessWindow(static_cast<std::uintptr_t>(winId()));
        }
        if (event->type() == QEvent::Show && (windowState() & Qt::WindowMaximized) && !m_emulatedMaximize)
            m_maximizeCheck->start();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

bool FramelessWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_watchedWindow && HandleResizeEvent(event))
        return true;
    return QWidget::eventFilter(watched, event);
}

bool FramelessWindow::HandleResizeEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        break;
    case QEvent::Enter:
        // A pointer that jumps in brings an enter event without a move.
        if (!m_resizeEdges)
            SetResizeCursor(ResizeEdgesAt(static_cast<QEnterEvent*>(event)->localPos()));
        return false;
    case QEvent::Leave:
        // Qt holds a leave back while a button is down and delivers it on the release.
        SetResizeCursor({});
        return false;
    case QEvent::Hide:
        m_resizeEdges = {};
        SetResizeCursor({});
        return false;
    default:
        return false;
    }
    auto* mouse = static_cast<QMouseEvent*>(event);
    if (m_resizeEdges) {
        if (event->type() == QEvent::MouseMove)
            setGeometry(ResizedGeometry(mouse->globalPos()));
        else if (event->type() == QEvent::MouseButtonRelease && mouse->button() == Qt::LeftButton)
            m_resizeEdges = {};
        return true;
    }
    const Qt::Edges edges = ResizeEdgesAt(mouse->localPos());
    if (event->type() == QEvent::MouseMove) {
        if (mouse->buttons() == Qt::NoButton)
            SetResizeCursor(edges);
        return false;
    }
    if (event->type() != QEvent::MouseButtonPress || mouse->button() != Qt::LeftButton || !edges)
        return false;
    if (m_watchedWindow && m_watchedWindow->startSystemResize(edges)) {
        // The window manager shows its own cursor while it resizes.
        SetResizeCursor({});
        return true;
    }
    m_resizeEdges = edges;
    m_resizePress = mouse->globalPos();
    m_resizeStart = geometry();
    return true;
}

Qt::Edges FramelessWindow::ResizeEdgesAt(const QPointF& pos) const
{
    const qreal ratio = devicePixelRatioF();
    const QPoint device(qFloor(pos.x() * ratio), qFloor(pos.y() * ratio));
    const WindowHit hit = HitTestWindow(device, size() * ratio, ratio, HitRegions());
    return hit.area == WindowHit::Resize ? hit.edges : Qt::Edges();
}

QRect FramelessWindow::ResizedGeometry(const QPoint& globalPos) const
{
    const QPoint delta = globalPos - m_resizePress;
    const QSize minimum = minimumSize().expandedTo(minimumSizeHint()).expandedTo(QSize(1, 1));
    const QSize maximum = maximumSize();
    int x = m_resizeStart.x(), width = m_resizeStart.width();
    int y = m_resizeStart.y(), height = m_resizeStart.height();
    if (m_resizeEdges & (Qt::LeftEdge | Qt::RightEdge))
        ResizeSpan(x, width, delta.x(), m_resizeEdges & Qt::LeftEdge, minimum.width(), maximum.width());
    if (m_resizeEdges & (Qt::TopEdge | Qt::BottomEdge))
        ResizeSpan(y, height, delta.y(), m_resizeEdges & Qt::TopEdge, minimum.height(), maximum.height());
    return QRect(x, y, width, height);
}

void FramelessWindow::SetResizeCursor(Qt::Edges edges)
{
    // An override cursor: Qt puts the cursor of the widget under the pointer back whenever
    // the pointer enters one, which happens inside the band too.
    if (edges) {
        if (m_cursorSet)
            QGuiApplication::changeOverrideCursor(ResizeCursor(edges));
        else
            QGuiApplication::setOverrideCursor(ResizeCursor(edges));
        m_cursorSet = true;
    } else if (m_cursorSet) {
        QGuiApplication::restoreOverrideCursor();
        m_cursorSet = false;
    }
}

bool FramelessWindow::nativeEvent(const QByteArray& eventType, void* message, long* result)
{
    std::intptr_t answer = 0;
    if (Platform::HandleFramelessMessage(message, &answer, &NativeHitTest, this)) {
        *result = static_cast<long>(answer);
        return true;
    }
    return QWidget::nativeEvent(eventType, message, result);
}

void FramelessWindow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        if (!(windowState() & Qt::WindowMaximized))
            m_maximizeCheck->stop();
        ReportMaximized();
    }
}

void FramelessWindow::paintEvent(QPaintEvent*)
{
    if (IsMaximized() || isFullScreen())
        return;
    QPainter painter(this);
    const int margin = ShadowMargin();
    if (margin > 0) {
        if (m_shadow.isNull())
            m_shadow = ShadowPixmap(m_shadowWidth, m_shadowColor);
        const int border = 2 * m_shadowWidth;
        DrawBorderPixmap(&painter, rect(), m_shadow, m_shadow.rect(), QMargins(border, border, border, border));
    }
    const QColor line = m_borderColor.isValid() ? m_borderColor : palette().color(QPalette::Mid);
    painter.setPen(line);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(margin, margin, -margin - 1, -margin - 1));
}

QPixmap FramelessWindow::ShadowPixmap(int width, const QColor& color)
{
    // Four shadow widths and a middle to stretch, square: the frame's corner region blurred
    // out into the margin.
    const int side = 4 * width + 2;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.fillRect(QRect(width, width, side - 2 * width, side - 2 * width), color);
    }
    BoxBlur3(image, qMax(1, width / 3));
    // The frame itself covers the middle; keeping it clear lets a translucent frame show
    // what lies below instead of the shadow.
    {
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(QRect(width, width, side - 2 * width, side - 2 * width), Qt::transparent);
    }
    return QPixmap::fromImage(image);
}

} // namespace OrvantaQT
