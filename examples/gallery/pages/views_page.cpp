#include "gallery_pages.h"

#include <qt_halvo/charts/pie_chart.h>
#include <qt_halvo/views/check_box_header_view.h>
#include <qt_halvo/views/closable_list_view.h>
#include <qt_halvo/views/closable_tree_view.h>
#include <qt_halvo/views/table_view.h>
#include <qt_halvo/views/widget_item_delegate.h>
#include <qt_halvo/widgets/text/autoresized_text.h>
#include <qt_halvo/widgets/text/link_label.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QCoreApplication>
#include <QtCore/QDate>
#include <QtCore/QLocale>
#include <QtCore/QMetaEnum>
#include <QtCore/QPointer>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QTimer>
#include <QtGui/QAccessible>
#include <QtGui/QMouseEvent>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

#include <vector>

using OrvantaQT::CheckBoxHeaderView;
using OrvantaQT::ClosableListView;
using OrvantaQT::ClosableTreeView;
using OrvantaQT::TableView;
using OrvantaQT::WidgetItemDelegate;

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("ViewsPage", text);
}

constexpr int kRows = 100000;

// 100,000 files computed from their numbers: only the check marks and the removed rows
// take memory. Shared by every view of the page.
class FileModel : public QAbstractTableModel
{
public:
    enum Column { Keep, Name, Size, Kind, Modified, ColumnCount };

    explicit FileModel(QObject* parent)
        : QAbstractTableModel(parent)
    {
        m_files.reserve(kRows);
        for (int i = 0; i < kRows; ++i)
            m_files.push_back(File{quint32(i), i % 7 == 0});
    }

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : int(m_files.size()); }
    int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : ColumnCount; }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || index.row() >= int(m_files.size()))
            return {};
        const File& file = m_files[size_t(index.row())];
        if (index.column() == Keep && role == Qt::CheckStateRole)
            return file.keep ? Qt::Checked : Qt::Unchecked;
        if (role != Qt::DisplayRole)
            return {};
        static const char* const kinds[] = {QT_TRANSLATE_NOOP("ViewsPage", "Document"),
                                            QT_TRANSLATE_NOOP("ViewsPage", "Picture"),
                                            QT_TRANSLATE_NOOP("ViewsPage", "Song"),
                                            QT_TRANSLATE_NOOP("ViewsPage", "Spreadsheet with a long name")};
        switch (index.column()) {
        case Name:
            return Translate("File %1").arg(file.number, 6, 10, QLatin1Char('0'));
        case Size:
            return QLocale().formattedDataSize(qint64(file.number % 977 + 1) * 4096);
        case Kind:
            return Translate(kinds[file.number % 4]);
        case Modified:
            return QLocale().toString(QDate(2026, 1, 1).addDays(file.number % 330), QLocale::ShortFormat);
        default:
            return {};
        }
    }

    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        if (!index.isValid() || index.column() != Keep || role != Qt::CheckStateRole)
            return false;
        m_files[size_t(index.row())].keep = value.toInt() == Qt::Checked;
        Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
        return true;
    }

    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        Qt::ItemFlags flags = QAbstractTableModel::flags(index);
        return index.column() == Keep ? flags | Qt::ItemIsUserCheckable : flags;
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        static const char* const titles[] = {
            QT_TRANSLATE_NOOP("ViewsPage", "Keep"), QT_TRANSLATE_NOOP("ViewsPage", "Name"),
            QT_TRANSLATE_NOOP("ViewsPage", "Size"), QT_TRANSLATE_NOOP("ViewsPage", "Kind"),
            QT_TRANSLATE_NOOP("ViewsPage", "Modified")};
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 && section < ColumnCount)
            return Translate(titles[section]);
        return QAbstractTableModel::headerData(section, orientation, role);
    }

    bool removeRows(int row, int count, const QModelIndex& parent) override
    {
        if (parent.isValid() || row < 0 || count <= 0 || row + count > int(m_files.size()))
            return false;
        beginRemoveRows(parent, row, row + count - 1);
        m_files.erase(m_files.begin() + row, m_files.begin() + row + count);
        endRemoveRows();
        return true;
    }

private:
    struct File
    {
        quint32 number;
        bool keep;
    };
    std::vector<File> m_files;
};

// A table through a filter, with the check box of the "Keep" column in its header.
QWidget* CreateTable(FileModel* files, QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* filter = new QLineEdit(demo);
    filter->setObjectName(QStringLiteral("TableFilter"));
    filter->setPlaceholderText(Translate("Filter by name, e.g. 0042 (try xyz for the empty state)"));
    filter->setClearButtonEnabled(true);
    layout->addWidget(filter);

    auto* proxy = new QSortFilterProxyModel(demo);
    proxy->setSourceModel(files);
    proxy->setFilterKeyColumn(FileModel::Name);
    auto* table = new TableView(demo);
    table->setObjectName(QStringLiteral("FileTable"));
    auto* header = new CheckBoxHeaderView(table);
    header->setObjectName(QStringLiteral("FileTableHeader"));
    table->setHorizontalHeader(header);
    table->setModel(proxy);
    header->SetCheckColumn(FileModel::Keep);
    table->SetEmptyText(Translate("No file matches the filter."));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->verticalHeader()->hide();
    table->setColumnWidth(FileModel::Keep, 90);
    table->setColumnWidth(FileModel::Name, 120);
    table->setColumnWidth(FileModel::Size, 90);
    table->setColumnWidth(FileModel::Kind, 110);
    table->setMinimumHeight(260);
    layout->addWidget(table);
    QObject::connect(filter, &QLineEdit::textChanged, proxy, &QSortFilterProxyModel::setFilterFixedString);

    auto* state = CreateSecondaryText(QString(), demo);
    state->setObjectName(QStringLiteral("TableState"));
    const auto showState = [header, state] {
        state->setText(Translate("%1 of %2 shown files kept.")
                           .arg(QLocale().toString(header->CheckedCount()), QLocale().toString(header->RowCount())));
    };
    // Checking every row changes 100,000 of them: one new text for all the changes of an
    // event loop pass.
    auto* later = new QTimer(state);
    later->setSingleShot(true);
    later->setInterval(0);
    QObject::connect(later, &QTimer::timeout, state, showState);
    const auto showLater = [later] { later->start(); };
    QObject::connect(header, &CheckBoxHeaderView::CheckStateChanged, later, showLater);
    QObject::connect(proxy, &QAbstractItemModel::dataChanged, later, showLater);
    QObject::connect(proxy, &QAbstractItemModel::rowsInserted, later, showLater);
    QObject::connect(proxy, &QAbstractItemModel::rowsRemoved, later, showLater);
    QObject::connect(proxy, &QAbstractItemModel::modelReset, later, showLater);
    QObject::connect(proxy, &QAbstractItemModel::layoutChanged, later, showLater);
    showState();
    layout->addWidget(state);
    return demo;
}

// A list whose rows close on their button, middle click or Delete, and a tree beside it.
QWidget* CreateClosable(FileModel* files, QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);

    auto* list = new ClosableListView(demo);
    list->setObjectName(QStringLiteral("ClosableList"));
    list->setModel(files);
    list->setModelColumn(FileModel::Name);
    list->setMinimumHeight(200);
    QObject::connect(list, &ClosableListView::CloseRequested, files,
                     [files](const QModelIndex& index) { files->removeRow(index.row()); });
    layout->addWidget(list, 1);

    auto* folders = new QStandardItemModel(demo);
    const struct
    {
        const char* name;
        int files;
    } tree[] = {{QT_TRANSLATE_NOOP("ViewsPage", "Documents"), 4}, {QT_TRANSLATE_NOOP("ViewsPage", "Pictures"), 3},
                {QT_TRANSLATE_NOOP("ViewsPage", "Music"), 5}};
    for (const auto& folder : tree) {
        auto* item = new QStandardItem(Translate(folder.name));
        for (int i = 1; i <= folder.files; ++i)
            item->appendRow(new QStandardItem(Translate("%1 %2").arg(Translate(folder.name)).arg(i)));
        folders->appendRow(item);
    }
    folders->setHorizontalHeaderLabels({Translate("Folders")});
    auto* treeView = new ClosableTreeView(demo);
    treeView->setObjectName(QStringLiteral("ClosableTree"));
    treeView->setModel(folders);
    treeView->expandAll();
    QObject::connect(treeView, &ClosableTreeView::CloseRequested, folders, [folders](const QModelIndex& index) {
        folders->removeRow(index.row(), index.parent());
    });
    layout->addWidget(treeView, 1);
    return demo;
}

// Rows with a check box bound to "Keep", the name, and a button that says what it opened.
class FileRowDelegate : public WidgetItemDelegate
{
public:
    FileRowDelegate(QAbstractItemView* view, QLabel* log)
        : WidgetItemDelegate(view, view)
        , m_log(log)
    {
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return QSize(WidgetItemDelegate::sizeHint(option, index).width(), 34);
    }

protected:
    QList<QWidget*> CreateItemWidgets(const QModelIndex&) const override
    {
        auto* keep = new QCheckBox;
        keep->setObjectName(QStringLiteral("RowKeep"));
        auto* open = new QPushButton(Translate("Open"));
        open->setObjectName(QStringLiteral("RowOpen"));
        QAbstractItemView* view = ItemView();
        QObject::connect(keep, &QCheckBox::toggled, view, [this, keep](bool on) {
            const QModelIndex index = keep->property("row").value<QPersistentModelIndex>();
            if (index.isValid())
                ItemView()->model()->setData(index.siblingAtColumn(FileModel::Keep), on ? Qt::Checked : Qt::Unchecked,
                                             Qt::CheckStateRole);
        });
        QPointer<QLabel> log = m_log;
        QObject::connect(open, &QPushButton::clicked, view, [open, log] {
            if (log)
                log->setText(Translate("Opened %1.").arg(open->property("name").toString()));
        });
        return {keep, open};
    }

    void UpdateItemWidgets(const QList<QWidget*>& widgets, const QStyleOptionViewItem& option,
                           const QPersistentModelIndex& index) const override
    {
        if (widgets.size() != 2 || !index.isValid())
            return;
        auto* keep = static_cast<QCheckBox*>(widgets[0]);
        auto* open = static_cast<QPushButton*>(widgets[1]);
        const QModelIndex keepIndex = index.sibling(index.row(), FileModel::Keep);
        keep->setProperty("row", QVariant::fromValue(QPersistentModelIndex(keepIndex)));
        const QSignalBlocker blocker(keep);
        keep->setChecked(keepIndex.data(Qt::CheckStateRole).toInt() == Qt::Checked);
        keep->setText(index.sibling(index.row(), FileModel::Name).data().toString());
        open->setProperty("name", keep->text());
        const QSize keepSize = keep->sizeHint();
        const QSize openSize = open->sizeHint();
        const int height = option.rect.height();
        keep->setGeometry(8, (height - keepSize.height()) / 2, keepSize.width(), keepSize.height());
        open->setGeometry(option.rect.width() - openSize.width() - 8, (height - openSize.height()) / 2,
                          openSize.width(), openSize.height());
    }

private:
    QPointer<QLabel> m_log;
};

QWidget* CreateWidgetRows(FileModel* files, QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* list = new QListView(demo);
    list->setObjectName(QStringLiteral("WidgetRows"));
    list->setModel(files);
    list->setModelColumn(FileModel::Name);
    list->setUniformItemSizes(true);
    list->setMinimumHeight(220);
    auto* log = CreateSecondaryText(Translate("Nothing opened yet."), demo);
    log->setObjectName(QStringLiteral("WidgetRowsLog"));
    new FileRowDelegate(list, log);
    layout->addWidget(list);
    layout->addWidget(log);
    return demo;
}

QString Describe(const QString& name, QObject* object)
{
    QAccessibleInterface* accessible = object ? QAccessible::queryAccessibleInterface(object) : nullptr;
    if (!accessible)
        return Translate("%1: nothing for screen readers").arg(name);
    QString line = QStringLiteral("%1: %2 \"%3\"")
                       .arg(name,
                            QLatin1String(QMetaEnum::fromType<QAccessible::Role>().valueToKey(accessible->role())),
                            accessible->text(QAccessible::Name));
    if (QAccessibleValueInterface* value = accessible->valueInterface())
        line += Translate(", value %1 of %2").arg(value->currentValue().toString(), value->maximumValue().toString());
    if (accessible->state().checkStateMixed)
        line += Translate(", partly checked");
    else if (accessible->state().checked)
        line += Translate(", checked");
    for (int i = 0; i < accessible->childCount(); ++i) {
        if (QAccessibleInterface* child = accessible->child(i))
            line += QStringLiteral("\n    %1 \"%2\"")
                        .arg(QLatin1String(QMetaEnum::fromType<QAccessible::Role>().valueToKey(child->role())),
                             child->text(QAccessible::Name));
    }
    return line;
}

// What a screen reader is told about painted widgets.
QWidget* CreateAccessibility(QWidget* page, QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    auto* pie = new OrvantaQT::PieChart(demo);
    pie->setObjectName(QStringLiteral("DiskPie"));
    pie->setMaximum(100);
    pie->setValue(62);
    pie->setFixedSize(64, 64);
    pie->setAccessibleName(Translate("Disk used"));
    row->addWidget(pie);
    auto* texts = new QVBoxLayout;
    auto* elided = new OrvantaQT::AutoresizedText(demo);
    elided->setObjectName(QStringLiteral("ElidedText"));
    elided->setText(Translate("A long caption that the label cuts, while a screen reader hears all of it"));
    elided->setMaximumWidth(260);
    texts->addWidget(elided);
    auto* link = new OrvantaQT::LinkLabel(demo);
    link->setObjectName(QStringLiteral("HelpLink"));
    link->setText(Translate("Help on views"));
    texts->addWidget(link);
    row->addLayout(texts);
    row->addStretch(1);

    auto* description = new QPlainTextEdit(demo);
    description->setObjectName(QStringLiteral("AccessibleDescription"));
    description->setReadOnly(true);
    description->setMinimumHeight(150);
    layout->addWidget(description);
    auto* refresh = CreateButton(Translate("Ask again"), "DescribeButton", demo);
    layout->addWidget(refresh, 0, Qt::AlignLeft);
    const auto describe = [page, description] {
        QStringList lines;
        for (const char* name : {"DiskPie", "ElidedText", "HelpLink", "FileTableHeader", "CloseButton"})
            lines << Describe(QLatin1String(name), page->findChild<QObject*>(QLatin1String(name)));
        description->setPlainText(lines.join(QLatin1Char('\n')));
    };
    QObject::connect(refresh, &QPushButton::clicked, description, describe);
    return demo;
}

// The pointer over a row of a view, as a mouse move would put it.
void HoverRow(QWidget* page, const char* viewName, int row)
{
    auto* view = page->findChild<QAbstractItemView*>(QLatin1String(viewName));
    if (!view || !view->model())
        return;
    int column = 0;
    if (auto* list = qobject_cast<QListView*>(view))
        column = list->modelColumn();
    else if (qobject_cast<QTableView*>(view))
        column = FileModel::Name;
    const QPoint at = view->visualRect(view->model()->index(row, column)).center();
    QMouseEvent move(QEvent::MouseMove, at, view->viewport()->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QHoverEvent hover(QEvent::HoverMove, at, at);
    QCoreApplication::sendEvent(view->viewport(), &hover);
    QCoreApplication::sendEvent(view->viewport(), &move);
}

} // namespace

QWidget* CreateViewsPage()
{
    ScrollingPage scrolling = CreateScrollingPage("ViewsPage", Translate("Item views"));
    QWidget* content = scrolling.content;
    auto* files = new FileModel(content);
    scrolling.layout->addWidget(CreateSection(
        "TableSection", Translate("Table"),
        Translate("TableView on 100,000 files: the row under the pointer is hovered as a whole, only cut texts have "
                  "tool tips, and a filter that matches nothing shows the empty state. The header's box checks or "
                  "unchecks every file the filter shows."),
        CreateTable(files, content), content));
    scrolling.layout->addWidget(CreateSection(
        "ClosableSection", Translate("Closable rows"),
        Translate("ClosableListView and ClosableTreeView: the close button of the hovered or current row, a middle "
                  "click or Delete closes it, and the next row is hovered at once."),
        CreateClosable(files, content), content));
    scrolling.layout->addWidget(CreateSection(
        "WidgetRowsSection", Translate("Widgets in rows"),
        Translate("WidgetItemDelegate: a check box and a button in each of the 100,000 rows, made only for the rows "
                  "in sight and reused while scrolling; Tab moves through them."),
        CreateWidgetRows(files, content), content));
    scrolling.layout->addWidget(CreateSection(
        "AccessibilitySection", Translate("Screen readers"),
        Translate("What the accessibility factory tells a screen reader about widgets that are painted by hand."),
        CreateAccessibility(scrolling.page, content), content));
    scrolling.layout->addStretch(1);
    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> ViewsPageMoments()
{
    return {
        {QStringLiteral("hovered"),
         [](QWidget* page) {
             auto* table = page->findChild<QAbstractItemView*>(QStringLiteral("FileTable"));
             if (table)
                 table->model()->setData(table->model()->index(1, FileModel::Keep), Qt::Checked, Qt::CheckStateRole);
             HoverRow(page, "FileTable", 3);
         },
         50},
        {QStringLiteral("empty"),
         [](QWidget* page) {
             if (auto* filter = page->findChild<QLineEdit*>(QStringLiteral("TableFilter")))
                 filter->setText(QStringLiteral("xyz"));
         },
         300},
        {QStringLiteral("closable"),
         [](QWidget* page) {
             if (auto* filter = page->findChild<QLineEdit*>(QStringLiteral("TableFilter")))
                 filter->clear();
             ScrollTo(page, "ClosableSection");
             HoverRow(page, "ClosableList", 2);
             HoverRow(page, "ClosableTree", 1);
         },
         50},
        {QStringLiteral("widget_rows"),
         [](QWidget* page) {
             ScrollTo(page, "WidgetRowsSection");
             if (auto* list = page->findChild<QAbstractItemView*>(QStringLiteral("WidgetRows")))
                 list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum() / 2);
         },
         100},
        {QStringLiteral("accessibility"),
         [](QWidget* page) {
             ScrollTo(page, "AccessibilitySection");
             ClickButton(page, "DescribeButton");
         },
         50},
    };
}
