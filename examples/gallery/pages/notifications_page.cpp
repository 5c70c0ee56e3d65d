#include "gallery_pages.h"

#include <qt_halvo/widgets/window/notification_widget.h>
#include <qt_halvo/widgets/window/popup_message.h>
#include <qt_halvo/widgets/window/popup_message_queue.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

using OrvantaQT::NotificationType;
using OrvantaQT::NotificationWidget;
using OrvantaQT::PopupMessage;
using OrvantaQT::PopupMessageQueue;

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("NotificationsPage", text);
}

QWidget* CreateNotifications(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* log = CreateSecondaryText(QString(), demo);
    log->setObjectName(QStringLiteral("NotificationLog"));

    auto* information = new NotificationWidget(
        NotificationType::Information,
        Translate("A new version is ready. <a href=\"notes\">Read what changed</a> before you restart."), demo);
    information->setObjectName(QStringLiteral("InformationNotification"));
    QObject::connect(information, &NotificationWidget::LinkActivated, log,
                     [log](const QString& link) { log->setText(Translate("Link: %1").arg(link)); });

    auto* positive = new NotificationWidget(NotificationType::Positive, Translate("The file was moved to the archive."), demo);
    positive->setObjectName(QStringLiteral("PositiveNotification"));
    auto* undo = new QAction(Translate("Undo"), positive);
    QObject::connect(undo, &QAction::triggered, log, [log] { log->setText(Translate("Undo pressed")); });
    positive->AddAction(undo);

    auto* warning = new NotificationWidget(
        NotificationType::Warning, Translate("The connection is slow; pictures are loaded at a lower quality for now."), demo);
    warning->setObjectName(QStringLiteral("WarningNotification"));
    auto* retry = new QAction(Translate("Retry"), warning);
    QObject::connect(retry, &QAction::triggered, log, [log] { log->setText(Translate("Retry pressed")); });
    warning->AddAction(retry);

    auto* error = new NotificationWidget(NotificationType::Error,
                                         Translate("The settings could not be saved: the disk is full."), demo);
    error->setObjectName(QStringLiteral("ErrorNotification"));
    error->SetCloseButtonVisible(false);

    const QList<NotificationWidget*> all = {information, positive, warning, error};
    for (NotificationWidget* notification : all) {
        layout->addWidget(notification);
        notification->setVisible(true);
    }

    auto* buttons = new QHBoxLayout;
    auto* toggle = CreateButton(Translate("Hide them"), "ToggleNotificationsButton", demo, true);
    QObject::connect(toggle, &QPushButton::toggled, demo, [all, toggle](bool hide) {
        toggle->setText(hide ? Translate("Show them") : Translate("Hide them"));
        for (NotificationWidget* notification : all) {
            if (hide)
                notification->AnimatedHide();
            else
                notification->AnimatedShow();
        }
    });
    buttons->addWidget(toggle);
    buttons->addWidget(log, 1);
    layout->addLayout(buttons);
    return demo;
}

QWidget* CreateToasts(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* rows = new QVBoxLayout(demo);
    rows->setContentsMargins(0, 0, 0, 0);
    auto* row = new QHBoxLayout;
    rows->addLayout(row);
    auto* position = new QComboBox(demo);
    position->setObjectName(QStringLiteral("ToastPosition"));
    const QList<QPair<QString, PopupMessage::Position>> positions = {
        {Translate("Bottom right"), PopupMessage::BottomRight}, {Translate("Bottom left"), PopupMessage::BottomLeft},
        {Translate("Bottom centre"), PopupMessage::BottomCenter}, {Translate("Top right"), PopupMessage::TopRight},
        {Translate("Top left"), PopupMessage::TopLeft},         {Translate("Top centre"), PopupMessage::TopCenter},
    };
    for (const auto& entry : positions)
        position->addItem(entry.first, int(entry.second));
    auto post = [demo, position](const char* objectName, const QString& text, NotificationType::Type type, bool withAction) {
        auto* button = CreateButton(text, objectName, demo);
        QObject::connect(button, &QPushButton::clicked, demo, [demo, position, type, withAction] {
            static int number = 0;
            if (PopupMessageQueue* queue = PopupMessageQueue::ForWindow(demo))
                queue->SetPosition(PopupMessage::Position(position->currentData().toInt()));
            QAction* action = nullptr;
            if (withAction)
                action = new QAction(Translate("Open"), demo);
            switch (type) {
            case NotificationType::Information:
                PopupMessage::Post(demo, type, Translate("Message %1 arrived.").arg(++number), 5000, action);
                break;
            case NotificationType::Positive:
                PopupMessage::Post(demo, type, Translate("Saved."), 4000);
                break;
            case NotificationType::Warning:
                PopupMessage::Post(demo, type, Translate("The battery is low."), 6000);
                break;
            case NotificationType::Error:
                PopupMessage::Post(demo, type, Translate("The printer does not answer."), 0);
                break;
            }
        });
        return button;
    };
    row->addWidget(post("PostInformationButton", Translate("Message"), NotificationType::Information, true));
    row->addWidget(post("PostPositiveButton", Translate("Saved"), NotificationType::Positive, false));
    row->addWidget(post("PostWarningButton", Translate("Warning"), NotificationType::Warning, false));
    row->addWidget(post("PostErrorButton", Translate("Error"), NotificationType::Error, false));
    row->addStretch(1);
    auto* where = new QHBoxLayout;
    where->addWidget(CreateSecondaryText(Translate("Where they appear:"), demo));
    where->addWidget(position);
    where->addStretch(1);
    rows->addLayout(where);
    return demo;
}

} // namespace

QWidget* CreateNotificationsPage()
{
    ScrollingPage scrolling = CreateScrollingPage("NotificationsPage", Translate("Notifications"));
    QWidget* content = scrolling.content;
    scrolling.layout->addWidget(CreateSection(
        "NotificationSection", Translate("Notification bar"),
        Translate("NotificationWidget: an inline message of one of four types, with links, actions and a close button, "
           "shown and hidden by sliding its height; screen readers hear it as an alert."),
        CreateNotifications(content), content));
    scrolling.layout->addWidget(CreateSection(
        "ToastSection", Translate("Popup messages"),
        Translate("PopupMessage: short messages over a corner or an edge of the window, at most three at a time; the "
           "rest wait, a repeated message is counted, and a message waits longer while the pointer is on it."),
        CreateToasts(content), content));
    scrolling.layout->addStretch(1);
    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> NotificationsPageMoments()
{
    const auto postSome = [](QWidget* page) {
        ScrollTo(page, "ToastSection");
        ClickButton(page, "PostInformationButton");
        ClickButton(page, "PostWarningButton");
        ClickButton(page, "PostPositiveButton");
        ClickButton(page, "PostPositiveButton");
        ClickButton(page, "PostPositiveButton");
        ClickButton(page, "PostErrorButton");
    };
    return {
        {QStringLiteral("sliding"), [](QWidget* page) { ClickButton(page, "ToggleNotificationsButton"); }, 110},
        {QStringLiteral("hidden"), {}, 400},
        {QStringLiteral("toasts_fading"), postSome, 90},
        {QStringLiteral("toasts"), {}, 500},
        // The toasts are the window's: gone before the next pages are pictured.
        {QStringLiteral("cleared"),
         [](QWidget* page) {
             if (PopupMessageQueue* queue = PopupMessageQueue::ForWindow(page))
                 queue->Clear();
         },
         600},
    };
}
