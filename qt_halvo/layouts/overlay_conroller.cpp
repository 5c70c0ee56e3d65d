#include <qt_halvo/layouts/overlay_conroller.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QEvent>
#include <QtWidgets/QLayout>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

namespace {

// Above the middle of the free height, where a centred panel looks centred.
constexpr double kMagicCentre = 0.45;

} // namespace

OverlayConroller::OverlayConroller(QWidget* overlay, Qt::Alignment alignment, bool magicCentering)
    : QObject(overlay)
    , m_alignment(alignment)
    , m_magicCentering(magicCentering)
{
    QWidget* parent = overlay ? overlay->parentWidget() : nullptr;
    if (!parent)
        return;
    if (QLayout* layout = parent->layout())
        layout->removeWidget(overlay);
    overlay->raise();
    overlay->installEventFilter(this);
    parent->installEventFilter(this);
}

QWidget* OverlayConroller::Overlay() const
{
    return qobject_cast<QWidget*>(parent());
}

void OverlayConroller::Update()
{
    QWidget* overlay = Overlay();
    QWidget* parent = overlay ? overlay->parentWidget() : nullptr;
    if (!parent)
        return;
    const QSize o = overlay->size();
    const QSize p = parent->size();
    if (m_alignment & Qt::AlignLeft) {
        overlay->setGeometry(m_margins.left(), 0, o.width(), p.height());
    } else if (m_alignment & Qt::AlignRight) {
        overlay->setGeometry(p.width() - o.width() - m_margins.right(), 0, o.width(), p.height());
    } else if (m_alignment & Qt::AlignTop) {
        overlay->setGeometry(0, m_margins.top(), p.width(), o.height());
    } else if (m_alignment & Qt::AlignBottom) {
        overlay->setGeometry(0, p.height() - o.height() - m_margins.bottom(), p.width(), o.height());
    } else if (m_alignment & (Qt::AlignHCenter | Qt::AlignVCenter)) {
        const double share = m_magicCentering ? kMagicCentre : 0.5;
        overlay->move((p.width() - o.width()) / 2, int((p.height() - o.height()) * share));
    } else if (m_alignment & Qt::AlignJustify) {
        overlay->setGeometry(0, 0, p.width(), p.height());
    }
}

void OverlayConroller::SetMargins(const QMargins& margins)
{
    m_margins = margins;
    Update();
}

void OverlayConroller::SetMagicCentering(bool magicCentering)
{
    m_magicCentering = magicCentering;
    Update();
}

bool OverlayConroller::IsMagicCenteringUsed() const
{
    return m_magicCentering;
}

bool OverlayConroller::eventFilter(QObject* watched, QEvent* event)
{
    if (Overlay() && (event->type() == QEvent::Resize || event->type() == QEvent::Show))
        Update();
    return QObject::eventFilter(watched, event);
}

void SetOverlayController(QWidget* overlay, const QString& objectName, Qt::Alignment alignment)
{
    if (!overlay) {
        QTH_LOG_WARNING("SetOverlayController: no overlay");
        return;
    }
    overlay->setAttribute(Qt::WA_TransparentForMouseEvents);
    overlay->setObjectName(objectName);
    new OverlayConroller(overlay, alignment, true);
    overlay->raise();
}

} // namespace OrvantaQT
