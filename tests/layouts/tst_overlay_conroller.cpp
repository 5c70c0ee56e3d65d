#include <qt_halvo/layouts/overlay_conroller.h>

#include <QtTest/QtTest>
#include <QtWidgets/QVBoxLayout>

using OrvantaQT::OverlayConroller;

class TestOverlayConroller : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placesTheOverlayOnItsParent_data();
    void placesTheOverlayOnItsParent();
    void setUpByTheFreeFunction();
};

void TestOverlayConroller::placesTheOverlayOnItsParent_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<bool>("magic");
    QTest::addColumn<QRect>("inParent");  // of 300 x 400
    QTest::addColumn<QRect>("afterResize"); // to 500 x 200

    // The overlay is 60 x 100; margins 5, 6, 12, 8.
    QTest::newRow("left") << int(Qt::AlignLeft) << true << QRect(5, 0, 60, 400) << QRect(5, 0, 60, 200);
    QTest::newRow("right") << int(Qt::AlignRight) << true << QRect(300 - 60 - 12, 0, 60, 400) << QRect(500 - 60 - 12, 0, 60, 200);
    QTest::newRow("top") << int(Qt::AlignTop) << true << QRect(0, 6, 300, 100) << QRect(0, 6, 500, 100);
    QTest::newRow("bottom") << int(Qt::AlignBottom) << true << QRect(0, 400 - 100 - 8, 300, 100) << QRect(0, 200 - 100 - 8, 500, 100);
    // Centred at 0.45 of the free height, or at half of it.
    QTest::newRow("centre, magic") << int(Qt::AlignCenter) << true << QRect(120, 135, 60, 100) << QRect(220, 45, 60, 100);
    QTest::newRow("centre") << int(Qt::AlignCenter) << false << QRect(120, 150, 60, 100) << QRect(220, 50, 60, 100);
    QTest::newRow("justify") << int(Qt::AlignJustify) << true << QRect(0, 0, 300, 400) << QRect(0, 0, 500, 200);
    // The first named side wins.
    QTest::newRow("left and bottom") << int(Qt::AlignLeft | Qt::AlignBottom) << true << QRect(5, 0, 60, 400)
                                     << QRect(5, 0, 60, 200);
}

void TestOverlayConroller::placesTheOverlayOnItsParent()
{
    QFETCH(int, alignment);
    QFETCH(bool, magic);
    QFETCH(QRect, inParent);
    QFETCH(QRect, afterResize);

    QWidget parent;
    parent.resize(300, 400);
    auto* layout = new QVBoxLayout(&parent);
    auto* overlay = new QWidget;
    layout->addWidget(overlay);
    overlay->resize(60, 100);
    auto* controller = new OverlayConroller(overlay, Qt::Alignment(alignment), magic);
    QCOMPARE(layout->indexOf(overlay), -1); // taken out of the parent's layout
    controller->SetMargins(QMargins(5, 6, 12, 8));
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    QCOMPARE(overlay->geometry(), inParent);
    parent.resize(500, 200);
    QTRY_COMPARE(overlay->geometry(), afterResize);
}

void TestOverlayConroller::setUpByTheFreeFunction()
{
    QWidget parent;
    parent.resize(300, 400);
    auto* button = new QWidget(&parent);
    button->setGeometry(0, 0, 300, 400);
    auto* overlay = new QWidget(&parent);
    overlay->resize(60, 100);
    OrvantaQT::SetOverlayController(overlay, QStringLiteral("Badge"), Qt::AlignCenter);
    QCOMPARE(overlay->objectName(), QStringLiteral("Badge"));
    QVERIFY(overlay->findChild<OverlayConroller*>()); // it lives and dies with the overlay
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    QCOMPARE(overlay->pos(), QPoint(120, 135));
    // Clicks go through it to what is below.
    QVERIFY(overlay->testAttribute(Qt::WA_TransparentForMouseEvents));
    QCOMPARE(parent.childAt(150, 180), button);
}

QTEST_MAIN(TestOverlayConroller)
#include "tst_overlay_conroller.moc"
