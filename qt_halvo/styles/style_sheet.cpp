#include <qt_halvo/styles/style_sheet.h>

#include "style_sheet_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QColor>
#include <QtQml/QQmlPropertyMap>
#include <QtWidgets/QWidget>

#include <vector>

namespace OrvantaQT {

namespace {

struct StyleState
{
    QMap<QString, QVariant> colors;
    QMap<QString, StyleConstants> constantsBySheet;
    // The global sheet whose constants GetCSSData reads; none before the first load.
    bool hasCurrentConstants = false;
    QString currentConstantsPath;
    StyleConstants workingConstants;
    QString globalSheetPath;
    QMap<QString, QString> processedSheets; // an empty text means not processed yet
};

StyleState& State()
{
    static StyleState state;
    return state;
}

std::vector<std::function<void()>>& Listeners()
{
    static std::vector<std::function<void()>> listeners;
    return listeners;
}

void TellListeners()
{
    // A copy: a listener may add another.
    const auto listeners = Listeners();
    for (const auto& listener : listeners)
        listener();
}

QString ReadSheet(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

void ComputeGlobalSheet(bool force)
{
    StyleState& state = State();
    const QString path = state.globalSheetPath;
    QString& processed = state.processedSheets[path];
    if (processed.isEmpty() || force) {
        QString text = ReadSheet(path);
        StyleConstants& constants = state.constantsBySheet[path];
        ParseStylesheetConstants(text, constants);
        ResolveConstantReferences(constants);
        MergeGlobalColors(constants);
        processed = SubstituteConstants(text, constants);
        state.workingConstants = constants;
    }
    state.hasCurrentConstants = true;
    state.currentConstantsPath = path;
    TellListeners();
}

QString PrivateSheet(const QString& name)
{
    StyleState& state = State();
    const QString path = QStringLiteral(":/") + name + QStringLiteral(".qss");
    QString& processed = state.processedSheets[path];
    if (processed.isEmpty()) {
        QString text = ReadSheet(path);
        StyleConstants constants =
            state.hasCurrentConstants ? state.constantsBySheet.value(state.currentConstantsPath) : StyleConstants();
        ParseStylesheetConstants(text, constants);
        processed = SubstituteConstants(text, constants);
        state.constantsBySheet.insert(path, constants);
    }
    return processed;
}

// "rgba(r, g, b, a)": red, green and blue as integers (0 when unreadable), alpha 0 to 1.
QColor ColorFromRgba(const QString& text)
{
    const QStringList parts = text.mid(5, text.size() - 6).split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (parts.size() != 4)
        return QColor();
    QColor color;
    color.setRgb(parts[0].trimmed().toInt(), parts[1].trimmed().toInt(), parts[2].trimmed().toInt(), 255);
    color.setAlphaF(parts[3].trimmed().toDouble());
    return color;
}

} // namespace

void LoadGlobalColors(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        QTH_LOG_ERROR("[StyleSheet] Fail to load colors file %s", qPrintable(path));
        return;
    }
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (error.error != QJsonParseError::NoError) {
        QTH_LOG_ERROR("[StyleSheet] Fail to parse colors json, error: %s", qPrintable(error.errorString()));
        return;
    }
    if (!document.isObject()) {
        QTH_LOG_ERROR("[StyleSheet] Fail to serialize colors json");
        return;
    }
    State().colors = document.object().toVariantMap();
    TellListeners();
}

void MergeGlobalColors(StyleConstants& constants)
{
    const QMap<QString, QVariant>& colors = State().colors;
    for (auto it = colors.cbegin(); it != colors.cend(); ++it)
        constants.insert(it.key(), it.value());
}

void ResetStyleState()
{
    State() = StyleState();
    TellListeners();
}

StyleConstants CurrentStyleConstants()
{
    const StyleState& state = State();
    return state.hasCurrentConstants ? state.constantsBySheet.value(state.currentConstantsPath) : StyleConstants();
}

void AddStyleChangeListener(std::function<void()> listener)
{
    Listeners().push_back(std::move(listener));
}

QVariant GetCSSData(const QString& name)
{
    StyleState& state = State();
    if (!state.hasCurrentConstants)
        return QVariant();
    return state.constantsBySheet[state.currentConstantsPath][name];
}

QMap<QString, QVariant> GetGlobalColors()
{
    return State().colors;
}

QString RecalculateStylesheet(const QString& styleSheet)
{
    StyleState& state = State();
    QString text = styleSheet;
    ParseStylesheetConstants(text, state.workingConstants);
    ResolveConstantReferences(state.workingConstants);
    return SubstituteConstants(text, state.workingConstants);
}

QVariant QmlColorValue(const QVariant& value)
{
    const QString text = value.toString();
    if (text.startsWith(QLatin1String("rgba(")))
        return ColorFromRgba(text);
    return value;
}

QQmlPropertyMap* BuildQmlColorsMap(const QMap<QString, QVariant>& colors, QObject* parent)
{
    auto* map = new QQmlPropertyMap(parent);
    for (auto it = colors.cbegin(); it != colors.cend(); ++it)
        map->insert(it.key(), QmlColorValue(it.value()));
    return map;
}

void LoadGlobalStyleSheet(const QString& styleSheetPath, const QString& colorsPath)
{
    LoadGlobalColors(colorsPath);
    LoadGlobalStyleSheet(styleSheetPath);
}

void LoadGlobalStyleSheet(const QString& styleSheetPath)
{
    State().globalSheetPath = styleSheetPath;
    ComputeGlobalSheet(false);
}

QString GetGlobalStyleSheet()
{
    const StyleState& state = State();
    return state.processedSheets.value(state.globalSheetPath);
}

void RecalculateGlobalStyleSheet()
{
    ComputeGlobalSheet(true);
}

void LoadPrivateStylesheet(QWidget* widget, const QString& name)
{
    if (!widget) {
        QTH_LOG_ERROR("[StyleSheet] No widget to give the private sheet %s", qPrintable(name));
        return;
    }
    widget->setStyleSheet(PrivateSheet(name));
}

void UpdateStyleSheet(QWidget* widget)
{
    if (!widget) {
        QTH_LOG_ERROR("[StyleSheet] No widget to update");
        return;
    }
    // A widget needs a sheet of its own for Qt to re-polish it when the sheet is set.
    if (widget->styleSheet().isEmpty())
        widget->setStyleSheet(QStringLiteral(";"));
    widget->setStyleSheet(widget->styleSheet());
}

void SetStyleProperty(QWidget* widget, const char* name, const QVariant& value, bool update)
{
    SetStyleProperties(widget, {{name, value}}, update);
}

void SetStyleProperties(QWidget* widget, const QMap<const char*, QVariant>& properties, bool update)
{
    if (!widget) {
        QTH_LOG_ERROR("[StyleSheet] No widget to set style properties on");
        return;
    }
    bool changed = false;
    for (auto it = properties.cbegin(); it != properties.cend(); ++it) {
        if (!it.key()) {
            QTH_LOG_ERROR("[StyleSheet] A style property without a name is ignored");
            continue;
        }
        const QVariant current = widget->property(it.key());
        if (current.isValid() && current == it.value())
            continue;
        widget->setProperty(it.key(), it.value());
        changed = true;
    }
    if (changed && update)
        UpdateStyleSheet(widget);
}

} // namespace OrvantaQT
