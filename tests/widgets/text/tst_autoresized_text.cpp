#include <qt_halvo/widgets/text/autoresized_text.h>

#include "test_support.h"

using TestSupport::Words;

class TestAutoresizedText : public QObject
{
    Q_OBJECT

    const QString m_long = QStringLiteral("Synchronising your library");
    const QString m_middle = QStringLiteral("Synchronising");
    const QString m_short = QStringLiteral("Sync");
    const QString m_lines = QStringLiteral("first line\r\nsecond");
    const QString m_broken = QStringLiteral("first line<br>second");
    std::unique_ptr<OrvantaQT::AutoresizedText> m_label;

    static int Width(const QString& text, int size = 13) { return QFontMetrics(TestSupport::TestFont(size)).horizontalAdvance(text); }
    // Resized to width; what it shows, then its tip.
    QStringList At(int width)
    {
        m_label->resize(width, 30);
        return {m_label->QLabel::text(), m_label->toolTip()};
    }

private Q_SLOTS:
    // Shown, so that resizes arrive at once, but not on the screen.
    void init()
    {
        m_label.reset(new OrvantaQT::AutoresizedText);
        m_label->setFont(TestSupport::TestFont());
        m_label->setContentsMargins(0, 0, 0, 0);
        m_label->setAttribute(Qt::WA_DontShowOnScreen);
        m_label->show();
    }

    // The widest phrasing that fits, the others only when narrower than the room, else the
    // narrowest without a tip; measured again in a new font. The tip is the widest.
    void phrasings()
    {
        m_label->resize(Width(m_long) - 1, 30);
        m_label->setStrings({m_middle, m_long, m_short});
        QCOMPARE(At(Width(m_long) - 1), (QStringList{m_middle, m_long}));
        QCOMPARE(At(Width(m_long)), (QStringList{m_long, QString()}));
        QCOMPARE(At(Width(m_middle)), (QStringList{m_short, m_long}));
        QCOMPARE(At(Width(m_short) + 1), (QStringList{m_short, m_long}));
        QCOMPARE(At(Width(m_short)), (QStringList{m_short, QString()}));
        QCOMPARE(m_label->minimumSizeHint().width(), Width(m_short));
        QCOMPARE(m_label->sizeHint().width(), Width(m_long));
        m_label->setFont(TestSupport::TestFont(26));
        QCOMPARE(At(Width(m_middle) + 1), (QStringList{m_short, m_long}));
        QCOMPARE(m_label->sizeHint().width(), Width(m_long, 26));
    }

    // Each line elided, the text the tip unless shown as it is; without eliding no tip.
    void textElidedLineByLine()
    {
        m_label->resize(40, 30);
        m_label->setText(m_lines);
        const QFontMetrics metrics(m_label->font());
        const QString first = metrics.elidedText(QStringLiteral("first line"), Qt::ElideRight, 40);
        QCOMPARE(At(40), (QStringList{first + "<br>" + metrics.elidedText(QStringLiteral("second"), Qt::ElideRight, 40), m_lines}));
        QCOMPARE(m_label->minimumSizeHint().width(), Width(QStringLiteral("...")));
        m_label->setElideMode(Qt::ElideNone);
        QCOMPARE(At(40), (QStringList{m_broken, QString()}));
        QCOMPARE(At(Width(m_lines)), (QStringList{m_broken, QString()})); // as it is only when narrower
        QCOMPARE(At(300), (QStringList{m_lines, QString()}));
        m_label->setElideMode(Qt::ElideRight);
        QCOMPARE(At(300), (QStringList{m_broken, m_lines}));
        m_label->setText(m_long);
        QCOMPARE(At(Width(m_long)), (QStringList{m_long, QString()}));
    }

    // Shown whole, from its own colour at the left to nothing at the right edge, also once
    // the faded palette has come back as a change.
    void fadeRunsOutAtTheRightEdge()
    {
        m_label->setText(m_long);
        m_label->resize(Width(m_long) - 10, 30);
        QPalette red = m_label->palette();
        red.setColor(m_label->foregroundRole(), Qt::red);
        m_label->setPalette(red);
        m_label->setFadeElide(true);
        QCOMPARE(At(Width(m_long) - 10), (QStringList{m_long, QString()}));
        m_label->resize(Width(m_long) - 20, 30);
        const QImage picture = TestSupport::Render(m_label.get());
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

    // Text over twice as wide as the room: nothing of it left to see, and no warning from Qt.
    void fadeOfAFarTooLongText()
    {
        static QStringList messages;
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { messages << text; });
        m_label->setText(m_long);
        m_label->setFadeElide(true);
        m_label->resize(Width(m_long) / 3, 30);
        const QImage picture = TestSupport::Render(m_label.get());
        qInstallMessageHandler(previous);
        QImage blank = picture;
        blank.fill(Qt::transparent);
        QCOMPARE(messages, QStringList());
        QVERIFY(picture == blank);
    }

    // Only with hoverUnderline: a pointing hand, "hovered" for style sheets and clicked().
    void clickableWhenAskedTo()
    {
        struct : QWidget { QStringList* log = nullptr; void mouseReleaseEvent(QMouseEvent*) override { *log << "released"; } } window; // what the label passes on
        auto* label = new OrvantaQT::AutoresizedText(m_long, &window);
        label->setGeometry(10, 10, 250, 30);
        QVERIFY(TestSupport::ShowAndWait(&window));
        TestSupport::SignalLog log(label, {"clicked()", "doubleClicked()"});
        window.log = &log.lines;
        QTest::mouseClick(label, Qt::LeftButton);
        QTest::mouseDClick(label, Qt::LeftButton);
        label->setHoverUnderline(true);
        QTest::mouseMove(label, QPoint(20, 10));
        QTRY_VERIFY(label->property("hovered").toBool());
        QCOMPARE(label->cursor().shape(), Qt::PointingHandCursor);
        QTest::mouseClick(label, Qt::LeftButton);
        log.Note(QStringLiteral("right"));
        QTest::mouseClick(label, Qt::RightButton);
        QTest::mouseMove(&window, QPoint(5, 5));
        QTRY_VERIFY(!label->property("hovered").toBool());
        QCOMPARE(label->cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(log.Take(), Words("released doubleClicked() clicked() right released"));
    }
};

QTEST_MAIN(TestAutoresizedText)
#include "tst_autoresized_text.moc"
