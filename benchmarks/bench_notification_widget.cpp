// NotificationWidget's height-for-width asked at a new width each time, as a layout does
// while a window is resized, for a 300-character text with a link: the text is laid out
// again on every call, no cached width helps. Next to it, KDE's KMessageWidget asked the
// same (when KF5WidgetsAddons is installed), with the same text, font and actions.
// Times are per call.

#include <qt_halvo/widgets/window/notification_widget.h>

#include <QtTest/QtTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QStyle>
#include <QtWidgets/QVBoxLayout>

#ifdef QT_HALVO_HAVE_KMESSAGEWIDGET
#include <KMessageWidget>
#endif

using OrvantaQT::NotificationType;
using OrvantaQT::NotificationWidget;

namespace {

enum class Kind { Notification, KdeMessage };

const QString kText = QStringLiteral(
    "The library could not reach the server for the last three synchronisations, so the changes "
    "you made on this computer since Monday are kept here only. <a href=\"https://example.org/help\">Read "
    "how to check the connection</a>, or keep working: everything is sent as soon as the server answers once again.");

QFont BenchFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    return font;
}

// Widths from 240 to 1,039 pixels in turn: never one of the last few asked.
int NextWidth()
{
    static int step = 0;
    return 240 + step++ % 800;
}

} // namespace

Q_DECLARE_METATYPE(Kind)

class BenchNotificationWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void heightForWidth_data();
    void heightForWidth();
};

void BenchNotificationWidget::initTestCase()
{
    qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_DISCARD_LOGGING_LIBRARY);
    qInfo("text of %d characters, style %s, platform %s", kText.size(),
          qPrintable(QApplication::style()->objectName()), qPrintable(QGuiApplication::platformName()));
}

void BenchNotificationWidget::heightForWidth_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<int>("actions");
    for (const int actions : {0, 2}) {
        const QByteArray with = actions ? QByteArrayLiteral(", two actions") : QByteArrayLiteral(", no actions");
        QTest::newRow(QByteArrayLiteral("NotificationWidget") + with) << Kind::Notification << actions;
#ifdef QT_HALVO_HAVE_KMESSAGEWIDGET
        QTest::newRow(QByteArrayLiteral("KMessageWidget (peer)") + with) << Kind::KdeMessage << actions;
#endif
    }
}

void BenchNotificationWidget::heightForWidth()
{
    QFETCH(Kind, kind);
    QFETCH(int, actions);
    QWidget window;
    window.setFont(BenchFont());
    auto* layout = new QVBoxLayout(&window);
    QAction retry(QStringLiteral("Retry")), details(QStringLiteral("Details"));
    QWidget* widget = nullptr;
    if (kind == Kind::Notification) {
        auto* notification = new NotificationWidget(NotificationType::Warning, kText);
        if (actions > 0)
            notification->AddAction(&retry), notification->AddAction(&details);
        notification->show();
        widget = notification;
    } else {
#ifdef QT_HALVO_HAVE_KMESSAGEWIDGET
        auto* message = new KMessageWidget(kText);
        message->setMessageType(KMessageWidget::Warning);
        message->setWordWrap(true);
        if (actions > 0)
            message->addAction(&retry), message->addAction(&details);
        widget = message;
#endif
    }
    QVERIFY(widget);
    layout->addWidget(widget);
    layout->addStretch();
    window.resize(600, 400);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_VERIFY(widget->height() > 40);

    int total = 0;
    QBENCHMARK {
        total += widget->heightForWidth(NextWidth());
    }
    QVERIFY(total > 0);
    // Qt Test runs the function again until the measurement settles: the heights once.
    static QSet<QByteArray> reported;
    if (!reported.contains(QTest::currentDataTag())) {
        reported.insert(QTest::currentDataTag());
        qInfo("height at 240 px %d, at 600 px %d", widget->heightForWidth(240), widget->heightForWidth(600));
    }
}

QTEST_MAIN(BenchNotificationWidget)
#include "bench_notification_widget.moc"
