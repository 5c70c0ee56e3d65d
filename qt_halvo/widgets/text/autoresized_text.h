#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QVector>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtWidgets/QLabel>

namespace OrvantaQT {

// A one-line label that adapts what it shows to its width: the widest of several
// phrasings that fits (setStrings), a text that fades out towards the right edge
// (fadeElide), or, by default, each line elided. What did not fit goes into the tool tip.
// With hoverUnderline it is clickable: a pointing hand, the style property "hovered" for
// style sheets, and clicked().
class QT_HALVO_EXPORT AutoresizedText : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QString styleSheet READ styleSheet WRITE setStyleSheet)
    Q_PROPERTY(Qt::TextElideMode textElideMode READ elideMode WRITE setElideMode)
    Q_PROPERTY(bool hoverUnderline READ hoverUnderline WRITE setHoverUnderline)
    Q_PROPERTY(QString hoverStyle READ hoverStyle WRITE setHoverStyle)
    Q_PROPERTY(QStringList strings READ strings WRITE setStrings)
    Q_PROPERTY(bool fadeElide READ fadeElide WRITE setFadeElide)

public:
    explicit AutoresizedText(const QString& text, QWidget* parent = nullptr);
    explicit AutoresizedText(QWidget* parent = nullptr);
    ~AutoresizedText() override;

    // The text as set, not what is shown.
    QString text() const;
    Qt::TextElideMode elideMode() const;
    bool hoverUnderline() const;
    QString hoverStyle() const;
    bool fadeElide() const;
    // The phrasings, narrowest first.
    QStringList strings() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void clicked();
    void doubleClicked();

public Q_SLOTS:
    void setElideMode(Qt::TextElideMode elide = Qt::ElideRight);
    void setHoverUnderline(bool value);
    // Kept for style sheets and callers; the label does not apply it itself.
    void setHoverStyle(const QString& styleString);
    void setFadeElide(bool fade);
    void setStrings(const QStringList& strings);
    void setText(const QString& newText);

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    struct Phrasing
    {
        QString text;
        int width = 0;
    };

    void UpdateText();
    void MeasureStrings();
    void ApplyFade();
    QString PlainElided(int width) const;

    Qt::TextElideMode m_elideMode = Qt::ElideRight;
    bool m_hoverUnderline = false;
    QString m_hoverStyle;
    QVector<Phrasing> m_strings;
    QString m_text;
    bool m_fadeElide = false;
    QColor m_fadeFrom; // the foreground before the fade replaced it
    // The font the phrasings were last measured with: resizing alone measures nothing.
    QFont m_measuredFont;
    bool m_measured = false;
};

} // namespace OrvantaQT
