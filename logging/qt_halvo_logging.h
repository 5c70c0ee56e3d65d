/*
 * The interface of qt_halvo's logging library.
 *
 * qt_halvo loads a logging library on its first log call and calls the two functions
 * below through it. The default library writes to stderr (and to the file named by
 * QT_HALVO_LOG_FILE); a host plugs in its own by building a shared library that
 * exports both functions with these signatures and naming it in QT_HALVO_LOG_LIBRARY.
 * Define QT_HALVO_LOGGING_BUILD while building such a library so that the functions
 * are exported.
 */
#ifndef QT_HALVO_LOGGING_H
#define QT_HALVO_LOGGING_H

#include <stddef.h>

#if defined(_WIN32)
#  if defined(QT_HALVO_LOGGING_BUILD)
#    define QT_HALVO_LOGGING_API __declspec(dllexport)
#  else
#    define QT_HALVO_LOGGING_API __declspec(dllimport)
#  endif
#else
#  define QT_HALVO_LOGGING_API __attribute__((visibility("default")))
#endif

#if defined(__GNUC__)
#  define QT_HALVO_LOGGING_PRINTF(formatIndex, firstArgument) \
       __attribute__((format(printf, formatIndex, firstArgument)))
#else
#  define QT_HALVO_LOGGING_PRINTF(formatIndex, firstArgument)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Log levels used by qt_halvo. */
enum {
    Logging_LevelInformation = 2,
    Logging_LevelWarning = 3,
    Logging_LevelError = 4
};

/*
 * Writes the tag of one log call site into buffer (always NUL-terminated, truncated to
 * bufferSize) and returns buffer. sourcePath is the source file's path within the
 * source tree without its extension, with backslashes ("qt_halvo\styles\style_sheet");
 * functionName is the qualified function name ("OrvantaQT::LoadGlobalColors").
 * qt_halvo calls this once per call site and keeps the result.
 */
QT_HALVO_LOGGING_API const char* Logging_BuildLineTag(char* buffer, size_t bufferSize,
                                                      const char* sourcePath,
                                                      const char* functionName, int line);

/* Writes one message at level with the tag built by Logging_BuildLineTag. */
QT_HALVO_LOGGING_API void Logging_LogWithTag(int level, const char* tag, const char* format, ...)
    QT_HALVO_LOGGING_PRINTF(3, 4);

typedef const char* (*Logging_BuildLineTagFunction)(char*, size_t, const char*, const char*, int);
typedef void (*Logging_LogWithTagFunction)(int, const char*, const char*, ...);

#ifdef __cplusplus
}
#endif

#endif /* QT_HALVO_LOGGING_H */
