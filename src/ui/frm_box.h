#pragma once

#include <memory>
#include <vector>

#include "ui/form.h"
#include "ui/image.h"
#include "ui/label.h"
#include "ui/picture_box.h"
#include "ui/read_only_text.h"

namespace tunovka {

// The program's message box. It is built for one question and gone after its answer.
class frmBox : public Form {
  public:
    frmBox(HWND owner, const std::wstring& title, const std::wstring& text,
           const std::wstring& buttons);

    std::int16_t answer() const { return answer_; }

  protected:
    void onLayout() override;
    void onCancel() override { unload(); }
    void onPaintGround(HDC dc, const RECT& area) const override;

  private:
    void addButton(const std::wstring& caption);
    int textHeight(int width, int limit);

    std::int16_t answer_ = 0;
    TitleStrip PicZahlavie;
    Image IZavri;
    Label lblotazka;
    Label lblpokus;          // measures the text on one line, never seen
    ReadOnlyText scrolled_;  // stands in for the label when the text is taller than the screen
    std::vector<std::unique_ptr<Image>> Itlačítko;
    std::vector<std::wstring> lblnadpis;  // the captions, drawn on the buttons
};

}  // namespace tunovka
