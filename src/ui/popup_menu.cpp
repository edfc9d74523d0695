#include "ui/popup_menu.h"

#include "ui/form.h"

namespace tunovka {

PopupMenu::PopupMenu(const std::vector<Item>& items) : menu_(CreatePopupMenu()) {
    fill(menu_, items, nullptr);
}

PopupMenu::~PopupMenu() {
    DestroyMenu(menu_);
}

void PopupMenu::fill(HMENU menu, const std::vector<Item>& items, const Entry* parent) {
    int position = 0;
    for (const Item& item : items) {
        Entry& entry = entries_.emplace(item.name, Entry{menu, ++lastId_, position++, parent, {}})
                           .first->second;
        const UINT state = item.enabled ? MF_ENABLED : MF_GRAYED;
        const HMENU below = item.items.empty() ? nullptr : CreatePopupMenu();
        if (below) fill(below, item.items, &entry);
        const UINT kind = below ? MF_POPUP : *item.caption ? MF_STRING : MF_SEPARATOR;
        AppendMenuW(menu, kind | state, below ? reinterpret_cast<UINT_PTR>(below) : entry.id,
                    item.caption);
    }
}

void PopupMenu::setEnabled(const std::wstring& name, bool enabled) {
    const Entry& changed = entries_.at(name);
    EnableMenuItem(changed.menu, changed.position,
                   MF_BYPOSITION | (enabled ? MF_ENABLED : MF_GRAYED));
}

bool PopupMenu::isOn(const Entry& entry) {
    const UINT state = GetMenuState(entry.menu, entry.position, MF_BYPOSITION);
    return !(state & (MF_GRAYED | MF_DISABLED));
}

bool PopupMenu::isEnabled(const std::wstring& name) const {
    return isOn(entries_.at(name));
}

void PopupMenu::choose(const std::wstring& name) {
    const Entry& chosen = entries_.at(name);
    for (const Entry* one = &chosen; one; one = one->parent)
        if (!isOn(*one)) return;
    if (chosen.onClick) chosen.onClick();
}

void PopupMenu::show(Form& form, Point screen) {
    const Form::Depth alive(&form);
    SetForegroundWindow(form.handle());
    const UINT chosen = TrackPopupMenu(menu_, TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON,
                                       screen.x, screen.y, 0, form.handle(), nullptr);
    PostMessageW(form.handle(), WM_NULL, 0, 0);  // lets the menu go away at the next click outside
    for (const auto& [name, entry] : entries_) {
        if (chosen && entry.id == chosen && !form.isClosing()) {
            choose(name);
            return;
        }
    }
}

}  // namespace tunovka
