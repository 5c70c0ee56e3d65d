#include <qt_halvo/widgets/input/button_line_edit.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QToolButton>

namespace OrvantaQT {

ButtonLineEdit::ButtonLineEdit(QWidget* parent)
    : QLineEdit(parent)
    , m_button(new QToolButton(this))
{
    auto* layout = new QHBoxLayout(this);
    m_button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    m_button->setAttribute(Qt::WA_MouseTracking);
    m_button->installEventFilter(this);
    m_button->setFocusPolicy(Qt::ClickFocus);
    connect(m_button, &QToolButton::clicked, this, &ButtonLineEdit::buttonClicked);
    connect(m_button, &QToolButton::pressed, this, &ButtonLineEdit::buttonPressed);
    connect(m_button, &QToolButton::released, this, &ButtonLineEdit::buttonReleased);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addStretch();
    layout->addWidget(m_button);
    setProperty("ButtonLineEdit", true);
}

ButtonLineEdit::~ButtonLineEdit() = default;

bool ButtonLineEdit::buttonEnabled() const
{
    return m_button && m_button->isEnabled();
}

QToolButton* ButtonLineEdit::Button() const
{
    return m_button;
}

void ButtonLineEdit::setButtonEnabled(bool enable)
{
    if (m_button)
        m_button->setEnabled(enable);
}

bool ButtonLineEdit::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_button) {
        if (event->type() == QEvent::Enter && m_button->isEnabled())
            QApplication::setOverrideCursor(Qt::PointingHandCursor);
        else if (event->type() == QEvent::Leave)
            QApplication::restoreOverrideCursor(); // unconditionally, as the line edit always has
    }
    return QLineEdit::eventFilter(watched, event);
}

} // namespace OrvantaQT
