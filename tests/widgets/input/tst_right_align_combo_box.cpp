#include <qt_halvo/widgets/input/right_align_combo_box_p.h>

#include "widgets_probes.h"

class TestRightAlignComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Right-aligned, inset by the arrow's width on both sides, also when cut for the ending.
    void textEndsClearOfTheArrow()
    {
        OrvantaQT::RightAlignComboBox combo;
        combo.resize(260, 30);
        QVERIFY(TestSupport::ShowAndWait(&combo));
        const QImage empty = TestSupport::Render(&combo);
        combo.SetTextToDraw(QStringLiteral("eu-west"));
        const QRect text = WidgetsProbes::Changed(empty, TestSupport::Render(&combo));
        const int arrow = combo.ArrowWidth();
        QVERIFY(text.left() > 130 && text.right() < 260 - arrow && text.right() > 260 - arrow - 12);
        combo.SetConstEnding(QStringLiteral(".example.org"));
        combo.SetAppendEnding(true);
        combo.SetTextToDraw(QStringLiteral("a-very-long-server-name-that-cannot-fit"));
        const QRect cut = WidgetsProbes::Changed(empty, TestSupport::Render(&combo));
        QVERIFY(cut.left() >= arrow && cut.right() < 260 - arrow);
    }
};

QTEST_MAIN(TestRightAlignComboBox)
#include "tst_right_align_combo_box.moc"
