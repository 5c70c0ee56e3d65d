#include <qt_halvo/styles/stylesheet_constants_p.h>

#include "test_support.h"

using namespace OrvantaQT;

namespace {

// Constants written "name=value name=value".
StyleConstants Parse(const QString& declarations)
{
    StyleConstants constants;
    for (const QString& declaration : declarations.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        constants.insert(declaration.section(QLatin1Char('='), 0, 0), declaration.section(QLatin1Char('='), 1));
    return constants;
}

QString Describe(const StyleConstants& constants)
{
    QStringList declarations;
    for (auto it = constants.cbegin(); it != constants.cend(); ++it)
        declarations << it.key() + QLatin1Char('=') + it.value().toString();
    declarations.sort();
    return declarations.join(QLatin1Char(' '));
}

QString SelfReference(const char* name, const char* value)
{
    return QStringLiteral("4 [StyleSheet] Constant @%1 refers to itself (\"%2\"); its references are left as written")
        .arg(QLatin1String(name), QLatin1String(value));
}

const QString kEmptyMatch = QStringLiteral("4 [StyleSheet] Constant @| matches empty text; substitution stopped");

// Constants, the text they work on (none for resolution) and the outcome. The hash order is
// seeded per process: where the outcome depends on it, the row gives the outcome for the
// reverse order of the first two names (alphabetically) as well.
void AddRow(const char* tag, const char* constants, const char* text, const char* expected, const QStringList& logged = {},
            const char* reversed = nullptr, const QStringList& loggedReversed = {})
{
    const QStringList order = Parse(QString::fromUtf8(constants)).keys();
    QStringList names = order;
    names.sort();
    const bool usual = !reversed || order.indexOf(names[0]) < order.indexOf(names[1]);
    QTestData& row = QTest::newRow(tag) << QString::fromUtf8(constants);
    if (text)
        row << QString::fromUtf8(text);
    row << QString::fromUtf8(usual ? expected : reversed) << (usual ? logged : loggedReversed);
}

} // namespace

class TestStylesheetConstants : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void constantsBlock_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("declared"); // "z=0" was there before the block is read
        QTest::addColumn<QString>("remaining");
        QTest::newRow("block") << "/* Stylesheet Constants\na = #1f7ad4\nlink = @a\nz = 1\nz = 2\n*/\nQLabel { color: @a; }"
                               << "a=#1f7ad4 link=@a z=2" << "\nQLabel { color: @a; }";
        QTest::newRow("no end marker") << "/* Stylesheet Constants\na = 1\n" << "z=0" << "/* Stylesheet Constants\na = 1\n";
        QTest::newRow("no header") << "/* Constants\na = 1\n*/ x" << "z=0" << "/* Constants\na = 1\n*/ x";
        QTest::newRow("malformed lines") << "/* Stylesheet Constants\na = b = c\nd=\n = e\n  f  =  #fff  \ng==h\nnothing\n*/x"
                                         << "f=#fff g=h z=0" << "x";
        QTest::newRow("CR and CR LF") << "/* Stylesheet Constants\ra = 1\r\nb = 2\r*/;" << "a=1 b=2 z=0" << ";";
        // The block is read from position 2 whatever stands there, up to the first end marker.
        QTest::newRow("block not at the start") << "x /* Stylesheet Constants\na = 1\n*/ y" << "a=1 z=0" << " y";
        QTest::newRow("comment before the block") << "/* c = 1 */\n/* Stylesheet Constants\na = 2\n*/" << "c=1 z=0"
                                                  << "\n/* Stylesheet Constants\na = 2\n*/";
        QTest::newRow("end marker first") << "*/ /* Stylesheet Constants\na = 1\n" << "z=0"
                                          << " /* Stylesheet Constants\na = 1\n";
    }
    void constantsBlock()
    {
        QFETCH(QString, text);
        StyleConstants constants = Parse(QStringLiteral("z=0"));
        ParseStylesheetConstants(text, constants);
        QTEST(Describe(constants), "declared");
        QTEST(text, "remaining");
    }
    void resolution_data()
    {
        QTest::addColumn<QString>("constants");
        QTest::addColumn<QString>("resolved");
        QTest::addColumn<QStringList>("logged");
        // Each constant's step replaces every reference to it that exists by then, so a chain
        // resolves in one pass whatever the order; a reference that a replacement makes to a
        // constant already done stays.
        AddRow("chain", "w=@x x=@y y=@z;@z z=1", nullptr, "w=1;1 x=1;1 y=1;1 z=1");
        AddRow("reference made by a replacement", "e=@ f=@ g=@fe h=@ef", nullptr, "e=@ f=@ g=@e h=@", {}, "e=@ f=@ g=@ h=@f");
        AddRow("prefix of a longer name", "c=red cc=blue d=@cc", nullptr, "c=red cc=blue d=redc", {}, "c=red cc=blue d=blue");
        AddRow("name as a pattern", "x+=2 y=@xxx", nullptr, "x+=2 y=2");
        AddRow("self reference", "a=x@a b=[@a]", nullptr, "a=x@a b=[@a]", {SelfReference("a", "x@a")});
        // The first of two constants referring to each other resolves the other, which then
        // refers to itself and stays as it is.
        AddRow("cycle", "p=<@q> q=(@p)", nullptr, "p=<@q> q=(<@q>)", {SelfReference("q", "(<@q>)")}, "p=<(@p)> q=(@p)",
               {SelfReference("p", "<(@p)>")});
        // "@|" takes the at sign, then matches the empty text after the replacement.
        AddRow("pattern matching empty text", "|=v other=@aa", nullptr, "other=vaa |=v", {kEmptyMatch});
    }
    void resolution()
    {
        QFETCH(QString, constants);
        const LogCapture::Mark mark;
        StyleConstants resolving = Parse(constants);
        ResolveConstantReferences(resolving);
        QTEST(Describe(resolving), "resolved");
        QTEST(mark.Texts(), "logged");
    }
    // The fast way and the one by one way, whose agreement on plain names
    // bothWaysAgreeWithTheLiteralRule() shows.
    void substitution_data()
    {
        QTest::addColumn<QString>("constants");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QStringList>("logged");
        // Unknown names stay; a name needs no word boundary after it.
        AddRow("references", "accent=#1f7ad4 gone= цвет=4px",
               "a { color: @accent; margin: @цвет @цвет; } [@gone] @unknown @accentDark@цвет@цве",
               "a { color: #1f7ad4; margin: 4px 4px; } [] @unknown #1f7ad4Dark4px@цве");
        // What a constant inserts is seen by the constants after it only.
        AddRow("later constants see what earlier ones inserted", "accentColor=#123456 link=@accentColor", "@link;",
               "@accentColor;", {}, "#123456;");
        AddRow("name as a pattern", "a.b=1", "@axb @a.b @ab", "1 1 @ab");
        AddRow("self reference", "a=(@a) b=1", "<@a @b>", "<@a 1>", {SelfReference("a", "(@a)")});
        AddRow("self reference through a longer name", "accent=@accentDark accentDark=#000", "@accent;", "@accent;",
               {SelfReference("accent", "@accentDark")});
        // Patterns that would never finish are stopped where they are.
        AddRow("pattern matching empty text", "|=v", "x @aa y", "x @aa y", {kEmptyMatch});
        AddRow("pattern matching what it inserts", "a*=@", "x @aa y", "x @ y",
               {"4 [StyleSheet] Constant @a* keeps matching what it inserts; substitution stopped"});
    }
    void substitution()
    {
        QFETCH(QString, constants);
        QFETCH(QString, text);
        for (const auto substitute : {&SubstituteConstants, &SubstituteConstantsOneByOne}) {
            const LogCapture::Mark mark;
            QTEST(substitute(text, Parse(constants)), "expected");
            QTEST(mark.Texts(), "logged");
        }
    }
    // Each constant refers twice to the next one in hash order, so every pass doubles the
    // text: 2^40 characters if nothing stopped it. Resolution has the same limit.
    void runawayGrowthIsStopped()
    {
        StyleConstants doubling;
        for (int level = 0; level <= 40; ++level)
            doubling.insert(QStringLiteral("level%1_").arg(level), QStringLiteral("x"));
        const QStringList order = doubling.keys();
        for (int i = 0; i + 1 < order.size(); ++i)
            doubling.insert(order[i], QStringLiteral("@%1@%1").arg(order[i + 1]));
        QCOMPARE(doubling.keys(), order);
        const LogCapture::Mark mark;
        QVERIFY(SubstituteConstants(QLatin1Char('@') + order.first(), doubling).size() <= (1 << 23));
        ResolveConstantReferences(doubling);
        const QStringList lines = mark.Texts();
        const QRegularExpression stopped(QStringLiteral(
            "^4 \\[StyleSheet\\] Substitution stopped at @level\\d+_: the text keeps growing; the rest is left as it is$"));
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.filter(stopped), lines);
    }
    // Over a tiny alphabet, so that names are prefixes of each other, stand next to each other
    // and run into the text and the values around them. The rule: constant by constant in hash
    // order, each match replaced and the search resumed at the start of the replacement.
    void bothWaysAgreeWithTheLiteralRule()
    {
        QRandomGenerator random(20261121);
        const auto randomText = [&random](const char* alphabet, int maxLength) {
            QString text;
            for (int length = random.bounded(maxLength + 1); length > 0; --length)
                text.append(QLatin1Char(alphabet[random.bounded(int(qstrlen(alphabet)))]));
            return text;
        };
        for (int round = 0; round < 20000; ++round) {
            StyleConstants constants;
            for (int count = 1 + random.bounded(6); count > 0; --count) {
                const QString name = randomText("abc", 3), value = randomText("abc@; ", 5);
                if (!name.isEmpty() && !value.contains(QLatin1Char('@') + name)) // the rule never ends for those
                    constants.insert(name, value);
            }
            const QString text = randomText("abc@; ", 30);
            QString expected = text;
            for (auto it = constants.cbegin(); it != constants.cend(); ++it) {
                const QRegExp pattern(QLatin1Char('@') + it.key());
                for (int at = 0; (at = pattern.indexIn(expected, at)) != -1;)
                    expected.replace(at, pattern.matchedLength(), it.value().toString());
            }
            const QString fast = SubstituteConstants(text, constants), oneByOne = SubstituteConstantsOneByOne(text, constants);
            if (fast != expected || oneByOne != expected)
                QFAIL(qPrintable(QStringLiteral("round %1, %2 on \"%3\": \"%4\" and \"%5\", not \"%6\"")
                                     .arg(round).arg(Describe(constants), text, fast, oneByOne, expected)));
        }
    }
};

QTEST_GUILESS_MAIN(TestStylesheetConstants)
#include "tst_stylesheet_constants.moc"
