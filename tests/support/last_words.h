#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <csignal>
#include <cstdio>

namespace tunovka {

// Names the test that crashes, aborts or hangs: gtest itself names a test when it has returned.
class LastWords : public testing::EmptyTestEventListener {
  public:
    LastWords() {
        SetUnhandledExceptionFilter(crashed);
        std::signal(SIGABRT, [](int) { say("aborted"); });
        CloseHandle(CreateThread(nullptr, 0, watch, nullptr, 0, nullptr));
    }

    void OnTestStart(const testing::TestInfo& test) override {
        started_ = GetTickCount();
        test_ = &test;
    }
    void OnTestEnd(const testing::TestInfo&) override { test_ = nullptr; }

    // The test that runs takes long but has got on.
    static void goesOn() { started_ = GetTickCount(); }

  private:
    static constexpr DWORD kPatience = 240'000;  // ms that one test may take on a busy machine

    template <typename... Arguments>
    static void say(const char* format, Arguments... arguments) {
        const testing::TestInfo* test = test_;
        std::printf("[  FAILED  ] %s.%s ", test ? test->test_suite_name() : "(no",
                    test ? test->name() : "test)");
        std::printf(format, arguments...);
        std::printf("\n");
        std::fflush(stdout);
    }

    static LONG WINAPI crashed(EXCEPTION_POINTERS* what) {
        const EXCEPTION_RECORD& record = *what->ExceptionRecord;
        const auto* const at = static_cast<const char*>(record.ExceptionAddress);
        HMODULE module = nullptr;
        char name[MAX_PATH] = "(no module)";
        if (GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                   GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                               at, &module))
            GetModuleFileNameA(module, name, MAX_PATH);
        say("crashed: exception %08lx at %s + %x", record.ExceptionCode, name,
            static_cast<unsigned>(at - reinterpret_cast<const char*>(module)));
        return EXCEPTION_EXECUTE_HANDLER;
    }

    static DWORD WINAPI watch(void*) {
        while (!test_ || GetTickCount() - started_ < kPatience) Sleep(1000);
        say("hangs");
        TerminateProcess(GetCurrentProcess(), 1);
        return 0;
    }

    inline static const testing::TestInfo* volatile test_ = nullptr;
    inline static volatile DWORD started_ = 0;
};

}  // namespace tunovka
