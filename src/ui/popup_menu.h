#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/non_copyable.h"
#include "ui/geometry.h"

namespace tunovka {

class Form;

// A menu that opens at a point. Entries are known by their names.
class PopupMenu : NonCopyable {
  public:
    struct Item {
        const wchar_t* name;
        const wchar_t* caption = L"";  // "" for a separator
        bool enabled = true;
        std::vector<Item> items = {};  // a sub-menu when not empty
    };

    explicit PopupMenu(const std::vector<Item>& items);
    ~PopupMenu();

    // What an entry does.
    std::function<void()>& onClick(const std::wstring& name) { return entries_.at(name).onClick; }
    void setEnabled(const std::wstring& name, bool enabled);
    bool isEnabled(const std::wstring& name) const;

    // Runs an entry's routine as if it had been chosen, unless it or a menu that it lies in is off.
    void choose(const std::wstring& name);

    // Opens the menu at a point on the screen and runs what is chosen, after the menu is gone.
    void show(Form& form, Point screen);

    HMENU handle() const { return menu_; }

  private:
    struct Entry {
        HMENU menu;  // the one that it lies in
        UINT id;     // command number
        int position;
        const Entry* parent;
        std::function<void()> onClick;
    };
    void fill(HMENU menu, const std::vector<Item>& items, const Entry* parent);
    static bool isOn(const Entry& entry);

    HMENU menu_;
    UINT lastId_ = 0;
    std::map<std::wstring, Entry> entries_;
};

}  // namespace tunovka
