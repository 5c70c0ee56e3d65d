#include "gallery_pages.h"

#include <qt_halvo/layouts/flow_layout.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QFrame>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QVBoxLayout>

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("Gallery", text);
}

// Tags in a flow layout inside a frame, with a spin box for the most tags in a row.
QWidget* CreateTagsDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);

    auto* row = new QHBoxLayout;
    //: Label of the spin box that limits how many tags a row of the flow layout holds (0: no limit).
    auto* label = new QLabel(Translate("Tags per row (0: no limit):"), demo);
    auto* perRow = new QSpinBox(demo);
    perRow->setObjectName(QStringLiteral("TagsPerRow"));
    perRow->setRange(0, 9);
    row->addWidget(label);
    row->addWidget(perRow);
    row->addStretch();
    layout->addLayout(row);

    auto* tags = new QFrame(demo);
    tags->setObjectName(QStringLiteral("TagArea"));
    auto* flow = new OrvantaQT::FlowLayout(tags, 6, 6);
    const char* const names[] = {
        //: Sample tags that wrap in the flow layout demonstration.
        QT_TRANSLATE_NOOP("Gallery", "layouts"), QT_TRANSLATE_NOOP("Gallery", "widgets"),
        QT_TRANSLATE_NOOP("Gallery", "animation"), QT_TRANSLATE_NOOP("Gallery", "style sheets"),
        QT_TRANSLATE_NOOP("Gallery", "high DPI"), QT_TRANSLATE_NOOP("Gallery", "Qt 5"),
        QT_TRANSLATE_NOOP("Gallery", "charts"), QT_TRANSLATE_NOOP("Gallery", "overlays"),
        QT_TRANSLATE_NOOP("Gallery", "input"), QT_TRANSLATE_NOOP("Gallery", "translations"),
        QT_TRANSLATE_NOOP("Gallery", "Windows"), QT_TRANSLATE_NOOP("Gallery", "Linux"),
    };
    for (const char* name : names) {
        auto* tag = new QLabel(Translate(name), tags);
        tag->setObjectName(QStringLiteral("Tag"));
        flow->addWidget(tag);
    }
    QObject::connect(perRow, QOverload<int>::of(&QSpinBox::valueChanged), tags, [flow](int value) {
        flow->SetMaxWidgetsPerRow(value == 0 ? -1 : value);
        flow->invalidate();
    });
    layout->addWidget(tags, 1);
    return demo;
}

} // namespace

QWidget* CreateLayoutsPage()
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("LayoutsPage"));
    auto* layout = new QVBoxLayout(page);
    //: Title of the gallery page with the layouts.
    auto* title = new QLabel(Translate("Layouts"), page);
    title->setObjectName(QStringLiteral("PageTitle"));
    layout->addWidget(title);
    //: Section title on the gallery's layouts page.
    layout->addWidget(CreateSectionTitle(Translate("Flow layout"), page));
    auto* text = new QLabel(Translate("Tags wrap as the window narrows; the block of rows stays centred."), page);
    text->setWordWrap(true);
    layout->addWidget(text);
    layout->addWidget(CreateTagsDemo(page), 1);
    return page;
}

QVector<GalleryMoment> LayoutsPageMoments()
{
    return {{QStringLiteral("three_per_row"),
             [](QWidget* page) {
                 if (auto* perRow = page->findChild<QSpinBox*>(QStringLiteral("TagsPerRow")))
                     perRow->setValue(3);
             },
             100}};
}
