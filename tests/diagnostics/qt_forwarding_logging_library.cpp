// A logging library that writes through Qt's message handler, as a host's might: the
// debug console must record such a line once, as the library's.

#include <QtCore/QMessageLogger>

#include <cstdarg>
#include <cstddef>
#include <cstdio>

extern "C" __attribute__((visibility("default"))) const char* Logging_BuildLineTag(
    char* buffer, size_t bufferSize, const char*, const char*, int line)
{
    std::snprintf(buffer, bufferSize, "site %d", line);
    return buffer;
}

extern "C" __attribute__((visibility("default"))) void Logging_LogWithTag(int, const char* tag, const char* format, ...)
{
    char text[256];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    QMessageLogger().warning("[%s] %s", tag, text);
}
