#include <qt_halvo/application/inter_process_event.h>
#include <qt_halvo/layouts/show_on_top.h>

#include "test_support.h"

using OrvantaQT::ShowOnTop;

namespace {

// Two overlapping windows, the second one in front and active.
struct Windows
{
    QWidget back;
    QWidget front;
    QLineEdit* field = new QLineEdit(&back);

    Windows()
    {
        back.setWindowTitle(QStringLiteral("back"));
        front.setWindowTitle(QStringLiteral("front"));
        back.setGeometry(100, 100, 300, 200);
        front.setGeometry(150, 150, 300, 200);
        field->setGeometry(10, 10, 100, 24);
    }
    bool Show()
    {
        back.show();
        front.show();
        front.activateWindow();
        return QTest::qWaitForWindowExposed(&back) && QTest::qWaitForWindowActive(&front);
    }
    // The window that shows at a point where both lie.
    QWidget* OnTop() const { return QApplication::topLevelAt(QPoint(250, 250)); }
    bool BackInFront() const
    {
        return QApplication::activeWindow() == &back && OnTop() == &back;
    }
};

} // namespace

class TestShowOnTop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // From behind, from minimised and from hidden, the window comes to the front with the
    // focus; a child widget stands for its window.
    void bringsTheWindowToTheFront_data()
    {
        QTest::addColumn<QString>("before");
        QTest::newRow("behind") << "behind";
        QTest::newRow("minimised") << "minimised";
        QTest::newRow("hidden") << "hidden";
    }
    void bringsTheWindowToTheFront()
    {
        QFETCH(QString, before);
        Windows windows;
        QVERIFY(windows.Show());
        QCOMPARE(windows.OnTop(), &windows.front);
        if (before == QLatin1String("minimised"))
            windows.back.showMinimized();
        else if (before == QLatin1String("hidden"))
            windows.back.hide();

        ShowOnTop(windows.field);
        QTRY_VERIFY(windows.BackInFront());
        QVERIFY(!windows.back.isMinimized());
        QVERIFY(windows.back.isVisible());
    }

    void nullIsLogged()
    {
        const LogCapture::Mark mark;
        ShowOnTop(nullptr);
        OrvantaQT::AllowOtherProcessesToShowOnTop(); // nothing to allow here, nothing logged
        QCOMPARE(mark.Texts(), QStringList({"4 ShowOnTop: no widget to bring to the front"}));
    }

    // The single-instance story: a second process signals the named event, and the first
    // one brings its window to the front.
    void aSecondProcessWakesTheFirst()
    {
        Windows windows;
        QVERIFY(windows.Show());
        const QString name = QStringLiteral("qt_halvo_show_on_top_%1").arg(QCoreApplication::applicationPid());
        auto event = OrvantaQT::CreateInterProcessEvent(name);
        QWidget* back = &windows.back;
        event->StartListening([back] {
            QMetaObject::invokeMethod(back, [back] { ShowOnTop(back); }, Qt::QueuedConnection);
        });
        QCOMPARE(TestSupport::RunSelf({QStringLiteral("--wake"), name}).exitCode, 0);
        QTRY_VERIFY(windows.BackInFront());
        event.reset();
    }
};

int main(int argc, char** argv)
{
    // The second instance: hands the foreground over and wakes the first.
    if (argc == 3 && qstrcmp(argv[1], "--wake") == 0) {
        OrvantaQT::AllowOtherProcessesToShowOnTop();
        OrvantaQT::CreateInterProcessEvent(QString::fromLocal8Bit(argv[2]))->Signal();
        return 0;
    }
    QApplication application(argc, argv);
    TestShowOnTop test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_show_on_top.moc"
