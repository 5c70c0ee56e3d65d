// Registration of the QML modules and the life of the style singletons across engines.
#include "log_capture.h"
#include "test_support.h"

#include <qt_halvo/qml/qml_modules.h>
#include <qt_halvo/styles/style_sheet.h>

#include "qt_halvo/qml/qml_style_bridge_p.h"
#include "qt_halvo/styles/style_sheet_p.h"

#include <QtCore/QLibraryInfo>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlPropertyMap>

#include <memory>

using OrvantaQT::StyleMapKind;

class TestQmlModules : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_files = 0;

    void LoadColors(const QByteArray& json)
    {
        QFile file(m_dir.filePath(QString("colors%1.json").arg(++m_files)));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(json) == json.size());
        file.close();
        OrvantaQT::LoadGlobalColors(file.fileName());
    }

    static std::unique_ptr<QObject> Create(QQmlEngine& engine, const QByteArray& body, QString* errors = nullptr)
    {
        QQmlComponent component(&engine);
        component.setData("import QtQuick 2.12\nimport Orvanta.Styles 1.0\nimport Orvanta.Controls 1.0\n" + body,
                          QUrl("test.qml"));
        std::unique_ptr<QObject> object(component.create());
        if (errors)
            *errors = component.errorString();
        else if (!object)
            qWarning("%s", qPrintable(component.errorString()));
        return object;
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_dir.isValid()); }
    void init() { LoadColors("{\"accent\": \"#102030\", \"shade\": \"rgba(1, 2, 3, 0.5)\"}"); }

    void registeringAgainIsHarmless()
    {
        const LogCapture::Mark mark;
        OrvantaQT::RegisterQmlModules();
        QQmlEngine engine;
        OrvantaQT::RegisterQmlModules(&engine);
        OrvantaQT::RegisterQmlModules(&engine);
        QCOMPARE(engine.importPathList().count("qrc:/qt-project.org/imports"), 1);
        const auto item = Create(engine, "QtObject { property color c: Colors.accent }");
        QVERIFY(item);
        QCOMPARE(item->property("c").value<QColor>(), QColor("#102030"));
        QCOMPARE(mark.Texts(), QStringList());
    }

    void importPathsGivenBack_data()
    {
        QTest::addColumn<bool>("registered");
        QTest::newRow("import paths replaced: no module") << false;
        QTest::newRow("given back by RegisterQmlModules(engine)") << true;
    }
    void importPathsGivenBack()
    {
        QFETCH(bool, registered);
        QQmlEngine engine;
        // A host's own list: Qt's modules, but not the resources' path.
        engine.setImportPathList({m_dir.path(), QLibraryInfo::location(QLibraryInfo::Qml2ImportsPath)});
        if (registered)
            OrvantaQT::RegisterQmlModules(&engine);
        QString errors;
        // A control written in QML: its file is found through the import path.
        const auto item = Create(engine, "Button {}", &errors);
        QVERIFY2(bool(item) == registered, qPrintable(errors));
        QCOMPARE(errors.contains("Button is not a type"), !registered);
    }

    void everyEngineFollows()
    {
        auto first = std::make_unique<QQmlEngine>();
        QQmlEngine second;
        const auto a = Create(*first, "QtObject { property var c: Colors.shade }");
        const auto b = Create(second, "QtObject { property var c: Colors.shade }");
        QVERIFY(a && b);
        QVERIFY(OrvantaQT::StyleMapOf(StyleMapKind::Colors, first.get())
                != OrvantaQT::StyleMapOf(StyleMapKind::Colors, &second));
        LoadColors("{\"shade\": \"rgba(9, 8, 7, 1)\"}");
        QCOMPARE(a->property("c").value<QColor>(), QColor(9, 8, 7));
        QCOMPARE(b->property("c").value<QColor>(), QColor(9, 8, 7));
        // An engine gone: its singletons go with it, and reloads go on for the others.
        QPointer<QQmlPropertyMap> map = OrvantaQT::StyleMapOf(StyleMapKind::Colors, first.get());
        first.reset();
        QVERIFY(!map);
        LoadColors("{\"shade\": \"rgba(1, 1, 1, 1)\"}");
        QCOMPARE(b->property("c").value<QColor>(), QColor(1, 1, 1));
    }

    void mapsFollowTheTable_data()
    {
        // The values the Colors map holds after a reload of json, as "name=value" words.
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("values");
        QTest::newRow("changed value") << QByteArray("{\"accent\": \"#ffffff\", \"shade\": \"rgba(1, 2, 3, 0.5)\"}")
                                       << "accent=#ffffff shade=#80010203";
        QTest::newRow("a name gone: invalid") << QByteArray("{\"accent\": \"#102030\"}") << "accent=#102030 shade=";
        QTest::newRow("a new name") << QByteArray("{\"accent\": \"#102030\", \"shade\": \"rgba(1, 2, 3, 0.5)\", \"x\": 5}")
                                    << "accent=#102030 shade=#80010203 x=5";
        QTest::newRow("not an object: kept") << QByteArray("[1, 2]") << "accent=#102030 shade=#80010203";
    }
    void mapsFollowTheTable()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, values);
        QQmlEngine engine;
        QVERIFY(Create(engine, "QtObject { property var c: Colors.accent }"));
        QQmlPropertyMap* map = OrvantaQT::StyleMapOf(StyleMapKind::Colors, &engine);
        QVERIFY(map);
        LoadColors(json);
        QStringList words;
        QStringList keys = map->keys();
        keys.sort();
        for (const QString& key : keys) {
            const QVariant value = map->value(key);
            words << key + '='
                         + (value.userType() == QMetaType::QColor ? value.value<QColor>().name(QColor::HexArgb).replace("#ff", "#")
                                                                  : value.toString());
        }
        QCOMPARE(words.join(' '), values);
    }

    void onlyChangedValuesAreWritten()
    {
        QQmlEngine engine;
        const auto item = Create(engine, "QtObject { property int writes: 0; property var c: Colors.accent; "
                                         "onCChanged: ++writes }");
        QVERIFY(item);
        item->setProperty("writes", 0);  // the first evaluation counts too
        LoadColors("{\"accent\": \"#102030\", \"shade\": \"rgba(5, 5, 5, 1)\"}");
        QCOMPARE(item->property("writes").toInt(), 0);
        LoadColors("{\"accent\": \"#aabbcc\"}");
        QCOMPARE(item->property("writes").toInt(), 1);
        QCOMPARE(item->property("c").toString(), QString("#aabbcc"));
    }

    void constantsFollowTheSheet()
    {
        QFile sheet(m_dir.filePath("sheet.qss"));
        QVERIFY(sheet.open(QIODevice::WriteOnly));
        sheet.write("/* Stylesheet Constants\ngap = 6px\ntint = @accent\n*/\nQWidget { margin: @gap; }");
        sheet.close();
        QQmlEngine engine;
        const auto item = Create(engine, "QtObject { property var gap: Constants.gap; property var tint: Constants.tint }");
        OrvantaQT::LoadGlobalStyleSheet(sheet.fileName());
        OrvantaQT::RecalculateGlobalStyleSheet();
        QCOMPARE(item->property("gap").toString(), QString("6px"));
        QCOMPARE(item->property("tint").toString(), OrvantaQT::GetCSSData("tint").toString());
    }
};

QTEST_MAIN(TestQmlModules)
#include "tst_qml_modules.moc"
