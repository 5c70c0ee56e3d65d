#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QString>

namespace OrvantaQT {

// Builds the markup of a link for rich-text labels: an undecorated anchor, the same in
// the style sheets' "greyColor" when disabled, or the bare text in no-link mode.
class QT_HALVO_EXPORT LinkTextBuilder
{
public:
    LinkTextBuilder();

    void SetEnabled(bool enabled);
    void SetNoLinkMode(bool noLink);
    QString GetDecoratedLink(const QString& text) const;

private:
    QString GetLinkTemplate() const;

    QString m_greyColor;
    bool m_enabled = true;
    bool m_noLinkMode = false;
};

} // namespace OrvantaQT
