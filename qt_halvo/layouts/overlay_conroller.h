#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QMargins>
#include <QtCore/QObject>

class QWidget;

namespace OrvantaQT {

// Keeps an overlay on its parent widget: docked to one side at full length (left, right,
// top or bottom, the first that the alignment names, inset by that side's margin),
// centred, or over all of it (AlignJustify). Magic centering sits a centred overlay at
// 0.45 of the free height instead of half way. The overlay leaves its parent's layout.
class QT_HALVO_EXPORT OverlayConroller : public QObject
{
    Q_OBJECT

public:
    OverlayConroller(QWidget* overlay, Qt::Alignment alignment, bool magicCentering);

    void Update();
    void SetMargins(const QMargins& margins);
    void SetMagicCentering(bool magicCentering);
    bool IsMagicCenteringUsed() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* Overlay() const;

    Qt::Alignment m_alignment;
    QMargins m_margins;
    bool m_magicCentering;
};

// Makes the overlay an OverlayConroller'd one that lets mouse events through, named
// objectName, on top of its siblings.
QT_HALVO_EXPORT void SetOverlayController(QWidget* overlay, const QString& objectName, Qt::Alignment alignment);

} // namespace OrvantaQT
