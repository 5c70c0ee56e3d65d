#include <qt_halvo/utilities/log_call_site_p.h>

#include "test_support.h"

using OrvantaQT::Logging::FunctionNameOf;
using OrvantaQT::Logging::SourcePathOf;

// Functions that log, as this compiler names them.
namespace CallSites {
struct Widget
{
    Widget() : made(Q_FUNC_INFO) {}
    virtual ~Widget() = default;
    virtual QMap<QString, int> Paint() const { return {{QString::fromLatin1(Q_FUNC_INFO), 0}}; }
    const char* operator()(int) const { return Q_FUNC_INFO; }
    template <typename T> static const char* Make(T) { return Q_FUNC_INFO; }
    const char* made;
};
} // namespace CallSites

class TestLogCallSite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sourcePath_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("expected");
        QTest::newRow("within the tree") << "qt_halvo/styles/style_sheet.cpp" << "qt_halvo\\styles\\style_sheet";
        QTest::newRow("checkout named like the tree")
            << "/home/dev/qt_halvo/qt_halvo/utilities/hidpi_utils.cpp" << "qt_halvo\\utilities\\hidpi_utils";
        QTest::newRow("windows path") << "C:\\src\\qt_halvo\\styles\\style_sheet.h" << "qt_halvo\\styles\\style_sheet";
        QTest::newRow("folder that only contains the name") << "/src/my_qt_halvo_fork/qt_halvo/a.cpp" << "qt_halvo\\a";
        QTest::newRow("outside the tree") << "tests/utilities/tst_logging.cpp" << "tests\\utilities\\tst_logging";
        QTest::newRow("dot in a folder, none in the file") << "qt_halvo/v1.2/readme" << "qt_halvo\\v1.2\\readme";
        QTest::newRow("no folder") << "main.cpp" << "main";
        QTest::newRow("the name alone") << "qt_halvo" << "qt_halvo";
    }

    void sourcePath()
    {
        QFETCH(QString, file);
        QFETCH(QString, expected);
        QCOMPARE(QString::fromStdString(SourcePathOf(file.toStdString())), expected);
    }

    void functionName_data()
    {
        QTest::addColumn<QString>("signature");
        QTest::addColumn<QString>("expected");
        QTest::newRow("constructor") << "OrvantaQT::Pane::Pane(QWidget*)" << "OrvantaQT::Pane::Pane";
        QTest::newRow("virtual") << "virtual void OrvantaQT::Card::paint(QPaintEvent*)" << "OrvantaQT::Card::paint";
        QTest::newRow("template return type") << "QMap<QString, QVariant> OrvantaQT::Colors()" << "OrvantaQT::Colors";
        QTest::newRow("clang pointer") << "QString *OrvantaQT::Make() const" << "OrvantaQT::Make";
        QTest::newRow("clang reference") << "const QString &OrvantaQT::Foo::Name() const" << "OrvantaQT::Foo::Name";
        QTest::newRow("call operator") << "bool OrvantaQT::Foo::operator()(int) const" << "OrvantaQT::Foo::operator()";
        QTest::newRow("stream operator") << "QDebug OrvantaQT::operator<<(QDebug, const A&)" << "OrvantaQT::operator<<";
        QTest::newRow("operator new") << "static void* OrvantaQT::A::operator new(size_t)" << "OrvantaQT::A::operator new";
        QTest::newRow("clang lambda") << "auto OrvantaQT::Foo::Bar()::(anonymous class)::operator()(int) const"
                                      << "OrvantaQT::Foo::Bar";
        QTest::newRow("clang anonymous namespace") << "void OrvantaQT::(anonymous namespace)::Do(int)"
                                                   << "OrvantaQT::(anonymous namespace)::Do";
        QTest::newRow("gcc template") << "void OrvantaQT::Convert(T) [with T = std::map<int, int>]" << "OrvantaQT::Convert";
        QTest::newRow("msvc") << "void __cdecl OrvantaQT::LoadColors(const class QString &)" << "OrvantaQT::LoadColors";
        QTest::newRow("name only") << "main" << "main";
        QTest::newRow("unbalanced") << ">>>( <(" << ">>>";
        const CallSites::Widget widget;
        QTest::newRow("this compiler: constructor") << widget.made << "CallSites::Widget::Widget";
        QTest::newRow("this compiler: virtual") << widget.Paint().firstKey() << "CallSites::Widget::Paint";
        QTest::newRow("this compiler: operator") << widget(1) << "CallSites::Widget::operator()";
        QTest::newRow("this compiler: template") << CallSites::Widget::Make(1.5) << "CallSites::Widget::Make";
        QTest::newRow("this compiler: lambda") << [] { return Q_FUNC_INFO; }() << "TestLogCallSite::functionName_data";
    }

    void functionName()
    {
        QFETCH(QString, signature);
        QFETCH(QString, expected);
        QCOMPARE(QString::fromStdString(FunctionNameOf(signature.toStdString())), expected);
    }
};

QTEST_GUILESS_MAIN(TestLogCallSite)
#include "tst_log_call_site.moc"
