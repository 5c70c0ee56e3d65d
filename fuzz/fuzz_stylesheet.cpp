// Arbitrary colours JSON and sheets through the whole processing path: the colours file,
// the constants block, resolution, the colour merge, substitution both ways (which must
// agree) and the QML colour map. Input: the colours JSON, a NUL byte, the sheet.

#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/styles/style_sheet_p.h>

#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtQml/QQmlPropertyMap>

#include <cstdint>
#include <cstdlib>

using namespace OrvantaQT;

namespace {

QString ScratchFile(const char* name)
{
    return QDir::temp().filePath(QStringLiteral("qt_halvo_fuzz_%1_%2").arg(QCoreApplication::applicationPid()).arg(QLatin1String(name)));
}

void Write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(content);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // Lines about bad input are expected by the thousand; keep them off the terminal.
    qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_DISCARD_LOGGING_LIBRARY);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));
    const int separator = input.indexOf('\0');
    const QByteArray colours = separator < 0 ? QByteArray() : input.left(separator);
    const QString sheet = QString::fromUtf8(separator < 0 ? input : input.mid(separator + 1));

    static const QString colourFile = ScratchFile("colours.json");
    static const QString sheetFile = ScratchFile("sheet.qss");
    Write(colourFile, colours);
    Write(sheetFile, sheet.toUtf8());

    ResetStyleState();
    LoadGlobalStyleSheet(sheetFile, colourFile);
    RecalculateGlobalStyleSheet();
    RecalculateStylesheet(sheet);

    QString text = sheet;
    StyleConstants constants;
    ParseStylesheetConstants(text, constants);
    ResolveConstantReferences(constants);
    MergeGlobalColors(constants);
    if (SubstituteConstants(text, constants) != SubstituteConstantsOneByOne(text, constants))
        std::abort();

    delete BuildQmlColorsMap(GetGlobalColors(), nullptr);
    return 0;
}
