#include <cstddef>
#include <cstdio>

extern "C" __attribute__((visibility("default"))) const char* Logging_BuildLineTag(
    char* buffer, size_t bufferSize, const char* sourcePath, const char* functionName, int line)
{
    std::snprintf(buffer, bufferSize, "%s:%d %s", sourcePath, line, functionName);
    return buffer;
}

extern "C" __attribute__((visibility("default"))) void Logging_LogWithTag(int, const char*, const char*, ...)
{
}
