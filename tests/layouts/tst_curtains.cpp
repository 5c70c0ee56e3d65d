#include <qt_halvo/layouts/curtain_semi_transparent_widget.h>
#include <qt_halvo/layouts/curtain_widget.h>

#include "test_support.h"

using OrvantaQT::CurtainSemiTransparentWidget;
using OrvantaQT::CurtainWidget;

// A 300 x 200 container in a shown window, with a button and a line edit under the cover.
struct Container
{
    QWidget window;
    QWidget* container = new QWidget(&window);
    QPushButton* button = new QPushButton(QStringLiteral("Covered"), container);
    QLineEdit* edit = new QLineEdit(container);
    Container()
    {
        window.resize(340, 240);
        container->setGeometry(20, 20, 300, 200);
        edit->move(0, 60);
    }
};

// Content of a curtain: red above, blue below.
static QWidget* TwoColours()
{
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0), layout->setSpacing(0);
    for (const char* colour : {"background: red", "background: blue"}) {
        auto* part = new QWidget(content);
        part->setAttribute(Qt::WA_StyledBackground);
        part->setStyleSheet(colour);
        layout->addWidget(part);
    }
    return content;
}

class TestCurtains : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void slides_data()
    {
        QTest::addColumn<Qt::Edge>("edge");
        QTest::addColumn<QString>("leadingColour"); // of the content's side that comes into sight first
        QTest::newRow("from the top") << Qt::TopEdge << "#ff0000ff";
        QTest::newRow("from the bottom") << Qt::BottomEdge << "#ffff0000";
    }
    // The band grows from the edge to the whole container, showing a picture of the
    // content that leads with the content's far side; then the live content is shown.
    void slides()
    {
        QFETCH(Qt::Edge, edge);
        QFETCH(QString, leadingColour);
        Container place;
        auto* curtain = new CurtainWidget(place.container);
        curtain->SetEdge(edge);
        curtain->SetContent(TwoColours());
        TestSupport::SignalLog log(curtain, {"Shown()", "Shown(bool)", "Hidden()", "Hidden(bool)"});
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        QCOMPARE(log.Take(), TestSupport::Words("Hidden() Hidden(true)"));
        QVector<int> heights;
        QStringList far;
        const auto watch = [&] {
            if (curtain->height() < 10 || curtain->height() > 190 || curtain->Content()->isVisible())
                return;
            heights << curtain->height();
            QVERIFY(edge == Qt::TopEdge ? curtain->y() == 0 : curtain->geometry().bottom() == 199);
            const QImage image = TestSupport::Render(curtain);
            const int leading = edge == Qt::TopEdge ? image.height() - 1 : 0;
            far << image.pixelColor(150, leading).name(QColor::HexArgb);
        };
        QTimer sampler;
        connect(&sampler, &QTimer::timeout, this, watch);
        sampler.start(10);
        curtain->ShowCurtain();
        QTRY_VERIFY(curtain->IsCurtainShown());
        sampler.stop();
        QCOMPARE(log.Take(), TestSupport::Words("Hidden(false) Shown() Shown(true)"));
        QVERIFY(heights.size() > 3 && TestSupport::IsMonotonic(heights, true));
        QCOMPARE(far.size(), heights.size());
        QVERIFY(std::all_of(far.begin(), far.end(), [&](const QString& colour) { return colour == leadingColour; }));
        QCOMPARE(curtain->geometry(), QRect(0, 0, 300, 200));
        QVERIFY(curtain->Content()->isVisible() && curtain->Content()->geometry() == QRect(0, 0, 300, 200));
        auto* later = new QPushButton(place.container); // added while covered: stays under
        later->show();
        QVERIFY(curtain->Content()->isAncestorOf(QApplication::widgetAt(later->mapToGlobal(QPoint(5, 5)))));
        // It follows the container while shown.
        place.container->resize(260, 150);
        QCOMPARE(curtain->geometry(), QRect(0, 0, 260, 150));
        QCOMPARE(curtain->Content()->size(), QSize(260, 150));
        curtain->HideCurtain();
        QTRY_VERIFY(curtain->isHidden());
        QCOMPARE(log.Take(), TestSupport::Words("Shown(false) Hidden() Hidden(true)"));
    }
    // An opposite request on the way turns round where the curtain is; repeated requests
    // change nothing.
    void turnsRoundWhereItIs()
    {
        Container place;
        auto* curtain = new CurtainWidget(place.container);
        curtain->SetEasing(QEasingCurve::Linear);
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        QVector<qreal> positions;
        curtain->ShowCurtain();
        QTRY_VERIFY(curtain->GetPosition() > 0.3);
        curtain->ShowCurtain();
        const qreal turnedAt = curtain->GetPosition();
        QTimer sampler;
        connect(&sampler, &QTimer::timeout, this, [&] { positions << curtain->GetPosition(); });
        sampler.start(5);
        curtain->HideCurtain(), curtain->HideCurtain();
        QTRY_VERIFY(curtain->isHidden());
        QVERIFY(positions.size() > 3 && TestSupport::IsMonotonic(positions, false));
        QVERIFY2(positions.first() <= turnedAt && positions.first() > turnedAt - 0.2, "no jump");
        QCOMPARE(curtain->GetPosition(), 0.0);
    }
    void atOnce_data()
    {
        QTest::addColumn<bool>("beforeTheEventLoop");
        QTest::newRow("asked before the event loop runs") << true;
        QTest::newRow("with animations off") << false;
    }
    void atOnce()
    {
        QFETCH(bool, beforeTheEventLoop);
        Container place;
        TestSupport::StillStyle still;
        auto* curtain = new CurtainWidget(place.container);
        auto* later = new QPushButton(place.container); // over the hidden curtain until it comes
        // Every height the curtain takes: none between nothing and all.
        TestSupport::HeightLog sizes;
        QVector<int>& heights = sizes.heights;
        sizes.Watch(curtain);
        if (beforeTheEventLoop) {
            curtain->ShowCurtain();
            QCOMPARE(curtain->GetPosition(), 1.0);
        } else {
            curtain->setStyle(&still);
            QVERIFY(TestSupport::ShowAndWait(&place.window));
            curtain->ShowCurtain();
        }
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        QTRY_VERIFY(curtain->IsCurtainShown());
        QVERIFY(std::none_of(heights.begin(), heights.end(), [](int height) { return height > 0 && height < 200; }));
        QVERIFY(curtain->isVisible() && curtain->geometry() == QRect(0, 0, 300, 200));
        QCOMPARE(QApplication::widgetAt(later->mapToGlobal(QPoint(5, 5))), curtain);
        curtain->SetPosition(1.5);
        QCOMPARE(curtain->GetPosition(), 1.0);
    }
    void deletionMidSlideAndBadInput()
    {
        for (const bool deleteContainer : {true, false}) {
            Container place;
            QPointer<CurtainWidget> curtain = new CurtainWidget(place.container);
            QVERIFY(TestSupport::ShowAndWait(&place.window));
            curtain->ShowCurtain();
            QTRY_VERIFY(curtain->GetPosition() > 0.2);
            delete (deleteContainer ? static_cast<QWidget*>(place.container) : curtain.data());
            QTest::qWait(50);
            QVERIFY(!curtain);
        }
        const LogCapture::Mark mark;
        CurtainWidget lone(nullptr);
        lone.ShowCurtain();
        lone.SetEdge(Qt::LeftEdge), lone.SetDuration(-3);
        CurtainSemiTransparentWidget shade(nullptr);
        shade.ShowShade();
        Container place;
        CurtainSemiTransparentWidget slow(place.container, -1), instant(place.container, 0);
        QTest::qWait(10);
        QVERIFY(lone.isHidden() && shade.isHidden());
        QCOMPARE(mark.Texts(), QStringList({"4 CurtainWidget: no container to cover; the curtain stays hidden",
                                            "3 CurtainWidget: a curtain comes from the top or the bottom edge; edge 2 is ignored",
                                            "3 CurtainWidget: a negative duration (-3 ms) is ignored",
                                            "4 CurtainSemiTransparentWidget: no container to shade; the shade stays hidden",
                                            "3 CurtainSemiTransparentWidget: a negative duration (-1 ms) is ignored; the fade takes 250 ms"}));
    }
    // While the shade is there, clicks, keys and focus stay off the covered widgets; when
    // it has gone, focus is back where it was.
    void shadeTakesTheInput()
    {
        Container place;
        auto* shade = new CurtainSemiTransparentWidget(place.container, 60);
        shade->SetColor(QColor(0, 0, 80, 100));
        TestSupport::SignalLog log(shade, {"Shown()", "Shown(bool)", "Hidden()", "Hidden(bool)"});
        QVERIFY(TestSupport::ShowAndWait(&place.window));
        place.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&place.window));
        place.edit->setFocus();
        QTRY_VERIFY(place.edit->hasFocus());
        log.Take();
        QSignalSpy clicks(place.button, &QPushButton::clicked);
        shade->ShowShade();
        QVERIFY(shade->hasFocus());
        QTRY_VERIFY(shade->IsShadeShown());
        QCOMPARE(log.Take(), TestSupport::Words("Hidden(false) Shown() Shown(true)"));
        const QColor painted = TestSupport::Render(shade).pixelColor(5, 5);
        QVERIFY(painted.alpha() == 100 && qAbs(painted.blue() - 80) <= 1);
        QVERIFY(TestSupport::Repaints(shade, [shade] { shade->SetColor(Qt::darkRed); }));
        QTest::mouseClick(place.window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(30, 30));
        QTest::keyClicks(shade, "typed");
        QTest::keyClick(shade, Qt::Key_Tab);
        QVERIFY(shade->hasFocus());
        place.edit->setFocus();
        QVERIFY(shade->hasFocus());
        QCOMPARE(clicks.count(), 0);
        QCOMPARE(place.edit->text(), QString());
        place.container->resize(250, 120);
        QCOMPARE(shade->geometry(), QRect(0, 0, 250, 120));
        auto* later = new QPushButton(place.container); // stays under the shade
        later->move(100, 60), later->show();
        QCOMPARE(QApplication::widgetAt(later->mapToGlobal(QPoint(5, 5))), shade);
        shade->HideShade();
        QTRY_VERIFY(shade->isHidden());
        QCOMPARE(log.Take(), TestSupport::Words("Shown(false) Hidden() Hidden(true)"));
        QVERIFY(place.edit->hasFocus());
        QTest::mouseClick(place.window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(30, 30));
        QCOMPARE(clicks.count(), 1);
        // Gone mid-fade.
        shade->ShowShade();
        QTest::qWait(20);
        delete shade;
        QTest::qWait(80);
    }
};

QTEST_MAIN(TestCurtains)
#include "tst_curtains.moc"
