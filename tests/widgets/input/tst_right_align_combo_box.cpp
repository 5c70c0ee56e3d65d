#include <qt_halvo/widgets/input/right_align_combo_box_p.h>

#include <QtTest/QtTest>

using OrvantaQT::RightAlignComboBox;

namespace {

// The first and last columns where the combo box drawing text differs from it drawing none.
QPair<int, int> TextColumns(RightAlignComboBox& combo, const QString& text)
{
    combo.SetTextToDraw(QString());
    const QImage without = combo.grab().toImage();
    combo.SetTextToDraw(text);
    const QImage with = combo.grab().toImage();
    QPair<int, int> columns(with.width(), -1);
    for (int x = 0; x < with.width(); ++x) {
        for (int y = 0; y < with.height(); ++y) {
            if (with.pixel(x, y) != without.pixel(x, y))
                columns = {std::min(columns.first, x), std::max(columns.second, x)};
        }
    }
    return columns;
}

} // namespace

class TestRightAlignComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textEndsClearOfTheArrow();
};

// Right-aligned, inset by the arrow's width on both sides.
void TestRightAlignComboBox::textEndsClearOfTheArrow()
{
    QWidget window;
    auto* combo = new RightAlignComboBox(&window);
    combo->setGeometry(0, 0, 260, 30);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QPair<int, int> columns = TextColumns(*combo, QStringLiteral("eu-west"));
    const int arrow = combo->ArrowWidth();
    QVERIFY(arrow > 0 && arrow < 100);
    QVERIFY2(columns.second < 260 - arrow && columns.second > 260 - arrow - 12,
             qPrintable(QStringLiteral("text ends at %1, arrow %2").arg(columns.second).arg(arrow)));
    QVERIFY(columns.first > 260 / 2);

    // A long text is cut on the right; the ending stays whole after it.
    combo->SetConstEnding(QStringLiteral(".example.org"));
    combo->SetAppendEnding(true);
    const QPair<int, int> cut = TextColumns(*combo, QStringLiteral("a-very-long-server-name-that-cannot-fit"));
    QVERIFY(cut.first >= arrow);
    QVERIFY(cut.second < 260 - arrow);
}

QTEST_MAIN(TestRightAlignComboBox)
#include "tst_right_align_combo_box.moc"
