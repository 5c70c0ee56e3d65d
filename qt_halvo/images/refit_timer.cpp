#include "refit_timer_p.h"

#include <QtWidgets/QWidget>

namespace OrvantaQT {

RefitTimer::RefitTimer(QWidget* widget, std::function<void()> refit)
    : QObject(widget), m_widget(widget), m_refit(std::move(refit))
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(kDelay);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (Differs())
            m_refit();
    });
}

void RefitTimer::Asked()
{
    m_timer.stop();
    m_size = m_widget->size();
    m_ratio = m_widget->devicePixelRatioF();
}

bool RefitTimer::Differs() const
{
    return m_widget->size() != m_size || !qFuzzyCompare(m_widget->devicePixelRatioF(), m_ratio);
}

void RefitTimer::Check()
{
    if (Differs())
        m_timer.start();
}

} // namespace OrvantaQT
