#include <qt_halvo/layouts/overlay_conroller.h>

#include "test_support.h"

class TestOverlayConroller : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placesTheOverlayOnItsParent_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<QRect>("placed");  // 60 x 100 on 300 x 400, margins 5, 6, 12, 8
        QTest::addColumn<QRect>("resized"); // on 500 x 200
        QTest::newRow("left") << int(Qt::AlignLeft) << QRect(5, 0, 60, 400) << QRect(5, 0, 60, 200);
        QTest::newRow("right before bottom") << int(Qt::AlignRight | Qt::AlignBottom) << QRect(228, 0, 60, 400) << QRect(428, 0, 60, 200);
        QTest::newRow("top") << int(Qt::AlignTop) << QRect(0, 6, 300, 100) << QRect(0, 6, 500, 100);
        QTest::newRow("bottom") << int(Qt::AlignBottom) << QRect(0, 292, 300, 100) << QRect(0, 92, 500, 100);
        QTest::newRow("centre: at 0.45 of the free height") << int(Qt::AlignCenter) << QRect(120, 135, 60, 100) << QRect(220, 45, 60, 100);
        QTest::newRow("justify") << int(Qt::AlignJustify) << QRect(0, 0, 300, 400) << QRect(0, 0, 500, 200);
    }
    void placesTheOverlayOnItsParent()
    {
        QFETCH(int, alignment);
        QFETCH(QRect, placed);
        QFETCH(QRect, resized);
        QWidget parent;
        parent.resize(300, 400);
        auto* overlay = new QWidget(&parent);
        overlay->resize(60, 100);
        OrvantaQT::SetOverlayController(overlay, QStringLiteral("Badge"), Qt::Alignment(alignment));
        overlay->findChild<OrvantaQT::OverlayConroller*>()->SetMargins(QMargins(5, 6, 12, 8));
        QVERIFY(TestSupport::ShowAndWait(&parent));
        QCOMPARE(overlay->geometry(), placed);
        QCOMPARE(parent.childAt(placed.center()), nullptr); // it lets the mouse through
        parent.resize(500, 200);
        QTRY_COMPARE(overlay->geometry(), resized);
    }
};

QTEST_MAIN(TestOverlayConroller)
#include "tst_overlay_conroller.moc"
