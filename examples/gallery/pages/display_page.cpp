#include "gallery_pages.h"

#include <qt_halvo/utilities/hidpi_utils.h>
#include <qt_halvo/utilities/platform/display_info_p.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("Gallery", text);
}

QString Environment(const char* name)
{
    //: Shown for an environment variable that is not set.
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariable(name) : Translate("not set");
}

QString Attributes()
{
    QStringList set;
    const std::pair<Qt::ApplicationAttribute, const char*> attributes[] = {
        {Qt::AA_EnableHighDpiScaling, "AA_EnableHighDpiScaling"},
        {Qt::AA_DisableHighDpiScaling, "AA_DisableHighDpiScaling"},
        {Qt::AA_UseHighDpiPixmaps, "AA_UseHighDpiPixmaps"},
        {Qt::AA_UseOpenGLES, "AA_UseOpenGLES"},
    };
    for (const auto& [attribute, name] : attributes) {
        if (QCoreApplication::testAttribute(attribute))
            set << QString::fromLatin1(name);
    }
    //: Shown when none of the scaling and OpenGL attributes is set.
    return set.isEmpty() ? Translate("none") : set.join(QStringLiteral(", "));
}

QTableWidget* MonitorTable(const OrvantaQT::Platform::DisplayInfo& info)
{
    auto* table = new QTableWidget(int(info.monitors.size()), 3);
    table->setObjectName(QStringLiteral("MonitorTable"));
    table->setHorizontalHeaderLabels({Translate("Resolution"), Translate("Work area"), Translate("Physical DPI")});
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    for (int row = 0; row < table->rowCount(); ++row) {
        const auto& monitor = info.monitors[std::size_t(row)];
        table->setItem(row, 0, new QTableWidgetItem(QStringLiteral("%1 × %2").arg(monitor.width).arg(monitor.height)));
        table->setItem(row, 1, new QTableWidgetItem(QStringLiteral("%1 × %2").arg(monitor.workWidth).arg(monitor.workHeight)));
        table->setItem(row, 2, new QTableWidgetItem(QString::number(monitor.physicalDpi)));
    }
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->resizeColumnsToContents();
    table->setMaximumHeight(table->horizontalHeader()->sizeHint().height() * (table->rowCount() + 1) + 4);
    return table;
}

} // namespace

QWidget* CreateDisplayPage()
{
    // Measured again here with the library's own platform code: the library keeps its
    // measurement to itself.
    const OrvantaQT::Platform::DisplayInfo info = OrvantaQT::Platform::GatherDisplayInfo();

    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("DisplayPage"));
    auto* layout = new QVBoxLayout(page);
    auto* title = new QLabel(Translate("Display and scaling"));
    title->setObjectName(QStringLiteral("PageTitle"));
    layout->addWidget(title);
    auto* intro = new QLabel(Translate("What the library measured before the application started, the scale factor "
                                       "it chose so that the gallery's smallest window fits, and the graphics "
                                       "back-end in use."));
    intro->setWordWrap(true);
    layout->addWidget(intro);

    auto* form = new QFormLayout;
    //: Whether the displays could be measured at all (no X server, for instance).
    form->addRow(Translate("Measured:"), new QLabel(info.valid ? Translate("yes") : Translate("no")));
    form->addRow(Translate("System DPI:"), new QLabel(QStringLiteral("%1 (%2 %)").arg(info.systemDpi).arg(info.scalingPercent)));
    form->addRow(Translate("Caption and frame:"), new QLabel(QStringLiteral("%1, %2 × %3")
                                                                .arg(info.captionHeight).arg(info.frameWidth).arg(info.frameHeight)));
    const QSize console = OrvantaQT::GetMinimumConsoleSize();
    form->addRow(Translate("Smallest window:"), new QLabel(QStringLiteral("%1 × %2").arg(console.width()).arg(console.height())));
    form->addRow(Translate("Scale factor in force:"), new QLabel(QString::number(OrvantaQT::GetQtScaleFactor())));
    form->addRow(QStringLiteral("QT_SCALE_FACTOR:"), new QLabel(Environment("QT_SCALE_FACTOR")));
    form->addRow(QStringLiteral("QT_OPENGL:"), new QLabel(Environment("QT_OPENGL")));
    form->addRow(QStringLiteral("QT_ANGLE_PLATFORM:"), new QLabel(Environment("QT_ANGLE_PLATFORM")));
    form->addRow(Translate("Attributes:"), new QLabel(Attributes()));
    form->addRow(Translate("OpenGL:"), new QLabel(OrvantaQT::GetOpenGLImplementation()));
    layout->addLayout(form);

    //: Heading above the table of monitors.
    auto* monitors = new QLabel(info.monitors.empty() ? Translate("No monitors measured.") : Translate("Monitors"));
    monitors->setObjectName(QStringLiteral("SectionTitle"));
    layout->addWidget(monitors);
    if (!info.monitors.empty())
        layout->addWidget(MonitorTable(info));
    layout->addStretch();
    return page;
}
