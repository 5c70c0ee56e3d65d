#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QLabel>

namespace OrvantaQT {

// Shows a multi-line text as one rich-text paragraph, "<p style = \"line-height:N\">",
// and tells where its last line ends, counting N as a percentage of the font's height.
// The value has no unit, and Qt 5.15's rich text reads a unitless line height as a
// multiple of the font's (as CSS does): there, 1 or 2 give single or double spacing, and
// 100 gives a hundredfold one.
class QT_HALVO_EXPORT MultiLineLabel : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(int lineHeight READ lineHeight WRITE setLineHeight)
    Q_PROPERTY(QString multilineText READ multilineText WRITE setMultilineText)

public:
    explicit MultiLineLabel(const QString& text, QWidget* parent = nullptr);
    explicit MultiLineLabel(QWidget* parent = nullptr);
    ~MultiLineLabel() override;

    int lineHeight() const;
    QString multilineText() const;

    // Just after the end of the last line, at that line's top: a place for something
    // that should follow the text.
    QPoint LastLineTopRight() const;

public Q_SLOTS:
    void setLineHeight(int spacingType);
    void setMultilineText(const QString& text);

private:
    QString Format(const QString& text) const;

    QString m_multilineText;
    int m_lineHeight = 100;
};

} // namespace OrvantaQT
