#include <qt_halvo/widgets/text/link_label.h>

#include <QtGui/QDesktopServices>
#include <QtTest/QtTest>

using OrvantaQT::LinkLabel;

namespace {

// Stands in for the desktop's URL opener.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    UrlCatcher() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "Open"); }
    ~UrlCatcher() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }
    QList<QUrl> opened;

public Q_SLOTS:
    void Open(const QUrl& url) { opened << url; }
};

QFont TestFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    return font;
}

} // namespace

class TestLinkLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void activation_data();
    void activation();
    void hoverAndDisabledLook();
    void pathKeepsDriveAndFileName_data();
    void pathKeepsDriveAndFileName();
};

void TestLinkLabel::activation_data()
{
    QTest::addColumn<QString>("href");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("how");
    QTest::addColumn<QStringList>("expected");

    const QString url = QStringLiteral("https://example.org/help");
    QTest::newRow("href and command: only opened") << url << "settings" << "left" << QStringList{"open " + url};
    QTest::newRow("command") << QString() << "settings" << "left" << QStringList{"Clicked", "CommandClicked settings"};
    QTest::newRow("neither") << QString() << QString() << "left" << QStringList{"Clicked"};
    QTest::newRow("right button") << QString() << "settings" << "right" << QStringList();
    QTest::newRow("Return") << QString() << "settings" << "return" << QStringList{"Clicked", "CommandClicked settings"};
    QTest::newRow("Enter opens") << url << QString() << "enter" << QStringList{"open " + url};
}

void TestLinkLabel::activation()
{
    QFETCH(QString, href);
    QFETCH(QString, command);
    QFETCH(QString, how);
    QFETCH(QStringList, expected);

    UrlCatcher catcher;
    QWidget window;
    auto* label = new LinkLabel(&window);
    label->setText(QStringLiteral("Open the help"));
    label->setGeometry(10, 10, 150, 24);
    label->SetHref(href);
    label->SetCommand(command);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QStringList seen;
    connect(label, &LinkLabel::Clicked, this, [&seen] { seen << QStringLiteral("Clicked"); });
    connect(label, &LinkLabel::CommandClicked, this, [&seen](const QString& c) { seen << "CommandClicked " + c; });

    if (how == QLatin1String("left") || how == QLatin1String("right")) {
        QTest::mouseClick(label, how == QLatin1String("left") ? Qt::LeftButton : Qt::RightButton);
    } else {
        QTest::keyClick(label, how == QLatin1String("return") ? Qt::Key_Return : Qt::Key_Enter);
    }
    for (const QUrl& opened : catcher.opened)
        seen << "open " + opened.toString();
    QCOMPARE(seen, expected);
}

void TestLinkLabel::hoverAndDisabledLook()
{
    QWidget window;
    window.resize(300, 100);
    auto* label = new LinkLabel(&window);
    label->setText(QStringLiteral("A link"));
    label->setGeometry(10, 10, 120, 24);
    label->SetLinkColor(QColor(10, 120, 200));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::mouseMove(&window, QPoint(250, 80));
    QCOMPARE(label->palette().color(QPalette::Active, label->foregroundRole()), QColor(10, 120, 200));

    QTest::mouseMove(label, QPoint(20, 10));
    QTRY_COMPARE(label->cursor().shape(), Qt::PointingHandCursor);
    QVERIFY(label->font().underline());
    QTest::mouseMove(&window, QPoint(250, 80));
    QTRY_VERIFY(!label->font().underline());
    QCOMPARE(label->cursor().shape(), Qt::ArrowCursor);

    label->setEnabled(false);
    QCOMPARE(label->palette().color(QPalette::Active, label->foregroundRole()), QColor(Qt::gray));
    QTest::mouseMove(label, QPoint(20, 10));
    QTest::qWait(100);
    QCOMPARE(label->cursor().shape(), Qt::ArrowCursor);
    QVERIFY(!label->font().underline());
    label->setEnabled(true);
    QCOMPARE(label->palette().color(QPalette::Active, label->foregroundRole()), QColor(10, 120, 200));
}

void TestLinkLabel::pathKeepsDriveAndFileName_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("shown");

    const QString path = QStringLiteral("C:\\Users\\Someone\\Documents\\Reports\\Quarterly report.pdf");
    const QFontMetrics metrics(TestFont());
    const int drive = metrics.horizontalAdvance(QStringLiteral("C:\\"));
    QTest::newRow("wide enough") << metrics.horizontalAdvance(path) << path;
    const int narrow = 200;
    QTest::newRow("narrow")
        << narrow << "C:\\" + metrics.elidedText(path.mid(3), Qt::ElideLeft, narrow - drive, 0);
    QTest::newRow("room for the drive only") << drive << QStringLiteral("C:\\");
    QTest::newRow("zero") << 0 << QStringLiteral("C:\\");
}

void TestLinkLabel::pathKeepsDriveAndFileName()
{
    QFETCH(int, width);
    QFETCH(QString, shown);
    LinkLabel label;
    label.setFont(TestFont());
    label.setAttribute(Qt::WA_DontShowOnScreen);
    label.show();
    label.SetPath(QStringLiteral("C:\\Users\\Someone\\Documents\\Reports\\Quarterly report.pdf"));
    label.resize(width, 24);
    QCOMPARE(label.text(), shown);
    if (shown.size() > 3)
        QVERIFY(shown.endsWith(QStringLiteral("report.pdf")));
    const QFontMetrics metrics(TestFont());
    QCOMPARE(label.minimumSizeHint(), metrics.size(Qt::TextSingleLine, QStringLiteral("C:\\")));
    QCOMPARE(label.sizeHint().width(), metrics.horizontalAdvance(label.GetPath()));
}

QTEST_MAIN(TestLinkLabel)
#include "tst_link_label.moc"
