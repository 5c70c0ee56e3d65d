#include <qt_halvo/layouts/lightbox_controller.h>

#include <qt_halvo/animation/alpha_animation_controller.h>
#include <qt_halvo/animation/graphics_background_blur_effect.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QEvent>
#include <QtWidgets/QGraphicsDropShadowEffect>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

namespace {

constexpr double kMagicCentre = 0.45;
constexpr qreal kShadowBlurRadius = 80.0;

} // namespace

LightboxController::LightboxController(QWidget* content, QWidget* background, QColor color, bool hideShadeOnDeactivate)
    : QObject(content)
    , m_content(content)
    , m_background(background)
    , m_hideShadeOnDeactivate(hideShadeOnDeactivate)
    , m_color(color)
{
    if (content)
        content->installEventFilter(this);
    if (background)
        background->installEventFilter(this);
}

LightboxController::~LightboxController() = default;

void LightboxController::Activate(QWidget* shade, bool animated, Effect effect)
{
    if (!shade || !m_background) {
        QTH_LOG_WARNING("LightboxController: a lightbox needs a shade and a background");
        return;
    }
    if (m_content)
        DropPrevious();
    m_shade = shade;
    shade->setParent(m_background);
    shade->show();
    shade->raise();
    if (effect == Blur)
        m_background->setGraphicsEffect(new GraphicsBackgroundBlurEffect(m_background, m_content));
    if (m_content) {
        m_content->raise();
        m_content->show();
        if (effect == Shadow) {
            auto* shadow = new QGraphicsDropShadowEffect;
            shadow->setBlurRadius(kShadowBlurRadius);
            shadow->setXOffset(1.0);
            m_content->setGraphicsEffect(shadow);
        }
    }
    Update();
    if (!animated) {
        shade->setStyleSheet(QStringLiteral("background-color: rgb(%1,%2,%3,%4);")
                                 .arg(m_color.red())
                                 .arg(m_color.green())
                                 .arg(m_color.blue())
                                 .arg(m_color.alpha()));
        return;
    }
    m_alphaAnimation = new AlphaAnimationController(shade, m_color);
    m_alphaAnimation->Start();
}

void LightboxController::Deactivate()
{
    if (m_content)
        m_content->hide();
    if (m_shade && m_hideShadeOnDeactivate)
        m_shade->hide();
    DropPrevious();
}

// What an activation leaves: the background's blur, the shade's fade.
void LightboxController::DropPrevious()
{
    if (!m_shade)
        return;
    if (m_background)
        m_background->setGraphicsEffect(nullptr);
    m_shade = nullptr;
    delete m_alphaAnimation;
}

void LightboxController::Update()
{
    if (!m_content || !m_background || !m_shade)
        return;
    const QSize free = m_background->size() - m_content->size();
    m_content->move(free.width() / 2, int(free.height() * kMagicCentre));
    m_shade->resize(m_background->size());
}

bool LightboxController::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if ((type == QEvent::Resize || type == QEvent::Paint) && m_content && m_content->isVisible()) {
        Update();
        if (watched == m_content && type == QEvent::Resize && m_shade)
            m_shade->update();
    } else if (type == QEvent::ChildAdded && watched == m_background && m_shade) {
        QObject* child = static_cast<QChildEvent*>(event)->child();
        if (child != m_content && child->isWidgetType())
            static_cast<QWidget*>(child)->stackUnder(m_shade);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace OrvantaQT
