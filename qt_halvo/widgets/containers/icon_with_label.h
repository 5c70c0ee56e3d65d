#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtCore/QSize>
#include <QtGui/QIcon>
#include <QtWidgets/QWidget>

class QBoxLayout;
class QLabel;

namespace OrvantaQT {

// An icon and a text beside it (Qt::Horizontal, the default) or below it (Qt::Vertical),
// as in a form's caption or a tile. The text is elided at the right when the widget is
// narrower than it; the full text is then the label's tool tip. An "&" in the text marks
// a mnemonic: with a buddy set, Alt and that letter focus the buddy (and click a button),
// as QLabel::setBuddy() does, also while the letter is elided; the letter is underlined
// while there is a buddy. "&&" shows an "&". The size hint fits the whole text, the
// minimum size an ellipsis; an empty icon or text takes no room.
// Children for style sheets: "Icon" and "Label" (a QLabel), with the accessible names
// "IconWithLabel_Icon" and "IconWithLabel_Label".
class QT_HALVO_EXPORT IconWithLabel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QIcon icon READ GetIcon WRITE SetIcon)
    Q_PROPERTY(QString text READ GetText WRITE SetText)
    Q_PROPERTY(QSize iconSize READ GetIconSize WRITE SetIconSize RESET ResetIconSize)
    Q_PROPERTY(Qt::Orientation orientation READ GetOrientation WRITE SetOrientation)

public:
    explicit IconWithLabel(QWidget* parent = nullptr);
    IconWithLabel(const QIcon& icon, const QString& text, QWidget* parent = nullptr);
    ~IconWithLabel() override;

    QIcon GetIcon() const;
    void SetIcon(const QIcon& icon);

    QString GetText() const;
    void SetText(const QString& text);
    // The text as shown now: elided, without the mnemonic marks.
    QString GetShownText() const;
    bool IsElided() const;

    // The style's small icon size by default; an empty size is logged and ignored.
    QSize GetIconSize() const;
    void SetIconSize(const QSize& size);
    void ResetIconSize();

    Qt::Orientation GetOrientation() const;
    void SetOrientation(Qt::Orientation orientation);

    // The widget that the text's mnemonic focuses; not owned.
    QWidget* GetBuddy() const;
    void SetBuddy(QWidget* buddy);

protected:
    bool event(QEvent* event) override;

private:
    void UpdateShortcut();
    void UpdateIconSize();
    void ApplyOrientation();

    QIcon m_icon;
    QString m_text;
    QSize m_iconSize;
    bool m_iconSizeSet = false;
    Qt::Orientation m_orientation = Qt::Horizontal;
    QPointer<QWidget> m_buddy;
    QMetaObject::Connection m_buddyGone;
    int m_shortcutId = 0;

    QWidget* m_iconPart;
    QLabel* m_label;
    QBoxLayout* m_layout;
};

} // namespace OrvantaQT
