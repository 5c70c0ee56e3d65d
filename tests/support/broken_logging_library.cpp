// A logging library that exports only half of the interface, for the fallback tests.

#include <cstddef>

extern "C" __attribute__((visibility("default"))) const char* Logging_BuildLineTag(char* buffer, size_t, const char*,
                                                                                    const char*, int)
{
    return buffer;
}
