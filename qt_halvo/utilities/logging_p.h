// The library's logging: QTH_LOG_INFO, QTH_LOG_WARNING and QTH_LOG_ERROR take a
// printf-style format and write it, tagged with the call site, through the logging
// library loaded on first use (QT_HALVO_LOG_LIBRARY, else the default library beside
// qt_halvo, else Qt's message handler).
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <qt_halvo_logging.h>

#include <string>
#include <vector>

namespace OrvantaQT::Logging {

enum Level {
    Information = Logging_LevelInformation,
    Warning = Logging_LevelWarning,
    Error = Logging_LevelError,
};

// The tag of one call site, built once by the logging library in use.
class QT_HALVO_AUTOTEST_EXPORT LineTag
{
public:
    LineTag(const char* file, const char* signature, int line);
    const char* Text() const noexcept { return m_text.c_str(); }

private:
    std::string m_text;
};

QT_HALVO_AUTOTEST_EXPORT void Write(Level level, const LineTag& tag, const char* format, ...)
    QT_HALVO_LOGGING_PRINTF(3, 4);

// Where log lines go: a logging library's two functions, or the fallback to Qt.
struct LogSink
{
    Logging_BuildLineTagFunction buildLineTag = nullptr;
    Logging_LogWithTagFunction logWithTag = nullptr;
    std::string origin;
};

// The first of candidates (library paths) that loads and exports both functions, or
// the fallback to Qt's message handler; why each one before it failed goes to failures.
QT_HALVO_AUTOTEST_EXPORT LogSink ChooseLogSink(const std::vector<std::string>& candidates,
                                               std::vector<std::string>* failures);

// Sees every line Write sends, for the debug console's capture: called with the text
// before the line goes to the sink, then once more with a null text after it went.
// Unset, it costs Write one atomic load.
using WriteObserver = void (*)(Level level, const char* tag, const char* text);
QT_HALVO_AUTOTEST_EXPORT void SetWriteObserver(WriteObserver observer);

} // namespace OrvantaQT::Logging

#define QTH_LOG_AT(level, ...)                                                                      \
    do {                                                                                            \
        static const ::OrvantaQT::Logging::LineTag qthLineTag(__FILE__, Q_FUNC_INFO, __LINE__);     \
        ::OrvantaQT::Logging::Write(level, qthLineTag, __VA_ARGS__);                                \
    } while (false)

#define QTH_LOG_INFO(...) QTH_LOG_AT(::OrvantaQT::Logging::Information, __VA_ARGS__)
#define QTH_LOG_WARNING(...) QTH_LOG_AT(::OrvantaQT::Logging::Warning, __VA_ARGS__)
#define QTH_LOG_ERROR(...) QTH_LOG_AT(::OrvantaQT::Logging::Error, __VA_ARGS__)
