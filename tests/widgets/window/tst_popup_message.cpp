#include <qt_halvo/widgets/window/popup_message.h>
#include <qt_halvo/widgets/window/popup_message_queue.h>
#include "test_support.h"

using OrvantaQT::NotificationType;
using OrvantaQT::PopupMessage;
using OrvantaQT::PopupMessageQueue;

// A 640 x 480 window with a button in it, and its queue.
struct Window
{
    QWidget window;
    QPushButton* content = new QPushButton(QStringLiteral("Content"), &window);
    PopupMessageQueue* queue = PopupMessageQueue::ForWindow(&window);
    Window()
    {
        window.resize(640, 480);
        content->setGeometry(0, 0, 640, 480);
        window.setFont(TestSupport::TestFont());
        QCursor::setPos(1250, 1000); // off the window: no toast is hovered by chance
    }
    PopupMessage* Toast(quint64 id) const { return queue->Toast(id); }
};

static const QString kLong = QStringLiteral("The backup finished, but 3 files could not be read and were left out of it; "
                                            "see the log for their names.");

class TstPopupMessage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // One queue per window, a child of it, found from any widget in it.
    void oneQueuePerWindow()
    {
        Window one;
        QWidget other;
        QCOMPARE(PopupMessageQueue::ForWindow(one.content), one.queue);
        QCOMPARE(one.queue->parent(), &one.window);
        QCOMPARE(one.queue->Window(), &one.window);
        QVERIFY(PopupMessageQueue::ForWindow(&other) != one.queue);
        auto* window = new QWidget;
        QPointer<PopupMessageQueue> gone = PopupMessageQueue::ForWindow(window);
        delete window;
        QVERIFY(!gone);
    }

    void placesAndStacks_data()
    {
        QTest::addColumn<PopupMessage::Position>("position");
        QTest::addColumn<int>("horizontal"); // -1 left, 0 centre, 1 right
        QTest::addColumn<bool>("top");
        QTest::addColumn<int>("margin");
        QTest::addColumn<int>("spacing");
        QTest::newRow("top left, touching") << PopupMessage::TopLeft << -1 << true << 0 << 0;
        QTest::newRow("top right") << PopupMessage::TopRight << 1 << true << 12 << 8;
        QTest::newRow("bottom left") << PopupMessage::BottomLeft << -1 << false << 20 << 4;
        QTest::newRow("bottom right, no spacing") << PopupMessage::BottomRight << 1 << false << 6 << 0;
        QTest::newRow("top centre") << PopupMessage::TopCenter << 0 << true << 12 << 8;
        QTest::newRow("bottom centre") << PopupMessage::BottomCenter << 0 << false << 30 << 16;
    }
    // The newest toast nearest the edge, the older ones after it without overlapping, all
    // following the window's size, their own content and the queue's margin and spacing,
    // and inside the window also when it is too small for them.
    void placesAndStacks()
    {
        QFETCH(PopupMessage::Position, position);
        QFETCH(int, horizontal);
        QFETCH(bool, top);
        QFETCH(int, margin);
        QFETCH(int, spacing);
        Window place;
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        const quint64 first = place.queue->Post(NotificationType::Information, QStringLiteral("Saved"));
        // In its place at once, not gliding there.
        QCOMPARE(place.Toast(first)->geometry().topRight(), QPoint(640 - 12 - 1, 12));
        const quint64 second = place.queue->Post(NotificationType::Warning, kLong);
        const quint64 third = place.queue->Post(NotificationType::Error, QStringLiteral("Printer offline"));
        place.queue->SetPosition(position); // the toasts there go over
        const QList<PopupMessage*> toasts{place.Toast(third), place.Toast(second), place.Toast(first)};
        QCOMPARE(place.queue->VisibleToasts(), toasts);
        // Where each toast is against where it should be.
        int gap = 12;
        int between = 8;
        const auto misplaced = [&](const QSize& size) {
            QStringList wrong;
            int edge = top ? gap : size.height() - gap;
            for (PopupMessage* toast : toasts) {
                const QRect placed = toast->geometry();
                const int at = top ? placed.top() : placed.bottom() + 1;
                const int off = placed.center().x() - size.width() / 2;
                const int across = horizontal < 0 ? placed.left() - gap
                                   : horizontal > 0 ? size.width() - gap - placed.right() - 1
                                                    : qAbs(off) <= 1 ? 0 : off;
                if (at != edge || across != 0)
                    wrong << toast->GetText().left(10) + ": " + QString::number(at - edge) + ", " + QString::number(across);
                edge = top ? placed.bottom() + 1 + between : placed.top() - between;
                const QLabel* text = toast->findChild<QLabel*>("Text");
                if (text->height() < text->heightForWidth(text->width())
                    || toast->height() != toast->heightForWidth(toast->width())
                    || toast->width() > toast->sizeHint().width())
                    wrong << toast->GetText().left(10) + ": not its size";
            }
            return wrong.join("; ");
        };
        // At rest after the newer ones pushed them.
        QTRY_COMPARE(misplaced(QSize(640, 480)), QString());
        QVERIFY(toasts[1]->width() < 640 - 24 && toasts[1]->height() > toasts[0]->height()); // wrapped
        QVERIFY(toasts[2]->width() < toasts[1]->width()); // a short one on one line
        // Other margins and spacing take effect at once.
        place.queue->SetMargin(margin);
        place.queue->SetSpacing(spacing);
        std::tie(gap, between) = std::make_tuple(margin, spacing);
        QCOMPARE(misplaced(QSize(640, 480)), QString());
        QCOMPARE(place.queue->GetMargin() * 100 + place.queue->GetSpacing(), margin * 100 + spacing);
        // A toast whose content grows takes the room it needs, and the others make way.
        const int height = toasts[0]->height();
        toasts[0]->SetText(kLong);
        QTRY_VERIFY(toasts[0]->height() > height);
        QTRY_COMPARE(misplaced(QSize(640, 480)), QString());
        // The newest over the others and over content added later.
        auto* later = new QPushButton(QStringLiteral("Later"), &place.window);
        later->setGeometry(place.window.rect());
        later->show();
        for (PopupMessage* toast : toasts)
            QVERIFY(toast->isAncestorOf(place.window.childAt(toast->geometry().center())));
        place.window.resize(420, 360);
        QCOMPARE(place.window.size(), QSize(420, 360));
        QCOMPARE(misplaced(QSize(420, 360)), QString());
        // Too small for all: each inside as far as it goes, the newest over the others.
        place.window.resize(160, 90);
        QCOMPARE(place.window.size(), QSize(160, 90));
        for (PopupMessage* toast : toasts) {
            const QRect placed = toast->geometry();
            QVERIFY(placed.left() >= 0 && placed.top() >= 0);
            QVERIFY(placed.width() > 160 || placed.right() < 160);
            QVERIFY(placed.height() > 90 || placed.bottom() < 90);
        }
        const QRect inSight = toasts[0]->geometry() & place.window.rect();
        QVERIFY(toasts[0]->isAncestorOf(place.window.childAt(inSight.center())));
    }

    // At most three shown, the rest in order; a message posted again is counted into its
    // toast (also while it waits) and its timeout starts again.
    void waitsAndCounts()
    {
        Window place;
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        TestSupport::SignalLog log(place.queue, {"MessageShown(quint64)", "MessageRemoved(quint64)",
                                                 "CountsChanged(int, int)"});
        QVector<quint64> ids;
        for (const char* text : {"one", "two", "three", "four", "five"})
            ids << place.queue->Post(NotificationType::Information, QString::fromLatin1(text), 800);
        QCOMPARE(ids.size(), 5);
        QVERIFY(ids[0] > 0 && std::is_sorted(ids.begin(), ids.end()));
        const QString first = QString::number(ids[0]);
        QCOMPARE(log.Take(), QStringList({"MessageShown(" + first + ")", "CountsChanged(1, 0)",
                                          "MessageShown(" + QString::number(ids[1]) + ")", "CountsChanged(2, 0)",
                                          "MessageShown(" + QString::number(ids[2]) + ")", "CountsChanged(3, 0)",
                                          "CountsChanged(3, 1)", "CountsChanged(3, 2)"}));
        QVERIFY(!place.Toast(ids[3]) && place.queue->Contains(ids[3]));
        QCOMPARE(place.window.findChildren<PopupMessage*>().size(), 3);

        // Counted: the same toast, "×2", the full timeout again.
        QPointer<PopupMessage> two = place.Toast(ids[1]);
        QTest::qWait(300);
        QVERIFY(two->GetRemainingTime() < 600);
        QCOMPARE(place.queue->Post(NotificationType::Information, QStringLiteral("two"), 800), ids[1]);
        QVERIFY(two->GetRemainingTime() > 700);
        QCOMPARE(two->findChild<QLabel*>("Count")->text(), QString("×2"));
        QVERIFY(two->findChild<QLabel*>("Count")->isVisible());
        QVERIFY(!place.Toast(ids[0])->findChild<QLabel*>("Count")->isVisible());
        // Another type is another message; a waiting one is counted where it waits.
        QCOMPARE(place.queue->Post(NotificationType::Error, QStringLiteral("five"), 800), ids[4] + 1);
        for (int i = 0; i < 2; ++i)
            QCOMPARE(place.queue->Post(NotificationType::Information, QStringLiteral("five"), 800), ids[4]);
        QCOMPARE(place.queue->WaitingCount(), 3);
        log.Take();

        // Closing one lets the next waiting one in, nearest the edge.
        QVERIFY(place.queue->Remove(ids[0]));
        QVERIFY(place.Toast(ids[0])->IsClosing());
        QTRY_VERIFY(!place.queue->Contains(ids[0]));
        QTRY_COMPARE(place.queue->VisibleToasts().first(), place.Toast(ids[3]));
        QCOMPARE(log.Take(), QStringList({"MessageRemoved(" + first + ")", "CountsChanged(2, 3)",
                                          "MessageShown(" + QString::number(ids[3]) + ")", "CountsChanged(3, 2)"}));
        // Dropping a waiting one; the counted one shows its count when it comes.
        QVERIFY(place.queue->Remove(ids[4] + 1));
        QVERIFY(!place.queue->Remove(ids[0]));
        QCOMPARE(log.Take(), QStringList({"MessageRemoved(" + QString::number(ids[4] + 1) + ")", "CountsChanged(3, 1)"}));
        place.queue->SetMaxVisible(4);
        QCOMPARE(place.queue->VisibleCount(), 4);
        QCOMPARE(place.Toast(ids[4])->GetCount(), 3);
        QCOMPARE(place.Toast(ids[4])->findChild<QLabel*>("Count")->text(), QString("×3"));
        // A lower maximum waits for toasts to close.
        place.queue->SetMaxVisible(1);
        QCOMPARE(place.queue->VisibleCount(), 4);
        QCOMPARE(place.queue->Post(NotificationType::Positive, QStringLiteral("six")) > ids[4], true);
        QCOMPARE(place.queue->WaitingCount(), 1);
        // Timeouts close them all, the one waiting last.
        QTRY_COMPARE_WITH_TIMEOUT(place.queue->WaitingCount(), 0, 3000);
        QCOMPARE(place.queue->VisibleCount(), 1);
        QVERIFY(!two);
    }

    void pausesTheTimeout_data()
    {
        QTest::addColumn<bool>("hover"); // else the window is hidden for a while
        QTest::newRow("while hovered") << true;
        QTest::newRow("while the window is hidden") << false;
    }
    // The timeout stops where it is and goes on with what was left.
    void pausesTheTimeout()
    {
        QFETCH(bool, hover);
        Window place;
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        QPointer<PopupMessage> toast = place.Toast(place.queue->Post(NotificationType::Warning, QStringLiteral("Low battery"), 1500));
        QSignalSpy closed(toast.data(), &PopupMessage::Closed);
        QVERIFY(toast->IsCountingDown());
        QTest::qWait(200);
        if (hover) {
            QTest::mouseMove(toast, QPoint(4, toast->height() / 2));
            QTRY_VERIFY(!toast->IsCountingDown());
        } else {
            place.window.hide();
            QVERIFY(!toast->IsCountingDown());
        }
        const int left = toast->GetRemainingTime();
        QVERIFY(left > 200 && left <= 1300);
        QTest::qWait(800);
        QCOMPARE(toast->GetRemainingTime(), left);
        QVERIFY(toast && !toast->IsClosing());
        QElapsedTimer resumed;
        resumed.start();
        if (hover)
            QTest::mouseMove(&place.window, QPoint(5, 470));
        else
            QVERIFY(TestSupport::ShowAndWait(&place.window));
        QTRY_VERIFY(toast->IsCountingDown());
        QTRY_VERIFY(!toast);
        QVERIFY(resumed.elapsed() >= left);
        QCOMPARE(closed.count(), 1);
    }

    void staysUntilClosed_data()
    {
        QTest::addColumn<int>("timeout");
        QTest::newRow("zero") << 0;
        QTest::newRow("negative") << -5;
    }
    void staysUntilClosed()
    {
        QFETCH(int, timeout);
        Window place;
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        QPointer<PopupMessage> toast = place.Toast(place.queue->Post(NotificationType::Error, QStringLiteral("Disk full"), timeout));
        QSignalSpy closed(toast.data(), &PopupMessage::Closed);
        QCOMPARE(toast->GetRemainingTime(), -1);
        QTest::qWait(400);
        QVERIFY(toast && toast->isVisible() && !toast->IsCountingDown());
        QTest::mouseClick(toast->findChild<QToolButton*>("CloseButton"), Qt::LeftButton);
        QTRY_VERIFY(!toast);
        QCOMPARE(closed.count(), 1);
        QCOMPARE(place.queue->VisibleCount(), 0);
    }

    // Its parts, by object and accessible names; the action's button follows the action,
    // and triggering the action closes the toast.
    void actionAndParts()
    {
        Window place;
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        QAction undo(QStringLiteral("Undo"));
        QStringList order;
        connect(&undo, &QAction::triggered, this, [&order] { order << "triggered"; });
        QPointer<PopupMessage> toast = place.Toast(
            PopupMessage::Post(place.content, NotificationType::Positive, QStringLiteral("Deleted"), 0, &undo));
        QStringList shown;
        for (QWidget* part : toast->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (part->accessibleName() == "PopupMessage_" + part->objectName())
                shown << part->objectName() + (part->isVisible() ? "" : "(hidden)");
        }
        QCOMPARE(shown.join(' '), QString("Icon Text Count(hidden) ActionButton CloseButton"));
        QCOMPARE(toast->property("NotificationType").toString(), QString("Positive"));
        QCOMPARE(toast->accessibleDescription(), QString("Deleted"));
        auto* button = toast->findChild<QPushButton*>("ActionButton");
        QCOMPARE(button->text(), QString("Undo"));
        undo.setEnabled(false);
        QVERIFY(!button->isEnabled());
        undo.setEnabled(true);
        undo.setText(QStringLiteral("Restore"));
        QCOMPARE(button->text(), QString("Restore"));
        toast->SetClosable(false);
        QVERIFY(toast->findChild<QToolButton*>("CloseButton")->isHidden());
        connect(toast, &PopupMessage::ActionTriggered, this, [&order] { order << "ActionTriggered"; });
        connect(toast, &PopupMessage::Closed, this, [&order] { order << "Closed"; });
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(toast->IsClosing());
        QTRY_VERIFY(!toast);
        QCOMPARE(order, TestSupport::Words("triggered ActionTriggered Closed"));

        auto* gone = new QAction(QStringLiteral("Open"));
        toast = place.Toast(place.queue->Post(NotificationType::Information, QStringLiteral("Downloaded"), 0, gone));
        QVERIFY(toast->findChild<QPushButton*>("ActionButton")->isVisible());
        delete gone;
        QVERIFY(toast->findChild<QPushButton*>("ActionButton")->isHidden());
    }

    void paintsItsType_data()
    {
        QTest::addColumn<NotificationType::Type>("type");
        for (int type = NotificationType::Information; type <= NotificationType::Error; ++type)
            QTest::newRow(qPrintable(NotificationType::Name(NotificationType::Type(type)))) << NotificationType::Type(type);
    }
    // The type's default colour, unless a style sheet rule on "NotificationType" styles it;
    // a change of type takes the rule of the new one.
    void paintsItsType()
    {
        QFETCH(NotificationType::Type, type);
        Window place;
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        PopupMessage* toast = place.Toast(place.queue->Post(type, QStringLiteral("Colours"), 0));
        const QPoint inside(6, toast->height() - 4); // below the icon, inside the rounded corner
        const auto colour = [&] { return TestSupport::Render(toast).pixelColor(inside).name(QColor::HexArgb); };
        QTRY_COMPARE(colour(), NotificationType::DefaultColor(type).name(QColor::HexArgb));
        QCOMPARE(toast->findChild<QLabel*>("Text")->palette().color(QPalette::WindowText), QColor(0x1f, 0x23, 0x28));
        place.window.setStyleSheet(QStringLiteral("OrvantaQT--PopupMessage[NotificationType=\"Error\"] "
                                                  "{ background: rgb(10, 20, 30); } "
                                                  "OrvantaQT--PopupMessage[NotificationType=\"Error\"] QLabel "
                                                  "{ color: white; }"));
        const bool error = type == NotificationType::Error;
        QCOMPARE(colour(), (error ? QColor(10, 20, 30) : NotificationType::DefaultColor(type)).name(QColor::HexArgb));
        toast->SetType(NotificationType::Error);
        QCOMPARE(colour(), QColor(10, 20, 30).name(QColor::HexArgb));
        QCOMPARE(toast->findChild<QLabel*>("Text")->palette().color(QPalette::WindowText), QColor(Qt::white));
        QCOMPARE(toast->accessibleName(), NotificationType::DisplayName(NotificationType::Error));
    }

    void fades_data()
    {
        QTest::addColumn<bool>("animated");
        QTest::newRow("animated") << true;
        QTest::newRow("animations off") << false;
    }
    // In and out through an opacity effect, switched off at rest; at once without animations,
    // the stack too.
    void fades()
    {
        QFETCH(bool, animated);
        Window place;
        TestSupport::StillStyle still;
        if (!animated)
            place.window.setStyle(&still);
        const quint64 older = place.queue->Post(NotificationType::Information, QStringLiteral("Older"), 0);
        const quint64 newer = place.queue->Post(NotificationType::Information, QStringLiteral("Newer"), 0);
        QPointer<PopupMessage> toast = place.Toast(newer);
        PopupMessage* other = place.Toast(older);
        if (!animated)
            toast->setStyle(&still);
        QVERIFY(TestSupport::ShowAndWait(&place.window)); // posted before: they come with the window
        auto* effect = qobject_cast<QGraphicsOpacityEffect*>(toast->graphicsEffect());
        QVERIFY(effect);
        QCOMPARE(effect->isEnabled(), animated);
        QTRY_VERIFY(!effect->isEnabled());
        if (animated)
            QCOMPARE(effect->opacity(), 1.0);
        const int top = toast->y();
        QSignalSpy closed(toast.data(), &PopupMessage::Closed);
        QVector<int> ys;
        QTimer sampler;
        connect(&sampler, &QTimer::timeout, this, [&] { ys << other->y(); });
        toast->Dismiss();
        if (animated) {
            QVERIFY(effect->isEnabled() && closed.isEmpty());
            QTRY_VERIFY(effect->opacity() < 0.8);
            QTRY_COMPARE(closed.count(), 1);
            sampler.start(10);
        } else {
            QCOMPARE(closed.count(), 1);
        }
        QTRY_COMPARE(other->y(), top); // moves into the gap
        sampler.stop();
        if (animated)
            QVERIFY(ys.size() > 2 && ys.first() > top && TestSupport::IsMonotonic(ys, false));
        QTRY_VERIFY(!toast);
        QCOMPARE(closed.count(), 1);
    }
    // A toast on its way to a new place goes at once to where the resized window wants it.
    void resizeEndsAGlide()
    {
        Window place;
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        PopupMessage* older = place.Toast(place.queue->Post(NotificationType::Information, QStringLiteral("Older"), 0));
        const quint64 newer = place.queue->Post(NotificationType::Information, QStringLiteral("Newer"), 0);
        QTRY_COMPARE(older->y(), 12 + place.Toast(newer)->height() + 8);
        const int from = older->y();
        place.Toast(newer)->close();
        QTRY_VERIFY(older->y() < from);
        QVERIFY(older->y() > 12);
        place.window.resize(520, 400);
        QCOMPARE(place.window.size(), QSize(520, 400));
        const QPoint there(520 - 12 - older->width(), 12);
        QCOMPARE(older->pos(), there);
        QTest::qWait(300);
        QCOMPARE(older->pos(), there);
    }

    void burstOfAThousand_data()
    {
        QTest::addColumn<bool>("identical");
        QTest::newRow("distinct") << false;
        QTest::newRow("identical") << true;
    }
    // Waiting messages are entries, not widgets; clearing drops them and closes the toasts.
    void burstOfAThousand()
    {
        QFETCH(bool, identical);
        Window place;
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        QSignalSpy removed(place.queue, &PopupMessageQueue::MessageRemoved);
        for (int i = 0; i < 1000; ++i)
            place.queue->Post(NotificationType::Information, identical ? QStringLiteral("Same") : QString::number(i));
        QCOMPARE(place.queue->VisibleCount(), identical ? 1 : 3);
        QCOMPARE(place.queue->WaitingCount(), identical ? 0 : 997);
        QCOMPARE(place.window.findChildren<PopupMessage*>().size(), identical ? 1 : 3);
        if (identical)
            QCOMPARE(place.queue->VisibleToasts().first()->findChild<QLabel*>("Count")->text(), QString("×1000"));
        else
            QCOMPARE(place.queue->VisibleToasts().first()->GetText(), QString("2"));
        QTest::qWait(20); // the event loop goes on
        place.queue->Clear();
        QCOMPARE(place.queue->WaitingCount(), 0);
        QTRY_COMPARE(place.queue->VisibleCount(), 0);
        QCOMPARE(removed.count(), identical ? 1 : 1000);
        QTRY_COMPARE(place.window.findChildren<PopupMessage*>().size(), 0);
    }

    void lifetime_data()
    {
        QTest::addColumn<QString>("end");
        QTest::newRow("window closed while fading out") << "close window";
        QTest::newRow("window deleted while fading in") << "delete window";
        QTest::newRow("toast deleted by the host while shown") << "delete toast";
        QTest::newRow("own toast deleted by the host while waiting") << "delete waiting";
        QTest::newRow("own toast removed while waiting") << "remove waiting";
        QTest::newRow("queue deleted") << "delete queue";
    }
    // Whatever goes first, Closed() comes once for each toast that was made and nothing is
    // left behind.
    void lifetime()
    {
        QFETCH(QString, end);
        auto* place = new Window;
        place->queue->SetMaxVisible(1);
        QVERIFY(TestSupport::ShowAndWait(&place->window));
        QPointer<PopupMessageQueue> queue = place->queue;
        QPointer<PopupMessage> shown = place->Toast(queue->Post(NotificationType::Warning, QStringLiteral("First"), 0));
        QPointer<PopupMessage> own = new PopupMessage(NotificationType::Positive, QStringLiteral("Own"));
        const quint64 ownId = queue->Post(own);
        QCOMPARE(queue->Toast(ownId), own.data());
        QVERIFY(own->isHidden() && own->parent() == &place->window);
        QSignalSpy shownClosed(shown.data(), &PopupMessage::Closed);
        QSignalSpy ownClosed(own.data(), &PopupMessage::Closed);
        if (end == "close window") {
            shown->Dismiss();
            QTest::qWait(50);
            place->window.close();
            QTRY_VERIFY(!shown);
            QTRY_COMPARE(queue->VisibleToasts(), QList<PopupMessage*>({own.data()})); // over the closed window
            QVERIFY(!own->IsCountingDown());
            QVERIFY(TestSupport::ShowAndWait(&place->window));
            QTRY_VERIFY(own->isVisible());
        } else if (end == "delete window") {
            QTest::qWait(50);
            delete place;
            place = nullptr;
            QVERIFY(!queue && !shown && !own);
            QTest::qWait(50);
        } else if (end == "delete toast") {
            delete shown;
            QCOMPARE(queue->VisibleCount(), 0);
            QTRY_COMPARE(queue->VisibleToasts(), QList<PopupMessage*>({own.data()}));
        } else if (end == "delete waiting" || end == "remove waiting") {
            if (end == "delete waiting")
                delete own;
            else
                QVERIFY(queue->Remove(ownId));
            QCOMPARE(queue->WaitingCount(), 0);
            QVERIFY(!queue->Contains(ownId));
            QTRY_VERIFY(!own); // taken over: deleted with the message
        } else if (end == "delete queue") {
            delete queue;
            QVERIFY(!own); // taken over while waiting
            QVERIFY(shown && shown->isVisible());
            shown->Dismiss();
            QTRY_VERIFY(!shown);
        }
        delete place;
        QVERIFY(!shown && !own);
        QCOMPARE(shownClosed.count(), 1);
        QCOMPARE(ownClosed.count(), 1);
    }

    void badInput()
    {
        Window place;
        const LogCapture::Mark mark;
        QVERIFY(!PopupMessageQueue::ForWindow(nullptr));
        QCOMPARE(PopupMessage::Post(nullptr, NotificationType::Error, QStringLiteral("Lost")), quint64(0));
        auto* doomed = new QWidget;
        QVERIFY(PopupMessage::Post(doomed, NotificationType::Information, QStringLiteral("Before")) > 0);
        QPointer<QWidget> deleted = doomed;
        quint64 fromDestroyed = 1;
        connect(doomed, &QObject::destroyed, this, [&] {
            fromDestroyed = PopupMessage::Post(doomed, NotificationType::Error, QStringLiteral("Late"));
        });
        delete doomed;
        QCOMPARE(fromDestroyed, quint64(0));
        QCOMPARE(PopupMessage::Post(deleted, NotificationType::Error, QStringLiteral("Lost")), quint64(0));
        QCOMPARE(place.queue->Post(NotificationType::Information, QString()), quint64(0));
        QCOMPARE(place.queue->Post(NotificationType::Information, QStringLiteral("  \n")), quint64(0));
        QCOMPARE(place.queue->VisibleCount() + place.queue->WaitingCount(), 0);
        const quint64 odd = place.queue->Post(static_cast<NotificationType::Type>(9), QStringLiteral("Odd"));
        QCOMPARE(place.Toast(odd)->GetType(), NotificationType::Information);
        place.queue->SetMaxVisible(0);
        place.queue->SetMargin(-1);
        place.queue->SetSpacing(-2);
        place.queue->SetPosition(static_cast<PopupMessage::Position>(7));
        place.Toast(odd)->SetCount(0);
        place.Toast(odd)->SetType(static_cast<NotificationType::Type>(-1));
        QCOMPARE(place.queue->Post(nullptr), quint64(0));
        QCOMPARE(place.queue->Post(place.Toast(odd)), quint64(0));
        PopupMessage lone(static_cast<NotificationType::Type>(4), QStringLiteral("Alone"));
        QCOMPARE(lone.GetType(), NotificationType::Information);
        QCOMPARE(mark.Texts(),
                 QStringList({"3 PopupMessageQueue: no window to show messages over; nothing is shown",
                              "3 PopupMessageQueue: no window to show messages over; nothing is shown",
                              "3 PopupMessageQueue: the window is being deleted; nothing is shown",
                              "3 PopupMessageQueue: no window to show messages over; nothing is shown",
                              "3 PopupMessageQueue: a message without text is not shown",
                              "3 PopupMessageQueue: a message without text is not shown",
                              "3 PopupMessageQueue: a message of unknown type 9 is shown as Information",
                              "3 PopupMessageQueue: at most 0 toasts visible is ignored; at least one is",
                              "3 PopupMessageQueue: a negative margin (-1) is ignored",
                              "3 PopupMessageQueue: a negative spacing (-2) is ignored",
                              "3 PopupMessageQueue: an unknown position 7 is ignored",
                              "3 PopupMessage: a count of 0 is ignored; it is at least 1",
                              "3 PopupMessage: an unknown type -1 is ignored",
                              "3 PopupMessageQueue: no toast to post",
                              "3 PopupMessageQueue: a toast already queued or closing is not posted again",
                              "3 PopupMessage: an unknown type 4 is shown as Information"}));
        QCOMPARE(place.queue->GetMaxVisible(), 3);
        QCOMPARE(place.queue->GetMargin(), 12);
        QCOMPARE(place.queue->GetSpacing(), 8);
        QCOMPARE(place.queue->GetPosition(), PopupMessage::TopRight);
    }
};

QTEST_MAIN(TstPopupMessage)
#include "tst_popup_message.moc"
