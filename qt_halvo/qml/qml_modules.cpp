#include <qt_halvo/qml/qml_modules.h>

#include "qml_style_bridge_p.h"

#include <qt_halvo/qml/bar_chart_item.h>
#include <qt_halvo/qml/pie_chart_item.h>
#include <qt_halvo/qml/plot_item.h>

#include <QtCore/QCoreApplication>
#include <QtQml/QQmlEngine>
#include <QtQml/qqml.h>

namespace OrvantaQT {

namespace {

const char* const kStylesUri = "Orvanta.Styles";
const char* const kControlsUri = "Orvanta.Controls";
const char* const kImportPath = "qrc:/qt-project.org/imports";

void RegisterTypes()
{
    qmlRegisterSingletonType(kStylesUri, 1, 0, "Colors", [](QQmlEngine* engine, QJSEngine* scriptEngine) {
        return StyleSingleton(StyleMapKind::Colors, engine, scriptEngine);
    });
    qmlRegisterSingletonType(kStylesUri, 1, 0, "Constants", [](QQmlEngine* engine, QJSEngine* scriptEngine) {
        return StyleSingleton(StyleMapKind::Constants, engine, scriptEngine);
    });
    // The versions exist even where a module's own types are all QML files.
    qmlRegisterModule(kControlsUri, 1, 0);
    qmlRegisterType<BarChartItem>(kControlsUri, 1, 0, "BarChart");
    qmlRegisterType<PieChartItem>(kControlsUri, 1, 0, "PieChart");
    qmlRegisterType<PlotItem>(kControlsUri, 1, 0, "Plot");
}

void RegisterAtStartup()
{
    RegisterQmlModules();
}

} // namespace

void RegisterQmlModules(QQmlEngine* engine)
{
    // Qt keeps registrations for the life of the process.
    static const bool registered = (RegisterTypes(), true);
    Q_UNUSED(registered);
    if (engine && !engine->importPathList().contains(QLatin1String(kImportPath)))
        engine->addImportPath(QLatin1String(kImportPath));
}

// With the application object, so that hosts need not call it; Application's own
// constructor stays as it is.
Q_COREAPP_STARTUP_FUNCTION(RegisterAtStartup)

} // namespace OrvantaQT
