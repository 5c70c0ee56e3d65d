// The QML modules through Qt Quick Test: every tst_*.qml file of this folder, each in an
// engine of its own, drawn by the software scene graph.
#include "qml_harness.h"

#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>
#include <QtQuickTest/quicktest.h>
#include <QtWidgets/QApplication>

class QmlTestSetup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        engine->rootContext()->setContextProperty(QStringLiteral("Harness"), new QmlHarness(engine));
    }
};

int main(int argc, char** argv)
{
    // Tests read the controls' sources and the gallery's colour files through XMLHttpRequest.
    qputenv("QML_XHR_ALLOW_FILE_READ", "1");
    // Before any window: no OpenGL on the test's X server.
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    // The widget charts are drawn beside their items: a widget application.
    QApplication app(argc, argv);
    QmlTestSetup setup;
    return quick_test_main_with_setup(argc, argv, "tst_qml", QUICK_TEST_SOURCE_DIR, &setup);
}

#include "tst_qml.moc"
