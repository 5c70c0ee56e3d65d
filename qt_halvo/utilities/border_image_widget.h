#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QMargins>
#include <QtGui/QIcon>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

// An icon stretched over the widget inside margins, or a default icon where the icon has
// no picture for that size.
class QT_HALVO_EXPORT BorderImageWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QIcon borderIcon READ borderIcon WRITE setBorderIcon)
    Q_PROPERTY(QMargins borderMargins READ borderMargins WRITE setBorderMargins)

public:
    explicit BorderImageWidget(QWidget* parent = nullptr);

    QIcon borderIcon() const;
    void setBorderIcon(const QIcon& icon);
    void setDefaultBorderIcon(const QIcon& icon);
    QMargins borderMargins() const;
    void setBorderMargins(const QMargins& margins);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QIcon m_borderIcon;
    QIcon m_defaultBorderIcon;
    QMargins m_borderMargins;
};

} // namespace OrvantaQT
