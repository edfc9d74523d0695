#pragma once

#include <windows.h>
// windows.h first: these need its types.
#include <ole2.h>
#include <oleauto.h>

#include "core/late_function.h"

// What the program calls of ole32.dll and oleaut32.dll. The first window does without both, which
// spares their loading and half a megabyte of memory: inside the namespace their names lead here.
namespace tunovka {

template <typename Function>
struct Ole32 : LateFunction<Function> {
    explicit constexpr Ole32(const char* name) : LateFunction<Function>(L"ole32.dll", name) {}
};

template <typename Function>
struct OleAut32 : LateFunction<Function> {
    explicit constexpr OleAut32(const char* name) : LateFunction<Function>(L"oleaut32.dll", name) {}
};

inline const Ole32<decltype(::CLSIDFromString)> CLSIDFromString("CLSIDFromString");
inline const Ole32<decltype(::CoCreateInstance)> CoCreateInstance("CoCreateInstance");
inline const Ole32<decltype(::CoGetClassObject)> CoGetClassObject("CoGetClassObject");
inline const Ole32<decltype(::CoInitializeEx)> CoInitializeEx("CoInitializeEx");
inline const Ole32<decltype(::CoTaskMemFree)> CoTaskMemFree("CoTaskMemFree");
inline const Ole32<decltype(::CoUninitialize)> CoUninitialize("CoUninitialize");
inline const Ole32<decltype(::DoDragDrop)> DoDragDrop("DoDragDrop");
inline const Ole32<decltype(::OleInitialize)> OleInitialize("OleInitialize");
inline const Ole32<decltype(::RegisterDragDrop)> RegisterDragDrop("RegisterDragDrop");
inline const Ole32<decltype(::ReleaseStgMedium)> ReleaseStgMedium("ReleaseStgMedium");
inline const Ole32<decltype(::RevokeDragDrop)> RevokeDragDrop("RevokeDragDrop");

inline const OleAut32<decltype(::SysAllocStringLen)> SysAllocStringLen("SysAllocStringLen");
inline const OleAut32<decltype(::SysFreeString)> SysFreeString("SysFreeString");
inline const OleAut32<decltype(::SysStringLen)> SysStringLen("SysStringLen");
inline const OleAut32<decltype(::VariantChangeType)> VariantChangeType("VariantChangeType");
inline const OleAut32<decltype(::VariantClear)> VariantClear("VariantClear");
inline const OleAut32<decltype(::VariantCopyInd)> VariantCopyInd("VariantCopyInd");

}  // namespace tunovka
