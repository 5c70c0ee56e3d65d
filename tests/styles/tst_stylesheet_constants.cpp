#include <qt_halvo/styles/stylesheet_constants_p.h>

#include "log_capture.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QRegExp>
#include <QtTest/QtTest>

using namespace OrvantaQT;

namespace {

using Declarations = QMap<QString, QString>;

Declarations AsMap(const StyleConstants& constants)
{
    Declarations map;
    for (auto it = constants.cbegin(); it != constants.cend(); ++it)
        map.insert(it.key(), it.value().toString());
    return map;
}

StyleConstants Constants(const Declarations& declarations)
{
    StyleConstants constants;
    for (auto it = declarations.cbegin(); it != declarations.cend(); ++it)
        constants.insert(it.key(), QVariant(it.value()));
    return constants;
}

// Whether name comes before other in the hash's iteration order.
bool ComesFirst(const StyleConstants& constants, const QString& name, const QString& other)
{
    for (auto it = constants.cbegin(); it != constants.cend(); ++it) {
        if (it.key() == name)
            return true;
        if (it.key() == other)
            return false;
    }
    return false;
}

// The substitution rule written out literally: constant by constant in hash order, each
// match replaced and the search resumed at the start of the replacement.
QString LiteralSubstitution(const QString& text, const StyleConstants& constants)
{
    QString result = text;
    for (auto it = constants.cbegin(); it != constants.cend(); ++it) {
        const QRegExp pattern(QLatin1Char('@') + it.key());
        int at = 0;
        while ((at = pattern.indexIn(result, at)) != -1)
            result.replace(at, pattern.matchedLength(), it.value().toString());
    }
    return result;
}

// Random sheets over a tiny alphabet, so that names are prefixes of each other, stand
// next to each other and run into the text and the values around them.
struct RandomCase
{
    StyleConstants constants;
    QString text;
};

QString RandomString(QRandomGenerator& random, const QString& alphabet, int maxLength)
{
    QString text;
    const int length = random.bounded(maxLength + 1);
    for (int i = 0; i < length; ++i)
        text.append(alphabet[random.bounded(alphabet.size())]);
    return text;
}

RandomCase MakeRandomCase(QRandomGenerator& random)
{
    RandomCase generated;
    const int count = 1 + random.bounded(6);
    for (int i = 0; i < count; ++i) {
        const QString name = RandomString(random, QStringLiteral("abc"), 3);
        if (name.isEmpty())
            continue;
        const QString value = RandomString(random, QStringLiteral("abc@; "), 5);
        // The literal rule never ends for a value holding its own reference.
        if (!value.contains(QLatin1Char('@') + name))
            generated.constants.insert(name, QVariant(value));
    }
    generated.text = RandomString(random, QStringLiteral("abc@; "), 30);
    return generated;
}

} // namespace

class TestStylesheetConstants : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void constantsBlock_data();
    void constantsBlock();
    void blockAddsToAndReplacesExistingConstants();

    void resolutionIsOnePassInHashOrder();
    void resolutionMatchesPrefixesOfLongerNames();
    void selfReferencesAreLeftAsWrittenAndReported_data();
    void selfReferencesAreLeftAsWrittenAndReported();
    void selfReferencesInResolutionAreLeftAsWritten();

    void substitution_data();
    void substitution();
    void prefixClashFollowsHashOrder();
    void laterConstantsSeeWhatEarlierOnesInserted();
    void searchResumesAtTheStartOfTheReplacement();
    void namesActAsPatterns();
    void runawayPatternsAreStopped_data();
    void runawayPatternsAreStopped();
    void runawayGrowthIsStopped();
    void bothWaysAgreeWithTheLiteralRule();
};

void TestStylesheetConstants::constantsBlock_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Declarations>("declared");
    QTest::addColumn<QString>("remaining");

    QTest::newRow("block")
        << QStringLiteral("/* Stylesheet Constants\naccent = #1f7ad4\nlinkColor = @accent\n*/\nQLabel { color: @accent; }")
        << Declarations{{QStringLiteral("accent"), QStringLiteral("#1f7ad4")},
                        {QStringLiteral("linkColor"), QStringLiteral("@accent")}}
        << QStringLiteral("\nQLabel { color: @accent; }");
    QTest::newRow("no end marker") << QStringLiteral("/* Stylesheet Constants\na = 1\nQLabel {}") << Declarations{}
                                   << QStringLiteral("/* Stylesheet Constants\na = 1\nQLabel {}");
    QTest::newRow("no header") << QStringLiteral("/* Constants\na = 1\n*/ QLabel {}") << Declarations{}
                               << QStringLiteral("/* Constants\na = 1\n*/ QLabel {}");
    QTest::newRow("malformed lines")
        << QStringLiteral("/* Stylesheet Constants\na = b = c\nd=\n = e\n  f  =  #fff  \ng==h\nnothing\n*/x")
        << Declarations{{QStringLiteral("f"), QStringLiteral("#fff")}, {QStringLiteral("g"), QStringLiteral("h")}}
        << QStringLiteral("x");
    QTest::newRow("later declaration wins") << QStringLiteral("/* Stylesheet Constants\na = 1\na = 2\n*/")
                                            << Declarations{{QStringLiteral("a"), QStringLiteral("2")}} << QString();
    QTest::newRow("CR and CR LF") << QStringLiteral("/* Stylesheet Constants\ra = 1\r\nb = 2\r*/;")
                                  << Declarations{{QStringLiteral("a"), QStringLiteral("1")},
                                                  {QStringLiteral("b"), QStringLiteral("2")}}
                                  << QStringLiteral(";");
    // The block is read from position 2 whatever stands there.
    QTest::newRow("block not at the start") << QStringLiteral("x /* Stylesheet Constants\na = 1\n*/ y")
                                            << Declarations{{QStringLiteral("a"), QStringLiteral("1")}}
                                            << QStringLiteral(" y");
    QTest::newRow("comment before the block") << QStringLiteral("/* c = 1 */\n/* Stylesheet Constants\na = 2\n*/")
                                              << Declarations{{QStringLiteral("c"), QStringLiteral("1")}}
                                              << QStringLiteral("\n/* Stylesheet Constants\na = 2\n*/");
    QTest::newRow("end marker first") << QStringLiteral("*/ /* Stylesheet Constants\na = 1\n") << Declarations{}
                                      << QStringLiteral(" /* Stylesheet Constants\na = 1\n");
}

void TestStylesheetConstants::constantsBlock()
{
    QFETCH(QString, text);
    QFETCH(Declarations, declared);
    QFETCH(QString, remaining);
    StyleConstants constants;
    ParseStylesheetConstants(text, constants);
    QCOMPARE(AsMap(constants), declared);
    QCOMPARE(text, remaining);
}

void TestStylesheetConstants::blockAddsToAndReplacesExistingConstants()
{
    StyleConstants constants = Constants({{QStringLiteral("kept"), QStringLiteral("1")},
                                          {QStringLiteral("replaced"), QStringLiteral("2")}});
    QString text = QStringLiteral("/* Stylesheet Constants\nreplaced = 3\nadded = 4\n*/");
    ParseStylesheetConstants(text, constants);
    QCOMPARE(AsMap(constants), (Declarations{{QStringLiteral("kept"), QStringLiteral("1")},
                                             {QStringLiteral("replaced"), QStringLiteral("3")},
                                             {QStringLiteral("added"), QStringLiteral("4")}}));
}

void TestStylesheetConstants::resolutionIsOnePassInHashOrder()
{
    // A chain resolves in one pass whatever the order: each constant's step replaces
    // every reference to it that exists by then.
    StyleConstants chain = Constants({{QStringLiteral("w"), QStringLiteral("@x")},
                                      {QStringLiteral("x"), QStringLiteral("@y")},
                                      {QStringLiteral("y"), QStringLiteral("@z;@z")},
                                      {QStringLiteral("z"), QStringLiteral("1")}});
    ResolveConstantReferences(chain);
    QCOMPARE(AsMap(chain).value(QStringLiteral("w")), QStringLiteral("1;1"));

    // A reference to a colour is not resolved: colours are merged afterwards.
    StyleConstants colour = Constants({{QStringLiteral("link"), QStringLiteral("@accentColor")}});
    ResolveConstantReferences(colour);
    QCOMPARE(AsMap(colour).value(QStringLiteral("link")), QStringLiteral("@accentColor"));
}

void TestStylesheetConstants::resolutionMatchesPrefixesOfLongerNames()
{
    StyleConstants constants = Constants({{QStringLiteral("c"), QStringLiteral("red")},
                                          {QStringLiteral("cc"), QStringLiteral("blue")},
                                          {QStringLiteral("d"), QStringLiteral("@cc")}});
    const bool shortFirst = ComesFirst(constants, QStringLiteral("c"), QStringLiteral("cc"));
    ResolveConstantReferences(constants);
    QCOMPARE(AsMap(constants).value(QStringLiteral("d")), shortFirst ? QStringLiteral("redc") : QStringLiteral("blue"));
}

void TestStylesheetConstants::selfReferencesAreLeftAsWrittenAndReported_data()
{
    QTest::addColumn<Declarations>("constants");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("message");
    QTest::newRow("directly") << Declarations{{QStringLiteral("a"), QStringLiteral("(@a)")}, {QStringLiteral("b"), QStringLiteral("1")}}
                              << QStringLiteral("<@a @b>") << QStringLiteral("<@a 1>")
                              << QStringLiteral("[StyleSheet] Constant @a refers to itself (\"(@a)\"); its references are left as written");
    QTest::newRow("through a longer name")
        << Declarations{{QStringLiteral("accent"), QStringLiteral("@accentDark")}, {QStringLiteral("accentDark"), QStringLiteral("#000")}}
        << QStringLiteral("@accent;") << QStringLiteral("@accent;")
        << QStringLiteral("[StyleSheet] Constant @accent refers to itself (\"@accentDark\"); its references are left as written");
}

void TestStylesheetConstants::selfReferencesAreLeftAsWrittenAndReported()
{
    QFETCH(Declarations, constants);
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QFETCH(QString, message);
    for (const auto substitute : {&SubstituteConstants, &SubstituteConstantsOneByOne}) {
        const LogCapture::Mark mark;
        QCOMPARE(substitute(text, Constants(constants)), expected);
        QCOMPARE(mark.Since().size(), 1);
        QVERIFY(mark.Contains(4, message));
    }
}

void TestStylesheetConstants::selfReferencesInResolutionAreLeftAsWritten()
{
    const LogCapture::Mark mark;
    StyleConstants constants = Constants({{QStringLiteral("a"), QStringLiteral("x@a")},
                                          {QStringLiteral("b"), QStringLiteral("[@a]")}});
    ResolveConstantReferences(constants);
    QCOMPARE(AsMap(constants), (Declarations{{QStringLiteral("a"), QStringLiteral("x@a")},
                                             {QStringLiteral("b"), QStringLiteral("[@a]")}}));
    QVERIFY(mark.Contains(4, QStringLiteral("[StyleSheet] Constant @a refers to itself (\"x@a\"); its references are left as written")));

    // Two constants that refer to each other: the pass leads one of them back to itself.
    StyleConstants cycle = Constants({{QStringLiteral("p"), QStringLiteral("<@q>")}, {QStringLiteral("q"), QStringLiteral("(@p)")}});
    const bool pFirst = ComesFirst(cycle, QStringLiteral("p"), QStringLiteral("q"));
    ResolveConstantReferences(cycle);
    const Declarations resolved = AsMap(cycle);
    // The first one resolves the other, which then refers to itself and stays as it is.
    QCOMPARE(resolved.value(QStringLiteral("p")), pFirst ? QStringLiteral("<@q>") : QStringLiteral("<(@p)>"));
    QCOMPARE(resolved.value(QStringLiteral("q")), pFirst ? QStringLiteral("(<@q>)") : QStringLiteral("(@p)"));
    QVERIFY(mark.Since().size() >= 2);
}

void TestStylesheetConstants::substitution_data()
{
    QTest::addColumn<Declarations>("constants");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    const Declarations theme{{QStringLiteral("accent"), QStringLiteral("#1f7ad4")},
                             {QStringLiteral("padding"), QStringLiteral("4px")}};
    QTest::newRow("references") << theme << QStringLiteral("a { color: @accent; padding: @padding @padding; }")
                                << QStringLiteral("a { color: #1f7ad4; padding: 4px 4px; }");
    QTest::newRow("unknown names stay") << theme << QStringLiteral("a { color: @unknown; } @") << QStringLiteral("a { color: @unknown; } @");
    QTest::newRow("no word boundary") << theme << QStringLiteral("@accentDark") << QStringLiteral("#1f7ad4Dark");
    QTest::newRow("empty value") << Declarations{{QStringLiteral("gone"), QString()}} << QStringLiteral("[@gone]")
                                 << QStringLiteral("[]");
    QTest::newRow("adjacent references") << theme << QStringLiteral("@accent@padding@") << QStringLiteral("#1f7ad44px@");
    QTest::newRow("no constants") << Declarations{} << QStringLiteral("@a @b") << QStringLiteral("@a @b");
    QTest::newRow("non-ASCII") << Declarations{{QStringLiteral("цвет"), QStringLiteral("#fff")}}
                               << QStringLiteral("x: @цвет; y: @цве;") << QStringLiteral("x: #fff; y: @цве;");
}

void TestStylesheetConstants::substitution()
{
    QFETCH(Declarations, constants);
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(SubstituteConstants(text, Constants(constants)), expected);
    QCOMPARE(SubstituteConstantsOneByOne(text, Constants(constants)), expected);
}

void TestStylesheetConstants::prefixClashFollowsHashOrder()
{
    const StyleConstants constants = Constants({{QStringLiteral("c"), QStringLiteral("red")},
                                                {QStringLiteral("cc"), QStringLiteral("blue")}});
    const QString expected = ComesFirst(constants, QStringLiteral("c"), QStringLiteral("cc")) ? QStringLiteral("redc;")
                                                                                             : QStringLiteral("blue;");
    QCOMPARE(SubstituteConstants(QStringLiteral("@cc;"), constants), expected);
}

void TestStylesheetConstants::laterConstantsSeeWhatEarlierOnesInserted()
{
    const StyleConstants constants = Constants({{QStringLiteral("link"), QStringLiteral("@accentColor")},
                                                {QStringLiteral("accentColor"), QStringLiteral("#123456")}});
    const bool linkFirst = ComesFirst(constants, QStringLiteral("link"), QStringLiteral("accentColor"));
    QCOMPARE(SubstituteConstants(QStringLiteral("a { color: @link; }"), constants),
             linkFirst ? QStringLiteral("a { color: #123456; }") : QStringLiteral("a { color: @accentColor; }"));
}

void TestStylesheetConstants::searchResumesAtTheStartOfTheReplacement()
{
    // "@ab" becomes "x@a", which together with the "b" after it is "@ab" again.
    const StyleConstants constants = Constants({{QStringLiteral("ab"), QStringLiteral("x@a")}});
    QCOMPARE(SubstituteConstants(QStringLiteral("@abb;"), constants), QStringLiteral("xx@a;"));
    QCOMPARE(SubstituteConstantsOneByOne(QStringLiteral("@abb;"), constants), QStringLiteral("xx@a;"));
}

void TestStylesheetConstants::namesActAsPatterns()
{
    const StyleConstants constants = Constants({{QStringLiteral("a.b"), QStringLiteral("1")}});
    QCOMPARE(SubstituteConstants(QStringLiteral("@axb @a.b @ab"), constants), QStringLiteral("1 1 @ab"));
    StyleConstants resolved = Constants({{QStringLiteral("x+"), QStringLiteral("2")}, {QStringLiteral("y"), QStringLiteral("@xxx")}});
    ResolveConstantReferences(resolved);
    QCOMPARE(AsMap(resolved).value(QStringLiteral("y")), QStringLiteral("2"));
}

void TestStylesheetConstants::runawayPatternsAreStopped_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("message");
    QTest::newRow("matches empty text") << QStringLiteral("|") << QStringLiteral("v")
                                        << QStringLiteral("[StyleSheet] Constant @| matches empty text; substitution stopped");
    QTest::newRow("matches what it inserts")
        << QStringLiteral("a*") << QStringLiteral("@")
        << QStringLiteral("[StyleSheet] Constant @a* keeps matching what it inserts; substitution stopped");
}

void TestStylesheetConstants::runawayPatternsAreStopped()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    QFETCH(QString, message);
    const LogCapture::Mark mark;
    const StyleConstants constants = Constants({{name, value}});
    SubstituteConstants(QStringLiteral("x @aa y"), constants);
    QVERIFY(mark.Contains(4, message));
    StyleConstants resolving = Constants({{name, value}, {QStringLiteral("other"), QStringLiteral("@aa")}});
    ResolveConstantReferences(resolving);
    QVERIFY(mark.Since().size() >= 2);
}

void TestStylesheetConstants::runawayGrowthIsStopped()
{
    // Each constant refers twice to the next one in hash order, so every pass doubles
    // the text: 2^40 characters if nothing stopped it.
    StyleConstants doubling;
    for (int level = 0; level <= 40; ++level)
        doubling.insert(QStringLiteral("level%1_").arg(level), QVariant(QStringLiteral("x")));
    const QStringList order = doubling.keys();
    for (int i = 0; i + 1 < order.size(); ++i)
        doubling.insert(order[i], QVariant(QLatin1Char('@') + order[i + 1] + QLatin1Char('@') + order[i + 1]));
    QCOMPARE(doubling.keys(), order);

    const LogCapture::Mark mark;
    const QString result = SubstituteConstants(QLatin1Char('@') + order.first() + QLatin1Char(';'), doubling);
    QVERIFY(result.size() <= (1 << 23));
    const QRegularExpression stopped(QStringLiteral(
        "^\\[StyleSheet\\] Substitution stopped at @level\\d+_: the text keeps growing; the rest is left as it is$"));
    QVector<LoggedLine> lines = mark.Since();
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines[0].level, 4);
    QVERIFY2(stopped.match(lines[0].text).hasMatch(), qPrintable(lines[0].text));

    // Resolution has the same limit.
    const LogCapture::Mark resolving;
    ResolveConstantReferences(doubling);
    lines = resolving.Since();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(stopped.match(lines[0].text).hasMatch(), qPrintable(lines[0].text));
}

void TestStylesheetConstants::bothWaysAgreeWithTheLiteralRule()
{
    QRandomGenerator random(20261121);
    for (int round = 0; round < 20000; ++round) {
        const RandomCase generated = MakeRandomCase(random);
        const QString expected = LiteralSubstitution(generated.text, generated.constants);
        const QString fast = SubstituteConstants(generated.text, generated.constants);
        const QString oneByOne = SubstituteConstantsOneByOne(generated.text, generated.constants);
        if (fast != expected || oneByOne != expected) {
            QString description;
            for (auto it = generated.constants.cbegin(); it != generated.constants.cend(); ++it)
                description += QStringLiteral("%1=\"%2\" ").arg(it.key(), it.value().toString());
            QFAIL(qPrintable(QStringLiteral("round %1: constants %2 text \"%3\": expected \"%4\", fast \"%5\", one by one \"%6\"")
                                 .arg(round).arg(description, generated.text, expected, fast, oneByOne)));
        }
    }
}

QTEST_GUILESS_MAIN(TestStylesheetConstants)
#include "tst_stylesheet_constants.moc"
