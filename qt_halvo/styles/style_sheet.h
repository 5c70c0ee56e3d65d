// Stylesheets with named constants, the colour table, private sheets and style properties.
//
// A sheet may open with a "/* Stylesheet Constants" block of "name = value" lines; every
// "@name" in the sheet is replaced by the value. A colours file (a flat JSON object of
// names to colours) adds colours that win over constants of the same name. Everything
// here belongs to the GUI thread.
#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

class QObject;
class QQmlPropertyMap;
class QWidget;

namespace OrvantaQT {

// A constant of the current global sheet, colours merged; invalid before a global sheet
// is loaded. Asking for an unknown name adds it with an empty value, so that "@name"
// is then replaced by nothing.
QT_HALVO_EXPORT QVariant GetCSSData(const QString& name);

// A copy of the colour table.
QT_HALVO_EXPORT QMap<QString, QVariant> GetGlobalColors();

// Processes a sheet against the working constants (the global sheet's, plus those of
// every sheet processed since) and returns the text to give to Qt.
QT_HALVO_EXPORT QString RecalculateStylesheet(const QString& styleSheet);

// The colours as a QML property map; "rgba(r, g, b, a)" strings become QColor values.
// The caller owns the map through parent.
QT_HALVO_EXPORT QQmlPropertyMap* BuildQmlColorsMap(const QMap<QString, QVariant>& colors, QObject* parent);

// Reads the colour table from colorsPath, then makes styleSheetPath the global sheet and
// processes it (once: a sheet already processed is taken from the cache).
QT_HALVO_EXPORT void LoadGlobalStyleSheet(const QString& styleSheetPath, const QString& colorsPath);
QT_HALVO_EXPORT void LoadGlobalStyleSheet(const QString& styleSheetPath);

// The processed global sheet; empty before one is loaded. Applying it is the caller's.
QT_HALVO_EXPORT QString GetGlobalStyleSheet();

// Processes the global sheet again from its file, for instance after it changed on disk.
QT_HALVO_EXPORT void RecalculateGlobalStyleSheet();

// Gives widget the processed private sheet ":/<name>.qss" of the library's resources.
QT_HALVO_EXPORT void LoadPrivateStylesheet(QWidget* widget, const QString& name);

// Makes Qt evaluate the widget's stylesheet again, so that property selectors follow.
QT_HALVO_EXPORT void UpdateStyleSheet(QWidget* widget);

// Sets a dynamic property that stylesheets test, unless it already has that value, and
// with update re-polishes the widget.
QT_HALVO_EXPORT void SetStyleProperty(QWidget* widget, const char* name, const QVariant& value, bool update);

// The same for several properties, re-polishing once if any of them changed.
QT_HALVO_EXPORT void SetStyleProperties(QWidget* widget, const QMap<const char*, QVariant>& properties, bool update);

} // namespace OrvantaQT
