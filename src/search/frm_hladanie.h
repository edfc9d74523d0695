#pragma once

#include "search/search_result.h"
#include "ui/form.h"
#include "ui/image.h"
#include "ui/image_scroller.h"
#include "ui/label.h"
#include "ui/list_view.h"
#include "ui/picture_box.h"
#include "ui/popup_menu.h"
#include "ui/program_links.h"

namespace tunovka {

// The panel of a running search: its phase, how far it is, and the button that stops it.
class ScanPanel {
  public:
    explicit ScanPanel(Form& form);

    // Shows the panel at the start of a search, in its first phase.
    void begin();
    void end();

    // Names the visited folder and how many files were found so far, ten times a second at most.
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

// The search window: lists every music file and playlist below a folder, when it becomes active
// with another folder than the last one. A folder chosen while a search runs takes over from it.
class frmhladanie : public Form {
  public:
    explicit frmhladanie(ProgramLinks& links);

    // Shows the window, loading it when it is not there; it finds its folder by itself.
    static void open(ProgramLinks& links);

    Label lbladresar;  // the folder, also the memory of the last one searched
    Label Label3, lblpočet;
    Label lblbar;  // path of the selected row
    SearchResult result;
    ListView Lview;
    ImageScroller scroller;
    ScanPanel panel;
    PopupMenu menu1;

  protected:
    Size arrange(int stripBottom) override;
    void onActivated() override;
    void onAccept() override;

  private:
    void bindHandlers();
    void startScan();
    void ScanFolder(const std::wstring& folder);
    void listFiles(std::vector<std::wstring> files);
    void showResult();
    bool isAbandoned() const { return wanted_ || isClosing(); }

    void Lview_ItemClick();
    void prehrat_Click();
    void uloz_playlist_Click();
    void showMenu(Point screen);
    void sortBy(SortOrder order);

    ProgramLinks& links_;
    bool wanted_ = false;  // a folder waits to be searched
    LoopSignal startScan_;
};

}  // namespace tunovka
