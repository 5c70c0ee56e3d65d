#include <qt_halvo/widgets/text/link_label.h>

#include "widgets_probes.h"

class TestLinkLabel : public QObject
{
    Q_OBJECT

    QStringList m_opened;

public Q_SLOTS:
    void Open(const QUrl& url) { m_opened << url.toString(); } // stands in for the desktop

private Q_SLOTS:
    void initTestCase() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "Open"); }

    // Its href opened, or else Clicked() and its command, on a left click, Return or Enter.
    // Reachable by keyboard. A pointing hand and an underline on hover, neither and grey
    // while disabled.
    void activationAndLook()
    {
        QWidget window;
        window.resize(300, 100);
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
        QCOMPARE(label->focusPolicy(), Qt::StrongFocus);

        const auto look = [label] {
            return label->palette().color(QPalette::Active, label->foregroundRole()).name() + ' '
                + QString::number(label->cursor().shape()) + ' ' + QString::number(label->font().underline());
        };
        label->SetLinkColor(QColor(10, 120, 200));
        QTest::mouseMove(label, QPoint(20, 10));
        QTRY_COMPARE(look(), QStringLiteral("#0a78c8 %1 1").arg(Qt::PointingHandCursor));
        QTest::mouseMove(&window, QPoint(250, 80));
        QTRY_COMPARE(look(), QStringLiteral("#0a78c8 %1 0").arg(Qt::ArrowCursor));
        label->setEnabled(false);
        QTest::mouseMove(label, QPoint(20, 10));
        QTRY_VERIFY(label->underMouse());
        QCOMPARE(look(), QStringLiteral("#a0a0a4 %1 0").arg(Qt::ArrowCursor));
        label->setEnabled(true);
        QCOMPARE(look(), QStringLiteral("#0a78c8 %1 0").arg(Qt::ArrowCursor));
    }

    // In the link colour from the start. A path keeps its drive and as much of its end as fits.
    void pathKeepsDriveAndEnd()
    {
        const QString path = QStringLiteral("C:\\Users\\Someone\\Documents\\Reports\\Quarterly report.pdf");
        OrvantaQT::LinkLabel label;
        QCOMPARE(label.palette().color(label.foregroundRole()), QColor(0x07, 0x8B, 0xFF));
        label.setFont(WidgetsProbes::TestFont());
        label.setAttribute(Qt::WA_DontShowOnScreen);
        label.show();
        const QFontMetrics metrics(label.font());
        label.resize(200, 24);
        label.SetPath(path);
        const QString shown = label.text();
        QVERIFY2(shown.startsWith(QStringLiteral("C:\\\u2026")) && path.endsWith(shown.mid(4)) && shown.size() > 20,
                 qPrintable(shown));
        QVERIFY(metrics.horizontalAdvance(shown) <= 200);
        for (int width : {metrics.horizontalAdvance(path), 0}) {
            label.resize(width, 24);
            QCOMPARE(label.text(), width ? path : QStringLiteral("C:\\"));
        }
        QCOMPARE(label.minimumSizeHint(), metrics.size(Qt::TextSingleLine, QStringLiteral("C:\\")));
        QCOMPARE(label.sizeHint().width(), metrics.horizontalAdvance(path));
    }
};

QTEST_MAIN(TestLinkLabel)
#include "tst_link_label.moc"
