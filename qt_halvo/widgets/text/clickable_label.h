#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QLabel>

namespace OrvantaQT {

// A label that reports a click on it, unless the click activated a link in its text.
class QT_HALVO_EXPORT ClickableLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ClickableLabel(QWidget* parent = nullptr);

    // Tells the label that the click under way activated a link.
    void SetLinkActivated(bool activated);

Q_SIGNALS:
    void Clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool m_linkActivated = false;
};

} // namespace OrvantaQT
