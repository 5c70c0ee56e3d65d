#include <qt_halvo/widgets/input/email_validation.h>

#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>
#include <QtTest/QtTest>

using OrvantaQT::ConvertFromAce;
using OrvantaQT::ConvertToAce;
using OrvantaQT::EmailValidator;
using OrvantaQT::MultiEmailValidator;

namespace {

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
    void validators_data();
    void validators();
    void aceAgreesWithLibidn2();
    void conversionsKeepWhatTheyCannotConvert();
};

void TestEmailValidation::validators_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("address");
    QTest::addColumn<bool>("list");
    // Each address is a list of one as well.
    const auto add = [](const char* part, const QString& pattern, const QVector<int>& codes, bool valid) {
        for (int code : codes)
            QTest::addRow("%s 0x%02x", part, code) << pattern.arg(QChar(code)) << valid << valid;
    };
    // The local part refuses 0x00-0x20, "," 0x2C, ":" to "<" 0x3A-0x3C, ">" 0x3E, "[" 0x5B, "]" 0x5D.
    const QString local = QStringLiteral("a%1b@example.org");
    add("local", local, {0x01, 0x09, 0x0a, 0x1f, 0x20, 0x2c, 0x3a, 0x3b, 0x3c, 0x3e, 0x5b, 0x5d, 0xa0, 0x3000}, false);
    add("local", local, {0x21, 0x2b, 0x2d, 0x39, 0x3d, 0x3f, 0x40, 0x5a, 0x5c, 0x5e, 0x7e, 0x7f, 0xe9}, true);
    // The domain refuses 0x00-0x27, "," 0x2C and ";" to "@" 0x3B-0x40; an at sign there
    // only moves the split, as the local part may hold one.
    const QString domain = QStringLiteral("ab@exa%1mple");
    add("domain", domain, {0x09, 0x20, 0x21, 0x27, 0x2c, 0x3b, 0x3f, 0x2028}, false);
    add("domain", domain, {0x28, 0x2b, 0x2d, 0x2e, 0x2f, 0x3a, 0x40, 0x41, 0x5b, 0x5d, 0x7e, 0xfc}, true);

    QTest::newRow("no dot in the domain") << "user@localhost" << true << true;
    QTest::newRow("bracketed address literal") << "user@[192.168.0.1]" << true << true;
    QTest::newRow("brackets before the at") << "[user]@example.org" << false << false;
    QTest::newRow("upper case") << "User.Name+Tag@Example.ORG" << true << true;
    QTest::newRow("internationalised domain") << "ivan@пример.рф" << true << true;
    QTest::newRow("no local part") << "@example.org" << false << false;
    QTest::newRow("no domain") << "user@" << false << false;
    // The classes are followed literally: an at sign may stand in the local part, which
    // then takes the first one.
    QTest::newRow("two at signs") << "a@b@c" << true << true;
    QTest::newRow("empty") << QString() << false << false;

    // Lists separate their addresses by commas or semicolons, with spaces around them.
    QTest::newRow("list: comma") << "a@example.org,b@example.org" << false << true;
    QTest::newRow("list: semicolon, spaces around") << "  a@example.org ; b@example.org,c@x  " << false << true;
    QTest::newRow("list: two separators in a row") << "a@example.org,,b@example.org" << false << false;
    QTest::newRow("list: white space only between") << "a@example.org b@example.org" << false << false;
    QTest::newRow("list: trailing separator") << "a@example.org;" << false << false;
    QTest::newRow("list: one bad address") << "a@example.org, b c@example.org" << false << false;
}

void TestEmailValidation::validators()
{
    QFETCH(QString, text);
    QFETCH(bool, address);
    QFETCH(bool, list);
    QCOMPARE(EmailValidator().exactMatch(text), address);
    QCOMPARE(MultiEmailValidator().exactMatch(text), list);
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
    const QStringList expected =
        QString::fromUtf8(idn2.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(expected.size(), domains.size());
    for (int i = 0; i < domains.size(); ++i) {
        const QString ace = ConvertToAce(domains.at(i));
        QVERIFY2(ace == expected.at(i), qPrintable(domains.at(i) + ": Qt " + ace + ", libidn2 " + expected.at(i)));
        QCOMPARE(ConvertFromAce(ace.toLatin1()), domains.at(i));
    }
}

void TestEmailValidation::conversionsKeepWhatTheyCannotConvert()
{
    QCOMPARE(ConvertToAce(QString()), QString());
    QCOMPARE(ConvertFromAce(QByteArray()), QString());
    QCOMPARE(ConvertToAce(QStringLiteral("example.org")), QStringLiteral("example.org"));
    QCOMPARE(ConvertFromAce("example.org"), QStringLiteral("example.org"));
    QCOMPARE(ConvertToAce(QStringLiteral("BÜCHER.de")), QStringLiteral("xn--bcher-kva.de")); // folded to lower case
    QCOMPARE(ConvertFromAce("xn--bcher-kva.de"), QStringLiteral("bücher.de"));
    QCOMPARE(ConvertToAce(QStringLiteral("xn--not valid!")), QStringLiteral("xn--not valid!"));
    QCOMPARE(ConvertFromAce("xn--not valid!"), QStringLiteral("xn--not valid!"));
}

QTEST_MAIN(TestEmailValidation)
#include "tst_email_validation.moc"
