#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtWidgets/QGraphicsBlurEffect>

class QPainter;
class QWidget;

namespace OrvantaQT {

// Blurs the widget it is put on, all but one foreground widget (usually a descendant
// of it), which is painted sharp on top at its place. Without a foreground, or once the
// foreground is gone, it is a plain blur. The effect's parent is the widget, which owns
// it once it is installed with setGraphicsEffect().
class QT_HALVO_EXPORT GraphicsBackgroundBlurEffect : public QGraphicsBlurEffect
{
    Q_OBJECT

public:
    GraphicsBackgroundBlurEffect(QWidget* widget, QWidget* foreground);
    ~GraphicsBackgroundBlurEffect() override;

protected:
    void draw(QPainter* painter) override;

private:
    QPointer<QWidget> m_foreground;
    QPointer<QWidget> m_widget;
};

} // namespace OrvantaQT
