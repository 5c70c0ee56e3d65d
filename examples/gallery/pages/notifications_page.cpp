#include "gallery_pages.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

QWidget* CreateNotificationsPage()
{
    ScrollingPage scrolling = CreateScrollingPage(
        "NotificationsPage", QCoreApplication::translate("NotificationsPage", "Notifications"));
    scrolling.layout->addStretch(1);
    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> NotificationsPageMoments()
{
    return {};
}
