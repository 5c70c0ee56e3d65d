#include "gallery_pages.h"

#include <qt_halvo/widgets/navigation/tab_bar.h>
#include <qt_halvo/widgets/navigation/tab_pages.h>
#include <qt_halvo/widgets/navigation/tool_bar.h>
#include <qt_halvo/widgets/navigation/tool_bar_button.h>
#include <qt_halvo/widgets/navigation/two_buttons.h>

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <QtWidgets/QAction>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QSlider>
#include <QtWidgets/QStyle>
#include <QtWidgets/QVBoxLayout>

using OrvantaQT::TabBar;
using OrvantaQT::TabPages;
using OrvantaQT::ToolBar;
using OrvantaQT::TwoButtons;

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("NavigationPage", text);
}

QWidget* CreateTabPage(const QString& heading, const QString& text)
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("TabPage"));
    auto* layout = new QVBoxLayout(page);
    auto* title = new QLabel(heading, page);
    title->setObjectName(QStringLiteral("SectionTitle"));
    layout->addWidget(title);
    layout->addWidget(CreateText(text, page));
    layout->addStretch(1);
    return page;
}

QWidget* CreateTabs(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);

    auto* pages = new TabPages(demo);
    pages->setObjectName(QStringLiteral("DemoTabPages"));
    pages->setMinimumHeight(150);
    QStyle* style = demo->style();
    pages->AddPage(CreateTabPage(Translate("Inbox"), Translate("Pick another tab: the underline slides to it and the "
                                                               "page slides in from the side of the tab.")),
                   Translate("Inbox"), style->standardIcon(QStyle::SP_DirHomeIcon));
    pages->AddPage(CreateTabPage(Translate("Drafts"), Translate("Click quickly across several tabs: the bar and the "
                                                                "page always end on the last one.")),
                   Translate("Drafts"), style->standardIcon(QStyle::SP_FileIcon));
    pages->AddPage(CreateTabPage(Translate("Sent"), Translate("The arrow keys, Home, End and the mouse wheel move "
                                                              "between the tabs too.")),
                   Translate("Sent"), style->standardIcon(QStyle::SP_ArrowForward));
    pages->AddPage(CreateTabPage(Translate("Archive"), Translate("Messages kept for later.")), Translate("Archive"),
                   style->standardIcon(QStyle::SP_DirIcon));
    layout->addWidget(pages);

    layout->addWidget(CreateSecondaryText(Translate("A pill selector on a bar whose tabs close and move:"), demo));
    auto* pills = new TabBar(demo);
    pills->setObjectName(QStringLiteral("DemoPillTabBar"));
    pills->SetSelectorShape(TabBar::Pill);
    pills->setTabsClosable(true);
    pills->setMovable(true);
    pills->setExpanding(false);
    pills->setDocumentMode(true);
    pills->setUsesScrollButtons(true);
    for (const char* name : {"main.cpp", "tab_bar.h", "tab_bar.cpp", "README.md", "CMakeLists.txt"})
        pills->addTab(QString::fromLatin1(name));
    QObject::connect(pills, &QTabBar::tabCloseRequested, pills, &QTabBar::removeTab);
    layout->addWidget(pills);
    return demo;
}

// A bar of actions whose width the slider sets, so that buttons go to the overflow menu.
QWidget* CreateToolBar(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* log = CreateSecondaryText(Translate("Nothing triggered yet."), demo);
    log->setObjectName(QStringLiteral("ToolBarLog"));

    auto* bar = new ToolBar(demo);
    bar->setObjectName(QStringLiteral("DemoToolBar"));
    bar->SetToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    QStyle* style = demo->style();
    bar->AddAction(style->standardIcon(QStyle::SP_FileIcon), Translate("New"));
    bar->AddAction(style->standardIcon(QStyle::SP_DialogOpenButton), Translate("Open"));
    bar->AddAction(style->standardIcon(QStyle::SP_DialogSaveButton), Translate("Save"));
    bar->AddSeparator();
    QAction* pin = bar->AddAction(style->standardIcon(QStyle::SP_DialogApplyButton), Translate("Pin"))->defaultAction();
    pin->setCheckable(true);
    pin->setChecked(true);
    auto* view = new QMenu(Translate("View"), bar);
    view->setIcon(style->standardIcon(QStyle::SP_FileDialogDetailedView));
    view->addAction(Translate("Details"));
    view->addAction(Translate("Icons"));
    bar->AddMenu(view);
    auto* search = new QLineEdit;
    search->setObjectName(QStringLiteral("ToolBarSearch"));
    search->setPlaceholderText(Translate("Search"));
    search->setFixedWidth(110);
    bar->AddWidget(search);
    bar->AddAction(style->standardIcon(QStyle::SP_TrashIcon), Translate("Delete"));
    QObject::connect(bar, &ToolBar::ActionTriggered, log, [log](QAction* action) {
        log->setText(Translate("Triggered: %1").arg(action->text()));
    });

    auto* holder = new QWidget(demo);
    holder->setObjectName(QStringLiteral("ToolBarHolder"));
    auto* holderLayout = new QHBoxLayout(holder);
    holderLayout->setContentsMargins(0, 0, 0, 0);
    holderLayout->addWidget(bar);
    holderLayout->addStretch(1);
    // Not wider than the page's column, so that the page does not scroll sideways.
    const int full = std::min(bar->sizeHint().width(), 600);
    bar->setFixedWidth(full);
    layout->addWidget(holder);

    auto* row = new QHBoxLayout;
    row->addWidget(CreateSecondaryText(Translate("Width of the bar:"), demo));
    auto* width = new QSlider(Qt::Horizontal, demo);
    width->setObjectName(QStringLiteral("ToolBarWidth"));
    width->setRange(bar->minimumSizeHint().width(), full);
    width->setValue(full);
    QObject::connect(width, &QSlider::valueChanged, bar, &QWidget::setFixedWidth);
    row->addWidget(width, 1);
    layout->addLayout(row);
    layout->addWidget(log);
    return demo;
}

QWidget* CreateTwoButtons(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    auto* pair = new TwoButtons(demo);
    pair->setObjectName(QStringLiteral("DemoTwoButtons"));
    auto* custom = new TwoButtons(demo);
    custom->setObjectName(QStringLiteral("DemoRenameButtons"));
    custom->SetAcceptText(Translate("Rename"));
    custom->SetRejectText(Translate("Keep the name"));
    auto* log = CreateSecondaryText(Translate("Click one, or focus one and press Enter or Escape."), demo);
    log->setObjectName(QStringLiteral("TwoButtonsLog"));
    for (TwoButtons* buttons : {pair, custom}) {
        QObject::connect(buttons, &TwoButtons::Accepted, log, [log] { log->setText(Translate("Accepted")); });
        QObject::connect(buttons, &TwoButtons::Rejected, log, [log] { log->setText(Translate("Rejected")); });
        row->addWidget(buttons);
    }
    row->addStretch(1);
    layout->addWidget(log);
    return demo;
}

void ClickTab(QWidget* page, int index)
{
    if (auto* pages = page->findChild<TabPages*>(QStringLiteral("DemoTabPages")))
        pages->SetCurrentIndex(index);
}

} // namespace

QWidget* CreateNavigationPage()
{
    ScrollingPage scrolling = CreateScrollingPage("NavigationPage", Translate("Tabs and tool bars"));
    QWidget* content = scrolling.content;
    scrolling.layout->addWidget(CreateSection(
        "TabsSection", Translate("Tabs"),
        Translate("TabPages: a TabBar whose selector slides to the current tab over a stack whose pages slide the same "
                  "way. The selector is an underline or a pill, coloured by the style sheet."),
        CreateTabs(content), content));
    scrolling.layout->addWidget(CreateSection(
        "ToolBarSection", Translate("Tool bar"),
        Translate("ToolBar: buttons made from actions on a background cut from a picture. Make it narrower: what does "
                  "not fit goes, in order, to the menu at its end, and comes back when it widens."),
        CreateToolBar(content), content));
    scrolling.layout->addWidget(CreateSection(
        "TwoButtonsSection", Translate("Button pair"),
        Translate("TwoButtons: accept and reject joined into one control, in the order this desktop's dialogs use."),
        CreateTwoButtons(content), content));
    scrolling.layout->addStretch(1);
    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> NavigationPageMoments()
{
    return {
        {QStringLiteral("tab_sliding"), [](QWidget* page) { ClickTab(page, 2); }, 110},
        {QStringLiteral("tab_arrived"), {}, 600},
        {QStringLiteral("overflow"),
         [](QWidget* page) {
             ScrollTo(page, "ToolBarSection");
             auto* width = page->findChild<QSlider*>(QStringLiteral("ToolBarWidth"));
             auto* bar = page->findChild<ToolBar*>(QStringLiteral("DemoToolBar"));
             if (!width || !bar)
                 return;
             width->setValue(width->minimum() + (width->maximum() - width->minimum()) / 2);
             bar->OverflowMenu()->popup(bar->OverflowButton()->mapToGlobal(QPoint(0, bar->OverflowButton()->height())));
             ShowPicture(bar->OverflowMenu(), page);
         },
         100},
    };
}
