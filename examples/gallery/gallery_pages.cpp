#include "gallery_pages.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>

namespace {

class PopupPicture : public QLabel
{
public:
    PopupPicture(QWidget* popup, QWidget* page)
        : QLabel(page)
        , m_popup(popup)
    {
        setObjectName(QStringLiteral("PopupPicture"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setPixmap(popup->grab());
        setGeometry(QRect(page->mapFromGlobal(popup->mapToGlobal(QPoint(0, 0))), popup->size()));
        popup->installEventFilter(this);
        raise();
        show();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == m_popup && event->type() == QEvent::Hide)
            deleteLater();
        return false;
    }

private:
    QPointer<QWidget> m_popup;
};

} // namespace

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

ScrollingPage CreateScrollingPage(const char* objectName, const QString& title)
{
    auto* page = new QScrollArea;
    page->setObjectName(QLatin1String(objectName));
    page->setFrameShape(QFrame::NoFrame);
    page->setWidgetResizable(true);
    auto* content = new QWidget;
    content->setObjectName(QLatin1String(objectName) + QLatin1String("Content"));
    auto* layout = new QVBoxLayout(content);
    auto* heading = new QLabel(title, content);
    heading->setObjectName(QStringLiteral("PageTitle"));
    layout->addWidget(heading);
    return {page, content, layout};
}

QScrollArea* FinishScrollingPage(const ScrollingPage& scrolling)
{
    scrolling.page->setWidget(scrolling.content);
    // The scroll area would paint the palette's window colour; the gallery's own
    // background shows through instead.
    scrolling.content->setAutoFillBackground(false);
    scrolling.page->viewport()->setAutoFillBackground(false);
    return scrolling.page;
}

void ScrollTo(QWidget* page, const char* objectName)
{
    auto* area = qobject_cast<QScrollArea*>(page);
    QWidget* target = area ? area->widget()->findChild<QWidget*>(QLatin1String(objectName)) : nullptr;
    if (!target)
        return;
    area->verticalScrollBar()->setValue(target->mapTo(area->widget(), QPoint(0, 0)).y());
}

QLabel* CreateText(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    return label;
}

QLabel* CreateSecondaryText(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(QStringLiteral("SecondaryText"));
    return label;
}

QWidget* CreateSection(const char* objectName, const QString& title, const QString& text, QWidget* demo,
                       QWidget* parent)
{
    auto* section = new QWidget(parent);
    section->setObjectName(QLatin1String(objectName));
    auto* layout = new QVBoxLayout(section);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(CreateSectionTitle(title, section));
    layout->addWidget(CreateText(text, section));
    demo->setParent(section);
    layout->addWidget(demo);
    return section;
}

QPushButton* CreateButton(const QString& text, const char* objectName, QWidget* parent, bool checkable)
{
    auto* button = new QPushButton(text, parent);
    button->setObjectName(QLatin1String(objectName));
    button->setCheckable(checkable);
    return button;
}

void ShowPicture(QWidget* popup, QWidget* page)
{
    if (popup && popup->isVisible())
        new PopupPicture(popup, page);
}

namespace {

//: Heading of a group of pages in the page list.
QString Group(const char* name)
{
    return QCoreApplication::translate("Gallery", name);
}

} // namespace

QVector<GalleryPage> GalleryPages(GalleryTheme& theme)
{
    return {
        {QStringLiteral("overview"), QCoreApplication::translate("Gallery", "Overview"), CreateOverviewPage, 0, {},
         Group(QT_TRANSLATE_NOOP("Gallery", "Start"))},
        //: Page list entry: the named values the gallery's stylesheet uses, and its colour table.
        {QStringLiteral("style_constants"), QCoreApplication::translate("Gallery", "Style constants"),
         [&theme] { return CreateStyleConstantsPage(theme); }, 0, {}, Group(QT_TRANSLATE_NOOP("Gallery", "Start"))},
        //: Page list entry: the measured displays, the chosen scale factor and the graphics back-end.
        {QStringLiteral("display"), QCoreApplication::translate("Gallery", "Display and scaling"), CreateDisplayPage, 0,
         {}, Group(QT_TRANSLATE_NOOP("Gallery", "Start"))},
        //: Page list entry: the animated widgets and effects.
        {QStringLiteral("animation"), QCoreApplication::translate("Gallery", "Animation"), CreateAnimationPage, 0,
         AnimationPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Animation"))},
        //: Page list entry: the collapsing pane and the expand animation.
        {QStringLiteral("expanding"), QCoreApplication::translate("Gallery", "Collapse and expand"),
         CreateExpandingPage, 0, ExpandingPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Animation"))},
        //: Page list entry: the card, the sliding stack and the frame animations.
        {QStringLiteral("transitions"), QCoreApplication::translate("Gallery", "Page transitions"), CreateTransitionsPage,
         0, TransitionsPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Animation"))},
        //: Page list entry: the busy ring, the tile and progress animations, the curtains and the message overlay.
        {QStringLiteral("busy"), QCoreApplication::translate("Gallery", "Busy and curtains"), CreateBusyPage, 200,
         BusyPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Animation"))},
        //: Page list entry: the flow layout, anchors and overlays.
        {QStringLiteral("layouts"), QCoreApplication::translate("Gallery", "Layouts"), CreateLayoutsPage, 0,
         LayoutsPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Layout"))},
        //: Page list entry: the hover overlay and the lightbox.
        {QStringLiteral("overlays"), QCoreApplication::translate("Gallery", "Overlays"), CreateOverlaysPage, 0,
         OverlaysPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Layout"))},
        //: Page list entry: tips and popups beside their widgets, a stuck menu, resizable panels.
        {QStringLiteral("popups"), QCoreApplication::translate("Gallery", "Popups and containers"), CreatePopupsPage, 0,
         PopupsPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Layout"))},
        //: Page list entry: the text widgets.
        {QStringLiteral("text"), QCoreApplication::translate("Gallery", "Text"), CreateTextPage, 0, TextPageMoments(),
         Group(QT_TRANSLATE_NOOP("Gallery", "Text and input"))},
        //: Page list entry: the input widgets.
        {QStringLiteral("input"), QCoreApplication::translate("Gallery", "Input"), CreateInputPage, 0, InputPageMoments(),
         Group(QT_TRANSLATE_NOOP("Gallery", "Text and input"))},
        //: Page list entry: the frameless window and its title bar.
        {QStringLiteral("window"), QCoreApplication::translate("Gallery", "Window chrome"), CreateWindowPage, 0,
         WindowPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Windows and navigation"))},
        //: Page list entry: inline notifications and popup messages.
        {QStringLiteral("notifications"), QCoreApplication::translate("Gallery", "Notifications"),
         CreateNotificationsPage, 0, NotificationsPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Windows and navigation"))},
        //: Page list entry: tabs with a sliding selector, the tool bar and the button pair.
        {QStringLiteral("navigation"), QCoreApplication::translate("Gallery", "Tabs and tool bars"),
         CreateNavigationPage, 0, NavigationPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Windows and navigation"))},
        //: Page list entry: selectable cards, icons with labels, see-through and kinetic containers, focus control.
        {QStringLiteral("containers"), QCoreApplication::translate("Gallery", "Containers"), CreateContainersPage, 0,
         ContainersPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Windows and navigation"))},
        //: Page list entry: the bar, pie and plot charts, tinted pictures and a decorated border.
        {QStringLiteral("charts"), QCoreApplication::translate("Gallery", "Charts"),
         [&theme] { return CreateChartsPage(theme); }, 600, ChartsPageMoments(),
         Group(QT_TRANSLATE_NOOP("Gallery", "Charts and views"))},
        //: Page list entry: a table, closable lists, widgets in rows on 100,000 rows, and screen readers.
        {QStringLiteral("views"), QCoreApplication::translate("Gallery", "Item views"), CreateViewsPage, 0,
         ViewsPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Charts and views"))},
        //: Page list entry: pictures loaded over the network and previews of files.
        {QStringLiteral("images"), QCoreApplication::translate("Gallery", "Images and previews"), CreateImagesPage, 0,
         ImagesPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Charts and views"))},
        //: Page list entry: the QML controls of Orvanta.Controls, coloured from Orvanta.Styles.
        {QStringLiteral("qml"), QCoreApplication::translate("Gallery", "QML controls"), CreateQmlPage, 300,
         QmlPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "QML"))},
        //: Page list entry: the debug console and the state-machine tracer.
        {QStringLiteral("diagnostics"), QCoreApplication::translate("Gallery", "Diagnostics"), CreateDiagnosticsPage, 0,
         DiagnosticsPageMoments(), Group(QT_TRANSLATE_NOOP("Gallery", "Diagnostics"))},
    };
}
