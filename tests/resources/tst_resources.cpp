// The resources compiled into the library are there as soon as it is loaded.

#include <qt_halvo/qt_halvo_version.h>

#include <QtCore/QDir>
#include <QtCore/QTranslator>
#include <QtTest/QtTest>

class TestResources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void translationCataloguesLoad_data();
    void translationCataloguesLoad();
    void onlyKnownCataloguesAreShipped();
};

void TestResources::translationCataloguesLoad_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::newRow("Russian") << QStringLiteral("ru");
    QTest::newRow("German") << QStringLiteral("de");
}

void TestResources::translationCataloguesLoad()
{
    QFETCH(QString, suffix);
    // Nothing of the library is called first: its resources register when it loads.
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":/translations/qt_halvo_") + suffix));
}

void TestResources::onlyKnownCataloguesAreShipped()
{
    QCOMPARE(QDir(QStringLiteral(":/translations")).entryList(QDir::Files),
             QStringList({QStringLiteral("qt_halvo_de.qm"), QStringLiteral("qt_halvo_ru.qm")}));
    QVERIFY(!OrvantaQT::VersionString().isEmpty());
}

QTEST_GUILESS_MAIN(TestResources)
#include "tst_resources.moc"
