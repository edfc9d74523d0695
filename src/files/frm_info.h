#pragma once

#include <memory>
#include <vector>

#include "core/loop.h"
#include "ui/form.h"
#include "ui/label.h"
#include "ui/program_links.h"
#include "ui/text_field.h"

namespace tunovka {

// The file information window: where a file lies, its size, dates and attributes and its ID3v1 tag.
// It is filled by the text written into its `txtodkaz` and then shown modally.
class frminfo : public Form {
  public:
    explicit frminfo(HWND owner);

    // A file's full path, or "chyba" for an item that names no file: a warning then blinks until
    // the window is closed. What cannot be read stays empty and is told in a notice.
    TextBox txtodkaz;

    TextField lblPath, lblvelkosť, lbldatvyt, lbldatzmena, lbldatotvor;
    Label lblznak;  // one line for each attribute
    TextField lbltitul, lblautor, lblalbum, lblrok, lblpoznamka;
    Label lblvystraha;
    Timer Timer1;

  protected:
    Size arrange(int top) override;
    void onUnload() override;
    void onAccept() override { unload(); }
    void onCancel() override { unload(); }
    void onPaintGround(HDC dc) const override;

  private:
    // A value with the caption beside it.
    struct Row {
        std::unique_ptr<Label> caption;
        TextField* value;
    };
    Row row(const wchar_t* caption, TextField& value);

    void txtodkaz_Change();
    void clear();
    void warn();
    void showFile(const std::wstring& path);

    std::vector<Row> file_, tag_;
    RECT fileCard_{}, tagCard_{};
};

}  // namespace tunovka
