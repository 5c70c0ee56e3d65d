#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtGui/QIcon>
#include <QtWidgets/QWidget>

class QLabel;
class QPushButton;

namespace OrvantaQT {

class BusyIndicatorRing;

// A message centred over a container, a little above the middle (OverlayConroller with
// magic centering): an optional icon, a title, a word-wrapped text, an optional busy ring
// and an optional action button, for "No results", "Loading…" or "Connection lost".
// Each part shows only when it has something to show. Mouse events go on to the container
// everywhere but on the button. Style sheets reach the parts by their object names
// ("Icon", "Title", "Text", "BusyIndicator", "ActionButton").
class QT_HALVO_EXPORT InfoOverlayWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QIcon icon READ GetIcon WRITE SetIcon)
    Q_PROPERTY(QSize iconSize READ GetIconSize WRITE SetIconSize)
    Q_PROPERTY(QString title READ GetTitle WRITE SetTitle)
    Q_PROPERTY(QString text READ GetText WRITE SetText)
    Q_PROPERTY(bool busy READ IsBusy WRITE SetBusy)
    Q_PROPERTY(QString actionText READ GetActionText WRITE SetActionText)

public:
    enum class Preset { NoResults, Loading, ConnectionLost };
    Q_ENUM(Preset)

    // The container is the parent; without one the overlay logs and is a plain widget.
    explicit InfoOverlayWidget(QWidget* container);
    ~InfoOverlayWidget() override;

    QIcon GetIcon() const;
    void SetIcon(const QIcon& icon);
    // Twice the style's large icon size by default.
    QSize GetIconSize() const;
    void SetIconSize(const QSize& size);
    QString GetTitle() const;
    void SetTitle(const QString& title);
    QString GetText() const;
    void SetText(const QString& text);
    bool IsBusy() const;
    void SetBusy(bool busy);
    // Empty: no button.
    QString GetActionText() const;
    void SetActionText(const QString& text);

    // The icon, texts, ring and button of a common message; the text is the caller's.
    void SetPreset(Preset preset, const QString& text = QString());

    BusyIndicatorRing* BusyIndicator() const;
    QPushButton* ActionButton() const;

Q_SIGNALS:
    void ActionTriggered();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void UpdateIcon();
    void FitToContainer();

    QPointer<QWidget> m_container;
    QIcon m_icon;
    QSize m_iconSize;
    QLabel* m_iconLabel;
    QLabel* m_title;
    QLabel* m_text;
    BusyIndicatorRing* m_busy;
    QPushButton* m_action;
};

} // namespace OrvantaQT
