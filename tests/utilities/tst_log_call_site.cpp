#include <qt_halvo/utilities/log_call_site_p.h>

#include "test_support.h"

using OrvantaQT::Logging::FunctionNameOf;
using OrvantaQT::Logging::SourcePathOf;

class TestLogCallSite : public QObject
{
    Q_OBJECT

    // Functions that log, as this compiler names them.
    const char* made;
    virtual QMap<QString, int> Paint() const { return {{QString::fromLatin1(Q_FUNC_INFO), 0}}; }
    const char* operator()(int) const { return Q_FUNC_INFO; }
    template <typename T> static const char* Make(T) { return Q_FUNC_INFO; }

public:
    TestLogCallSite() : made(Q_FUNC_INFO) {}

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
        QTest::newRow("template return type") << "QMap<QString, QVariant> OrvantaQT::Colors()" << "OrvantaQT::Colors";
        QTest::newRow("clang pointer") << "QString *OrvantaQT::Make() const" << "OrvantaQT::Make";
        QTest::newRow("clang reference") << "const QString &OrvantaQT::Foo::Name() const" << "OrvantaQT::Foo::Name";
        QTest::newRow("stream operator") << "QDebug OrvantaQT::operator<<(QDebug, const A&)" << "OrvantaQT::operator<<";
        QTest::newRow("operator new") << "static void* OrvantaQT::A::operator new(size_t)" << "OrvantaQT::A::operator new";
        QTest::newRow("clang lambda") << "auto OrvantaQT::Foo::Bar()::(anonymous class)::operator()(int) const"
                                      << "OrvantaQT::Foo::Bar";
        QTest::newRow("clang anonymous namespace") << "void OrvantaQT::(anonymous namespace)::Do(int)"
                                                   << "OrvantaQT::(anonymous namespace)::Do";
        QTest::newRow("msvc") << "void __cdecl OrvantaQT::LoadColors(const class QString &)" << "OrvantaQT::LoadColors";
        QTest::newRow("name ending in operator") << "QString OrvantaQT::Formula::betaoperator()" << "OrvantaQT::Formula::betaoperator";
        QTest::newRow("name only") << "main" << "main";
        QTest::newRow("unbalanced") << ">>>( <(" << ">>>";
        QTest::newRow("this compiler: constructor") << made << "TestLogCallSite::TestLogCallSite";
        QTest::newRow("this compiler: virtual") << Paint().firstKey() << "TestLogCallSite::Paint";
        QTest::newRow("this compiler: operator") << (*this)(1) << "TestLogCallSite::operator()";
        QTest::newRow("this compiler: template") << Make(1.5) << "TestLogCallSite::Make";
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
