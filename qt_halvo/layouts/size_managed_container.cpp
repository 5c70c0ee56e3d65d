#include <qt_halvo/layouts/size_managed_container.h>

#include <qt_halvo/layouts/resize_grip.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QSettings>
#include <QtWidgets/QLayout>
#include <QtWidgets/QVBoxLayout>

namespace OrvantaQT {

namespace {

bool Holds(const QLayout* layout, const QWidget* widget)
{
    for (int i = 0; layout && i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (item->widget() == widget || Holds(item->layout(), widget))
            return true;
    }
    return false;
}

// Within the widget's minimum and maximum and its layout's. Not QLayout::closestAcceptableSize,
// which also holds a fixed size policy to the size hint the drag is about to change.
QSize Acceptable(const QWidget* widget, const QSize& size)
{
    QSize minimum = widget->minimumSize();
    QSize maximum = widget->maximumSize();
    // An empty layout's maximum is nothing at all.
    if (const QLayout* layout = widget->layout(); layout && layout->count() > 0) {
        minimum = minimum.expandedTo(layout->totalMinimumSize());
        maximum = maximum.boundedTo(layout->totalMaximumSize());
    }
    return size.expandedTo(minimum).boundedTo(maximum.expandedTo(minimum));
}

} // namespace

SizeManagedContainer::SizeManagedContainer(QWidget* parent, Qt::Edges gripEdges)
    : QFrame(parent)
    , m_grip(new ResizeGrip(this, gripEdges))
{
    setObjectName(QStringLiteral("SizeManagedContainer"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    connect(m_grip, &ResizeGrip::DragStarted, this, &SizeManagedContainer::OnDragStarted);
    connect(m_grip, &ResizeGrip::Dragged, this, &SizeManagedContainer::OnDragged);
    connect(m_grip, &ResizeGrip::DragFinished, this, &SizeManagedContainer::OnDragFinished);
    ApplyPolicy();
}

SizeManagedContainer::~SizeManagedContainer() = default;

QWidget* SizeManagedContainer::GetWidget() const
{
    return m_widget;
}

void SizeManagedContainer::SetWidget(QWidget* widget)
{
    if (widget == m_widget)
        return;
    delete m_widget;
    m_widget = widget;
    if (widget)
        layout()->addWidget(widget);
    m_grip->raise();
}

ResizeGrip* SizeManagedContainer::GetGrip() const
{
    return m_grip;
}

Qt::Edges SizeManagedContainer::GetGripEdges() const
{
    return m_grip->GetEdges();
}

void SizeManagedContainer::SetGripEdges(Qt::Edges edges)
{
    if (edges == m_grip->GetEdges())
        return;
    m_grip->SetEdges(edges);
    m_grip->setGeometry(m_grip->PlaceIn(rect()));
    ApplyPolicy();
}

QSize SizeManagedContainer::GetManagedSize() const
{
    return m_size;
}

void SizeManagedContainer::SetManagedSize(const QSize& size)
{
    if (size.width() < 0 || size.height() < 0) {
        QTH_LOG_WARNING("SizeManagedContainer: a size of %d x %d is refused", size.width(), size.height());
        return;
    }
    const QSize acceptable = Acceptable(this, size);
    if (acceptable == m_size)
        return;
    m_size = acceptable;
    updateGeometry();
    if (!InLayout())
        resize(acceptable);
    Q_EMIT SizeChanged(acceptable);
}

QString SizeManagedContainer::GetSettingsKey() const
{
    return m_settingsKey;
}

void SizeManagedContainer::SetSettingsKey(const QString& key)
{
    if (key == m_settingsKey)
        return;
    m_settingsKey = key;
    if (key.isEmpty())
        return;
    const QVariant saved = QSettings().value(key);
    if (saved.canConvert<QSize>() && saved.toSize().isValid())
        SetManagedSize(saved.toSize());
}

QSize SizeManagedContainer::sizeHint() const
{
    const QSize natural = QFrame::sizeHint();
    if (!m_size.isValid())
        return natural;
    // The grip only sets the directions it resizes in.
    const Qt::Edges edges = m_grip->GetEdges();
    return QSize(edges & (Qt::LeftEdge | Qt::RightEdge) ? m_size.width() : natural.width(),
                 edges & (Qt::TopEdge | Qt::BottomEdge) ? m_size.height() : natural.height());
}

void SizeManagedContainer::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    m_grip->setGeometry(m_grip->PlaceIn(rect()));
}

void SizeManagedContainer::OnDragStarted()
{
    m_dragStartSize = size();
    m_dragStartPosition = pos();
}

void SizeManagedContainer::OnDragged(const QPoint& offset)
{
    const Qt::Edges edges = m_grip->GetEdges();
    QSize wanted = m_dragStartSize;
    if (edges.testFlag(Qt::RightEdge))
        wanted.rwidth() += offset.x();
    else if (edges.testFlag(Qt::LeftEdge))
        wanted.rwidth() -= offset.x();
    if (edges.testFlag(Qt::BottomEdge))
        wanted.rheight() += offset.y();
    else if (edges.testFlag(Qt::TopEdge))
        wanted.rheight() -= offset.y();
    wanted = Acceptable(this, wanted);
    if (!InLayout()) {
        // The far edge stays where it was.
        QPoint position = m_dragStartPosition;
        if (edges.testFlag(Qt::LeftEdge))
            position.rx() += m_dragStartSize.width() - wanted.width();
        if (edges.testFlag(Qt::TopEdge))
            position.ry() += m_dragStartSize.height() - wanted.height();
        move(position);
    }
    SetManagedSize(wanted);
}

void SizeManagedContainer::OnDragFinished()
{
    if (!m_settingsKey.isEmpty() && m_size.isValid())
        QSettings().setValue(m_settingsKey, m_size);
}

void SizeManagedContainer::ApplyPolicy()
{
    const Qt::Edges edges = m_grip->GetEdges();
    QSizePolicy policy = sizePolicy();
    policy.setHorizontalPolicy(edges & (Qt::LeftEdge | Qt::RightEdge) ? QSizePolicy::Fixed : QSizePolicy::Preferred);
    policy.setVerticalPolicy(edges & (Qt::TopEdge | Qt::BottomEdge) ? QSizePolicy::Fixed : QSizePolicy::Preferred);
    setSizePolicy(policy);
}

bool SizeManagedContainer::InLayout() const
{
    const QWidget* parent = parentWidget();
    return parent && Holds(parent->layout(), this);
}

} // namespace OrvantaQT
