// The window system's side of a frameless window. Windows: the hit test and the frame
// size answered for a real window. X11: what the running window manager offers, which the
// test's arguments say ("maximizes" or "none").
#include <qt_halvo/utilities/platform/frameless_window_p.h>

#include "plain_test.h"

#include <cstring>

using namespace OrvantaQT::Platform;

#ifdef _WIN32
#include <windows.h>

namespace {

// A test hit test: a 10-pixel band along every edge, the caption below it to y 40.
FramelessHit TestHitTest(void* context, int x, int y)
{
    ++*static_cast<int*>(context);
    const int width = 300, height = 200;
    const bool left = x < 10, right = x >= width - 10, top = y < 10, bottom = y >= height - 10;
    if (top && left)
        return FramelessHit::TopLeft;
    if (bottom && right)
        return FramelessHit::BottomRight;
    if (left)
        return FramelessHit::Left;
    if (right)
        return FramelessHit::Right;
    if (top)
        return FramelessHit::Top;
    if (bottom)
        return FramelessHit::Bottom;
    return y < 40 ? FramelessHit::Caption : FramelessHit::Client;
}

int calls = 0;

LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    MSG msg{window, message, wParam, lParam, 0, {}};
    std::intptr_t result = 0;
    if (HandleFramelessMessage(&msg, &result, &TestHitTest, &calls))
        return result;
    return DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

int main()
{
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = WindowProc;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = "qt_halvo_frameless_test";
    CHECK(RegisterClassA(&windowClass) != 0);
    const HWND window = CreateWindowExA(0, "qt_halvo_frameless_test", "frameless", WS_POPUP, 100, 100, 300, 200,
                                        nullptr, nullptr, windowClass.hInstance, nullptr);
    CHECK(window != nullptr);

    CHECK(!PrepareFramelessWindow(0));
    CHECK(PrepareFramelessWindow(reinterpret_cast<std::uintptr_t>(window)));
    const LONG_PTR style = GetWindowLongPtrA(window, GWL_STYLE);
    CHECK((style & WS_THICKFRAME) && (style & WS_CAPTION) && (style & WS_MAXIMIZEBOX));

    // No frame: the client area is the whole window.
    RECT windowRect{}, clientRect{};
    GetWindowRect(window, &windowRect);
    GetClientRect(window, &clientRect);
    CHECK(clientRect.right == windowRect.right - windowRect.left);
    CHECK(clientRect.bottom == windowRect.bottom - windowRect.top);

    // Points on screen, as the system sends them, against what the window's test says.
    struct Case
    {
        int x, y;
        LRESULT expected;
    };
    const Case cases[] = {
        {100 + 150, 100 + 100, HTCLIENT},  {100 + 150, 100 + 20, HTCAPTION},   {100 + 2, 100 + 100, HTLEFT},
        {100 + 295, 100 + 100, HTRIGHT},   {100 + 150, 100 + 3, HTTOP},        {100 + 150, 100 + 195, HTBOTTOM},
        {100 + 1, 100 + 1, HTTOPLEFT},     {100 + 299, 100 + 199, HTBOTTOMRIGHT},
    };
    for (const Case& c : cases) {
        const LRESULT hit = SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(c.x, c.y));
        if (hit != c.expected)
            std::cout << "  at " << c.x << "," << c.y << ": " << hit << " instead of " << c.expected << "\n";
        CHECK(hit == c.expected);
    }
    CHECK(calls == int(sizeof(cases) / sizeof(cases[0])));

    // Messages it does not answer, and a missing hit test.
    MSG other{window, WM_PAINT, 0, 0, 0, {}};
    std::intptr_t result = 0;
    CHECK(!HandleFramelessMessage(&other, &result, &TestHitTest, &calls));
    MSG hitTest{window, WM_NCHITTEST, 0, MAKELPARAM(150, 150), 0, {}};
    CHECK(!HandleFramelessMessage(&hitTest, &result, nullptr, nullptr));
    CHECK(!HandleFramelessMessage(nullptr, &result, &TestHitTest, &calls));

    CHECK(WindowManagerMaximizes());
    CHECK(CompositingManagerRunning());
    DestroyWindow(window);
    return PlainTest::Summary("tst_frameless_native");
}

#else

int main(int argc, char** argv)
{
    const bool expectWindowManager = argc > 1 && std::strcmp(argv[1], "maximizes") == 0;
    CHECK(WindowManagerMaximizes() == expectWindowManager);
    // Neither Xvfb alone nor openbox composites.
    CHECK(!CompositingManagerRunning());
    // Nothing to prepare or answer on X11.
    CHECK(!PrepareFramelessWindow(1));
    std::intptr_t result = 0;
    CHECK(!HandleFramelessMessage(&result, &result, nullptr, nullptr));
    return PlainTest::Summary("tst_frameless_native");
}

#endif
