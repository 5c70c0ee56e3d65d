// Turns what the compiler says about a log call site into the parts of its tag.
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <string>
#include <string_view>

namespace OrvantaQT::Logging {

// The source file as its path within the tree, from the last "qt_halvo" folder on,
// with backslashes and without extension: "qt_halvo/styles/style_sheet.cpp" gives
// "qt_halvo\styles\style_sheet".
QT_HALVO_AUTOTEST_EXPORT std::string SourcePathOf(std::string_view file);

// The qualified function name out of a full signature (GCC's and Clang's
// __PRETTY_FUNCTION__, MSVC's __FUNCSIG__): "void OrvantaQT::LoadGlobalColors(const QString&)"
// gives "OrvantaQT::LoadGlobalColors". A lambda is named after the function it is in.
QT_HALVO_AUTOTEST_EXPORT std::string FunctionNameOf(std::string_view signature);

} // namespace OrvantaQT::Logging
