#include "gallery_theme.h"

#include <qt_halvo/styles/style_sheet.h>

#include <QtCore/QFile>
#include <QtGui/QColor>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>

namespace {

const QLatin1String kSheetPath(":/gallery/default_theme.qss");
const QLatin1String kConstantsHeader("/* Stylesheet Constants");
const QLatin1String kCommentEnd("*/");

QString ColorsPath(GalleryTheme::Variant variant)
{
    return variant == GalleryTheme::Variant::Dark ? QStringLiteral(":/gallery/colors_dark.json")
                                                  : QStringLiteral(":/gallery/colors_light.json");
}

// Links and plain labels are drawn from the palette. Giving labels their colour through
// the palette rather than a sheet rule leaves widgets free to set their own foreground
// (a link label's colour, a fading text's gradient).
void ApplyLinkColors()
{
    const QColor link(OrvantaQT::GetCSSData(QStringLiteral("linkColor")).toString());
    const QColor text(OrvantaQT::GetCSSData(QStringLiteral("primaryText")).toString());
    QPalette palette = QGuiApplication::palette();
    palette.setBrush(QPalette::All, QPalette::Link, QBrush(link));
    palette.setBrush(QPalette::All, QPalette::LinkVisited, QBrush(link));
    palette.setBrush(QPalette::All, QPalette::WindowText, QBrush(text));
    palette.setBrush(QPalette::All, QPalette::Text, QBrush(text));
    QApplication::setPalette(palette);
}

// Rich text takes the link colour from the palette when it is parsed, so labels that
// show links parse their text again.
void ReparseLinkLabels()
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget* widget : widgets) {
        auto* label = qobject_cast<QLabel*>(widget);
        if (!label || !label->text().contains(QLatin1String("href"), Qt::CaseInsensitive))
            continue;
        const QString text = label->text();
        label->clear(); // setText ignores the text it already has
        label->setText(text);
    }
}

// The text of the constants block that opens the sheet; empty without one.
QString ConstantsBlock()
{
    QFile file(kSheetPath);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    const QString text = QString::fromUtf8(file.readAll());
    if (!text.startsWith(kConstantsHeader))
        return QString();
    const int end = text.indexOf(kCommentEnd);
    return end < 0 ? QString() : text.mid(kConstantsHeader.size(), end - kConstantsHeader.size());
}

void Repolish(QWidget* widget)
{
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
    const QList<QWidget*> children = widget->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* child : children)
        Repolish(child);
}

} // namespace

GalleryTheme::GalleryTheme(QObject* parent)
    : QObject(parent)
{
}

void GalleryTheme::Apply(Variant variant)
{
    OrvantaQT::LoadGlobalStyleSheet(kSheetPath, ColorsPath(variant));
    // The sheet is cached per path: without a forced pass it would keep the colours it
    // was first processed with. A pass resolves constants that name a colour (linkColor =
    // @accentColor) before it merges the colour table, so against the colours of the pass
    // before; the second pass settles them on the new ones.
    OrvantaQT::RecalculateGlobalStyleSheet();
    OrvantaQT::RecalculateGlobalStyleSheet();
    qApp->setStyleSheet(OrvantaQT::GetGlobalStyleSheet());
    ApplyLinkColors();
    // The sheet polished the widgets before the palette above was set: those that take
    // their text colour from it would keep the old one. A second polish, ancestors first,
    // settles them.
    if (m_applied) {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows)
            Repolish(window);
    }
    m_applied = true;
    ReparseLinkLabels();
    m_variant = variant;
    Q_EMIT Changed();
}

QString GalleryTheme::SheetPath()
{
    return kSheetPath;
}

GalleryTheme::Variant GalleryTheme::Current() const
{
    return m_variant;
}

QStringList GalleryTheme::DeclaredConstants()
{
    QStringList names;
    const QStringList lines = ConstantsBlock().split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        // Only what the engine reads as a constant: asking it for any other name adds one.
        const QStringList parts = line.split(QLatin1Char('='), Qt::SkipEmptyParts);
        if (parts.size() == 2 && !parts[0].trimmed().isEmpty() && !parts[1].trimmed().isEmpty())
            names.append(parts[0].trimmed());
    }
    return names;
}
