#include <qt_halvo/animation/expand_animation.h>

#include "test_support.h"

using OrvantaQT::ExpandAnimation;

class TestExpandAnimation : public QObject
{
    Q_OBJECT

    std::unique_ptr<QWidget> m_parent;
    QWidget* m_widget = nullptr;
    // Where the widget is, its size policies across and down, and its style state.
    QString Described() const
    {
        const QRect r = m_widget->geometry();
        const QMetaEnum policy = QMetaEnum::fromType<QSizePolicy::Policy>();
        return QString("%1,%2 %3x%4 %5 %6 %7").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()).arg(
            policy.valueToKey(m_widget->sizePolicy().horizontalPolicy()), policy.valueToKey(m_widget->sizePolicy().verticalPolicy()),
            m_widget->property("ExpandState").toString());
    }

private Q_SLOTS:
    void expands_data()
    {
        QTest::addColumn<Qt::Orientations>("orientations");
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("logged"); // with the widget described after each request and on ExpandFinished()
        const Qt::Orientations across = Qt::Horizontal, down = Qt::Vertical, both = across | down;
        const QString finished = "ExpandFinished() 9,14 374x264 Expanding Fixed Expanded", collapsed = "CollapseFinished() 343,131 40x30 Fixed Fixed Collapsed";
        QTest::newRow("across") << across << "DoExpand" << "343,131 40x30 Preferred Preferred Expanded ExpandFinished() 9,131 374x30 Expanding Expanding Expanded";
        QTest::newRow("down") << down << "DoExpand" << "343,131 40x30 Fixed Fixed Expanded ExpandFinished() 343,14 40x264 Fixed Fixed Expanded";
        QTest::newRow("both") << both << "DoExpand" << "343,131 40x30 Preferred Fixed Expanded " + finished;
        QTest::newRow("at once") << both << "SetExpandedState" << finished + " 9,14 374x264 Expanding Fixed Expanded";
        // Collapsing is at once, also half way through an expansion, back to where the layout
        // had the widget at the parent's last resize.
        QTest::newRow("collapse") << both << "DoCollapse DoCollapse" << collapsed + " 343,131 40x30 Fixed Fixed Collapsed";
        QTest::newRow("collapse half way") << both << "DoExpand half DoCollapse" << "343,131 40x30 Preferred Fixed Expanded " + collapsed;
        QTest::newRow("after a resize") << both << "resize DoExpand finish DoCollapse"
                                        << "463,161 40x30 Preferred Fixed Expanded ExpandFinished() 9,14 494x324 Expanding Fixed Expanded "
                                           "CollapseFinished() 463,161 40x30 Fixed Fixed Collapsed";
    }
    // A 40 x 30 widget at (343, 131) in a 400 x 300 parent with contents margins 2, 3, 4, 5 and layout margins
    // 7, 11, 13, 17, right of one that takes the rest, can expand into (9, 14) 374 x 264. Expanded, it stays.
    void expands()
    {
        QFETCH(Qt::Orientations, orientations);
        QFETCH(QString, script);
        QFETCH(QString, logged);
        m_parent.reset(new QWidget);
        m_parent->setContentsMargins(2, 3, 4, 5);
        auto* layout = new QHBoxLayout(m_parent.get());
        layout->setContentsMargins(7, 11, 13, 17);
        layout->addWidget(new QWidget);
        layout->addWidget(m_widget = new QWidget);
        m_widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        m_widget->setMinimumSize(40, 30);
        m_parent->resize(400, 300);
        QVERIFY(TestSupport::ShowAndWait(m_parent.get()));
        ExpandAnimation expand(m_widget, m_parent.get(), orientations, 600);
        TestSupport::SignalLog log(&expand, {"ExpandFinished()", "CollapseFinished()"});
        connect(&expand, &ExpandAnimation::ExpandFinished, this, [&] { log.Note(Described()); });
        for (const QString& step : script.split(' ')) {
            if (step == "half")
                QTRY_VERIFY(m_widget->width() > 100 && log.lines.size() == 1);
            else if (step == "finish")
                QTRY_VERIFY(log.lines.contains("ExpandFinished()"));
            else if (step == "resize")
                m_parent->resize(520, 360);
            else
                QMetaObject::invokeMethod(&expand, step.toLatin1()), log.Note(Described());
        }
        QTRY_COMPARE(log.lines.join(' '), logged);
        if (logged.endsWith("Expanded")) {
            expand.SetExpandedState(), expand.DoExpand();
            QTest::qWait(100);
            QCOMPARE(log.lines.join(' '), logged);
        }
    }
};

QTEST_MAIN(TestExpandAnimation)
#include "tst_expand_animation.moc"
