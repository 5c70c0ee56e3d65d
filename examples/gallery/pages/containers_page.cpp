#include "gallery_pages.h"

#include <qt_halvo/animation/collapsing_pane.h>
#include <qt_halvo/widgets/containers/button_container.h>
#include <qt_halvo/widgets/containers/focus_policy_controller.h>
#include <qt_halvo/widgets/containers/icon_with_label.h>
#include <qt_halvo/widgets/containers/scroll_area_controller.h>
#include <qt_halvo/widgets/containers/scrollable_transparent_widget.h>
#include <qt_halvo/widgets/containers/selectable_container.h>
#include <qt_halvo/widgets/containers/transparent_widget.h>
#include <qt_halvo/widgets/containers/widget_group_helper.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

using OrvantaQT::ButtonContainer;
using OrvantaQT::CollapsingPane;
using OrvantaQT::FocusPolicyController;
using OrvantaQT::IconWithLabel;
using OrvantaQT::ScrollableTransparentWidget;
using OrvantaQT::SelectableContainer;
using OrvantaQT::TransparentWidget;
using OrvantaQT::WidgetGroupHelper;

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("ContainersPage", text);
}

// Plans to choose from: each a card selected as a whole, one at a time.
QWidget* CreateChoices(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    auto* group = new WidgetGroupHelper(demo);
    group->setObjectName(QStringLiteral("PlanGroup"));
    auto* log = CreateSecondaryText(Translate("No plan chosen."), demo);
    log->setObjectName(QStringLiteral("PlanLog"));
    QStyle* style = demo->style();
    const struct
    {
        const char* name;
        const char* text;
        QStyle::StandardPixmap icon;
    } plans[] = {
        {QT_TRANSLATE_NOOP("ContainersPage", "Basic"), QT_TRANSLATE_NOOP("ContainersPage", "One device, 5 GB"),
         QStyle::SP_ComputerIcon},
        {QT_TRANSLATE_NOOP("ContainersPage", "Family"), QT_TRANSLATE_NOOP("ContainersPage", "Five devices, 200 GB"),
         QStyle::SP_DirHomeIcon},
        {QT_TRANSLATE_NOOP("ContainersPage", "Business"), QT_TRANSLATE_NOOP("ContainersPage", "Any number, 2 TB"),
         QStyle::SP_DriveNetIcon},
    };
    for (const auto& plan : plans) {
        auto* card = new SelectableContainer(demo);
        card->setObjectName(QStringLiteral("PlanCard"));
        auto* cardLayout = new QVBoxLayout(card);
        auto* title = new IconWithLabel(style->standardIcon(plan.icon), Translate(plan.name), card);
        title->setObjectName(QStringLiteral("PlanTitle"));
        title->SetIconSize(QSize(24, 24));
        cardLayout->addWidget(title);
        cardLayout->addWidget(CreateSecondaryText(Translate(plan.text), card));
        row->addWidget(card);
        group->AddWidget(card);
    }
    QObject::connect(group, &WidgetGroupHelper::CurrentChanged, log, [log](QWidget* current) {
        auto* title = current ? current->findChild<IconWithLabel*>() : nullptr;
        log->setText(title ? Translate("Chosen: %1").arg(title->GetShownText()) : Translate("No plan chosen."));
    });
    auto* none = new QCheckBox(Translate("A second click on the chosen plan clears the choice"), demo);
    none->setObjectName(QStringLiteral("AllowNone"));
    QObject::connect(none, &QCheckBox::toggled, group, &WidgetGroupHelper::SetNoneAllowed);
    layout->addWidget(none);
    layout->addWidget(log);
    return demo;
}

QWidget* CreateLabels(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* form = new QFormLayout(demo);
    form->setContentsMargins(0, 0, 0, 0);
    QStyle* style = demo->style();
    auto* name = new QLineEdit(demo);
    name->setObjectName(QStringLiteral("NameField"));
    auto* nameLabel = new IconWithLabel(style->standardIcon(QStyle::SP_FileDialogInfoView), Translate("&Name"), demo);
    nameLabel->setObjectName(QStringLiteral("NameLabel"));
    nameLabel->SetBuddy(name);
    form->addRow(nameLabel, name);
    auto* folder = new QLineEdit(demo);
    folder->setObjectName(QStringLiteral("FolderField"));
    auto* folderLabel = new IconWithLabel(style->standardIcon(QStyle::SP_DirIcon),
                                          Translate("&Folder where the documents of this project are kept"), demo);
    folderLabel->setObjectName(QStringLiteral("FolderLabel"));
    folderLabel->setMaximumWidth(170);
    folderLabel->SetBuddy(folder);
    form->addRow(folderLabel, folder);

    auto* tiles = new ButtonContainer(demo);
    tiles->setObjectName(QStringLiteral("TileRow"));
    const struct
    {
        const char* text;
        QStyle::StandardPixmap icon;
    } tileTexts[] = {
        {QT_TRANSLATE_NOOP("ContainersPage", "Computer"), QStyle::SP_ComputerIcon},
        {QT_TRANSLATE_NOOP("ContainersPage", "Network"), QStyle::SP_DriveNetIcon},
        {QT_TRANSLATE_NOOP("ContainersPage", "Trash"), QStyle::SP_TrashIcon},
    };
    for (const auto& tile : tileTexts) {
        auto* label = new IconWithLabel(style->standardIcon(tile.icon), Translate(tile.text));
        label->SetOrientation(Qt::Vertical);
        label->SetIconSize(QSize(32, 32));
        tiles->AddButton(label);
    }
    tiles->AddStretch(1);
    form->addRow(CreateSecondaryText(Translate("Above:"), demo), tiles);
    return demo;
}

// A gradient under see-through containers: a scrolling list that flings, and a row of
// buttons that paints nothing between them.
class GradientBackdrop : public QWidget
{
public:
    explicit GradientBackdrop(QWidget* parent)
        : QWidget(parent)
    {
        setObjectName(QStringLiteral("GradientBackdrop"));
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QLinearGradient gradient(rect().topLeft(), rect().bottomRight());
        gradient.setColorAt(0, QColor(54, 92, 168));
        gradient.setColorAt(1, QColor(140, 70, 150));
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(gradient);
        painter.drawRoundedRect(rect(), 8, 8);
    }
};

QWidget* CreateTransparent(QWidget* parent)
{
    auto* backdrop = new GradientBackdrop(parent);
    backdrop->setFixedHeight(210);
    auto* layout = new QHBoxLayout(backdrop);
    layout->setContentsMargins(12, 12, 12, 12);

    auto* scroll = new ScrollableTransparentWidget(backdrop);
    scroll->setObjectName(QStringLiteral("KineticList"));
    OrvantaQT::SetScroller(scroll);
    auto* list = new QVBoxLayout(scroll->GetContent());
    for (int i = 1; i <= 20; ++i) {
        auto* item = new QPushButton(Translate("Track %1").arg(i), scroll->GetContent());
        item->setObjectName(QStringLiteral("TrackButton"));
        list->addWidget(item);
    }
    layout->addWidget(scroll, 1);

    auto* side = new TransparentWidget(backdrop);
    side->setObjectName(QStringLiteral("SidePanel"));
    auto* sideLayout = new QVBoxLayout(side);
    auto* note = new QLabel(Translate("Drag the list with the mouse: it scrolls and flings. A click on a track "
                                      "still clicks it; the first click during a fling only stops it."),
                            side);
    note->setObjectName(QStringLiteral("OnPictureText"));
    note->setWordWrap(true);
    sideLayout->addWidget(note);
    sideLayout->addStretch(1);
    layout->addWidget(side, 1);
    return backdrop;
}

// A closed pane's fields are out of the tab chain, and come back with their own policies.
QWidget* CreateFocus(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* toggle = CreateButton(Translate("Show the advanced settings"), "AdvancedToggle", demo, true);
    layout->addWidget(toggle, 0, Qt::AlignLeft);
    auto* pane = new CollapsingPane(demo);
    pane->setObjectName(QStringLiteral("AdvancedPane"));
    auto* content = new QWidget;
    auto* form = new QFormLayout(content);
    form->addRow(Translate("Proxy:"), new QLineEdit(content));
    form->addRow(Translate("Port:"), new QLineEdit(content));
    pane->setWidget(content);
    pane->SetInitiallyOpened(false);
    auto* focus = new FocusPolicyController(content);
    focus->setObjectName(QStringLiteral("AdvancedFocus"));
    focus->SetFocusable(false);
    QObject::connect(toggle, &QPushButton::toggled, pane, &CollapsingPane::setExpanded);
    // Expanded(false) comes as the pane starts to close, Expanded(true) once it is open.
    QObject::connect(pane, qOverload<bool>(&CollapsingPane::Expanded), focus, &FocusPolicyController::SetFocusable);
    layout->addWidget(pane);
    auto* after = new QLineEdit(demo);
    after->setPlaceholderText(Translate("Tab from the button comes here while the pane is closed"));
    layout->addWidget(after);
    return demo;
}

void SelectPlan(QWidget* page, int index)
{
    const QList<SelectableContainer*> cards = page->findChildren<SelectableContainer*>(QStringLiteral("PlanCard"));
    if (index < cards.size())
        cards[index]->Click();
}

} // namespace

QWidget* CreateContainersPage()
{
    ScrollingPage scrolling = CreateScrollingPage("ContainersPage", Translate("Containers and controllers"));
    QWidget* content = scrolling.content;
    scrolling.layout->addWidget(CreateSection(
        "ChoicesSection", Translate("Selectable containers"),
        Translate("SelectableContainer: a frame hovered and selected as a whole; WidgetGroupHelper keeps one of them "
                  "selected and moves the choice with the arrow keys."),
        CreateChoices(content), content));
    scrolling.layout->addWidget(CreateSection(
        "LabelsSection", Translate("Icons with labels"),
        Translate("IconWithLabel: an icon beside or above an elided text whose mnemonic focuses its buddy (Alt+N, "
                  "Alt+F); ButtonContainer: a row of them."),
        CreateLabels(content), content));
    scrolling.layout->addWidget(CreateSection(
        "TransparentSection", Translate("Over pictures"),
        Translate("ScrollableTransparentWidget and TransparentWidget paint no background of their own; SetScroller "
                  "gives the list kinetic scrolling."),
        CreateTransparent(content), content));
    scrolling.layout->addWidget(CreateSection(
        "FocusSection", Translate("Focus of hidden content"),
        Translate("FocusPolicyController: while the pane is closed its fields are out of the tab chain, and each gets "
                  "its own focus policy back when it opens."),
        CreateFocus(content), content));
    scrolling.layout->addStretch(1);
    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> ContainersPageMoments()
{
    return {
        {QStringLiteral("selected"), [](QWidget* page) { SelectPlan(page, 1); }, 50},
        {QStringLiteral("pictures"), [](QWidget* page) { ScrollTo(page, "TransparentSection"); }, 50},
        {QStringLiteral("opened"),
         [](QWidget* page) {
             ScrollTo(page, "TransparentSection");
             ClickButton(page, "AdvancedToggle");
         },
         900},
    };
}
