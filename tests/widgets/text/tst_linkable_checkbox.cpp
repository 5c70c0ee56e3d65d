#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/widgets/text/clickable_label.h>
#include <qt_halvo/widgets/text/hoverable_check_box.h>
#include <qt_halvo/widgets/text/link_text_builder.h>
#include <qt_halvo/widgets/text/linkable_checkbox.h>

#include "test_support.h"

class TestLinkableCheckbox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Hovering the caption hovers the box; a click on the caption toggles the box, one on its
    // link only reports the link.
    void captionTogglesButALinkDoesNot()
    {
        QWidget window;
        auto* box = new OrvantaQT::LinkableCheckbox(&window);
        box->setGeometry(10, 10, 380, 40);
        box->setText(QStringLiteral("I accept <a href=\"terms\">the terms</a> of use"));
        QVERIFY(TestSupport::ShowAndWait(&window));
        TestSupport::SignalLog log(box, {"Toggled()", "StateChanged(int)", "LinkActivated(QString)"});
        QLabel* caption = box->Caption();
        QTest::mouseMove(caption, QPoint(8, 5));
        QTRY_VERIFY(box->CheckBox()->IsHovered());
        QTest::mouseClick(caption, Qt::LeftButton, {}, QPoint(8, caption->height() / 2));
        const int link = QFontMetrics(caption->font()).horizontalAdvance(QStringLiteral("I accept the te"));
        QTest::mouseClick(caption, Qt::LeftButton, {}, QPoint(link, caption->height() / 2));
        QTest::mouseClick(box->CheckBox(), Qt::LeftButton);
        QCOMPARE(log.Take(), TestSupport::Words("StateChanged(2) Toggled() LinkActivated(terms) Toggled() StateChanged(0)"));
    }

    // A disabled link takes the global sheet's "greyColor"; the anchors close with "<\a>".
    void linkMarkup()
    {
        QTemporaryDir folder;
        QFile sheet(folder.filePath(QStringLiteral("styles.qss")));
        QVERIFY(sheet.open(QIODevice::WriteOnly) && sheet.write("/* Stylesheet Constants\ngreyColor = #7f7f80\n*/\n") > 0);
        sheet.close();
        OrvantaQT::LoadGlobalStyleSheet(sheet.fileName());
        OrvantaQT::LinkTextBuilder builder;
        builder.SetEnabled(false);
        QCOMPARE(builder.GetDecoratedLink(QStringLiteral("Help")),
                 QStringLiteral("<a href=\"link\" style=\"text-decoration: none; color:#7f7f80;\">Help<\\a>"));
        builder.SetNoLinkMode(true);
        QCOMPARE(builder.GetDecoratedLink(QStringLiteral("Help")), QStringLiteral("Help"));
    }
};

QTEST_MAIN(TestLinkableCheckbox)
#include "tst_linkable_checkbox.moc"
