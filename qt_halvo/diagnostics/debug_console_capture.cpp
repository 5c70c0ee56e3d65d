#include <qt_halvo/diagnostics/debug_console_capture.h>

namespace OrvantaQT {

bool InstallDebugConsoleCapture(int) { return false; }
void UninstallDebugConsoleCapture() {}
bool IsDebugConsoleCaptureInstalled() { return false; }
QVector<DebugConsoleLine> DebugConsoleLinesAfter(quint64, int, quint64* dropped)
{
    if (dropped)
        *dropped = 0;
    return {};
}
quint64 DebugConsoleLastSequence() { return 0; }
void ClearDebugConsoleCapture() {}

} // namespace OrvantaQT
