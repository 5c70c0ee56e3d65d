// The names of a widget's children that style sheets and screen readers reach: the object
// name is the bare role ("CloseButton"), the accessible name the owner's class, an
// underscore and the role ("TitleBar_CloseButton").
#pragma once

#include <QtCore/QLatin1String>
#include <QtCore/QString>

namespace OrvantaQT {

template <typename Child>
Child* NameChild(Child* child, const char* ownerClass, const char* role)
{
    child->setObjectName(QLatin1String(role));
    child->setAccessibleName(QLatin1String(ownerClass) + QLatin1Char('_') + QLatin1String(role));
    return child;
}

} // namespace OrvantaQT
