// Loading libraries at run time, on Linux and (cross-compiled, under wine) on Windows.
//   tst_shared_library <default logging library> <scratch folder>

#include "plain_test.h"
#include <qt_halvo/utilities/platform/shared_library_p.h>
#include <qt_halvo_logging.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

using namespace OrvantaQT::Platform;

namespace {

std::string BaseName(std::string path)
{
    const std::string::size_type separator = path.find_last_of("/\\");
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

bool FileExists(const std::string& path)
{
    return std::ifstream(path).good();
}

void SetEnvironment(const char* name, const std::string& value)
{
#if defined(_WIN32)
    _putenv_s(name, value.c_str());
#else
    setenv(name, value.c_str(), 1);
#endif
}

void ModuleDirectoryHoldsThisProgram(const char* argv0)
{
    const std::string directory = CurrentModuleDirectory();
    CHECK(!directory.empty());
    std::string program = BaseName(argv0);
#if defined(_WIN32)
    if (program.size() < 4 || program.compare(program.size() - 4, 4, ".exe") != 0)
        program += ".exe";
#endif
    CHECK(FileExists(directory + PathSeparator() + program));
}

void FailuresAreReportedNotThrown()
{
    std::string error;
    CHECK(OpenSharedLibrary("no_such_library_anywhere.dll", &error) == nullptr);
    CHECK(!error.empty());
    CHECK(OpenSharedLibrary("", nullptr) == nullptr);
    CHECK(FindSharedLibrarySymbol(nullptr, "Logging_LogWithTag") == nullptr);
    CloseSharedLibrary(nullptr);
}

void DefaultLoggingLibraryLoadsAndLogs(const std::string& libraryPath, const std::string& scratch)
{
    const std::string logFile = scratch + PathSeparator() + "platform_test.log";
    std::remove(logFile.c_str());
    // Read once, when the library logs for the first time.
    SetEnvironment("QT_HALVO_LOG_FILE", logFile);

    std::string error;
    void* library = OpenSharedLibrary(libraryPath, &error);
    CHECK(library != nullptr);
    if (!library) {
        std::cout << "cannot open " << libraryPath << ": " << error << std::endl;
        return;
    }
    CHECK(FindSharedLibrarySymbol(library, "NoSuchSymbol") == nullptr);
    auto buildLineTag = reinterpret_cast<Logging_BuildLineTagFunction>(
        FindSharedLibrarySymbol(library, "Logging_BuildLineTag"));
    auto logWithTag = reinterpret_cast<Logging_LogWithTagFunction>(
        FindSharedLibrarySymbol(library, "Logging_LogWithTag"));
    CHECK(buildLineTag && logWithTag);
    if (!buildLineTag || !logWithTag)
        return;

    char tag[64];
    CHECK(std::strcmp(buildLineTag(tag, sizeof tag, "qt_halvo\\a", "OrvantaQT::f", 7), "qt_halvo\\a:7 OrvantaQT::f") == 0);
    CHECK(std::strcmp(buildLineTag(tag, 4, "qt_halvo\\a", "f", 7), "qt_") == 0);
    CHECK(buildLineTag(nullptr, 0, nullptr, nullptr, 0) == nullptr);

    logWithTag(Logging_LevelWarning, "qt_halvo\\a:7 f", "hello %d %s", 42, "there");
    logWithTag(Logging_LevelError, nullptr, nullptr);
    std::ifstream written(logFile);
    std::stringstream content;
    content << written.rdbuf();
    const std::string text = content.str();
    CHECK(text.size() > 24 && text.compare(0, 2, "20") == 0 && text[4] == '-' && text[19] == '.');
    CHECK(text.find(" WARNING [qt_halvo\\a:7 f] hello 42 there\n") != std::string::npos);
    CHECK(text.find(" ERROR [] \n") != std::string::npos);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::cout << "usage: tst_shared_library <logging library> <scratch folder>" << std::endl;
        return 2;
    }
    ModuleDirectoryHoldsThisProgram(argv[0]);
    FailuresAreReportedNotThrown();
    DefaultLoggingLibraryLoadsAndLogs(argv[1], argv[2]);
    return PlainTest::Summary("tst_shared_library");
}
