#include "gallery_pages.h"

#include <qt_halvo/layouts/popup_frame_helper.h>
#include <qt_halvo/layouts/popup_placement.h>
#include <qt_halvo/layouts/show_on_top.h>
#include <qt_halvo/layouts/size_managed_container.h>
#include <qt_halvo/layouts/stick_menu.h>
#include <qt_halvo/layouts/tool_tip_position_handler.h>
#include <qt_halvo/layouts/universal_layout.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtCore/QSettings>
#include <QtCore/QTimer>
#include <QtCore/QtMath>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QActionGroup>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFrame>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include <memory>

using OrvantaQT::PopupScreen;
using OrvantaQT::PopupSide;
using OrvantaQT::PopupSides;

// A scaled-down sketch of a few screens and of where PlacePopup puts popups for targets on
// them. Its colours come from the theme, hence a class of its own with properties.
class GalleryPlacementMap : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor screenColor MEMBER m_screenColor)
    Q_PROPERTY(QColor taskBarColor MEMBER m_taskBarColor)
    Q_PROPERTY(QColor edgeColor MEMBER m_edgeColor)
    Q_PROPERTY(QColor labelColor MEMBER m_labelColor)
    Q_PROPERTY(QColor targetColor MEMBER m_targetColor)
    Q_PROPERTY(QColor popupColor MEMBER m_popupColor)

public:
    struct Sample
    {
        QRect target;
        QSize popup;
    };

    GalleryPlacementMap(const QVector<PopupScreen>& screens, const QVector<Sample>& samples, int width,
                        QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF Map(const QRect& rect) const;

    QVector<PopupScreen> m_screens;
    QVector<Sample> m_samples;
    QVector<QRect> m_placed;
    QRect m_desktop;
    qreal m_scale = 1;
    QSize m_size;
    QColor m_screenColor = Qt::white;
    QColor m_taskBarColor = Qt::lightGray;
    QColor m_edgeColor = Qt::gray;
    QColor m_labelColor = Qt::darkGray;
    QColor m_targetColor = Qt::blue;
    QColor m_popupColor = Qt::darkGreen;
};

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("Gallery", text);
}

// Room around the sketch for the screens' outlines.
constexpr int kMapMargin = 2;

// The notes container's size until the user drags it, and the one its button asks for.
constexpr QSize kNotesSize(380, 150);
constexpr QSize kNotesLargeSize(560, 200);
constexpr QLatin1String kNotesKey("gallery/notes");







// Takes the pictures and the open popups away before the next moment; a tip hides only
// after a delay, and its picture must not linger into the next one.
void ClearPopups(QWidget* page)
{
    if (auto* tip = page->findChild<OrvantaQT::ToolTipPositionHandler*>())
        tip->HideToolTip();
    if (auto* frame = page->findChild<OrvantaQT::PopupFrameHelper*>())
        frame->Close();
    if (auto* menu = page->findChild<OrvantaQT::StickMenu*>())
        menu->close();
    // By name: without a meta-object of its own, a picture casts like any label.
    const QList<QLabel*> pictures =
        page->findChildren<QLabel*>(QStringLiteral("PopupPicture"), Qt::FindDirectChildrenOnly);
    for (QLabel* picture : pictures)
        delete picture;
}

// QToolTip's window, while it shows.
QWidget* ShownToolTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->inherits("QTipLabel") && window->isVisible())
            return window;
    }
    return nullptr;
}


QWidget* CreateToolTipDemo()
{
    auto* demo = new QWidget;
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    //: Button whose tool tip opens beside it rather than at the mouse cursor.
    auto* beside = CreateButton(Translate("Tip beside the button"), "TipBeside", demo);
    //: Tool tip that opens below its button, whatever part of the button the mouse is on.
    beside->setToolTip(Translate("Below the button, its left edge lined up with the button's"));
    new OrvantaQT::ToolTipPositionHandler(beside);
    //: Button with Qt's ordinary tool tip, for comparison.
    auto* atCursor = CreateButton(Translate("Tip at the cursor"), "TipAtCursor", demo);
    //: Qt's ordinary tool tip, which opens where the mouse cursor is.
    atCursor->setToolTip(Translate("Qt's own tip, wherever the mouse rests"));
    layout->addWidget(beside);
    layout->addWidget(atCursor);
    layout->addStretch();
    return demo;
}

// The sides in the order the popup tries them: the chosen one, its opposite, then the others.
PopupSides SidesFrom(PopupSide first)
{
    switch (first) {
    case PopupSide::Below:
        return {PopupSide::Below, PopupSide::Above, PopupSide::Right, PopupSide::Left};
    case PopupSide::Above:
        return {PopupSide::Above, PopupSide::Below, PopupSide::Right, PopupSide::Left};
    case PopupSide::Right:
        return {PopupSide::Right, PopupSide::Left, PopupSide::Below, PopupSide::Above};
    case PopupSide::Left:
        return {PopupSide::Left, PopupSide::Right, PopupSide::Below, PopupSide::Above};
    }
    return OrvantaQT::DefaultPopupSides();
}

// A filter field over a list of cities in a popup frame anchored to a button; a city
// chosen from the list (click, or Enter in the field) shows under the button.
QWidget* CreatePopupFrameDemo()
{
    auto* demo = new QWidget;
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);

    //: Button that opens a popup with a filter field and a list of cities.
    auto* anchor = CreateButton(Translate("Choose a city ▾"), "CityButton", demo);
    auto* side = new QComboBox(demo);
    side->setObjectName(QStringLiteral("PopupSideChoice"));
    //: Side of its button that the sample popup opens on.
    side->addItem(Translate("Below"), static_cast<int>(PopupSide::Below));
    //: Side of its button that the sample popup opens on.
    side->addItem(Translate("Above"), static_cast<int>(PopupSide::Above));
    //: Side of its button that the sample popup opens on.
    side->addItem(Translate("Right"), static_cast<int>(PopupSide::Right));
    //: Side of its button that the sample popup opens on.
    side->addItem(Translate("Left"), static_cast<int>(PopupSide::Left));
    auto* alignment = new QComboBox(demo);
    alignment->setObjectName(QStringLiteral("PopupAlignmentChoice"));
    //: How the sample popup lines up with its button: left edges (above or below), top edges (beside it).
    alignment->addItem(Translate("Left or top"), static_cast<int>(Qt::AlignLeft | Qt::AlignTop));
    //: How the sample popup lines up with its button: centred on it.
    alignment->addItem(Translate("Centre"), static_cast<int>(Qt::AlignHCenter | Qt::AlignVCenter));
    //: How the sample popup lines up with its button: right edges (above or below), bottom edges (beside it).
    alignment->addItem(Translate("Right or bottom"), static_cast<int>(Qt::AlignRight | Qt::AlignBottom));

    auto* row = new QHBoxLayout;
    row->addWidget(anchor);
    row->addSpacing(18);
    //: Label of the choice of side the sample popup opens on.
    row->addWidget(new QLabel(Translate("Side:"), demo));
    row->addWidget(side);
    row->addSpacing(12);
    //: Label of the choice of how the sample popup lines up with its button.
    row->addWidget(new QLabel(Translate("Alignment:"), demo));
    row->addWidget(alignment);
    row->addStretch();
    layout->addLayout(row);
    //: Shown under the button of the sample popup until a city has been chosen in it.
    auto* chosen = CreateSecondaryText(Translate("No city chosen yet."), demo);
    layout->addWidget(chosen);

    auto* popup = new QFrame(demo);
    popup->setObjectName(QStringLiteral("CityPopup"));
    auto* helper = new OrvantaQT::PopupFrameHelper(popup, anchor);
    helper->SetPlacement({OrvantaQT::DefaultPopupSides(), Qt::AlignLeft | Qt::AlignTop, 2});
    auto* popupLayout = new QVBoxLayout(popup);
    popupLayout->setContentsMargins(8, 8, 8, 8);
    auto* filter = new QLineEdit(popup);
    filter->setObjectName(QStringLiteral("CityFilter"));
    //: Placeholder of the field that filters the list of cities in the sample popup.
    filter->setPlaceholderText(Translate("Filter"));
    filter->setClearButtonEnabled(true);
    auto* list = new QListWidget(popup);
    list->setObjectName(QStringLiteral("CityList"));
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const char* const cities[] = {
        //: Sample cities in the list of the sample popup.
        QT_TRANSLATE_NOOP("Gallery", "Amsterdam"), QT_TRANSLATE_NOOP("Gallery", "Berlin"),
        QT_TRANSLATE_NOOP("Gallery", "Copenhagen"), QT_TRANSLATE_NOOP("Gallery", "Dublin"),
        QT_TRANSLATE_NOOP("Gallery", "Helsinki"), QT_TRANSLATE_NOOP("Gallery", "Lisbon"),
        QT_TRANSLATE_NOOP("Gallery", "Madrid"), QT_TRANSLATE_NOOP("Gallery", "Oslo"),
        QT_TRANSLATE_NOOP("Gallery", "Paris"), QT_TRANSLATE_NOOP("Gallery", "Prague"),
        QT_TRANSLATE_NOOP("Gallery", "Rome"), QT_TRANSLATE_NOOP("Gallery", "Vienna"),
    };
    for (const char* city : cities)
        list->addItem(Translate(city));
    popupLayout->addWidget(filter);
    popupLayout->addWidget(list);
    popup->resize(230, 250);

    const auto choose = [helper, chosen](QListWidgetItem* item) {
        if (!item || item->isHidden())
            return;
        //: Shown under the button of the sample popup once a city is chosen; %1 is the city.
        chosen->setText(Translate("Chosen: %1").arg(item->text()));
        helper->Close();
    };
    QObject::connect(filter, &QLineEdit::textChanged, list, [list](const QString& text) {
        QListWidgetItem* first = nullptr;
        for (int i = 0; i < list->count(); ++i) {
            QListWidgetItem* item = list->item(i);
            item->setHidden(!item->text().contains(text, Qt::CaseInsensitive));
            if (!first && !item->isHidden())
                first = item;
        }
        list->setCurrentItem(first);
    });
    QObject::connect(filter, &QLineEdit::returnPressed, list, [list, choose] { choose(list->currentItem()); });
    QObject::connect(list, &QListWidget::itemClicked, list, choose);
    QObject::connect(list, &QListWidget::itemActivated, list, choose);
    QObject::connect(helper, &OrvantaQT::PopupFrameHelper::AboutToShow, filter, [filter, list] {
        filter->clear();
        list->setCurrentRow(0);
        list->scrollToTop();
    });
    QObject::connect(anchor, &QPushButton::clicked, helper, [helper, filter] {
        helper->Show();
        if (helper->IsOpen())
            filter->setFocus(Qt::PopupFocusReason);
    });

    const auto place = [helper, side, alignment] {
        helper->SetPlacement({SidesFrom(static_cast<PopupSide>(side->currentData().toInt())),
                              Qt::Alignment(alignment->currentData().toInt()), 2});
    };
    QObject::connect(side, QOverload<int>::of(&QComboBox::currentIndexChanged), helper, place);
    QObject::connect(alignment, QOverload<int>::of(&QComboBox::currentIndexChanged), helper, place);
    return demo;
}

// A tool button with a menu stuck to its lower edge; the choices show beside it.
QWidget* CreateStickMenuDemo()
{
    auto* demo = new QWidget;
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* button = new QToolButton(demo);
    button->setObjectName(QStringLiteral("ArrangeButton"));
    //: Tool button that opens a menu of ways to arrange a list of files.
    button->setText(Translate("Arrange ▾"));
    auto* menu = new OrvantaQT::StickMenu(button, demo);
    menu->setObjectName(QStringLiteral("ArrangeMenu"));

    auto* order = new QActionGroup(menu);
    //: Entry of the sample menu: sorts files by name.
    QAction* byName = menu->addAction(Translate("Sort by name"));
    //: Entry of the sample menu: sorts files by date.
    QAction* byDate = menu->addAction(Translate("Sort by date"));
    //: Entry of the sample menu: sorts files by size.
    QAction* bySize = menu->addAction(Translate("Sort by size"));
    for (QAction* action : {byName, byDate, bySize}) {
        action->setCheckable(true);
        order->addAction(action);
    }
    byName->setChecked(true);
    menu->addSeparator();
    //: Entry of the sample menu: switches the showing of hidden files.
    QAction* hidden = menu->addAction(Translate("Show hidden files"));
    hidden->setCheckable(true);
    //: Entry of the sample menu: switches the grouping of files by folder.
    QAction* folders = menu->addAction(Translate("Group by folder"));
    folders->setCheckable(true);
    folders->setChecked(true);

    auto* status = CreateSecondaryText(QString(), demo);
    const auto describe = [status, order, hidden, folders] {
        QStringList parts{order->checkedAction()->text()};
        if (hidden->isChecked())
            parts.append(hidden->text());
        if (folders->isChecked())
            parts.append(folders->text());
        //: Shows the entries chosen in the sample menu; %1 lists them.
        status->setText(Translate("Now: %1").arg(parts.join(QStringLiteral(", "))));
    };
    describe();
    QObject::connect(menu, &QMenu::triggered, status, describe);
    layout->addWidget(button);
    layout->addSpacing(12);
    layout->addWidget(status);
    layout->addStretch();
    return demo;
}

QString SizeText(const QSize& size)
{
    //: A width and a height in pixels.
    return Translate("%1 × %2 pixels").arg(size.width()).arg(size.height());
}

// A notes field in a container with a corner grip, its size kept under a settings key, and
// a list in one with a grip on its bottom edge that only changes its height.
QWidget* CreateContainersDemo()
{
    auto* demo = new QWidget;
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);

    auto* notes = new OrvantaQT::SizeManagedContainer(demo);
    notes->setObjectName(QStringLiteral("NotesContainer"));
    notes->setMinimumSize(200, 80);
    notes->setMaximumSize(620, 320);
    auto* edit = new QTextEdit;
    edit->setObjectName(QStringLiteral("NotesEdit"));
    //: Sample text in the resizable notes field.
    edit->setPlainText(Translate("Notes for Monday: call the printer about the proofs, book the room for "
                                 "the review, send the minutes round.\n\nDrag the corner to resize this field."));
    notes->SetWidget(edit);
    auto* notesSize = CreateSecondaryText(QString(), demo);
    QObject::connect(notes, &OrvantaQT::SizeManagedContainer::SizeChanged, notesSize, [notesSize](const QSize& size) {
        //: Size of the resizable notes field; %1 is its size, %2 the settings key it is kept under.
        notesSize->setText(Translate("%1, kept under “%2” when the grip is let go")
                               .arg(SizeText(size), kNotesKey));
    });
    notes->SetManagedSize(kNotesSize);
    // A size saved earlier wins over the default.
    notes->SetSettingsKey(kNotesKey);

    //: Button that sets the notes field to a larger size from the program.
    auto* larger = CreateButton(
        Translate("Make it %1 × %2").arg(kNotesLargeSize.width()).arg(kNotesLargeSize.height()), "NotesLarger", demo);
    QObject::connect(larger, &QPushButton::clicked, notes, [notes] { notes->SetManagedSize(kNotesLargeSize); });
    //: Button that gives the notes field its first size back and forgets the saved one.
    auto* reset = CreateButton(Translate("Reset and forget"), "NotesReset", demo);
    QObject::connect(reset, &QPushButton::clicked, notes, [notes] {
        QSettings().remove(notes->GetSettingsKey());
        notes->SetManagedSize(kNotesSize);
    });
    auto* notesRow = new QHBoxLayout;
    notesRow->addWidget(notes, 0, Qt::AlignTop);
    notesRow->addStretch();
    layout->addLayout(notesRow);
    layout->addWidget(notesSize);
    auto* notesButtons = new QHBoxLayout;
    notesButtons->addWidget(larger);
    notesButtons->addWidget(reset);
    notesButtons->addStretch();
    layout->addLayout(notesButtons);

    auto* log = new OrvantaQT::SizeManagedContainer(demo, Qt::BottomEdge);
    log->setObjectName(QStringLiteral("LogContainer"));
    log->setMinimumHeight(60);
    log->setMaximumHeight(260);
    auto* lines = new QListWidget;
    lines->setObjectName(QStringLiteral("LogList"));
    lines->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    //: Sample lines of a log in a panel whose height the user sets.
    lines->addItems({Translate("09:12  Build started"), Translate("09:14  312 files compiled"),
                     Translate("09:15  Tests passed: 1 024"), Translate("09:15  Package written")});
    log->SetWidget(lines);
    auto* logSize = CreateSecondaryText(QString(), demo);
    QObject::connect(log, &OrvantaQT::SizeManagedContainer::SizeChanged, logSize, [logSize](const QSize& size) {
        //: Height of the log panel that only its bottom edge resizes; %1 is the height in pixels.
        logSize->setText(Translate("Height: %1 pixels; the width follows the page").arg(size.height()));
    });
    log->SetManagedSize(QSize(0, 120));
    layout->addSpacing(8);
    layout->addWidget(log);
    layout->addWidget(logSize);
    return demo;
}

// Two screens side by side, the left one with a task bar, the same on every computer.
QVector<PopupScreen> FixedScreens()
{
    return {{QRect(0, 0, 1280, 1024), QRect(0, 0, 1280, 984)},
            {QRect(1280, 0, 1024, 768), QRect(1280, 0, 1024, 768)}};
}

QString ScreensNow()
{
    QStringList parts;
    const QVector<PopupScreen> screens = OrvantaQT::CurrentPopupScreens();
    for (const PopupScreen& screen : screens) {
        //: A screen: %1 × %2 is its size, (%3, %4) its top-left corner.
        parts.append(Translate("%1 × %2 at (%3, %4)")
                         .arg(screen.geometry.width())
                         .arg(screen.geometry.height())
                         .arg(screen.geometry.x())
                         .arg(screen.geometry.y()));
    }
    //: The screens of the computer the gallery runs on; %1 lists them.
    return Translate("This computer's screens now: %1.").arg(parts.join(QStringLiteral("; ")));
}

// A search bar in a universal layout, inside a container whose right edge the user drags.
QWidget* CreateUniversalDemo()
{
    auto* demo = new QWidget;
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* container = new OrvantaQT::SizeManagedContainer(demo, Qt::RightEdge);
    container->setObjectName(QStringLiteral("UniversalContainer"));
    container->setFrameShape(QFrame::StyledPanel);
    container->setMinimumWidth(160);
    auto* bar = new QWidget;
    auto* universal = new OrvantaQT::UniversalLayout(bar);
    //: Label of the sample search bar on the popups and containers page.
    universal->addWidget(new QLabel(Translate("Find:"), bar));
    auto* field = new QLineEdit(bar);
    //: Placeholder of the sample search field on the popups and containers page.
    field->setPlaceholderText(Translate("Name or number"));
    universal->addWidget(field);
    auto* scope = new QComboBox(bar);
    //: Where the sample search looks, on the popups and containers page.
    scope->addItems({Translate("Everywhere"), Translate("This folder")});
    universal->addWidget(scope);
    //: Button of the sample search bar on the popups and containers page.
    universal->addWidget(new QPushButton(Translate("Search"), bar));
    container->SetWidget(bar);
    container->SetManagedSize(QSize(560, 0));
    // Not aligned in the column: a box layout asks an aligned item its height for the
    // column's whole width, where the bar would be a row.
    auto* row = new QHBoxLayout;
    row->addWidget(container);
    row->addStretch();
    layout->addLayout(row);

    auto* state = CreateSecondaryText(QString(), demo);
    const auto show = [state, container](Qt::Orientation orientation) {
        //: How the sample search bar is laid out, and the width of its container.
        state->setText((orientation == Qt::Horizontal ? Translate("A row, %1 px wide") : Translate("A column, %1 px wide"))
                           .arg(container->width()));
    };
    QObject::connect(universal, &OrvantaQT::UniversalLayout::OrientationChanged, state, show);
    QObject::connect(container, &OrvantaQT::SizeManagedContainer::SizeChanged, state,
                     [show, universal] { show(universal->CurrentOrientation()); });
    show(universal->CurrentOrientation());
    layout->addWidget(state);
    return demo;
}

QWidget* CreatePlacementDemo()
{
    auto* demo = new QWidget;
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    struct Case
    {
        GalleryPlacementMap::Sample sample;
        const char* text;
    };
    const Case cases[] = {
        //: Explains the first sample popup on the sketch of two screens.
        {{QRect(200, 300, 120, 30), QSize(260, 200)}, QT_TRANSLATE_NOOP("Gallery", "Room below: it opens below.")},
        //: Explains the second sample popup on the sketch of two screens.
        {{QRect(300, 920, 120, 30), QSize(260, 200)},
         QT_TRANSLATE_NOOP("Gallery", "No room below, above the task bar: it opens above.")},
        //: Explains the third sample popup on the sketch of two screens.
        {{QRect(1180, 500, 90, 30), QSize(260, 160)},
         QT_TRANSLATE_NOOP("Gallery", "Near the screen's right edge: shifted left to stay on that screen.")},
        //: Explains the fourth sample popup on the sketch of two screens.
        {{QRect(1900, 700, 120, 30), QSize(300, 200)},
         QT_TRANSLATE_NOOP("Gallery", "Low on the smaller screen: above, as that screen ends sooner.")},
        //: Explains the fifth sample popup on the sketch of two screens.
        {{QRect(1230, 150, 120, 30), QSize(260, 200)},
         QT_TRANSLATE_NOOP("Gallery", "Across the seam: on the screen that holds more of the button.")},
    };
    QVector<GalleryPlacementMap::Sample> samples;
    auto* legend = new QGridLayout;
    legend->setColumnStretch(1, 1);
    legend->setVerticalSpacing(4);
    int number = 0;
    for (const Case& item : cases) {
        samples.append(item.sample);
        auto* badge = new QLabel(QString::number(++number), demo);
        badge->setObjectName(QStringLiteral("MapNumber"));
        legend->addWidget(badge, number - 1, 0, Qt::AlignTop);
        legend->addWidget(CreateText(Translate(item.text), demo), number - 1, 1);
    }
    auto* map = new GalleryPlacementMap(FixedScreens(), samples, 560, demo);
    map->setObjectName(QStringLiteral("PlacementMap"));
    layout->addWidget(map, 0, Qt::AlignLeft);
    layout->addLayout(legend);
    layout->addWidget(CreateSecondaryText(ScreensNow(), demo));
    return demo;
}

// Counts down, then brings the window to the front: time to cover or minimise it first.
QWidget* CreateShowOnTopDemo()
{
    auto* demo = new QWidget;
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    //: Button that waits three seconds and then brings the gallery's window to the front.
    auto* button = CreateButton(Translate("Bring this window to the front in 3 s"), "ShowOnTopButton", demo);
    auto* status = CreateSecondaryText(QString(), demo);
    auto* timer = new QTimer(button);
    timer->setInterval(1000);
    auto remaining = std::make_shared<int>(0);
    QObject::connect(button, &QPushButton::clicked, timer, [button, status, timer, remaining] {
        *remaining = 3;
        button->setEnabled(false);
        //: Count-down before the gallery's window comes to the front; %1 is in seconds.
        status->setText(Translate("In %1 s…").arg(*remaining));
        timer->start();
    });
    QObject::connect(timer, &QTimer::timeout, button, [button, status, timer, remaining] {
        if (--*remaining > 0) {
            status->setText(Translate("In %1 s…").arg(*remaining));
            return;
        }
        timer->stop();
        OrvantaQT::ShowOnTop(button->window());
        button->setEnabled(true);
        //: Shown once the gallery's window has been brought to the front.
        status->setText(Translate("Brought to the front."));
    });
    layout->addWidget(button);
    layout->addSpacing(12);
    layout->addWidget(status);
    layout->addStretch();
    return demo;
}

} // namespace

GalleryPlacementMap::GalleryPlacementMap(const QVector<PopupScreen>& screens, const QVector<Sample>& samples,
                                         int width, QWidget* parent)
    : QWidget(parent)
    , m_screens(screens)
    , m_samples(samples)
{
    for (const PopupScreen& screen : screens)
        m_desktop |= screen.geometry;
    for (const Sample& sample : samples)
        m_placed.append(OrvantaQT::PlacePopup(sample.target, sample.popup, screens));
    const int inner = width - 2 * kMapMargin;
    m_scale = m_desktop.width() > 0 ? qreal(inner) / m_desktop.width() : 1;
    m_size = QSize(width, qCeil(m_desktop.height() * m_scale) + 2 * kMapMargin);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize GalleryPlacementMap::sizeHint() const
{
    return m_size;
}

QSize GalleryPlacementMap::minimumSizeHint() const
{
    return m_size;
}

QRectF GalleryPlacementMap::Map(const QRect& rect) const
{
    return QRectF(kMapMargin + (rect.x() - m_desktop.x()) * m_scale, kMapMargin + (rect.y() - m_desktop.y()) * m_scale,
                  rect.width() * m_scale, rect.height() * m_scale);
}

void GalleryPlacementMap::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);

    // The screens: the task bar is what lies outside the work area.
    for (const PopupScreen& screen : m_screens) {
        const QRectF whole = Map(screen.geometry);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_taskBarColor);
        painter.drawRect(whole);
        painter.setBrush(m_screenColor);
        painter.drawRect(Map(screen.availableGeometry));
        painter.setPen(QPen(m_edgeColor, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(whole.adjusted(0.5, 0.5, -0.5, -0.5));
        painter.setFont(small);
        painter.setPen(m_labelColor);
        //: Size of a screen on the sketch of two screens.
        painter.drawText(whole.adjusted(6, 4, -6, -4), Qt::AlignRight | Qt::AlignTop,
                         Translate("%1 × %2").arg(screen.geometry.width()).arg(screen.geometry.height()));
    }

    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    for (int i = 0; i < m_samples.size(); ++i) {
        const QRectF target = Map(m_samples[i].target);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_targetColor);
        painter.drawRoundedRect(target, 1.5, 1.5);

        const QRectF popup = Map(m_placed[i]).adjusted(0.5, 0.5, -0.5, -0.5);
        QColor fill = m_popupColor;
        fill.setAlpha(50);
        painter.setBrush(fill);
        painter.setPen(QPen(m_popupColor, 1.5));
        painter.drawRect(popup);
        painter.setPen(m_popupColor);
        painter.drawText(popup, Qt::AlignCenter, QString::number(i + 1));
    }
}

QWidget* CreatePopupsPage()
{
    // Taller than the window: the page scrolls.
    //: Title of the gallery page with the popup helpers and the resizable containers.
    const ScrollingPage scrolling = CreateScrollingPage("PopupsPage", Translate("Popups and containers"));
    QWidget* content = scrolling.content;
    QVBoxLayout* layout = scrolling.layout;

    //: Section title on the gallery's popups and containers page.
    layout->addWidget(CreateSection("ToolTipSection", Translate("Tool tip beside its widget"),
                                    //: Explanation on the gallery's popups and containers page.
                                    Translate("Hover both buttons: the first tip opens below its button and "
                                              "stays there, the second one opens where the mouse is."),
                                    CreateToolTipDemo(), content));
    //: Section title on the gallery's popups and containers page.
    layout->addWidget(CreateSection("PopupSection", Translate("Popup frame"),
                                    //: Explanation on the gallery's popups and containers page.
                                    Translate("A frame with a filter and a list, anchored to its button on the "
                                              "chosen side, or the next side with room. Escape or a click "
                                              "outside closes it."),
                                    CreatePopupFrameDemo(), content));
    //: Section title on the gallery's popups and containers page.
    layout->addWidget(CreateSection("MenuSection", Translate("Menu stuck to its button"),
                                    //: Explanation on the gallery's popups and containers page.
                                    Translate("The menu opens on the press, lined up with the button's lower "
                                              "edge; a press on the button while it is open only closes it."),
                                    CreateStickMenuDemo(), content));
    //: Section title on the gallery's popups and containers page.
    layout->addWidget(CreateSection("ContainerSection", Translate("Size-managed containers"),
                                    //: Explanation on the gallery's popups and containers page.
                                    Translate("The grips resize the panels, not the window, within their "
                                              "minimum and maximum. The notes keep their size for the next "
                                              "start; the log only grows or shrinks in height."),
                                    CreateContainersDemo(), content));
    //: Section title on the gallery's popups and containers page.
    layout->addWidget(CreateSection("UniversalSection", Translate("Universal layout"),
                                    //: Explanation on the gallery's popups and containers page.
                                    Translate("Drag the bar's right edge: its parts stand in a row while they fit "
                                              "and in a column when they do not, and only go back to a row a "
                                              "little past that width."),
                                    CreateUniversalDemo(), content));
    //: Section title on the gallery's popups and containers page.
    layout->addWidget(CreateSection("MapSection", Translate("Where popups go"),
                                    //: Explanation on the gallery's popups and containers page.
                                    Translate("Popups placed for five buttons (blue) on a fixed pair of screens, "
                                              "1280 × 1024 with a task bar and 1024 × 768 beside it, so that the "
                                              "sketch is the same on every computer."),
                                    CreatePlacementDemo(), content));
    //: Section title on the gallery's popups and containers page.
    layout->addWidget(CreateSection("ShowOnTopSection", Translate("Bring a window to the front"),
                                    //: Explanation on the gallery's popups and containers page.
                                    Translate("Click, then cover or minimise the gallery: after three seconds "
                                              "it comes back to the front with the focus, even where the window "
                                              "manager would only flash it in the task bar."),
                                    CreateShowOnTopDemo(), content));
    layout->addStretch();

    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> PopupsPageMoments()
{
    return {
        {QStringLiteral("tip_beside"),
         [](QWidget* page) {
             if (auto* tip = page->findChild<OrvantaQT::ToolTipPositionHandler*>())
                 tip->ShowToolTip();
             ShowPicture(ShownToolTip(), page);
         },
         100},
        {QStringLiteral("popup_open"),
         [](QWidget* page) {
             ClearPopups(page);
             ScrollTo(page, "PopupSection");
             ClickButton(page, "CityButton");
             ShowPicture(page->findChild<QFrame*>(QStringLiteral("CityPopup")), page);
         },
         100},
        {QStringLiteral("menu_open"),
         [](QWidget* page) {
             ClearPopups(page);
             ScrollTo(page, "MenuSection");
             if (auto* menu = page->findChild<OrvantaQT::StickMenu*>()) {
                 menu->PopupAtButton();
                 ShowPicture(menu, page);
             }
         },
         100},
        {QStringLiteral("container_resized"),
         [](QWidget* page) {
             ClearPopups(page);
             ScrollTo(page, "ContainerSection");
             ClickButton(page, "NotesLarger");
         },
         100},
        {QStringLiteral("universal_column"),
         [](QWidget* page) {
             ScrollTo(page, "UniversalSection");
             if (auto* container = page->findChild<OrvantaQT::SizeManagedContainer*>(QStringLiteral("UniversalContainer")))
                 container->SetManagedSize(QSize(240, 0));
         },
         100},
        {QStringLiteral("placement_map"), [](QWidget* page) { ScrollTo(page, "MapSection"); }, 100},
        {QStringLiteral("page_end"), [](QWidget* page) { ScrollTo(page, "ShowOnTopSection"); }, 100},
    };
}

#include "popups_page.moc"
