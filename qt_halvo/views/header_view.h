#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QHeaderView>

class QHelpEvent;

namespace OrvantaQT {

// A QHeaderView with the library's defaults: sections clickable and highlighted with the
// selection, the sort indicator shown (on no section until one is clicked or sorted by),
// titles elided at the right, the last section stretched and titles aligned left
// (horizontal), the section under the pointer tracked (HoveredSection(), the style
// property "hovered" on the header while the pointer is over it), and a tool tip with the
// whole title for a section whose title does not fit (the model's own Qt::ToolTipRole
// header data wins).
class QT_HALVO_EXPORT HeaderView : public QHeaderView
{
    Q_OBJECT
    Q_PROPERTY(int hoveredSection READ HoveredSection NOTIFY HoveredSectionChanged)

public:
    explicit HeaderView(Qt::Orientation orientation, QWidget* parent = nullptr);
    ~HeaderView() override;

    // The logical index of the section under the pointer, or -1.
    int HoveredSection() const;

Q_SIGNALS:
    void HoveredSectionChanged(int logicalIndex);

protected:
    bool viewportEvent(QEvent* event) override;

private:
    void UpdateHovered();
    QRect SectionRect(int logicalIndex) const;
    // The whole title of the section when the header shows it cut, else empty.
    QString CutTitle(int logicalIndex) const;
    bool ShowCutTitle(QHelpEvent* event);

    int m_hoveredSection = -1;
    bool m_pointerOver = false;
    QPoint m_pointer;
};

} // namespace OrvantaQT
