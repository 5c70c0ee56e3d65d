#include "gallery_window.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QStackedWidget>

GalleryWindow::GalleryWindow(const QVector<GalleryPage>& pages, QWidget* parent)
    : QWidget(parent)
    , m_pages(pages)
    , m_created(pages.size(), nullptr)
    , m_list(new QListWidget(this))
    , m_stack(new QStackedWidget(this))
{
    setObjectName(QStringLiteral("GalleryWindow"));
    setWindowTitle(tr("qt_halvo gallery"));
    m_list->setObjectName(QStringLiteral("PageList"));
    m_list->setFixedWidth(200);
    for (const GalleryPage& page : m_pages)
        m_list->addItem(page.title);

    auto* layout = new QHBoxLayout(this);
    layout->addWidget(m_list);
    layout->addWidget(m_stack, 1);

    connect(m_list, &QListWidget::currentRowChanged, this, &GalleryWindow::ShowPage);
    if (!m_pages.isEmpty())
        m_list->setCurrentRow(0);
}

int GalleryWindow::PageCount() const
{
    return m_pages.size();
}

const GalleryPage& GalleryWindow::Page(int index) const
{
    return m_pages.at(index);
}

void GalleryWindow::ShowPage(int index)
{
    if (index < 0 || index >= m_pages.size())
        return;
    if (!m_created[index]) {
        m_created[index] = m_pages[index].create();
        m_stack->addWidget(m_created[index]);
    }
    m_stack->setCurrentWidget(m_created[index]);
    m_list->setCurrentRow(index);
}
