#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>
#include <utility>

namespace tunovka {

inline std::wstring fromUtf8(const std::string& text) {
    std::wstring result(text.size(), L'\0');
    result.resize(MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                      result.data(), static_cast<int>(result.size())));
    return result;
}

inline std::string toUtf8(const std::wstring& text) {
    std::string result(text.size() * 3, '\0');
    result.resize(WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                      result.data(), static_cast<int>(result.size()), nullptr,
                                      nullptr));
    return result;
}

// A JSON value while it is written: its text, to which an array may still add.
class Json {
  public:
    static Json null() { return Json("null"); }
    static Json of(bool value) { return Json(value ? "true" : "false"); }
    static Json of(long long value) { return Json(std::to_string(value)); }
    static Json of(const void* handle) {
        return of(static_cast<long long>(reinterpret_cast<UINT_PTR>(handle)));
    }
    static Json of(const RECT& r) {
        Json result = array();
        for (const LONG edge : {r.left, r.top, r.right, r.bottom})
            result.add(of(static_cast<long long>(edge)));
        return result;
    }
    static Json of(const std::wstring& value) {
        std::string text = "\"";
        for (const char letter : toUtf8(value)) {
            char code[8];
            if (letter == '"' || letter == '\\') {
                text += '\\';
                text += letter;
            } else if (static_cast<unsigned char>(letter) < 0x20) {
                std::snprintf(code, sizeof code, "\\u%04x", letter);
                text += code;
            } else {
                text += letter;
            }
        }
        return Json(text + '"');
    }
    static Json array() { return Json("[]"); }
    static Json object(std::initializer_list<std::pair<const char*, Json>> members) {
        std::string text = "{";
        for (const auto& [name, value] : members) {
            if (text.size() > 1) text += ',';
            text += '"' + std::string(name) + "\":" + value.text_;
        }
        return Json(text + '}');
    }

    void add(const Json& value) {
        text_.pop_back();
        if (text_.size() > 1) text_ += ',';
        text_ += value.text_ + ']';
    }
    const std::string& text() const { return text_; }

  private:
    explicit Json(std::string text) : text_(std::move(text)) {}

    std::string text_;
};

}  // namespace tunovka
