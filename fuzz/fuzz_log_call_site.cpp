// Call-site parsing takes whatever a compiler writes; it must never crash and must only
// ever cut pieces out of its input.

#include <qt_halvo/utilities/log_call_site_p.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string name = OrvantaQT::Logging::FunctionNameOf(input);
    if (input.find(name) == std::string_view::npos)
        std::abort();
    const std::string path = OrvantaQT::Logging::SourcePathOf(input);
    if (path.size() > input.size())
        std::abort();
    return 0;
}
