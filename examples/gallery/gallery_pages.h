#pragma once

#include <QtCore/QString>
#include <QtCore/QVector>

#include <functional>

class GalleryTheme;
class QLabel;
class QPushButton;
class QScrollArea;
class QVBoxLayout;
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
    QString group; // the heading it is listed under; pages of one group follow each other
};

// Every page, in the order of the page list. Each family's page adds itself here.
// Pages that follow the theme keep a reference to it, so it must outlive them.
QVector<GalleryPage> GalleryPages(GalleryTheme& theme);

// Helpers of the pages.
QLabel* CreateSectionTitle(const QString& text, QWidget* parent);
// Clicks the page's push button of this object name, if there is one.
void ClickButton(QWidget* page, const char* objectName);

// A page taller than the window: a scroll area (object name objectName) round content
// ("<objectName>Content") that starts with the page's title; sections go into layout, and
// FinishScrollingPage() puts the filled content into the scroll area (only then, so that
// the theme polishes the sections, their popups included, as part of the page).
struct ScrollingPage
{
    QScrollArea* page;
    QWidget* content;
    QVBoxLayout* layout;
};
ScrollingPage CreateScrollingPage(const char* objectName, const QString& title);
QScrollArea* FinishScrollingPage(const ScrollingPage& scrolling);
// Scrolls a scrolling page so that the widget of this object name starts at the top.
void ScrollTo(QWidget* page, const char* objectName);

// A word-wrapped text; a muted one ("SecondaryText" for the theme).
QLabel* CreateText(const QString& text, QWidget* parent);
QLabel* CreateSecondaryText(const QString& text, QWidget* parent);
// A section of a page: its title, a line of text and what it shows. Moments scroll to it
// by its object name.
QWidget* CreateSection(const char* objectName, const QString& title, const QString& text, QWidget* demo,
                       QWidget* parent);
QPushButton* CreateButton(const QString& text, const char* objectName, QWidget* parent, bool checkable = false);

// The pictures grab the gallery's window only, and a popup, a menu, a list or a tip is a
// window of its own: for a picture, a copy of the open one is laid over the page where it
// is ("PopupPicture"), and goes when the original hides.
void ShowPicture(QWidget* popup, QWidget* page);

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
QWidget* CreateWindowPage();
QVector<GalleryMoment> WindowPageMoments();
QWidget* CreateNotificationsPage();
QVector<GalleryMoment> NotificationsPageMoments();
QWidget* CreateNavigationPage();
QVector<GalleryMoment> NavigationPageMoments();
QWidget* CreateContainersPage();
QVector<GalleryMoment> ContainersPageMoments();
QWidget* CreateChartsPage(GalleryTheme& theme);
QVector<GalleryMoment> ChartsPageMoments();
QWidget* CreateViewsPage();
QVector<GalleryMoment> ViewsPageMoments();
QWidget* CreateImagesPage();
QVector<GalleryMoment> ImagesPageMoments();
QWidget* CreateDiagnosticsPage();
QVector<GalleryMoment> DiagnosticsPageMoments();
QWidget* CreateQmlPage();
QVector<GalleryMoment> QmlPageMoments();
