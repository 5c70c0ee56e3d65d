#pragma once

#include <QtCore/QString>
#include <QtCore/QVector>

#include <functional>

class GalleryTheme;
class QLabel;
class QWidget;

// A further picture of a page, taken after doing something on it: "<id>_<suffix>.png".
struct GalleryMoment
{
    QString suffix;
    std::function<void(QWidget* page)> action; // may be empty: the picture is just taken later
    int settleMilliseconds = 0;                // from the action to the picture
};

// One page of the gallery: a live demonstration of one widget family.
struct GalleryPage
{
    QString id;    // file name of its picture: "<id>.png"
    QString title; // shown in the page list
    std::function<QWidget*()> create;
    int settleMilliseconds = 0; // how long animations need before a picture is taken
    QVector<GalleryMoment> moments; // pictures taken after the first one, in this order
};

// Every page, in the order of the page list. Each family's page adds itself here.
// Pages that follow the theme keep a reference to it, so it must outlive them.
QVector<GalleryPage> GalleryPages(GalleryTheme& theme);

// Helpers of the pages.
QLabel* CreateSectionTitle(const QString& text, QWidget* parent);
// Clicks the page's push button of this object name, if there is one.
void ClickButton(QWidget* page, const char* objectName);

QWidget* CreateOverviewPage();
QWidget* CreateStyleConstantsPage(GalleryTheme& theme);
QWidget* CreateDisplayPage();
QWidget* CreateAnimationPage();
QVector<GalleryMoment> AnimationPageMoments();
QWidget* CreateExpandingPage();
QVector<GalleryMoment> ExpandingPageMoments();
QWidget* CreateTransitionsPage();
QVector<GalleryMoment> TransitionsPageMoments();
QWidget* CreateLayoutsPage();
QVector<GalleryMoment> LayoutsPageMoments();
QWidget* CreateOverlaysPage();
QVector<GalleryMoment> OverlaysPageMoments();
QWidget* CreatePopupsPage();
QVector<GalleryMoment> PopupsPageMoments();
QWidget* CreateBusyPage();
QVector<GalleryMoment> BusyPageMoments();
QWidget* CreateTextPage();
QVector<GalleryMoment> TextPageMoments();
QWidget* CreateInputPage();
QVector<GalleryMoment> InputPageMoments();
QWidget* CreateChartsPage(GalleryTheme& theme);
QVector<GalleryMoment> ChartsPageMoments();
