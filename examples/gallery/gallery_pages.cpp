#include "gallery_pages.h"

#include <QtCore/QCoreApplication>

QVector<GalleryPage> GalleryPages(GalleryTheme& theme)
{
    return {
        {QStringLiteral("overview"), QCoreApplication::translate("Gallery", "Overview"), CreateOverviewPage},
        //: Page list entry: the named values the gallery's stylesheet uses, and its colour table.
        {QStringLiteral("style_constants"), QCoreApplication::translate("Gallery", "Style constants"),
         [&theme] { return CreateStyleConstantsPage(theme); }},
        //: Page list entry: the measured displays, the chosen scale factor and the graphics back-end.
        {QStringLiteral("display"), QCoreApplication::translate("Gallery", "Display and scaling"), CreateDisplayPage},
        //: Page list entry: the animated widgets and effects.
        {QStringLiteral("animation"), QCoreApplication::translate("Gallery", "Animation"), CreateAnimationPage},
    };
}
