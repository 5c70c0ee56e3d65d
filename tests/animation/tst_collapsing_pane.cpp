#include <qt_halvo/animation/collapsing_pane.h>

#include "open_close_test_support.h"

#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

using OrvantaQT::CollapsingPane;

namespace {

constexpr int kWidgetSizeMax = 16777215;
const QColor kSwatchColour(200, 30, 40);

// Content that counts how often it is resized, to show it is not laid out per frame. A
// 60 x 40 block of solid colour at its top left lets the snapshot be checked pixel by pixel.
class Form : public QWidget
{
public:
    Form()
    {
        QPixmap picture(60, 40);
        picture.fill(kSwatchColour);
        auto* swatch = new QLabel;
        swatch->setPixmap(picture);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(swatch);
        layout->addWidget(new QLineEdit);
    }
    int resizes = 0;

protected:
    void resizeEvent(QResizeEvent*) override { ++resizes; }
};

bool InLayout(QWidget* container, QWidget* widget)
{
    return container->layout()->indexOf(widget) >= 0;
}

// A shown window holding a pane (with a form in it) above a stretch.
struct Fixture
{
    explicit Fixture(int duration = 300)
    {
        auto* layout = new QVBoxLayout(&window);
        pane = new CollapsingPane;
        pane->SetDuration(static_cast<unsigned>(duration));
        pane->SetEasing(QEasingCurve::Linear);
        form = new Form;
        pane->setWidget(form);
        layout->addWidget(pane);
        layout->addStretch();
        window.resize(300, 400);
        RecordRestSignals(pane, &log);
        QObject::connect(pane, &CollapsingPane::Expanding, [this] {
            heights << pane->maximumHeight();
            QWidget* content = pane->widget();
            snapshotShown = snapshotShown && Snapshot() && Snapshot()->isVisible() && !(content && content->isVisible());
            formResizes << (form ? form->resizes : -1);
        });
    }

    bool Show()
    {
        window.show();
        return QTest::qWaitForWindowExposed(&window);
    }

    // Shows the window with the pane asked to open (or not) first, and waits until it rests.
    bool Settle(bool opened)
    {
        if (opened)
            pane->expand();
        const bool settled = Show() && QTest::qWaitFor([&] { return Rests(opened); });
        ClearRecords();
        return settled;
    }

    QLabel* Snapshot() const
    {
        for (QLabel* label : pane->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (label != pane->widget())
                return label;
        }
        return nullptr;
    }

    void ClearRecords()
    {
        log.clear();
        heights.clear();
        formResizes.clear();
        snapshotShown = true;
    }

    // Opened: free in height, the live content in place of the snapshot. Closed: hidden, no height.
    bool Rests(bool opened) const
    {
        if (!opened)
            return !pane->isVisible() && pane->minimumHeight() == 0 && pane->maximumHeight() == 0;
        return pane->isVisible() && pane->minimumHeight() == 0 && pane->maximumHeight() == kWidgetSizeMax
            && pane->widget()->isVisible() && InLayout(pane, pane->widget()) && !Snapshot()->isVisible();
    }

    QWidget window;
    CollapsingPane* pane = nullptr;
    QPointer<Form> form;
    QStringList log;
    QVector<int> heights;
    QVector<int> formResizes;
    bool snapshotShown = true;
};

} // namespace

class TestCollapsingPane : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settlesInTheRequestedStateWithoutAnimation_data();
    void settlesInTheRequestedStateWithoutAnimation();
    void expandsAndCollapsesBehindASnapshot();
    void opposingRequestTurnsTheMotionRound_data();
    void opposingRequestTurnsTheMotionRound();
    void showAndHideJumpAndRequestsForTheRestStateAreIgnored();
    void openingTargetFollowsTheContent();
    void propertiesAreReachableByNameAndReset();
};

void TestCollapsingPane::settlesInTheRequestedStateWithoutAnimation_data()
{
    QTest::addColumn<QString>("request");
    QTest::addColumn<bool>("opened");

    QTest::newRow("nothing") << QString() << false;
    QTest::newRow("expand()") << "expand" << true;
    QTest::newRow("collapse() after expand()") << "expand,collapse" << false;
    QTest::newRow("setVisible(true)") << "show" << true;
    QTest::newRow("setCollapsed(false)") << "uncollapse" << true;
    QTest::newRow("SetInitiallyOpened(true)") << "initially" << true;
    QTest::newRow("reset after SetInitiallyOpened(true)") << "initially,reset" << false;
}

void TestCollapsingPane::settlesInTheRequestedStateWithoutAnimation()
{
    QFETCH(QString, request);
    QFETCH(bool, opened);

    Fixture f;
    for (const QString& step : request.split(',', Qt::SkipEmptyParts)) {
        if (step == "expand")
            f.pane->expand();
        else if (step == "collapse")
            f.pane->collapse();
        else if (step == "show")
            f.pane->setVisible(true);
        else if (step == "uncollapse")
            f.pane->setCollapsed(false);
        else if (step == "initially")
            f.pane->SetInitiallyOpened(true);
        else if (step == "reset")
            f.pane->ResetInitiallyOpened();
    }
    QCOMPARE(f.pane->GetInitiallyOpened(), opened);
    QVERIFY(!f.pane->isVisible());
    QVERIFY(f.Show());

    const QStringList expected = opened ? QStringList{"Expanded()", "Expanded(true)"}
                                        : QStringList{"Collapsed()", "Collapsed(true)"};
    QTRY_COMPARE(f.log, expected);
    QVERIFY(f.Rests(opened));
    QVERIFY(f.heights.isEmpty());
    if (opened)
        QTRY_COMPARE(f.pane->height(), f.form->sizeHint().height());
}

void TestCollapsingPane::expandsAndCollapsesBehindASnapshot()
{
    Fixture f;
    QVERIFY(f.Settle(false));
    const int contentHeight = f.form->sizeHint().height();

    f.pane->expand();
    QCOMPARE(f.log, QStringList{"Collapsed(false)"});
    QVERIFY(f.Snapshot()->isVisible());
    QVERIFY(!InLayout(f.pane, f.form));
    QCOMPARE(f.Snapshot()->size(), QSize(f.pane->width(), contentHeight));
    // The picture is the form as painted: the swatch at its top-left corner.
    const QImage picture = f.Snapshot()->pixmap(Qt::ReturnByValue).toImage();
    QCOMPARE(picture.pixelColor(5, 5), kSwatchColour);
    QCOMPARE(picture.pixelColor(59, 39), kSwatchColour);

    QTRY_COMPARE(f.log, (QStringList{"Collapsed(false)", "Expanded()", "Expanded(true)"}));
    QVERIFY2(f.heights.size() > 2, "Expanding() on every step");
    QVERIFY(IsMonotonic(f.heights, true));
    QCOMPARE(f.heights.last(), contentHeight);
    QVERIFY(f.snapshotShown);
    QVERIFY2(std::all_of(f.formResizes.cbegin(), f.formResizes.cend(),
                         [&f](int resizes) { return resizes == f.formResizes.first(); }),
             "the live content is not resized while the pane moves");
    QVERIFY(f.Rests(true));
    QTRY_COMPARE(f.pane->height(), contentHeight);

    f.ClearRecords();
    f.pane->collapse();
    QCOMPARE(f.log, QStringList{"Expanded(false)"});
    QVERIFY(f.Snapshot()->isVisible());
    QTRY_COMPARE(f.log, (QStringList{"Expanded(false)", "Collapsed()", "Collapsed(true)"}));
    QVERIFY2(f.heights.size() > 2, "Expanding() is emitted while collapsing too");
    QVERIFY(IsMonotonic(f.heights, false));
    QCOMPARE(f.heights.last(), 0);
    QVERIFY(f.snapshotShown);
    QVERIFY(f.Rests(false));
}

void TestCollapsingPane::opposingRequestTurnsTheMotionRound_data()
{
    QTest::addColumn<bool>("opening");
    QTest::addColumn<bool>("byReverseState");

    QTest::newRow("opening, DoCollapse()") << true << false;
    QTest::newRow("opening, ReverseState()") << true << true;
    QTest::newRow("closing, DoExpand()") << false << false;
    QTest::newRow("closing, ReverseState()") << false << true;
}

void TestCollapsingPane::opposingRequestTurnsTheMotionRound()
{
    QFETCH(bool, opening);
    QFETCH(bool, byReverseState);

    Fixture f(600);
    QVERIFY(f.Settle(!opening));
    const int contentHeight = f.form->sizeHint().height();

    f.pane->setExpanded(opening);
    QTRY_VERIFY(!f.heights.isEmpty() && qAbs(f.heights.last() - contentHeight / 2) < contentHeight / 4);
    const int turningHeight = f.heights.last();
    const int stepsBefore = f.heights.size();
    if (byReverseState)
        f.pane->reverseState();
    else
        f.pane->setExpanded(!opening);

    QStringList settled = opening ? QStringList{"Collapsed()", "Collapsed(true)"} : QStringList{"Expanded()", "Expanded(true)"};
    QTRY_COMPARE(f.log.mid(1), settled);
    const QVector<int> after = f.heights.mid(stepsBefore);
    QVERIFY(after.size() > 1);
    // From where it was, back the way it came, without a jump to either end first.
    QVERIFY(IsMonotonic(after, !opening));
    QVERIFY(opening ? after.first() <= turningHeight : after.first() >= turningHeight);
    QVERIFY(after.first() > 0 && after.first() < contentHeight);
    QCOMPARE(after.last(), opening ? 0 : contentHeight);
    QVERIFY(f.Rests(!opening));
}

// show() and hide() (and SetInitiallyOpened() once the pane runs) put it at rest at once,
// from rest or while it moves; asking for the state it rests in does nothing.
void TestCollapsingPane::showAndHideJumpAndRequestsForTheRestStateAreIgnored()
{
    const QStringList toOpened{"Collapsed(false)", "Expanded()", "Expanded(true)"};
    const QStringList toClosed{"Expanded(false)", "Collapsed()", "Collapsed(true)"};
    Fixture f(600);
    QVERIFY(f.Settle(true));
    f.pane->expand();
    f.pane->setCollapsed(false);
    QTest::qWait(50);
    QVERIFY(f.log.isEmpty());
    QVERIFY(f.heights.isEmpty());

    f.pane->setVisible(false);
    QCOMPARE(f.log, toClosed);
    f.ClearRecords();
    f.pane->setVisible(false);
    f.pane->collapse();
    QTest::qWait(50);
    QVERIFY(f.log.isEmpty());
    QVERIFY(f.Rests(false));

    f.pane->expand();
    QTRY_VERIFY(!f.heights.isEmpty());
    f.pane->show();
    QCOMPARE(f.log, toOpened);
    QVERIFY(f.Rests(true));
    const int steps = f.heights.size();
    QTest::qWait(100);
    QCOMPARE(f.heights.size(), steps);

    f.ClearRecords();
    f.pane->collapse();
    QTRY_VERIFY(!f.heights.isEmpty());
    f.pane->hide();
    QCOMPARE(f.log, toClosed);
    QVERIFY(f.Rests(false));

    f.ClearRecords();
    f.pane->SetInitiallyOpened(true);
    QCOMPARE(f.log, toOpened);
    QVERIFY(f.heights.isEmpty());
    f.pane->ResetInitiallyOpened();
    QVERIFY(!f.pane->GetInitiallyOpened());
    QVERIFY(f.Rests(false));
}

// The opening target is the content's minimum height, or else its size hint; it is taken
// when the pane leaves the opened state, passes through the closed one, or gets new content.
void TestCollapsingPane::openingTargetFollowsTheContent()
{
    Fixture f(400);
    QVERIFY(f.Settle(true));
    const int oldHeight = f.form->sizeHint().height();

    // Growing the content while closing does not move the target.
    f.pane->collapse();
    QTRY_VERIFY(!f.heights.isEmpty());
    f.form->setMinimumHeight(oldHeight + 30);
    f.pane->expand();
    QTRY_VERIFY(f.Rests(true));
    QCOMPARE(f.heights.last(), oldHeight);

    f.pane->hide();
    f.ClearRecords();
    f.pane->expand();
    QTRY_VERIFY(f.Rests(true));
    QCOMPARE(f.heights.last(), oldHeight + 30);

    // setWidget() replaces the content and deletes the old one later; the same one stays.
    f.pane->setWidget(f.form);
    QCOMPARE(f.pane->layout()->count(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(f.form);
    auto* replacement = new QLabel(QStringLiteral("replacement"));
    replacement->setMinimumHeight(120);
    f.pane->setWidget(replacement);
    QCOMPARE(replacement->sizePolicy(), QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed));
    QVERIFY(f.form);
    QTRY_VERIFY(!f.form);
    // In its place once opened again, and its height the next target.
    f.pane->hide();
    f.ClearRecords();
    f.pane->expand();
    QTRY_VERIFY(f.Rests(true));
    QCOMPARE(f.heights.last(), 120);

    // Without content the pane still closes and opens.
    QPointer<QLabel> old(replacement);
    f.pane->setWidget(nullptr);
    QCOMPARE(f.pane->widget(), nullptr);
    QTRY_VERIFY(!old);
    f.pane->collapse();
    QTRY_VERIFY(!f.pane->isVisible());
    f.ClearRecords();
    f.pane->expand();
    QTRY_COMPARE(f.log, (QStringList{"Collapsed(false)", "Expanded()", "Expanded(true)"}));
    QVERIFY(f.pane->isVisible());
}

// Style sheets and Designer reach the properties by name; the resets restore the defaults
// and the animations follow.
void TestCollapsingPane::propertiesAreReachableByNameAndReset()
{
    Fixture f;
    f.pane->setStyleSheet(QStringLiteral("OrvantaQT--CollapsingPane { qproperty-duration: 100000; qproperty-easing: OutQuad; }"));
    f.pane->ensurePolished();
    QCOMPARE(f.pane->GetDuration(), 100000u);
    QCOMPARE(f.pane->GetEasing(), QEasingCurve::OutQuad);
    QVERIFY(f.Settle(false));

    // Over 100 s the pane has hardly moved after a moment; over the default 700 ms with
    // the default easing it would be nearly open.
    f.pane->expand();
    QTRY_VERIFY(!f.heights.isEmpty());
    QTest::qWait(400);
    QVERIFY(f.heights.last() < f.form->sizeHint().height() / 2);

    f.pane->hide();
    const QMetaObject* meta = f.pane->metaObject();
    for (const char* name : {"initiallyOpened", "easing", "duration"})
        QVERIFY(meta->property(meta->indexOfProperty(name)).reset(f.pane));
    QCOMPARE(f.pane->GetDuration(), 700u);
    QCOMPARE(f.pane->GetEasing(), QEasingCurve::OutQuart);
    QCOMPARE(f.pane->GetInitiallyOpened(), false);
    f.pane->expand();
    QTRY_VERIFY(f.Rests(true));
}

QTEST_MAIN(TestCollapsingPane)
#include "tst_collapsing_pane.moc"
