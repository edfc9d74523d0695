#pragma once

// How a test sees and moves the stand-in for the media control. The DLL has a run-time library of
// its own, so only plain values pass.
struct FakeControl {
    virtual int living() = 0;          // controls that exist
    virtual bool activeInPlace() = 0;  // the last one created
    virtual bool seen() = 0;           // its window, or one around it, is shown

    // The calls since the last asking, each ended by ";": "FileName=E:\a.mp3;Play;".
    virtual const wchar_t* takeCalls() = 0;

    // Raises an event of the last control created, by name.
    virtual void raise(const wchar_t* event, long first = 0, long second = 0) = 0;

    virtual void setText(const wchar_t* property, const wchar_t* text) = 0;
    virtual void setNumber(const wchar_t* property, double number) = 0;

    // What fails from now on: "create", "activate", "events", "classInfo", "FileName", "Play"; ""
    // for nothing.
    virtual void refuse(const wchar_t* what) = 0;

    // Whether it raises, from inside the calls, the events that a real control raises.
    virtual void behaveLikeARealOne(bool behave) = 0;
};

using FakeControlEntry = FakeControl*(__cdecl*)();  // exported as "fakeControl"
