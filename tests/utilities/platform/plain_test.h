// The few checks the plain-C++ platform tests need; they run natively and under wine,
// where no test framework is at hand. Each test ends with Summary().
#pragma once

#include <iostream>

namespace PlainTest {

inline int passed = 0;
inline int failed = 0;

inline void Check(bool condition, const char* what, int line)
{
    if (condition) {
        ++passed;
        return;
    }
    ++failed;
    std::cout << "FAIL line " << line << ": " << what << std::endl;
}

// Prints "<name>: N passed, N failed" and gives the exit code.
inline int Summary(const char* name)
{
    std::cout << name << ": " << passed << " passed, " << failed << " failed" << std::endl;
    return failed == 0 ? 0 : 1;
}

} // namespace PlainTest

#define CHECK(condition) ::PlainTest::Check((condition), #condition, __LINE__)
