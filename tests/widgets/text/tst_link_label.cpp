#include <qt_halvo/widgets/text/link_label.h>

#include <QtGui/QDesktopServices>
#include <QtTest/QtTest>

using OrvantaQT::LinkLabel;

namespace {

const QString kPath = QStringLiteral("C:\\Users\\Someone\\Documents\\Reports\\Quarterly report.pdf");

struct Fixture
{
    Fixture()
    {
        window.resize(300, 100);
        label->setText(QStringLiteral("Open the help"));
        label->setGeometry(10, 10, 150, 24);
        window.show();
    }
    bool Exposed() { return QTest::qWaitForWindowExposed(&window); }
    void Rest() { QTest::mouseMove(&window, QPoint(250, 80)); }
    QColor Foreground() const { return label->palette().color(QPalette::Active, label->foregroundRole()); }

    QWidget window;
    LinkLabel* label = new LinkLabel(&window);
};

} // namespace

class TestLinkLabel : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    // Stands in for the desktop's URL opener.
    void Open(const QUrl& url) { m_seen << "open " + url.toString(); }

private Q_SLOTS:
    void initTestCase() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "Open"); }
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }
    void activation_data();
    void activation();
    void hoverAndDisabledLook();
    void pathKeepsDriveAndFileName();

private:
    QStringList m_seen;
};

void TestLinkLabel::activation_data()
{
    QTest::addColumn<QString>("href");
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("input"); // a mouse button or a key
    QTest::addColumn<QStringList>("expected");
    const QString url = QStringLiteral("https://example.org/help");
    const QStringList command{"Clicked", "CommandClicked settings"};
    QTest::newRow("href and command: only opened")
        << url << "settings" << int(Qt::LeftButton) << QStringList{"open " + url};
    QTest::newRow("command") << QString() << "settings" << int(Qt::LeftButton) << command;
    QTest::newRow("neither") << QString() << QString() << int(Qt::LeftButton) << QStringList{"Clicked"};
    QTest::newRow("right button") << QString() << "settings" << int(Qt::RightButton) << QStringList();
    QTest::newRow("Return") << QString() << "settings" << int(Qt::Key_Return) << command;
    QTest::newRow("Enter opens") << url << QString() << int(Qt::Key_Enter) << QStringList{"open " + url};
}

void TestLinkLabel::activation()
{
    QFETCH(QString, href);
    QFETCH(QString, command);
    QFETCH(int, input);
    QFETCH(QStringList, expected);
    Fixture f;
    f.label->SetHref(href);
    f.label->SetCommand(command);
    QVERIFY(f.Exposed());
    m_seen.clear();
    connect(f.label, &LinkLabel::Clicked, this, [this] { m_seen << QStringLiteral("Clicked"); });
    connect(f.label, &LinkLabel::CommandClicked, this, [this](const QString& c) { m_seen << "CommandClicked " + c; });
    if (input < Qt::Key_Escape)
        QTest::mouseClick(f.label, Qt::MouseButton(input));
    else
        QTest::keyClick(f.label, Qt::Key(input));
    QCOMPARE(m_seen, expected);
}

void TestLinkLabel::hoverAndDisabledLook()
{
    Fixture f;
    f.label->SetLinkColor(QColor(10, 120, 200));
    QVERIFY(f.Exposed());
    f.Rest();
    QCOMPARE(f.Foreground(), QColor(10, 120, 200));
    QTest::mouseMove(f.label, QPoint(20, 10));
    QTRY_COMPARE(f.label->cursor().shape(), Qt::PointingHandCursor);
    QVERIFY(f.label->font().underline());
    f.Rest();
    QTRY_VERIFY(!f.label->font().underline());
    QCOMPARE(f.label->cursor().shape(), Qt::ArrowCursor);

    f.label->setEnabled(false);
    QCOMPARE(f.Foreground(), QColor(Qt::gray));
    QTest::mouseMove(f.label, QPoint(20, 10));
    QTest::qWait(100);
    QCOMPARE(f.label->cursor().shape(), Qt::ArrowCursor);
    QVERIFY(!f.label->font().underline());
    f.label->setEnabled(true);
    QCOMPARE(f.Foreground(), QColor(10, 120, 200));
}

// The drive and as much of the end as fits, the folders above the file elided first.
void TestLinkLabel::pathKeepsDriveAndFileName()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    Fixture f;
    f.label->setFont(font);
    f.label->SetPath(kPath);
    const QFontMetrics metrics(font);
    const QString drive = QStringLiteral("C:\\");
    QCOMPARE(f.label->minimumSizeHint(), metrics.size(Qt::TextSingleLine, drive));
    QCOMPARE(f.label->sizeHint().width(), metrics.horizontalAdvance(kPath));
    const int driveWidth = metrics.horizontalAdvance(drive);
    const QVector<QPair<int, QString>> shown{
        {metrics.horizontalAdvance(kPath), kPath},
        {200, drive + metrics.elidedText(kPath.mid(3), Qt::ElideLeft, 200 - driveWidth, 0)},
        {driveWidth, drive},
        {0, drive}};
    for (const auto& entry : shown) {
        f.label->resize(entry.first, 24);
        QCOMPARE(f.label->text(), entry.second);
    }
}

QTEST_MAIN(TestLinkLabel)
#include "tst_link_label.moc"
