#pragma once

#include <functional>
#include <string>

#include "core/loop.h"
#include "player/media_player.h"
#include "ui/image.h"
#include "ui/label.h"
#include "ui/picture_box.h"

namespace tunovka {

class Form;

// The explorer's player: five picture buttons, the progress strip that also seeks, the volume
// strip, the times and the scrolling text, over the invisible player `mp`.
class PlayerPanel {
  public:
    struct Owner {
        // Path of the selected node's file, "" when it names none; nullopt without a selection.
        std::function<std::optional<std::wstring>()> selectedPath;
        // Plays the selected file in the program that the system associates with it.
        std::function<void()> playElsewhere;
    };

    PlayerPanel(Form& form, Owner owner);

    // Lays the panel out within an area, in pixels. Its height is panelHeight().
    void layout(const Rect& area);
    static int panelHeight(const Form& form);

    // Plays a file: a new one is opened, the same one goes on. Sets the playing flag.
    void play(const std::wstring& path);

    // Lets go of a file that is about to be renamed, moved, replaced or deleted, when it plays or
    // is an entry of the playlist that plays; the display is empty then. Waits until it is free,
    // though never longer than two seconds.
    void letGo(const std::wstring& path);

    MediaPlayer mp;
    Image Image1, Image2, Image3, Image4, Image5;
    PictureBox PicProgres, PicHlas, PicČas;
    Label lblnapis, lblušielčas, lblčas;
    Timer Timer1;

    bool isPlaying() const { return playing_; }

  private:
    void bind();
    void Image1_MouseDown();
    void Image2_MouseDown();
    void Image3_MouseDown();
    void Image4_MouseDown();
    void Image5_MouseDown();
    void PicProgres_Paint(HDC dc, Size size) const;
    void PicProgres_MouseMove(MouseButton held, Point at);
    void PicProgres_MouseUp(MouseButton button, Point at);
    void PicProgres_KeyDown(StripMove move);
    void PicHlas_Paint(HDC dc, Size size) const;
    void PicHlas_MouseMove(MouseButton held, Point at);
    void mp_EndOfStream();
    void mp_PlayStateChange(int oldState);
    void mp_Error();
    void Timer1_Tick();

    bool holds(const std::wstring& path) const;
    void showProgress(double share);
    void showPosition();
    void showDetails();
    void showOpening(const std::wstring& path);
    void showTitle(const std::wstring& text);
    void showNothing();
    void setVolume(int percent);
    int volumePercent() const;

    Form& form_;
    Owner owner_;
    bool playing_ = false;    // the playing flag
    bool opening_ = false;    // nothing is known yet of the file that was set
    double progress_ = 0;     // share of the progress strip that is filled
    double volumeShare_ = 0;  // share of the volume strip that is filled
};

}  // namespace tunovka
