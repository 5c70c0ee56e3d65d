#include "stylesheet_constants_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QRegExp>
#include <QtCore/QStringView>
#include <QtCore/QVector>

#include <algorithm>
#include <array>
#include <bitset>
#include <vector>

namespace OrvantaQT {

namespace {

const QLatin1String kBlockHeader("/* Stylesheet Constants");
const QLatin1String kBlockEnd("*/");
const QLatin1String kRegExpSyntax("\\^$.|?*+()[]{}");

// Values that refer to each other can double a sheet at every level, and names that act
// as patterns can keep matching what they insert: no text may grow past this length,
// and no substitution may write more than its WorkBudget.
constexpr int kMaxSheetLength = 1 << 23;

// Characters a substitution may write: enough for every constant to rewrite a text
// grown fourfold, far less than runaway growth would take.
class WorkBudget
{
public:
    WorkBudget(int textLength, int constants)
        : m_left(4LL * (constants + 1) * textLength + (1 << 22))
    {
    }

    // Charges a text just written; false once the budget is spent or the text too long.
    bool Spend(int written)
    {
        m_left -= written;
        return m_left >= 0 && written <= kMaxSheetLength;
    }

private:
    qint64 m_left;
};

struct Constant
{
    QString name;
    QString value;
    QString pattern; // "@" + name
    bool literal;    // the name holds no regular-expression syntax, so the pattern is plain text
};

bool IsLiteralName(const QString& name)
{
    for (const QChar c : name) {
        if (kRegExpSyntax.contains(c))
            return false;
    }
    return true;
}

// The constants in hash order, which every pass over them keeps.
QVector<Constant> InHashOrder(const StyleConstants& constants)
{
    QVector<Constant> ordered;
    ordered.reserve(constants.size());
    for (auto it = constants.cbegin(); it != constants.cend(); ++it)
        ordered.append(Constant{it.key(), it.value().toString(), QLatin1Char('@') + it.key(), IsLiteralName(it.key())});
    return ordered;
}

// A value that holds its own reference, directly or as the front of a longer name
// ("accent = @accentDark"), would be found again in what it inserts, for ever.
bool RefersToItself(const Constant& constant)
{
    return constant.literal && constant.value.contains(constant.pattern);
}

void ReportSelfReference(const Constant& constant)
{
    QTH_LOG_ERROR("[StyleSheet] Constant %s refers to itself (\"%s\"); its references are left as written",
                  qPrintable(constant.pattern), qPrintable(constant.value));
}

// The constants that can be substituted: those referring to themselves are reported
// and left out, so that their references stay as written.
QVector<Constant> Substitutable(const StyleConstants& constants)
{
    QVector<Constant> ordered = InHashOrder(constants);
    const auto selfReferring = std::stable_partition(ordered.begin(), ordered.end(),
                                                     [](const Constant& constant) { return !RefersToItself(constant); });
    std::for_each(selfReferring, ordered.end(), ReportSelfReference);
    ordered.erase(selfReferring, ordered.end());
    return ordered;
}

void ReportRunawayGrowth(const Constant& constant)
{
    QTH_LOG_ERROR("[StyleSheet] Substitution stopped at %s: the text keeps growing; the rest is left as it is",
                  qPrintable(constant.pattern));
}

// Where the pattern starts, running from the tail of an inserted value on into the
// rest of the text; -1 when it does not.
int MatchAcrossValueEnd(const QString& value, QStringView rest, const QString& pattern)
{
    for (int start = qMax(0, value.size() - pattern.size() + 1); start < value.size(); ++start) {
        const int inValue = value.size() - start;
        if (QStringView(value).mid(start) == QStringView(pattern).left(inValue)
            && rest.startsWith(QStringView(pattern).mid(inValue)))
            return start;
    }
    return -1;
}

// Every occurrence of a plain pattern, the search resuming at the start of each
// replacement. The value is free of the pattern (see RefersToItself), so it can only be
// matched again together with the text after it: only that seam is looked at. False
// when the budget ran out.
bool ReplacePlain(const QString& text, const Constant& constant, WorkBudget& budget, QString* result)
{
    int found = text.indexOf(constant.pattern);
    if (found < 0) {
        *result = text;
        return true;
    }
    const QString& value = constant.value;
    QString out;
    out.reserve(text.size() + qMax(0, value.size() - constant.pattern.size()) * 4);
    int from = 0;
    while (found >= 0) {
        out.append(QStringView(text).mid(from, found - from));
        from = found + constant.pattern.size();
        for (int seam = MatchAcrossValueEnd(value, QStringView(text).mid(from), constant.pattern);
             seam >= 0; seam = MatchAcrossValueEnd(value, QStringView(text).mid(from), constant.pattern)) {
            out.append(QStringView(value).left(seam));
            from += constant.pattern.size() - (value.size() - seam);
            if (out.size() > kMaxSheetLength)
                return false;
        }
        out.append(value);
        if (out.size() > kMaxSheetLength)
            return false;
        found = text.indexOf(constant.pattern, from);
    }
    out.append(QStringView(text).mid(from));
    if (!budget.Spend(out.size()))
        return false;
    *result = out;
    return true;
}

// A name with regular-expression syntax acts as a pattern. Patterns that can match
// nothing, or keep matching what they insert, would never finish: they are stopped.
bool ReplacePattern(const QString& text, const Constant& constant, WorkBudget& budget, QString* result)
{
    QRegExp expression(constant.pattern, Qt::CaseSensitive, QRegExp::RegExp);
    QString out = text;
    // Each match that ends normally consumes text that was there before.
    int matchesLeft = text.size() + 1;
    for (int at = expression.indexIn(out, 0); at != -1; at = expression.indexIn(out, at)) {
        if (expression.matchedLength() == 0) {
            QTH_LOG_ERROR("[StyleSheet] Constant %s matches empty text; substitution stopped", qPrintable(constant.pattern));
            break;
        }
        if (--matchesLeft < 0) {
            QTH_LOG_ERROR("[StyleSheet] Constant %s keeps matching what it inserts; substitution stopped",
                          qPrintable(constant.pattern));
            break;
        }
        out.replace(at, expression.matchedLength(), constant.value);
        if (!budget.Spend(out.size()))
            return false;
    }
    *result = out;
    return true;
}

// One constant over text; false, with text unchanged, when the budget ran out.
bool ReplaceReferences(QString& text, const Constant& constant, WorkBudget& budget)
{
    if (constant.literal && !text.contains(constant.pattern))
        return true;
    QString result;
    const bool done = constant.literal ? ReplacePlain(text, constant, budget, &result)
                                       : ReplacePattern(text, constant, budget, &result);
    if (!done) {
        ReportRunawayGrowth(constant);
        return false;
    }
    text = result;
    return true;
}

QString SubstituteOneByOne(const QString& text, const QVector<Constant>& constants)
{
    QString result = text;
    WorkBudget budget(text.size(), constants.size());
    for (const Constant& constant : constants) {
        if (!ReplaceReferences(result, constant, budget))
            break;
    }
    return result;
}

// The names of all constants as a tree of their characters, for reading the names that
// start after an at sign in one walk.
class NameTree
{
public:
    static constexpr int kRoot = 0;

    explicit NameTree(const QVector<Constant>& constants)
    {
        m_rootChildren.fill(-1);
        m_nodes.push_back(Node{});
        for (int index = 0; index < constants.size(); ++index) {
            int node = kRoot;
            for (const QChar c : constants[index].name) {
                m_nameCharacters.set(c.unicode());
                node = ChildOrNew(node, c.unicode());
            }
            m_nodes[node].constant = index;
        }
    }

    int Child(int node, QChar c) const
    {
        const char16_t code = c.unicode();
        if (node == kRoot && code < m_rootChildren.size())
            return m_rootChildren[code];
        for (int child = m_nodes[node].firstChild; child >= 0; child = m_nodes[child].nextSibling) {
            if (m_nodes[child].character == code)
                return child;
        }
        return -1;
    }

    int ConstantAt(int node) const { return m_nodes[node].constant; }
    bool HasChildren(int node) const { return m_nodes[node].firstChild >= 0; }
    bool IsNameCharacter(QChar c) const { return m_nameCharacters.test(c.unicode()); }

private:
    struct Node
    {
        char16_t character = 0;
        int firstChild = -1;
        int nextSibling = -1;
        int constant = -1;
    };

    int ChildOrNew(int node, char16_t code)
    {
        const int existing = Child(node, QChar(code));
        if (existing >= 0)
            return existing;
        const int child = int(m_nodes.size());
        m_nodes.push_back(Node{code, -1, m_nodes[node].firstChild, -1});
        m_nodes[node].firstChild = child;
        if (node == kRoot && code < m_rootChildren.size())
            m_rootChildren[code] = child;
        return child;
    }

    std::vector<Node> m_nodes;
    std::array<int, 128> m_rootChildren;
    std::bitset<65536> m_nameCharacters;
};

// Substitution in one walk over the text instead of one per constant. An at sign is
// replaced by the constant that the passes would reach first: the lowest index among
// the names starting there. What a constant inserts is seen only by the constants after
// it, so each value is expanded once, by those. This holds while no match runs across
// the edge of an inserted value; where one could, Run() declines and the caller goes
// constant by constant.
class FastSubstitution
{
public:
    FastSubstitution(const QVector<Constant>& constants, int textLength)
        : m_constants(constants)
        , m_names(constants)
        , m_expansions(constants.size())
        , m_budget(textLength, constants.size())
    {
    }

    static bool Applies(const QVector<Constant>& constants)
    {
        for (const Constant& constant : constants) {
            if (!constant.literal || constant.name.contains(QLatin1Char('@')))
                return false;
        }
        return true;
    }

    bool Run(const QString& text, QString* result)
    {
        bool openEnd = false;
        QString out;
        out.reserve(text.size() + text.size() / 4);
        if (!ExpandPiece(text, 0, 0, out, &openEnd))
            return false;
        *result = out;
        return true;
    }

private:
    static constexpr int kMaxDepth = 200;

    struct Expansion
    {
        enum State { NotYet, Done, Declined } state = NotYet;
        QString text;
        bool openEnd = false; // a name read from inside may run on into what follows it
    };

    const Expansion* Expanded(int index, int depth)
    {
        Expansion& expansion = m_expansions[index];
        if (expansion.state == Expansion::NotYet) {
            bool openEnd = false;
            QString text;
            const bool done = depth <= kMaxDepth
                && ExpandPiece(m_constants[index].value, index + 1, depth, text, &openEnd);
            expansion.state = done ? Expansion::Done : Expansion::Declined;
            expansion.text = text;
            expansion.openEnd = openEnd;
        }
        return expansion.state == Expansion::Done ? &expansion : nullptr;
    }

    // Appends piece to out with the references of constants from firstEligible on
    // expanded. False when a match could run across an edge of an inserted value.
    bool ExpandPiece(QStringView piece, int firstEligible, int depth, QString& out, bool* openEnd)
    {
        const int length = piece.size();
        int emitted = 0;
        for (int at = piece.indexOf(QLatin1Char('@')); at >= 0;) {
            int node = NameTree::kRoot;
            int best = m_names.ConstantAt(node) >= firstEligible ? m_names.ConstantAt(node) : -1;
            int bestEnd = at + 1;
            int i = at + 1;
            for (; i < length; ++i) {
                const int next = m_names.Child(node, piece[i]);
                if (next < 0)
                    break;
                node = next;
                const int constant = m_names.ConstantAt(node);
                if (constant >= firstEligible && (best < 0 || constant < best)) {
                    best = constant;
                    bestEnd = i + 1;
                }
            }
            if (m_names.HasChildren(node)) {
                if (i == length)
                    *openEnd = true; // a longer name may go on past this piece
                else if (piece[i] == QLatin1Char('@'))
                    return false; // ...or into what replaces the next reference
            }
            if (best < 0) {
                at = piece.indexOf(QLatin1Char('@'), at + 1);
                continue;
            }
            const Expansion* value = Expanded(best, depth + 1);
            if (!value)
                return false;
            // A name left open at the value's end could go on into what follows it: a
            // name character, or the value that will replace a reference right after.
            if (value->openEnd) {
                if (bestEnd == length)
                    *openEnd = true;
                else if (m_names.IsNameCharacter(piece[bestEnd]) || piece[bestEnd] == QLatin1Char('@'))
                    return false;
            }
            out.append(piece.mid(emitted, at - emitted));
            out.append(value->text);
            if (!m_budget.Spend(value->text.size()) || out.size() > kMaxSheetLength)
                return false;
            emitted = bestEnd;
            at = piece.indexOf(QLatin1Char('@'), bestEnd);
        }
        out.append(piece.mid(emitted));
        return true;
    }

    const QVector<Constant>& m_constants;
    NameTree m_names;
    std::vector<Expansion> m_expansions;
    WorkBudget m_budget;
};

// For each constant in order, its references in every value are replaced by its value
// of the moment. Returns which values changed; stops when the budget runs out.
QVector<bool> ResolveInOrder(QVector<Constant>& ordered)
{
    // Only values with an at sign can hold references, and no value gains one it did
    // not have before.
    QVector<int> withReferences;
    int valuesLength = 0;
    for (int i = 0; i < ordered.size(); ++i) {
        valuesLength += ordered[i].value.size();
        if (ordered[i].value.contains(QLatin1Char('@')))
            withReferences.append(i);
    }
    WorkBudget budget(valuesLength, ordered.size());
    QVector<bool> changed(ordered.size(), false);
    for (const Constant& referenced : ordered) {
        // Checked now: references between constants can lead a value back to itself.
        if (RefersToItself(referenced)) {
            ReportSelfReference(referenced);
            continue;
        }
        for (const int index : qAsConst(withReferences)) {
            Constant& holder = ordered[index];
            QString value = holder.value;
            if (!ReplaceReferences(value, referenced, budget))
                return changed;
            if (value != holder.value) {
                holder.value = value;
                changed[index] = true;
            }
        }
    }
    return changed;
}

// Splits at LF, CR or CR LF, keeping empty lines.
QVector<QStringView> Lines(QStringView text)
{
    QVector<QStringView> lines;
    int start = 0;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] != QLatin1Char('\n') && text[i] != QLatin1Char('\r'))
            continue;
        lines.append(text.mid(start, i - start));
        if (text[i] == QLatin1Char('\r') && i + 1 < text.size() && text[i + 1] == QLatin1Char('\n'))
            ++i;
        start = i + 1;
    }
    lines.append(text.mid(start));
    return lines;
}

} // namespace

void ParseStylesheetConstants(QString& text, StyleConstants& constants)
{
    const int end = text.indexOf(kBlockEnd);
    if (end < 0 || !text.contains(kBlockHeader))
        return;
    // The block is read from position 2, so it must open the text.
    const QStringView block = end > 2 ? QStringView(text).mid(2, end - 2) : QStringView();
    for (const QStringView line : Lines(block)) {
        const auto parts = line.split(QLatin1Char('='), Qt::SkipEmptyParts);
        if (parts.size() != 2)
            continue;
        const QString name = parts[0].trimmed().toString();
        const QString value = parts[1].trimmed().toString();
        if (!name.isEmpty() && !value.isEmpty())
            constants.insert(name, QVariant(value));
    }
    text = text.mid(end + kBlockEnd.size());
}

void ResolveConstantReferences(StyleConstants& constants)
{
    QVector<Constant> ordered = InHashOrder(constants);
    const QVector<bool> changed = ResolveInOrder(ordered);
    for (int i = 0; i < ordered.size(); ++i) {
        if (changed[i])
            constants.insert(ordered[i].name, QVariant(ordered[i].value));
    }
}

QString SubstituteConstants(const QString& text, const StyleConstants& constants)
{
    const QVector<Constant> ordered = Substitutable(constants);
    if (FastSubstitution::Applies(ordered)) {
        QString result;
        if (FastSubstitution(ordered, text.size()).Run(text, &result))
            return result;
    }
    return SubstituteOneByOne(text, ordered);
}

QString SubstituteConstantsOneByOne(const QString& text, const StyleConstants& constants)
{
    return SubstituteOneByOne(text, Substitutable(constants));
}

} // namespace OrvantaQT
