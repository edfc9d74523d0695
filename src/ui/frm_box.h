#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ui/box_request.h"
#include "ui/form.h"
#include "ui/image.h"
#include "ui/label.h"
#include "ui/text_field.h"

namespace tunovka {

// The request to the message box and its answer, as every question of the program hands them over:
// 1, 2 or 3 for the buttons in order, 0 when the box was closed without a choice.
extern std::wstring BoxTitle, BoxText, BoxButtons;
extern std::int16_t BoxAnswer;

// Shows frmBox modally with the three texts set and returns its answer. A box that is opened over
// another one never answers for it.
std::int16_t ask(const std::wstring& title, const std::wstring& text, const std::wstring& buttons);
inline std::int16_t ask(const BoxRequest& request) {
    return ask(request.title, request.text, request.buttons);
}

// Tells why something cannot be done.
inline void tellWhy(const std::wstring& why) {
    ask(L"CHYBA", why, L"No čo už ...");
}

// Shows a notice from the message loop, after any box that is open has been answered.
void notifyLater(const std::wstring& title, const std::wstring& text, const std::wstring& button);

// Shows unhandled failures as notices: title "CHYBA", number and description.
void installFailureNotice();

// The program's message box. It is built for one question and gone after its answer.
class frmBox : public Form {
  public:
    frmBox(HWND owner, const std::wstring& title, const std::wstring& text,
           const std::wstring& buttons);

    std::int16_t answer() const { return answer_; }

  protected:
    Size arrange(int title) override;
    void onCancel() override { unload(); }
    bool onShortcut(WORD key) override;

  private:
    void addButton(const std::wstring& caption);
    int textHeight(int width, int limit);
    int placeButtons(int top, int inner);

    std::int16_t answer_ = 0;
    Label lblotazka;
    Label lblpokus;       // measures the text on one line, never seen
    TextField scrolled_;  // stands in for the label when the text is taller than the screen
    std::vector<std::unique_ptr<Image>> Itlačítko;
    std::vector<std::wstring> lblnadpis;  // the captions, drawn on the buttons
};

}  // namespace tunovka
