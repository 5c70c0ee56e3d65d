#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/styles/style_sheet_p.h>

#include "log_capture.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QColor>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlExpression>
#include <QtQml/QQmlPropertyMap>
#include <QtTest/QtTest>
#include <QtWidgets/QLabel>

using namespace OrvantaQT;

namespace {

constexpr int kError = 4;

// Counts the style changes Qt sends a widget when it re-polishes it.
class RepolishCounter : public QObject
{
public:
    explicit RepolishCounter(QWidget* widget) { widget->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::StyleChange)
            ++count;
        return false;
    }
};

QRgb CentrePixel(QWidget& widget)
{
    const QImage image = widget.grab().toImage();
    return image.pixel(image.rect().center()) & 0xffffff;
}

} // namespace

class TestStyleSheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void globalSheetWithColours();
    void sheetsAreCachedUntilRecalculated();
    void colourFilesThatFailKeepTheTable_data();
    void colourFilesThatFailKeepTheTable();
    void recalculationUsesAndGrowsTheWorkingConstants();
    void privateSheetsFromTheResources();

    void repolishingOnlyWhenSomethingChanged();
    void missingWidgetsAreReported();

    void qmlColorsMap();

private:
    QString WriteFile(const QString& name, const QByteArray& content);

    QTemporaryDir m_dir;
};

void TestStyleSheet::init()
{
    ResetStyleState();
}

QString TestStyleSheet::WriteFile(const QString& name, const QByteArray& content)
{
    const QString path = m_dir.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

void TestStyleSheet::globalSheetWithColours()
{
    QVERIFY(!GetCSSData(QStringLiteral("accent")).isValid());
    QCOMPARE(GetGlobalStyleSheet(), QString());

    const QString sheet = WriteFile(QStringLiteral("global.qss"), "/* Stylesheet Constants\nspace = 4px\n"
                                                                  "frame = 1px solid @edge\nedge = #101010\n"
                                                                  "accent = #000001\n*/\n"
                                                                  "QLabel { color: @accent; border: @frame; margin: @space; }");
    LoadGlobalStyleSheet(sheet, WriteFile(QStringLiteral("colours.json"), R"({"accent": "#abcdef", "count": 3})"));
    QCOMPARE(GetGlobalStyleSheet(), QStringLiteral("\nQLabel { color: #abcdef; border: 1px solid #101010; margin: 4px; }"));
    QCOMPARE(GetCSSData(QStringLiteral("accent")).toString(), QStringLiteral("#abcdef"));
    QCOMPARE(GetCSSData(QStringLiteral("frame")).toString(), QStringLiteral("1px solid #101010"));
    QCOMPARE(GetCSSData(QStringLiteral("count")), QVariant(3.0));
}

void TestStyleSheet::sheetsAreCachedUntilRecalculated()
{
    const QString sheet = WriteFile(QStringLiteral("cached.qss"), "/* Stylesheet Constants\ngone = 1\nc = 2\n*/@gone @c @ghost");
    LoadGlobalStyleSheet(sheet);
    QCOMPARE(GetGlobalStyleSheet(), QStringLiteral("1 2 @ghost"));
    // Asking for an unknown constant adds it, empty.
    QVERIFY(!GetCSSData(QStringLiteral("ghost")).isValid());

    WriteFile(QStringLiteral("cached.qss"), "/* Stylesheet Constants\nc = 3\n*/@gone @c @ghost");
    LoadGlobalStyleSheet(sheet);
    QCOMPARE(GetGlobalStyleSheet(), QStringLiteral("1 2 @ghost"));

    // A constant deleted from the file keeps its value for the life of the process.
    RecalculateGlobalStyleSheet();
    QCOMPARE(GetGlobalStyleSheet(), QStringLiteral("1 3 "));

    // A sheet that cannot be read processes to nothing.
    LoadGlobalStyleSheet(m_dir.filePath(QStringLiteral("missing.qss")));
    QCOMPARE(GetGlobalStyleSheet(), QString());
}

void TestStyleSheet::colourFilesThatFailKeepTheTable_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("content"); // null: no such file
    QTest::addColumn<QString>("message");
    QTest::newRow("missing") << "missing.json" << QByteArray() << "[StyleSheet] Fail to load colors file %1";
    QTest::newRow("malformed") << "malformed.json" << QByteArray("{\"a\": ") << "[StyleSheet] Fail to parse colors json, error: ";
    QTest::newRow("not an object") << "array.json" << QByteArray("[\"#fff\"]") << "[StyleSheet] Fail to serialize colors json";
}

void TestStyleSheet::colourFilesThatFailKeepTheTable()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    const QString sheet = WriteFile(QStringLiteral("plain.qss"), "a{}");
    LoadGlobalStyleSheet(sheet, WriteFile(QStringLiteral("good.json"), R"({"accent": "#111111"})"));
    const QString path = content.isNull() ? m_dir.filePath(file) : WriteFile(file, content);

    const LogCapture::Mark mark;
    LoadGlobalStyleSheet(sheet, path);
    QCOMPARE(GetGlobalColors().value(QStringLiteral("accent")), QVariant(QStringLiteral("#111111")));
    const QVector<LoggedLine> lines = mark.Since();
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines[0].level, kError);
    QVERIFY2(lines[0].text.startsWith(message.contains(QLatin1String("%1")) ? message.arg(path) : message),
             qPrintable(lines[0].text));
    QVERIFY2(lines[0].tag.startsWith(QLatin1String("qt_halvo\\styles\\style_sheet:"))
                 && lines[0].tag.endsWith(QLatin1String(" OrvantaQT::LoadGlobalColors")),
             qPrintable(lines[0].tag));
}

void TestStyleSheet::recalculationUsesAndGrowsTheWorkingConstants()
{
    LoadGlobalStyleSheet(WriteFile(QStringLiteral("base.qss"), "/* Stylesheet Constants\nbase = 1\n*/"));
    QCOMPARE(RecalculateStylesheet(QStringLiteral("/* Stylesheet Constants\nfirst = @base+\n*/[@base @first]")),
             QStringLiteral("[1 1+]"));
    // A constant of a sheet processed before is visible to the next one.
    QCOMPARE(RecalculateStylesheet(QStringLiteral("[@first]")), QStringLiteral("[1+]"));
    // Reloading the global sheet starts the working constants afresh.
    RecalculateGlobalStyleSheet();
    QCOMPARE(RecalculateStylesheet(QStringLiteral("[@first]")), QStringLiteral("[@first]"));
}

void TestStyleSheet::privateSheetsFromTheResources()
{
    LoadGlobalStyleSheet(WriteFile(QStringLiteral("for_private.qss"),
                                   "/* Stylesheet Constants\naccent = #ff0000\nborder = #0000ff\n*/"),
                         WriteFile(QStringLiteral("private_colours.json"), R"({"margin": "2px"})"));
    QLabel label;
    LoadPrivateStylesheet(&label, QStringLiteral("TestPrivate"));
    const QString expected = QStringLiteral("\nQLabel#private { color: #00ff00; border: 3px solid #0000ff; margin: 2px; }\n");
    QCOMPARE(label.styleSheet(), expected);
    // The private constant overrides the global one for this sheet only.
    QCOMPARE(GetCSSData(QStringLiteral("accent")).toString(), QStringLiteral("#ff0000"));

    // Processed once per process: a new global sheet does not refresh it.
    LoadGlobalStyleSheet(WriteFile(QStringLiteral("other.qss"), "/* Stylesheet Constants\nborder = #123456\n*/"));
    QLabel second;
    LoadPrivateStylesheet(&second, QStringLiteral("TestPrivate"));
    QCOMPARE(second.styleSheet(), expected);

    LoadPrivateStylesheet(&second, QStringLiteral("NoSuchSheet"));
    QCOMPARE(second.styleSheet(), QString());
}

void TestStyleSheet::repolishingOnlyWhenSomethingChanged()
{
    QLabel label;
    label.resize(40, 20);
    label.show();
    QVERIFY(QTest::qWaitForWindowExposed(&label));
    RepolishCounter counter(&label);
    // Without a sheet of its own Qt would not re-polish it: it is given an empty one.
    UpdateStyleSheet(&label);
    QCOMPARE(label.styleSheet(), QStringLiteral(";"));
    QVERIFY(counter.count > 0);
    // With one, the same sheet is set again.
    const int once = counter.count;
    UpdateStyleSheet(&label);
    QCOMPARE(label.styleSheet(), QStringLiteral(";"));
    const int perRepolish = counter.count - once;
    QVERIFY(perRepolish > 0);

    const auto repolishesOf = [&](const std::function<void()>& call) {
        const int before = counter.count;
        call();
        return (counter.count - before) / perRepolish;
    };
    QCOMPARE(repolishesOf([&] { SetStyleProperty(&label, "selected", true, true); }), 1);
    QCOMPARE(label.property("selected"), QVariant(true));
    QCOMPARE(repolishesOf([&] { SetStyleProperty(&label, "selected", true, true); }), 0);
    QCOMPARE(repolishesOf([&] { SetStyleProperty(&label, "selected", false, false); }), 0);
    QCOMPARE(label.property("selected"), QVariant(false));

    QCOMPARE(repolishesOf([&] { SetStyleProperties(&label, {}, true); }), 0);
    QCOMPARE(repolishesOf([&] { SetStyleProperties(&label, {{"selected", false}}, true); }), 0);
    QCOMPARE(repolishesOf([&] { SetStyleProperties(&label, {{"selected", true}, {"hovered", true}}, true); }), 1);
    QCOMPARE(label.property("hovered"), QVariant(true));

    // A re-polish is what makes the property selectors follow.
    label.setStyleSheet(QStringLiteral("QLabel { background: #0000ff; } QLabel[selected=\"true\"] { background: #ff0000; }"));
    QCOMPARE(CentrePixel(label), QRgb(0xff0000));
    SetStyleProperty(&label, "selected", false, false);
    QCOMPARE(CentrePixel(label), QRgb(0xff0000));
    UpdateStyleSheet(&label);
    QCOMPARE(CentrePixel(label), QRgb(0x0000ff));
    SetStyleProperty(&label, "selected", true, true);
    QCOMPARE(CentrePixel(label), QRgb(0xff0000));
}

void TestStyleSheet::missingWidgetsAreReported()
{
    const LogCapture::Mark mark;
    UpdateStyleSheet(nullptr);
    SetStyleProperty(nullptr, "selected", true, true);
    SetStyleProperties(nullptr, {{"selected", true}}, true);
    LoadPrivateStylesheet(nullptr, QStringLiteral("TestPrivate"));
    QLabel label;
    SetStyleProperty(&label, nullptr, true, true);
    const QVector<LoggedLine> lines = mark.Since();
    QCOMPARE(lines.size(), 5);
    for (const LoggedLine& line : lines)
        QCOMPARE(line.level, kError);
}

void TestStyleSheet::qmlColorsMap()
{
    QQmlEngine engine;
    QQmlPropertyMap* map = BuildQmlColorsMap({{QStringLiteral("shade"), QStringLiteral("rgba(10, 20, 30, 0.5)")},
                                              {QStringLiteral("broken"), QStringLiteral("rgba(10,20,30)")},
                                              {QStringLiteral("unreadable"), QStringLiteral("rgba(x, 20, 30, 1)")},
                                              {QStringLiteral("plain"), QStringLiteral("#112233")},
                                              {QStringLiteral("number"), 7}},
                                             &engine);
    QCOMPARE(map->parent(), &engine);
    QVERIFY(!map->value(QStringLiteral("broken")).value<QColor>().isValid());
    QCOMPARE(map->value(QStringLiteral("unreadable")).value<QColor>(), QColor(0, 20, 30));
    QCOMPARE(map->value(QStringLiteral("number")), QVariant(7));
    QCOMPARE(map->value(QStringLiteral("plain")), QVariant(QStringLiteral("#112233")));

    engine.rootContext()->setContextProperty(QStringLiteral("colors"), map);
    QQmlExpression shade(engine.rootContext(), nullptr, QStringLiteral("colors.shade"));
    QCOMPARE(shade.evaluate().value<QColor>().rgba(), qRgba(10, 20, 30, 128));
}

QTEST_MAIN(TestStyleSheet)
#include "tst_style_sheet.moc"
