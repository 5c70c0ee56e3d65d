#include <qt_halvo/layouts/anchor_controller.h>

#include <qt_halvo/layouts/anchor_layout.h>

#include <QtCore/QEvent>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace OrvantaQT {

namespace {

// Sets a flag for the life of the scope and puts its previous value back afterwards.
class FlagScope
{
public:
    explicit FlagScope(bool& flag) : m_flag(flag), m_previous(flag) { m_flag = true; }
    ~FlagScope() { m_flag = m_previous; }

private:
    bool& m_flag;
    bool m_previous;
};

} // namespace

AnchorController::AnchorController(QWidget* widget)
    : QObject(widget)
    , m_widget(widget)
{
    if (widget)
        widget->installEventFilter(this);
}

AnchorController::~AnchorController() = default;

void AnchorController::SetAnchor(QWidget* target, Qt::AnchorPoint targetPoint, Qt::AnchorPoint ownPoint)
{
    m_anchors.erase(std::remove_if(m_anchors.begin(), m_anchors.end(),
                                   [ownPoint](const Anchor& anchor) { return anchor.ownPoint == ownPoint; }),
                    m_anchors.end());
    if (!target || !m_widget)
        return;
    m_anchors.append(Anchor{target, targetPoint, ownPoint});
    {
        const FlagScope updating(m_updating);
        Apply(m_anchors.last());
    }
    target->installEventFilter(this);
}

void AnchorController::SetMargins(const QMargins& margins)
{
    m_margins = margins;
    UpdateAnchors(nullptr);
}

QMargins AnchorController::GetMargins() const
{
    return m_margins;
}

QVector<AnchorController::Anchor> AnchorController::GetAnchors() const
{
    return m_anchors;
}

bool AnchorController::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    const bool geometry = type == QEvent::Resize || type == QEvent::Move;
    const bool isTarget = std::any_of(m_anchors.cbegin(), m_anchors.cend(),
                                      [watched](const Anchor& anchor) { return anchor.target == watched; });
    if (isTarget) {
        if (geometry) {
            UpdateAnchors(static_cast<QWidget*>(watched));
        } else if (type == QEvent::DeferredDelete) {
            m_anchors.erase(std::remove_if(m_anchors.begin(), m_anchors.end(),
                                           [watched](const Anchor& anchor) { return anchor.target == watched; }),
                            m_anchors.end());
        }
    } else if (watched == m_widget && !m_updating && geometry && !m_anchors.isEmpty()) {
        // Moved or resized by someone else: back to the anchors.
        UpdateAnchors(nullptr);
    }
    return false;
}

void AnchorController::UpdateAnchors(const QWidget* target)
{
    const FlagScope updating(m_updating);
    for (const Anchor& anchor : qAsConst(m_anchors)) {
        if (!target || anchor.target == target)
            Apply(anchor);
    }
}

bool AnchorController::HasOppositeEdgeAnchor(Qt::AnchorPoint point) const
{
    const Qt::AnchorPoint opposite = AnchorLayout::OppositeEdge(point);
    return std::any_of(m_anchors.cbegin(), m_anchors.cend(),
                       [opposite](const Anchor& anchor) { return anchor.ownPoint == opposite; });
}

void AnchorController::Apply(const Anchor& anchor)
{
    if (anchor.target)
        AnchorLayout::UpdateAnchor(anchor.target, anchor.targetPoint, m_widget, anchor.ownPoint, m_margins,
                                   HasOppositeEdgeAnchor(anchor.ownPoint));
}

} // namespace OrvantaQT
