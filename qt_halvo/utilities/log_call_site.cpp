#include "log_call_site_p.h"

namespace OrvantaQT::Logging {

namespace {

constexpr std::string_view kTreeRoot = "qt_halvo";
constexpr std::string_view kOperator = "operator";

bool IsSeparator(char c)
{
    return c == '/' || c == '\\';
}

bool IsIdentifierCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool IsOperatorKeywordAt(std::string_view text, std::size_t at)
{
    if (text.compare(at, kOperator.size(), kOperator) != 0)
        return false;
    const std::size_t after = at + kOperator.size();
    return (at == 0 || !IsIdentifierCharacter(text[at - 1]))
        && (after >= text.size() || !IsIdentifierCharacter(text[after]));
}

bool EndsWithOperatorKeyword(std::string_view text)
{
    return text.size() >= kOperator.size() && IsOperatorKeywordAt(text, text.size() - kOperator.size());
}

// Where the parameter list starts. Brackets that belong to the name are skipped:
// template arguments, Clang's "(anonymous namespace)", GCC's "<lambda(int)>" and the
// symbol of an operator such as "operator()" or "operator<<".
std::size_t ParameterListStart(std::string_view signature)
{
    int depth = 0;
    std::size_t i = 0;
    while (i < signature.size()) {
        if (IsOperatorKeywordAt(signature, i)) {
            i += kOperator.size();
            if (signature.compare(i, 2, "()") == 0)
                i += 2;
            while (i < signature.size() && signature[i] != '(')
                ++i;
            continue;
        }
        const char c = signature[i];
        if (c == '(' && depth == 0 && !(i > 0 && signature[i - 1] == ':'))
            return i;
        if (c == '<' || c == '(')
            ++depth;
        else if ((c == '>' || c == ')') && depth > 0)
            --depth;
        ++i;
    }
    return signature.size();
}

// Where the name starts: after the last space outside brackets that does not follow
// the keyword "operator" (as in "operator bool"), which leaves out the return type,
// "virtual", "static" and calling conventions.
std::size_t NameStart(std::string_view signature, std::size_t end)
{
    int depth = 0;
    for (std::size_t i = end; i > 0; --i) {
        const char c = signature[i - 1];
        if (c == '>' || c == ')')
            ++depth;
        else if ((c == '<' || c == '(') && depth > 0)
            --depth;
        else if (c == ' ' && depth == 0 && !EndsWithOperatorKeyword(signature.substr(0, i - 1)))
            return i;
    }
    return 0;
}

} // namespace

std::string SourcePathOf(std::string_view file)
{
    std::size_t start = 0;
    for (std::size_t at = file.find(kTreeRoot); at != std::string_view::npos; at = file.find(kTreeRoot, at + 1)) {
        const std::size_t after = at + kTreeRoot.size();
        if ((at == 0 || IsSeparator(file[at - 1])) && after < file.size() && IsSeparator(file[after]))
            start = at;
    }
    std::string path(file.substr(start));
    const std::size_t lastSeparator = path.find_last_of("/\\");
    const std::size_t dot = path.rfind('.');
    if (dot != std::string::npos && (lastSeparator == std::string::npos || dot > lastSeparator))
        path.resize(dot);
    for (char& c : path) {
        if (c == '/')
            c = '\\';
    }
    return path;
}

std::string FunctionNameOf(std::string_view signature)
{
    // GCC spells out template arguments after the signature: " [with T = int]".
    const std::size_t with = signature.rfind(" [with ");
    if (with != std::string_view::npos)
        signature = signature.substr(0, with);
    const std::size_t end = ParameterListStart(signature);
    std::size_t start = NameStart(signature, end);
    // Clang writes "QString *OrvantaQT::name()".
    while (start < end && (signature[start] == '*' || signature[start] == '&'))
        ++start;
    return std::string(signature.substr(start, end - start));
}

} // namespace OrvantaQT::Logging
