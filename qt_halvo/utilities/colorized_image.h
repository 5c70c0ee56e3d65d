#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtGui/QColor>
#include <QtGui/QIcon>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

// An image drawn in a colour over its whole area: black parts take the colour, white
// stays white, transparency is kept. Without a colour the image is drawn as it is.
class QT_HALVO_EXPORT ColorizedImage : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString ImagePath READ ImagePath WRITE SetImagePath NOTIFY ImagePathChanged)
    Q_PROPERTY(QColor Color READ Color WRITE SetColor NOTIFY ColorChanged)

public:
    explicit ColorizedImage(QWidget* parent = nullptr);

    QString ImagePath() const;
    void SetImagePath(const QString& path);
    QColor Color() const;
    void SetColor(const QColor& color);

Q_SIGNALS:
    void ImagePathChanged();
    void ColorChanged();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap Pixmap();

    QIcon m_icon;
    QString m_imagePath;
    QColor m_color;
};

} // namespace OrvantaQT
