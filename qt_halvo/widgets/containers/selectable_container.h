#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QFrame>

namespace OrvantaQT {

// A frame that holds any widgets and is hovered, clicked and selected as a whole, like an
// item of a list: a card, a choice with a picture and a caption. Its state is the style
// properties "hovered" and "selected", which style sheets test:
//   OrvantaQT--SelectableContainer[selected="true"] { border: 2px solid @accentColor; }
// The hover stays while the pointer moves onto its own children.
//
// A click (mouse press and release on it or on a child that leaves the mouse alone, or
// Space, Enter or Return with the focus on it) selects it, then emits Clicked(). Clicking
// it while it is selected deselects it only when it is deselectable (WidgetGroupHelper
// makes its members so in its "none selected" mode). It takes the focus by tab and click.
//
// Screen readers see a selectable list item with the states selectable, selected and
// focusable, and the actions press and toggle; its name, unless set, joins the names of
// its children.
class QT_HALVO_EXPORT SelectableContainer : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(bool deselectable READ IsDeselectable WRITE SetDeselectable)

public:
    explicit SelectableContainer(QWidget* parent = nullptr);
    ~SelectableContainer() override;

    // Not declared as Q_PROPERTYs: "selected" and "hovered" are the style properties.
    bool IsSelected() const;
    void SetSelected(bool selected);
    bool IsHovered() const;

    bool IsDeselectable() const;
    void SetDeselectable(bool deselectable);

public Q_SLOTS:
    // As a click by the user; nothing while disabled.
    void Click();

Q_SIGNALS:
    void Clicked();
    void SelectedChanged(bool selected);
    void HoveredChanged(bool hovered);

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void SetHovered(bool hovered);

    bool m_selected = false;
    bool m_hovered = false;
    bool m_deselectable = false;
    bool m_pressed = false;
};

} // namespace OrvantaQT
