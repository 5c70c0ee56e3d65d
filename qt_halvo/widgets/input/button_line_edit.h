#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtWidgets/QLineEdit>

class QToolButton;

namespace OrvantaQT {

// A line edit with a tool button at its right end, inside its frame, whose clicks are
// passed on as signals. It carries the dynamic property "ButtonLineEdit" for style
// sheets, which must also give the text room (text margins).
class QT_HALVO_EXPORT ButtonLineEdit : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(bool buttonEnabled READ buttonEnabled WRITE setButtonEnabled)

public:
    explicit ButtonLineEdit(QWidget* parent = nullptr);
    ~ButtonLineEdit() override;

    bool buttonEnabled() const;
    QToolButton* Button() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void buttonClicked();
    void buttonPressed();
    void buttonReleased();

public Q_SLOTS:
    void setButtonEnabled(bool enable);

private:
    QPointer<QToolButton> m_button;
};

} // namespace OrvantaQT
