#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/window.h"

namespace tunovka {

// The list of the machine's drives, as "E:" or "E: [DATA]"; once filled, one is always chosen.
class DriveList : public Window {
  public:
    DriveList(const wchar_t* name, const std::wstring& accessibleName, Window& parent);

    // Reads the machine's drives again and keeps the chosen one. The first call chooses the drive
    // of the current directory; before it the list is empty.
    void refresh();

    const std::wstring& drive() const { return drive_; }
    std::wstring letter() const;  // of that drive: "E:"
    // Chooses a drive by its letter and colon, letter case aside; onChange runs when it is another
    // than before. Raises kDeviceUnavailable for a drive that is not in the list.
    void setDrive(const std::wstring& drive);

    std::function<void()> onChange;

  protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
    std::optional<LRESULT> onCommand(WORD code) override;

  private:
    void choose(int position);
    void chooseFirst();

    std::vector<std::wstring> drives_;
    std::wstring drive_;
    bool cancelled_ = false;  // the open list was left without a choice
};

}  // namespace tunovka
