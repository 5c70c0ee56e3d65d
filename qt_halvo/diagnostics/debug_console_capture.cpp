#include <qt_halvo/diagnostics/debug_console_capture.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QThread>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>
#include <vector>

namespace OrvantaQT {

namespace {

// Beyond this a line is cut: a message of megabytes would otherwise sit in the ring
// and be copied again by every reader.
constexpr int kKeptBytes = 64 * 1024;
constexpr int kMaxCapacity = 1 << 22;

// What the ring holds of a line; the time stays a number until someone reads it.
struct Slot
{
    quint64 sequence = 0;
    qint64 msecs = 0;
    quint64 threadId = 0;
    DebugConsoleLine::Origin origin = DebugConsoleLine::Origin::Qt;
    int level = 0;
    int line = 0;
    QString category;
    QString text;
    QString file;
    QString function;
};

void Swap(Slot& a, Slot& b) noexcept
{
    std::swap(a.sequence, b.sequence);
    std::swap(a.msecs, b.msecs);
    std::swap(a.threadId, b.threadId);
    std::swap(a.origin, b.origin);
    std::swap(a.level, b.level);
    std::swap(a.line, b.line);
    a.category.swap(b.category);
    a.text.swap(b.text);
    a.file.swap(b.file);
    a.function.swap(b.function);
}

// Writers build their line outside the lock and only swap it into a preallocated slot
// under it; what the slot held before is freed by the writer after the lock.
class Ring
{
public:
    void Put(Slot& line)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        line.sequence = ++m_last;
        Swap(m_slots[line.sequence % m_slots.size()], line);
        m_count = std::min<quint64>(m_count + 1, m_slots.size());
    }

    // Keeps the newest lines that fit. Slots are allocated, and old ones freed, outside
    // the lock, so writers wait only for the lines to move.
    void SetCapacity(int capacity)
    {
        if (Capacity() == static_cast<std::size_t>(capacity))
            return;
        std::vector<Slot> old(static_cast<std::size_t>(capacity));
        std::lock_guard<std::mutex> lock(m_mutex);
        old.swap(m_slots);
        if (old.empty())
            return;
        m_count = std::min<quint64>(m_count, m_slots.size());
        for (quint64 sequence = m_last - m_count + 1; sequence <= m_last; ++sequence)
            Swap(m_slots[sequence % m_slots.size()], old[sequence % old.size()]);
    }

    void Clear()
    {
        std::vector<Slot> old(Capacity());
        std::lock_guard<std::mutex> lock(m_mutex);
        old.resize(m_slots.size()); // in case the capacity changed meanwhile
        old.swap(m_slots);
        m_count = 0;
    }

    std::size_t Capacity() const
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_slots.size();
    }

    std::vector<Slot> After(quint64 after, int maxLines, quint64* dropped) const
    {
        std::vector<Slot> lines;
        std::lock_guard<std::mutex> lock(m_mutex);
        const quint64 oldest = m_last - m_count + 1;
        *dropped = after + 1 < oldest ? oldest - (after + 1) : 0;
        const quint64 first = std::max(after + 1, oldest);
        if (first > m_last)
            return lines;
        const quint64 count = std::min<quint64>(m_last - first + 1, static_cast<quint64>(maxLines));
        lines.reserve(count);
        for (quint64 sequence = first; sequence < first + count; ++sequence)
            lines.push_back(m_slots[sequence % m_slots.size()]);
        return lines;
    }

    quint64 Last() const
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_last;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<Slot> m_slots;
    quint64 m_last = 0;
    quint64 m_count = 0;
};

struct Capture
{
    Ring ring;
    std::atomic<bool> recording{false};
    std::atomic<QtMessageHandler> previous{nullptr};
    bool chained = false; // our handler is Qt's; under installMutex
    std::mutex installMutex;
};

// Never destroyed: messages can arrive while the process's statics go away.
Capture& State()
{
    static Capture* const capture = new Capture;
    return *capture;
}

// Set while this thread is inside our message handler: what it logs meanwhile only
// goes on to the previous handler.
thread_local bool t_inHandler = false;
// Set while this thread writes a library line: when the line reaches Qt's handler (the
// logging library's fallback), it is already recorded.
thread_local int t_libraryLines = 0;

QString CutMarker(qint64 bytes)
{
    return QStringLiteral(" \u2026 [cut: %1 bytes]").arg(bytes);
}

QString Shortened(const QString& text)
{
    if (text.size() <= kKeptBytes / 3) // at most 3 UTF-8 bytes per UTF-16 unit
        return text;
    qint64 bytes = 0;
    qint64 keptBytes = -1;
    int kept = 0;
    for (int i = 0; i < text.size(); ++i) {
        const ushort c = text.at(i).unicode();
        const int size = c < 0x80 ? 1 : c < 0x800 ? 2 : QChar::isHighSurrogate(c) ? 4 : QChar::isLowSurrogate(c) ? 0 : 3;
        if (keptBytes < 0 && bytes + size > kKeptBytes) {
            keptBytes = bytes;
            kept = i;
        }
        bytes += size;
    }
    if (keptBytes < 0)
        return text;
    return text.left(kept) + CutMarker(bytes - keptBytes);
}

QString ShortenedUtf8(const char* text)
{
    const std::size_t size = std::strlen(text);
    if (size <= static_cast<std::size_t>(kKeptBytes))
        return QString::fromUtf8(text, static_cast<int>(size));
    std::size_t kept = kKeptBytes;
    while (kept > 0 && (static_cast<unsigned char>(text[kept]) & 0xC0) == 0x80) // not inside a character
        --kept;
    return QString::fromUtf8(text, static_cast<int>(kept)) + CutMarker(static_cast<qint64>(size - kept));
}

QString FromUtf8OrEmpty(const char* text)
{
    return text ? QString::fromUtf8(text) : QString();
}

QString CategoryName(const char* category)
{
    static const QString defaultName = QStringLiteral("default");
    return !category || std::strcmp(category, "default") == 0 ? defaultName : QString::fromUtf8(category);
}

quint64 CurrentThread()
{
    return static_cast<quint64>(reinterpret_cast<quintptr>(QThread::currentThreadId()));
}

void OnQtMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    Capture& capture = State();
    if (!t_inHandler) {
        t_inHandler = true;
        if (t_libraryLines == 0 && capture.recording.load(std::memory_order_relaxed)) {
            Slot slot;
            slot.origin = DebugConsoleLine::Origin::Qt;
            slot.level = type;
            slot.category = CategoryName(context.category);
            slot.text = Shortened(message);
            slot.file = FromUtf8OrEmpty(context.file);
            slot.line = context.line;
            slot.function = FromUtf8OrEmpty(context.function);
            slot.msecs = QDateTime::currentMSecsSinceEpoch();
            slot.threadId = CurrentThread();
            capture.ring.Put(slot);
        }
        const QtMessageHandler previous = capture.previous.load(std::memory_order_acquire);
        if (previous)
            previous(type, context, message);
        t_inHandler = false;
        return;
    }
    const QtMessageHandler previous = capture.previous.load(std::memory_order_acquire);
    if (previous)
        previous(type, context, message);
}

void OnLibraryLine(Logging::Level level, const char* tag, const char* text)
{
    if (!text) {
        --t_libraryLines;
        return;
    }
    ++t_libraryLines;
    Capture& capture = State();
    if (!capture.recording.load(std::memory_order_relaxed))
        return;
    Slot slot;
    slot.origin = DebugConsoleLine::Origin::Library;
    slot.level = static_cast<int>(level) - Logging::Information;
    slot.category = FromUtf8OrEmpty(tag);
    slot.text = ShortenedUtf8(text);
    slot.msecs = QDateTime::currentMSecsSinceEpoch();
    slot.threadId = CurrentThread();
    capture.ring.Put(slot);
}

} // namespace

bool InstallDebugConsoleCapture(int capacity)
{
    if (capacity < 1 || capacity > kMaxCapacity) {
        QTH_LOG_WARNING("The debug console's capacity must be from 1 to %d lines, not %d", kMaxCapacity, capacity);
        return false;
    }
    Capture& capture = State();
    std::lock_guard<std::mutex> lock(capture.installMutex);
    capture.ring.SetCapacity(capacity);
    if (!capture.chained) {
        // Our handler may run before previous is stored: it then passes nothing on for
        // that instant, which is why previous is set as soon as Qt hands it over.
        const QtMessageHandler previous = qInstallMessageHandler(OnQtMessage);
        capture.previous.store(previous, std::memory_order_release);
        capture.chained = true;
    }
    capture.recording.store(true, std::memory_order_relaxed);
    Logging::SetWriteObserver(OnLibraryLine);
    return true;
}

void UninstallDebugConsoleCapture()
{
    Capture& capture = State();
    std::lock_guard<std::mutex> lock(capture.installMutex);
    Logging::SetWriteObserver(nullptr);
    capture.recording.store(false, std::memory_order_relaxed);
    if (!capture.chained)
        return;
    capture.chained = false;
    // Handlers chain in order: one installed over ours and still there would call ours
    // as its previous one, so it goes too, and we say so.
    if (qInstallMessageHandler(capture.previous.load(std::memory_order_acquire)) != OnQtMessage)
        QTH_LOG_WARNING("A message handler installed after the debug console's capture was replaced by the one before it");
}

bool IsDebugConsoleCaptureInstalled()
{
    return State().recording.load(std::memory_order_relaxed);
}

QVector<DebugConsoleLine> DebugConsoleLinesAfter(quint64 after, int maxLines, quint64* dropped)
{
    quint64 droppedLines = 0;
    std::vector<Slot> held;
    if (maxLines < 0)
        QTH_LOG_WARNING("Cannot read %d lines of the debug console", maxLines);
    else
        held = State().ring.After(after, maxLines, &droppedLines);
    if (dropped)
        *dropped = droppedLines;
    QVector<DebugConsoleLine> lines;
    lines.reserve(static_cast<int>(held.size()));
    for (Slot& slot : held) {
        DebugConsoleLine line;
        line.origin = slot.origin;
        line.level = slot.level;
        line.category = std::move(slot.category);
        line.text = std::move(slot.text);
        line.file = std::move(slot.file);
        line.line = slot.line;
        line.function = std::move(slot.function);
        line.time = QDateTime::fromMSecsSinceEpoch(slot.msecs);
        line.threadId = slot.threadId;
        line.sequence = slot.sequence;
        lines.append(std::move(line));
    }
    return lines;
}

quint64 DebugConsoleLastSequence()
{
    return State().ring.Last();
}

void ClearDebugConsoleCapture()
{
    State().ring.Clear();
}

} // namespace OrvantaQT
