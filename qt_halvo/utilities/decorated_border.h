#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtGui/QPixmap>
#include <QtWidgets/QFrame>

namespace OrvantaQT {

// A strip (horizontal or vertical) with a small decoration picture at its start
// (position 0, after the margin), its end (1) or its centre (2). The end is measured on
// the strip's width in both orientations.
class QT_HALVO_EXPORT DecoratedBorder : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(int decorationMargin READ decorationMargin WRITE setDecorationMargin)
    Q_PROPERTY(QString decorationUrl READ decorationUrl WRITE setDecorationUrl)
    Q_PROPERTY(unsigned orientation READ orientation WRITE setOrientation)
    Q_PROPERTY(unsigned position READ position WRITE setPosition)

public:
    explicit DecoratedBorder(QWidget* parent = nullptr);

    int decorationMargin() const;
    void setDecorationMargin(int margin);
    QString decorationUrl() const;
    void setDecorationUrl(const QString& url);
    // A Qt::Orientation value.
    unsigned orientation() const;
    void setOrientation(unsigned orientation);
    unsigned position() const;
    void setPosition(unsigned position);
    QRect DecorationRect() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void UpdateSizePolicy();
    void UpdateDecorationRect();

    unsigned m_orientation = Qt::Horizontal;
    unsigned m_position = 0;
    int m_decorationMargin = 0;
    QRect m_decorationRect;
    QString m_decorationUrl;
    QSize m_decorationSize{-1, -1};
    QPixmap m_decoration;
};

} // namespace OrvantaQT
