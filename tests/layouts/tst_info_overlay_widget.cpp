#include <qt_halvo/animation/busy_indicator_ring.h>
#include <qt_halvo/layouts/info_overlay_widget.h>

#include "test_support.h"

using OrvantaQT::InfoOverlayWidget;

// Records the mouse presses it gets, where they land.
class Container : public QWidget
{
public:
    QVector<QPoint> presses;
    void mousePressEvent(QMouseEvent* event) override { presses << event->pos(); }
};

class TestInfoOverlayWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheParts_data()
    {
        QTest::addColumn<InfoOverlayWidget::Preset>("preset");
        QTest::addColumn<QString>("parts"); // shown, by object name and accessible name
        QTest::addColumn<QString>("title");
        QTest::newRow("no results") << InfoOverlayWidget::Preset::NoResults << "Icon Title Text" << "No results";
        QTest::newRow("loading") << InfoOverlayWidget::Preset::Loading << "Title Text BusyIndicator" << "Loading…";
        QTest::newRow("connection lost") << InfoOverlayWidget::Preset::ConnectionLost << "Icon Title Text ActionButton"
                                         << "Connection lost";
    }
    // Only the parts with something to show are there; the overlay sits centred across and
    // at 0.45 of the free height, and stays there when the container changes size.
    void showsTheParts()
    {
        QFETCH(InfoOverlayWidget::Preset, preset);
        QFETCH(QString, parts);
        QFETCH(QString, title);
        QWidget container;
        container.resize(400, 300);
        auto* overlay = new InfoOverlayWidget(&container);
        overlay->SetText(QStringLiteral("Something to say"));
        overlay->SetPreset(preset, QStringLiteral("Fetching the latest messages."));
        QVERIFY(TestSupport::ShowAndWait(&container));
        QStringList shown;
        for (QWidget* part : overlay->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (part->isVisible())
                shown << part->objectName() + (part->accessibleName() == "InfoOverlayWidget_" + part->objectName() ? "" : "?");
        }
        QCOMPARE(shown.join(' '), parts);
        QCOMPARE(overlay->GetTitle(), title);
        QCOMPARE(overlay->GetText(), QString("Fetching the latest messages."));
        for (const QSize size : {QSize(400, 300), QSize(600, 500), QSize(200, 400)}) {
            container.resize(size);
            const QRect placed = overlay->geometry();
            QVERIFY(placed.width() <= size.width() - 32 && placed.height() >= overlay->layout()->minimumSize().height());
            const QLabel* text = overlay->findChild<QLabel*>("Text");
            QVERIFY2(text->height() >= text->heightForWidth(text->width()), "wrapped lines all there");
            QCOMPARE(placed.topLeft(), QPoint((size.width() - placed.width()) / 2,
                                              int((size.height() - placed.height()) * 0.45)));
        }
        QCOMPARE(overlay->BusyIndicator()->IsAnimating(), preset == InfoOverlayWidget::Preset::Loading);
        const int height = overlay->height();
        overlay->SetBusy(!overlay->IsBusy());
        QVERIFY(overlay->height() != height);
    }
    // The mouse reaches the container through the message, but not through the button.
    void mousePassesThroughButTheButton()
    {
        Container container;
        container.resize(400, 300);
        auto* overlay = new InfoOverlayWidget(&container);
        overlay->SetPreset(InfoOverlayWidget::Preset::ConnectionLost, QStringLiteral("The server did not answer."));
        QSignalSpy triggered(overlay, &InfoOverlayWidget::ActionTriggered);
        QVERIFY(TestSupport::ShowAndWait(&container));
        QWidget* title = overlay->findChild<QWidget*>("Title");
        const QPoint onTitle = title->mapTo(&container, title->rect().center());
        const QPoint onButton = overlay->ActionButton()->mapTo(&container, overlay->ActionButton()->rect().center());
        for (const QPoint& at : {onTitle, overlay->mapTo(&container, QPoint(1, 1)), onButton})
            QTest::mouseClick(container.windowHandle(), Qt::LeftButton, Qt::NoModifier, at);
        QCOMPARE(container.presses, QVector<QPoint>({onTitle, overlay->mapTo(&container, QPoint(1, 1))}));
        QCOMPARE(triggered.count(), 1);
    }
    void badInputAndDeletion()
    {
        const LogCapture::Mark mark;
        InfoOverlayWidget lone(nullptr);
        lone.SetTitle(QStringLiteral("Alone"));
        lone.SetIconSize(QSize(0, 10));
        QCOMPARE(mark.Texts(), QStringList({"4 InfoOverlayWidget: no container to show the message over; it is not placed",
                                            "3 InfoOverlayWidget: an icon size of 0 x 10 is ignored"}));
        auto* container = new QWidget;
        QPointer<InfoOverlayWidget> overlay = new InfoOverlayWidget(container);
        overlay->SetPreset(InfoOverlayWidget::Preset::Loading);
        container->show();
        delete container;
        QVERIFY(!overlay);
    }
    void speaksTheUsersLanguage()
    {
        QTranslator german;
        QVERIFY(german.load(QStringLiteral(":/translations/qt_halvo_de")));
        qApp->installTranslator(&german);
        QWidget container;
        auto* overlay = new InfoOverlayWidget(&container);
        overlay->SetPreset(InfoOverlayWidget::Preset::ConnectionLost);
        QCOMPARE(overlay->GetTitle() + " / " + overlay->GetActionText(), QString("Verbindung unterbrochen / Erneut versuchen"));
        QCOMPARE(OrvantaQT::BusyIndicatorRing().accessibleName(), QString("Beschäftigt"));
        qApp->removeTranslator(&german);
    }
};

QTEST_MAIN(TestInfoOverlayWidget)
#include "tst_info_overlay_widget.moc"
