#include "test_support.h"

#include <qt_halvo/diagnostics/debug_console.h>
#include <qt_halvo/diagnostics/debug_console_capture.h>

#include <QtGui/QClipboard>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QShortcut>
#include <QtWidgets/QTableView>

#include <memory>

using OrvantaQT::DebugConsole;
using Level = OrvantaQT::DebugConsole::Level;
using namespace TestSupport;

Q_LOGGING_CATEGORY(lcNetwork, "app.network")
Q_LOGGING_CATEGORY(lcStorage, "app.storage")

class TestDebugConsole : public QObject
{
    Q_OBJECT

    // A console that has taken exactly these messages: the capture is emptied first.
    std::unique_ptr<DebugConsole> Console()
    {
        auto console = std::make_unique<DebugConsole>();
        console->Clear();
        qCDebug(lcNetwork) << "connecting to example.org";
        qCInfo(lcNetwork) << "connected";
        qCWarning(lcStorage) << "disk almost full";
        qCCritical(lcStorage) << "cannot write settings.ini";
        qCWarning(lcNetwork) << "retry 2 of 3";
        console->Refresh();
        return console;
    }

    static QStringList Shown(const DebugConsole& console)
    {
        QStringList texts;
        const QStringList lines = console.ShownText().split('\n', Qt::SkipEmptyParts);
        for (const QString& line : lines)
            texts << line.section(": ", 1);
        return texts;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QLoggingCategory::setFilterRules("app.*.debug=true");
        QVERIFY(OrvantaQT::InstallDebugConsoleCapture(1000));
    }

    void filters_data()
    {
        QTest::addColumn<Level>("level");
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("expression");
        QTest::addColumn<QStringList>("shown");
        const QStringList all{"connecting to example.org", "connected", "disk almost full",
                              "cannot write settings.ini", "retry 2 of 3"};
        QTest::newRow("everything") << Level::Debug << "" << "" << false << all;
        QTest::newRow("warnings and above") << Level::Warning << "" << "" << false << QStringList(all.mid(2));
        QTest::newRow("errors") << Level::Error << "" << "" << false << QStringList(all.mid(3, 1));
        QTest::newRow("category, any case") << Level::Debug << "NETWORK" << "" << false
                                            << QStringList{all[0], all[1], all[4]};
        QTest::newRow("text") << Level::Debug << "" << "CONNECT" << false << QStringList(all.mid(0, 2));
        QTest::newRow("expression") << Level::Debug << "" << "^c.*(org|ini)$" << true
                                    << QStringList{all[0], all[3]};
        QTest::newRow("level and category") << Level::Warning << "network" << "" << false << QStringList(all.mid(4));
        QTest::newRow("invalid expression: nothing") << Level::Debug << "" << "(" << true << QStringList();
    }
    void filters()
    {
        QFETCH(Level, level);
        QFETCH(QString, category);
        QFETCH(QString, text);
        QFETCH(bool, expression);
        QFETCH(QStringList, shown);
        auto console = Console();
        QCOMPARE(console->LineCount(), 5);
        console->SetMinimumLevel(level);
        console->SetCategoryFilter(category);
        console->SetTextFilter(text, expression);
        QCOMPARE(Shown(*console), shown);
        QCOMPARE(console->ShownLineCount(), shown.size());
        auto* status = console->findChild<QLabel*>("Status");
        QVERIFY(status->text().startsWith(QString("%1 of 5 lines shown").arg(shown.size())));
        QCOMPARE(status->text().contains("invalid expression"), expression && text == "(");
    }

    void controlsDriveTheFilters()
    {
        auto console = Console();
        console->findChild<QComboBox*>("LevelFilter")->setCurrentIndex(int(Level::Warning));
        QCOMPARE(console->GetMinimumLevel(), Level::Warning);
        QTest::keyClicks(console->findChild<QLineEdit*>("CategoryFilter"), "storage");
        QCOMPARE(Shown(*console), QStringList({"disk almost full", "cannot write settings.ini"}));
        // A click selects whole rows: what is copied is whole lines.
        auto* view = console->findChild<QTableView*>("Lines");
        QVERIFY(ShowAndWait(console.get()));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(view->model()->index(0, 2)).center());
        QCOMPARE(console->ShownText(true).count('\n'), 1);
        QVERIFY(console->ShownText(true).contains("warning app.storage: disk almost full"));
        QTest::keyClicks(console->findChild<QLineEdit*>("TextFilter"), "^d");
        QCOMPARE(console->ShownLineCount(), 0);
        console->findChild<QCheckBox*>("RegularExpression")->setChecked(true);
        QCOMPARE(Shown(*console), QStringList("disk almost full"));
        auto* pause = console->findChild<QPushButton*>("PauseButton");
        pause->click();
        QVERIFY(console->IsPaused());
        QCOMPARE(pause->text(), QString("Resume"));
        console->findChild<QPushButton*>("ClearButton")->click();
        QCOMPARE(console->LineCount(), 0);
    }

    void linesComeInBatchesWhileShown()
    {
        DebugConsole console;
        console.Clear();
        SignalLog log(&console, {"LinesChanged()"});
        QVERIFY(ShowAndWait(&console));
        for (int i = 0; i < 300; ++i)
            qWarning("burst %d", i);
        QTRY_COMPARE(console.LineCount(), 300);
        // One batch took the burst, not one step per message.
        QVERIFY2(log.Take().size() <= 3, "the list was updated per message");
        console.hide();
        qWarning("while hidden");
        QTest::qWait(250);
        QCOMPARE(console.LineCount(), 300);
        QVERIFY(ShowAndWait(&console));
        QTRY_COMPARE(console.LineCount(), 301);
    }

    void pause()
    {
        DebugConsole console;
        console.Clear();
        QVERIFY(ShowAndWait(&console));
        console.SetPaused(true);
        qWarning("waiting");
        QTest::qWait(250);
        console.Refresh();
        QCOMPARE(console.LineCount(), 0);
        console.SetPaused(false);
        QTRY_COMPARE(console.LineCount(), 1);
        QCOMPARE(Shown(console), QStringList("waiting"));
    }

    void droppedLinesAreCounted()
    {
        OrvantaQT::InstallDebugConsoleCapture(10);
        DebugConsole console;
        console.Clear();
        for (int i = 0; i < 25; ++i)
            qWarning("line %d", i);
        console.Refresh();
        QCOMPARE(console.LineCount(), 10);
        QCOMPARE(console.DroppedLineCount(), quint64(15));
        QCOMPARE(Shown(console).first(), QString("line 15"));
        QVERIFY(console.findChild<QLabel*>("Status")->text().contains("15 dropped"));
        OrvantaQT::InstallDebugConsoleCapture(1000);
    }

    void maximumLinesKeepsTheNewest()
    {
        auto console = Console();
        console->SetMaximumLines(2);
        QCOMPARE(Shown(*console), QStringList({"cannot write settings.ini", "retry 2 of 3"}));
        console->SetMaximumLines(0);
        QCOMPARE(console->GetMaximumLines(), 1);
    }

    void copyAndSave()
    {
        auto console = Console();
        auto* view = console->findChild<QTableView*>("Lines");
        view->selectRow(3);
        view->selectionModel()->select(view->model()->index(1, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
        console->CopySelection();
        const QStringList copied = QGuiApplication::clipboard()->text().split('\n', Qt::SkipEmptyParts);
        QCOMPARE(copied.size(), 2);
        QVERIFY(copied[0].endsWith("info app.network: connected"));
        QVERIFY(copied[1].endsWith("error app.storage: cannot write settings.ini"));

        QTemporaryDir dir;
        const QString path = dir.filePath("console.txt");
        QVERIFY(console->SaveToFile(path));
        QFile saved(path);
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(saved.readAll()), console->ShownText());
    }

    void unwritableFileIsSaidOnce()
    {
        auto console = Console();
        const QString path = "/nonexistent-folder/console.txt";
        console->Clear();
        QVERIFY(!console->SaveToFile(path));
        QVERIFY(!console->SaveToFile(path));
        console->Refresh();
        const QStringList logged = console->ShownText().split('\n', Qt::SkipEmptyParts);
        const QStringList told = logged.filter("cannot write /nonexistent-folder/console.txt");
        QCOMPARE(told.size(), 1);
        QVERIFY2(told.first().contains(" warning "), qPrintable(told.first()));  // a library line, at its level
        QVERIFY(console->findChild<QLabel*>("Status")->text().contains("Cannot write " + path));
    }

    void levelColoursFromTheStyleSheet()
    {
        auto console = Console();
        console->setStyleSheet("OrvantaQT--DebugConsole { qproperty-warningColor: #b45309; qproperty-errorColor: red; }");
        console->ensurePolished();
        QCOMPARE(console->GetWarningColor(), QColor("#b45309"));
        QAbstractItemModel* model = console->findChild<QTableView*>("Lines")->model();
        QCOMPARE(model->index(2, 3).data(Qt::ForegroundRole).value<QColor>(), QColor("#b45309"));
        QCOMPARE(model->index(3, 3).data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
        QVERIFY(!model->index(0, 3).data(Qt::ForegroundRole).isValid());
    }

    void shortcutTogglesAConsole()
    {
        QWidget window;
        QVERIFY(ShowAndWait(&window));
        QShortcut* shortcut = OrvantaQT::InstallDebugConsoleShortcut(&window);
        QVERIFY(shortcut);
        QCOMPARE(shortcut->key(), QKeySequence("Ctrl+Shift+D"));
        Q_EMIT shortcut->activated();
        auto* console = window.findChild<DebugConsole*>("DebugConsoleWindow");
        QVERIFY(console && console->isVisible() && console->isWindow());
        Q_EMIT shortcut->activated();
        QVERIFY(!console->isVisible());
        QCOMPARE(OrvantaQT::InstallDebugConsoleShortcut(nullptr), nullptr);
    }
};

QTEST_MAIN(TestDebugConsole)
#include "tst_debug_console.moc"
