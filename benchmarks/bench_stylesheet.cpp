// Stylesheet processing on a generated sheet of about 200 KB with 300 constants (names
// of mixed lengths, some prefixes of others, values with references, about 3,500
// references in the text), at 1x, 2x and 4x that size, next to a straightforward
// regex-per-constant implementation of the same rules. summary() prints the figures.

#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/styles/style_sheet_p.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QRandomGenerator>
#include <QtCore/QRegExp>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <algorithm>

using namespace OrvantaQT;

namespace {

struct Workload
{
    QString sheet;      // constants block and rules
    QByteArray colours; // JSON
    int references = 0;
};

QString RandomName(QRandomGenerator& random, int length)
{
    static const QString letters = QStringLiteral("abcdefghijklmnopqrstuvwxyz");
    QString name;
    for (int i = 0; i < length; ++i)
        name.append(letters[random.bounded(letters.size())]);
    return name;
}

QString RandomColour(QRandomGenerator& random)
{
    return QStringLiteral("#%1").arg(random.bounded(0x1000000), 6, 16, QLatin1Char('0'));
}

Workload MakeWorkload(int scale)
{
    QRandomGenerator random(4711);
    // 200 base names of 3 to 16 letters; 100 more extend some of them ("accent" and
    // "accentDark"), so that the shorter names are prefixes of the longer ones.
    QStringList names;
    while (names.size() < 200) {
        const QString name = RandomName(random, 3 + random.bounded(14));
        if (!names.contains(name))
            names.append(name);
    }
    static const QStringList suffixes{QStringLiteral("Dark"), QStringLiteral("Light"), QStringLiteral("Hover"),
                                      QStringLiteral("2"), QStringLiteral("Border")};
    while (names.size() < 300) {
        const QString name = names[random.bounded(200)] + suffixes[random.bounded(suffixes.size())];
        if (!names.contains(name))
            names.append(name);
    }
    QStringList colourNames;
    for (int i = 0; i < 40; ++i)
        colourNames.append(QStringLiteral("palette%1Colour").arg(QChar(QLatin1Char('A' + i % 26))) + QString::number(i));

    Workload workload;
    workload.sheet = QStringLiteral("/* Stylesheet Constants\n");
    for (const QString& name : qAsConst(names)) {
        QString value;
        switch (random.bounded(10)) {
        case 0: case 1: case 2: case 3: case 4: value = RandomColour(random); break;
        case 5: case 6: value = QStringLiteral("%1px").arg(random.bounded(40)); break;
        case 7: value = QStringLiteral("1px solid @") + colourNames[random.bounded(colourNames.size())]; break;
        default: value = QStringLiteral("@") + names[random.bounded(names.size())]; break;
        }
        // A value may not refer to itself, not even through a longer name.
        if (value.contains(QLatin1Char('@') + name))
            value = RandomColour(random);
        workload.sheet += name + QStringLiteral(" = ") + value + QLatin1Char('\n');
    }
    workload.sheet += QStringLiteral("*/\n");

    QJsonObject colours;
    for (const QString& name : qAsConst(colourNames))
        colours.insert(name, RandomColour(random));
    colours.insert(names[0], QStringLiteral("rgba(1, 2, 3, 0.5)")); // a colour that overrides a constant
    workload.colours = QJsonDocument(colours).toJson();

    static const QStringList properties{QStringLiteral("color"), QStringLiteral("background"),
                                        QStringLiteral("border"), QStringLiteral("padding"),
                                        QStringLiteral("margin")};
    const int targetLength = 200 * 1024 * scale;
    for (int rule = 0; workload.sheet.size() < targetLength; ++rule) {
        workload.sheet += QStringLiteral("QWidget#item%1 > QLabel[hovered=\"true\"] {\n").arg(rule);
        for (const QString& property : properties) {
            const QString& reference = random.bounded(12) == 0 ? colourNames[random.bounded(colourNames.size())]
                                                               : names[random.bounded(names.size())];
            workload.sheet += QStringLiteral("    %1: @%2;\n").arg(property, reference);
            ++workload.references;
        }
        workload.sheet += QStringLiteral("    min-height: 24px;\n    font-size: 12px;\n    qproperty-alignment: AlignCenter;\n}\n");
    }
    return workload;
}

// The rules done the straightforward way: one regular expression per constant over the
// whole text, each search resuming at the start of the replacement.
void ReplaceAll(QString& text, const QString& name, const QString& value)
{
    const QRegExp pattern(QLatin1Char('@') + name);
    int at = 0;
    while ((at = pattern.indexIn(text, at)) != -1)
        text.replace(at, pattern.matchedLength(), value);
}

void ReferenceResolve(StyleConstants& constants)
{
    for (auto a = constants.begin(); a != constants.end(); ++a) {
        for (auto b = constants.begin(); b != constants.end(); ++b) {
            QString value = b.value().toString();
            const QString before = value;
            ReplaceAll(value, a.key(), a.value().toString());
            if (value != before)
                b.value() = value;
        }
    }
}

QString ReferenceSubstitute(QString text, const StyleConstants& constants)
{
    for (auto it = constants.cbegin(); it != constants.cend(); ++it)
        ReplaceAll(text, it.key(), it.value().toString());
    return text;
}

QMap<QString, QVariant> ColourTable(const QByteArray& json)
{
    return QJsonDocument::fromJson(json).object().toVariantMap();
}

// What RecalculateStylesheet does, given the working constants.
QString LibraryRecalculate(const QString& sheet, StyleConstants working)
{
    QString text = sheet;
    ParseStylesheetConstants(text, working);
    ResolveConstantReferences(working);
    return SubstituteConstants(text, working);
}

QString ReferenceRecalculate(const QString& sheet, StyleConstants working)
{
    QString text = sheet;
    ParseStylesheetConstants(text, working);
    ReferenceResolve(working);
    return ReferenceSubstitute(text, working);
}

// What loading a global sheet does once the file is read: parse, resolve, merge the
// colours, substitute.
QString ReferenceGlobal(const QString& sheet, const QMap<QString, QVariant>& colours, StyleConstants& constants)
{
    QString text = sheet;
    ParseStylesheetConstants(text, constants);
    ReferenceResolve(constants);
    for (auto it = colours.cbegin(); it != colours.cend(); ++it)
        constants.insert(it.key(), it.value());
    return ReferenceSubstitute(text, constants);
}

double MedianMilliseconds(const std::function<void()>& run, int repetitions)
{
    QVector<double> times;
    for (int i = 0; i < repetitions; ++i) {
        QElapsedTimer timer;
        timer.start();
        run();
        times.append(timer.nsecsElapsed() / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

class BenchStylesheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void recalculate_data();
    void recalculate();
    void globalLoad_data();
    void globalLoad();
    void summary();

private:
    QString SheetFile(int scale);
    void LoadGlobal(int scale);

    QTemporaryDir m_dir;
    QMap<int, Workload> m_workloads;
};

void BenchStylesheet::initTestCase()
{
    for (const int scale : {1, 2, 4}) {
        m_workloads.insert(scale, MakeWorkload(scale));
        QFile sheet(SheetFile(scale));
        QVERIFY(sheet.open(QIODevice::WriteOnly));
        sheet.write(m_workloads[scale].sheet.toUtf8());
        QFile colours(m_dir.filePath(QStringLiteral("colours%1.json").arg(scale)));
        QVERIFY(colours.open(QIODevice::WriteOnly));
        colours.write(m_workloads[scale].colours);
    }
}

QString BenchStylesheet::SheetFile(int scale)
{
    return m_dir.filePath(QStringLiteral("sheet%1.qss").arg(scale));
}

void BenchStylesheet::LoadGlobal(int scale)
{
    ResetStyleState();
    LoadGlobalStyleSheet(SheetFile(scale), m_dir.filePath(QStringLiteral("colours%1.json").arg(scale)));
}

void BenchStylesheet::recalculate_data()
{
    QTest::addColumn<int>("scale");
    QTest::addColumn<bool>("reference");
    for (const int scale : {1, 2, 4}) {
        QTest::addRow("%dx library", scale) << scale << false;
        QTest::addRow("%dx reference", scale) << scale << true;
    }
}

void BenchStylesheet::recalculate()
{
    QFETCH(int, scale);
    QFETCH(bool, reference);
    const Workload& workload = m_workloads[scale];
    StyleConstants working;
    MergeGlobalColors(working);
    QString result;
    QBENCHMARK {
        result = reference ? ReferenceRecalculate(workload.sheet, working) : LibraryRecalculate(workload.sheet, working);
    }
    QVERIFY(!result.isEmpty());
}

void BenchStylesheet::globalLoad_data()
{
    recalculate_data();
}

void BenchStylesheet::globalLoad()
{
    QFETCH(int, scale);
    QFETCH(bool, reference);
    LoadGlobal(scale);
    const Workload& workload = m_workloads[scale];
    const QMap<QString, QVariant> colours = ColourTable(workload.colours);
    // Like a sheet's entry in the library, the constants are kept from one load to the next.
    StyleConstants constants;
    QBENCHMARK {
        if (reference) {
            QFile file(SheetFile(scale));
            file.open(QIODevice::ReadOnly);
            ReferenceGlobal(QString::fromUtf8(file.readAll()), colours, constants);
        } else {
            RecalculateGlobalStyleSheet();
        }
    }
}

void BenchStylesheet::summary()
{
    QTextStream out(stdout);
    out << "\nsize      refs   what         reference ms  library ms  faster  identical\n";
    for (const int scale : {1, 2, 4}) {
        const Workload& workload = m_workloads[scale];
        const int repetitions = 3;

        StyleConstants working;
        LoadGlobal(scale);
        const QMap<QString, QVariant> colours = ColourTable(workload.colours);
        MergeGlobalColors(working);
        QString library;
        QString reference;
        const double recalculateLibrary =
            MedianMilliseconds([&] { library = LibraryRecalculate(workload.sheet, working); }, 21);
        const double recalculateReference =
            MedianMilliseconds([&] { reference = ReferenceRecalculate(workload.sheet, working); }, repetitions);
        out << QStringLiteral("%1 KB  %2  recalculate  %3  %4  %5x  %6\n")
                   .arg(workload.sheet.toUtf8().size() / 1024, 4).arg(workload.references, 5)
                   .arg(recalculateReference, 12, 'f', 2).arg(recalculateLibrary, 10, 'f', 2)
                   .arg(recalculateReference / recalculateLibrary, 6, 'f', 0)
                   .arg(library == reference ? QStringLiteral("yes") : QStringLiteral("NO"));
        QCOMPARE(library, reference);

        // The library keeps a sheet's constants from one load to the next, and so does this.
        StyleConstants constants;
        QString referenceGlobal;
        const double globalLibrary = MedianMilliseconds([] { RecalculateGlobalStyleSheet(); }, 21);
        const double globalReference = MedianMilliseconds(
            [&] {
                QFile file(SheetFile(scale));
                file.open(QIODevice::ReadOnly);
                referenceGlobal = ReferenceGlobal(QString::fromUtf8(file.readAll()), colours, constants);
            },
            repetitions);
        out << QStringLiteral("%1 KB  %2  global load  %3  %4  %5x  %6\n")
                   .arg(workload.sheet.toUtf8().size() / 1024, 4).arg(workload.references, 5)
                   .arg(globalReference, 12, 'f', 2).arg(globalLibrary, 10, 'f', 2)
                   .arg(globalReference / globalLibrary, 6, 'f', 0)
                   .arg(GetGlobalStyleSheet() == referenceGlobal ? QStringLiteral("yes") : QStringLiteral("NO"));
        QCOMPARE(GetGlobalStyleSheet(), referenceGlobal);
    }
    out.flush();
}

QTEST_GUILESS_MAIN(BenchStylesheet)
#include "bench_stylesheet.moc"
