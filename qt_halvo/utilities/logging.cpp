#include "logging_p.h"

#include "log_call_site_p.h"
#include "platform/shared_library_p.h"

#include <log_format.h>

#include <QtCore/QMessageLogger>
#include <QtCore/QString>

#include <atomic>
#include <cstdarg>

namespace OrvantaQT::Logging {

namespace {

constexpr std::size_t kTagCapacity = 512;

std::atomic<WriteObserver> g_writeObserver{nullptr};

const char* QtBuildLineTag(char* buffer, size_t bufferSize, const char* sourcePath,
                           const char* functionName, int line)
{
    return LoggingDetail::FormatLineTag(buffer, bufferSize, sourcePath, functionName, line);
}

void QtLogWithTag(int level, const char* tag, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const std::string text = LoggingDetail::FormatMessage(format, arguments);
    va_end(arguments);
    const QMessageLogger logger;
    switch (level) {
    case Information: logger.info("[%s] %s", tag, text.c_str()); break;
    case Warning: logger.warning("[%s] %s", tag, text.c_str()); break;
    case Error: logger.critical("[%s] %s", tag, text.c_str()); break;
    default: logger.debug("[%s] %s", tag, text.c_str()); break;
    }
}

std::vector<std::string> InstalledCandidates()
{
    std::vector<std::string> candidates;
    const std::string named = qEnvironmentVariable("QT_HALVO_LOG_LIBRARY").toStdString();
    if (!named.empty())
        candidates.push_back(named);
    const std::string defaultName = QT_HALVO_LOGGING_FILE_NAME;
    const std::string directory = Platform::CurrentModuleDirectory();
    if (!directory.empty())
        candidates.push_back(directory + Platform::PathSeparator() + defaultName);
    candidates.push_back(defaultName); // the system's search path
    return candidates;
}

LogSink InstallSink()
{
    std::vector<std::string> failures;
    const LogSink sink = ChooseLogSink(InstalledCandidates(), &failures);
    // Lines about the choice go straight to the sink: the macros would wait for the
    // choice they are part of.
    const auto report = [&sink](Level level, int line, const std::string& text) {
        char tag[kTagCapacity] = {};
        sink.buildLineTag(tag, sizeof tag, SourcePathOf(__FILE__).c_str(),
                          FunctionNameOf(Q_FUNC_INFO).c_str(), line);
        tag[sizeof tag - 1] = '\0';
        sink.logWithTag(level, tag, "%s", text.c_str());
    };
    for (const std::string& failure : failures)
        report(Warning, __LINE__, "Cannot use the logging library " + failure);
    report(Information, __LINE__, "Logging through " + sink.origin);
    return sink;
}

// Thread-safe and done once: a function-local static.
const LogSink& ActiveSink()
{
    static const LogSink sink = InstallSink();
    return sink;
}

} // namespace

LogSink ChooseLogSink(const std::vector<std::string>& candidates, std::vector<std::string>* failures)
{
    for (const std::string& path : candidates) {
        std::string error;
        void* library = Platform::OpenSharedLibrary(path, &error);
        if (!library) {
            if (failures)
                failures->push_back(path + ": " + error);
            continue;
        }
        auto buildLineTag = reinterpret_cast<Logging_BuildLineTagFunction>(
            Platform::FindSharedLibrarySymbol(library, "Logging_BuildLineTag"));
        auto logWithTag = reinterpret_cast<Logging_LogWithTagFunction>(
            Platform::FindSharedLibrarySymbol(library, "Logging_LogWithTag"));
        if (!buildLineTag || !logWithTag) {
            Platform::CloseSharedLibrary(library);
            if (failures)
                failures->push_back(path + ": it does not export Logging_BuildLineTag and Logging_LogWithTag");
            continue;
        }
        return LogSink{buildLineTag, logWithTag, path}; // stays loaded for the life of the process
    }
    return LogSink{QtBuildLineTag, QtLogWithTag, "Qt's message handler"};
}

LineTag::LineTag(const char* file, const char* signature, int line)
{
    char tag[kTagCapacity] = {};
    const std::string path = SourcePathOf(file ? file : "");
    const std::string function = FunctionNameOf(signature ? signature : "");
    ActiveSink().buildLineTag(tag, sizeof tag, path.c_str(), function.c_str(), line);
    tag[sizeof tag - 1] = '\0';
    m_text = tag;
}

void Write(Level level, const LineTag& tag, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const std::string text = LoggingDetail::FormatMessage(format, arguments);
    va_end(arguments);
    // Loaded once, so both calls reach the same observer even if it changes meanwhile.
    const WriteObserver observer = g_writeObserver.load(std::memory_order_acquire);
    if (observer)
        observer(level, tag.Text(), text.c_str());
    ActiveSink().logWithTag(level, tag.Text(), "%s", text.c_str());
    if (observer)
        observer(level, tag.Text(), nullptr);
}

void SetWriteObserver(WriteObserver observer)
{
    g_writeObserver.store(observer, std::memory_order_release);
}

} // namespace OrvantaQT::Logging
