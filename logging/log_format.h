// Formatting shared by the default logging library and qt_halvo's fallback to Qt's
// message handler, so that a line reads the same whichever one writes it.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace OrvantaQT::LoggingDetail {

// Writes "<sourcePath>:<line> <functionName>" into buffer; null texts count as empty.
const char* FormatLineTag(char* buffer, std::size_t bufferSize, const char* sourcePath,
                          const char* functionName, int line) noexcept;

// printf-style formatting into a string of whatever length it needs; a null format gives "".
std::string FormatMessage(const char* format, std::va_list arguments);

} // namespace OrvantaQT::LoggingDetail
