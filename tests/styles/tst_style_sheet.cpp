#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/styles/style_sheet_p.h>

#include "test_support.h"

#include <QtQml/QtQml>

using namespace OrvantaQT;

class TestStyleSheet : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString Write(const char* name, const QByteArray& content)
    {
        QFile file(m_dir.filePath(QLatin1String(name)));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(content) != content.size())
            qFatal("cannot write %s", name);
        return file.fileName();
    }

private Q_SLOTS:
    void init() { ResetStyleState(); }
    // Constants resolved, colours winning over constants of their name; processed once until
    // asked again, a constant deleted from the file keeping its value meanwhile. Other sheets
    // use the working constants and add theirs, until the global sheet is processed again.
    void globalSheet()
    {
        QVERIFY(!GetCSSData(QStringLiteral("accent")).isValid());
        QCOMPARE(GetGlobalStyleSheet(), QString());
        const QString sheet = Write("global.qss", "/* Stylesheet Constants\nspace = 4px\nframe = 1px solid @edge\n"
                                                  "edge = #101010\naccent = #000001\ngone = 1\n*/\n"
                                                  "a { color: @accent; border: @frame; } @gone@ghost");
        LoadGlobalStyleSheet(sheet, Write("colours.json", "{\"accent\": \"#abcdef\", \"count\": 3}"));
        const QString processed = QStringLiteral("\na { color: #abcdef; border: 1px solid #101010; } 1@ghost");
        QCOMPARE(GetGlobalStyleSheet(), processed);
        QCOMPARE(GetCSSData(QStringLiteral("frame")).toString() + GetCSSData(QStringLiteral("count")).toString(),
                 QStringLiteral("1px solid #1010103"));
        QVERIFY(!GetCSSData(QStringLiteral("ghost")).isValid()); // which adds it, empty
        QCOMPARE(RecalculateStylesheet(QStringLiteral("/* Stylesheet Constants\nfirst = @space+\n*/[@space @first]")),
                 QStringLiteral("[4px 4px+]"));
        QCOMPARE(RecalculateStylesheet(QStringLiteral("[@first]")), QStringLiteral("[4px+]"));
        Write("global.qss", "/* Stylesheet Constants\naccent = #000002\n*/@accent @gone@ghost;");
        LoadGlobalStyleSheet(sheet);
        QCOMPARE(GetGlobalStyleSheet(), processed);
        RecalculateGlobalStyleSheet();
        QCOMPARE(GetGlobalStyleSheet(), QStringLiteral("#abcdef 1;"));
        QCOMPARE(RecalculateStylesheet(QStringLiteral("[@first]")), QStringLiteral("[@first]"));
        LoadGlobalStyleSheet(m_dir.filePath(QStringLiteral("missing.qss")));
        QCOMPARE(GetGlobalStyleSheet(), QString());
    }
    void colourFilesThatFailKeepTheTable_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: no such file
        QTest::addColumn<QString>("logged");
        QTest::newRow("missing") << QByteArray()
                                 << "[StyleSheet] Fail to load colors file " + m_dir.filePath(QStringLiteral("none.json"));
        QTest::newRow("malformed") << QByteArray("{\"a\": ") << "[StyleSheet] Fail to parse colors json, error: ";
        QTest::newRow("not an object") << QByteArray("[\"#fff\"]") << "[StyleSheet] Fail to serialize colors json";
    }
    void colourFilesThatFailKeepTheTable()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, logged);
        const QString sheet = Write("plain.qss", "a{}");
        LoadGlobalStyleSheet(sheet, Write("good.json", "{\"accent\": \"#111111\"}"));
        const LogCapture::Mark mark;
        LoadGlobalStyleSheet(sheet, content.isNull() ? m_dir.filePath(QStringLiteral("none.json")) : Write("bad.json", content));
        QCOMPARE(GetGlobalColors(), (QMap<QString, QVariant>{{QStringLiteral("accent"), QStringLiteral("#111111")}}));
        QCOMPARE(mark.Since().size(), 1);
        QVERIFY2(mark.Since()[0].level == 4 && mark.Since()[0].text.startsWith(logged), qPrintable(mark.Since()[0].text));
    }
    // With the global constants and colours, its own constants winning for it alone;
    // processed once per process.
    void privateSheetsFromTheResources()
    {
        LoadGlobalStyleSheet(Write("for_private.qss", "/* Stylesheet Constants\naccent = #ff0000\nborder = #0000ff\n*/"),
                             Write("private_colours.json", "{\"margin\": \"2px\"}"));
        QLabel label, second;
        LoadPrivateStylesheet(&label, QStringLiteral("TestPrivate"));
        const QString expected = QStringLiteral("\nQLabel#private { color: #00ff00; border: 3px solid #0000ff; margin: 2px; }\n");
        QCOMPARE(label.styleSheet(), expected);
        QCOMPARE(GetCSSData(QStringLiteral("accent")).toString(), QStringLiteral("#ff0000"));
        LoadGlobalStyleSheet(Write("other.qss", "/* Stylesheet Constants\nborder = #123456\n*/"));
        LoadPrivateStylesheet(&second, QStringLiteral("TestPrivate"));
        QCOMPARE(second.styleSheet(), expected);
        LoadPrivateStylesheet(&second, QStringLiteral("NoSuchSheet"));
        QCOMPARE(second.styleSheet(), QString());
    }
    // Qt evaluates property selectors when it polishes a widget: a stale colour shows that no
    // re-polish happened. Missing widgets and names are reported.
    void repolishingOnlyWhenSomethingChanged()
    {
        QWidget parent;
        parent.setStyleSheet(QStringLiteral("QLabel { background: #0000ff; } QLabel[selected=\"true\"] { background: #ff0000; }"
                                            "QLabel[hovered=\"true\"] { background: #00ff00; }"));
        auto* label = new QLabel(&parent);
        label->resize(20, 20);
        const std::function<void()> steps[] = {
            [] {},
            [&] { SetStyleProperty(label, "selected", true, false); },
            [&] { SetStyleProperty(label, "selected", true, true); },
            [&] { UpdateStyleSheet(label); }, // without a sheet of its own
            [&] { SetStyleProperty(label, "hovered", true, true); },
            [&] {
                label->setProperty("hovered", false);
                SetStyleProperties(label, {{"selected", true}, {"hovered", false}}, true);
            },
            [&] { SetStyleProperties(label, {{"selected", false}, {"hovered", false}}, true); }};
        QStringList colours;
        for (const auto& step : steps) {
            step();
            colours << TestSupport::Render(label).pixelColor(10, 10).name();
        }
        QCOMPARE(colours, TestSupport::Words("#0000ff #0000ff #0000ff #ff0000 #00ff00 #00ff00 #0000ff"));
        const LogCapture::Mark mark;
        UpdateStyleSheet(nullptr);
        SetStyleProperty(nullptr, "selected", true, true);
        LoadPrivateStylesheet(nullptr, QStringLiteral("TestPrivate"));
        SetStyleProperties(label, {{nullptr, true}, {"other", true}}, false);
        QCOMPARE(label->property("other"), QVariant(true));
        QCOMPARE(mark.Since().size(), 4);
    }
    // "rgba(r, g, b, a)" strings become colours (red, green and blue 0 when unreadable).
    void qmlColorsMap()
    {
        QQmlEngine engine;
        QQmlPropertyMap* map = BuildQmlColorsMap({{QStringLiteral("shade"), QStringLiteral("rgba(10, 20, 30, 0.5)")},
                                                  {QStringLiteral("broken"), QStringLiteral("rgba(10,20,30)")},
                                                  {QStringLiteral("unreadable"), QStringLiteral("rgba(x, 20, 30, 1)")},
                                                  {QStringLiteral("plain"), QStringLiteral("#112233")},
                                                  {QStringLiteral("number"), 7}},
                                                 &engine);
        QCOMPARE(map->parent(), &engine);
        engine.rootContext()->setContextProperty(QStringLiteral("colors"), map);
        QCOMPARE(QQmlExpression(engine.rootContext(), nullptr, QStringLiteral("[colors.shade, colors.broken, colors.unreadable, "
                                                                              "colors.plain, colors.number].join()")).evaluate(),
                 QVariant(QStringLiteral("#800a141e,#000000,#00141e,#112233,7")));
    }
};

QTEST_MAIN(TestStyleSheet)
#include "tst_style_sheet.moc"
