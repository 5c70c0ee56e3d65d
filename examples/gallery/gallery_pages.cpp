#include "gallery_pages.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

QLabel* CreateSectionTitle(const QString& text, QWidget* parent)
{
    auto* title = new QLabel(text, parent);
    title->setObjectName(QStringLiteral("SectionTitle"));
    return title;
}

void ClickButton(QWidget* page, const char* objectName)
{
    if (auto* button = page->findChild<QPushButton*>(QLatin1String(objectName)))
        button->click();
}

QVector<GalleryPage> GalleryPages(GalleryTheme& theme)
{
    return {
        {QStringLiteral("overview"), QCoreApplication::translate("Gallery", "Overview"), CreateOverviewPage, 0, {}},
        //: Page list entry: the named values the gallery's stylesheet uses, and its colour table.
        {QStringLiteral("style_constants"), QCoreApplication::translate("Gallery", "Style constants"),
         [&theme] { return CreateStyleConstantsPage(theme); }, 0, {}},
        //: Page list entry: the measured displays, the chosen scale factor and the graphics back-end.
        {QStringLiteral("display"), QCoreApplication::translate("Gallery", "Display and scaling"), CreateDisplayPage, 0, {}},
        //: Page list entry: the animated widgets and effects.
        {QStringLiteral("animation"), QCoreApplication::translate("Gallery", "Animation"), CreateAnimationPage, 0,
         AnimationPageMoments()},
        //: Page list entry: the collapsing pane and the expand animation.
        {QStringLiteral("expanding"), QCoreApplication::translate("Gallery", "Collapse and expand"),
         CreateExpandingPage, 0, ExpandingPageMoments()},
        //: Page list entry: the card, the sliding stack and the frame animations.
        {QStringLiteral("transitions"), QCoreApplication::translate("Gallery", "Page transitions"), CreateTransitionsPage,
         0, TransitionsPageMoments()},
        //: Page list entry: the flow layout, anchors and overlays.
        {QStringLiteral("layouts"), QCoreApplication::translate("Gallery", "Layouts"), CreateLayoutsPage, 0,
         LayoutsPageMoments()},
        //: Page list entry: the hover overlay and the lightbox.
        {QStringLiteral("overlays"), QCoreApplication::translate("Gallery", "Overlays"), CreateOverlaysPage, 0,
         OverlaysPageMoments()},
        //: Page list entry: tips and popups beside their widgets, a stuck menu, resizable panels.
        {QStringLiteral("popups"), QCoreApplication::translate("Gallery", "Popups and containers"), CreatePopupsPage, 0,
         PopupsPageMoments()},
        //: Page list entry: the busy ring, the tile and progress animations, the curtains and the message overlay.
        {QStringLiteral("busy"), QCoreApplication::translate("Gallery", "Busy and curtains"), CreateBusyPage, 200,
         BusyPageMoments()},
        //: Page list entry: the text widgets.
        {QStringLiteral("text"), QCoreApplication::translate("Gallery", "Text"), CreateTextPage, 0, TextPageMoments()},
        //: Page list entry: the input widgets.
        {QStringLiteral("input"), QCoreApplication::translate("Gallery", "Input"), CreateInputPage, 0, InputPageMoments()},
        //: Page list entry: the bar, pie and plot charts, tinted pictures and a decorated border.
        {QStringLiteral("charts"), QCoreApplication::translate("Gallery", "Charts"),
         [&theme] { return CreateChartsPage(theme); }, 600, ChartsPageMoments()},
    };
}
