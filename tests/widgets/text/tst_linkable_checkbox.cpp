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
    void resetsRestoreTheDefaults();
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

    // Hovering the caption hovers the box.
    QTest::mouseMove(&window, QPoint(395, 95));
    QTRY_VERIFY(!box->CheckBox()->IsHovered());
    QTest::mouseMove(caption, QPoint(8, 5));
    QTRY_VERIFY(box->CheckBox()->IsHovered());
    QTest::mouseMove(&window, QPoint(395, 95));
    QTRY_VERIFY(!box->CheckBox()->IsHovered());

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
    QTest::mouseClick(caption, Qt::LeftButton, {}, QPoint(int(document.idealWidth()) - 20, caption->height() / 2));
    QCOMPARE(links.count(), 1);
    QCOMPARE(links.first().first().toString(), QStringLiteral("terms"));
    QCOMPARE(toggled.count(), 1);
    QVERIFY(box->isChecked());

    // The box itself still toggles.
    QTest::mouseClick(box->CheckBox(), Qt::LeftButton);
    QCOMPARE(toggled.count(), 2);
    QVERIFY(!box->isChecked());
}

void TestLinkableCheckbox::resetsRestoreTheDefaults()
{
    LinkableCheckbox fresh;
    LinkableCheckbox box;
    box.setSpacing(20);
    box.setWordWrap(true);
    box.setTextFormat(Qt::PlainText);
    box.setChecked(true);
    for (const char* name : {"textFormat", "wordWrap", "spacing", "checked"}) {
        const QMetaProperty property = box.metaObject()->property(box.metaObject()->indexOfProperty(name));
        QVERIFY2(property.read(&box) != property.read(&fresh) && property.reset(&box), name);
        QCOMPARE(property.read(&box), property.read(&fresh));
    }
}

// A disabled link takes the global sheet's "greyColor".
void TestLinkableCheckbox::linkMarkup()
{
    QTemporaryDir folder;
    QFile sheet(folder.filePath(QStringLiteral("styles.qss")));
    QVERIFY(sheet.open(QIODevice::WriteOnly));
    sheet.write("/* Stylesheet Constants\ngreyColor = #7f7f80\n*/\nQLabel { color: @greyColor; }\n");
    sheet.close();
    OrvantaQT::LoadGlobalStyleSheet(sheet.fileName());
    LinkTextBuilder builder;
    const QString help = QStringLiteral("Help");
    QCOMPARE(builder.GetDecoratedLink(help),
             QStringLiteral("<a href=\"link\" style=\"text-decoration: none;\">Help<\\a>"));
    builder.SetEnabled(false);
    QCOMPARE(builder.GetDecoratedLink(help),
             QStringLiteral("<a href=\"link\" style=\"text-decoration: none; color:#7f7f80;\">Help<\\a>"));
    builder.SetNoLinkMode(true);
    QCOMPARE(builder.GetDecoratedLink(help), help);
    builder.SetEnabled(true);
    QCOMPARE(builder.GetDecoratedLink(help), help);
}

QTEST_MAIN(TestLinkableCheckbox)
#include "tst_linkable_checkbox.moc"
