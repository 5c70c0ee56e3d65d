#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QCheckBox>

namespace OrvantaQT {

// A check box that can be drawn hovered while the mouse is elsewhere (on its caption),
// and that passes mouse moves on to its parent.
class QT_HALVO_EXPORT HoverableCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit HoverableCheckBox(QWidget* parent = nullptr);

    void SetHovered(bool hovered);
    bool IsHovered() const;

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_hovered = false;
};

} // namespace OrvantaQT
