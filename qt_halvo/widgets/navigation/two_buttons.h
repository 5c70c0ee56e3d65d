#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtGui/QColor>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

#include <memory>

class QPushButton;

namespace OrvantaQT {

class ToolBarPicture;

// An accept and a reject button joined into one pair, in the order the style's dialogs use
// (QStyle::SH_DialogButtonLayout, as QDialogButtonBox places AcceptRole and RejectRole):
// accept first for the Windows and KDE layouts, reject first for the macOS, GNOME and
// Android ones; mirrored right to left. The order follows a change of style.
//
// With the focus on either button, Enter (or Return) accepts and Escape rejects; Space
// clicks the focused button. The pair is painted as one rounded background cut from
// ":/two_buttons.png" (bands for normal, hovered and pressed), the hovered or pressed
// button's half in its band, and a divider between the halves. The buttons are named
// "AcceptButton" and "RejectButton" for style sheets and screen readers.
class QT_HALVO_EXPORT TwoButtons : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString acceptText READ GetAcceptText WRITE SetAcceptText RESET ResetAcceptText)
    Q_PROPERTY(QString rejectText READ GetRejectText WRITE SetRejectText RESET ResetRejectText)

public:
    explicit TwoButtons(QWidget* parent = nullptr);
    ~TwoButtons() override;

    // "OK" by default, translated; reset brings the translated default back.
    QString GetAcceptText() const;
    void SetAcceptText(const QString& text);
    void ResetAcceptText();
    // "Cancel" by default, translated.
    QString GetRejectText() const;
    void SetRejectText(const QString& text);
    void ResetRejectText();

    QPushButton* AcceptButton() const;
    QPushButton* RejectButton() const;
    // Whether the accept button comes first in reading order for the current style.
    bool IsAcceptFirst() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    // Emit the signals, as the buttons and keys do.
    void Accept();
    void Reject();

Q_SIGNALS:
    void Accepted();
    void Rejected();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void UpdateTexts();
    // The buttons in the style's order, then placed.
    void UpdateOrder();
    void PlaceButtons();
    void RebuildBackground();

    QPushButton* m_accept;
    QPushButton* m_reject;
    QString m_acceptText; // empty for the default
    QString m_rejectText;
    bool m_acceptFirst = true; // in reading order
    std::unique_ptr<ToolBarPicture> m_picture;
    QColor m_divider;
    // The normal band stretched over the whole pair at its size.
    QPixmap m_background;
};

} // namespace OrvantaQT
