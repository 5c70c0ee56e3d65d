#include <qt_halvo/utilities/log_call_site_p.h>

#include <QtTest/QtTest>

using OrvantaQT::Logging::FunctionNameOf;
using OrvantaQT::Logging::SourcePathOf;

namespace {

// What this compiler writes for the kinds of functions that log.
QString NameOf(const char* signature)
{
    return QString::fromStdString(FunctionNameOf(signature));
}

QString FreeFunction(int) { return NameOf(Q_FUNC_INFO); }
template <typename T> QString Template(const T&) { return NameOf(Q_FUNC_INFO); }

struct Widget
{
    Widget() : constructorName(NameOf(Q_FUNC_INFO)) {}
    virtual ~Widget() = default;
    virtual QString Paint() const { return NameOf(Q_FUNC_INFO); }
    static QString Create() { return NameOf(Q_FUNC_INFO); }
    QString operator()(int) const { return NameOf(Q_FUNC_INFO); }
    QString FromLambda() const
    {
        return [](int) { return NameOf(Q_FUNC_INFO); }(1);
    }
    QMap<QString, QVariant> Map() const { return {{NameOf(Q_FUNC_INFO), {}}}; }
    QString constructorName;
};

} // namespace

class TestLogCallSite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sourcePath_data();
    void sourcePath();
    void functionName_data();
    void functionName();
    void functionNamesFromThisCompiler();
};

void TestLogCallSite::sourcePath_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("expected");
    QTest::newRow("within the tree") << "qt_halvo/styles/style_sheet.cpp" << "qt_halvo\\styles\\style_sheet";
    QTest::newRow("header") << "qt_halvo/utilities/logging_p.h" << "qt_halvo\\utilities\\logging_p";
    QTest::newRow("absolute, checkout named like the tree")
        << "/home/dev/qt_halvo/qt_halvo/utilities/hidpi_utils.cpp" << "qt_halvo\\utilities\\hidpi_utils";
    QTest::newRow("windows path") << "C:\\src\\qt_halvo\\styles\\style_sheet.cpp" << "qt_halvo\\styles\\style_sheet";
    QTest::newRow("name only contains the root") << "/src/my_qt_halvo_fork/qt_halvo/a.cpp" << "qt_halvo\\a";
    QTest::newRow("outside the library") << "tests/utilities/tst_logging.cpp" << "tests\\utilities\\tst_logging";
    QTest::newRow("dot in a folder, none in the file") << "qt_halvo/v1.2/readme" << "qt_halvo\\v1.2\\readme";
    QTest::newRow("no folder") << "main.cpp" << "main";
    QTest::newRow("root folder itself is the file") << "qt_halvo" << "qt_halvo";
    QTest::newRow("empty") << "" << "";
    // The build strips the checkout's location from __FILE__.
    QTest::newRow("this file") << __FILE__ << "tests\\utilities\\tst_log_call_site";
}

void TestLogCallSite::sourcePath()
{
    QFETCH(QString, file);
    QFETCH(QString, expected);
    QCOMPARE(QString::fromStdString(SourcePathOf(file.toStdString())), expected);
}

void TestLogCallSite::functionName_data()
{
    QTest::addColumn<QString>("signature");
    QTest::addColumn<QString>("expected");
    QTest::newRow("free function") << "void OrvantaQT::LoadColors(const QString&)" << "OrvantaQT::LoadColors";
    QTest::newRow("constructor") << "OrvantaQT::Pane::Pane(QWidget*)" << "OrvantaQT::Pane::Pane";
    QTest::newRow("virtual") << "virtual void OrvantaQT::Card::paint(QPaintEvent*)" << "OrvantaQT::Card::paint";
    QTest::newRow("template return type") << "QMap<QString, QVariant> OrvantaQT::Colors()" << "OrvantaQT::Colors";
    QTest::newRow("clang pointer return") << "QString *OrvantaQT::Make() const" << "OrvantaQT::Make";
    QTest::newRow("reference return") << "const QString& OrvantaQT::Foo::Name() const" << "OrvantaQT::Foo::Name";
    QTest::newRow("call operator") << "bool OrvantaQT::Foo::operator()(int) const" << "OrvantaQT::Foo::operator()";
    QTest::newRow("less operator") << "bool OrvantaQT::operator<(const A&, const B&)" << "OrvantaQT::operator<";
    QTest::newRow("stream operator") << "QDebug OrvantaQT::operator<<(QDebug, const A&)" << "OrvantaQT::operator<<";
    QTest::newRow("conversion operator") << "OrvantaQT::Foo::operator bool() const" << "OrvantaQT::Foo::operator bool";
    QTest::newRow("operator new") << "static void* OrvantaQT::A::operator new(size_t)" << "OrvantaQT::A::operator new";
    QTest::newRow("gcc lambda") << "OrvantaQT::Foo::Bar()::<lambda(int)>" << "OrvantaQT::Foo::Bar";
    QTest::newRow("clang lambda") << "auto OrvantaQT::Foo::Bar()::(anonymous class)::operator()(int) const"
                                  << "OrvantaQT::Foo::Bar";
    QTest::newRow("gcc anonymous namespace") << "void OrvantaQT::{anonymous}::Do(int)" << "OrvantaQT::{anonymous}::Do";
    QTest::newRow("clang anonymous namespace") << "void OrvantaQT::(anonymous namespace)::Do(int)"
                                               << "OrvantaQT::(anonymous namespace)::Do";
    QTest::newRow("gcc template") << "void OrvantaQT::Convert(T) [with T = std::map<int, int>]" << "OrvantaQT::Convert";
    QTest::newRow("class template") << "void OrvantaQT::Box<T>::Set(T) [with T = int]" << "OrvantaQT::Box<T>::Set";
    QTest::newRow("msvc") << "void __cdecl OrvantaQT::LoadColors(const class QString &)" << "OrvantaQT::LoadColors";
    QTest::newRow("name only") << "main" << "main";
    QTest::newRow("empty") << "" << "";
    QTest::newRow("unbalanced") << ">>>( <(" << ">>>";
}

void TestLogCallSite::functionName()
{
    QFETCH(QString, signature);
    QFETCH(QString, expected);
    QCOMPARE(QString::fromStdString(FunctionNameOf(signature.toStdString())), expected);
}

void TestLogCallSite::functionNamesFromThisCompiler()
{
    const QString anonymous = FreeFunction(1);
    QVERIFY2(anonymous.endsWith(QLatin1String("::FreeFunction")) && !anonymous.contains(QLatin1String("QString")),
             qPrintable(anonymous));
    QVERIFY2(Template(1.5).endsWith(QLatin1String("::Template")), qPrintable(Template(1.5)));

    const Widget widget;
    const QString scope = anonymous.left(anonymous.size() - int(qstrlen("FreeFunction")));
    QCOMPARE(widget.constructorName, scope + QLatin1String("Widget::Widget"));
    QCOMPARE(widget.Paint(), scope + QLatin1String("Widget::Paint"));
    QCOMPARE(Widget::Create(), scope + QLatin1String("Widget::Create"));
    QCOMPARE(widget(1), scope + QLatin1String("Widget::operator()"));
    QCOMPARE(widget.FromLambda(), scope + QLatin1String("Widget::FromLambda"));
    QCOMPARE(widget.Map().firstKey(), scope + QLatin1String("Widget::Map"));
}

QTEST_GUILESS_MAIN(TestLogCallSite)
#include "tst_log_call_site.moc"
