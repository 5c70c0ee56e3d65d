#include "shared_library_p.h"

#include <dlfcn.h>

namespace OrvantaQT::Platform {

void* OpenSharedLibrary(const std::string& path, std::string* error)
{
    // An empty name would open the main program itself.
    if (path.empty()) {
        if (error)
            *error = "empty file name";
        return nullptr;
    }
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library && error) {
        const char* reason = dlerror();
        *error = reason ? reason : "unknown error";
    }
    return library;
}

void* FindSharedLibrarySymbol(void* library, const char* name)
{
    return library && name ? dlsym(library, name) : nullptr;
}

void CloseSharedLibrary(void* library)
{
    if (library)
        dlclose(library);
}

std::string CurrentModuleDirectory()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void*>(&CurrentModuleDirectory), &info) || !info.dli_fname)
        return {};
    const std::string file = info.dli_fname;
    const std::string::size_type slash = file.rfind('/');
    if (slash == std::string::npos)
        return {};
    return slash == 0 ? std::string("/") : file.substr(0, slash);
}

char PathSeparator()
{
    return '/';
}

} // namespace OrvantaQT::Platform
