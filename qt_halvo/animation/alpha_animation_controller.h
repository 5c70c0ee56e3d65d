#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QEasingCurve>
#include <QtCore/QObject>
#include <QtGui/QColor>

class QPropertyAnimation;
class QWidget;

namespace OrvantaQT {

// Fades in the background colour of its parent widget: the parent's style sheet becomes
// "background-color: rgb(r,g,b,alpha);" with the alpha going from 0 to the colour's own
// alpha over 300 ms (InOutQuad) once Start() is called. The parent's whole style sheet
// is replaced each time the alpha changes.
class QT_HALVO_EXPORT AlphaAnimationController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int alpha READ alpha WRITE setAlpha)

public:
    // Puts the colour with alpha 0 on the parent at once.
    AlphaAnimationController(QWidget* parent, QColor color);
    ~AlphaAnimationController() override;

    int alpha() const;
    // 0..255; the parent (while it is a widget) shows the colour with this alpha.
    void setAlpha(int alpha);

    // Fades from alpha 0 to the colour's alpha; does nothing while a fade runs.
    void Start();

private:
    QColor m_color;
    int m_alpha = 0;
    int m_duration = 300;
    int m_startAlpha = 0;
    int m_endAlpha = 0;
    QEasingCurve m_easing{QEasingCurve::InOutQuad};
    QPropertyAnimation* m_animation = nullptr;
};

} // namespace OrvantaQT
