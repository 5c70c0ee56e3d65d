#include "gallery_pages.h"

#include <qt_halvo/widgets/window/frameless_window.h>
#include <qt_halvo/widgets/window/title_bar.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>

#include <memory>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

using OrvantaQT::FramelessWindow;

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("WindowPage", text);
}

// The demonstration window: a search field and a menu in its title bar, and buttons that
// save its geometry and bring it back.
FramelessWindow* CreateDemoWindow(QWidget* page)
{
    auto* window = new FramelessWindow;
    window->setObjectName(QStringLiteral("DemoFramelessWindow"));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle(Translate("Frameless window with a title bar of the library"));
    window->setWindowIcon(page->style()->standardIcon(QStyle::SP_DesktopIcon));

    auto* search = new QLineEdit;
    search->setObjectName(QStringLiteral("TitleSearch"));
    search->setPlaceholderText(Translate("Search"));
    search->setFixedWidth(160);
    window->GetTitleBar()->AddWidget(search);
    auto* menuButton = new QToolButton;
    menuButton->setObjectName(QStringLiteral("TitleMenuButton"));
    menuButton->setText(Translate("Menu"));
    menuButton->setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu(menuButton);
    menu->addAction(Translate("Maximise or restore"), window, &FramelessWindow::ToggleMaximized);
    menu->addAction(Translate("Close"), window, &QWidget::close);
    menuButton->setMenu(menu);
    window->GetTitleBar()->AddWidget(menuButton);

    auto* content = new QWidget;
    content->setObjectName(QStringLiteral("DemoContent"));
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(20, 16, 20, 20);
    layout->addWidget(CreateText(Translate("Drag the title bar to move the window and its edges or corners to resize "
                                    "it; double-click the title bar to maximise it. The search field and the "
                                    "menu keep their clicks."),
                                 content));
    auto* state = CreateSecondaryText(QString(), content);
    state->setObjectName(QStringLiteral("GeometryState"));
    layout->addWidget(state);
    layout->addStretch(1);
    auto* buttons = new QHBoxLayout;
    auto* save = CreateButton(Translate("Save geometry"), "SaveGeometryButton", content);
    auto* restore = CreateButton(Translate("Restore geometry"), "RestoreGeometryButton", content);
    restore->setEnabled(false);
    buttons->addWidget(save);
    buttons->addWidget(restore);
    buttons->addStretch(1);
    layout->addLayout(buttons);
    window->SetCentralWidget(content);

    auto saved = std::make_shared<QByteArray>();
    QObject::connect(save, &QPushButton::clicked, window, [window, saved, restore, state] {
        *saved = window->SaveGeometry();
        restore->setEnabled(true);
        const QRect g = window->geometry();
        state->setText(Translate("Saved: %1 × %2 at %3, %4%5")
                           .arg(g.width())
                           .arg(g.height())
                           .arg(g.x())
                           .arg(g.y())
                           .arg(window->IsMaximized() ? Translate(", maximised") : QString()));
    });
    QObject::connect(restore, &QPushButton::clicked, window, [window, saved] { window->RestoreGeometry(*saved); });
    window->resize(560, 320);
    return window;
}

} // namespace

QWidget* CreateWindowPage()
{
    ScrollingPage scrolling = CreateScrollingPage("WindowPage", Translate("Window chrome"));
    QWidget* content = scrolling.content;

    auto* demo = new QWidget;
    auto* row = new QHBoxLayout(demo);
    row->setContentsMargins(0, 0, 0, 0);
    auto* open = CreateButton(Translate("Open a frameless window"), "OpenFramelessButton", demo);
    row->addWidget(open);
    row->addStretch(1);
    auto window = std::make_shared<QPointer<FramelessWindow>>();
    QObject::connect(open, &QPushButton::clicked, demo, [demo, window] {
        if (!*window) {
            *window = CreateDemoWindow(demo);
            QWidget* page = demo->window();
            (*window)->move(page->mapToGlobal(QPoint(page->width() / 2 - 230, 265)));
        }
        (*window)->show();
        (*window)->raise();
        (*window)->activateWindow();
    });
    scrolling.layout->addWidget(CreateSection(
        "FramelessSection", Translate("Frameless window and title bar"),
        Translate("FramelessWindow draws its own frame: a one-pixel border, or a drop shadow where the window system "
           "composites. Its TitleBar shows the icon, the elided title, the host's widgets and the three buttons. "
           "Moving and resizing go through the window system where it offers them and are done by hand where it "
           "does not; maximising is emulated where the window manager ignores it, and the geometry is saved in "
           "QWidget's own format."),
        demo, content));
    scrolling.layout->addStretch(1);
    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> WindowPageMoments()
{
    return {
        {QStringLiteral("frameless_open"),
         [](QWidget* page) {
             ClickButton(page, "OpenFramelessButton");
             for (QWidget* top : QApplication::topLevelWidgets()) {
                 if (top->objectName() == QLatin1String("DemoFramelessWindow") && top->isVisible())
                     ShowPicture(top, page);
             }
         },
         150},
    };
}
