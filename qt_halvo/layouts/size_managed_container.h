#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtWidgets/QFrame>

namespace OrvantaQT {

class ResizeGrip;

// A container whose size the user sets with a grip, inside its window: the grip (a corner
// or an edge, ResizeGrip) resizes the container, not the window, within the container's
// minimum and maximum (and its layout's). In a layout the container asks for the size
// through its size hint, with a fixed size policy in the directions the grip resizes; on
// its own it resizes itself, and a grip on the left or top edge moves it as well.
// With a settings key the size is saved through QSettings when a drag ends and restored
// when the key is set.
class QT_HALVO_EXPORT SizeManagedContainer : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QSize managedSize READ GetManagedSize WRITE SetManagedSize NOTIFY SizeChanged)
    Q_PROPERTY(QString settingsKey READ GetSettingsKey WRITE SetSettingsKey)
    Q_PROPERTY(Qt::Edges gripEdges READ GetGripEdges WRITE SetGripEdges)

public:
    explicit SizeManagedContainer(QWidget* parent = nullptr, Qt::Edges gripEdges = Qt::BottomEdge | Qt::RightEdge);
    ~SizeManagedContainer() override;

    // The content, laid out to fill the container (the grip stays above it); the container
    // takes ownership, and a previous content is deleted.
    QWidget* GetWidget() const;
    void SetWidget(QWidget* widget);

    ResizeGrip* GetGrip() const;
    Qt::Edges GetGripEdges() const;
    void SetGripEdges(Qt::Edges edges);

    // The size the container keeps; invalid until the user or the host sets one.
    QSize GetManagedSize() const;
    // Kept within the acceptable sizes; a negative size is logged and refused.
    void SetManagedSize(const QSize& size);

    QString GetSettingsKey() const;
    void SetSettingsKey(const QString& key);

    QSize sizeHint() const override;

Q_SIGNALS:
    void SizeChanged(const QSize& size);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void OnDragStarted();
    void OnDragged(const QPoint& offset);
    void OnDragFinished();
    void ApplyPolicy();
    bool InLayout() const;

    ResizeGrip* m_grip;
    QPointer<QWidget> m_widget;
    QSize m_size;
    QSize m_dragStartSize;
    QPoint m_dragStartPosition;
    QString m_settingsKey;
};

} // namespace OrvantaQT
