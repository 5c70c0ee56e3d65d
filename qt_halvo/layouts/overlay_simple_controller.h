#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QPair>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QSize>

class QWidget;

namespace OrvantaQT {

// Keeps an overlay over a container: at an anchor widget's position plus a correction,
// the container's size (anchor position mode), or from the container's top down to the
// anchor (anchor height mode). Without an anchor the container is the anchor. A hidden
// overlay is left where it is, and placed again as it is shown.
class QT_HALVO_EXPORT OverlaySimpleController : public QObject
{
    Q_OBJECT

public:
    enum ModeEnum { AnchorPosition = 0, AnchorHeight = 1 };

    OverlaySimpleController(QWidget* container, QWidget* overlay, QObject* parent, QWidget* anchor,
                            const QPoint& correction, ModeEnum mode);

    void SetPositionCorrection(const QPoint& correction);
    QPoint GetPositionCorrection() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPair<QPoint, QSize> CalcGeometry() const;
    void UpdateGeometry();

    QPointer<QWidget> m_container;
    QPointer<QWidget> m_overlay;
    QPointer<QWidget> m_anchor;
    QPoint m_correction;
    ModeEnum m_mode;
};

// An overlay over the container at the anchor's position plus the correction.
QT_HALVO_EXPORT void SetOverlayWithAnchor(QWidget* container, QWidget* overlay, const QString& objectName,
                                          QWidget* anchor, const QPoint& correction);
// An overlay over the container down to the anchor.
QT_HALVO_EXPORT void SetOverlayWithAnchorHeight(QWidget* container, QWidget* overlay, const QString& objectName,
                                                QWidget* anchor, const QPoint& correction);

} // namespace OrvantaQT
