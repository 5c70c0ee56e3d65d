#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QWidget>

namespace OrvantaQT {

// A container without a background, for pages drawn over a picture or a gradient that
// its parent paints: it paints nothing of its own, its children paint as usual. It stays
// see-through whatever asks it to fill its background: a style sheet's background (one
// for QWidget that reaches it too), a palette with autoFillBackground, QScrollArea::
// setWidget() turning the fill on. Meant as a child: a window of its own has nothing
// under it unless it is given Qt::WA_TranslucentBackground.
class QT_HALVO_EXPORT TransparentWidget : public QWidget
{
    Q_OBJECT

public:
    explicit TransparentWidget(QWidget* parent = nullptr);
    ~TransparentWidget() override;

protected:
    bool event(QEvent* event) override;
};

} // namespace OrvantaQT
