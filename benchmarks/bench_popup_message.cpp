// Toasts over an 800 x 600 window holding a form of 30 widgets, on a real X server.
//
// A burst of 1,000 posts to the window's queue: distinct messages (three get toasts, the
// rest wait as plain entries) and one message 1,000 times (one toast, counted). Each
// iteration starts from an empty queue: the burst, then the queue emptied and the toasts
// closed at once. burstAlone() times the two parts apart by hand over 50 rounds: the
// first burst in a new window, then the median and maximum of the others.
//
// Frames with three toasts half-way through their fade-in (the opacity effect on, the
// animations held still): the frame a fade makes (the toasts updated, then the window's
// paint pass of that region, flushed to the X server), the window's repaint() (all of it
// painted and flushed now) and the window rendered into an image; next to the same with
// the toasts at rest and with no toast.

#include <qt_halvo/widgets/window/popup_message.h>
#include <qt_halvo/widgets/window/popup_message_queue.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QPropertyAnimation>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsEffect>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

#include <algorithm>

using OrvantaQT::NotificationType;
using OrvantaQT::PopupMessage;
using OrvantaQT::PopupMessageQueue;

namespace {

constexpr int kBurst = 1000;

// An 800 × 600 window with a form of 10 rows of a label, a field and a button (30
// widgets), shown, and its queue of messages.
struct FormWindow
{
    QWidget window;
    PopupMessageQueue* queue = nullptr;

    FormWindow()
    {
        window.setFixedSize(800, 600);
        auto* grid = new QGridLayout(&window);
        for (int row = 0; row < 10; ++row) {
            grid->addWidget(new QLabel(QStringLiteral("Field %1").arg(row + 1)), row, 0);
            grid->addWidget(new QLineEdit(QStringLiteral("value of field %1").arg(row + 1)), row, 1);
            grid->addWidget(new QPushButton(QStringLiteral("Change %1").arg(row + 1)), row, 2);
        }
        window.show();
        if (QTest::qWaitForWindowExposed(&window))
            queue = PopupMessageQueue::ForWindow(&window);
    }
};

QStringList Texts(bool identical)
{
    QStringList texts;
    for (int i = 0; i < kBurst; ++i)
        texts << (identical ? QStringLiteral("The connection was lost; retrying")
                            : QStringLiteral("Message number %1 of the burst").arg(i + 1));
    return texts;
}

void Burst(PopupMessageQueue* queue, const QStringList& texts)
{
    for (const QString& text : texts)
        queue->Post(NotificationType::Warning, text);
}

// Back to an empty queue: waiting messages dropped, toasts closed without their fade.
void Empty(PopupMessageQueue* queue)
{
    const QList<PopupMessage*> toasts = queue->VisibleToasts();
    queue->Clear();
    for (PopupMessage* toast : toasts)
        toast->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (queue->VisibleCount() + queue->WaitingCount() != 0)
        qFatal("the queue is not empty");
}

double Median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values[values.size() / 2];
}

} // namespace

class BenchPopupMessage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void burst_data();
    void burst();
    void burstAlone_data();
    void burstAlone();
    void frame_data();
    void frame();
};

void BenchPopupMessage::initTestCase()
{
    qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_DISCARD_LOGGING_LIBRARY);
    qInfo("style %s, platform %s", qPrintable(QApplication::style()->objectName()),
          qPrintable(QGuiApplication::platformName()));
}

void BenchPopupMessage::burst_data()
{
    QTest::addColumn<bool>("identical");
    QTest::newRow("1,000 distinct messages, then emptied") << false;
    QTest::newRow("1,000 identical messages, then emptied") << true;
}

void BenchPopupMessage::burst()
{
    QFETCH(bool, identical);
    FormWindow form;
    QVERIFY(form.queue);
    PopupMessageQueue* queue = form.queue;
    const QStringList texts = Texts(identical);
    Burst(queue, texts);
    QCOMPARE(queue->VisibleCount(), identical ? 1 : 3);
    QCOMPARE(queue->WaitingCount(), identical ? 0 : kBurst - 3);
    Empty(queue);
    QBENCHMARK {
        Burst(queue, texts);
        Empty(queue);
    }
}

void BenchPopupMessage::burstAlone_data()
{
    burst_data();
}

void BenchPopupMessage::burstAlone()
{
    QFETCH(bool, identical);
    FormWindow form;
    QVERIFY(form.queue);
    PopupMessageQueue* queue = form.queue;
    const QStringList texts = Texts(identical);
    QVector<double> bursts;
    QVector<double> empties;
    for (int round = 0; round < 50; ++round) {
        QElapsedTimer timer;
        timer.start();
        Burst(queue, texts);
        bursts << timer.nsecsElapsed() / 1e6;
        timer.restart();
        Empty(queue);
        empties << timer.nsecsElapsed() / 1e6;
    }
    const double first = bursts.takeFirst();
    qInfo("%s: the burst alone, first in a new window %.3f ms, then median %.3f ms, max %.3f ms; emptying "
          "median %.3f ms",
          QTest::currentDataTag(), first, Median(bursts), *std::max_element(bursts.cbegin(), bursts.cend()),
          Median(empties));
}

void BenchPopupMessage::frame_data()
{
    QTest::addColumn<int>("toasts");
    QTest::addColumn<bool>("fading");
    QTest::addColumn<QString>("paint"); // "fade frame", "repaint" or "render"
    QTest::newRow("3 toasts mid-fade, the fade's frame") << 3 << true << "fade frame";
    QTest::newRow("3 toasts at rest, the same region") << 3 << false << "fade frame";
    QTest::newRow("3 toasts mid-fade, window repaint()") << 3 << true << "repaint";
    QTest::newRow("no toast, window repaint()") << 0 << false << "repaint";
    QTest::newRow("3 toasts mid-fade, window render()") << 3 << true << "render";
    QTest::newRow("no toast, window render()") << 0 << false << "render";
}

void BenchPopupMessage::frame()
{
    QFETCH(int, toasts);
    QFETCH(bool, fading);
    QFETCH(QString, paint);
    FormWindow form;
    QVERIFY(form.queue);
    PopupMessageQueue* queue = form.queue;
    for (int i = 0; i < toasts; ++i)
        queue->Post(NotificationType::Type(i % 4), QStringLiteral("Toast number %1 says something short").arg(i + 1), 0);
    const QList<PopupMessage*> shown = queue->VisibleToasts();
    if (fading) {
        // Each fade held half-way.
        for (PopupMessage* toast : shown) {
            const auto animations = toast->findChildren<QPropertyAnimation*>();
            const auto fade = std::find_if(animations.begin(), animations.end(), [](QPropertyAnimation* animation) {
                return animation->propertyName() == "opacity";
            });
            QVERIFY(fade != animations.end());
            (*fade)->pause();
            (*fade)->setCurrentTime((*fade)->duration() / 2);
        }
    } else {
        QTRY_VERIFY(std::none_of(shown.begin(), shown.end(), [](PopupMessage* toast) {
            return toast->graphicsEffect() && toast->graphicsEffect()->isEnabled();
        }));
    }
    QTest::qWait(50);
    for (PopupMessage* toast : shown) {
        auto* effect = qobject_cast<QGraphicsOpacityEffect*>(toast->graphicsEffect());
        if (fading != (effect && effect->isEnabled() && effect->opacity() > 0.2 && effect->opacity() < 0.8))
            qFatal("the toast is not where the frame wants it");
    }

    if (paint == QLatin1String("fade frame")) {
        QBENCHMARK {
            for (PopupMessage* toast : shown)
                toast->update();
            QCoreApplication::sendPostedEvents(&form.window, QEvent::UpdateRequest);
        }
    } else if (paint == QLatin1String("repaint")) {
        QBENCHMARK {
            form.window.repaint();
        }
    } else {
        QImage image(form.window.size(), QImage::Format_ARGB32_Premultiplied);
        QBENCHMARK {
            form.window.render(&image);
        }
    }
}

QTEST_MAIN(BenchPopupMessage)
#include "bench_popup_message.moc"
