#pragma once

#include "ui/image.h"
#include "ui/label.h"
#include "ui/picture_box.h"

namespace tunovka {

class Form;

// The phases of a search as its panel names them.
inline constexpr std::wstring_view kCollectingPhase = L"Prebieha prehľadávanie adresára";
inline constexpr std::wstring_view kSortingOutPhase = L"Prebieha spracovanie súborov";
inline constexpr std::wstring_view kListingPhase = L"Prebieha výpis súborov";

// The panel over the result list that a running search shows: its phase, how far it is, and the
// button that stops it.
class ScanPanel {
  public:
    explicit ScanPanel(Form& form);

    // Shows the panel at the start of a search, in its first phase.
    void begin();
    void end();
    void setPhase(std::wstring_view phase);

    // Names the folder that is being visited and how many files were found so far; at most ten
    // times a second, whenever it is called.
    void progress(const std::wstring& folder, std::size_t found);

    // Centres the panel in the form.
    void place();

    PictureBox PicInfo;
    Label Label1;                                                         // the phase
    static constexpr wchar_t Istop1[] = L"istop1", Istop2[] = L"istop2";  // its pictures
    Image Istop;

  private:
    Form& form_;
    Label folder_, found_;
    DWORD shownAt_ = 0;
};

}  // namespace tunovka
