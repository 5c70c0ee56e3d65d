// Loading libraries at run time, on Linux and (cross-compiled, under wine) on Windows, with
// the default logging library as the one loaded.
//   tst_shared_library <default logging library> <scratch folder>

#include "plain_test.h"
#include <qt_halvo/utilities/platform/shared_library_p.h>
#include <qt_halvo_logging.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

using namespace OrvantaQT::Platform;

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    // This program's folder holds this program (wine may leave ".exe" out of argv[0]).
    std::string program = argv[0];
    program = CurrentModuleDirectory() + PathSeparator() + program.substr(program.find_last_of("/\\") + 1);
    CHECK(std::ifstream(program).good() || std::ifstream(program + ".exe").good());

    // Failures are described, not thrown; an empty name does not open this program.
    std::string missing, empty;
    CHECK(OpenSharedLibrary("no_such_library_anywhere.dll", &missing) == nullptr && !missing.empty());
    CHECK(OpenSharedLibrary("", &empty) == nullptr && !empty.empty() && !FindSharedLibrarySymbol(nullptr, "Logging_LogWithTag"));
    CloseSharedLibrary(nullptr);

    // The library reads the log file's name when it first logs, and adds to what is there.
    const std::string logFile = argv[2] + std::string(1, PathSeparator()) + "platform_test.log";
    std::ofstream(logFile) << "earlier\n";
#if defined(_WIN32)
    _putenv_s("QT_HALVO_LOG_FILE", logFile.c_str());
#else
    setenv("QT_HALVO_LOG_FILE", logFile.c_str(), 1);
#endif
    void* library = OpenSharedLibrary(argv[1], nullptr);
    const auto find = [library](const char* name) { return FindSharedLibrarySymbol(library, name); };
    const auto buildLineTag = reinterpret_cast<Logging_BuildLineTagFunction>(find("Logging_BuildLineTag"));
    const auto logWithTag = reinterpret_cast<Logging_LogWithTagFunction>(find("Logging_LogWithTag"));
    CHECK(library && buildLineTag && logWithTag && !find("NoSuchSymbol"));
    if (!buildLineTag || !logWithTag)
        return PlainTest::Summary("tst_shared_library");
    char tag[64];
    CHECK(std::strcmp(buildLineTag(tag, sizeof tag, "qt_halvo\\a", "OrvantaQT::f", 7), "qt_halvo\\a:7 OrvantaQT::f") == 0);
    CHECK(std::strcmp(buildLineTag(tag, 4, "qt_halvo\\a", "f", 7), "qt_") == 0 && !buildLineTag(nullptr, 0, nullptr, nullptr, 0));
    logWithTag(Logging_LevelWarning, "qt_halvo\\a:7 f", "hello %d %s", 42, "there");
    logWithTag(Logging_LevelError, nullptr, nullptr);
    std::stringstream written;
    written << std::ifstream(logFile).rdbuf();
    const std::string text = written.str(); // after "earlier": "2026-11-21 22:16:11.423 WARNING [tag] text"
    CHECK(text.size() > 32 && text.compare(0, 10, "earlier\n20") == 0 && text[12] == '-' && text[27] == '.');
    CHECK(text.find(" WARNING [qt_halvo\\a:7 f] hello 42 there\n") != std::string::npos && text.find(" ERROR [] \n") != std::string::npos);
    return PlainTest::Summary("tst_shared_library");
}
