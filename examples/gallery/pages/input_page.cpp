#include "gallery_pages.h"

#include <qt_halvo/widgets/input/button_line_edit.h>
#include <qt_halvo/widgets/input/combo_box_helpers.h>
#include <qt_halvo/widgets/input/combo_box_item_renderer.h>
#include <qt_halvo/widgets/input/combo_box_with_placeholder.h>
#include <qt_halvo/widgets/input/custom_combo_box.h>
#include <qt_halvo/widgets/input/custom_line_edit.h>
#include <qt_halvo/widgets/input/custom_plain_text_edit.h>
#include <qt_halvo/widgets/input/custom_single_line_combo_box.h>
#include <qt_halvo/widgets/input/email_validation.h>
#include <qt_halvo/widgets/input/search_box.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QRegExpValidator>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionViewItem>
#include <QtWidgets/QVBoxLayout>

#include <memory>

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("Gallery", text);
}

// A page of the page combo box: a name in bold over a line of detail.
QWidget* AccountPage(const QString& name, const QString& detail)
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(6, 2, 6, 2);
    layout->setSpacing(0);
    auto* title = new QLabel(name, page);
    title->setObjectName(QStringLiteral("AccountName"));
    layout->addWidget(title);
    layout->addWidget(new QLabel(detail, page));
    page->setMinimumHeight(40);
    return page;
}

QWidget* CreateCombos(QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* form = new QFormLayout(box);

    auto* accounts = new OrvantaQT::CustomComboBox(box);
    accounts->setMinimumSize(260, 44);
    //: Sample account names and addresses in a combo box whose rows are small pages.
    accounts->AddPage(AccountPage(Translate("Personal"), QStringLiteral("ada@example.org")));
    accounts->AddPage(AccountPage(Translate("Work"), QStringLiteral("a.lovelace@example.com")));
    accounts->AddPage(AccountPage(Translate("Archive"), QStringLiteral("archive@example.net")));
    //: Row label: a combo box whose rows are pages.
    form->addRow(Translate("Pages:"), accounts);

    auto* placeholder = new OrvantaQT::ComboBoxWithPlaceholder(box);
    //: Placeholder of a combo box with nothing chosen yet.
    placeholder->SetPlaceholderText(Translate("Choose a region"));
    placeholder->addItems({QStringLiteral("eu-west"), QStringLiteral("us-east"), QStringLiteral("ap-south")});
    placeholder->setCurrentIndex(-1);
    //: Row label: a combo box with a placeholder.
    form->addRow(Translate("Placeholder:"), placeholder);

    auto* disabled = new QComboBox(box);
    //: Sample plans; one of them cannot be chosen.
    disabled->addItems({Translate("Basic"), Translate("Team (not available)"), Translate("Enterprise")});
    qobject_cast<QStandardItemModel*>(disabled->model())->item(1)->setEnabled(false);
    new OrvantaQT::DisabledItemComboBoxHelper(disabled);
    //: Row label: a combo box with a row that cannot be chosen.
    form->addRow(Translate("Disabled row:"), disabled);

    auto* readOnly = new QComboBox(box);
    readOnly->addItems({Translate("Daily"), Translate("Weekly"), Translate("Monthly")});
    new OrvantaQT::EditableReadOnlyComboBoxHelper(readOnly);
    //: Row label: a read-only combo box that opens on a click anywhere.
    form->addRow(Translate("Read-only:"), readOnly);
    return box;
}

// An e-mail field checked as one types, with the ASCII form of its domain beside it.
QWidget* CreateEmailField(QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* form = new QFormLayout(box);
    auto* email = new QLineEdit(box);
    email->setObjectName(QStringLiteral("EmailField"));
    email->setText(QStringLiteral("ivan@пример.рф"));
    auto* state = new QLabel(box);
    auto* ace = new QLabel(box);
    ace->setTextInteractionFlags(Qt::TextSelectableByMouse);
    const auto check = [email, state, ace] {
        const QString text = email->text();
        const bool valid = OrvantaQT::EmailValidator().exactMatch(text);
        //: Shown beside an e-mail field whose text is, or is not, an address.
        state->setText(valid ? Translate("valid address") : Translate("not an address"));
        state->setObjectName(valid ? QStringLiteral("EmailValid") : QStringLiteral("EmailInvalid"));
        state->setStyleSheet(QString()); // let the theme's rule for the new name apply
        const int at = text.indexOf(QLatin1Char('@'));
        ace->setText(at < 0 ? QString() : text.left(at + 1) + OrvantaQT::ConvertToAce(text.mid(at + 1)));
    };
    QObject::connect(email, &QLineEdit::textChanged, box, check);
    check();
    //: Row label: an e-mail address field.
    form->addRow(Translate("E-mail:"), email);
    //: Row label: whether the field holds an address.
    form->addRow(Translate("Check:"), state);
    //: Row label: the address with its domain in ASCII (ACE) form.
    form->addRow(Translate("ASCII form:"), ace);
    return box;
}

// A custom line edit in each left mode, with the busy one switchable, and a line edit
// with a button.
QWidget* CreateLineEdits(QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* form = new QFormLayout(box);
    //: Row labels: the left control a line edit shows (none, a label, a busy animation, a button).
    const char* const modes[] = {QT_TRANSLATE_NOOP("Gallery", "Nothing:"), QT_TRANSLATE_NOOP("Gallery", "Label:"),
                                 QT_TRANSLATE_NOOP("Gallery", "Busy:"), QT_TRANSLATE_NOOP("Gallery", "Button:")};
    OrvantaQT::CustomLineEdit* busy = nullptr;
    for (int mode = 0; mode < 4; ++mode) {
        auto* edit = new OrvantaQT::CustomLineEdit(box);
        edit->setLeftControlMode(mode);
        //: Sample text in a line edit.
        edit->setText(Translate("server name"));
        edit->FillComboBox({QStringLiteral("eu-west"), QStringLiteral("us-east")}, 0);
        edit->SetComboBoxConstEnding(QStringLiteral(".example.org"));
        form->addRow(Translate(modes[mode]), edit);
        if (mode == 2)
            busy = edit;
    }
    //: Button that stops or starts the busy animation of a line edit.
    auto* toggle = new QPushButton(Translate("Busy"), box);
    toggle->setCheckable(true);
    toggle->setChecked(true);
    QObject::connect(toggle, &QPushButton::toggled, busy, [busy](bool on) { busy->setLeftControlMode(on ? 2 : 0); });
    form->addRow(QString(), toggle);

    auto* withButton = new OrvantaQT::ButtonLineEdit(box);
    //: Placeholder of a line edit with a button.
    withButton->setPlaceholderText(Translate("Type and press the button"));
    //: Row label: a line edit with a button at its right end.
    form->addRow(Translate("With a button:"), withButton);
    return box;
}

// Search boxes: one that searches as one types, one with search and history buttons,
// and a label that tells what they report.
QWidget* CreateSearchBoxes(QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* form = new QFormLayout(box);
    auto* report = new QLabel(box);
    const auto reportTo = [report](OrvantaQT::SearchBox* search) {
        //: Reports of the gallery's search boxes.
        QObject::connect(search, &OrvantaQT::SearchBox::searchStarted, report,
                         [report, search] { report->setText(Translate("Searching for \"%1\"").arg(search->text())); });
        QObject::connect(search, &OrvantaQT::SearchBox::resetSearch, report,
                         [report] { report->setText(Translate("Search cleared")); });
        QObject::connect(search, &OrvantaQT::SearchBox::historyBrowse, report,
                         [report] { report->setText(Translate("History asked for")); });
    };
    auto* typing = new OrvantaQT::SearchBox(box);
    //: Cue text of a search box that searches as one types.
    typing->SetCueText(Translate("Search as you type"));
    reportTo(typing);
    auto* buttons = new OrvantaQT::SearchBox(box);
    buttons->SetShowSearchButton(true);
    buttons->SetShowHistoryButton(true);
    //: Cue text of a search box with buttons.
    buttons->SetCueText(Translate("Press Return or the button"));
    buttons->setText(QStringLiteral("qt_halvo"));
    buttons->SetCancelMode(true);
    reportTo(buttons);
    //: Row labels: two kinds of search box, and what they report.
    form->addRow(Translate("While typing:"), typing);
    form->addRow(Translate("On demand:"), buttons);
    form->addRow(Translate("Reported:"), report);
    return box;
}




// The theme's sheet gives these widgets their text colour, and Qt 5's sheets give the
// placeholder that same colour, so that a placeholder would read as text: after each change
// of the palette the placeholder is muted again, from the text colour as Qt's own palettes do.
class PlaceholderMuter : public QObject
{
public:
    static void Install(QWidget* widget)
    {
        widget->installEventFilter(new PlaceholderMuter(widget));
        Mute(widget);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::PaletteChange || event->type() == QEvent::Polish)
            Mute(static_cast<QWidget*>(watched));
        return false;
    }

private:
    explicit PlaceholderMuter(QObject* parent)
        : QObject(parent)
    {
    }

    static void Mute(QWidget* widget)
    {
        QPalette palette = widget->palette();
        bool changed = false;
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            QColor muted = palette.color(group, QPalette::Text);
            muted.setAlpha(muted.alpha() / 2);
            if (palette.color(group, QPalette::PlaceholderText) == muted)
                continue;
            palette.setColor(group, QPalette::PlaceholderText, muted);
            changed = true;
        }
        // The new palette's change event comes back here and finds nothing to do.
        if (changed)
            widget->setPalette(palette);
    }
};

// The swatch combo box's own data beside the name in DisplayRole.
constexpr int kSwatchColorRole = Qt::UserRole;
constexpr int kSwatchCodeRole = Qt::UserRole + 1;

QPalette::ColorGroup ColorGroup(QStyle::State state)
{
    if (!(state & QStyle::State_Enabled))
        return QPalette::Disabled;
    return state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

// A row of a colour label: a swatch, the name, and the colour's code at the far end in the
// placeholder colour. One renderer paints the field and the list, so they match.
class SwatchRenderer : public OrvantaQT::ComboBoxItemRenderer
{
public:
    void Paint(QPainter* painter, const QRect& rect, const QModelIndex& index,
               const QStyleOptionViewItem& option) const override
    {
        const QPalette::ColorGroup group = ColorGroup(option.state);
        const bool selected = option.state & QStyle::State_Selected;
        if (selected)
            painter->fillRect(rect, option.palette.brush(group, QPalette::Highlight));
        const QColor text = option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
        // On the highlight the muted colour would not read: the code takes the row's text colour.
        const QColor muted = selected ? text : option.palette.color(group, QPalette::PlaceholderText);
        const QFontMetrics metrics(option.font);

        // Laid out left to right, then mirrored for right-to-left rows.
        const QRect inner = rect.adjusted(kPadding, 0, -kPadding, 0);
        const int side = Side(metrics);
        const QRect swatch(inner.left(), rect.top() + (rect.height() - side) / 2, side, side);
        const QString code = index.data(kSwatchCodeRole).toString();
        const int codeWidth = metrics.horizontalAdvance(code);
        const QRect codeRect(inner.right() + 1 - codeWidth, rect.top(), codeWidth, rect.height());
        const QRect nameRect(swatch.right() + 1 + kGap, rect.top(),
                             codeRect.left() - kCodeGap - (swatch.right() + 1 + kGap), rect.height());

        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(text, 1));
        painter->setBrush(index.data(kSwatchColorRole).value<QColor>());
        const QRectF outline = QStyle::visualRect(option.direction, rect, swatch);
        painter->drawRoundedRect(outline.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
        painter->setFont(option.font);
        painter->setLayoutDirection(option.direction);
        const Qt::Alignment leading = QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter);
        const Qt::Alignment trailing = QStyle::visualAlignment(option.direction, Qt::AlignRight | Qt::AlignVCenter);
        if (nameRect.width() > 0) {
            painter->setPen(text);
            painter->drawText(QStyle::visualRect(option.direction, rect, nameRect), leading | Qt::TextSingleLine,
                              metrics.elidedText(option.text, Qt::ElideRight, nameRect.width()));
        }
        painter->setPen(muted);
        painter->drawText(QStyle::visualRect(option.direction, rect, codeRect), trailing | Qt::TextSingleLine, code);
        painter->restore();
    }

    QSize SizeHint(const QModelIndex& index, const QStyleOptionViewItem& option) const override
    {
        const QFontMetrics metrics(option.font);
        const int width = 2 * kPadding + Side(metrics) + kGap + metrics.horizontalAdvance(option.text) + kCodeGap +
                          metrics.horizontalAdvance(index.data(kSwatchCodeRole).toString());
        return QSize(width, metrics.height() + 8);
    }

private:
    static int Side(const QFontMetrics& metrics) { return metrics.height() - 2; }

    static constexpr int kPadding = 4;
    static constexpr int kGap = 8;
    static constexpr int kCodeGap = 16;
};

// Where a file may be saved: icons from the style and texts long enough to be cut short.
OrvantaQT::CustomSingleLineComboBox* CreateDestinationBox(QWidget* parent)
{
    auto* box = new OrvantaQT::CustomSingleLineComboBox(parent);
    box->setObjectName(QStringLiteral("DestinationBox"));
    const QStyle* style = QApplication::style();
    //: Places to save a file, in a combo box whose long entries are cut short with an ellipsis.
    box->addItem(style->standardIcon(QStyle::SP_DirHomeIcon), Translate("Home folder"));
    box->addItem(style->standardIcon(QStyle::SP_DirIcon),
                 Translate("Reports / 2024 / Quarterly summaries for the board meeting in March"));
    box->addItem(style->standardIcon(QStyle::SP_DriveNetIcon),
                 Translate("Shared drive of the accounting department on the second file server"));
    box->addItem(style->standardIcon(QStyle::SP_DriveHDIcon), Translate("Local disk"));
    box->setCurrentIndex(1);
    // As wide as about 30 characters, not as the longest entry: that one shows cut short.
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(30);
    box->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return box;
}

OrvantaQT::CustomSingleLineComboBox* CreateSwatchBox(QWidget* parent)
{
    auto* box = new OrvantaQT::CustomSingleLineComboBox(parent);
    box->setObjectName(QStringLiteral("SwatchBox"));
    box->SetRenderer(std::make_shared<SwatchRenderer>());
    struct Label
    {
        const char* name;
        const char* color;
    };
    const Label labels[] = {
        //: Names of colour labels in a combo box that shows a swatch of each colour.
        {QT_TRANSLATE_NOOP("Gallery", "Ocean"), "#1f7ad4"}, {QT_TRANSLATE_NOOP("Gallery", "Moss"), "#2fa37a"},
        {QT_TRANSLATE_NOOP("Gallery", "Rust"), "#c2703a"},  {QT_TRANSLATE_NOOP("Gallery", "Plum"), "#8e4fa8"},
        {QT_TRANSLATE_NOOP("Gallery", "Sand"), "#d8b65a"},  {QT_TRANSLATE_NOOP("Gallery", "Slate"), "#5f6b7a"},
    };
    for (const Label& label : labels) {
        box->addItem(Translate(label.name));
        const int row = box->count() - 1;
        box->setItemData(row, QColor(QLatin1String(label.color)), kSwatchColorRole);
        box->setItemData(row, QString::fromLatin1(label.color).toUpper(), kSwatchCodeRole);
    }
    box->setCurrentIndex(2);
    box->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // The codes are painted in the placeholder colour, in the field and in the list.
    PlaceholderMuter::Install(box);
    PlaceholderMuter::Install(box->view());
    return box;
}

QWidget* CreateSingleLineCombos()
{
    auto* box = new QWidget;
    auto* form = new QFormLayout(box);
    form->setContentsMargins(0, 0, 0, 0);
    //: Row label: a combo box painted by the default renderer, an icon and a text.
    form->addRow(Translate("Default renderer:"), CreateDestinationBox(box));
    //: Row label: a combo box painted by a renderer of the gallery's own, a swatch, a name and a code.
    form->addRow(Translate("Own renderer:"), CreateSwatchBox(box));
    return box;
}

// Sets the property the theme's warning rule looks at, and lets the rule apply.
void SetLimitReached(QLabel* counter, bool reached)
{
    if (counter->property("limitReached").toBool() == reached)
        return;
    counter->setProperty("limitReached", reached);
    counter->style()->unpolish(counter);
    counter->style()->polish(counter);
}

constexpr int kGrowingMaximumLines = 5;
constexpr int kShortNoteLength = 140;

// A note field as tall as its text between one and five lines, with a line under it that
// moves as it grows; then a short note of at most 140 characters with a live counter.
QWidget* CreatePlainTextEdits()
{
    auto* demo = new QWidget;
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);

    auto* growing = new OrvantaQT::CustomPlainTextEdit(demo);
    growing->setObjectName(QStringLiteral("GrowingEdit"));
    //: Placeholder of a text field that grows with its text up to five lines.
    growing->setPlaceholderText(Translate("Write a note: the field grows up to five lines"));
    growing->SetMinimumLines(1);
    growing->SetMaximumLines(kGrowingMaximumLines);
    PlaceholderMuter::Install(growing);
    layout->addWidget(growing);

    auto* row = new QHBoxLayout;
    //: Button that empties the growing text field.
    auto* clear = new QPushButton(Translate("Clear"), demo);
    clear->setObjectName(QStringLiteral("ClearNote"));
    auto* lines = CreateSecondaryText(QString(), demo);
    const auto count = [growing, lines] {
        const int taken = growing->ContentLines();
        if (taken > kGrowingMaximumLines) {
            //: Under the growing text field once its text is taller than it may get; %1 is its most lines.
            lines->setText(Translate("More than %1 lines: the text scrolls").arg(kGrowingMaximumLines));
        } else {
            //: Under the growing text field: %1 is how many lines its text takes, %2 the most it shows.
            lines->setText(Translate("%1 of at most %2 lines").arg(taken).arg(kGrowingMaximumLines));
        }
    };
    QObject::connect(growing, &QPlainTextEdit::textChanged, lines, count);
    QObject::connect(clear, &QPushButton::clicked, growing, &QPlainTextEdit::clear);
    count();
    row->addWidget(clear);
    row->addSpacing(12);
    row->addWidget(lines);
    row->addStretch();
    layout->addLayout(row);

    layout->addSpacing(12);
    auto* limited = new OrvantaQT::CustomPlainTextEdit(demo);
    limited->setObjectName(QStringLiteral("LimitedEdit"));
    //: Placeholder of a text field that takes at most 140 characters.
    limited->setPlaceholderText(Translate("Say it in 140 characters"));
    limited->SetMinimumLines(2);
    limited->SetMaximumLines(4);
    limited->SetMaximumLength(kShortNoteLength);
    PlaceholderMuter::Install(limited);
    layout->addWidget(limited);
    auto* counter = new QLabel(demo);
    counter->setObjectName(QStringLiteral("LengthCounter"));
    counter->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    const auto update = [limited, counter] {
        const int length = limited->toPlainText().size();
        //: Characters typed in a text field out of the most it takes, as in "12 / 140".
        counter->setText(Translate("%1 / %2").arg(length).arg(kShortNoteLength));
        // The warning stays while the text is full and goes once there is room again.
        if (length < kShortNoteLength)
            SetLimitReached(counter, false);
    };
    QObject::connect(limited, &QPlainTextEdit::textChanged, counter, update);
    QObject::connect(limited, &OrvantaQT::CustomPlainTextEdit::MaximumLengthReached, counter,
                     [counter] { SetLimitReached(counter, true); });
    update();
    layout->addWidget(counter);
    return demo;
}



template<typename T>
T* Find(QWidget* page, const char* objectName)
{
    return page->findChild<T*>(QLatin1String(objectName));
}

// The rows of a note, one a line.
QString NoteLines(int count)
{
    //: Sample lines typed into the growing text field; %1 is the line's number.
    const QString line = Translate("Line %1 of the note");
    QStringList lines;
    for (int i = 1; i <= count; ++i)
        lines.append(line.arg(i));
    return lines.join(QLatin1Char('\n'));
}

// Types the text into the widget key by key, as a user would.
void Type(QWidget* widget, const QString& text)
{
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
        QCoreApplication::sendEvent(widget, &press);
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, QString(c));
        QCoreApplication::sendEvent(widget, &release);
    }
}

} // namespace

QWidget* CreateInputPage()
{
    // Taller than the window: the page scrolls.
    //: Title of the gallery page with the input widgets.
    const ScrollingPage scrolling = CreateScrollingPage("InputPage", Translate("Input"));
    QWidget* content = scrolling.content;
    QVBoxLayout* layout = scrolling.layout;
    //: Section title on the gallery's input page.
    layout->addWidget(CreateSectionTitle(Translate("Line edits"), content));
    layout->addWidget(CreateLineEdits(content));
    //: Section title on the gallery's input page.
    layout->addWidget(CreateSectionTitle(Translate("Search boxes"), content));
    layout->addWidget(CreateSearchBoxes(content));
    //: Section title on the gallery's input page.
    layout->addWidget(CreateSectionTitle(Translate("Combo boxes"), content));
    layout->addWidget(CreateCombos(content));
    //: Section title on the gallery's input page.
    layout->addWidget(CreateSection("RendererSection", Translate("Rows painted by a renderer"),
                                    //: Explanation on the gallery's input page.
                                    Translate("One renderer paints the closed field and the rows of the list, so "
                                              "the field looks just like the row that was chosen. The default "
                                              "one shows an icon and cuts long text short; the second box has "
                                              "a renderer of its own: a swatch, a name and the colour's code."),
                                    CreateSingleLineCombos(), content));
    //: Section title on the gallery's input page.
    layout->addWidget(CreateSection("PlainTextSection", Translate("Text fields that grow"),
                                    //: Explanation on the gallery's input page.
                                    Translate("As tall as their text, between a least and a most number of "
                                              "lines; past the most, the text scrolls. The second field takes "
                                              "at most 140 characters and refuses the next key."),
                                    CreatePlainTextEdits(), content));
    //: Section title on the gallery's input page.
    layout->addWidget(CreateSectionTitle(Translate("E-mail and internationalised domains"), content));
    layout->addWidget(CreateEmailField(content));
    layout->addStretch();

    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> InputPageMoments()
{
    return {
        {QStringLiteral("renderer_list_open"),
         [](QWidget* page) {
             ScrollTo(page, "RendererSection");
             auto* box = Find<OrvantaQT::CustomSingleLineComboBox>(page, "SwatchBox");
             if (!box)
                 return;
             box->showPopup();
             // The mouse on the next row: the chosen one shows unhighlighted, as in the field.
             const QModelIndex next = box->model()->index(box->currentIndex() + 1, box->modelColumn());
             box->view()->selectionModel()->setCurrentIndex(next, QItemSelectionModel::ClearAndSelect);
             QWidget* list = box->view()->window();
             if (list != box->window() && list->isVisible())
                 ShowPicture(list, page);
         },
         100},
        {QStringLiteral("text_grown"),
         [](QWidget* page) {
             if (auto* box = Find<OrvantaQT::CustomSingleLineComboBox>(page, "SwatchBox"))
                 box->hidePopup();
             ScrollTo(page, "PlainTextSection");
             if (auto* edit = Find<OrvantaQT::CustomPlainTextEdit>(page, "GrowingEdit"))
                 edit->setPlainText(NoteLines(3));
         },
         100},
        {QStringLiteral("text_scrolls"),
         [](QWidget* page) {
             if (auto* edit = Find<OrvantaQT::CustomPlainTextEdit>(page, "GrowingEdit"))
                 edit->setPlainText(NoteLines(8));
         },
         100},
        {QStringLiteral("length_reached"),
         [](QWidget* page) {
             auto* edit = Find<OrvantaQT::CustomPlainTextEdit>(page, "LimitedEdit");
             if (!edit)
                 return;
             ScrollTo(page, "LimitedEdit");
             //: Sample short note typed into the field of at most 140 characters; best about 140 long.
             const QString note = Translate("Gallery day: every widget of the library on a page of its own, in the "
                                            "light and in the dark theme, with a picture after every step. See you!");
             // Typed until the field is full, then one key more: that one is refused and the counter warns.
             Type(edit, note.left(kShortNoteLength).leftJustified(kShortNoteLength, QLatin1Char(' ')) +
                            QLatin1Char('!'));
         },
         100},
    };
}
