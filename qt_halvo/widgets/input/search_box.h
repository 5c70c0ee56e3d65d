#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtWidgets/QLineEdit>

class QTimer;

namespace OrvantaQT {

// A search field. It paints a search button at its right end (a magnifier, or a cancel
// cross while a search is active) and optionally a history button, and shows an italic
// cue text while empty and unfocused. Without the search button a search starts a second
// after typing stops; with it, on Return or a click on the button. The cross clears the
// search. Return stays in the box: it does not reach a dialog's default button.
class QT_HALVO_EXPORT SearchBox : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(bool ShowSearchButton READ GetShowSearchButton WRITE SetShowSearchButton)
    Q_PROPERTY(bool ShowHistoryButton READ GetShowHistoryButton WRITE SetShowHistoryButton)
    Q_PROPERTY(int ButtonSearchWidth READ GetButtonSearchWidth WRITE SetButtonSearchWidth)
    Q_PROPERTY(int ButtonHistoryWidth READ GetButtonHistoryWidth WRITE SetButtonHistoryWidth)
    Q_PROPERTY(bool CancelMode READ GetCancelMode WRITE SetCancelMode)
    Q_PROPERTY(QString CueText READ GetCueText WRITE SetCueText)

public:
    enum ButtonState { NoButton = 0, SearchHovered = 1, SearchPressed = 2, HistoryHovered = 3, HistoryPressed = 4 };

    explicit SearchBox(QWidget* parent = nullptr);
    ~SearchBox() override;

    bool GetShowSearchButton() const;
    void SetShowSearchButton(bool show);
    bool GetShowHistoryButton() const;
    void SetShowHistoryButton(bool show);
    virtual int GetButtonSearchWidth() const;
    virtual void SetButtonSearchWidth(int width);
    virtual int GetButtonHistoryWidth() const;
    virtual void SetButtonHistoryWidth(int width);
    bool GetCancelMode() const;
    void SetCancelMode(bool cancel);
    QString GetCueText() const;
    void SetCueText(const QString& text);
    int State() const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void searchStarted();
    void resetSearch();
    void historyBrowse();

protected:
    virtual int GetCueTextLeftPad() const;
    virtual void PaintText(QPaintEvent* event);
    virtual void PaintButtons(QPaintEvent* event);
    virtual QRect GetButtonRect() const;
    virtual QRect GetButtonHistoryRect() const;
    virtual void UpdateTextMargins();

    void SetState(int state);
    bool IsSearchButtonHovered(const QPoint& point) const;
    bool IsHistoryButtonHovered(const QPoint& point) const;

    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private Q_SLOTS:
    void OnTextChanged(const QString& text);
    void OnTypingTimeout();
    void OnEnterPressed();

private:
    void StartSearch();
    QRect Band(int width, int hovered, int pressed) const;

    QTimer* m_typingTimer;
    QImage m_magnifier;
    QImage m_arrow;
    QImage m_cancel;
    QPixmap m_button;
    QString m_cueText;
    bool m_showSearchButton = false;
    bool m_showHistoryButton = false;
    int m_searchWidth = 25;
    int m_historyWidth = 18;
    bool m_cancelMode = false;
    int m_state = NoButton;
};

} // namespace OrvantaQT
