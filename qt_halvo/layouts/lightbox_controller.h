#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtGui/QColor>

class QWidget;

namespace OrvantaQT {

class AlphaAnimationController;

// Presents a content widget centred (at 0.45 of the free height) over a background
// widget, with a shade of the given colour between them that covers the background, and
// optionally a blur of the background (the content kept sharp) or a shadow under the
// content. Widgets added to the background later stay under the shade. The shade is the
// caller's: Deactivate() does not delete it, and hides it only when asked to at
// construction.
class QT_HALVO_EXPORT LightboxController : public QObject
{
    Q_OBJECT

public:
    enum Effect { Blur = 0, Shadow = 1 };

    LightboxController(QWidget* content, QWidget* background, QColor color, bool hideShadeOnDeactivate);
    ~LightboxController() override;

    // With animated, the shade's colour fades in.
    void Activate(QWidget* shade, bool animated, Effect effect);
    void Deactivate();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Update();
    void DropPrevious();

    QPointer<QWidget> m_content;
    QPointer<QWidget> m_background;
    bool m_hideShadeOnDeactivate;
    QColor m_color;
    QPointer<QWidget> m_shade;
    QPointer<AlphaAnimationController> m_alphaAnimation; // a child of the shade
};

} // namespace OrvantaQT
