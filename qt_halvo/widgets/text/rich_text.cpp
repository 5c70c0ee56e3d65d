#include <qt_halvo/widgets/text/rich_text.h>

#include "line_break_pattern_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtWidgets/QLabel>

namespace OrvantaQT {

QString ConvertToRichText(const QString& text)
{
    return QString(text).replace(LineBreakPattern(), QStringLiteral("<br>"));
}

QString FormatElidedTextForLabel(QLabel* label, const QString& format, const QStringList& args)
{
    if (!label) {
        QTH_LOG_WARNING("FormatElidedTextForLabel: no label to measure with");
        return QString();
    }
    QString result = format;
    const QFontMetrics metrics = label->fontMetrics();
    for (const QString& argument : args)
        result = result.arg(metrics.elidedText(argument, Qt::ElideMiddle, label->width()));
    return result;
}

} // namespace OrvantaQT
