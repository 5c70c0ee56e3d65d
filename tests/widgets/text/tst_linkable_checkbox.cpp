#include <qt_halvo/widgets/text/clickable_label.h>
#include <qt_halvo/widgets/text/hoverable_check_box.h>
#include <qt_halvo/widgets/text/link_text_builder.h>
#include <qt_halvo/widgets/text/linkable_checkbox.h>
#include <qt_halvo/styles/style_sheet.h>

#include <QtGui/QTextDocument>
#include <QtTest/QtTest>

using OrvantaQT::LinkableCheckbox;
using OrvantaQT::LinkTextBuilder;

class TestLinkableCheckbox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void captionTogglesButALinkDoesNot();
    void hoveringTheCaptionHoversTheBox();
    void propertiesAndResets();
    void linkMarkup_data();
    void linkMarkup();
};

// "I accept the terms" with "terms" a link, wide enough to click beside the link.
void TestLinkableCheckbox::captionTogglesButALinkDoesNot()
{
    QWidget window;
    window.resize(400, 100);
    auto* box = new LinkableCheckbox(&window);
    box->setGeometry(10, 10, 380, 40);
    box->setText(QStringLiteral("I accept <a href=\"terms\">the terms</a> of use"));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QSignalSpy toggled(box, &LinkableCheckbox::Toggled);
    QSignalSpy links(box, &LinkableCheckbox::LinkActivated);
    QSignalSpy states(box, &LinkableCheckbox::StateChanged);
    OrvantaQT::ClickableLabel* caption = box->Caption();

    // On "I accept": toggles.
    QTest::mouseClick(caption, Qt::LeftButton, {}, QPoint(8, caption->height() / 2));
    QCOMPARE(toggled.count(), 1);
    QVERIFY(box->isChecked());
    QCOMPARE(states.count(), 1);
    QCOMPARE(links.count(), 0);

    // On the link: only the link.
    QTextDocument document;
    document.setDefaultFont(caption->font());
    document.setHtml(QStringLiteral("I accept the terms"));
    const int linkX = int(document.idealWidth()) - 20;
    QTest::mouseClick(caption, Qt::LeftButton, {}, QPoint(linkX, caption->height() / 2));
    QCOMPARE(links.count(), 1);
    QCOMPARE(links.first().first().toString(), QStringLiteral("terms"));
    QCOMPARE(toggled.count(), 1);
    QVERIFY(box->isChecked());

    // The box itself still toggles.
    QTest::mouseClick(box->CheckBox(), Qt::LeftButton);
    QCOMPARE(toggled.count(), 2);
    QVERIFY(!box->isChecked());
}

void TestLinkableCheckbox::hoveringTheCaptionHoversTheBox()
{
    QWidget window;
    window.resize(400, 120);
    auto* box = new LinkableCheckbox(&window);
    box->setGeometry(10, 10, 300, 40);
    box->setText(QStringLiteral("A caption"));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::mouseMove(&window, QPoint(390, 110));
    QTRY_VERIFY(!box->CheckBox()->IsHovered());
    QTest::mouseMove(box->Caption(), QPoint(10, 5));
    QTRY_VERIFY(box->CheckBox()->IsHovered());
    QTest::mouseMove(&window, QPoint(390, 110));
    QTRY_VERIFY(!box->CheckBox()->IsHovered());
}

void TestLinkableCheckbox::propertiesAndResets()
{
    LinkableCheckbox box;
    const QMetaObject* meta = box.metaObject();
    box.setSpacing(20);
    box.setWordWrap(true);
    box.setTextFormat(Qt::PlainText);
    box.setChecked(true);
    for (const char* name : {"textFormat", "wordWrap", "spacing", "checked"})
        QVERIFY(meta->property(meta->indexOfProperty(name)).reset(&box));
    QCOMPARE(box.spacing(), 6);
    QCOMPARE(box.wordWrap(), false);
    QCOMPARE(box.textFormat(), Qt::AutoText);
    QCOMPARE(box.isChecked(), false);
}

void TestLinkableCheckbox::linkMarkup_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("noLink");
    QTest::addColumn<QString>("markup");
    QTest::newRow("enabled") << true << false << "<a href=\"link\" style=\"text-decoration: none;\">Help<\\a>";
    QTest::newRow("disabled") << false << false
                              << "<a href=\"link\" style=\"text-decoration: none; color:#7f7f80;\">Help<\\a>";
    QTest::newRow("no link, enabled") << true << true << "Help";
    QTest::newRow("no link, disabled") << false << true << "Help";
}

void TestLinkableCheckbox::linkMarkup()
{
    QFETCH(bool, enabled);
    QFETCH(bool, noLink);
    QFETCH(QString, markup);
    // The grey is the global sheet's "greyColor".
    QTemporaryDir folder;
    QFile sheet(folder.filePath(QStringLiteral("styles.qss")));
    QVERIFY(sheet.open(QIODevice::WriteOnly));
    sheet.write("/* Stylesheet Constants\ngreyColor = #7f7f80\n*/\nQLabel { color: @greyColor; }\n");
    sheet.close();
    OrvantaQT::LoadGlobalStyleSheet(sheet.fileName());
    LinkTextBuilder builder;
    builder.SetEnabled(enabled);
    builder.SetNoLinkMode(noLink);
    QCOMPARE(builder.GetDecoratedLink(QStringLiteral("Help")), markup);
    const LinkTextBuilder copy = builder;
    QCOMPARE(copy.GetDecoratedLink(QStringLiteral("Help")), markup);
}

QTEST_MAIN(TestLinkableCheckbox)
#include "tst_linkable_checkbox.moc"
