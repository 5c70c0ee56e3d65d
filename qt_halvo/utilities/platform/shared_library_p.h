// Loading shared libraries at run time, without Qt: one implementation per operating
// system. Paths are UTF-8.
#pragma once

#include <string>

namespace OrvantaQT::Platform {

// Opens the library at path; returns null and describes the failure in error when it cannot.
void* OpenSharedLibrary(const std::string& path, std::string* error);

// The address of an exported symbol, or null.
void* FindSharedLibrarySymbol(void* library, const char* name);

void CloseSharedLibrary(void* library);

// The folder of the module (shared library or executable) this code is linked into,
// without a trailing separator; empty when the system cannot tell.
std::string CurrentModuleDirectory();

// The file name separator of the system.
char PathSeparator();

} // namespace OrvantaQT::Platform
