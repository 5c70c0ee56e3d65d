#include "gallery_pages.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QtMath>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
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
    // The root item's implicit height is what the section needs; its width follows the page.
    if (QQuickItem* root = quick->rootObject()) {
        const auto fit = [quick, root] { quick->setMinimumHeight(qCeil(root->implicitHeight())); };
        QObject::connect(root, &QQuickItem::implicitHeightChanged, quick, fit);
        fit();
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
    return {
        {QStringLiteral("switched"), switchTheme, 300},
        {QStringLiteral("switched_back"), switchTheme, 300},
    };
}
