#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtGui/QFont>
#include <QtWidgets/QPlainTextEdit>

class QAbstractTextDocumentLayout;

namespace OrvantaQT {

// A plain-text edit as tall as its text: the lines the text takes at the edit's width (a
// wrapped line counts as more than one), never fewer than minimumLines nor more than
// maximumLines. Past the maximum the text scrolls, and only then a vertical scroll bar
// shows; the edit sets that policy itself. Its vertical size policy is Fixed, so a layout
// gives it that height. An empty edit, placeholder text or not, is one line of text tall.
//
// Input is plain text only: a paste or drop of rich text inserts the text without its
// formatting, and images are refused. With a maximumLength (0: none), typing, composing,
// pasting and dropping leave no more characters than it: a key that would go past it is
// refused, a paste or a composed text keeps what fits, and MaximumLengthReached() is
// emitted once for each input refused or cut, after what fits is in. Text set from code
// is not cut; while it is longer, deleting works and input that leaves it too long does not.
class QT_HALVO_EXPORT CustomPlainTextEdit : public QPlainTextEdit
{
    Q_OBJECT
    Q_PROPERTY(int minimumLines READ GetMinimumLines WRITE SetMinimumLines)
    Q_PROPERTY(int maximumLines READ GetMaximumLines WRITE SetMaximumLines)
    Q_PROPERTY(int maximumLength READ GetMaximumLength WRITE SetMaximumLength)

public:
    explicit CustomPlainTextEdit(QWidget* parent = nullptr);
    ~CustomPlainTextEdit() override;

    // At least 1 and at most the maximum; a value outside is logged and brought inside.
    int GetMinimumLines() const;
    void SetMinimumLines(int lines);
    // 8 by default; one below the minimum is logged and the minimum used.
    int GetMaximumLines() const;
    void SetMaximumLines(int lines);
    // In characters of toPlainText(); 0 for none. A negative one is logged and means none.
    int GetMaximumLength() const;
    void SetMaximumLength(int length);

    // The lines the text takes at the edit's present width, a wrapped line counting as
    // more than one. The count stops at the first block that takes it past
    // GetMaximumLines(): the height no longer depends on the rest, so its cost does not
    // grow with the text.
    int ContentLines() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void MaximumLengthReached();

protected:
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // The lines of the text, counted up to one past the maximum, and the height of those up
    // to the maximum.
    int CountLines(qreal* textHeight) const;
    qreal LineHeight() const;
    int Room() const;
    void Watch();
    void Remeasure();

    QPointer<QAbstractTextDocumentLayout> m_watched;
    mutable QFont m_lineFont;
    mutable qreal m_lineHeight = -1;
    int m_minimumLines = 1;
    int m_maximumLines = 8;
    int m_maximumLength = 0;
    int m_height = 0;
    bool m_measuring = false;
};

} // namespace OrvantaQT
