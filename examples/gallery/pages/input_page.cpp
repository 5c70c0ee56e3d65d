#include "gallery_pages.h"

#include <qt_halvo/widgets/input/button_line_edit.h>
#include <qt_halvo/widgets/input/combo_box_helpers.h>
#include <qt_halvo/widgets/input/combo_box_with_placeholder.h>
#include <qt_halvo/widgets/input/custom_combo_box.h>
#include <qt_halvo/widgets/input/custom_line_edit.h>
#include <qt_halvo/widgets/input/email_validation.h>
#include <qt_halvo/widgets/input/search_box.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QRegExpValidator>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

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

} // namespace

QWidget* CreateInputPage()
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("InputPage"));
    auto* layout = new QVBoxLayout(page);
    //: Title of the gallery page with the input widgets.
    auto* title = new QLabel(Translate("Input"), page);
    title->setObjectName(QStringLiteral("PageTitle"));
    layout->addWidget(title);
    //: Section title on the gallery's input page.
    layout->addWidget(CreateSectionTitle(Translate("Line edits"), page));
    layout->addWidget(CreateLineEdits(page));
    //: Section title on the gallery's input page.
    layout->addWidget(CreateSectionTitle(Translate("Search boxes"), page));
    layout->addWidget(CreateSearchBoxes(page));
    //: Section title on the gallery's input page.
    layout->addWidget(CreateSectionTitle(Translate("Combo boxes"), page));
    layout->addWidget(CreateCombos(page));
    //: Section title on the gallery's input page.
    layout->addWidget(CreateSectionTitle(Translate("E-mail and internationalised domains"), page));
    layout->addWidget(CreateEmailField(page));
    layout->addStretch();
    return page;
}

// The combo boxes' lists are windows of their own, which a picture of the page leaves out.
QVector<GalleryMoment> InputPageMoments()
{
    return {};
}
