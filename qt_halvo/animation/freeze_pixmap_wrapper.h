#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

// A still picture of a page, shown in the page's place while the page is rebuilt.
class QT_HALVO_EXPORT FreezePixmapWrapper : public QWidget
{
    Q_OBJECT

public:
    explicit FreezePixmapWrapper(const QPixmap& picture, QWidget* parent = nullptr);

    QPixmap Picture() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_picture;
};

} // namespace OrvantaQT
