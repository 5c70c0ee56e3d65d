#include <qt_halvo/widgets/input/email_validation.h>

#include <QtCore/QUrl>

namespace OrvantaQT {

namespace {

const QString kAddressPattern =
    QStringLiteral("[^\\s\\x00-\\x20\\x2c\\x3a-\\x3c\\x3e\\x5b\\x5d]+@[^\\s\\x00-\\x27\\x2c\\x3b-\\x40]+");
const QString kSinglePattern = QStringLiteral("^") + kAddressPattern + QStringLiteral("$");
const QString kListPattern = QStringLiteral("\\s*(") + kAddressPattern + QStringLiteral(")(\\s*[,;]\\s*(") + kAddressPattern
    + QStringLiteral("))*\\s*");

} // namespace

const QRegExp& EmailValidator()
{
    static const QRegExp validator(kSinglePattern, Qt::CaseInsensitive, QRegExp::RegExp);
    return validator;
}

const QRegExp& MultiEmailValidator()
{
    static const QRegExp validator(kListPattern, Qt::CaseInsensitive, QRegExp::RegExp);
    return validator;
}

QString ConvertToAce(const QString& domain)
{
    const QByteArray ace = QUrl::toAce(domain);
    return ace.isEmpty() ? domain : QString::fromLatin1(ace);
}

QString ConvertFromAce(const QByteArray& ace)
{
    const QString domain = QUrl::fromAce(ace);
    return domain.isEmpty() ? QString::fromUtf8(ace) : domain;
}

} // namespace OrvantaQT
