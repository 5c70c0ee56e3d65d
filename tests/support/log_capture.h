// Reads what the library logged in this test process. Every test executable logs
// through the capture library (see log_capture_install.cpp).
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <algorithm>

struct LoggedLine
{
    int level = 0;
    QString tag;
    QString text;
};

extern "C" int LogCapture_LineCount();
extern "C" int LogCapture_Line(int index, const char** tag, const char** text);

namespace LogCapture {

// Everything logged since the process started, in order.
inline QVector<LoggedLine> Lines(int from = 0)
{
    QVector<LoggedLine> lines;
    const int count = LogCapture_LineCount();
    for (int i = from; i < count; ++i) {
        const char* tag = nullptr;
        const char* text = nullptr;
        const int level = LogCapture_Line(i, &tag, &text);
        lines.append(LoggedLine{level, QString::fromUtf8(tag), QString::fromUtf8(text)});
    }
    return lines;
}

// Marks a point in the log; Since() then gives what was logged after it, apart from the
// line the logging set-up writes on the process's first log call.
class Mark
{
public:
    Mark() : m_start(LogCapture_LineCount()) {}
    QVector<LoggedLine> Since() const
    {
        QVector<LoggedLine> lines = Lines(m_start);
        lines.erase(std::remove_if(lines.begin(), lines.end(),
                                   [](const LoggedLine& line) {
                                       return line.tag.startsWith(QLatin1String("qt_halvo\\utilities\\logging:"));
                                   }),
                    lines.end());
        return lines;
    }
    // "<level> <text>" of each line since the mark.
    QStringList Texts() const
    {
        QStringList texts;
        for (const LoggedLine& line : Since())
            texts << QString::number(line.level) + QLatin1Char(' ') + line.text;
        return texts;
    }
    bool Contains(int level, const QString& text) const
    {
        for (const LoggedLine& line : Since()) {
            if (line.level == level && line.text == text)
                return true;
        }
        return false;
    }

private:
    int m_start;
};

} // namespace LogCapture
