#pragma once

#include <qt_halvo/qt_halvo_global.h>
#include <qt_halvo/widgets/window/window_hit_test.h>

#include <QtCore/QByteArray>
#include <QtCore/QPointer>
#include <QtCore/QRect>
#include <QtGui/QColor>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

class QTimer;
class QVBoxLayout;

namespace OrvantaQT {

class TitleBar;

// A top-level window without the system's frame, whose title bar is the library's
// TitleBar. Its content is one central widget under the title bar.
//
// It resizes from a band along its edges (resizeBorderWidth device-independent pixels, so
// as many device pixels as the screen's pixel ratio makes them; none while maximised or
// full screen) through the window system (QWindow::startSystemResize), or by hand where
// the system refuses. On Windows the system's own hit test is answered, so that snapping
// works as for framed windows.
//
// Maximising asks the window manager; where none runs, or it ignores the request for a
// frameless window, the window is maximised by hand to the screen's available geometry
// and restored to exactly where it was.
//
// The frame is a one-pixel border (borderColor) around the child "Frame", which holds the
// title bar ("TitleBar") and the central widget; with shadowWidth above 0 a drop shadow
// (shadowColor) is drawn around it instead, where the window system composites
// transparent windows. All three come from the style sheet:
//   OrvantaQT--FramelessWindow { qproperty-shadowWidth: 16; qproperty-borderColor: @borderColor; }
class QT_HALVO_EXPORT FramelessWindow : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int resizeBorderWidth READ GetResizeBorderWidth WRITE SetResizeBorderWidth)
    Q_PROPERTY(int shadowWidth READ GetShadowWidth WRITE SetShadowWidth)
    Q_PROPERTY(QColor shadowColor READ GetShadowColor WRITE SetShadowColor)
    Q_PROPERTY(QColor borderColor READ GetBorderColor WRITE SetBorderColor)
    Q_PROPERTY(MaximizeMode maximizeMode READ GetMaximizeMode WRITE SetMaximizeMode)

public:
    enum MaximizeMode {
        // The window manager's maximise, by hand where it does not maximise.
        Automatic,
        // Always by hand.
        Emulated
    };
    Q_ENUM(MaximizeMode)

    explicit FramelessWindow(QWidget* parent = nullptr);
    ~FramelessWindow() override;

    TitleBar* GetTitleBar() const;

    // The widget under the title bar, which the window takes over; the one before is deleted.
    void SetCentralWidget(QWidget* widget);
    QWidget* CentralWidget() const;

    // 5 by default.
    int GetResizeBorderWidth() const;
    void SetResizeBorderWidth(int width);
    // 0 (no shadow, the border only) by default.
    int GetShadowWidth() const;
    void SetShadowWidth(int width);
    QColor GetShadowColor() const;
    void SetShadowColor(const QColor& color);
    QColor GetBorderColor() const;
    void SetBorderColor(const QColor& color);
    MaximizeMode GetMaximizeMode() const;
    void SetMaximizeMode(MaximizeMode mode);

    // Maximised by the window manager or by hand.
    bool IsMaximized() const;
    // Maximised by hand.
    bool IsMaximizeEmulated() const;
    // Whether the shadow is drawn (a shadow width and a compositing window system).
    bool HasShadow() const;

    // The window's geometry and state in the format of QWidget::saveGeometry(), which
    // QWidget::restoreGeometry() reads too (a maximise by hand is saved as a maximise).
    QByteArray SaveGeometry() const;
    // Restores what SaveGeometry() or QWidget::saveGeometry() gave: on the screen that holds
    // the saved geometry, or inside the one that is left when that screen is gone, and
    // maximised or full screen again. False, with the window unchanged, for data that is
    // not a saved geometry.
    bool RestoreGeometry(const QByteArray& geometry);

    // What lies where in the window now, in its own coordinates.
    WindowHitRegions HitRegions() const;

public Q_SLOTS:
    void ShowMaximized();
    void ShowNormal();
    void ToggleMaximized();
    void SetMaximized(bool maximized);

Q_SIGNALS:
    void MaximizedChanged(bool maximized);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool nativeEvent(const QByteArray& eventType, void* message, long* result) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void UpdateFrame();
    int ShadowMargin() const;
    void EmulateMaximize();
    void CheckMaximized();
    void ReportMaximized();
    static QPixmap ShadowPixmap(int width, const QColor& color);
    bool HandleResizeEvent(QEvent* event);
    void SetResizeCursor(Qt::Edges edges);
    Qt::Edges ResizeEdgesAt(const QPointF& pos) const;
    QRect ResizedGeometry(const QPoint& globalPos) const;
    QRect RestoredGeometry(const QRect& saved, int screenNumber) const;

    TitleBar* m_titleBar;
    QWidget* m_frame;
    QVBoxLayout* m_frameLayout;
    QPointer<QWidget> m_central;
    int m_resizeBorderWidth = 5;
    int m_shadowWidth = 0;
    QColor m_shadowColor = QColor(0, 0, 0, 90);
    QColor m_borderColor;
    MaximizeMode m_maximizeMode = Automatic;
    bool m_compositing = false;
    bool m_emulatedMaximize = false;
    bool m_reportedMaximized = false;
    QRect m_restoreGeometry;
    QTimer* m_maximizeCheck;
    QPixmap m_shadow;
    // A resize by hand: the edges, where the press was and the geometry then.
    Qt::Edges m_resizeEdges;
    QPoint m_resizePress;
    QRect m_resizeStart;
    bool m_cursorSet = false;
    QPointer<QWindow> m_watchedWindow;
};

} // namespace OrvantaQT
