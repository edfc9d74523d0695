#pragma once

#include <cstddef>
#include <string>

#include "ui/form.h"
#include "ui/image.h"
#include "ui/label.h"
#include "ui/text_field.h"

namespace tunovka {

// A question that is answered by typing one line.
struct InputRequest {
    std::wstring title;
    std::wstring prompt;
    std::wstring answer;       // what stands in the field at first
    std::size_t selected = 0;  // letters at its start, so that typing replaces them
};

// Asks modally over a form. Returns the text as typed, "" when the person cancels.
std::wstring askForText(const Form& owner, const InputRequest& request);

// The window behind askForText().
class frmVstup : public Form {
  public:
    frmVstup(const Form& owner, const InputRequest& request);

    const std::wstring& answer() const { return answer_; }

  protected:
    Size arrange(int top) override;
    void onAccept() override;
    void onCancel() override { unload(); }
    void onPaintGround(HDC dc) const override;

  private:
    std::wstring answer_;
    Label lblotazka;
    TextField txtodpoved;
    Image Iano, Izrusit;
};

}  // namespace tunovka
