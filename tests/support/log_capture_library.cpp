// A logging library for the autotests: it keeps every line in memory for the test to
// read (LogCapture_*), and echoes it to stderr so that a failing test shows its log.

#include <qt_halvo_logging.h>
#include <log_format.h>

#include <cstdarg>
#include <cstdio>
#include <deque>
#include <mutex>
#include <string>

#if defined(_WIN32)
#  define LOG_CAPTURE_API __declspec(dllexport)
#else
#  define LOG_CAPTURE_API __attribute__((visibility("default")))
#endif

namespace {

struct Line
{
    int level;
    std::string tag;
    std::string text;
};

std::mutex& Mutex()
{
    static std::mutex mutex;
    return mutex;
}

// A deque: references to its elements survive later appends.
std::deque<Line>& Lines()
{
    static std::deque<Line> lines;
    return lines;
}

} // namespace

extern "C" {

LOG_CAPTURE_API const char* Logging_BuildLineTag(char* buffer, size_t bufferSize, const char* sourcePath,
                                                 const char* functionName, int line)
{
    return OrvantaQT::LoggingDetail::FormatLineTag(buffer, bufferSize, sourcePath, functionName, line);
}

LOG_CAPTURE_API void Logging_LogWithTag(int level, const char* tag, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::string text = OrvantaQT::LoggingDetail::FormatMessage(format, arguments);
    va_end(arguments);
    const std::lock_guard<std::mutex> lock(Mutex());
    std::fprintf(stderr, "captured log %d [%s] %s\n", level, tag ? tag : "", text.c_str());
    Lines().push_back(Line{level, tag ? tag : "", std::move(text)});
}

LOG_CAPTURE_API int LogCapture_LineCount()
{
    const std::lock_guard<std::mutex> lock(Mutex());
    return static_cast<int>(Lines().size());
}

LOG_CAPTURE_API int LogCapture_Line(int index, const char** tag, const char** text)
{
    const std::lock_guard<std::mutex> lock(Mutex());
    if (index < 0 || index >= static_cast<int>(Lines().size()))
        return -1;
    const Line& line = Lines()[static_cast<std::size_t>(index)];
    *tag = line.tag.c_str();
    *text = line.text.c_str();
    return line.level;
}

} // extern "C"
