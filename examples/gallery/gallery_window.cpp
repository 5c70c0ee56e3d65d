#include "gallery_window.h"

#include "gallery_theme.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStyle>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

GalleryWindow::GalleryWindow(const QVector<GalleryPage>& pages, GalleryTheme& theme, QWidget* parent)
    : QWidget(parent)
    , m_pages(pages)
    , m_created(pages.size(), nullptr)
    , m_theme(theme)
    , m_list(new QListWidget(this))
    //: Check box under the page list; switches the whole gallery between its light and dark colours.
    , m_themeSwitch(new QCheckBox(tr("Dark theme"), this))
    , m_stack(new QStackedWidget(this))
{
    setObjectName(QStringLiteral("GalleryWindow"));
    setWindowTitle(tr("qt_halvo gallery"));
    m_list->setObjectName(QStringLiteral("PageList"));
    // The list places its items once, by their sizes at that time: measured before the
    // sheet reaches the list, they would lack its padding and overlap.
    m_list->ensurePolished();
    FillList();

    auto* layout = new QHBoxLayout(this);
    layout->addWidget(CreateSidebar());
    layout->addWidget(m_stack, 1);

    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0 && row < m_pageOfRow.size() && m_pageOfRow[row] >= 0)
            ShowPage(m_pageOfRow[row]);
    });
    connect(m_themeSwitch, &QCheckBox::toggled, this, &GalleryWindow::OnThemeSwitched);
    connect(&m_theme, &GalleryTheme::Changed, this, &GalleryWindow::OnThemeChanged);
    OnThemeChanged();
    if (!m_pages.isEmpty())
        ShowPage(0);
}

// A heading row before the first page of each group; headings cannot be selected, and the
// keys step over them.
void GalleryWindow::FillList()
{
    QString group;
    for (int i = 0; i < m_pages.size(); ++i) {
        if (i == 0 || m_pages[i].group != group) {
            group = m_pages[i].group;
            auto* heading = new QListWidgetItem(group, m_list);
            heading->setFlags(Qt::NoItemFlags);
            QFont font = heading->font();
            font.setBold(true);
            heading->setFont(font);
            m_pageOfRow.append(-1);
        }
        m_pageOfRow.append(i);
        m_list->addItem(m_pages[i].title);
    }
}

QWidget* GalleryWindow::CreateSidebar()
{
    auto* sidebar = new QWidget(this);
    sidebar->setObjectName(QStringLiteral("Sidebar"));
    // At least as wide as the longest title beside the vertical scroll bar, which the list
    // of groups needs in a short window: a narrower list would grow a horizontal one.
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    sidebar->setFixedWidth(std::max(200, m_list->sizeHintForColumn(0) + 2 * m_list->frameWidth()
                                             + m_list->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, m_list)));
    m_themeSwitch->setObjectName(QStringLiteral("ThemeSwitch"));

    auto* layout = new QVBoxLayout(sidebar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_themeSwitch);
    return sidebar;
}

int GalleryWindow::PageCount() const
{
    return m_pages.size();
}

const GalleryPage& GalleryWindow::Page(int index) const
{
    return m_pages.at(index);
}

QWidget* GalleryWindow::CurrentPageWidget() const
{
    return m_stack->currentWidget();
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
    m_list->setCurrentRow(int(m_pageOfRow.indexOf(index)));
}

void GalleryWindow::OnThemeSwitched(bool dark)
{
    m_theme.Apply(dark ? GalleryTheme::Variant::Dark : GalleryTheme::Variant::Light);
}

// Keeps the switch in step when the theme is applied from elsewhere, as at start-up.
void GalleryWindow::OnThemeChanged()
{
    const QSignalBlocker blocker(m_themeSwitch);
    m_themeSwitch->setChecked(m_theme.Current() == GalleryTheme::Variant::Dark);
}
