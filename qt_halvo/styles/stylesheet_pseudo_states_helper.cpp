#include <qt_halvo/styles/stylesheet_pseudo_states_helper.h>

#include <qt_halvo/styles/hover_p.h>
#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtWidgets/QAbstractButton>

namespace OrvantaQT {

StylesheetPseudoStatesHelper::StylesheetPseudoStatesHelper(QAbstractButton* button, bool fixHover)
    : QObject(button)
    , m_button(button)
    , m_fixHover(fixHover)
{
    if (!button) {
        QTH_LOG_ERROR("StylesheetPseudoStatesHelper: no button");
        return;
    }
    button->installEventFilter(this);
    connect(button, SIGNAL(toggled(bool)), this, SLOT(UpdateStyle()));
}

void StylesheetPseudoStatesHelper::SetFixHover(bool fixHover)
{
    m_fixHover = fixHover;
}

void StylesheetPseudoStatesHelper::UpdateStyle()
{
    SetStyleProperties(m_button, {{"hovered", m_hovered}, {"selected", m_button->isChecked()}}, true);
}

bool StylesheetPseudoStatesHelper::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_button)
        return false;
    switch (event->type()) {
    case QEvent::Enter:
        m_hovered = true;
        UpdateStyle();
        break;
    case QEvent::Leave:
        if (m_fixHover && PointerStillOver(m_button))
            break;
        m_hovered = false;
        UpdateStyle();
        break;
    case QEvent::PolishRequest:
        UpdateStyle();
        break;
    default:
        break;
    }
    return false;
}

} // namespace OrvantaQT
