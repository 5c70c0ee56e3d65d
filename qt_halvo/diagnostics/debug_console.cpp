#include <qt_halvo/diagnostics/debug_console.h>

#include <qt_halvo/diagnostics/debug_console_capture.h>
#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QRegularExpression>
#include <QtCore/QSaveFile>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QShortcut>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

#include <deque>

namespace OrvantaQT {

namespace {

// Lines are taken this often while the console is shown; a burst of messages becomes
// one insertion, never one per message.
constexpr int kBatchInterval = 100;
// Each batch stops after this long, and goes on at the next pass of the event loop, so
// that a flood of messages never holds a frame up.
constexpr int kBatchBudgetMs = 5;
constexpr int kChunkLines = 500;
constexpr int kDefaultMaximumLines = 50000;

DebugConsole::Level LevelOf(const DebugConsoleLine& line)
{
    if (line.origin == DebugConsoleLine::Origin::Library) {
        switch (line.level) {
        case 0: return DebugConsole::Level::Info;
        case 1: return DebugConsole::Level::Warning;
        default: return DebugConsole::Level::Error;
        }
    }
    switch (line.level) {
    case QtDebugMsg: return DebugConsole::Level::Debug;
    case QtInfoMsg: return DebugConsole::Level::Info;
    case QtWarningMsg: return DebugConsole::Level::Warning;
    case QtCriticalMsg: return DebugConsole::Level::Error;
    default: return DebugConsole::Level::Fatal;
    }
}

const char* LevelName(DebugConsole::Level level)
{
    static const char* const names[] = {"debug", "info", "warning", "error", "fatal"};
    return names[int(level)];
}

struct Row
{
    DebugConsoleLine line;
    DebugConsole::Level level;
    QString time;
};

class LinesModel : public QAbstractTableModel
{
public:
    enum Column { Time, LevelColumn, Category, Text, ColumnCount };

    std::deque<Row> rows;
    QColor colors[5];

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : int(rows.size()); }
    int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : ColumnCount; }

    QVariant data(const QModelIndex& index, int role) const override
    {
        const Row& row = rows[size_t(index.row())];
        if (role == Qt::ForegroundRole) {
            const QColor& color = colors[int(row.level)];
            return color.isValid() ? QVariant(color) : QVariant();
        }
        if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
            return QVariant();
        switch (index.column()) {
        case Time: return row.time;
        case LevelColumn: return QString::fromLatin1(LevelName(row.level));
        case Category: return row.line.category;
        default:
            // The first line in the list; the whole text in the tip.
            return role == Qt::ToolTipRole ? row.line.text : row.line.text.section(QLatin1Char('\n'), 0, 0);
        }
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return QVariant();
        switch (section) {
        case Time: return DebugConsole::tr("Time");
        case LevelColumn: return DebugConsole::tr("Level");
        case Category: return DebugConsole::tr("Category");
        default: return DebugConsole::tr("Message");
        }
    }

    void Append(const QVector<DebugConsoleLine>& lines, int maximum)
    {
        if (lines.isEmpty())
            return;
        // Only the newest that fit are kept, the oldest going first, each in one step.
        const int incoming = qMin(lines.size(), maximum);
        const int overflow = int(rows.size()) + incoming - maximum;
        if (overflow > 0) {
            beginRemoveRows(QModelIndex(), 0, overflow - 1);
            rows.erase(rows.begin(), rows.begin() + overflow);
            endRemoveRows();
        }
        beginInsertRows(QModelIndex(), int(rows.size()), int(rows.size()) + incoming - 1);
        for (int i = lines.size() - incoming; i < lines.size(); ++i) {
            const DebugConsoleLine& line = lines.at(i);
            rows.push_back(Row{line, LevelOf(line), line.time.toString(QStringLiteral("HH:mm:ss.zzz"))});
        }
        endInsertRows();
    }

    void Trim(int maximum)
    {
        const int overflow = int(rows.size()) - maximum;
        if (overflow <= 0)
            return;
        beginRemoveRows(QModelIndex(), 0, overflow - 1);
        rows.erase(rows.begin(), rows.begin() + overflow);
        endRemoveRows();
    }

    void Reset()
    {
        beginResetModel();
        rows.clear();
        endResetModel();
    }

    void Recolor()
    {
        if (!rows.empty())
            Q_EMIT dataChanged(index(0, 0), index(int(rows.size()) - 1, ColumnCount - 1), {Qt::ForegroundRole});
    }
};

class LinesFilter : public QSortFilterProxyModel
{
public:
    DebugConsole::Level minimum = DebugConsole::Level::Debug;
    QString category;
    QString text;
    QRegularExpression expression;
    bool useExpression = false;

    bool filterAcceptsRow(int sourceRow, const QModelIndex&) const override
    {
        const Row& row = static_cast<LinesModel*>(sourceModel())->rows[size_t(sourceRow)];
        if (row.level < minimum)
            return false;
        if (!category.isEmpty() && !row.line.category.contains(category, Qt::CaseInsensitive))
            return false;
        if (useExpression)
            return expression.isValid() && expression.match(row.line.text).hasMatch();
        return text.isEmpty() || row.line.text.contains(text, Qt::CaseInsensitive);
    }

    void Changed() { invalidateFilter(); }
};

QString TextOf(const Row& row)
{
    return row.time + QLatin1Char(' ') + QLatin1String(LevelName(row.level)) + QLatin1Char(' ') + row.line.category
           + QLatin1String(": ") + row.line.text;
}

} // namespace

struct DebugConsole::Private
{
    DebugConsole* q = nullptr;
    LinesModel model;
    LinesFilter filter;
    QTableView* view = nullptr;
    QComboBox* levels = nullptr;
    QLineEdit* categoryEdit = nullptr;
    QLineEdit* textEdit = nullptr;
    QCheckBox* expressionBox = nullptr;
    QPushButton* pauseButton = nullptr;
    QLabel* status = nullptr;
    QTimer batch;
    quint64 last = 0;
    quint64 dropped = 0;
    int maximum = kDefaultMaximumLines;
    bool paused = false;
    QString problem; // said once in the status line

    // Returns whether lines were left for the next batch.
    bool Take()
    {
        QElapsedTimer spent;
        spent.start();
        // A list scrolled to its end follows the new lines; one scrolled back stays.
        QScrollBar* bar = view->verticalScrollBar();
        const bool following = bar->value() == bar->maximum();
        bool changed = false;
        bool more = false;
        do {
            quint64 lost = 0;
            const QVector<DebugConsoleLine> lines = DebugConsoleLinesAfter(last, kChunkLines, &lost);
            dropped += lost;
            if (!lines.isEmpty())
                last = lines.last().sequence;
            model.Append(lines, maximum);
            changed = changed || !lines.isEmpty() || lost;
            more = lines.size() == kChunkLines;
        } while (more && spent.elapsed() < kBatchBudgetMs);
        if (following && changed)
            view->scrollToBottom();
        if (changed)
            UpdateStatus();
        return more;
    }

    void Tick()
    {
        const bool more = Take();
        if (q->isVisible() && !paused)
            batch.start(more ? 0 : kBatchInterval);
    }

    void UpdateTimer() { (q->isVisible() && !paused) ? batch.start(kBatchInterval) : batch.stop(); }

    void UpdateStatus()
    {
        QString text = DebugConsole::tr("%1 of %2 lines shown").arg(filter.rowCount()).arg(model.rows.size());
        if (dropped)
            text += QLatin1String(", ") + DebugConsole::tr("%1 dropped").arg(dropped);
        if (filter.useExpression && !filter.expression.isValid())
            text += QLatin1String(" — ") + DebugConsole::tr("invalid expression: %1").arg(filter.expression.errorString());
        if (!problem.isEmpty())
            text += QLatin1String(" — ") + problem;
        status->setText(text);
        Q_EMIT q->LinesChanged();
    }

    void ApplyText()
    {
        filter.text = textEdit->text();
        filter.useExpression = expressionBox->isChecked();
        filter.expression = QRegularExpression(filter.text, QRegularExpression::CaseInsensitiveOption);
        filter.Changed();
        UpdateStatus();
    }
};

DebugConsole::DebugConsole(QWidget* parent) : QWidget(parent), d(new Private)
{
    d->q = this;
    if (!IsDebugConsoleCaptureInstalled())
        InstallDebugConsoleCapture();
    d->filter.setSourceModel(&d->model);
    d->filter.setDynamicSortFilter(true);

    d->levels = NameChild(new QComboBox(this), "DebugConsole", "LevelFilter");
    for (const char* name : {QT_TR_NOOP("Debug and above"), QT_TR_NOOP("Information and above"),
                             QT_TR_NOOP("Warnings and above"), QT_TR_NOOP("Errors and above"), QT_TR_NOOP("Fatal only")})
        d->levels->addItem(tr(name));
    d->categoryEdit = NameChild(new QLineEdit(this), "DebugConsole", "CategoryFilter");
    d->categoryEdit->setPlaceholderText(tr("Category or tag"));
    d->textEdit = NameChild(new QLineEdit(this), "DebugConsole", "TextFilter");
    d->textEdit->setPlaceholderText(tr("Text"));
    d->expressionBox = NameChild(new QCheckBox(tr("Regular expression"), this), "DebugConsole", "RegularExpression");
    d->pauseButton = NameChild(new QPushButton(tr("Pause"), this), "DebugConsole", "PauseButton");
    d->pauseButton->setCheckable(true);
    auto* copy = NameChild(new QPushButton(tr("Copy"), this), "DebugConsole", "CopyButton");
    auto* clear = NameChild(new QPushButton(tr("Clear"), this), "DebugConsole", "ClearButton");
    d->view = NameChild(new QTableView(this), "DebugConsole", "Lines");
    d->view->setModel(&d->filter);
    d->view->setSelectionBehavior(QAbstractItemView::SelectRows);
    d->view->setWordWrap(false);
    d->view->verticalHeader()->hide();
    d->view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    d->view->horizontalHeader()->setStretchLastSection(true);
    d->status = NameChild(new QLabel(this), "DebugConsole", "Status");

    d->view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    d->categoryEdit->setMinimumWidth(60);
    d->textEdit->setMinimumWidth(60);

    // Filters above the lines; what is shown and what can be done with it below.
    auto* filters = new QHBoxLayout;
    filters->addWidget(d->levels);
    filters->addWidget(d->categoryEdit, 1);
    filters->addWidget(d->textEdit, 2);
    filters->addWidget(d->expressionBox);
    auto* actions = new QHBoxLayout;
    actions->addWidget(d->status, 1);
    actions->addWidget(d->pauseButton);
    actions->addWidget(copy);
    actions->addWidget(clear);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filters);
    layout->addWidget(d->view, 1);
    layout->addLayout(actions);

    d->batch.setInterval(kBatchInterval);
    connect(&d->batch, &QTimer::timeout, this, [this] { d->Tick(); });
    connect(d->levels, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this](int index) { SetMinimumLevel(Level(index)); });
    connect(d->categoryEdit, &QLineEdit::textChanged, this, [this](const QString& text) { SetCategoryFilter(text); });
    connect(d->textEdit, &QLineEdit::textChanged, this, [this] { d->ApplyText(); });
    connect(d->expressionBox, &QCheckBox::toggled, this, [this] { d->ApplyText(); });
    connect(d->pauseButton, &QPushButton::toggled, this, [this](bool on) { SetPaused(on); });
    connect(copy, &QPushButton::clicked, this, [this] { CopySelection(); });
    connect(clear, &QPushButton::clicked, this, [this] { Clear(); });
    d->UpdateStatus();
}

DebugConsole::~DebugConsole()
{
    delete d;
}

DebugConsole::Level DebugConsole::GetMinimumLevel() const { return d->filter.minimum; }

void DebugConsole::SetMinimumLevel(Level level)
{
    if (level == d->filter.minimum)
        return;
    d->filter.minimum = level;
    const QSignalBlocker blocker(d->levels);
    d->levels->setCurrentIndex(int(level));
    d->filter.Changed();
    d->UpdateStatus();
}

QString DebugConsole::GetCategoryFilter() const { return d->filter.category; }

void DebugConsole::SetCategoryFilter(const QString& text)
{
    if (text == d->filter.category)
        return;
    d->filter.category = text;
    if (d->categoryEdit->text() != text)
        d->categoryEdit->setText(text);
    d->filter.Changed();
    d->UpdateStatus();
}

QString DebugConsole::GetTextFilter() const { return d->filter.text; }

void DebugConsole::SetTextFilter(const QString& text, bool regularExpression)
{
    const QSignalBlocker textBlocker(d->textEdit);
    const QSignalBlocker boxBlocker(d->expressionBox);
    d->textEdit->setText(text);
    d->expressionBox->setChecked(regularExpression);
    d->ApplyText();
}

bool DebugConsole::IsPaused() const { return d->paused; }

void DebugConsole::SetPaused(bool paused)
{
    if (paused == d->paused)
        return;
    d->paused = paused;
    const QSignalBlocker blocker(d->pauseButton);
    d->pauseButton->setChecked(paused);
    d->pauseButton->setText(paused ? tr("Resume") : tr("Pause"));
    d->UpdateTimer();
}

void DebugConsole::Refresh()
{
    if (d->paused)
        return;
    while (d->Take()) {
    }
}

void DebugConsole::Clear()
{
    ClearDebugConsoleCapture();
    d->last = DebugConsoleLastSequence();
    d->dropped = 0;
    d->model.Reset();
    d->UpdateStatus();
}

QString DebugConsole::ShownText(bool selectedOnly) const
{
    QStringList lines;
    const QModelIndexList selected = d->view->selectionModel()->selectedRows();
    if (selectedOnly && !selected.isEmpty()) {
        QList<int> rows;
        for (const QModelIndex& index : selected)
            rows << d->filter.mapToSource(index).row();
        std::sort(rows.begin(), rows.end());
        for (int row : rows)
            lines << TextOf(d->model.rows[size_t(row)]);
    } else {
        for (int i = 0; i < d->filter.rowCount(); ++i)
            lines << TextOf(d->model.rows[size_t(d->filter.mapToSource(d->filter.index(i, 0)).row())]);
    }
    return lines.isEmpty() ? QString() : lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void DebugConsole::CopySelection() const
{
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->setText(ShownText(true));
}

bool DebugConsole::SaveToFile(const QString& path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text) || file.write(ShownText().toUtf8()) < 0 || !file.commit()) {
        const QString why = tr("Cannot write %1: %2").arg(path, file.errorString());
        if (why != d->problem) {
            d->problem = why;
            QTH_LOG_WARNING("DebugConsole: cannot write %s: %s", qUtf8Printable(path), qUtf8Printable(file.errorString()));
            d->UpdateStatus();
        }
        return false;
    }
    if (!d->problem.isEmpty()) {
        d->problem.clear();
        d->UpdateStatus();
    }
    return true;
}

int DebugConsole::ShownLineCount() const { return d->filter.rowCount(); }
int DebugConsole::LineCount() const { return int(d->model.rows.size()); }
quint64 DebugConsole::DroppedLineCount() const { return d->dropped; }
int DebugConsole::GetMaximumLines() const { return d->maximum; }

void DebugConsole::SetMaximumLines(int lines)
{
    lines = qMax(1, lines);
    if (lines == d->maximum)
        return;
    d->maximum = lines;
    d->model.Trim(lines);
    d->UpdateStatus();
}

#define QTH_CONSOLE_COLOR(Name, index)                                                                                 \
    QColor DebugConsole::Get##Name##Color() const { return d->model.colors[index]; }                                  \
    void DebugConsole::Set##Name##Color(const QColor& color)                                                           \
    {                                                                                                                  \
        if (color == d->model.colors[index])                                                                           \
            return;                                                                                                    \
        d->model.colors[index] = color;                                                                                \
        if (index == int(Level::Error))                                                                                \
            d->model.colors[int(Level::Fatal)] = color;                                                                \
        d->model.Recolor();                                                                                            \
    }
QTH_CONSOLE_COLOR(Debug, int(Level::Debug))
QTH_CONSOLE_COLOR(Info, int(Level::Info))
QTH_CONSOLE_COLOR(Warning, int(Level::Warning))
QTH_CONSOLE_COLOR(Error, int(Level::Error))
#undef QTH_CONSOLE_COLOR

void DebugConsole::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    d->Tick();
}

void DebugConsole::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    d->UpdateTimer();
}

QShortcut* InstallDebugConsoleShortcut(QWidget* window, const QKeySequence& key)
{
    if (!window) {
        QTH_LOG_WARNING("InstallDebugConsoleShortcut: no window");
        return nullptr;
    }
    auto* shortcut = new QShortcut(key, window);
    shortcut->setContext(Qt::WindowShortcut);
    auto console = std::make_shared<QPointer<DebugConsole>>();
    QObject::connect(shortcut, &QShortcut::activated, window, [window, console] {
        if (!*console) {
            *console = new DebugConsole(window);
            (*console)->setObjectName(QStringLiteral("DebugConsoleWindow"));
            (*console)->setWindowFlag(Qt::Tool);
            (*console)->setWindowTitle(DebugConsole::tr("Debug console"));
            (*console)->resize(900, 400);
        }
        (*console)->setVisible(!(*console)->isVisible());
    });
    return shortcut;
}

} // namespace OrvantaQT
