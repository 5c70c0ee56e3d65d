#include "gallery_pages.h"

#include <qt_halvo/qt_halvo_version.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWidget>

QWidget* CreateOverviewPage()
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("OverviewPage"));
    auto* layout = new QVBoxLayout(page);

    auto* title = new QLabel(QCoreApplication::translate("Gallery", "qt_halvo %1").arg(OrvantaQT::VersionString()));
    title->setObjectName(QStringLiteral("PageTitle"));
    layout->addWidget(title);

    auto* text = new QLabel(QCoreApplication::translate(
        "Gallery",
        "Qt widgets with one look and one stylesheet vocabulary: animated widgets, layouts, "
        "overlays, text and input widgets and hand-painted charts.\n\n"
        "Every widget family of the library has a live page in this gallery. "
        "Pick one from the list on the left."));
    text->setWordWrap(true);
    layout->addWidget(text);

    auto* versions = new QLabel(QCoreApplication::translate("Gallery", "Built with Qt %1, running on Qt %2 (%3).")
                                    .arg(QStringLiteral(QT_VERSION_STR), QString::fromLatin1(qVersion()),
                                         QGuiApplication::platformName()));
    versions->setObjectName(QStringLiteral("SecondaryText"));
    layout->addWidget(versions);
    layout->addStretch();
    return page;
}
