#include "shared_library_p.h"

#include "win_text_p.h"

namespace OrvantaQT::Platform {

namespace {

std::string DescribeError(DWORD code)
{
    wchar_t* message = nullptr;
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM
                                            | FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, code, 0, reinterpret_cast<wchar_t*>(&message), 0, nullptr);
    std::string text = length ? Narrow(message, static_cast<int>(length)) : std::string();
    LocalFree(message);
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == ' '))
        text.pop_back();
    return text.empty() ? "error " + std::to_string(code) : text;
}

} // namespace

void* OpenSharedLibrary(const std::string& path, std::string* error)
{
    // An empty name would open the main program itself.
    if (path.empty()) {
        if (error)
            *error = "empty file name";
        return nullptr;
    }
    // No error dialog boxes for a missing or broken library: the caller falls back.
    const UINT previousMode = SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    HMODULE library = LoadLibraryW(Widen(path).c_str());
    const DWORD code = GetLastError();
    SetErrorMode(previousMode);
    if (!library && error)
        *error = DescribeError(code);
    return reinterpret_cast<void*>(library);
}

void* FindSharedLibrarySymbol(void* library, const char* name)
{
    if (!library || !name)
        return nullptr;
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void CloseSharedLibrary(void* library)
{
    if (library)
        FreeLibrary(static_cast<HMODULE>(library));
}

std::string CurrentModuleDirectory()
{
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&CurrentModuleDirectory), &module))
        return {};
    std::wstring file(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size()));
        if (length == 0)
            return {};
        if (length < file.size()) {
            file.resize(length);
            break;
        }
        file.resize(file.size() * 2);
    }
    const std::wstring::size_type separator = file.find_last_of(L"\\/");
    if (separator == std::wstring::npos)
        return {};
    return Narrow(file.data(), static_cast<int>(separator));
}

char PathSeparator()
{
    return '\\';
}

} // namespace OrvantaQT::Platform
