#include <qt_halvo/utilities/log_call_site_p.h>

#include "test_support.h"

class TestLogCallSite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void partsOfTheTag_data()
    {
        QTest::addColumn<bool>("isFile"); // else a function's signature
        QTest::addColumn<QString>("given");
        QTest::addColumn<QString>("expected");
        // A source file by its path within the tree, without extension.
        QTest::newRow("within the tree") << true << "qt_halvo/styles/style_sheet.cpp" << "qt_halvo\\styles\\style_sheet";
        QTest::newRow("checkout named like the tree")
            << true << "/home/dev/qt_halvo/qt_halvo/utilities/hidpi_utils.cpp" << "qt_halvo\\utilities\\hidpi_utils";
        QTest::newRow("windows path") << true << "C:\\src\\qt_halvo\\styles\\style_sheet.h" << "qt_halvo\\styles\\style_sheet";
        QTest::newRow("folder that only contains the name") << true << "/src/my_qt_halvo_fork/qt_halvo/a.cpp" << "qt_halvo\\a";
        QTest::newRow("outside the tree") << true << "tests/utilities/tst_logging.cpp" << "tests\\utilities\\tst_logging";
        QTest::newRow("dot in a folder, none in the file") << true << "qt_halvo/v1.2/readme" << "qt_halvo\\v1.2\\readme";
        QTest::newRow("no folder") << true << "main.cpp" << "main";
        QTest::newRow("the name alone") << true << "qt_halvo" << "qt_halvo";
        // A function by its qualified name.
        QTest::newRow("constructor") << false << "OrvantaQT::Pane::Pane(QWidget*)" << "OrvantaQT::Pane::Pane";
        QTest::newRow("virtual") << false << "virtual QMap<QString, int> OrvantaQT::Card::Paint() const" << "OrvantaQT::Card::Paint";
        QTest::newRow("clang pointer") << false << "QString *OrvantaQT::Make() const" << "OrvantaQT::Make";
        QTest::newRow("clang reference") << false << "const QString &OrvantaQT::Foo::Name() const" << "OrvantaQT::Foo::Name";
        QTest::newRow("call operator") << false << "const char* OrvantaQT::Foo::operator()(int) const" << "OrvantaQT::Foo::operator()";
        QTest::newRow("stream operator") << false << "QDebug OrvantaQT::operator<<(QDebug, const A&)" << "OrvantaQT::operator<<";
        QTest::newRow("operator new") << false << "static void* OrvantaQT::A::operator new(size_t)" << "OrvantaQT::A::operator new";
        QTest::newRow("name ending in operator") << false << "int OrvantaQT::F::betaoperator()" << "OrvantaQT::F::betaoperator";
        QTest::newRow("gcc template") << false << "static T OrvantaQT::Box<T>::Make(T) [with T = std::map<int, int>]"
                                      << "OrvantaQT::Box<T>::Make";
        QTest::newRow("clang lambda") << false << "auto OrvantaQT::Foo::Bar()::(anonymous class)::operator()(int) const"
                                      << "OrvantaQT::Foo::Bar";
        QTest::newRow("clang anonymous namespace") << false << "void OrvantaQT::(anonymous namespace)::Do(int)"
                                                   << "OrvantaQT::(anonymous namespace)::Do";
        QTest::newRow("msvc") << false << "void __cdecl OrvantaQT::LoadColors(const class QString &)" << "OrvantaQT::LoadColors";
        QTest::newRow("this compiler") << false << [] { return Q_FUNC_INFO; }() << "TestLogCallSite::partsOfTheTag_data";
        QTest::newRow("name only") << false << "main" << "main";
        QTest::newRow("unbalanced") << false << ">>>( <(" << ">>>";
    }

    void partsOfTheTag()
    {
        QFETCH(bool, isFile);
        QFETCH(QString, given);
        QFETCH(QString, expected);
        const std::string text = given.toStdString();
        using namespace OrvantaQT::Logging;
        QCOMPARE(QString::fromStdString(isFile ? SourcePathOf(text) : FunctionNameOf(text)), expected);
    }
};

QTEST_GUILESS_MAIN(TestLogCallSite)
#include "tst_log_call_site.moc"
