#include <qt_halvo/layouts/anchor_layout.h>

#include "test_support.h"

using OrvantaQT::AnchorLayout;

// l, c, r: left, centre, right; t, m, b: top, middle, bottom.
static Qt::AnchorPoint Point(QChar letter) { return Qt::AnchorPoint(QStringLiteral("lcrtmb").indexOf(letter)); }

class TestAnchorLayout : public QObject
{
    Q_OBJECT

    std::unique_ptr<QWidget> m_window;
    QWidget* m_target = nullptr;
    QWidget* m_widget = nullptr;

private Q_SLOTS:
    void init()
    {
        m_window.reset(new QWidget);
        m_window->resize(400, 300);
        m_target = new QWidget(m_window.get());
        m_target->setGeometry(50, 40, 101, 61);
        m_widget = new QWidget(m_window.get());
        m_widget->setGeometry(0, 0, 30, 20);
        QVERIFY(TestSupport::ShowAndWait(m_window.get())); // hidden widgets report no moves
    }

    void anchorsPlaceAndFollow_data()
    {
        QTest::addColumn<QString>("anchors"); // own point, then the target's
        QTest::addColumn<QRect>("placed");    // margins 10, 5, 7, 3; the target (odd, for the centres): 50, 150, 40, 100; 100, 70
        QTest::addColumn<QRect>("followed");  // the target at (20, 24) 121 x 71: 20, 140, 24, 94; 80, 59
        QTest::newRow("left to right") << "lr" << QRect(160, 0, 30, 20) << QRect(150, 0, 30, 20);
        QTest::newRow("right to left") << "rl" << QRect(14, 0, 30, 20) << QRect(-16, 0, 30, 20);
        QTest::newRow("top to bottom") << "tb" << QRect(0, 105, 30, 20) << QRect(0, 99, 30, 20);
        QTest::newRow("bottom to top") << "bt" << QRect(0, 18, 30, 20) << QRect(0, 2, 30, 20);
        QTest::newRow("centre to centre") << "cc" << QRect(85, 0, 30, 20) << QRect(65, 0, 30, 20);
        QTest::newRow("middle to middle") << "mm" << QRect(0, 60, 30, 20) << QRect(0, 49, 30, 20);
        // Opposite edges stretch; the first of them alone moved the widget.
        QTest::newRow("left and right") << "ll rr" << QRect(60, 0, 84, 20) << QRect(30, 0, 104, 20);
        QTest::newRow("top and bottom") << "tt bb" << QRect(0, 45, 30, 53) << QRect(0, 29, 30, 63);
    }
    void anchorsPlaceAndFollow()
    {
        QFETCH(QString, anchors);
        QFETCH(QRect, placed);
        QFETCH(QRect, followed);
        std::vector<std::pair<Qt::AnchorPoint, std::pair<QWidget*, Qt::AnchorPoint>>> list;
        for (const QString& pair : anchors.split(' '))
            list.push_back({Point(pair[0]), {m_target, Point(pair[1])}});
        AnchorLayout::SetupAnchors(m_widget, list, QMargins(10, 5, 7, 3));
        QCOMPARE(m_widget->geometry(), placed);
        m_target->setGeometry(20, 24, 121, 71);
        QCOMPARE(m_widget->geometry(), followed);
    }

    void keptToItsAnchors()
    {
        AnchorLayout::AddAnchors(m_target, m_widget, Qt::Horizontal);
        AnchorLayout::AddAnchors(m_target, m_widget, Qt::Vertical);
        m_widget->setGeometry(300, 200, 60, 40); // by someone else: back to the anchors
        QCOMPARE(m_widget->geometry(), QRect(50, 40, 101, 61));
        AnchorLayout::AddAnchor(m_window.get(), Qt::AnchorRight, m_widget, Qt::AnchorRight); // instead of the target's
        m_target->setGeometry(0, 0, 51, 41);
        QCOMPARE(m_widget->geometry(), QRect(0, 0, 400, 41));
        const LogCapture::Mark mark;
        AnchorLayout::AddAnchor(nullptr, Qt::AnchorTop, m_widget, Qt::AnchorTop);
        QCOMPARE(mark.Since().size(), 1);
        m_widget->move(7, 7);
        QCOMPARE(m_widget->pos(), QPoint(0, 0));
    }

    // In the bottom-right corner of the work area, 16 px in, as the work area changes, until the anchors go.
    void windowFollowsTheWorkArea()
    {
        QWidget toast;
        toast.resize(200, 80);
        AnchorLayout::SetDesktopPrimaryScreenAnchor(Qt::AlignRight | Qt::AlignBottom, &toast, QMargins(16, 16, 16, 16));
        QVERIFY(TestSupport::ShowAndWait(&toast));
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        const QRect smaller(40, 30, screen.width() - 140, screen.height() - 80);
        QVERIFY(TestSupport::SetWorkArea(smaller));
        QTRY_COMPARE_WITH_TIMEOUT(toast.frameGeometry(), QRect(smaller.bottomRight() - QPoint(215, 95), QSize(200, 80)), 10000);
        QWindow window; // placed once, by its frame
        window.resize(200, 100);
        AnchorLayout::AlignToDesktopPrimaryScreen(Qt::AlignRight | Qt::AlignBottom, &window, QMargins(5, 6, 7, 8));
        QCOMPARE(window.framePosition(), smaller.bottomRight() - QPoint(7 + 199, 8 + 99));
        QPointer<QWidget> desktop = AnchorLayout::WidgetAnchors(&toast).first().target;
        AnchorLayout::RemoveAllDesktopAnchors(&toast);
        QTRY_VERIFY(!desktop);
    }
};

QTEST_MAIN(TestAnchorLayout)
#include "tst_anchor_layout.moc"
