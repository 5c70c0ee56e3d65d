// The default logging library: timestamped lines with level and tag on stderr, and
// also in the file named by QT_HALVO_LOG_FILE when that can be opened.

#include "qt_halvo_logging.h"
#include "log_format.h"

#include <chrono>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <mutex>
#include <string>

namespace {

const char* LevelName(int level)
{
    switch (level) {
    case Logging_LevelInformation: return "INFO";
    case Logging_LevelWarning: return "WARNING";
    case Logging_LevelError: return "ERROR";
    default: return "DEBUG";
    }
}

std::string Timestamp()
{
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t seconds = system_clock::to_time_t(now);
    const int millis = static_cast<int>(duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000);
    std::tm local{};
#if defined(_WIN32)
    localtime_s(&local, &seconds);
#else
    localtime_r(&seconds, &local);
#endif
    char text[32];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    std::snprintf(text + length, sizeof text - length, ".%03d", millis);
    return text;
}

class DefaultLog
{
public:
    // Never destroyed: objects destroyed at exit may still log.
    static DefaultLog& Instance()
    {
        static DefaultLog* const log = new DefaultLog;
        return *log;
    }

    void Write(int level, const char* tag, const std::string& text)
    {
        std::string line = Timestamp();
        line.append(" ").append(LevelName(level)).append(" [").append(tag ? tag : "")
            .append("] ").append(text).append("\n");
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::fputs(line.c_str(), stderr);
        std::fflush(stderr);
        if (m_file) {
            std::fputs(line.c_str(), m_file);
            std::fflush(m_file);
        }
    }

private:
    DefaultLog()
    {
        const char* path = std::getenv("QT_HALVO_LOG_FILE");
        if (!path || !*path)
            return;
        m_file = std::fopen(path, "a");
        if (!m_file) {
            const int error = errno;
            std::fprintf(stderr, "%s WARNING [qt_halvo_logging] cannot open the log file \"%s\" (%s); "
                         "logging to stderr only\n", Timestamp().c_str(), path, std::strerror(error));
        }
    }

    std::mutex m_mutex;
    std::FILE* m_file = nullptr;
};

} // namespace

extern "C" QT_HALVO_LOGGING_API const char* Logging_BuildLineTag(char* buffer, size_t bufferSize,
                                                                 const char* sourcePath,
                                                                 const char* functionName, int line)
{
    return OrvantaQT::LoggingDetail::FormatLineTag(buffer, bufferSize, sourcePath, functionName, line);
}

extern "C" QT_HALVO_LOGGING_API void Logging_LogWithTag(int level, const char* tag, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const std::string text = OrvantaQT::LoggingDetail::FormatMessage(format, arguments);
    va_end(arguments);
    DefaultLog::Instance().Write(level, tag, text);
}
