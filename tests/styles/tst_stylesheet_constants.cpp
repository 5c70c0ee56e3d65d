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

// Whether the first two names (in alphabetical order) come in that order in the hash,
// whose order is seeded per process.
bool InOrder(const Declarations& declarations)
{
    const QStringList names = declarations.keys();
    const StyleConstants constants = Constants(declarations);
    for (auto it = constants.cbegin(); it.key() != names[0]; ++it) {
        if (it.key() == names[1])
            return false;
    }
    return true;
}

// "<level> <text>" of each line logged since mark.
QStringList Logged(const LogCapture::Mark& mark)
{
    QStringList lines;
    for (const LoggedLine& line : mark.Since())
        lines << QString::number(line.level) + QLatin1Char(' ') + line.text;
    return lines;
}

QString SelfReference(const QString& name, const QString& value)
{
    return QStringLiteral("4 [StyleSheet] Constant @%1 refers to itself (\"%2\"); its references are left as written")
        .arg(name, value);
}

// A row of resolution(); reversed and loggedReversed apply when the hash order of the
// first two names is the reverse of theirs (left out: it makes no difference).
void AddResolution(const char* tag, const Declarations& constants, const Declarations& resolved,
                   const QStringList& logged = {}, const Declarations& reversed = {},
                   const QStringList& loggedReversed = {})
{
    QTest::newRow(tag) << constants << (reversed.isEmpty() || InOrder(constants) ? resolved : reversed)
                       << (reversed.isEmpty() || InOrder(constants) ? logged : loggedReversed);
}

// A row of substitution(), like AddResolution's.
void AddSubstitution(const char* tag, const Declarations& constants, const QString& text, const QString& expected,
                     const QString& logged = QString(), const QString& reversed = QString())
{
    QTest::newRow(tag) << constants << text << (reversed.isNull() || InOrder(constants) ? expected : reversed)
                       << (logged.isEmpty() ? QStringList() : QStringList{logged});
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

// Over a tiny alphabet, so that names are prefixes of each other, stand next to each
// other and run into the text and the values around them.
QString RandomString(QRandomGenerator& random, const QString& alphabet, int maxLength)
{
    QString text;
    const int length = random.bounded(maxLength + 1);
    for (int i = 0; i < length; ++i)
        text.append(alphabet[random.bounded(alphabet.size())]);
    return text;
}

StyleConstants RandomConstants(QRandomGenerator& random)
{
    StyleConstants constants;
    for (int count = 1 + random.bounded(6); count > 0; --count) {
        const QString name = RandomString(random, QStringLiteral("abc"), 3);
        if (name.isEmpty())
            continue;
        const QString value = RandomString(random, QStringLiteral("abc@; "), 5);
        // The literal rule never ends for a value holding its own reference.
        if (!value.contains(QLatin1Char('@') + name))
            constants.insert(name, QVariant(value));
    }
    return constants;
}

} // namespace

class TestStylesheetConstants : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void constantsBlock_data();
    void constantsBlock();
    void resolution_data();
    void resolution();
    void substitution_data();
    void substitution();
    void runawayGrowthIsStopped();
    void bothWaysAgreeWithTheLiteralRule();
};

void TestStylesheetConstants::constantsBlock_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Declarations>("declared"); // besides "z = 0", there before the block is read
    QTest::addColumn<QString>("remaining");

    QTest::newRow("block") << "/* Stylesheet Constants\naccent = #1f7ad4\nlinkColor = @accent\n*/\nQLabel { color: @accent; }"
                           << Declarations{{"accent", "#1f7ad4"}, {"linkColor", "@accent"}} << "\nQLabel { color: @accent; }";
    QTest::newRow("replaces what was there") << "/* Stylesheet Constants\nz = 1\n*/" << Declarations{{"z", "1"}} << "";
    QTest::newRow("no end marker") << "/* Stylesheet Constants\na = 1\nQLabel {}" << Declarations{}
                                   << "/* Stylesheet Constants\na = 1\nQLabel {}";
    QTest::newRow("no header") << "/* Constants\na = 1\n*/ QLabel {}" << Declarations{} << "/* Constants\na = 1\n*/ QLabel {}";
    QTest::newRow("malformed lines") << "/* Stylesheet Constants\na = b = c\nd=\n = e\n  f  =  #fff  \ng==h\nnothing\n*/x"
                                     << Declarations{{"f", "#fff"}, {"g", "h"}} << "x";
    QTest::newRow("later declaration wins") << "/* Stylesheet Constants\na = 1\na = 2\n*/" << Declarations{{"a", "2"}} << "";
    QTest::newRow("CR and CR LF") << "/* Stylesheet Constants\ra = 1\r\nb = 2\r*/;" << Declarations{{"a", "1"}, {"b", "2"}}
                                  << ";";
    // The block is read from position 2 whatever stands there, up to the first end marker.
    QTest::newRow("block not at the start") << "x /* Stylesheet Constants\na = 1\n*/ y" << Declarations{{"a", "1"}} << " y";
    QTest::newRow("comment before the block") << "/* c = 1 */\n/* Stylesheet Constants\na = 2\n*/"
                                              << Declarations{{"c", "1"}} << "\n/* Stylesheet Constants\na = 2\n*/";
    QTest::newRow("end marker first") << "*/ /* Stylesheet Constants\na = 1\n" << Declarations{}
                                      << " /* Stylesheet Constants\na = 1\n";
}

void TestStylesheetConstants::constantsBlock()
{
    QFETCH(QString, text);
    QFETCH(Declarations, declared);
    QFETCH(QString, remaining);
    StyleConstants constants = Constants({{"z", "0"}});
    ParseStylesheetConstants(text, constants);
    if (!declared.contains(QStringLiteral("z")))
        declared.insert(QStringLiteral("z"), QStringLiteral("0"));
    QCOMPARE(AsMap(constants), declared);
    QCOMPARE(text, remaining);
}

void TestStylesheetConstants::resolution_data()
{
    QTest::addColumn<Declarations>("constants");
    QTest::addColumn<Declarations>("resolved");
    QTest::addColumn<QStringList>("logged");

    // Each constant's step replaces every reference to it that exists by then, so a
    // chain resolves in one pass whatever the order.
    AddResolution("chain", {{"w", "@x"}, {"x", "@y"}, {"y", "@z;@z"}, {"z", "1"}},
                  {{"w", "1;1"}, {"x", "1;1"}, {"y", "1;1"}, {"z", "1"}});
    // One pass: a reference that a replacement makes to a constant already done stays.
    AddResolution("reference made by a replacement", {{"e", "@"}, {"f", "@"}, {"g", "@fe"}, {"h", "@ef"}},
                  {{"e", "@"}, {"f", "@"}, {"g", "@e"}, {"h", "@"}}, {}, {{"e", "@"}, {"f", "@"}, {"g", "@"}, {"h", "@f"}});
    // Colours are merged afterwards: a reference to one stays.
    AddResolution("reference to a colour", {{"link", "@accentColor"}}, {{"link", "@accentColor"}});
    // "@c" matches the front of "@cc" when c comes first.
    AddResolution("prefix of a longer name", {{"c", "red"}, {"cc", "blue"}, {"d", "@cc"}},
                  {{"c", "red"}, {"cc", "blue"}, {"d", "redc"}}, {}, {{"c", "red"}, {"cc", "blue"}, {"d", "blue"}});
    AddResolution("name as a pattern", {{"x+", "2"}, {"y", "@xxx"}}, {{"x+", "2"}, {"y", "2"}});
    AddResolution("self reference", {{"a", "x@a"}, {"b", "[@a]"}}, {{"a", "x@a"}, {"b", "[@a]"}},
                  {SelfReference("a", "x@a")});
    // The first of two constants referring to each other resolves the other, which then
    // refers to itself and stays as it is.
    AddResolution("cycle", {{"p", "<@q>"}, {"q", "(@p)"}}, {{"p", "<@q>"}, {"q", "(<@q>)"}}, {SelfReference("q", "(<@q>)")},
                  {{"p", "<(@p)>"}, {"q", "(@p)"}}, {SelfReference("p", "<(@p)>")});
    // "@|" takes the at sign, then matches the empty text after the replacement.
    AddResolution("pattern matching empty text", {{"|", "v"}, {"other", "@aa"}}, {{"|", "v"}, {"other", "vaa"}},
                  {"4 [StyleSheet] Constant @| matches empty text; substitution stopped"});
}

void TestStylesheetConstants::resolution()
{
    QFETCH(Declarations, constants);
    QFETCH(Declarations, resolved);
    QFETCH(QStringList, logged);
    const LogCapture::Mark mark;
    StyleConstants resolving = Constants(constants);
    ResolveConstantReferences(resolving);
    QCOMPARE(AsMap(resolving), resolved);
    QCOMPARE(Logged(mark), logged);
}

void TestStylesheetConstants::substitution_data()
{
    QTest::addColumn<Declarations>("constants");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QStringList>("logged");

    // Unknown names stay; a name needs no word boundary after it.
    AddSubstitution("references", {{"accent", "#1f7ad4"}, {"padding", "4px"}},
                    "a { color: @accent; padding: @padding @padding; } @unknown @accentDark@padding@",
                    "a { color: #1f7ad4; padding: 4px 4px; } @unknown #1f7ad4Dark4px@");
    AddSubstitution("empty value", {{"gone", ""}}, "[@gone]", "[]");
    AddSubstitution("no constants", {}, "@a @b", "@a @b");
    AddSubstitution("non-ASCII", {{"цвет", "#fff"}}, "x: @цвет; y: @цве;", "x: #fff; y: @цве;");
    AddSubstitution("prefix clash", {{"c", "red"}, {"cc", "blue"}}, "@cc;", "redc;", "", "blue;");
    // What a constant inserts is seen by the constants after it only.
    AddSubstitution("later constants see what earlier ones inserted", {{"accentColor", "#123456"}, {"link", "@accentColor"}},
                    "a { color: @link; }", "a { color: @accentColor; }", "", "a { color: #123456; }");
    // "@ab" becomes "x@a", which with the "b" after it is "@ab" again.
    AddSubstitution("search resumes at the replacement", {{"ab", "x@a"}}, "@abb;", "xx@a;");
    AddSubstitution("name as a pattern", {{"a.b", "1"}}, "@axb @a.b @ab", "1 1 @ab");
    AddSubstitution("self reference", {{"a", "(@a)"}, {"b", "1"}}, "<@a @b>", "<@a 1>", SelfReference("a", "(@a)"));
    AddSubstitution("self reference through a longer name", {{"accent", "@accentDark"}, {"accentDark", "#000"}},
                    "@accent;", "@accent;", SelfReference("accent", "@accentDark"));
    // Patterns that would never finish are stopped where they are.
    AddSubstitution("pattern matching empty text", {{"|", "v"}}, "x @aa y", "x @aa y",
                    "4 [StyleSheet] Constant @| matches empty text; substitution stopped");
    AddSubstitution("pattern matching what it inserts", {{"a*", "@"}}, "x @aa y", "x @ y",
                    "4 [StyleSheet] Constant @a* keeps matching what it inserts; substitution stopped");
}

void TestStylesheetConstants::substitution()
{
    QFETCH(Declarations, constants);
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QFETCH(QStringList, logged);
    for (const auto substitute : {&SubstituteConstants, &SubstituteConstantsOneByOne}) {
        const LogCapture::Mark mark;
        QCOMPARE(substitute(text, Constants(constants)), expected);
        QCOMPARE(Logged(mark), logged);
    }
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

    const QRegularExpression stopped(QStringLiteral(
        "^4 \\[StyleSheet\\] Substitution stopped at @level\\d+_: the text keeps growing; the rest is left as it is$"));
    const LogCapture::Mark mark;
    QVERIFY(SubstituteConstants(QLatin1Char('@') + order.first() + QLatin1Char(';'), doubling).size() <= (1 << 23));
    QStringList lines = Logged(mark);
    QCOMPARE(lines.size(), 1);
    QVERIFY2(stopped.match(lines[0]).hasMatch(), qPrintable(lines[0]));

    // Resolution has the same limit.
    const LogCapture::Mark resolving;
    ResolveConstantReferences(doubling);
    lines = Logged(resolving);
    QCOMPARE(lines.size(), 1);
    QVERIFY2(stopped.match(lines[0]).hasMatch(), qPrintable(lines[0]));
}

void TestStylesheetConstants::bothWaysAgreeWithTheLiteralRule()
{
    QRandomGenerator random(20261121);
    for (int round = 0; round < 20000; ++round) {
        const StyleConstants constants = RandomConstants(random);
        const QString text = RandomString(random, QStringLiteral("abc@; "), 30);
        const QString expected = LiteralSubstitution(text, constants);
        const QString fast = SubstituteConstants(text, constants);
        const QString oneByOne = SubstituteConstantsOneByOne(text, constants);
        if (fast != expected || oneByOne != expected) {
            QString description;
            for (auto it = constants.cbegin(); it != constants.cend(); ++it)
                description += QStringLiteral("%1=\"%2\" ").arg(it.key(), it.value().toString());
            QFAIL(qPrintable(QStringLiteral("round %1: constants %2 text \"%3\": expected \"%4\", fast \"%5\", one by one \"%6\"")
                                 .arg(round).arg(description, text, expected, fast, oneByOne)));
        }
    }
}

QTEST_GUILESS_MAIN(TestStylesheetConstants)
#include "tst_stylesheet_constants.moc"
