// The combo box at the right end of a custom line edit: its text right-aligned, elided
// on the right, optionally followed by a constant ending that always shows.
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <QtWidgets/QComboBox>

namespace OrvantaQT {

class QT_HALVO_AUTOTEST_EXPORT RightAlignComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit RightAlignComboBox(QWidget* parent = nullptr);

    void SetConstEnding(const QString& ending);
    QString ConstEnding() const;
    void SetTextToDraw(const QString& text);
    void SetAppendEnding(bool append);
    // The width of the style's arrow, measured at the last paint (32 until then).
    int ArrowWidth() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_constEnding;
    QString m_textToDraw;
    bool m_appendEnding = false;
    int m_arrowWidth = 32;
};

} // namespace OrvantaQT
