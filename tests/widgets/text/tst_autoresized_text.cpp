#include <qt_halvo/widgets/text/autoresized_text.h>

#include "widgets_probes.h"

// Shown, so that resizes arrive at once, but not mapped on the screen.
struct Label : OrvantaQT::AutoresizedText
{
    Label()
    {
        setFont(WidgetsProbes::TestFont());
        setContentsMargins(0, 0, 0, 0);
        setAttribute(Qt::WA_DontShowOnScreen);
        show();
    }
    QString Shown() const { return QLabel::text(); }
};

class TestAutoresizedText : public QObject
{
    Q_OBJECT

    const QString m_long = QStringLiteral("Synchronising your library");
    const QString m_middle = QStringLiteral("Synchronising");
    const QString m_short = QStringLiteral("Sync");
    const QString m_lines = QStringLiteral("first line\r\nsecond");
    static int Width(const QString& text, int size = 13) { return QFontMetrics(WidgetsProbes::TestFont(size)).horizontalAdvance(text); }

private Q_SLOTS:
    // The widest phrasing that fits (the others must be narrower than the room), else the
    // narrowest without a tip; or the text, each line elided. The tip is what did not fit;
    // without eliding there is none.
    void shownTextAndTip_data()
    {
        QTest::addColumn<QStringList>("strings");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("elide");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("tip");
        const QStringList three{m_middle, m_long, m_short};
        QTest::newRow("exactly the longest") << three << "" << true << Width(m_long) << m_long << "";
        QTest::newRow("below the longest") << three << "" << true << Width(m_long) - 1 << m_middle << m_long;
        QTest::newRow("exactly the middle") << three << "" << true << Width(m_middle) << m_short << m_long;
        QTest::newRow("above the shortest") << three << "" << true << Width(m_short) + 1 << m_short << m_long;
        QTest::newRow("exactly the shortest") << three << "" << true << Width(m_short) << m_short << "";
        const QFontMetrics metrics(WidgetsProbes::TestFont());
        const QString elided = metrics.elidedText(QStringLiteral("first line"), Qt::ElideRight, 40) + "<br>"
            + metrics.elidedText(QStringLiteral("second"), Qt::ElideRight, 40);
        QTest::newRow("each line elided") << QStringList() << m_lines << true << 40 << elided << m_lines;
        QTest::newRow("fits exactly") << QStringList() << m_long << true << Width(m_long) << m_long << "";
        QTest::newRow("no eliding, room") << QStringList() << m_lines << false << 300 << m_lines << "";
        QTest::newRow("no eliding, narrow") << QStringList() << m_lines << false << 40 << "first line<br>second" << "";
    }

    void shownTextAndTip()
    {
        QFETCH(QStringList, strings);
        QFETCH(QString, text);
        QFETCH(bool, elide);
        QFETCH(int, width);
        Label l;
        l.setElideMode(elide ? Qt::ElideRight : Qt::ElideNone);
        l.setText(text);
        l.setStrings(strings);
        l.resize(width, 30);
        QTEST(l.Shown(), "shown");
        QTEST(l.toolTip(), "tip");
    }

    // Each change shows at once; the phrasings are measured again in a new font.
    void changesApplyAtOnce()
    {
        Label l;
        l.resize(Width(m_middle) + 1, 30);
        l.setStrings({m_middle, m_long, m_short});
        QCOMPARE(l.Shown(), m_middle);
        QCOMPARE(l.minimumSizeHint().width(), Width(m_short));
        QCOMPARE(l.sizeHint().width(), Width(m_long));
        l.setFont(WidgetsProbes::TestFont(26));
        QCOMPARE(l.Shown(), m_short);
        QCOMPARE(l.sizeHint().width(), Width(m_long, 26));
        l.setStrings({});
        l.setText(m_lines);
        QCOMPARE(l.toolTip(), m_lines);
        QCOMPARE(l.minimumSizeHint().width(), Width(QStringLiteral("..."), 26));
        l.setElideMode(Qt::ElideNone);
        QCOMPARE(l.Shown(), QStringLiteral("first line<br>second"));
    }

    // Shown whole, from its own colour at the left to nothing at the right edge, also once
    // the faded palette has come back as a change.
    void fadeRunsOutAtTheRightEdge()
    {
        Label l;
        l.setText(m_long);
        l.resize(Width(m_long) - 10, 30);
        QPalette red = l.palette();
        red.setColor(l.foregroundRole(), Qt::red);
        l.setPalette(red);
        l.setFadeElide(true);
        l.resize(Width(m_long) - 20, 30);
        QCOMPARE(l.Shown(), m_long);
        QCOMPARE(l.toolTip(), QString());
        const QImage picture = TestSupport::Render(&l);
        QVector<int> alpha(picture.width());
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y) {
                const QRgb pixel = picture.pixel(x, y);
                QVERIFY(qGreen(pixel) == 0 && qAbs(qRed(pixel) - qAlpha(pixel)) <= 1);
                alpha[x] = qMax(alpha.at(x), qAlpha(pixel));
            }
        }
        QVERIFY(*std::max_element(alpha.begin(), alpha.begin() + alpha.size() / 5) > 180);
        QVERIFY(*std::max_element(alpha.end() - alpha.size() / 10, alpha.end()) < 60);
    }

    // Only with hoverUnderline: a pointing hand, "hovered" for style sheets and clicked().
    void clickableWhenAskedTo()
    {
        QWidget window;
        window.resize(300, 100);
        auto* label = new OrvantaQT::AutoresizedText(m_long, &window);
        label->setGeometry(10, 10, 250, 30);
        QVERIFY(TestSupport::ShowAndWait(&window));
        TestSupport::SignalLog log(label, {"clicked()", "doubleClicked()"});
        QTest::mouseClick(label, Qt::LeftButton);
        QTest::mouseDClick(label, Qt::LeftButton);
        label->setHoverUnderline(true);
        QTest::mouseMove(label, QPoint(20, 10));
        QTRY_VERIFY(label->property("hovered").toBool());
        QCOMPARE(label->cursor().shape(), Qt::PointingHandCursor);
        QTest::mouseClick(label, Qt::RightButton);
        QTest::mouseClick(label, Qt::LeftButton);
        QTest::mouseMove(&window, QPoint(290, 90));
        QTRY_VERIFY(!label->property("hovered").toBool());
        QCOMPARE(label->cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(log.Take(), TestSupport::Words("doubleClicked() clicked()"));
    }
};

QTEST_MAIN(TestAutoresizedText)
#include "tst_autoresized_text.moc"
