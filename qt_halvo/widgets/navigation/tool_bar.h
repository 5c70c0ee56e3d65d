#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QMargins>
#include <QtCore/QPointer>
#include <QtCore/QVector>
#include <QtGui/QIcon>
#include <QtWidgets/QWidget>

#include <memory>

class QMenu;
class QWidgetAction;

namespace OrvantaQT {

class ToolBarButton;
class ToolBarPicture;

// A horizontal bar of tool buttons built from actions, as QToolBar is: every action added
// (AddAction or QWidget::addAction) gets a ToolBarButton that shows and triggers it, a
// separator action a separator line, a QWidgetAction the widget it gives
// (QWidgetAction::requestWidget), an action with a menu a button that opens the menu.
// Removing the action (QWidget::removeAction, or deleting it) removes its item.
//
// The items sit side by side from the leading edge at their preferred widths, the
// spacing apart, vertically centred; items that can grow take the bar's height, and the
// widths left over go to items that expand horizontally. When the bar is too narrow for
// all of them, the items that do not fit go, in order, to the menu of an overflow button
// at the trailing edge (shown only then): a button as its action, a button with a menu as
// that submenu, a QWidgetAction as itself (its default widget moves into the menu and
// back), a separator as a separator. They come back when the bar widens. A new width only
// moves, shows and hides the widgets there are; none is made again (but a QWidgetAction
// that makes a widget per container, with createWidget(), makes one for the menu).
//
// The background is a picture (":/tool_bar_background.png", 6-pixel borders, by default)
// stretched over the bar with DrawBorderPixmap; a style sheet rule that applies to the bar
// (Qt::WA_StyleSheetTarget) paints it instead. Children for style sheets: "OverflowButton"
// (a ToolBarButton), "OverflowMenu" and "Separator", with the accessible names
// "ToolBar_<role>".
//
// Keyboard: as in QToolBar, the buttons the bar makes and the overflow button take no
// focus (Qt::NoFocus); the actions' shortcuts reach them. Buttons added with AddButton
// keep their own focus policy.
class QT_HALVO_EXPORT ToolBar : public QWidget
{
    Q_OBJECT
    // A path (a resource or a file); empty paints no background.
    Q_PROPERTY(QString backgroundImage READ GetBackgroundImage WRITE SetBackgroundImage)
    Q_PROPERTY(QMargins backgroundBorders READ GetBackgroundBorders WRITE SetBackgroundBorders)
    // The same border on every side, for style sheets (qproperty-backgroundBorder: 6),
    // which cannot give margins.
    Q_PROPERTY(int backgroundBorder READ GetBackgroundBorder WRITE SetBackgroundBorder STORED false)
    // Between items, in pixels; the style's (QStyle::PM_ToolBarItemSpacing) when reset.
    Q_PROPERTY(int spacing READ GetSpacing WRITE SetSpacing RESET ResetSpacing)
    // Given to every ToolBarButton on the bar, as QToolBar does to its buttons; the style's
    // tool bar icon size when reset.
    Q_PROPERTY(QSize iconSize READ GetIconSize WRITE SetIconSize RESET ResetIconSize)
    Q_PROPERTY(Qt::ToolButtonStyle toolButtonStyle READ GetToolButtonStyle WRITE SetToolButtonStyle)

public:
    explicit ToolBar(QWidget* parent = nullptr);
    ~ToolBar() override;

    // Adds the action at the end and returns its button; null (and nothing added) for a
    // null action, which is logged. A separator or a QWidgetAction that gives a widget
    // is added all the same but has no button: null is returned.
    ToolBarButton* AddAction(QAction* action);
    // A new action of the bar's, with the text (and icon).
    ToolBarButton* AddAction(const QString& text);
    ToolBarButton* AddAction(const QIcon& icon, const QString& text);
    // The same before the item of `before` (at the end when it is not on the bar).
    ToolBarButton* InsertAction(QAction* before, QAction* action);
    // A button that opens the menu on a press (the menu's menuAction()); the menu stays
    // its owner's.
    ToolBarButton* AddMenu(QMenu* menu);
    QAction* AddSeparator();
    // Puts the widget on the bar through a new QWidgetAction whose default widget it is,
    // as QToolBar::addWidget does; the bar owns the widget from then on.
    QAction* AddWidget(QWidget* widget);
    // Puts a button made by the caller on the bar; the bar owns it from then on and
    // deletes it with its action. Its action is its default action, or else a new one of
    // the bar's that follows its text, icon and state and stands for it in the overflow
    // menu (triggering it clicks the button).
    // Returns the button, or null when it is null or already on a bar (logged).
    ToolBarButton* AddButton(ToolBarButton* button);

    // The widget showing the action on the bar (its button, separator or widget); null
    // when the action is not on the bar. A QWidgetAction's widget is null while it is in
    // the overflow menu.
    QWidget* WidgetForAction(QAction* action) const;
    ToolBarButton* ButtonForAction(QAction* action) const;
    // The bar's action for a button on it.
    QAction* ActionForButton(ToolBarButton* button) const;

    // The actions in the overflow menu now, in order, those hidden by
    // QAction::setVisible(false) left out; empty when everything fits.
    QVector<QAction*> OverflowActions() const;
    ToolBarButton* OverflowButton() const;
    QMenu* OverflowMenu() const;

    QString GetBackgroundImage() const;
    // A path that gives no picture is logged; the bar is then painted without one.
    void SetBackgroundImage(const QString& path);
    QMargins GetBackgroundBorders() const;
    // Negative borders are logged and ignored.
    void SetBackgroundBorders(const QMargins& borders);
    int GetBackgroundBorder() const;
    void SetBackgroundBorder(int border);

    int GetSpacing() const;
    // Negative values are logged and ignored.
    void SetSpacing(int spacing);
    void ResetSpacing();

    QSize GetIconSize() const;
    void SetIconSize(const QSize& size);
    void ResetIconSize();
    Qt::ToolButtonStyle GetToolButtonStyle() const;
    void SetToolButtonStyle(Qt::ToolButtonStyle style);

    // Every item side by side; the height of the tallest item, the overflow button
    // included. The minimum is the overflow button alone.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    // An action of the bar's was triggered, by its button, the overflow menu or from
    // elsewhere (as QToolBar reports), or an action of a button's menu was, through the
    // button or the overflow menu.
    void ActionTriggered(QAction* action);
    // The items in the overflow menu changed (some went there or came back).
    void OverflowChanged();

protected:
    bool event(QEvent* event) override;
    void actionEvent(QActionEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Kind { Button, Separator, Custom };
    struct Item
    {
        QPointer<QAction> action;
        // On the bar, or (a QWidgetAction's) in the overflow menu.
        QPointer<QWidget> widget;
        Kind kind = Kind::Button;
        bool actionVisible = true; // as last seen
        // Stands for a button in the overflow menu when its action cannot: a button
        // added without an action, or one whose menu is not its action's.
        QPointer<QAction> proxy;
        // What is in the overflow menu for it, while it is there.
        QPointer<QAction> entry;
        // Measured by MeasureItems(), kept while the item is in the overflow menu.
        mutable QSize hint;
        mutable bool expanding = false;
        mutable bool growsVertically = false;

        // The widget of a Kind::Button item, which is always one.
        ToolBarButton* Button() const;
    };

    void InsertItem(int index, QAction* action);
    void RemoveItem(int index);
    int IndexOf(const QAction* action) const;
    bool IsShown(const Item& item) const;
    // Whether its size or size policy changed.
    bool MeasureItem(const Item& item) const;
    // Measures when the sizes may have changed unheard of (or `again`); whether any did.
    bool MeasureItems(bool again = false) const;
    int ItemsWidth() const;
    void Relayout();
    // Moves the items from `from` on into the overflow menu, and those before it back.
    void SetOverflowFrom(int from);
    void MoveToMenu(Item& item, QAction* before);
    void MoveToBar(Item& item);
    // Stops watching its widget; a QWidgetAction's goes back to its action.
    void LetGoOfWidget(Item& item);
    QAction* EntryFor(Item& item);
    void SyncProxy(const Item& item);
    void SyncProxies();
    void SetupButton(ToolBarButton* button, bool madeHere);
    void ApplyIconSize();
    void ItemsChanged();
    void OnWidgetDestroyed(QObject* widget);
    void OnProxyTriggered();

    QVector<Item> m_items;
    // Index of the first item in the overflow menu; m_items.size() when none is.
    int m_overflowFrom = 0;
    mutable bool m_measured = false;
    QSize m_laidOutSize;
    mutable QSize m_overflowHint;

    ToolBarButton* m_overflowButton = nullptr;
    QMenu* m_overflowMenu = nullptr;
    // The button being added by AddButton, taken up by actionEvent.
    ToolBarButton* m_adopting = nullptr;

    std::unique_ptr<ToolBarPicture> m_picture;
    int m_spacing = -1;
    QSize m_iconSize;
    Qt::ToolButtonStyle m_toolButtonStyle = Qt::ToolButtonIconOnly;
    bool m_inRelayout = false;
    // Reported at the end of the next layout.
    bool m_overflowChanged = false;
};

} // namespace OrvantaQT
