#include <qt_halvo/animation/expand_animation.h>

#include "log_capture.h"

#include <QtTest/QtTest>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QWidget>

using OrvantaQT::ExpandAnimation;

namespace {

using Policies = QPair<QSizePolicy::Policy, QSizePolicy::Policy>;

Policies PoliciesOf(const QWidget* widget)
{
    return {widget->sizePolicy().horizontalPolicy(), widget->sizePolicy().verticalPolicy()};
}

// A 400 x 300 parent with contents margins 2, 3, 4, 5 and a box layout with margins
// 7, 11, 13, 17, holding the widget to expand beside a sibling that takes the rest.
// Its free area is therefore (9, 14) 374 x 264.
struct Fixture
{
    explicit Fixture(Qt::Orientations orientations, int duration = 200)
    {
        parent.setContentsMargins(2, 3, 4, 5);
        auto* layout = new QHBoxLayout(&parent);
        layout->setContentsMargins(7, 11, 13, 17);
        widget = new QWidget;
        widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        widget->setMinimumSize(40, 30);
        layout->addWidget(widget);
        layout->addWidget(new QWidget);
        parent.resize(400, 300);
        parent.show();
        expand = new ExpandAnimation(widget, &parent, orientations, duration);
        const auto note = [this](const char* name) {
            return [this, name] { finished << name, finishedAt << widget->geometry(); };
        };
        QObject::connect(expand, &ExpandAnimation::ExpandFinished, note("expand"));
        QObject::connect(expand, &ExpandAnimation::CollapseFinished, note("collapse"));
    }

    bool Exposed() { return QTest::qWaitForWindowExposed(&parent); }

    QString ExpandState() const { return widget->property("ExpandState").toString(); }

    QWidget parent;
    QWidget* widget = nullptr;
    ExpandAnimation* expand = nullptr;
    QStringList finished;
    QVector<QRect> finishedAt;
};

QRect Expanded(const QRect& collapsed, Qt::Orientations orientations, const QRect& freeArea)
{
    QRect rect = collapsed;
    if (orientations & Qt::Horizontal)
        rect.setCoords(freeArea.left(), rect.top(), freeArea.right(), rect.bottom());
    if (orientations & Qt::Vertical)
        rect.setCoords(rect.left(), freeArea.top(), rect.right(), freeArea.bottom());
    return rect;
}

} // namespace

class TestExpandAnimation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void expandsIntoTheParentsFreeArea_data();
    void expandsIntoTheParentsFreeArea();
    void collapseSnapsBackAtOnce_data();
    void collapseSnapsBackAtOnce();
    void parentResizedWhileCollapsedMovesTheTarget();
    void missingWidgetIsReported();
};

void TestExpandAnimation::expandsIntoTheParentsFreeArea_data()
{
    QTest::addColumn<Qt::Orientations>("orientations");
    QTest::addColumn<bool>("animated");
    QTest::addColumn<Policies>("moving");
    QTest::addColumn<Policies>("settled");

    const Policies fixed(QSizePolicy::Fixed, QSizePolicy::Fixed);
    QTest::newRow("horizontal") << Qt::Orientations(Qt::Horizontal) << true
                                << Policies(QSizePolicy::Preferred, QSizePolicy::Preferred)
                                << Policies(QSizePolicy::Expanding, QSizePolicy::Expanding);
    QTest::newRow("vertical") << Qt::Orientations(Qt::Vertical) << true << fixed << fixed;
    QTest::newRow("both") << (Qt::Horizontal | Qt::Vertical) << true
                          << Policies(QSizePolicy::Preferred, QSizePolicy::Fixed)
                          << Policies(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QTest::newRow("vertical, SetExpandedState()") << Qt::Orientations(Qt::Vertical) << false << fixed << fixed;
}

void TestExpandAnimation::expandsIntoTheParentsFreeArea()
{
    QFETCH(Qt::Orientations, orientations);
    QFETCH(bool, animated);
    QFETCH(Policies, moving);
    QFETCH(Policies, settled);

    Fixture f(orientations, 600);
    QVERIFY(f.Exposed());
    const QRect collapsed = f.widget->geometry();
    const QRect target = Expanded(collapsed, orientations, QRect(9, 14, 374, 264));

    if (animated) {
        f.expand->DoExpand();
        QCOMPARE(PoliciesOf(f.widget), moving);
        QCOMPARE(f.ExpandState(), QStringLiteral("Expanded"));
        QTRY_VERIFY(f.widget->geometry() != collapsed && f.widget->geometry() != target);
        f.expand->DoExpand(); // already expanding: the animation goes on, not again
        QTRY_COMPARE(f.finished, QStringList{"expand"});
    } else {
        f.expand->SetExpandedState();
        QCOMPARE(f.finished, QStringList{"expand"});
    }
    QCOMPARE(f.finishedAt.first(), target);
    QCOMPARE(PoliciesOf(f.widget), settled);
    QCOMPARE(f.ExpandState(), QStringLiteral("Expanded"));
    // Expanded already: neither way starts again.
    f.expand->SetExpandedState();
    f.expand->DoExpand();
    QTest::qWait(250);
    QCOMPARE(f.finished, QStringList{"expand"});
}

void TestExpandAnimation::collapseSnapsBackAtOnce_data()
{
    QTest::addColumn<bool>("expandFirst");

    QTest::newRow("during an expansion") << true;
    QTest::newRow("never expanded") << false;
}

void TestExpandAnimation::collapseSnapsBackAtOnce()
{
    QFETCH(bool, expandFirst);

    Fixture f(Qt::Horizontal | Qt::Vertical, 1000);
    QVERIFY(f.Exposed());
    const QRect collapsed = f.widget->geometry();
    if (expandFirst) {
        f.expand->DoExpand();
        QTRY_VERIFY(f.widget->geometry() != collapsed);
    }

    // Stopping a running expansion reports the collapse before the widget is put back.
    f.expand->DoCollapse();
    QCOMPARE(f.finished, QStringList{"collapse"});
    QCOMPARE(f.widget->geometry(), collapsed);
    QCOMPARE(PoliciesOf(f.widget), Policies(QSizePolicy::Fixed, QSizePolicy::Fixed));
    QCOMPARE(f.ExpandState(), QStringLiteral("Collapsed"));

    f.expand->DoCollapse();
    QTest::qWait(100);
    QCOMPARE(f.finished, QStringList{"collapse"});
}

void TestExpandAnimation::parentResizedWhileCollapsedMovesTheTarget()
{
    Fixture f(Qt::Horizontal | Qt::Vertical, 60);
    QVERIFY(f.Exposed());
    f.expand->DoExpand();
    QTRY_COMPARE(f.finished.size(), 1);
    f.expand->DoCollapse();

    f.parent.resize(520, 360);
    QTRY_COMPARE(f.parent.size(), QSize(520, 360));
    const QRect collapsed = f.widget->geometry();
    f.expand->DoExpand();
    QTRY_COMPARE(f.finished.size(), 3);
    QCOMPARE(f.finishedAt.last(), QRect(9, 14, 520 - 26, 360 - 36));

    f.expand->DoCollapse();
    QCOMPARE(f.finishedAt.last(), collapsed);
}

void TestExpandAnimation::missingWidgetIsReported()
{
    LogCapture::Mark mark;
    QObject owner;
    auto* expand = new ExpandAnimation(nullptr, &owner, Qt::Horizontal, 100);
    QSignalSpy finished(expand, &ExpandAnimation::ExpandFinished);
    expand->DoExpand();
    expand->SetExpandedState();
    expand->DoCollapse();
    QCOMPARE(finished.count(), 0);
    QVERIFY(mark.Contains(4, QStringLiteral("ExpandAnimation: no widget to expand; the animation does nothing")));

    QWidget orphan;
    ExpandAnimation alone(&orphan, nullptr, Qt::Horizontal, 10);
    QVERIFY(mark.Contains(3, QStringLiteral("ExpandAnimation: the widget has no parent to expand into")));
    alone.SetExpandedState();
    QCOMPARE(orphan.geometry(), QWidget().geometry());
}

QTEST_MAIN(TestExpandAnimation)
#include "tst_expand_animation.moc"
