#include <qt_halvo/widgets/input/email_validation.h>

#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>
#include <QtTest/QtTest>

using OrvantaQT::ConvertFromAce;
using OrvantaQT::ConvertToAce;
using OrvantaQT::EmailValidator;
using OrvantaQT::MultiEmailValidator;

namespace {

QString Char(int code)
{
    return QString(QChar(code));
}

// Lower-case letters that no IDNA mapping changes, from several scripts.
QString RandomLabel(QRandomGenerator& random)
{
    static const QVector<QPair<int, int>> ranges{
        {0x0430, 0x044f}, // Cyrillic а to я
        {0x03b1, 0x03c1}, // Greek α to ρ (no final sigma)
        {0x05d0, 0x05ea}, // Hebrew letters
        {0x4e00, 0x4fff}, // CJK ideographs
        {0x0e01, 0x0e2e}, // Thai consonants
        {0x0061, 0x007a}, // Latin a to z
    };
    const QPair<int, int> range = ranges.at(random.bounded(ranges.size()));
    QString label;
    const int length = 1 + random.bounded(12);
    for (int i = 0; i < length; ++i)
        label += QChar(range.first + random.bounded(range.second - range.first + 1));
    return label;
}

} // namespace

class TestEmailValidation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void singleAddressAtEveryClassBoundary_data();
    void singleAddressAtEveryClassBoundary();
    void addressLists_data();
    void addressLists();
    void aceAgreesWithLibidn2();
    void conversionsKeepWhatTheyCannotConvert_data();
    void conversionsKeepWhatTheyCannotConvert();
};

void TestEmailValidation::singleAddressAtEveryClassBoundary_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("valid");

    // The local part refuses 0x00-0x20, "," 0x2C, ":" to "<" 0x3A-0x3C, ">" 0x3E, "[" 0x5B, "]" 0x5D.
    const QVector<QPair<int, bool>> local{
        {0x01, false}, {0x1f, false}, {0x20, false}, {0x21, true},  {0x2b, true},  {0x2c, false}, {0x2d, true},
        {0x39, true},  {0x3a, false}, {0x3b, false}, {0x3c, false}, {0x3d, true},  {0x3e, false}, {0x3f, true},
        {0x40, true}, {0x5a, true},  {0x5b, false}, {0x5c, true},  {0x5d, false}, {0x5e, true},  {0x7e, true},
        {0x7f, true},  {0xe9, true},  {0x09, false}, {0x0a, false}, {0xa0, false}, {0x3000, false}};
    for (const auto& entry : local)
        QTest::addRow("local 0x%02x", entry.first) << "a" + Char(entry.first) + "b@example.org" << entry.second;
    // The domain refuses 0x00-0x27, "," 0x2C and ";" to "@" 0x3B-0x40.
    const QVector<QPair<int, bool>> domain{
        {0x20, false}, {0x21, false}, {0x27, false}, {0x28, true},  {0x2b, true},  {0x2c, false}, {0x2d, true},
        {0x2e, true},  {0x2f, true},  {0x3a, true},  {0x3b, false}, {0x3f, false}, {0x40, true},  {0x41, true},
        {0x5b, true},  {0x5d, true},  {0x7e, true},  {0xfc, true},  {0x09, false}, {0x2028, false}};
    for (const auto& entry : domain)
        QTest::addRow("domain 0x%02x", entry.first) << "ab@exa" + Char(entry.first) + "mple" << entry.second;

    QTest::newRow("no dot in the domain") << "user@localhost" << true;
    QTest::newRow("bracketed address literal") << "user@[192.168.0.1]" << true;
    QTest::newRow("brackets before the at") << "[user]@example.org" << false;
    QTest::newRow("upper case") << "User.Name+Tag@Example.ORG" << true;
    QTest::newRow("internationalised domain") << "ivan@пример.рф" << true;
    QTest::newRow("no local part") << "@example.org" << false;
    QTest::newRow("no domain") << "user@" << false;
    // The classes are followed literally: an at sign may stand in the local part, which
    // then takes the first one.
    QTest::newRow("two at signs") << "a@b@c" << true;
    QTest::newRow("empty") << QString() << false;
}

void TestEmailValidation::singleAddressAtEveryClassBoundary()
{
    QFETCH(QString, address);
    QFETCH(bool, valid);
    QCOMPARE(EmailValidator().exactMatch(address), valid);
    QCOMPARE(&EmailValidator(), &EmailValidator()); // built once
}

void TestEmailValidation::addressLists_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<bool>("valid");
    QTest::newRow("one") << "a@example.org" << true;
    QTest::newRow("comma") << "a@example.org,b@example.org" << true;
    QTest::newRow("semicolon with spaces, leading and trailing spaces")
        << "  a@example.org ; b@example.org,c@x  " << true;
    QTest::newRow("two separators in a row") << "a@example.org,,b@example.org" << false;
    QTest::newRow("white space only between") << "a@example.org b@example.org" << false;
    QTest::newRow("trailing separator") << "a@example.org;" << false;
    QTest::newRow("one bad address") << "a@example.org, b c@example.org" << false;
    QTest::newRow("empty") << QString() << false;
}

void TestEmailValidation::addressLists()
{
    QFETCH(QString, list);
    QFETCH(bool, valid);
    QCOMPARE(MultiEmailValidator().exactMatch(list), valid);
}

// Random internationalised domains, converted by Qt here and by GNU libidn2's idn2
// (installed by the test set-up): both ways must agree. Under ".org", as Qt decodes ACE
// only under the top-level domains of its IDN list.
void TestEmailValidation::aceAgreesWithLibidn2()
{
    QRandomGenerator random(20261122);
    QStringList domains;
    for (int i = 0; i < 2000; ++i)
        domains << RandomLabel(random) + QLatin1Char('.') + RandomLabel(random) + QStringLiteral(".org");

    QProcess idn2;
    idn2.start(QStringLiteral("idn2"), QStringList());
    QVERIFY2(idn2.waitForStarted(), "idn2 (Debian's idn2 package) is installed");
    idn2.write(domains.join(QLatin1Char('\n')).toUtf8() + '\n');
    idn2.closeWriteChannel();
    QVERIFY(idn2.waitForFinished(60000));
    const QStringList expected = QString::fromUtf8(idn2.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(expected.size(), domains.size());

    for (int i = 0; i < domains.size(); ++i) {
        const QString ace = ConvertToAce(domains.at(i));
        if (ace != expected.at(i))
            QFAIL(qPrintable(QStringLiteral("%1: Qt %2, libidn2 %3").arg(domains.at(i), ace, expected.at(i))));
        QCOMPARE(ConvertFromAce(ace.toLatin1()), domains.at(i));
    }
}

void TestEmailValidation::conversionsKeepWhatTheyCannotConvert_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("ace");
    QTest::addColumn<QString>("back");
    QTest::newRow("empty") << QString() << QString() << QString();
    QTest::newRow("plain ASCII") << "example.org" << "example.org" << "example.org";
    QTest::newRow("upper case is folded") << "BÜCHER.de" << "xn--bcher-kva.de" << "bücher.de";
    QTest::newRow("not ACE comes back as it is") << "xn--not valid!" << "xn--not valid!" << "xn--not valid!";
}

void TestEmailValidation::conversionsKeepWhatTheyCannotConvert()
{
    QFETCH(QString, input);
    QFETCH(QString, ace);
    QFETCH(QString, back);
    QCOMPARE(ConvertToAce(input), ace);
    QCOMPARE(ConvertFromAce(ace.toUtf8()), back);
}

QTEST_MAIN(TestEmailValidation)
#include "tst_email_validation.moc"
