#include "files/frm_info.h"

#include <algorithm>
#include <cmath>

#include "core/disk_questions.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/id3v1.h"
#include "core/text.h"
#include "ui/frm_box.h"
#include "ui/painting.h"

namespace tunovka {
namespace {

// Sizes in 96ths of an inch.
constexpr int kWidth = 480;
constexpr int kMargin = 12;   // between rim, cards and each other
constexpr int kPadding = 12;  // within a card
constexpr int kColumnGap = 14;
constexpr int kRowGap = 5;
constexpr int kGroupGap = 9;  // between rows that do not belong together
constexpr int kMostPathLines = 10;

constexpr UINT kBlink = 300;  // milliseconds

TextField::TextFieldArgs value(const wchar_t* name, Form* form, bool wraps = false) {
    return {.name = name, .parent = form, .ground = colors().card, .wraps = wraps};
}

std::wstring decimalSeparator() {
    wchar_t text[8] = L"";
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text, static_cast<int>(std::size(text)));
    return text;
}

// The nearest value of single precision. It goes through memory, because the processor may compute
// with more digits than a float has.
double single(double value) {
    volatile float stored = static_cast<float>(value);
    return stored;
}

std::wstring cutToHundredths(double value) {
    const auto hundredths = static_cast<std::uint64_t>(std::floor(single(value * 100)));
    std::wstring text = decimal(hundredths / 100);
    const unsigned rest = hundredths % 100;
    if (rest == 0) return text;
    text += decimalSeparator();
    text += static_cast<wchar_t>(L'0' + rest / 10);
    if (rest % 10 != 0) text += static_cast<wchar_t>(L'0' + rest % 10);
    return text;
}

// "1,5 kB (     1 536 bajtov)": kB through exactly 1024 of them, MB above; in single precision,
// with two decimals cut off and no trailing zeros.
std::wstring sizeText(std::uint64_t bytes) {
    const double kilobytes = single(static_cast<double>(bytes) / 1024);
    const bool small = kilobytes <= 1024;
    const double shown = small ? kilobytes : single(static_cast<double>(bytes) / 1024 / 1024);
    return cutToHundredths(shown) + (small ? L" kB" : L" MB") + L" (" + formatGrouped(bytes) +
           L" bajtov)";
}

// "5.1.2024"; "" for a date that the system could not give.
std::wstring dateText(const FileDate& date) {
    if (date.year == 0) return {};
    return decimal(date.day) + L"." + decimal(date.month) + L"." + decimal(date.year);
}

// One line, ended by CR LF, for each of read-only, system and hidden that is set.
std::wstring attributeLines(std::uint32_t attributes) {
    std::wstring lines;
    if (attributes & 1) lines += L"len na čítanie\r\n";
    if (attributes & 4) lines += L"systémový súbor\r\n";
    if (attributes & 2) lines += L"skrytý súbor\r\n";
    return lines;
}

// What a worker has found out about a file, as far as it can be read.
struct Facts {
    bool there = false;
    std::optional<FileDetails> details;
    std::optional<MultiMedialny::Id3v1Tag> tag;
    std::optional<RuntimeError> failure;
};

Facts factsOf(const std::wstring& path) {
    Facts facts;
    const auto presence = FileSystemObject::presence(path);
    facts.there = presence == FileSystemObject::Presence::There;
    if (presence == FileSystemObject::Presence::Denied) facts.failure.emplace(kPermissionDenied);
    if (!facts.there) return facts;
    try {
        facts.details = FileSystemObject::details(path);
        facts.tag = MultiMedialny::ReadId3v1(path);
    } catch (const RuntimeError& error) {
        if (error.number == kBadRecordNumber) return facts;  // a short file has just no tag
        facts.there = FileSystemObject::FileExists(path);
        if (facts.there) facts.failure = error;
    }
    return facts;
}

}  // namespace

frminfo::frminfo(HWND owner)
    : Form({.name = L"frminfo",
            .title = L" Informácie o súbore",
            .size = {kWidth, 300},
            .owner = owner,
            .strip = L"Pic",
            .closer = L"Tlacitko"}),
      lblPath(value(L"lblPath", this, true)),
      lblvelkosť(value(L"lblvelkosť", this)),
      lbldatvyt(value(L"lbldatvyt", this)),
      lbldatzmena(value(L"lbldatzmena", this)),
      lbldatotvor(value(L"lbldatotvor", this)),
      lblznak({.name = L"lblznak", .parent = this, .wraps = true}),
      lbltitul(value(L"lbltitul", this)),
      lblautor(value(L"lblautor", this)),
      lblalbum(value(L"lblalbum", this)),
      lblrok(value(L"lblrok", this)),
      lblpoznamka(value(L"lblpoznamka", this)),
      lblvystraha({.name = L"lblvystraha",
                   .caption = L"Súbor neexistuje",
                   .parent = this,
                   .font = Skin::Font::Bold,
                   .color = MultiMedialny::palette().InfoColor,
                   .visible = false}) {
    file_.push_back(row(L"Umiestnenie:", lblPath));
    file_.push_back(row(L"Veľkosť:", lblvelkosť));
    file_.push_back(row(L"Vytvorený:", lbldatvyt));
    file_.push_back(row(L"Zmenený:", lbldatzmena));
    file_.push_back(row(L"Otvorený:", lbldatotvor));
    tag_.push_back(row(L"Titul:", lbltitul));
    tag_.push_back(row(L"Autor:", lblautor));
    tag_.push_back(row(L"Album:", lblalbum));
    tag_.push_back(row(L"Rok:", lblrok));
    tag_.push_back(row(L"Poznámka:", lblpoznamka));
    txtodkaz.onChange = [this] { txtodkaz_Change(); };
    Timer1.onTick = [this] { lblvystraha.setVisible(!lblvystraha.isVisible()); };
}

frminfo::Row frminfo::row(const wchar_t* caption, TextField& value) {
    value.setAccessibleName(std::wstring(caption, wcslen(caption) - 1));  // without its colon
    const std::wstring name = value.name() + L"_nadpis";
    return {std::make_unique<Label>(
                Label::LabelArgs{.name = name.c_str(), .caption = caption, .parent = this}),
            &value};
}

void frminfo::txtodkaz_Change() {
    const std::wstring request = txtodkaz.text();
    if (request.empty()) return;
    clear();
    if (request == kMissingFileCommand)
        warn();
    else
        showFile(request);
    layoutCentred();
}

void frminfo::clear() {
    Timer1.setInterval(0);
    lblvystraha.setVisible(false);
    lblznak.setText(L"");
    for (const std::vector<Row>* rows : {&file_, &tag_})
        for (const Row& row : *rows) row.value->setText(L"");
}

void frminfo::warn() {
    lblvystraha.setVisible(true);
    Timer1.setInterval(kBlink);
}

void frminfo::showFile(const std::wstring& path) {
    lblPath.setText(path);
    const auto facts = askDisk(path, [path] { return factsOf(path); });
    if (!facts) return;
    if (const auto& details = facts->details) {
        lblvelkosť.setText(sizeText(details->size));
        lbldatvyt.setText(dateText(details->created));
        lbldatzmena.setText(dateText(details->modified));
        lbldatotvor.setText(dateText(details->accessed));
        lblznak.setText(attributeLines(details->attributes));
    }
    if (const auto& tag = facts->tag) {
        using MultiMedialny::shownField;
        lbltitul.setText(shownField(tag->Title));
        lblautor.setText(shownField(tag->Artist));
        lblalbum.setText(shownField(tag->Album));
        lblrok.setText(shownField(tag->Year));
        lblpoznamka.setText(shownField(tag->Comment));
    }
    if (!facts->there && !facts->failure) return warn();
    if (facts->failure)
        notifyLater(L"CHYBA",
                    L"Nie je možné načítať všetky informácie o súbore.\rChyba č. " +
                        decimal(facts->failure->number) + L": " + facts->failure->description,
                    L"Rozumiem ...");
}

Size frminfo::arrange(int top) {
    const int line = Skin::fontHeight(dpi());
    const int margin = scaled(kMargin), padding = scaled(kPadding), rowGap = scaled(kRowGap);
    const int right = scaled(kWidth) - margin, left = margin + padding;
    int captions = 0;
    for (const std::vector<Row>* rows : {&file_, &tag_})
        for (const Row& row : *rows) captions = std::max(captions, row.caption->measured().width);
    const int valueLeft = left + captions + scaled(kColumnGap);
    const int valueWidth = right - padding - valueLeft;

    int y = top;
    const auto beginCard = [&](RECT& card) {
        y += margin;
        card = {margin, y, right, y};
        y += padding;
    };
    const auto endCard = [&](RECT& card) { card.bottom = y += padding - rowGap; };
    const auto place = [&](const Row& row) {
        const int height = std::clamp(row.value->heightAt(valueWidth), line, kMostPathLines * line);
        row.caption->setBounds({left, y, captions, line});
        row.value->setBounds({valueLeft, y, valueWidth, height});
        y += height + rowGap;
    };
    const auto beginGroup = [&] { y += scaled(kGroupGap - kRowGap); };

    beginCard(fileCard_);
    for (const Row& row : file_) {
        place(row);
        if (row.value == &lblPath || row.value == &lblvelkosť) beginGroup();
    }
    const auto lines = static_cast<int>(std::ranges::count(lblznak.text(), L'\n'));
    if (lines > 0) beginGroup();
    lblznak.setBounds({valueLeft, y, valueWidth, lines * line});
    if (lines > 0) y += lines * line + rowGap;
    if (Timer1.interval()) {
        beginGroup();
        lblvystraha.setBounds({valueLeft, y, valueWidth, line});
        y += line + rowGap;
    }
    endCard(fileCard_);

    beginCard(tagCard_);
    for (const Row& row : tag_) place(row);
    endCard(tagCard_);
    return {scaled(kWidth), y + margin};
}

void frminfo::onUnload() {
    Timer1.setInterval(0);
}

void frminfo::onPaintGround(HDC dc) const {
    paintCard(dc, fileCard_);
    paintCard(dc, tagCard_);
}

}  // namespace tunovka
