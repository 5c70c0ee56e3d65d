#include "gallery_pages.h"

#include <qt_halvo/animation/collapsing_pane.h>
#include <qt_halvo/animation/expand_animation.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QFrame>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("Gallery", text);
}

QWidget* CreateDetailsForm()
{
    auto* form = new QFrame;
    form->setObjectName(QStringLiteral("DetailsForm"));
    auto* layout = new QFormLayout(form);
    //: Label of a sample field in the form inside the collapsing pane.
    layout->addRow(Translate("Name:"), new QLineEdit(Translate("Ada Lovelace")));
    //: Label of a sample field in the form inside the collapsing pane.
    layout->addRow(Translate("Server:"), new QLineEdit(QStringLiteral("mail.example.org")));
    //: Sample check box in the form inside the collapsing pane.
    layout->addRow(QString(), new QCheckBox(Translate("Use an encrypted connection")));
    return form;
}

// A button that opens and closes a pane holding a small form.
QWidget* CreateCollapsingPaneDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    //: Button that opens or closes a pane with more settings.
    auto* button = new QPushButton(Translate("Connection details"), demo);
    button->setObjectName(QStringLiteral("PaneToggle"));
    button->setCheckable(true);
    auto* pane = new OrvantaQT::CollapsingPane(demo);
    pane->setWidget(CreateDetailsForm());
    QObject::connect(button, &QPushButton::toggled, pane, &OrvantaQT::CollapsingPane::setExpanded);

    auto* row = new QHBoxLayout;
    row->addWidget(button);
    row->addStretch();
    layout->addLayout(row);
    layout->addWidget(pane);
    return demo;
}

// An area in which a panel grows to fill the free room and snaps back. The area has no
// layout, so nothing places the panel again once it has grown.
QWidget* CreateExpandDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);

    auto* area = new QFrame(demo);
    area->setObjectName(QStringLiteral("ExpandArea"));
    area->setFixedSize(440, 170);
    area->setContentsMargins(10, 10, 10, 10);
    auto* panel = new QLabel(area);
    panel->setObjectName(QStringLiteral("ExpandPanel"));
    panel->setAlignment(Qt::AlignCenter);
    panel->setWordWrap(true);
    //: A small panel that grows to fill the area around it.
    panel->setText(Translate("Panel"));
    panel->setGeometry(24, 24, 120, 60);
    auto* expand = new OrvantaQT::ExpandAnimation(panel, panel, Qt::Horizontal | Qt::Vertical, 600);

    //: Button that lets a panel grow to fill its area, or shrink back.
    auto* button = new QPushButton(Translate("Expand"), demo);
    button->setObjectName(QStringLiteral("ExpandToggle"));
    button->setCheckable(true);
    QObject::connect(button, &QPushButton::toggled, expand, [expand](bool on) {
        if (on)
            expand->DoExpand();
        else
            expand->DoCollapse();
    });
    QObject::connect(expand, &OrvantaQT::ExpandAnimation::ExpandFinished, panel,
                     //: Text of a panel once it has grown to fill its area.
                     [panel] { panel->setText(Translate("Expanded: this panel fills the free room of its area")); });
    QObject::connect(expand, &OrvantaQT::ExpandAnimation::CollapseFinished, panel,
                     [panel] { panel->setText(Translate("Panel")); });

    layout->addWidget(button, 0, Qt::AlignTop);
    layout->addWidget(area);
    layout->addStretch();
    return demo;
}

} // namespace

QWidget* CreateExpandingPage()
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("ExpandingPage"));
    auto* layout = new QVBoxLayout(page);
    //: Title of the gallery page with the collapsing pane and the expand animation.
    auto* title = new QLabel(Translate("Collapsing and expanding"), page);
    title->setObjectName(QStringLiteral("PageTitle"));
    layout->addWidget(title);

    //: Section title on the gallery's collapsing and expanding page.
    layout->addWidget(CreateSectionTitle(Translate("Collapsing pane"), page));
    auto* paneText = new QLabel(Translate("The pane's height moves while a picture of the form stands in for it; "
                                          "the live form comes back when the pane rests."), page);
    paneText->setWordWrap(true);
    layout->addWidget(paneText);
    layout->addWidget(CreateCollapsingPaneDemo(page));

    //: Section title on the gallery's collapsing and expanding page.
    layout->addWidget(CreateSectionTitle(Translate("Expand animation"), page));
    layout->addWidget(CreateExpandDemo(page));
    layout->addStretch();
    return page;
}

QVector<GalleryMoment> ExpandingPageMoments()
{
    return {
        {QStringLiteral("opening"), [](QWidget* page) { ClickButton(page, "PaneToggle"); }, 200},
        {QStringLiteral("opened"), nullptr, 700},
        {QStringLiteral("expanding"), [](QWidget* page) { ClickButton(page, "ExpandToggle"); }, 150},
        {QStringLiteral("expanded"), nullptr, 700},
    };
}
