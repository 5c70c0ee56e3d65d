#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QScrollArea>

namespace OrvantaQT {

// A scroll area for pages drawn over a picture or a gradient: no frame, and neither the
// area, its viewport nor its content paints a background, whatever style sheet or palette
// asks them to (see TransparentWidget). The scroll bars keep their look. It starts with a
// TransparentWidget as content (GetContent()), resized with the area; put a layout on it.
// A widget given through setWidget() instead is made see-through too.
class QT_HALVO_EXPORT ScrollableTransparentWidget : public QScrollArea
{
    Q_OBJECT

public:
    explicit ScrollableTransparentWidget(QWidget* parent = nullptr);
    ~ScrollableTransparentWidget() override;

    // The widget scrolled (QScrollArea::widget()).
    QWidget* GetContent() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool event(QEvent* event) override;
};

} // namespace OrvantaQT
