#include <qt_halvo/widgets/input/email_validation.h>

#include "test_support.h"

using namespace OrvantaQT;

class TestEmailValidation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void validators_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("address");
        QTest::addColumn<bool>("list"); // an address is a list of one as well
        const auto add = [](const char* pattern, const QVector<int>& codes, bool valid) {
            for (int code : codes)
                QTest::addRow("%s 0x%02x", pattern, code) << QString::fromLatin1(pattern).arg(QChar(code)) << valid << valid;
        };
        // The local part refuses 0x00-0x20, "," ":" ";" "<" ">" "[" "]"; the domain refuses
        // 0x00-0x27, "," and ";" to "@", where an at sign only moves the split.
        add("a%1b@example.org", {0x01, 0x20, 0x2c, 0x3a, 0x3c, 0x3e, 0x5b, 0x5d, 0xa0, 0x3000}, false);
        add("a%1b@example.org", {0x21, 0x2b, 0x39, 0x3d, 0x3f, 0x40, 0x5c, 0x5e, 0x7f, 0xe9}, true);
        add("ab@exa%1mple", {0x09, 0x20, 0x27, 0x2c, 0x3b, 0x3f, 0x2028}, false);
        add("ab@exa%1mple", {0x28, 0x2b, 0x2e, 0x3a, 0x40, 0x41, 0x5b, 0x7e, 0xfc}, true);
        QTest::newRow("address literal") << "user@[192.168.0.1]" << true << true;
        // Lists separate their addresses by commas or semicolons, with spaces around them.
        QTest::newRow("list") << "  a@example.org ; b@example.org,c@x  " << false << true;
        for (const char* text : {"@example.org", "user@", "a@example.org,,b@example.org", "a@b.org c@d.org", "a@b.org;"})
            QTest::newRow(text) << text << false << false;
    }

    void validators()
    {
        QFETCH(QString, text);
        QTEST(EmailValidator().exactMatch(text), "address");
        QTEST(MultiEmailValidator().exactMatch(text), "list");
    }

    // Folded to lower case; what cannot be converted comes back as it was.
    void aceConversions()
    {
        QCOMPARE(ConvertFromAce(ConvertToAce(QStringLiteral("BÜCHER.de")).toLatin1()), QStringLiteral("bücher.de"));
        QCOMPARE(ConvertToAce(QStringLiteral("bücher.de")), QStringLiteral("xn--bcher-kva.de"));
        for (const QString& text : QStringList{"", "example.org", "xn--not valid!"})
            QCOMPARE(ConvertToAce(text) + ConvertFromAce(text.toLatin1()), text + text);
    }
};

QTEST_MAIN(TestEmailValidation)
#include "tst_email_validation.moc"
