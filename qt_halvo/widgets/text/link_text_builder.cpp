#include <qt_halvo/widgets/text/link_text_builder.h>

#include <qt_halvo/styles/style_sheet.h>

#include <QtCore/QVariant>

namespace OrvantaQT {

LinkTextBuilder::LinkTextBuilder()
    : m_greyColor(GetCSSData(QStringLiteral("greyColor")).toString())
{
}

void LinkTextBuilder::SetEnabled(bool enabled)
{
    m_enabled = enabled;
}

void LinkTextBuilder::SetNoLinkMode(bool noLink)
{
    m_noLinkMode = noLink;
}

QString LinkTextBuilder::GetDecoratedLink(const QString& text) const
{
    return GetLinkTemplate().arg(text);
}

// The anchors close with "<\a>", which the rich-text engine accepts; callers rely on the
// markup as it is.
QString LinkTextBuilder::GetLinkTemplate() const
{
    if (m_noLinkMode)
        return QStringLiteral("%1");
    if (m_enabled)
        return QStringLiteral("<a href=\"link\" style=\"text-decoration: none;\">%1<\\a>");
    return QStringLiteral("<a href=\"link\" style=\"text-decoration: none; color:%1;\">%2<\\a>").arg(m_greyColor);
}

} // namespace OrvantaQT
