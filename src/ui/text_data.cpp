#include "ui/text_data.h"

#include <ole2.h>

#include <cstring>
#include <utility>

#include "core/ansi.h"
#include "core/com_object.h"
#include "core/text.h"

namespace tunovka {
namespace {

FORMATETC formatOf(CLIPFORMAT format) {
    return {format, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

HGLOBAL globalCopy(const void* bytes, std::size_t size) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    if (!memory) return nullptr;
    std::memcpy(GlobalLock(memory), bytes, size);
    GlobalUnlock(memory);
    return memory;
}

std::string asAnsi(const std::wstring& text) {
    const int length =
        WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(length, '\0');  // its end is part of the format
    WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, bytes.data(), length, nullptr, nullptr);
    return bytes;
}

// The two formats, one after the other.
class TextFormats final : public SingleComObject<IEnumFORMATETC> {
  public:
    HRESULT STDMETHODCALLTYPE Next(ULONG wanted, FORMATETC* formats, ULONG* given) override {
        ULONG count = 0;
        for (; count < wanted && next_ < 2; ++count, ++next_)
            formats[count] = formatOf(next_ == 0 ? CF_UNICODETEXT : CF_TEXT);
        if (given) *given = count;
        return count == wanted ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        next_ += count;
        return next_ <= 2 ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumFORMATETC** copy) override {
        auto* formats = new TextFormats;
        formats->next_ = next_;
        *copy = formats;
        return S_OK;
    }

  private:
    ULONG next_ = 0;
};

class TextData final : public SingleComObject<IDataObject> {
  public:
    explicit TextData(std::wstring text) : text_(std::move(text)) {}

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
        if (QueryGetData(format) != S_OK) return DV_E_FORMATETC;
        medium->tymed = TYMED_HGLOBAL;
        medium->pUnkForRelease = nullptr;
        if (format->cfFormat == CF_UNICODETEXT) {
            medium->hGlobal = globalCopy(text_.c_str(), (text_.size() + 1) * sizeof(wchar_t));
        } else {
            const std::string bytes = asAnsi(text_);
            medium->hGlobal = globalCopy(bytes.data(), bytes.size());
        }
        return medium->hGlobal ? S_OK : E_OUTOFMEMORY;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override {
        const bool known = format->cfFormat == CF_UNICODETEXT || format->cfFormat == CF_TEXT;
        return known && format->tymed & TYMED_HGLOBAL ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* same) override {
        same->ptd = nullptr;
        return DATA_S_SAMEFORMATETC;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override {
        *formats = direction == DATADIR_GET ? new TextFormats : nullptr;
        return *formats ? S_OK : E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }

  private:
    std::wstring text_;
};

bool textIn(IDataObject* data, CLIPFORMAT format, std::wstring& text) {
    FORMATETC wanted = formatOf(format);
    STGMEDIUM medium{};
    if (FAILED(data->GetData(&wanted, &medium))) return false;
    const std::size_t size = medium.tymed == TYMED_HGLOBAL ? GlobalSize(medium.hGlobal) : 0;
    const void* bytes = size ? GlobalLock(medium.hGlobal) : nullptr;
    if (bytes) {
        text = format == CF_UNICODETEXT
                   ? trimAtNul({static_cast<const wchar_t*>(bytes), size / sizeof(wchar_t)})
                   : trimAtNul(fromAnsi({static_cast<const char*>(bytes), size}));
        GlobalUnlock(medium.hGlobal);
    }
    ReleaseStgMedium(&medium);
    return bytes != nullptr;
}

}  // namespace

IDataObject* createTextData(const std::wstring& text) {
    return new TextData(text);
}

bool hasText(IDataObject* data) {
    FORMATETC wide = formatOf(CF_UNICODETEXT);
    FORMATETC ansi = formatOf(CF_TEXT);
    return data && (data->QueryGetData(&wide) == S_OK || data->QueryGetData(&ansi) == S_OK);
}

bool textOf(IDataObject* data, std::wstring& text) {
    return textIn(data, CF_UNICODETEXT, text) || textIn(data, CF_TEXT, text);
}

}  // namespace tunovka
