#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QMargins>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QVector>

class QWidget;

namespace OrvantaQT {

// Keeps one widget's edges and centre lines pinned to points of other widgets (targets),
// at most one anchor per own point, all with the same margins. It is a child of the
// anchored widget and watches it and its targets: when a target moves or resizes the
// widget follows, and when someone else moves or resizes the widget it is pulled back.
// Reach it through AnchorLayout, which keeps it in the widget's "_a_anchorController".
class QT_HALVO_EXPORT AnchorController : public QObject
{
    Q_OBJECT

public:
    struct Anchor
    {
        QPointer<QWidget> target;
        Qt::AnchorPoint targetPoint;
        Qt::AnchorPoint ownPoint;
    };

    explicit AnchorController(QWidget* widget);
    ~AnchorController() override;

    // Replaces the anchor of ownPoint; a null target only removes it.
    void SetAnchor(QWidget* target, Qt::AnchorPoint targetPoint, Qt::AnchorPoint ownPoint);
    // Applies the anchors again with the new margins.
    void SetMargins(const QMargins& margins);
    QMargins GetMargins() const;
    QVector<Anchor> GetAnchors() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void UpdateAnchors(const QWidget* target);
    bool HasOppositeEdgeAnchor(Qt::AnchorPoint point) const;
    void Apply(const Anchor& anchor);

    QWidget* m_widget;
    QVector<Anchor> m_anchors;
    QMargins m_margins;
    bool m_updating = false;
};

} // namespace OrvantaQT
