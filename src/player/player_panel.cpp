#include "player/player_panel.h"

#include <oleacc.h>

#include <algorithm>
#include <cmath>

#include "core/disk_questions.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/multimedialny.h"
#include "core/paths.h"
#include "core/text.h"
#include "player/panel_texts.h"
#include "ui/form.h"
#include "ui/frm_box.h"
#include "ui/painting.h"

namespace tunovka {
namespace {

constexpr int kHeight = 68;
constexpr int kGap = 6;
constexpr int kAroundText = 3;  // above and below the lines of the box
constexpr int kProgressHeight = 12;
constexpr int kVolumeWidth = 18;
constexpr int kKnob = 8;
constexpr UINT kTick = 250;  // milliseconds

Image::ImageArgs button(const wchar_t* name, const wchar_t* text, Form& form, const wchar_t* normal,
                        const wchar_t* pressed) {
    return {.name = name,
            .text = text,
            .parent = &form,
            .normal = normal,
            .pressed = pressed,
            .anyButton = true};
}

// Whether the file is what plays, or an entry of the playlist that plays. Asks disks.
bool isPartOf(const std::wstring& playing, const std::wstring& path) {
    // A file that is gone is known by its path alone.
    const auto isIt = [&](const std::wstring& file) {
        return lowerCased(file) == lowerCased(path) || FileSystemObject::sameFile(file, path);
    };
    if (isIt(playing)) return true;
    const std::wstring name = lowerCased(fileName(path));
    try {
        const std::vector<ListedFile> files = filesOf(playing);
        return std::ranges::any_of(files, [&](const ListedFile& file) {
            // The cheap question first: a long list names many files.
            return lowerCased(fileName(file.path)) == name && isIt(file.path);
        });
    } catch (const RuntimeError&) {
        return true;  // the list cannot be read any more: it may be any of its files
    }
}

}  // namespace

// For play the pressed picture is the second one, for the others the first.
PlayerPanel::PlayerPanel(Form& form, Owner owner)
    : Image1(button(L"Image1", L"Prehrať", form, L"play1", L"play2")),
      Image2(button(L"Image2", L"Stop", form, L"stop2", L"stop1")),
      Image3(button(L"Image3", L"Pauza", form, L"pause2", L"pause1")),
      Image4(button(L"Image4", L"Predchádzajúci", form, L"prev2", L"prev1")),
      Image5(button(L"Image5", L"Nesledovný", form, L"next2", L"next1")),
      PicProgres({.name = L"PicProgres",
                  .text = L"Ukazovateľ priebehu",
                  .parent = &form,
                  .role = ROLE_SYSTEM_SLIDER,
                  .tabStop = true}),
      PicHlas({.name = L"PicHlas",
               .text = L"Hlasitosť",
               .parent = &form,
               .role = ROLE_SYSTEM_SLIDER,
               .tabStop = true,
               .rising = true}),
      PicČas({.name = L"PicČas", .parent = &form, .container = true, .role = ROLE_SYSTEM_GROUPING}),
      lblnapis({.name = L"lblnapis", .parent = &PicČas}),
      lblušielčas({.name = L"lblušielčas", .parent = &PicČas}),
      lblčas({.name = L"lblčas", .parent = &PicČas, .format = DT_RIGHT}),
      form_(form),
      owner_(std::move(owner)) {
    volumeShare_ = std::clamp(1 + mp.Volume() / 4000.0, 0.0, 1.0);
    PicProgres.setTip(PicProgres.text());
    PicHlas.setTip(PicHlas.text());
    lblušielčas.setTip(L"Aktuálne prehrávaný čas");
    lblčas.setTip(L"Celkový čas titulu");
    Timer1.setInterval(kTick);

    Image1.onPress = [this] { Image1_MouseDown(); };
    Image2.onPress = [this] { Image2_MouseDown(); };
    Image3.onPress = [this] {
        playing_ = false;
        if (!mp.FileName().empty()) mp.Pause();
    };
    Image4.onPress = [this] { step(&MediaPlayer::Previous); };
    Image5.onPress = [this] { step(&MediaPlayer::Next); };

    PicProgres.onPaint = [this](HDC dc, Size size) {
        const int right = static_cast<int>(progress_ * size.width);
        paintSlider(dc, size, {0, 0, right, size.height}, form_.scaled(kKnob));
    };
    PicProgres.onMouseMove = [this](MouseButton held, Point at) { PicProgres_MouseMove(held, at); };
    PicProgres.onMouseUp = [this](MouseButton button, Point at) { PicProgres_MouseUp(button, at); };
    PicProgres.onMove = [this](StripMove move) { PicProgres_KeyDown(move); };
    PicProgres.value = [this] { return lblušielčas.text(); };

    PicHlas.onPaint = [this](HDC dc, Size size) {
        const int top = size.height - static_cast<int>(volumeShare_ * size.height);
        paintSlider(dc, size, {0, top, size.width, size.height}, form_.scaled(kKnob));
    };
    PicHlas.onMouseMove = [this](MouseButton held, Point at) { PicHlas_MouseMove(held, at); };
    PicHlas.onMouseUp = [this](MouseButton button, Point at) { PicHlas_MouseMove(button, at); };
    PicHlas.onMove = [this](StripMove move) { setVolume(movedVolume(move, volumePercent())); };
    PicHlas.onWheel = [this](int notches) { setVolume(volumePercent() + notches * kVolumeStep); };
    PicHlas.value = [this] { return decimal(volumePercent()) + L" %"; };
    PicČas.onPaint = [](HDC dc, Size size) {
        const RECT area{0, 0, size.width, size.height};
        fillGradient(dc, area, colors().field, colors().track);
        frameRect(dc, area, colors().edge);
    };

    mp.onNotification = [this](const MediaNotification& what) { mp_Notification(what); };
    Timer1.onTick = [this] {
        if (playing_) showPosition();
        lblnapis.setText(scrolledByOne(lblnapis.text()));
    };
}

int PlayerPanel::panelHeight(const Form& form) {
    const int texts = 2 * (Skin::fontHeight(form.dpi()) + form.scaled(kAroundText));
    return std::max(form.scaled(kHeight), texts + form.scaled(kProgressHeight + kGap));
}

void PlayerPanel::layout(const Rect& area) {
    const int gap = form_.scaled(kGap);
    const int middle = area.y + area.height / 2;
    int x = area.x;
    for (Image* image : {&Image1, &Image2, &Image3, &Image4, &Image5}) {
        const Size size = image->naturalSize();
        image->setBounds({x, middle - size.height / 2, size.width, size.height});
        x += size.width + gap;
    }
    const int volumeWidth = form_.scaled(kVolumeWidth);
    const int left = x + gap;
    const int width = std::max(0, area.right() - volumeWidth - 2 * gap - left);
    const int progress = form_.scaled(kProgressHeight);
    PicProgres.setBounds({left, area.bottom() - progress, width, progress});
    PicHlas.setBounds({area.right() - volumeWidth, area.y, volumeWidth, area.height});
    const Rect display{left, area.y, width, area.height - progress - gap};
    PicČas.setBounds(display);

    const int margin = form_.scaled(8);
    const int line = (display.height - form_.scaled(2 * kAroundText)) / 2;
    const int inner = std::max(0, display.width - 2 * margin);
    const int top = form_.scaled(kAroundText);
    lblnapis.setBounds({margin, top, inner, line});
    lblušielčas.setBounds({margin, top + line, inner / 2, line});
    lblčas.setBounds({margin + inner / 2, top + line, inner - inner / 2, line});
}

void PlayerPanel::play(const std::wstring& path) {
    if (mp.FileName() == path) {
        mp.Play();
    } else {
        showNothing();  // of the last file; of the new one nothing is known yet
        showTitle(openingText(path));
        mp.setFileName(path);
    }
    playing_ = true;
    stopped_ = false;
}

void PlayerPanel::release(const std::wstring& path) {
    const std::wstring playing = mp.FileName();
    if (playing.empty()) return;
    const auto ask = [playing, path] { return isPartOf(playing, path); };
    if (!askDisk(path, ask).value_or(true)) return;
    const auto untilClosed = mp.startRelease();
    showNothing();
    askDisk(path, [untilClosed] { return untilClosed(), true; });
}

void PlayerPanel::Image1_MouseDown() {
    const std::optional<std::wstring> path = owner_.selectedPath();
    if (!path) return;
    playing_ = true;
    yieldNow();
    play(*path);
}

void PlayerPanel::Image2_MouseDown() {
    if (!playing_) return;
    showNothing();
    stopped_ = true;
    yieldNow();
    mp.Stop();
    mp.setCurrentPosition(0);
}

void PlayerPanel::step(void (MediaPlayer::*step)()) {
    yieldNow();
    if (MultiMedialny::isWritablePlaylistName(mp.FileName())) (mp.*step)();
}

void PlayerPanel::PicProgres_MouseMove(MouseButton held, Point at) {
    if (held != MouseButton::Left || !playing_) return;
    const int width = PicProgres.clientSize().width;
    showProgress(width > 0 ? static_cast<double>(at.x) / width : 0);
}

void PlayerPanel::PicProgres_MouseUp(MouseButton button, Point at) {
    if (button != MouseButton::Left || !playing_) return;
    PicProgres_MouseMove(button, at);
    mp.setCurrentPosition(seekPosition(at.x, PicProgres.clientSize().width, mp.Duration()));
}

void PlayerPanel::PicProgres_KeyDown(StripMove move) {
    if (!playing_) return;
    mp.setCurrentPosition(movedPosition(move, mp.CurrentPosition(), mp.Duration()));
    showPosition();
}

void PlayerPanel::PicHlas_MouseMove(MouseButton held, Point at) {
    const int height = PicHlas.clientSize().height;
    if (held != MouseButton::Left || height <= 0) return;
    volumeShare_ = std::clamp(1 - static_cast<double>(at.y) / height, 0.0, 1.0);
    PicHlas.showValue();
    mp.setVolume(stripVolume(at.y, height));
}

void PlayerPanel::mp_Notification(const MediaNotification& what) {
    using Kind = MediaNotification::Kind;
    const bool isChange = what.kind == Kind::PlayStateChange && what.from != PlayState::Playing;
    if (!stopped_ && (what.kind == Kind::NewStream || isChange)) showDetails();
    if (what.kind == Kind::EndOfStream) showNoTimes();
    if (what.kind != Kind::Error) return;
    if (lblčas.text().empty()) showNothing();  // no more than that it was being opened
    playing_ = false;
    const std::wstring text = L"Pri pokuse prehrať požadovaný súbor došlo ku chybe :" +
                              mp.ErrorDescription() +
                              L"Cheš prehrať súbor v predvolenom programe ?";
    if (ask(L"CHYBA", text, L"ÁNO;NIE") == 1) owner_.playElsewhere();
}

void PlayerPanel::showDetails() {
    const ClipDetails details = mp.details();
    showTitle(nowPlayingText(details.author, details.title));
    lblčas.setText(timeText(mp.Duration()));
}

void PlayerPanel::showTitle(const std::wstring& text) {
    lblnapis.setText(text);
    PicČas.setText(trimBlanks(text));  // what a screen reader tells stands still
}

void PlayerPanel::showProgress(double share) {
    if (share == progress_) return;
    progress_ = std::clamp(share, 0.0, 1.0);
    PicProgres.showValue();
}

void PlayerPanel::showNoTimes() {
    playing_ = false;
    showProgress(0);
    lblčas.setText(L"");
    lblušielčas.setText(L"");
}

void PlayerPanel::showNothing() {
    showNoTimes();
    showTitle(L"");
}

void PlayerPanel::setVolume(int percent) {
    percent = std::clamp(percent, 0, 100);
    volumeShare_ = percent / 100.0;
    PicHlas.showValue();
    mp.setVolume(percentVolume(percent));
}

int PlayerPanel::volumePercent() const {
    return static_cast<int>(std::lround(volumeShare_ * 100));
}

void PlayerPanel::showPosition() {
    const double duration = mp.Duration();
    if (duration == 0) return;
    const double position = mp.CurrentPosition();
    lblušielčas.setText(timeText(position));
    if (GetCapture() != PicProgres.handle()) showProgress(progressFraction(position, duration));
}

}  // namespace tunovka
