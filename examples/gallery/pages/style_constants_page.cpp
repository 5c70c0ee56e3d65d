#include "gallery_pages.h"
#include "gallery_theme.h"

#include <qt_halvo/styles/style_sheet.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtGui/QColor>
#include <QtGui/QFontDatabase>
#include <QtWidgets/QFrame>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWidget>

namespace {

enum Column { NameColumn, KindColumn, ValueColumn, SwatchColumn, ColumnCount };

struct Entry
{
    QString name;
    QString kind;
    QString value;
};

QVector<Entry> Entries()
{
    QVector<Entry> entries;
    //: Kind of a table row: a named value declared at the top of the stylesheet.
    const QString constant = QCoreApplication::translate("Gallery", "Constant");
    //: Kind of a table row: an entry of the theme's colour table (a JSON file).
    const QString colour = QCoreApplication::translate("Gallery", "Colour", "kind of row");
    const QStringList constants = GalleryTheme::DeclaredConstants();
    for (const QString& name : constants)
        entries.append({name, constant, OrvantaQT::GetCSSData(name).toString()});
    const QMap<QString, QVariant> colors = OrvantaQT::GetGlobalColors();
    for (auto it = colors.cbegin(); it != colors.cend(); ++it)
        entries.append({it.key(), colour, it.value().toString()});
    return entries;
}

// The colour a value names, as a sheet would read it; invalid when it is no colour.
QColor ColorOf(const QString& value)
{
    if (QColor::isValidColor(value))
        return QColor(value);
    if (!value.startsWith(QLatin1String("rgba(")) || !value.endsWith(QLatin1Char(')')))
        return QColor();
    const QStringList parts = value.mid(5, value.size() - 6).split(QLatin1Char(','));
    if (parts.size() != 4)
        return QColor();
    QColor color(parts[0].trimmed().toInt(), parts[1].trimmed().toInt(), parts[2].trimmed().toInt());
    color.setAlphaF(parts[3].trimmed().toDouble());
    return color;
}

// A framed patch of the colour; the frame comes from the theme, so that a colour equal
// to the table's background still shows.
QWidget* CreateSwatch(const QColor& color)
{
    auto* cell = new QWidget;
    auto* swatch = new QFrame(cell);
    swatch->setObjectName(QStringLiteral("ColorSwatch"));
    swatch->setFixedSize(48, 18);
    swatch->setStyleSheet(QStringLiteral("QFrame#ColorSwatch { background-color: rgba(%1, %2, %3, %4); }")
                              .arg(color.red())
                              .arg(color.green())
                              .arg(color.blue())
                              .arg(color.alpha()));
    auto* layout = new QHBoxLayout(cell);
    // The cell already sits inside the item padding; this adds the text margin, so that
    // the swatch lines up with the header text.
    layout->setContentsMargins(4, 0, 4, 0);
    layout->addWidget(swatch);
    layout->addStretch();
    return cell;
}

QTableWidgetItem* CreateItem(const QString& text)
{
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled);
    return item;
}

void FillRow(QTableWidget* table, int row, const Entry& entry)
{
    // Written as a sheet refers to it.
    table->setItem(row, NameColumn, CreateItem(QLatin1Char('@') + entry.name));
    table->setItem(row, KindColumn, CreateItem(entry.kind));
    QTableWidgetItem* value = CreateItem(entry.value);
    value->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    table->setItem(row, ValueColumn, value);
    const QColor color = ColorOf(entry.value);
    if (color.isValid())
        table->setCellWidget(row, SwatchColumn, CreateSwatch(color));
}

// As high as its rows, so that no empty table trails below them; smaller windows scroll.
void FitHeight(QTableWidget* table)
{
    table->resizeRowsToContents();
    int height = table->horizontalHeader()->sizeHint().height() + 2 * table->frameWidth();
    for (int row = 0; row < table->rowCount(); ++row)
        height += table->rowHeight(row);
    table->setMaximumHeight(height);
}

void Fill(QTableWidget* table)
{
    const QVector<Entry> entries = Entries();
    table->setRowCount(0);
    table->setRowCount(entries.size());
    for (int row = 0; row < entries.size(); ++row)
        FillRow(table, row, entries[row]);
    // The header has its styled height only once it has been shown with the sheet.
    QTimer::singleShot(0, table, [table] { FitHeight(table); });
}

QTableWidget* CreateTable()
{
    auto* table = new QTableWidget(0, ColumnCount);
    table->setObjectName(QStringLiteral("StyleConstantsTable"));
    table->setHorizontalHeaderLabels({
        //: Column header: the name of a stylesheet constant or colour.
        QCoreApplication::translate("Gallery", "Name"),
        //: Column header: whether the row is a stylesheet constant or a colour-table entry.
        QCoreApplication::translate("Gallery", "Kind"),
        //: Column header: the resolved value of the constant or colour.
        QCoreApplication::translate("Gallery", "Value"),
        //: Column header: a patch painted in the row's colour.
        QCoreApplication::translate("Gallery", "Colour", "column header"),
    });
    table->verticalHeader()->hide();
    table->setShowGrid(false);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setFocusPolicy(Qt::NoFocus);
    QHeaderView* header = table->horizontalHeader();
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setHighlightSections(false);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setStretchLastSection(true);
    return table;
}

QLabel* CreateTitle()
{
    auto* title = new QLabel(QCoreApplication::translate("Gallery", "Style constants"));
    title->setObjectName(QStringLiteral("PageTitle"));
    return title;
}

QLabel* CreateIntro()
{
    //: Rich text; keep the HTML tags and the link address as they are.
    auto* intro = new QLabel(QCoreApplication::translate(
        "Gallery",
        "The constants the gallery's stylesheet declares, as the stylesheet engine resolved them, and the "
        "colour table of the current theme. A sheet refers to each of them by its name. Links take "
        "<b>@linkColor</b>, as in the <a href=\"https://doc.qt.io/qt-5/stylesheet-reference.html\">Qt "
        "style sheet reference</a>."));
    intro->setObjectName(QStringLiteral("PageIntro"));
    intro->setWordWrap(true);
    intro->setOpenExternalLinks(true);
    return intro;
}

} // namespace

QWidget* CreateStyleConstantsPage(GalleryTheme& theme)
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("StyleConstantsPage"));
    QTableWidget* table = CreateTable();
    Fill(table);
    QObject::connect(&theme, &GalleryTheme::Changed, table, [table] { Fill(table); });

    auto* layout = new QVBoxLayout(page);
    layout->addWidget(CreateTitle());
    layout->addWidget(CreateIntro());
    layout->addWidget(table, 1);
    layout->addStretch();
    return page;
}
