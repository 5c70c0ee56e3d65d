#include <qt_halvo/widgets/navigation/tab_pages.h>

#include <qt_halvo/animation/animated_pixmap_render.h>
#include <qt_halvo/animation/custom_stacked_widget.h>
#include <qt_halvo/animation/widget_animations_p.h>
#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/widgets/navigation/tab_bar.h>

#include <QtCore/QTimer>
#include <QtWidgets/QVBoxLayout>

namespace OrvantaQT {

namespace {

// Tab changes are short moves: shorter and slowing down, unlike the stack's own default.
constexpr int kSlideDuration = 250;

} // namespace

TabPages::TabPages(QWidget* parent)
    : QWidget(parent)
    , m_bar(NameChild(new TabBar(this), "TabPages", "TabBar"))
    , m_stack(NameChild(new CustomStackedWidget(this), "TabPages", "Pages"))
{
    m_stack->SetDuration(kSlideDuration);
    m_stack->SetTimeLineCurveShape(CustomStackedWidget::EaseOutCurve);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_stack, 1);
    connect(m_bar, &QTabBar::currentChanged, this, &TabPages::OnBarCurrentChanged);
    connect(m_bar, &QTabBar::tabMoved, this, &TabPages::OnTabMoved);
    connect(m_stack, &CustomStackedWidget::Finished, this, &TabPages::OnSlideFinished);
}

TabPages::~TabPages()
{
    // The pages go with the stack after this; their tabs need not follow.
    for (QWidget* page : qAsConst(m_pages))
        disconnect(page, &QObject::destroyed, this, nullptr);
}

int TabPages::AddPage(QWidget* page, const QString& text, const QIcon& icon)
{
    return InsertPage(m_pages.size(), page, text, icon);
}

int TabPages::InsertPage(int index, QWidget* page, const QString& text, const QIcon& icon)
{
    if (!page) {
        QTH_LOG_WARNING("TabPages: no page to add");
        return -1;
    }
    if (m_pages.contains(page)) {
        QTH_LOG_WARNING("TabPages: the page \"%s\" is added already", qUtf8Printable(text));
        return -1;
    }
    if (index < 0 || index > m_pages.size())
        index = m_pages.size();
    m_pages.insert(index, page);
    connect(page, &QObject::destroyed, this, &TabPages::OnPageDestroyed);
    // While a slide runs the stack's order waits: a page put before the slide's target
    // would make it end on another page. The slide's own page stays last. A page removed
    // during the slide is still in the stack.
    if (m_stack->indexOf(page) < 0)
        m_stack->InsertPage(IsSliding() ? m_stack->count() - 1 : index, page);
    // The first tab becomes current here, and the stack follows.
    m_bar->insertTab(index, icon, text);
    OrderStack();
    return index;
}

void TabPages::RemovePage(int index)
{
    if (index < 0 || index >= m_pages.size()) {
        QTH_LOG_WARNING("TabPages: no page %d to remove (%d pages)", index, static_cast<int>(m_pages.size()));
        return;
    }
    QWidget* page = m_pages.takeAt(index);
    disconnect(page, &QObject::destroyed, this, &TabPages::OnPageDestroyed);
    // The bar picks the next current tab first, so that the stack can slide to it from the
    // page going away; during a slide, the page leaves the stack when the slide ends.
    m_bar->removeTab(index);
    if (!IsSliding())
        m_stack->removeWidget(page);
}

int TabPages::GetCount() const
{
    return m_pages.size();
}

QWidget* TabPages::GetPage(int index) const
{
    return m_pages.value(index);
}

int TabPages::IndexOf(const QWidget* page) const
{
    return m_pages.indexOf(const_cast<QWidget*>(page));
}

int TabPages::GetCurrentIndex() const
{
    return m_bar->currentIndex();
}

QWidget* TabPages::GetCurrentPage() const
{
    return m_pages.value(m_bar->currentIndex());
}

void TabPages::SetCurrentPage(QWidget* page)
{
    const int index = m_pages.indexOf(page);
    if (index < 0) {
        QTH_LOG_WARNING("TabPages: the widget to show is not one of the pages");
        return;
    }
    SetCurrentIndex(index);
}

TabBar* TabPages::GetTabBar() const
{
    return m_bar;
}

CustomStackedWidget* TabPages::GetStack() const
{
    return m_stack;
}

void TabPages::SetCurrentIndex(int index)
{
    if (index < 0 || index >= m_pages.size()) {
        QTH_LOG_WARNING("TabPages: no page %d to show (%d pages)", index, static_cast<int>(m_pages.size()));
        return;
    }
    m_bar->setCurrentIndex(index);
}

void TabPages::OnBarCurrentChanged(int index)
{
    if (m_bar->count() != m_pages.size())
        QTH_LOG_WARNING("TabPages: %d tabs for %d pages; tabs are added and removed through TabPages", m_bar->count(),
                        static_cast<int>(m_pages.size()));
    FollowBar();
    Q_EMIT CurrentChanged(index);
}

void TabPages::OnTabMoved(int from, int to)
{
    if (from < 0 || to < 0 || from >= m_pages.size() || to >= m_pages.size())
        return;
    m_pages.move(from, to);
    OrderStack();
}

void TabPages::OnSlideFinished()
{
    // The stack ends on the page at the index it was asked for, which pages inserted or
    // deleted on the way may have moved: the slide's own page is the one that showed.
    QWidget* ended = m_slideTarget;
    m_slideTarget = nullptr;
    if (ended && m_stack->indexOf(ended) >= 0)
        m_stack->setCurrentWidget(ended);
    else if (QWidget* page = GetCurrentPage())
        m_stack->setCurrentWidget(page);
    // The stack takes no requests until it has finished.
    QTimer::singleShot(0, this, &TabPages::AfterSlide);
}

void TabPages::AfterSlide()
{
    FollowBar();
    if (IsSliding())
        return;
    // What is in the stack and no page any more was removed during the slide; the page
    // shown is the current one (or there is none), which stays.
    for (int i = m_stack->count() - 1; i >= 0; --i) {
        if (!m_pages.contains(m_stack->widget(i)))
            m_stack->removeWidget(m_stack->widget(i));
    }
}

void TabPages::OnPageDestroyed(QObject* object)
{
    auto* page = static_cast<QWidget*>(object);
    const int index = m_pages.indexOf(page);
    if (index < 0)
        return;
    m_pages.removeAt(index);
    // Out of the stack first: the stack must not slide from a page being deleted.
    m_stack->removeWidget(page);
    m_bar->removeTab(index);
}

void TabPages::FollowBar()
{
    QWidget* page = GetCurrentPage();
    if (!page || IsSliding())
        return;
    OrderStack();
    QWidget* shown = m_stack->currentWidget();
    if (shown == page)
        return;
    if (!shown || !isVisible() || !WidgetAnimationsEnabled(this)) {
        m_stack->setCurrentWidget(page);
        return;
    }
    m_stack->SetCurrentPageIndex(m_stack->indexOf(page));
    m_slideTarget = IsSliding() ? page : nullptr;
}

void TabPages::OrderStack()
{
    if (IsSliding())
        return;
    // Moving the page shown would show another for a moment.
    QWidget* shown = m_stack->currentWidget();
    for (int i = 0; i < m_pages.size(); ++i) {
        QWidget* page = m_pages[i];
        if (m_stack->widget(i) == page)
            continue;
        m_stack->removeWidget(page);
        m_stack->insertWidget(i, page);
        if (shown)
            m_stack->setCurrentWidget(shown);
    }
}

bool TabPages::IsSliding() const
{
    // The stack shows a page of its own while it slides.
    return qobject_cast<AnimatedPixmapRender*>(m_stack->currentWidget()) != nullptr;
}

} // namespace OrvantaQT
