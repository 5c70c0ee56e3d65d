#include "gallery_pages.h"

#include <qt_halvo/layouts/anchor_layout.h>
#include <qt_halvo/layouts/flow_layout.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtWidgets/QFrame>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QVBoxLayout>

using OrvantaQT::AnchorLayout;

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

// A note pinned below and right of a box, and a badge in the area's bottom-right corner:
// both follow when the window, and with it the area, is resized.
QWidget* CreateAnchorsDemo(QWidget* parent)
{
    auto* area = new QFrame(parent);
    area->setObjectName(QStringLiteral("AnchorArea"));
    area->setMinimumHeight(130);
    //: A box that another label is anchored to.
    auto* box = new QLabel(Translate("Target"), area);
    box->setObjectName(QStringLiteral("AnchorTarget"));
    box->setAlignment(Qt::AlignCenter);
    //: A label anchored below and to the right of another one.
    auto* note = new QLabel(Translate("Below right of the target"), area);
    note->setObjectName(QStringLiteral("AnchoredNote"));
    note->adjustSize();
    //: A badge anchored to the bottom-right corner of its area.
    auto* badge = new QLabel(Translate("Corner badge"), area);
    badge->setObjectName(QStringLiteral("AnchoredNote"));
    badge->adjustSize();

    // The target sits in the middle third of the area, stretching with it.
    box->resize(120, 40);
    AnchorLayout::SetupAnchors(box, {{Qt::AnchorHorizontalCenter, {area, Qt::AnchorHorizontalCenter}},
                                     {Qt::AnchorTop, {area, Qt::AnchorTop}}},
                               QMargins(0, 16, 0, 0));
    AnchorLayout::SetupAnchors(note, {{Qt::AnchorLeft, {box, Qt::AnchorRight}}, {Qt::AnchorTop, {box, Qt::AnchorBottom}}},
                               QMargins(6, 6, 0, 0));
    AnchorLayout::SetupAnchors(badge, {{Qt::AnchorRight, {area, Qt::AnchorRight}}, {Qt::AnchorBottom, {area, Qt::AnchorBottom}}},
                               QMargins(0, 0, 10, 10));
    return area;
}

// A small window that appears in the bottom-right corner of the screen's work area, and
// stays there when the displays change, until it closes itself.
void ShowToast()
{
    //: Text of a notification shown in a corner of the screen by the gallery.
    auto* toast = new QLabel(Translate("Anchored to the corner of the screen"));
    toast->setObjectName(QStringLiteral("Toast"));
    toast->setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint);
    toast->setAttribute(Qt::WA_DeleteOnClose);
    toast->adjustSize();
    AnchorLayout::SetDesktopPrimaryScreenAnchor(Qt::AlignRight | Qt::AlignBottom, toast, QMargins(16, 16, 16, 16));
    toast->show();
    QTimer::singleShot(4000, toast, &QWidget::close);
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

    //: Section title on the gallery's layouts page.
    layout->addWidget(CreateSectionTitle(Translate("Anchors"), page));
    layout->addWidget(CreateAnchorsDemo(page));
    //: Button that shows a notification anchored to a corner of the screen.
    auto* toast = new QPushButton(Translate("Show a toast in the screen's corner"), page);
    QObject::connect(toast, &QPushButton::clicked, page, &ShowToast);
    auto* row = new QHBoxLayout;
    row->addWidget(toast);
    row->addStretch();
    layout->addLayout(row);

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
