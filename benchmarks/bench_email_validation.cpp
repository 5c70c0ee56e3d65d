// E-mail validation and ACE conversion per item: 100,000 addresses against the single
// pattern, 10,000 lists of ten against the list pattern, 100,000 domains to and from ACE.

#include <qt_halvo/widgets/input/email_validation.h>

#include <QtTest/QtTest>

using namespace OrvantaQT;

namespace {

QStringList Domains(int count)
{
    static const QStringList labels{QStringLiteral("пример"), QStringLiteral("bücher"), QStringLiteral("例え"),
                                    QStringLiteral("mail"), QStringLiteral("δοκιμή"), QStringLiteral("news")};
    QStringList domains;
    for (int i = 0; i < count; ++i)
        domains << labels.at(i % labels.size()) + QString::number(i) + QStringLiteral(".org");
    return domains;
}

} // namespace

class BenchEmailValidation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void singleAddresses();
    void listsOfTen();
    void toAce();
    void fromAce();
};

void BenchEmailValidation::singleAddresses()
{
    const QStringList domains = Domains(100000);
    QStringList addresses;
    for (const QString& domain : domains)
        addresses << QStringLiteral("someone.%1@").arg(addresses.size()) + domain;
    int valid = 0;
    QBENCHMARK {
        for (const QString& address : addresses)
            valid += EmailValidator().exactMatch(address);
    }
    QVERIFY(valid > 0);
}

void BenchEmailValidation::listsOfTen()
{
    const QStringList domains = Domains(100000);
    QStringList lists;
    for (int i = 0; i + 10 <= domains.size(); i += 10) {
        QStringList ten;
        for (int j = i; j < i + 10; ++j)
            ten << QStringLiteral("user%1@").arg(j) + domains.at(j);
        lists << ten.join(QStringLiteral("; "));
    }
    int valid = 0;
    QBENCHMARK {
        for (const QString& list : lists)
            valid += MultiEmailValidator().exactMatch(list);
    }
    QVERIFY(valid > 0);
}

void BenchEmailValidation::toAce()
{
    const QStringList domains = Domains(100000);
    int length = 0;
    QBENCHMARK {
        for (const QString& domain : domains)
            length += ConvertToAce(domain).size();
    }
    QVERIFY(length > 0);
}

void BenchEmailValidation::fromAce()
{
    QList<QByteArray> aces;
    for (const QString& domain : Domains(100000))
        aces << ConvertToAce(domain).toLatin1();
    int length = 0;
    QBENCHMARK {
        for (const QByteArray& ace : aces)
            length += ConvertFromAce(ace).size();
    }
    QVERIFY(length > 0);
}

QTEST_MAIN(BenchEmailValidation)
#include "bench_email_validation.moc"
