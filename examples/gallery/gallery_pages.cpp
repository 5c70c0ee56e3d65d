#include "gallery_pages.h"

#include <QtCore/QCoreApplication>

QVector<GalleryPage> GalleryPages()
{
    return {
        {QStringLiteral("overview"), QCoreApplication::translate("Gallery", "Overview"), CreateOverviewPage},
    };
}
