#include <qt_halvo/widgets/window/notification_widget.h>

#include "accessibility_recorder.h"
#include "test_support.h"

using OrvantaQT::NotificationType;
using OrvantaQT::NotificationWidget;

namespace {

// 300 characters, with a link in the middle.
const QString kLongText = QStringLiteral(
    "The library could not reach the server for the last three synchronisations, so the changes "
    "you made on this computer since Monday are kept here only. <a href=\"https://example.org/help\">Read "
    "how to check the connection</a>, or keep working: everything is sent as soon as the server answers once again.");

// A window whose column holds the notification over a panel that shows where it ends.
struct Host
{
    QWidget window;
    QVBoxLayout* column = new QVBoxLayout(&window);
    NotificationWidget* notification = new NotificationWidget;
    QWidget* below = new QWidget;
    explicit Host(int width = 420)
    {
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        column->setSizeConstraint(QLayout::SetNoConstraint); // any width, even under the minimum
        column->addWidget(notification);
        column->addWidget(below, 1);
        notification->setFont(TestSupport::TestFont());
        window.resize(width, 400);
    }
    QLabel* Text() const { return notification->findChild<QLabel*>(QStringLiteral("Text")); }
    QWidget* Part(const char* name) const { return notification->findChild<QWidget*>(QLatin1String(name)); }
    // The parts that show, in the notification's coordinates.
    QVector<QRect> VisibleParts() const
    {
        QVector<QRect> parts;
        for (QWidget* part : notification->findChildren<QWidget*>()) {
            if (part->isVisible() && part->objectName() != QLatin1String("Content")
                && part->parentWidget()->objectName() == QLatin1String("Content"))
                parts << QRect(part->mapTo(notification, QPoint(0, 0)), part->size());
        }
        return parts;
    }
    // Parts that stick out of the notification or overlap, and uneven margins above and
    // below them; empty when all is well.
    QString Misplaced() const
    {
        const QVector<QRect> parts = VisibleParts();
        QStringList wrong;
        int top = notification->height(), bottom = 0;
        for (int i = 0; i < parts.size(); ++i) {
            if (!notification->rect().contains(parts[i]))
                wrong << QStringLiteral("part %1 sticks out").arg(i);
            for (int j = i + 1; j < parts.size(); ++j) {
                if (parts[i].intersects(parts[j]))
                    wrong << QStringLiteral("parts %1 and %2 overlap").arg(i).arg(j);
            }
            top = qMin(top, parts[i].top());
            bottom = qMax(bottom, parts[i].bottom() + 1);
        }
        if (notification->height() - bottom != top)
            wrong << QStringLiteral("margins %1 and %2").arg(top).arg(notification->height() - bottom);
        return wrong.join(QStringLiteral(", "));
    }
    // Shown but not mapped: resizes and layouts happen at once (LayOut()).
    void ShowUnmapped()
    {
        window.setAttribute(Qt::WA_DontShowOnScreen);
        notification->show();
        window.show();
    }
    // The window at this width, tall enough for any height, laid out now.
    void LayOut(int width)
    {
        window.resize(width, 1600);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        column->activate();
    }
};

struct Alert
{
    QString name;
    QString description;
    QAccessible::Role role;
};
QVector<Alert> g_alerts;

void RecordAlerts(QAccessibleEvent* event)
{
    if (event->type() != QAccessible::Alert)
        return;
    QAccessibleInterface* alert = event->accessibleInterface();
    QVERIFY(alert);
    g_alerts.append(Alert{alert->text(QAccessible::Name), alert->text(QAccessible::Description), alert->role()});
}

QStringList AlertLines()
{
    QStringList lines;
    for (const Alert& alert : std::exchange(g_alerts, {}))
        lines << QStringLiteral("%1|%2|%3").arg(alert.name, alert.description).arg(alert.role);
    return lines;
}

} // namespace

class TstNotificationWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }

    void partsAndTypes_data()
    {
        QTest::addColumn<NotificationType::Type>("type");
        for (const auto type : {NotificationType::Information, NotificationType::Positive, NotificationType::Warning,
                                NotificationType::Error})
            QTest::newRow(qPrintable(NotificationType::Name(type))) << type;
    }
    // The style property and the icon follow the type; a style sheet colours by the
    // property, and without one the type's own colour is painted.
    void partsAndTypes()
    {
        QFETCH(NotificationType::Type, type);
        Host host;
        NotificationWidget& notification = *host.notification;
        for (const char* role : {"Content", "Icon", "Text", "CloseButton"})
            QCOMPARE(host.Part(role)->accessibleName(), QStringLiteral("NotificationWidget_") + QLatin1String(role));
        QCOMPARE(notification.GetType(), NotificationType::Information);
        notification.SetText(QStringLiteral("Saved."));
        notification.SetType(type);
        QCOMPARE(notification.property("NotificationType").toString(), NotificationType::Name(type));
        notification.show();
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        const auto iconImage = [&] {
            return host.notification->findChild<QLabel*>(QStringLiteral("Icon"))->pixmap(Qt::ReturnByValue).toImage();
        };
        const int extent = notification.style()->pixelMetric(QStyle::PM_ToolBarIconSize);
        QCOMPARE(iconImage(), NotificationType::Icon(type, &notification).pixmap(extent, extent).toImage());
        QPixmap red(64, 64);
        red.fill(Qt::red);
        notification.SetIcon(QIcon(red));
        QCOMPARE(iconImage().pixelColor(extent / 2, extent / 2), QColor(Qt::red));
        notification.SetIcon(QIcon());
        QCOMPARE(iconImage(), NotificationType::Icon(type, &notification).pixmap(extent, extent).toImage());

        const QPoint margin(notification.width() / 2, notification.height() - 3);
        QCOMPARE(TestSupport::Render(&notification).pixelColor(margin), NotificationType::DefaultColor(type));
        QVERIFY(TestSupport::Render(&notification).pixelColor(0, 0).alpha() < 128); // a rounded corner
        host.window.setStyleSheet(QStringLiteral("OrvantaQT--NotificationWidget[NotificationType=\"Warning\"]"
                                                 " { background: #102030; }"));
        const QColor styled = type == NotificationType::Warning ? QColor(0x10, 0x20, 0x30) : NotificationType::DefaultColor(type);
        QCOMPARE(TestSupport::Render(&notification).pixelColor(margin), styled);
        notification.SetType(NotificationType::Warning);
        QCOMPARE(TestSupport::Render(&notification).pixelColor(margin), QColor(0x10, 0x20, 0x30));
    }

    void heightForWidth_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("actions");
        QTest::addColumn<int>("width");
        QTest::addColumn<bool>("buttonsBeside");
        QTest::addColumn<int>("minimumLines");
        QTest::newRow("short, buttons beside") << "Saved." << 2 << 600 << true << 1;
        QTest::newRow("short, buttons below") << "Saved to the shared folder." << 2 << 300 << false << 1;
        QTest::newRow("long, no buttons, wide") << kLongText << 0 << 900 << false << 3;
        QTest::newRow("long, buttons in a row") << kLongText << 2 << 480 << false << 5;
        QTest::newRow("long, buttons in two rows") << kLongText << 2 << 210 << false << 14;
    }
    // A layout parent gives it exactly the height it asks at its width, and that height
    // holds the text at its full wrapped height, the buttons and even margins.
    void heightForWidth()
    {
        QFETCH(QString, text);
        QFETCH(int, actions);
        QFETCH(int, width);
        QFETCH(bool, buttonsBeside);
        QFETCH(int, minimumLines);
        Host host(width);
        QAction retry(QStringLiteral("Retry")), details(QStringLiteral("Show the details"));
        if (actions > 0)
            host.notification->AddAction(&retry);
        if (actions > 1)
            host.notification->AddAction(&details);
        host.notification->SetText(text);
        host.ShowUnmapped();
        host.LayOut(width);
        NotificationWidget& notification = *host.notification;
        QCOMPARE(notification.height(), notification.heightForWidth(width));
        QCOMPARE(host.below->y(), notification.height());
        QLabel* label = host.Text();
        QCOMPARE(label->height(), label->heightForWidth(label->width()));
        QVERIFY(label->height() / label->fontMetrics().lineSpacing() >= minimumLines);

        QCOMPARE(host.VisibleParts().size(), 3 + actions);
        QCOMPARE(host.Misplaced(), QString());
        const QRect textRect(label->mapTo(&notification, QPoint(0, 0)), label->size());
        QVector<QRect> rows;
        for (QPushButton* button : notification.ActionButtons()) {
            const QRect rect(button->mapTo(&notification, QPoint(0, 0)), button->size());
            QCOMPARE(rect.center().y() >= textRect.top() && rect.center().y() <= textRect.bottom(), buttonsBeside);
            QCOMPARE(rect.top() > textRect.bottom(), !buttonsBeside);
            QVERIFY(rect.left() >= textRect.left() && rect.right() < host.Part("CloseButton")->x()); // in the text's column
            rows << rect;
        }
        if (actions == 2 && width < 300)
            QVERIFY2(rows[1].top() > rows[0].bottom(), "a row for each button");
    }

    void sizeHints_data()
    {
        QTest::addColumn<int>("actions");
        QTest::newRow("no buttons") << 0;
        QTest::newRow("two buttons") << 2;
    }
    // The preferred width is the narrowest that keeps a short text on one line, with the
    // buttons beside it; at the minimum width nothing overlaps or sticks out.
    void sizeHints()
    {
        QFETCH(int, actions);
        Host host;
        NotificationWidget& notification = *host.notification;
        QAction retry(QStringLiteral("Retry")), details(QStringLiteral("Show the details"));
        if (actions > 0)
            notification.AddAction(&retry), notification.AddAction(&details);
        notification.SetText(QStringLiteral("Saved to the shared folder."));
        host.ShowUnmapped();
        QLabel* label = host.Text();
        const int oneLine = label->heightForWidth(QWIDGETSIZE_MAX);
        const auto oneLineAt = [&](int width) {
            host.LayOut(width);
            const bool buttonsBeside = actions == 0 || notification.ActionButtons()[0]->y() < label->geometry().bottom();
            return label->height() == oneLine && buttonsBeside;
        };
        const QSize preferred = notification.sizeHint();
        QCOMPARE(preferred.height(), notification.heightForWidth(preferred.width()));
        QVERIFY(oneLineAt(preferred.width()));
        QVERIFY(!oneLineAt(preferred.width() - 1));
        const QSize minimum = notification.minimumSizeHint();
        QVERIFY(minimum.width() < preferred.width());
        host.LayOut(minimum.width());
        QCOMPARE(host.Misplaced(), QString());
        QCOMPARE(minimum.height(), notification.height());
        notification.SetText(kLongText);
        QVERIFY(notification.sizeHint().width() < 700);
    }

    // Resized across widths, the height follows each one, wrapped text included.
    void followsWidthAndContent()
    {
        Host host(640);
        NotificationWidget& notification = *host.notification;
        QAction retry(QStringLiteral("Retry"));
        notification.AddAction(&retry);
        notification.SetText(kLongText);
        host.ShowUnmapped();
        QVector<int> heights;
        for (const int width : {640, 420, 300, 210, 520, 640}) {
            host.LayOut(width);
            QCOMPARE(notification.height(), notification.heightForWidth(width));
            heights << notification.height();
        }
        QVERIFY(heights[0] < heights[1] && heights[1] < heights[2] && heights[2] < heights[3]);
        QCOMPARE(heights.last(), heights.first());
        const int before = notification.height();
        notification.setFont(TestSupport::TestFont(18));
        QTRY_VERIFY(notification.height() > before);
        QCOMPARE(host.Text()->height(), host.Text()->heightForWidth(host.Text()->width()));
        notification.SetText(QStringLiteral("Short."));
        QTRY_VERIFY(notification.height() < before);
        QCOMPARE(host.below->y(), notification.height());
        // A part whose size changes by itself is placed again too.
        QPushButton* button = notification.ActionButtons()[0];
        button->setFont(TestSupport::TestFont(24));
        QTRY_COMPARE(button->size(), button->sizeHint());
        retry.setText(QStringLiteral("Retry with a much longer label than before"));
        QTRY_COMPARE(button->width(), button->sizeHint().width());
        QVERIFY(notification.sizeHint().width() >= notification.minimumSizeHint().width());
    }

    void showsAndHidesAnimated_data()
    {
        QTest::addColumn<bool>("inLayout");
        QTest::newRow("in a layout") << true;
        QTest::newRow("where no layout places it") << false;
    }
    // The content keeps its full height and slides down from under the top edge; a layout
    // parent makes room step by step, and where none places it, it takes the height for
    // its width itself.
    void showsAndHidesAnimated()
    {
        QFETCH(bool, inLayout);
        Host host;
        NotificationWidget& notification = *host.notification;
        if (!inLayout) {
            host.column->removeWidget(&notification);
            notification.setGeometry(10, 10, 300, 1);
        }
        notification.SetText(kLongText);
        TestSupport::SignalLog log(&notification, {"Shown()", "Shown(bool)", "Hidden()", "Hidden(bool)"});
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QCOMPARE(log.Take(), TestSupport::Words("Hidden() Hidden(true)"));
        QVERIFY(notification.isHidden());
        QCOMPARE(notification.GetDuration(), 250);
        QCOMPARE(notification.GetEasing().type(), QEasingCurve::OutCubic);
        QWidget* content = host.Part("Content");
        QVector<int> heights;
        QSet<int> textHeights;
        const auto watch = [&] {
            if (notification.isHidden() || !notification.IsAnimating())
                return;
            heights << notification.height();
            QCOMPARE(content->geometry().bottom(), notification.height() - 1);
            textHeights << host.Text()->height();
        };
        QTimer sampler;
        connect(&sampler, &QTimer::timeout, this, watch);
        sampler.start(10);
        notification.AnimatedShow();
        QVERIFY(notification.IsAnimating());
        QTRY_VERIFY(notification.IsShown());
        QCOMPARE(log.Take(), TestSupport::Words("Hidden(false) Shown() Shown(true)"));
        const int full = notification.heightForWidth(notification.width());
        QCOMPARE(content->height(), full);
        QCOMPARE(textHeights, QSet<int>({host.Text()->height()})); // never squashed
        QVERIFY(heights.size() > 3 && TestSupport::IsMonotonic(heights, true));
        QVERIFY(heights.first() < full / 2);
        QTRY_COMPARE(notification.height(), full);
        QCOMPARE(inLayout ? host.below->y() : notification.geometry().bottom() + 1, inLayout ? full : 10 + full);
        heights.clear();
        notification.AnimatedHide();
        QTRY_VERIFY(notification.isHidden());
        QCOMPARE(log.Take(), TestSupport::Words("Shown(false) Hidden() Hidden(true)"));
        QVERIFY(heights.size() > 3 && TestSupport::IsMonotonic(heights, false));
        QTRY_COMPARE(host.below->y(), 0);
        QCOMPARE(notification.heightForWidth(400), 0);
        if (!inLayout) {
            notification.show();
            notification.resize(200, 10);
            QCOMPARE(notification.height(), 10); // a size given from outside stands until the content changes
            notification.SetText(kLongText + QStringLiteral(" And more."));
            QCOMPARE(notification.height(), notification.heightForWidth(200));
            QVERIFY(notification.height() > full);
        }
    }

    // An opposite request on the way turns round from where it is; a repeated one or one
    // that does not fit the state changes nothing.
    void turnsRoundWhereItIs()
    {
        Host host;
        NotificationWidget& notification = *host.notification;
        notification.SetText(kLongText);
        notification.SetEasing(QEasingCurve::Linear);
        notification.SetDuration(400);
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        TestSupport::SignalLog log(&notification, {"Shown()", "Shown(bool)", "Hidden()", "Hidden(bool)"});
        notification.AnimatedHide();
        notification.AnimatedShow();
        QCOMPARE(notification.GetEasing().type(), QEasingCurve::Linear);
        QTRY_VERIFY(notification.GetPosition() > 0.3);
        notification.AnimatedShow();
        const qreal turnedAt = notification.GetPosition();
        QVector<qreal> positions;
        QTimer sampler;
        connect(&sampler, &QTimer::timeout, this, [&] { positions << notification.GetPosition(); });
        sampler.start(5);
        notification.AnimatedHide(), notification.AnimatedHide();
        QTRY_VERIFY(notification.isHidden());
        QCOMPARE(log.Take(), TestSupport::Words("Hidden(false) Hidden() Hidden(true)"));
        QVERIFY(positions.size() > 3 && TestSupport::IsMonotonic(positions, false));
        QVERIFY2(positions.first() <= turnedAt && positions.first() > turnedAt - 0.2, "no jump");
    }

    void atOnce_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("asked before the event loop runs") << "early";
        QTest::newRow("with animations off") << "still";
        QTest::newRow("by show() and hide()") << "setVisible";
        QTest::newRow("by show() on the way") << "finish";
    }
    // No height between nothing and all, and the same signals as when animated.
    void atOnce()
    {
        QFETCH(QString, how);
        Host host;
        TestSupport::StillStyle still;
        NotificationWidget& notification = *host.notification;
        notification.SetText(QStringLiteral("Saved."));
        TestSupport::HeightLog sizes;
        QVector<int>& heights = sizes.heights;
        TestSupport::SignalLog log(&notification, {"Shown()", "Shown(bool)", "Hidden()", "Hidden(bool)"});
        if (how == QLatin1String("early")) {
            notification.AnimatedShow();
            QVERIFY(!notification.isHidden());
            QCOMPARE(notification.GetPosition(), 1.0);
            QVERIFY(TestSupport::ShowAndWait(&host.window));
            QTRY_VERIFY(notification.IsShown());
            QCOMPARE(log.Take(), TestSupport::Words("Shown() Shown(true)"));
        } else {
            if (how == QLatin1String("still"))
                notification.setStyle(&still);
            QVERIFY(TestSupport::ShowAndWait(&host.window));
            sizes.Watch(&notification);
            if (how == QLatin1String("finish")) {
                notification.AnimatedShow();
                QTRY_VERIFY(notification.GetPosition() > 0.1);
                heights.clear();
                notification.show();
            } else if (how == QLatin1String("still")) {
                notification.AnimatedShow();
            } else {
                notification.show();
            }
            QVERIFY(notification.IsShown());
            QCOMPARE(log.Take(), TestSupport::Words("Hidden() Hidden(true) Hidden(false) Shown() Shown(true)"));
        }
        QTRY_COMPARE(notification.height(), notification.heightForWidth(400));
        const int full = notification.height();
        QVERIFY(full > 20);
        QVERIFY(std::none_of(heights.begin(), heights.end(), [full](int height) { return height > 0 && height < full; }));
        if (how == QLatin1String("still"))
            notification.AnimatedHide();
        else
            notification.hide();
        QVERIFY(notification.isHidden());
        QCOMPARE(log.Take(), TestSupport::Words("Shown(false) Hidden() Hidden(true)"));
        QTRY_COMPARE(host.below->y(), 0);
        // What comes after is animated again, where animations are on.
        notification.AnimatedShow();
        QCOMPARE(notification.IsAnimating(), how != QLatin1String("still"));
    }

    // Shown, and changed while shown, it is announced as an alert with its type and its
    // text as plain text; hidden, it is not.
    void announcesItself()
    {
        if (!TestSupport::OnScreenReaderBus()) {
            // Qt tells screen readers only while their bus is there: a child run of this
            // function gets a private one.
            const TestSupport::ScreenReaderBus bus;
            QVERIFY(!bus.Address().isEmpty());
            QCOMPARE(TestSupport::RunTestFunctionInChild("announcesItself", bus.Environment()), QString());
            return;
        }
        const QAccessible::UpdateHandler previous = QAccessible::installUpdateHandler(RecordAlerts);
        Host host;
        NotificationWidget& notification = *host.notification;
        notification.SetType(NotificationType::Warning);
        notification.SetText(QStringLiteral("Disk <b>almost</b> full. <a href=\"clean\">Clean up</a>"));
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QTRY_VERIFY(QAccessible::isActive());
        QCOMPARE(AlertLines(), QStringList());
        notification.AnimatedShow();
        const int role = QAccessible::AlertMessage;
        QCOMPARE(AlertLines(), QStringList(QStringLiteral("Warning|Disk almost full. Clean up|%1").arg(role)));
        QTRY_VERIFY(notification.IsShown());
        QCOMPARE(AlertLines(), QStringList());
        notification.SetText(QStringLiteral("Disk full."));
        notification.SetType(NotificationType::Error);
        QCOMPARE(AlertLines(), QStringList({QStringLiteral("Warning|Disk full.|%1").arg(role),
                                            QStringLiteral("Error|Disk full.|%1").arg(role)}));
        notification.AnimatedHide();
        QVERIFY(notification.IsAnimating());
        notification.SetText(QStringLiteral("Changed on the way out."));
        notification.hide();
        notification.SetText(QStringLiteral("Hidden change."));
        QCOMPARE(AlertLines(), QStringList());
        // Shown before its first pass of the event loop: announced when it gets there,
        // and changes are announced from then on.
        auto* early = new NotificationWidget(NotificationType::Positive, QStringLiteral("Sent."));
        host.column->addWidget(early);
        early->show();
        QTRY_VERIFY(early->IsShown());
        early->SetText(QStringLiteral("Sent twice."));
        QCOMPARE(AlertLines(), QStringList({QStringLiteral("Success|Sent.|%1").arg(role),
                                            QStringLiteral("Success|Sent twice.|%1").arg(role)}));
        QAccessible::installUpdateHandler(previous);
    }

    // Buttons follow their actions, trigger them, and go with them; the actions stay
    // their owners'.
    void actionButtons()
    {
        Host host(600);
        NotificationWidget& notification = *host.notification;
        notification.SetText(QStringLiteral("Saved."));
        auto* retry = new QAction(QStringLiteral("Retry"), this);
        auto* details = new QAction(QStringLiteral("Details"), this);
        QAction first(QStringLiteral("First"));
        notification.AddAction(retry);
        notification.AddAction(details);
        notification.insertAction(retry, &first);
        notification.show();
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        const auto texts = [&] {
            QStringList texts;
            for (QPushButton* button : notification.ActionButtons()) {
                texts << button->text() + (button->isEnabled() ? "" : "(disabled)") + (button->isHidden() ? "(hidden)" : "");
                if (button->objectName() != QLatin1String("ActionButton")
                    || button->accessibleName() != QLatin1String("NotificationWidget_ActionButton"))
                    texts << QStringLiteral("(misnamed)");
            }
            return texts.join(QLatin1Char(' '));
        };
        QCOMPARE(texts(), QStringLiteral("First Retry Details"));
        QSignalSpy triggered(retry, &QAction::triggered);
        QTest::mouseClick(notification.ActionButtons()[1], Qt::LeftButton);
        QCOMPARE(triggered.count(), 1);
        QPushButton* detailsButton = notification.ActionButtons()[2];
        retry->setText(QStringLiteral("Try again"));
        retry->setEnabled(false);
        retry->setToolTip(QStringLiteral("Send it again"));
        QCOMPARE(notification.ActionButtons()[1]->toolTip(), QStringLiteral("Send it again"));
        QPixmap blue(16, 16);
        blue.fill(Qt::blue);
        details->setIcon(QIcon(blue));
        QCOMPARE(texts(), QStringLiteral("First Try again(disabled) Details"));
        QVERIFY(!detailsButton->icon().isNull());
        const int textWidth = host.Text()->width();
        first.setVisible(false);
        QCOMPARE(texts(), QStringLiteral("First(disabled)(hidden) Try again(disabled) Details"));
        QTRY_VERIFY(host.Text()->width() > textWidth); // the room it left
        QCOMPARE(host.VisibleParts().size(), 5);
        notification.RemoveAction(retry);
        QCOMPARE(texts(), QStringLiteral("First(disabled)(hidden) Details"));
        delete details;
        QCOMPARE(texts(), QStringLiteral("First(disabled)(hidden)"));
        QTRY_COMPARE(host.VisibleParts().size(), 3);
        QCOMPARE(host.notification->findChildren<QPushButton*>().size(), 1);
        delete host.notification;
        QCOMPARE(first.text(), QStringLiteral("First")); // not owned
        QCOMPARE(retry->parent(), this);
        delete retry;
    }

    // The close button asks to close, then hides the notification animated; without it
    // the text takes its room.
    void closeButtonAndLinks()
    {
        Host host;
        NotificationWidget& notification = *host.notification;
        notification.SetText(QStringLiteral("<a href=\"https://example.org/more\">More</a> about the update"));
        notification.show();
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        TestSupport::SignalLog log(&notification, {"CloseRequested()", "Hidden()", "LinkActivated(QString)"});
        QLabel* text = host.Text();
        QTest::mouseClick(text, Qt::LeftButton, Qt::NoModifier, QPoint(4, text->height() / 2));
        QCOMPARE(log.Take(), QStringList("LinkActivated(https://example.org/more)"));
        const int textWidth = text->width();
        auto* close = notification.findChild<QToolButton*>(QStringLiteral("CloseButton"));
        QVERIFY(notification.IsCloseButtonVisible() && close->isVisible());
        QVERIFY(!close->icon().isNull());
        QCOMPARE(close->toolTip(), QStringLiteral("Close"));
        QTest::mouseClick(close, Qt::LeftButton);
        QCOMPARE(log.Take(), QStringList("CloseRequested()"));
        QVERIFY(notification.IsAnimating());
        QTRY_VERIFY(notification.isHidden());
        QCOMPARE(log.Take(), QStringList("Hidden()"));
        notification.SetCloseButtonVisible(false);
        notification.show();
        QTRY_VERIFY(text->width() > textWidth + close->width());
        QVERIFY(close->isHidden());
        QCOMPARE(host.VisibleParts().size(), 2);
    }

    // Right to left, the icon is on the right and the close button on the left; with a
    // style that has no icons there is no icon and the text takes its room.
    void mirroredAndWithoutIcon()
    {
        Host host;
        host.window.setLayoutDirection(Qt::RightToLeft);
        host.notification->SetText(QStringLiteral("Saved."));
        host.notification->show();
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QTRY_VERIFY(host.Part("Icon")->x() > host.Text()->x());
        QVERIFY(host.Part("CloseButton")->x() < host.Text()->x());
        const int textRight = host.Text()->geometry().right();

        struct NoIcons : QProxyStyle
        {
            NoIcons() : QProxyStyle(QStringLiteral("Fusion")) {}
            QIcon standardIcon(StandardPixmap, const QStyleOption*, const QWidget*) const override { return QIcon(); }
        } noIcons;
        host.notification->setStyle(&noIcons);
        QTRY_VERIFY(host.Part("Icon")->isHidden());
        QVERIFY(host.Text()->geometry().right() > textRight);
        QCOMPARE(host.VisibleParts().size(), 2);
        host.notification->setStyle(nullptr);
        QTRY_VERIFY(host.Part("Icon")->isVisible());
        QCOMPARE(host.Text()->geometry().right(), textRight);
    }

    void textMargins_data()
    {
        QTest::addColumn<QString>("sheet");
        QTest::addColumn<int>("margin");
        QTest::newRow("the label's margin") << "" << 7;
        QTest::newRow("a style sheet's padding") << "QLabel#Text { padding: 3px 11px 5px 9px; }" << 0;
        QTest::newRow("a style sheet's font") << "QLabel#Text { font-size: 21px; }" << 0;
    }
    // What style sheets and the label's own settings add to the text is measured too, at
    // every width from narrow to wide: where the text wraps, where it just fits on one
    // line and beyond.
    void textMargins()
    {
        QFETCH(QString, sheet);
        QFETCH(int, margin);
        for (const QString& text : {kLongText, QStringLiteral("Saved to the shared folder.")}) {
            Host host;
            host.window.setStyleSheet(sheet);
            host.Text()->setMargin(margin);
            host.notification->SetText(text);
            host.ShowUnmapped();
            QLabel* label = host.Text();
            // A layout asks the height for the minimum width below it.
            for (int width = host.notification->minimumSizeHint().width(); width <= 640; width += 2) {
                host.LayOut(width);
                const QString at = QStringLiteral("at %1 px").arg(width);
                QVERIFY2(host.notification->height() == host.notification->heightForWidth(width), qPrintable(at));
                QVERIFY2(label->height() == label->heightForWidth(label->width()), qPrintable(at));
            }
        }
    }

    void badInputAndDeletion()
    {
        const LogCapture::Mark mark;
        Host host;
        NotificationWidget& notification = *host.notification;
        notification.SetText(QStringLiteral("First."));
        notification.SetText(QString());
        notification.SetType(static_cast<NotificationType::Type>(9));
        notification.AddAction(nullptr);
        notification.RemoveAction(nullptr);
        QAction stranger(QStringLiteral("Stranger"));
        notification.RemoveAction(&stranger);
        notification.SetDuration(-5);
        NotificationWidget invalid(static_cast<NotificationType::Type>(-1), QStringLiteral("Odd."));
        QCOMPARE(mark.Texts(), QStringList({
            "3 NotificationWidget: an empty text; only the icon and the buttons show",
            "3 NotificationWidget: 9 is not a notification type; the type stays Information",
            "3 NotificationWidget: no action to add",
            "3 NotificationWidget: no action to remove",
            "3 NotificationWidget: the action \"Stranger\" to remove is not one of its own",
            "3 NotificationWidget: a negative duration (-5 ms) is ignored",
            "3 NotificationWidget: -1 is not a notification type; Information is used",
        }));
        QCOMPARE(notification.GetType(), NotificationType::Information);
        QCOMPARE(invalid.GetType(), NotificationType::Information);
        QCOMPARE(notification.GetDuration(), 250);
        // Still usable without a text: the icon's band.
        notification.show();
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QTRY_VERIFY(notification.height() >= notification.style()->pixelMetric(QStyle::PM_ToolBarIconSize));

        // Gone on the way: the action, then the notification, then a window with one.
        notification.hide();
        auto* action = new QAction(QStringLiteral("Gone"));
        notification.AddAction(action);
        notification.AnimatedShow();
        QTRY_VERIFY(notification.GetPosition() > 0.2);
        delete action;
        QVERIFY(notification.ActionButtons().isEmpty());
        QTRY_VERIFY(notification.IsShown());
        QPointer<NotificationWidget> guarded = &notification;
        notification.AnimatedHide();
        QTRY_VERIFY(guarded->GetPosition() < 0.8);
        delete guarded.data();
        QTest::qWait(50);
        auto* window = new Host;
        window->notification->AnimatedShow();
        QVERIFY(TestSupport::ShowAndWait(&window->window));
        window->notification->AnimatedHide();
        QTRY_VERIFY(window->notification->GetPosition() < 0.8);
        delete window;
        QTest::qWait(50);
    }
};

QTEST_MAIN(TstNotificationWidget)
#include "tst_notification_widget.moc"
