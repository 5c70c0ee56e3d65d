#include <qt_halvo/qt_halvo_version.h>

#include "test_support.h"

class TestResources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The library's resources are there as soon as it is loaded, before any of it is called
    // (the version, read last, keeps the library linked).
    void translationCataloguesLoad()
    {
        QCOMPARE(QDir(QStringLiteral(":/translations")).entryList(QDir::Files),
                 TestSupport::Words("qt_halvo_de.qm qt_halvo_ru.qm"));
        QTranslator german, russian;
        QVERIFY(german.load(QStringLiteral(":/translations/qt_halvo_de")));
        QVERIFY(russian.load(QStringLiteral(":/translations/qt_halvo_ru")));
        // The busy animation of the line edits: twelve 16 px frames, and again at twice the density.
        QCOMPARE(QImage(QStringLiteral(":/preloader_animation_16.png")).size(), QSize(12 * 16, 16));
        QCOMPARE(QImage(QStringLiteral(":/preloader_animation_16@2x.png")).size(), QSize(12 * 32, 32));
        QVERIFY(!OrvantaQT::VersionString().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestResources)
#include "tst_resources.moc"
