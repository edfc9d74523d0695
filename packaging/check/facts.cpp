#include "facts.h"

#include <windows.h>
// windows.h first: these need its types.
#include <commctrl.h>
#include <mmsystem.h>
#include <objbase.h>
#include <shlwapi.h>
#include <stdio.h>

#include <vector>

namespace check {
namespace {

// A function of the system, nullptr where it has none of that name.
template <typename Function>
Function function(const wchar_t* library, const char* name) {
    const HMODULE module = LoadLibraryW(library);
    return module
               ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)))
               : nullptr;
}

template <typename... Values>
std::string line(const char* format, Values... values) {
    char text[200];
    snprintf(text, sizeof text, format, values...);
    return std::string(text) + "\r\n";
}

std::string windowsVersion() {
    OSVERSIONINFOEXW version{};
    version.dwOSVersionInfoSize = sizeof version;
    // GetVersionEx tells a program what its manifest names, this one what is there.
    using GetVersion = LONG(WINAPI*)(OSVERSIONINFOEXW*);
    if (const auto get = function<GetVersion>(L"ntdll.dll", "RtlGetVersion")) get(&version);
    using WineVersion = const char*(CDECL*)();
    const auto wine = function<WineVersion>(L"ntdll.dll", "wine_get_version");
    return line("Windows: %lu.%lu build %lu, service pack %u%s%s", version.dwMajorVersion,
                version.dwMinorVersion, version.dwBuildNumber, version.wServicePackMajor,
                wine ? ", by Wine " : "", wine ? wine() : "");
}

BOOL CALLBACK addScreen(HMONITOR screen, HDC, RECT* area, LPARAM text) {
    using GetDpi = HRESULT(WINAPI*)(HMONITOR, int kind, UINT* x, UINT* y);
    UINT x = 0, y = 0;
    if (const auto get = function<GetDpi>(L"shcore.dll", "GetDpiForMonitor");
        !get || get(screen, 0, &x, &y)) {
        const HDC dc = GetDC(nullptr);
        x = static_cast<UINT>(GetDeviceCaps(dc, LOGPIXELSX));
        ReleaseDC(nullptr, dc);
    }
    *reinterpret_cast<std::string*>(text) +=
        line("Screen: %ld x %ld, %u dots per inch", area->right - area->left,
             area->bottom - area->top, x);
    return TRUE;
}

std::string commonControls() {
    DLLVERSIONINFO version{};
    version.cbSize = sizeof version;
    const auto get = function<DLLGETVERSIONPROC>(L"comctl32.dll", "DllGetVersion");
    if (get) get(&version);
    return line("Common controls: %lu.%lu", version.dwMajorVersion, version.dwMinorVersion);
}

bool canCreate(const CLSID& id) {
    IUnknown* object = nullptr;
    const HRESULT result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                                            reinterpret_cast<void**>(&object));
    if (object) object->Release();
    return SUCCEEDED(result);
}

std::string players() {
    constexpr CLSID kMediaControl = {
        0x22D6F312, 0xB0F6, 0x11D0, {0x94, 0xAB, 0x00, 0x80, 0xC7, 0x4C, 0x7E, 0x95}};
    constexpr CLSID kFilterGraph = {
        0xE436EBB3, 0x524F, 0x11CE, {0x9F, 0x53, 0x00, 0x20, 0xAF, 0x0B, 0xA7, 0x70}};
    CoInitialize(nullptr);
    const bool control = canCreate(kMediaControl), graph = canCreate(kFilterGraph);
    CoUninitialize();
    return line("Media control: %s", control ? "registered" : "not registered") +
           line("Plays by: %s", control ? "the media control"
                                : graph ? "DirectShow"
                                        : "nothing") +
           line("Sound devices: %u", waveOutGetNumDevs());
}

}  // namespace

std::string facts() {
    std::string screens;
    EnumDisplayMonitors(nullptr, nullptr, addScreen, reinterpret_cast<LPARAM>(&screens));
    return windowsVersion() + line("Code pages: ANSI %u, OEM %u", GetACP(), GetOEMCP()) + screens +
           commonControls() + players();
}

}  // namespace check
