#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QMargins>
#include <QtWidgets/QToolButton>

#include <memory>

namespace OrvantaQT {

class ToolBarPicture;

// A button of a ToolBar: an icon, a text, checkable, with a menu or a popup, as any
// QToolButton (setDefaultAction, setMenu, setPopupMode...).
//
// Its background is cut from a picture of three bands of equal height stacked from the
// top: hovered, pressed or checked, normal (":/tool_bar_button.png" by default, 6-pixel
// borders), stretched over the button with DrawBorderPixmap. The icon, text and menu
// arrow are then drawn by the style, without the style's own panel.
//
// The style properties "hovered" and "selected" (checked) follow the pointer and the
// check state, so style sheets can test them:
//   OrvantaQT--ToolBarButton[selected="true"] { background: #c8daf3; }
// When a rule of a style sheet applies to the button (Qt::WA_StyleSheetTarget), the
// sheet paints the whole button as it would a QToolButton and the picture is not used.
class QT_HALVO_EXPORT ToolBarButton : public QToolButton
{
    Q_OBJECT
    // A path (a resource or a file); empty paints no background.
    Q_PROPERTY(QString backgroundImage READ GetBackgroundImage WRITE SetBackgroundImage)
    Q_PROPERTY(QMargins backgroundBorders READ GetBackgroundBorders WRITE SetBackgroundBorders)
    // The same border on every side, for style sheets (qproperty-backgroundBorder: 6),
    // which cannot give margins.
    Q_PROPERTY(int backgroundBorder READ GetBackgroundBorder WRITE SetBackgroundBorder STORED false)
    // The small arrow of a button whose menu opens on a press (true by default).
    Q_PROPERTY(bool menuIndicatorVisible READ IsMenuIndicatorVisible WRITE SetMenuIndicatorVisible)

public:
    explicit ToolBarButton(QWidget* parent = nullptr);
    // Shows and triggers the action (QToolButton::setDefaultAction); null is logged and
    // leaves a plain button.
    explicit ToolBarButton(QAction* action, QWidget* parent = nullptr);
    ~ToolBarButton() override;

    QString GetBackgroundImage() const;
    // A path that gives no picture is logged; the button is then painted without one.
    void SetBackgroundImage(const QString& path);
    QMargins GetBackgroundBorders() const;
    // Negative borders are logged and ignored.
    void SetBackgroundBorders(const QMargins& borders);
    // The left border.
    int GetBackgroundBorder() const;
    void SetBackgroundBorder(int border);

    bool IsMenuIndicatorVisible() const;
    void SetMenuIndicatorVisible(bool visible);

    // Which band of the picture shows now.
    enum class Band { Hovered, Pressed, Normal };
    Band CurrentBand() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::unique_ptr<ToolBarPicture> m_picture;
    bool m_menuIndicatorVisible = true;
};

} // namespace OrvantaQT
