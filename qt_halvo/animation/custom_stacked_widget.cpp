#include <qt_halvo/animation/custom_stacked_widget.h>

#include <qt_halvo/animation/animated_pixmap_render.h>
#include <qt_halvo/animation/freeze_pixmap_wrapper.h>
#include <qt_halvo/utilities/hidpi_utils.h>
#include <qt_halvo/utilities/logging_p.h>

namespace OrvantaQT {

namespace {

// The easing QTimeLine gives each of its curve shapes.
QEasingCurve EasingOf(CustomStackedWidget::TimeLineCurveShapeType shape)
{
    switch (shape) {
    case CustomStackedWidget::EaseInCurve:
        return QEasingCurve::InCurve;
    case CustomStackedWidget::EaseOutCurve:
        return QEasingCurve::OutCurve;
    case CustomStackedWidget::EaseInOutCurve:
        return QEasingCurve::InOutSine;
    case CustomStackedWidget::LinearCurve:
        break;
    }
    return QEasingCurve::Linear;
}

} // namespace

CustomStackedWidget::CustomStackedWidget(QWidget* parent)
    : QStackedWidget(parent)
{
    setObjectName(QStringLiteral("__qt__passive_CustomStackedWidget"));
}

CustomStackedWidget::~CustomStackedWidget() = default;

int CustomStackedWidget::GetDuration() const
{
    return m_duration;
}

void CustomStackedWidget::SetDuration(int duration)
{
    m_duration = duration;
}

CustomStackedWidget::TimeLineCurveShapeType CustomStackedWidget::GetTimeLineCurveShape() const
{
    return m_curveShape;
}

void CustomStackedWidget::SetTimeLineCurveShape(TimeLineCurveShapeType shape)
{
    m_curveShape = shape;
}

int CustomStackedWidget::GetOffset() const
{
    return m_offset;
}

void CustomStackedWidget::SetOffset(int offset)
{
    m_offset = offset;
}

Qt::Orientation CustomStackedWidget::GetOrientation() const
{
    return m_orientation;
}

void CustomStackedWidget::SetOrientation(Qt::Orientation orientation)
{
    m_orientation = orientation;
}

void CustomStackedWidget::SetVerticalOrientation(bool vertical)
{
    SetOrientation(vertical ? Qt::Vertical : Qt::Horizontal);
}

bool CustomStackedWidget::IsAutoAdjustHeightEnabled() const
{
    return m_autoAdjustHeight;
}

void CustomStackedWidget::SetAutoAdjustHeightEnabled(bool enable)
{
    if (enable == m_autoAdjustHeight)
        return;
    m_autoAdjustHeight = enable;
    if (enable)
        connect(this, &QStackedWidget::currentChanged, this, &CustomStackedWidget::OnCurrentChanged);
    else
        disconnect(this, &QStackedWidget::currentChanged, this, &CustomStackedWidget::OnCurrentChanged);
    OnCurrentChanged(currentIndex());
}

void CustomStackedWidget::AddPage(QWidget* page)
{
    InsertPage(count(), page);
}

void CustomStackedWidget::InsertPage(int index, QWidget* page)
{
    if (!page) {
        QTH_LOG_WARNING("CustomStackedWidget: no page to insert");
        return;
    }
    page->setParent(this);
    insertWidget(index, page);
}

void CustomStackedWidget::RemovePage(int index)
{
    QWidget* page = widget(index);
    if (!page) {
        QTH_LOG_WARNING("CustomStackedWidget: no page %d to remove", index);
        return;
    }
    removeWidget(page);
}

int CustomStackedWidget::GetCount() const
{
    return count();
}

int CustomStackedWidget::GetCurrentPageIndex() const
{
    return currentIndex();
}

QWidget* CustomStackedWidget::GetWidget(int index) const
{
    return widget(index);
}

void CustomStackedWidget::SetCurrentPageIndex(int index)
{
    if (IsAnimationRunning() || index == currentIndex())
        return;
    if (!widget(index)) {
        QTH_LOG_WARNING("CustomStackedWidget: no page %d to show", index);
        return;
    }
    BeginPageSwitchAnimated(index, GetAnimationDirection(index > currentIndex()));
}

void CustomStackedWidget::SetCurrentPageWidget(QWidget* page)
{
    const int index = indexOf(page);
    if (index < 0) {
        QTH_LOG_WARNING("CustomStackedWidget: the widget to show is not a page of the stack");
        return;
    }
    SetCurrentPageIndex(index);
}

void CustomStackedWidget::OnShowPrevious()
{
    ShowRelative(-1, true);
}

void CustomStackedWidget::OnShowNext()
{
    ShowRelative(+1, false);
}

void CustomStackedWidget::OnShowCurrentAsPrevious()
{
    ShowRelative(0, false);
}

void CustomStackedWidget::OnShowCurrentAsNext()
{
    ShowRelative(0, true);
}

// The page counted as current is the one a freezing page stands for, and the freezing
// page itself is not counted.
void CustomStackedWidget::ShowRelative(int step, bool forward)
{
    if (IsAnimationRunning())
        return;
    const int pages = count() - (m_freezingPage ? 1 : 0);
    if (pages <= 0)
        return;
    const int current = m_freezingPageIndex >= 0 ? m_freezingPageIndex : currentIndex();
    const int target = (current + step + pages) % pages;
    BeginPageSwitchAnimated(target, GetAnimationDirection(forward));
}

void CustomStackedWidget::BeginPageSwitchAnimated(int index, unsigned int direction)
{
    QWidget* from = currentWidget();
    QWidget* to = widget(index);
    if (!from || !to)
        return;
    m_targetIndex = index;
    const QPixmap fromPicture = m_freezePicture.isNull() ? GrabHiDpiPixmap(from) : m_freezePicture;
    to->resize(from->size());
    const QPixmap toPicture = GrabHiDpiPixmap(to);

    auto* render = new AnimatedPixmapRender;
    render->resize(from->size());
    addWidget(render);
    setCurrentWidget(render);
    QTimeLine& timeLine = render->TimeLine();
    timeLine.setDuration(m_duration);
    timeLine.setEasingCurve(EasingOf(m_curveShape));
    m_slideRunning = true;

    render->SetDirection(static_cast<int>(direction));
    render->SetPictures(fromPicture, toPicture);
    render->SetOffset(m_offset);
    const int extent = direction < 2 ? render->width() : render->height();
    timeLine.setFrameRange(0, extent - m_offset);
    connect(&timeLine, &QTimeLine::frameChanged, render, &AnimatedPixmapRender::OnFrameChanged);
    connect(&timeLine, &QTimeLine::finished, render, &AnimatedPixmapRender::Finished);
    connect(render, &AnimatedPixmapRender::Finished, this, &CustomStackedWidget::OnAnimationFinished);
    timeLine.start();
}

void CustomStackedWidget::OnAnimationFinished()
{
    if (auto* render = qobject_cast<AnimatedPixmapRender*>(currentWidget())) {
        removeWidget(render);
        setCurrentIndex(m_targetIndex);
        render->deleteLater();
    }
    Q_EMIT CurrentIndexChanged(m_targetIndex);
    Q_EMIT Finished();
    RemoveFreezingPage();
    m_targetIndex = -1;
    m_slideRunning = false;
}

void CustomStackedWidget::FreezePage()
{
    if (QWidget* page = currentWidget())
        m_freezePicture = GrabHiDpiPixmap(page);
}

void CustomStackedWidget::ClearFreezePage()
{
    m_freezePicture = QPixmap();
}

void CustomStackedWidget::StartShowFreezingPage()
{
    QWidget* page = currentWidget();
    if (!page || m_freezingPage) {
        QTH_LOG_WARNING("CustomStackedWidget: no page to freeze, or a freezing page is shown already");
        return;
    }
    m_freezePicture = GrabHiDpiPixmap(page);
    m_freezingPage = new FreezePixmapWrapper(m_freezePicture);
    m_freezingPageIndex = currentIndex();
    addWidget(m_freezingPage);
    setCurrentWidget(m_freezingPage);
}

void CustomStackedWidget::StopShowFreezingPage()
{
    RemoveFreezingPage();
}

void CustomStackedWidget::RemoveFreezingPage()
{
    if (!m_freezingPage)
        return;
    removeWidget(m_freezingPage);
    m_freezingPage->deleteLater();
    m_freezingPage = nullptr;
    m_freezingPageIndex = -1;
    m_freezePicture = QPixmap();
}

void CustomStackedWidget::ShowPage1(bool checked) { ShowPage(0, checked); }
void CustomStackedWidget::ShowPage2(bool checked) { ShowPage(1, checked); }
void CustomStackedWidget::ShowPage3(bool checked) { ShowPage(2, checked); }
void CustomStackedWidget::ShowPage4(bool checked) { ShowPage(3, checked); }
void CustomStackedWidget::ShowPage5(bool checked) { ShowPage(4, checked); }
void CustomStackedWidget::ShowPage6(bool checked) { ShowPage(5, checked); }
void CustomStackedWidget::ShowPage7(bool checked) { ShowPage(6, checked); }

void CustomStackedWidget::ShowPage(int index, bool checked)
{
    if (checked)
        setCurrentIndex(index);
}

void CustomStackedWidget::paintEvent(QPaintEvent* event)
{
    QStackedWidget::paintEvent(event);
}

void CustomStackedWidget::OnCurrentChanged(int index)
{
    for (int i = 0; i < count(); ++i)
        widget(i)->setSizePolicy(QSizePolicy::Expanding, i == index ? QSizePolicy::Expanding : QSizePolicy::Ignored);
    adjustSize();
}

unsigned int CustomStackedWidget::GetAnimationDirection(bool forward) const
{
    if (m_orientation == Qt::Horizontal)
        return forward ? 0 : 1;
    return forward ? 2 : 3;
}

bool CustomStackedWidget::IsAnimationRunning() const
{
    return m_targetIndex != -1;
}

} // namespace OrvantaQT
