#include "player/playback_errors.h"

#include <mmsystem.h>
// mmsystem.h first: this one needs its types.
#include <vfwmsgs.h>

#include <string_view>

#include "core/text.h"

namespace tunovka {
namespace {

std::wstring_view slovakText(HRESULT error) {
    switch (error) {
        case HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND):
        case HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND):
        case HRESULT_FROM_WIN32(ERROR_INVALID_NAME):
        case VFW_E_NOT_FOUND:
            return L"Súbor sa nenašiel.";
        case E_ACCESSDENIED:
        case HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION):
        case HRESULT_FROM_WIN32(ERROR_LOCK_VIOLATION):
            return L"K súboru nie je prístup.";
        case VFW_E_NO_AUDIO_HARDWARE:
            return L"Nenašlo sa žiadne zvukové zariadenie.";
        // The start of the file was looked at before: it is a sound, but nothing here decodes it.
        case VFW_E_CANNOT_RENDER:
        case VFW_E_CANNOT_CONNECT:
        case VFW_E_CANNOT_LOAD_SOURCE_FILTER:
        case VFW_E_UNKNOWN_FILE_TYPE:
        case VFW_E_UNSUPPORTED_AUDIO:
        case VFW_E_UNSUPPORTED_STREAM:
            return L"V systéme chýba kodek pre tento zvuk alebo je súbor poškodený.";
        case VFW_E_INVALID_FILE_FORMAT:
        case VFW_E_INVALID_MEDIA_TYPE:
            return L"Súbor nie je zvuk, ktorý sa dá prehrať.";
        case REGDB_E_CLASSNOTREG:
            return L"V systéme chýba súčasť na prehrávanie zvuku.";
        default:
            return {};
    }
}

// The text of the system, or of the component that plays; "" when neither knows one.
std::wstring systemText(HRESULT error) {
    wchar_t text[512] = L"";
    const HMODULE quartz = GetModuleHandleW(L"quartz.dll");
    const DWORD sources = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS |
                          FORMAT_MESSAGE_MAX_WIDTH_MASK |
                          (quartz ? FORMAT_MESSAGE_FROM_HMODULE : 0);
    FormatMessageW(sources, quartz, static_cast<DWORD>(error), 0, text, 512, nullptr);
    return trimBlanks(text);
}

std::wstring hexadecimal(HRESULT error) {
    std::wstring digits;
    for (int shift = 28; shift >= 0; shift -= 4)
        digits += L"0123456789ABCDEF"[static_cast<DWORD>(error) >> shift & 0xF];
    return digits;
}

std::wstring betweenBlanks(std::wstring_view sentence) {
    return std::wstring(L" ").append(sentence).append(L" ");
}

}  // namespace

PlaybackTrouble playbackTrouble(HRESULT error) {
    const bool withEveryFile = error == VFW_E_NO_AUDIO_HARDWARE || error == REGDB_E_CLASSNOTREG;
    if (const std::wstring_view known = slovakText(error); !known.empty())
        return {betweenBlanks(known), withEveryFile};
    const std::wstring text = FAILED(error) ? systemText(error) : L"";
    return {betweenBlanks((text.empty() ? L"Neznáma chyba" : text) + L" (0x" + hexadecimal(error) +
                          L")")};
}

PlaybackTrouble playbackTrouble(const RuntimeError& error) {
    switch (error.number) {
        case kBadFileName:
        case kFileNotFound:
        case kPathNotFound:
            return playbackTrouble(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
        case kPermissionDenied:
        case kPathFileAccess:
            return playbackTrouble(E_ACCESSDENIED);
        default:
            return {betweenBlanks(error.description)};
    }
}

}  // namespace tunovka
