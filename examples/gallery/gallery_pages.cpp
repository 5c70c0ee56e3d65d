#include "gallery_pages.h"

#include <QtCore/QCoreApplication>

QVector<GalleryPage> GalleryPages(GalleryTheme& theme)
{
    return {
        {QStringLiteral("overview"), QCoreApplication::translate("Gallery", "Overview"), CreateOverviewPage},
        //: Page list entry: the named values the gallery's stylesheet uses, and its colour table.
        {QStringLiteral("style_constants"), QCoreApplication::translate("Gallery", "Style constants"),
         [&theme] { return CreateStyleConstantsPage(theme); }},
    };
}
