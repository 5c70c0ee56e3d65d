#include "qml_harness.h"

#include "log_capture.h"

#include <qt_halvo/styles/style_sheet.h>

#include "qt_halvo/styles/style_sheet_p.h"

#include <QtCore/QFile>
#include <QtGui/QColor>
#include <QtQml/QQmlPropertyMap>

#include <memory>

QmlHarness::QmlHarness(QObject* parent) : QObject(parent) {}

namespace {

QString Write(const QTemporaryDir& dir, const QString& name, const QString& text)
{
    QFile file(dir.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

} // namespace

void QmlHarness::loadColors(const QString& json)
{
    OrvantaQT::LoadGlobalColors(Write(m_dir, QStringLiteral("colors%1.json").arg(++m_files), json));
}

void QmlHarness::loadSheet(const QString& text)
{
    OrvantaQT::LoadGlobalStyleSheet(Write(m_dir, QStringLiteral("sheet%1.qss").arg(++m_files), text));
    OrvantaQT::RecalculateGlobalStyleSheet();
}

QVariantMap QmlHarness::builtColors() const
{
    std::unique_ptr<QQmlPropertyMap> map(OrvantaQT::BuildQmlColorsMap(OrvantaQT::GetGlobalColors(), nullptr));
    QVariantMap values;
    for (const QString& key : map->keys())
        values.insert(key, map->value(key));
    return values;
}

QVariant QmlHarness::cssData(const QString& name) const
{
    return OrvantaQT::GetCSSData(name);
}

int QmlHarness::logMark() const
{
    return LogCapture_LineCount();
}

QStringList QmlHarness::logSince(int mark) const
{
    QStringList texts;
    for (const LoggedLine& line : LogCapture::Lines(mark)) {
        if (!line.tag.startsWith(QLatin1String("qt_halvo\\utilities\\logging:")))
            texts << QString::number(line.level) + QLatin1Char(' ') + line.text;
    }
    return texts;
}

bool QmlHarness::sameColor(const QVariant& a, const QVariant& b) const
{
    return a.value<QColor>() == b.value<QColor>();
}
