#include <qt_halvo/widgets/text/link_label.h>

#include "test_support.h"

class TestLinkLabel : public QObject
{
    Q_OBJECT

    QStringList m_opened;

public Q_SLOTS:
    void Open(const QUrl& url) { m_opened << url.toString(); } // stands in for the desktop

private Q_SLOTS:
    // Its href opened, or else Clicked() and its command, on a left click, Return or Enter.
    // Underlined under the mouse, grey while disabled.
    void activationAndLook()
    {
        QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "Open");
        QWidget window;
        auto* label = new OrvantaQT::LinkLabel(&window);
        label->setGeometry(10, 10, 150, 24);
        QVERIFY(TestSupport::ShowAndWait(&window));
        TestSupport::SignalLog log(label, {"Clicked()", "CommandClicked(QString)"});
        QTest::mouseClick(label, Qt::LeftButton);
        label->SetCommand(QStringLiteral("settings"));
        QTest::mouseClick(label, Qt::RightButton);
        QTest::keyClick(label, Qt::Key_Return);
        label->SetHref(QStringLiteral("https://example.org"));
        QTest::mouseClick(label, Qt::LeftButton);
        QTest::keyClick(label, Qt::Key_Enter);
        QCOMPARE(log.Take(), TestSupport::Words("Clicked() Clicked() CommandClicked(settings)"));
        QCOMPARE(m_opened, QStringList({"https://example.org", "https://example.org"}));
        QTest::mouseMove(label, QPoint(20, 10));
        QTRY_VERIFY(label->font().underline() && label->cursor().shape() == Qt::PointingHandCursor);
        QTest::mouseMove(&window, QPoint(5, 5));
        QTRY_VERIFY(!label->font().underline() && label->cursor().shape() == Qt::ArrowCursor);
        label->setEnabled(false);
        QCOMPARE(label->palette().color(label->foregroundRole()), QColor(Qt::gray));
    }

    // In the link colour from the start, reachable by keyboard; a path keeps its drive and as
    // much of its end as fits.
    void pathKeepsDriveAndEnd()
    {
        const QString path = QStringLiteral("C:\\Users\\Someone\\Documents\\Reports\\Quarterly report.pdf");
        OrvantaQT::LinkLabel label;
        QVERIFY(label.palette().color(label.foregroundRole()) == QColor(0x07, 0x8B, 0xFF) && label.focusPolicy() == Qt::StrongFocus);
        label.setFont(TestSupport::TestFont());
        label.setAttribute(Qt::WA_DontShowOnScreen);
        label.show();
        label.resize(200, 24);
        label.SetPath(path);
        const QString shown = label.text();
        QVERIFY2(shown.startsWith(QStringLiteral("C:\\\u2026")) && path.endsWith(shown.mid(4)) && shown.size() > 20, qPrintable(shown));
        const QFontMetrics metrics(label.font());
        QVERIFY(metrics.horizontalAdvance(shown) <= 200);
        label.resize(0, 24);
        QCOMPARE(label.text(), QStringLiteral("C:\\"));
        QCOMPARE(label.sizeHint().width(), metrics.horizontalAdvance(path));
    }
};

QTEST_MAIN(TestLinkLabel)
#include "tst_link_label.moc"
