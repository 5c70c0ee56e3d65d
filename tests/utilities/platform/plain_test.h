// The checks of the plain-C++ platform tests, which run natively and under wine where no
// test framework is at hand. A test ends with Summary(), which prints "<name>: N passed,
// N failed" and gives the exit code.
#pragma once

#include <iostream>

namespace PlainTest {
inline int passed = 0;
inline int failed = 0;
inline int Summary(const char* name)
{
    std::cout << name << ": " << passed << " passed, " << failed << " failed" << std::endl;
    return failed == 0 ? 0 : 1;
}
} // namespace PlainTest

#define CHECK(condition) \
    ((condition) ? void(++PlainTest::passed) : void((++PlainTest::failed, std::cout << "FAIL line " << __LINE__ << ": " #condition "\n")))
