#include "log_format.h"

#include <cstdio>

namespace OrvantaQT::LoggingDetail {

const char* FormatLineTag(char* buffer, std::size_t bufferSize, const char* sourcePath,
                          const char* functionName, int line) noexcept
{
    if (!buffer || bufferSize == 0)
        return buffer;
    std::snprintf(buffer, bufferSize, "%s:%d %s", sourcePath ? sourcePath : "", line,
                  functionName ? functionName : "");
    return buffer;
}

std::string FormatMessage(const char* format, std::va_list arguments)
{
    if (!format)
        return {};
    std::va_list measuring;
    va_copy(measuring, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measuring);
    va_end(measuring);
    if (length <= 0)
        return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, arguments);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

} // namespace OrvantaQT::LoggingDetail
