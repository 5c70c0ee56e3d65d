// Text widgets relaid at many widths: an AutoresizedText with five phrasings resized
// across 1,000 widths, and an ExpandingLabel with a 5,000-character text, collapsed and
// expanded, relaid at 100 widths. Times are per update (per resize).

#include <qt_halvo/widgets/text/autoresized_text.h>
#include <qt_halvo/widgets/text/expanding_label.h>

#include <QtTest/QtTest>

using OrvantaQT::AutoresizedText;
using OrvantaQT::ExpandingLabel;

namespace {

QFont BenchFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    return font;
}

QString LongText()
{
    QString text;
    int paragraph = 0;
    while (text.size() < 5000) {
        text += QStringLiteral("Paragraph %1 of a long description that wraps over many lines and is cut to a few "
                               "of them with a link to show the rest. ")
                    .arg(++paragraph);
        if (paragraph % 3 == 0)
            text += QLatin1Char('\n');
    }
    return text.left(5000);
}

} // namespace

class BenchTextWidgets : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void autoresizedAcrossWidths();
    void expandingAcrossWidths_data();
    void expandingAcrossWidths();
};

// A shown (but not mapped) window holding the widget, so that resizes of the widget, a
// child, arrive at once rather than through the window system.
struct Host
{
    Host()
    {
        window.resize(800, 600);
        window.setAttribute(Qt::WA_DontShowOnScreen);
        window.show();
    }
    QWidget window;
};

void BenchTextWidgets::autoresizedAcrossWidths()
{
    Host host;
    AutoresizedText& label = *new AutoresizedText(&host.window);
    label.setFont(BenchFont());
    label.show();
    label.setStrings({QStringLiteral("Sync"), QStringLiteral("Syncing"), QStringLiteral("Synchronising"),
                      QStringLiteral("Synchronising your library"),
                      QStringLiteral("Synchronising your library with the server")});
    // 1,000 different widths, from 20 to 1,019 pixels, in a zigzag: one update each.
    QBENCHMARK {
        for (int i = 0; i < 1000; ++i)
            label.resize(20 + (i % 2 ? i : 999 - i), 24);
    }
}

void BenchTextWidgets::expandingAcrossWidths_data()
{
    QTest::addColumn<bool>("collapsed");
    QTest::newRow("collapsed to 3 lines") << true;
    QTest::newRow("expanded") << false;
}

void BenchTextWidgets::expandingAcrossWidths()
{
    QFETCH(bool, collapsed);
    Host host;
    ExpandingLabel& label = *new ExpandingLabel(LongText(), &host.window);
    label.setFont(BenchFont());
    label.setCollapsedLines(3);
    label.setIsCollapsed(collapsed);
    label.show();
    QBENCHMARK {
        // 100 widths from 200 to 700 pixels.
        for (int i = 0; i < 100; ++i)
            label.resize(200 + i * 5, label.height());
    }
}

QTEST_MAIN(BenchTextWidgets)
#include "bench_text_widgets.moc"
