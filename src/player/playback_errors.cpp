#include <windows.h>
// windows.h first: these need its types.
#include <mmsystem.h>
#include <vfwmsgs.h>

#include "core/text.h"
#include "player/media_engine.h"

namespace tunovka {
namespace {

std::wstring slovakText(HRESULT error) {
    switch (error) {
        case HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND):
        case HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND):
        case VFW_E_NOT_FOUND:
            return L"Súbor sa nenašiel.";
        case E_ACCESSDENIED:
        case HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION):
            return L"K súboru nie je prístup.";
        case VFW_E_NO_AUDIO_HARDWARE:
            return L"Nenašlo sa žiadne zvukové zariadenie.";
        case VFW_E_UNSUPPORTED_AUDIO:
        case VFW_E_UNSUPPORTED_STREAM:
        case VFW_E_NO_DECOMPRESSOR:
            return L"V systéme chýba kodek pre tento zvuk.";
        // The start of the file was looked at before: it is a sound, but nothing here plays it.
        case VFW_E_CANNOT_RENDER:
        case VFW_E_UNKNOWN_FILE_TYPE:
            return L"V systéme chýba kodek pre tento zvuk alebo je súbor poškodený.";
        case VFW_E_INVALID_FILE_FORMAT:
            return L"Súbor nie je zvuk, ktorý sa dá prehrať.";
        case REGDB_E_CLASSNOTREG:
            return L"V systéme chýba súčasť na prehrávanie zvuku.";
        default:
            return {};
    }
}

// The text of the system, or of the component that plays, with the number.
std::wstring systemText(HRESULT error) {
    wchar_t text[512] = L"", number[16];
    const HMODULE quartz = GetModuleHandleW(L"quartz.dll");
    const DWORD sources = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS |
                          FORMAT_MESSAGE_MAX_WIDTH_MASK |
                          (quartz ? FORMAT_MESSAGE_FROM_HMODULE : 0);
    if (FAILED(error))
        FormatMessageW(sources, quartz, static_cast<DWORD>(error), 0, text, 512, nullptr);
    const std::wstring known = trimBlanks(text);
    wsprintfW(number, L" (0x%08lX)", error);
    return (known.empty() ? L"Neznáma chyba" : known) + number;
}

}  // namespace

PlaybackTrouble playbackTrouble(long error) {
    const std::wstring known = slovakText(error);
    return {L" " + (known.empty() ? systemText(error) : known) + L" ",
            error == VFW_E_NO_AUDIO_HARDWARE || error == REGDB_E_CLASSNOTREG};
}

}  // namespace tunovka
