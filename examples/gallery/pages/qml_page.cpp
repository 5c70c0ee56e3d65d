#include "gallery_pages.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtCore/QtMath>
#include <QtGui/QResizeEvent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuickWidgets/QQuickWidget>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("QmlPage", text);
}


// One section's QML, as tall as its content; all sections share the page's engine.
QQuickWidget* CreateQuickSection(QQmlEngine* engine, const QString& file, QWidget* parent)
{
    auto* quick = new QQuickWidget(engine, parent);
    quick->setObjectName(QStringLiteral("QuickSection"));
    quick->setResizeMode(QQuickWidget::SizeRootObjectToView);
    // The page shows round the QML's rounded corners.
    quick->setClearColor(Qt::transparent);
    quick->setSource(QUrl(QStringLiteral("qrc:/gallery/qml/") + file));
    if (quick->status() == QQuickWidget::Error) {
        for (const QQmlError& error : quick->errors())
            qWarning("%s", qPrintable(error.toString()));
    }
    // The root item's implicit height is what the section needs, exactly; its width
    // follows the page.
    if (QQuickItem* root = quick->rootObject()) {
        const auto fit = [quick, root] { quick->setFixedHeight(qCeil(root->implicitHeight())); };
        QObject::connect(root, &QQuickItem::implicitHeightChanged, quick, fit);
        fit();
        // With the software renderer a QQuickWidget resized while its page is hidden keeps
        // the picture of its first size, and shows the scene cut short: once the new size
        // is in place it is told again.
        // A visible widget resizes well: only a hidden one is told again, not every frame
        // of an animation.
        const auto follow = [quick] {
            if (quick->isVisible())
                return;
            QTimer::singleShot(0, quick, [quick] {
                QResizeEvent resize(quick->size(), QSize());
                QCoreApplication::sendEvent(quick, &resize);
            });
        };
        QObject::connect(root, &QQuickItem::heightChanged, quick, follow);
    }
    return quick;
}

} // namespace

QWidget* CreateQmlPage()
{
    ScrollingPage scrolling = CreateScrollingPage("QmlPage", Translate("QML controls"));
    QWidget* content = scrolling.content;
    auto* engine = new QQmlEngine(content);
    const struct
    {
        const char* objectName;
        const char* title;
        const char* text;
        const char* file;
    } sections[] = {
        {"QmlStylesSection", QT_TRANSLATE_NOOP("QmlPage", "Colours from Orvanta.Styles"),
         QT_TRANSLATE_NOOP("QmlPage", "The Colors singleton is the colour table of the style sheet, kept in step: switch "
                                      "the theme and every binding follows without loading the QML again."),
         "StylesSection.qml"},
        {"QmlControlsSection", QT_TRANSLATE_NOOP("QmlPage", "Buttons and input"),
         QT_TRANSLATE_NOOP("QmlPage", "Orvanta.Controls on Qt Quick's templates: no Qt Quick Controls style is involved, "
                                      "so a style chosen from outside changes nothing. The search field starts a "
                                      "search a second after typing stops."),
         "ControlsSection.qml"},
        {"QmlProgressSection", QT_TRANSLATE_NOOP("QmlPage", "Busy, progress and a collapsing pane"),
         QT_TRANSLATE_NOOP("QmlPage", "The busy ring turns only while it can be seen; the pane moves as the collapsing "
                                      "pane widget does."),
         "ProgressSection.qml"},
        {"QmlNotificationsSection", QT_TRANSLATE_NOOP("QmlPage", "Notifications and toasts"),
         QT_TRANSLATE_NOOP("QmlPage", "NotificationBar and Toast behave as NotificationWidget and PopupMessage: toasts "
                                      "queue, count repeats and pause their time-out under the pointer."),
         "NotificationsSection.qml"},
        {"QmlChartsSection", QT_TRANSLATE_NOOP("QmlPage", "Charts"),
         QT_TRANSLATE_NOOP("QmlPage", "BarChart, PieChart and Plot are the chart widgets' own painting in QML items: "
                                      "the same data gives the same pixels."),
         "ChartsSection.qml"},
    };
    for (const auto& section : sections) {
        scrolling.layout->addWidget(CreateSection(section.objectName, Translate(section.title), Translate(section.text),
                                                  CreateQuickSection(engine, QLatin1String(section.file), content),
                                                  content));
    }
    scrolling.layout->addStretch(1);
    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> QmlPageMoments()
{
    // The window's theme switch, flipped while the page shows: the QML follows live.
    const auto switchTheme = [](QWidget* page) {
        if (auto* themeSwitch = page->window()->findChild<QAbstractButton*>(QStringLiteral("ThemeSwitch")))
            themeSwitch->click();
    };
    // The collapsing pane, folded: the picture is taken on its way.
    const auto foldPane = [](QWidget* page) {
        for (auto* quick : page->findChildren<QQuickWidget*>()) {
            if (QObject* pane = quick->rootObject() ? quick->rootObject()->findChild<QObject*>(QStringLiteral("DetailsPane"))
                                                    : nullptr)
                QMetaObject::invokeMethod(pane, "toggle");
        }
    };
    return {
        {QStringLiteral("controls"), [](QWidget* page) { ScrollTo(page, "QmlControlsSection"); }, 200},
        {QStringLiteral("progress"), [](QWidget* page) { ScrollTo(page, "QmlProgressSection"); }, 200},
        {QStringLiteral("pane_moving"), foldPane, 250},
        {QStringLiteral("notifications"), [](QWidget* page) { ScrollTo(page, "QmlNotificationsSection"); }, 400},
        {QStringLiteral("charts"), [](QWidget* page) { ScrollTo(page, "QmlChartsSection"); }, 1200},
        {QStringLiteral("switched"), switchTheme, 300},
        {QStringLiteral("switched_back"), switchTheme, 300},
    };
}
