#pragma once

#include <functional>
#include <optional>
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

    // Closes a file that is about to be changed, when it plays or is an entry of the playlist that
    // plays. Waits for the disk's answer, then for a second at most; windows are painted meanwhile.
    void release(const std::wstring& path);

    MediaPlayer mp;
    Image Image1, Image2, Image3, Image4, Image5;
    PictureBox PicProgres, PicHlas, PicČas;
    Label lblnapis, lblušielčas, lblčas;
    Timer Timer1;

    bool isPlaying() const { return playing_; }

  private:
    void Image1_MouseDown();
    void Image2_MouseDown();
    void PicProgres_MouseMove(MouseButton held, Point at);
    void PicProgres_MouseUp(MouseButton button, Point at);
    void PicProgres_KeyDown(StripMove move);
    void PicHlas_MouseMove(MouseButton held, Point at);
    void mp_Notification(const MediaNotification& what);

    void showProgress(double share);
    void showPosition();
    void showDetails();
    void showTitle(const std::wstring& text);
    void showNoTimes();
    void showNothing();
    void step(void (MediaPlayer::*step)());
    void setVolume(int percent);
    int volumePercent() const;

    Form& form_;
    Owner owner_;
    bool playing_ = false;    // the playing flag
    bool stopped_ = false;    // by the person: what is told late is not shown
    double progress_ = 0;     // share of the progress strip that is filled
    double volumeShare_ = 0;  // share of the volume strip that is filled
};

}  // namespace tunovka
