#pragma once

#include <qt_halvo/qt_halvo_global.h>
#include <qt_halvo/widgets/window/window_hit_test.h>

#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace OrvantaQT {

// The title bar of a window without the system's frame: the window's icon, its title
// (elided, following windowTitle), a place for the host's widgets (a search box, a menu
// button) and the minimise, maximise-or-restore and close buttons.
//
// A press and drag on the caption (the bar outside its buttons and host widgets) moves the
// window through the window system (QWindow::startSystemMove), or by hand where the
// system refuses; a double click maximises or restores it. In a FramelessWindow the bar
// maximises the way that window does (emulated where the window manager will not).
//
// Children for style sheets: "Icon", "Title", "HostWidgets", "MinimizeButton",
// "MaximizeButton" (with the style property "WindowState": "Maximized" or "Normal") and
// "CloseButton", with the
// accessible names "TitleBar_<role>".
class QT_HALVO_EXPORT TitleBar : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool minimizeButtonVisible READ IsMinimizeButtonVisible WRITE SetMinimizeButtonVisible)
    Q_PROPERTY(bool maximizeButtonVisible READ IsMaximizeButtonVisible WRITE SetMaximizeButtonVisible)
    Q_PROPERTY(bool iconVisible READ IsIconVisible WRITE SetIconVisible)

public:
    explicit TitleBar(QWidget* parent = nullptr);
    ~TitleBar() override;

    // Puts a widget of the host's among the host widgets, after those added before; the
    // bar takes it over. Its clicks stay its own.
    void AddWidget(QWidget* widget);
    // Gives the widget back to the host (without a parent); false when it is not one of them.
    bool RemoveWidget(QWidget* widget);
    QList<QWidget*> Widgets() const;

    bool IsMinimizeButtonVisible() const;
    void SetMinimizeButtonVisible(bool visible);
    bool IsMaximizeButtonVisible() const;
    void SetMaximizeButtonVisible(bool visible);
    bool IsIconVisible() const;
    void SetIconVisible(bool visible);

    // The caption and the controls in the coordinates of the bar's window.
    WindowHitRegions HitRegions() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    // What the buttons do, for the host's own shortcuts.
    void Minimize();
    void ToggleMaximized();
    void CloseWindow();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    enum class Drag { None, Pressed, Manual };

    void WatchWindow();
    void UpdateTitle();
    void UpdateIcon();
    void UpdateMaximizeButton();
    bool IsWindowMaximized() const;
    bool OnCaption(const QPoint& pos) const;
    void StartMove(const QPoint& globalPos);

    QLabel* m_icon;
    QLabel* m_title;
    QWidget* m_hostWidgets;
    QHBoxLayout* m_hostLayout;
    QToolButton* m_minimize;
    QToolButton* m_maximize;
    QToolButton* m_close;
    QPointer<QWidget> m_window;
    Drag m_drag = Drag::None;
    QPoint m_pressGlobal;
    QPoint m_pressWindowPos;
    QSize m_dragSize;
};

} // namespace OrvantaQT
