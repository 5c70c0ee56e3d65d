// The QML modules:
// - from an empty engine to a window of 50 controls first drawn, with Orvanta.Controls and
//   with Qt Quick Controls 2's own "Default" style, in turns in the same run;
// - a colours reload with 200 bound properties, light and dark in turns.
// The software scene graph draws both, as on the machines without OpenGL the tests run on.

#include <qt_halvo/styles/style_sheet.h>

#include <QtCore/QTemporaryDir>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <algorithm>

namespace {

// Ten of each of five kinds that both sets have, in a column of rows.
QByteArray Window(const QByteArray& imports)
{
    QByteArray rows;
    for (int i = 0; i < 10; ++i) {
        rows += "Row { spacing: 4\n"
                "  Button { text: \"Button " + QByteArray::number(i) + "\" }\n"
                "  CheckBox { text: \"Check\"; checked: " + (i % 2 ? "true" : "false") + " }\n"
                "  TextField { placeholderText: \"Text\"; width: 120 }\n"
                "  ComboBox { model: [\"One\", \"Two\", \"Three\"] }\n"
                "  ProgressBar { value: " + QByteArray::number(i / 10.0) + " }\n"
                "}\n";
    }
    return "import QtQuick 2.12\nimport QtQuick.Window 2.12\n" + imports
           + "Window { width: 720; height: 480; visible: true\n"
             "Column { spacing: 2\n" + rows + "} }\n";
}

// Milliseconds from a new engine to the first frame of the window.
double FirstFrame(const QByteArray& source)
{
    QElapsedTimer timer;
    timer.start();
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(source, QUrl(QStringLiteral("bench.qml")));
    std::unique_ptr<QObject> root(component.create());
    auto* window = qobject_cast<QQuickWindow*>(root.get());
    if (!window) {
        qWarning() << component.errors();
        return -1;
    }
    bool drawn = false;
    QObject::connect(window, &QQuickWindow::frameSwapped, [&drawn] { drawn = true; });
    if (!QTest::qWaitFor([&drawn] { return drawn; }, 10000))
        qWarning("no frame");
    return timer.nsecsElapsed() / 1e6;
}

double Median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values.at(values.size() / 2);
}

} // namespace

class BenchQml : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private Q_SLOTS:
    void initTestCase()
    {
        // The colours the controls read, as a theme gives them.
        const QString colors = m_dir.filePath(QStringLiteral("theme.json"));
        QFile out(colors);
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write("{\"windowBackground\": \"#f4f5f7\", \"panelBackground\": \"#ffffff\", \"hoverBackground\": \"#e6eef8\", \"borderColor\": \"#d0d4da\", \"primaryText\": \"#1d2330\", \"mutedText\": \"#6b7280\", \"accentColor\": \"#1f7ad4\", \"accentText\": \"#ffffff\", \"informationBackground\": \"#d6eaf8\", \"positiveBackground\": \"#d5f0dd\", \"warningBackground\": \"#fdebd0\", \"errorBackground\": \"#f8d7da\", \"notificationText\": \"#1d2330\", \"pressedBackground\": \"#cfdff2\", \"disabledText\": \"#a0a6b0\", \"focusFrame\": \"#1f7ad4\", \"progressTrack\": \"#e2e5ea\"}");
        out.close();
        OrvantaQT::LoadGlobalStyleSheet(m_dir.filePath(QStringLiteral("none.qss")), colors);
    }

    void firstFrame()
    {
        const QByteArray ours = Window("import Orvanta.Controls 1.0\n");
        const QByteArray peer = Window("import QtQuick.Controls 2.12\n");
        // The first of each pays for loading the modules; then they take turns.
        const double oursFirst = FirstFrame(ours);
        const double peerFirst = FirstFrame(peer);
        QVector<double> oursTimes;
        QVector<double> peerTimes;
        for (int i = 0; i < 9; ++i) {
            oursTimes << FirstFrame(ours);
            peerTimes << FirstFrame(peer);
        }
        qInfo("first window in the process: Orvanta.Controls %.1f ms, Qt Quick Controls 2 Default %.1f ms", oursFirst,
              peerFirst);
        qInfo("a new engine and window, median of 9: Orvanta.Controls %.1f ms, Qt Quick Controls 2 Default %.1f ms "
              "(%.2fx)",
              Median(oursTimes), Median(peerTimes), Median(oursTimes) / Median(peerTimes));
        QTest::setBenchmarkResult(Median(oursTimes), QTest::WalltimeMilliseconds);
    }

    void colorsReload()
    {
        const QString light = m_dir.filePath(QStringLiteral("light.json"));
        const QString dark = m_dir.filePath(QStringLiteral("dark.json"));
        QByteArray lightJson = "{";
        QByteArray darkJson = "{";
        for (int i = 0; i < 40; ++i) {
            const QByteArray name = "\"colour" + QByteArray::number(i) + "\": ";
            lightJson += (i ? ", " : "") + name + "\"#" + QByteArray::number(0x101010 + i * 0x030201, 16) + "\"";
            darkJson += (i ? ", " : "") + name + "\"rgba(" + QByteArray::number(i) + ", 20, 30, 0.5)\"";
        }
        for (const auto& file : {std::make_pair(light, lightJson + "}"), std::make_pair(dark, darkJson + "}")}) {
            QFile out(file.first);
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(file.second);
        }
        OrvantaQT::LoadGlobalStyleSheet(m_dir.filePath(QStringLiteral("none.qss")), light);
        // 200 rectangles, each bound to one of the 40 colours.
        QByteArray source = "import QtQuick 2.12\nimport Orvanta.Styles 1.0\nItem {\n";
        for (int i = 0; i < 200; ++i)
            source += "Rectangle { color: Colors.colour" + QByteArray::number(i % 40) + " }\n";
        source += "}\n";
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData(source, QUrl(QStringLiteral("reload.qml")));
        std::unique_ptr<QObject> root(component.create());
        QVERIFY2(root, qPrintable(component.errorString()));
        int turn = 0;
        QBENCHMARK {
            OrvantaQT::LoadGlobalStyleSheet(m_dir.filePath(QStringLiteral("none.qss")), ++turn % 2 ? dark : light);
        }
        // The bindings did follow.
        auto* first = root->findChildren<QObject*>().value(0);
        QVERIFY(first && first->property("color").value<QColor>().isValid());
    }
};

int main(int argc, char** argv)
{
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    qputenv("QT_QUICK_CONTROLS_STYLE", "Default");
    QGuiApplication app(argc, argv);
    BenchQml bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_qml.moc"
