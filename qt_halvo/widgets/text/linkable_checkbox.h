#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QWidget>

class QHBoxLayout;

namespace OrvantaQT {

class ClickableLabel;
class HoverableCheckBox;

// A check box whose caption is a separate, word-wrapping rich-text label that may hold
// links: a click on the caption toggles the box, a click on a link in it only reports
// the link. Hovering the caption shows the box hovered.
class QT_HALVO_EXPORT LinkableCheckbox : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(Qt::TextFormat textFormat READ textFormat WRITE setTextFormat RESET resetTextFormat)
    Q_PROPERTY(bool wordWrap READ wordWrap WRITE setWordWrap RESET resetWordWrap)
    Q_PROPERTY(int spacing READ spacing WRITE setSpacing RESET resetSpacing)
    Q_PROPERTY(bool checked READ isChecked WRITE setChecked RESET resetChecked)

public:
    explicit LinkableCheckbox(QWidget* parent = nullptr);
    ~LinkableCheckbox() override;

    QString text() const;
    Qt::TextFormat textFormat() const;
    bool wordWrap() const;
    int spacing() const;
    bool isChecked() const;

    HoverableCheckBox* CheckBox() const;
    ClickableLabel* Caption() const;

Q_SIGNALS:
    void LinkActivated(const QString& link);
    void Toggled();
    void Clicked();
    void StateChanged(int state);

public Q_SLOTS:
    void setText(const QString& text);
    void setTextFormat(Qt::TextFormat format);
    void resetTextFormat();
    void setWordWrap(bool wrap);
    void resetWordWrap();
    void setSpacing(int spacing);
    void resetSpacing();
    void setChecked(bool checked);
    void resetChecked();

protected:
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QHBoxLayout* m_layout;
    HoverableCheckBox* m_checkBox;
    ClickableLabel* m_caption;
};

} // namespace OrvantaQT
