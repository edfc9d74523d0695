#pragma once

#include "core/multimedialny.h"

namespace tunovka {

using MultiMedialny::Color;

// What all is painted in: the skin's colours or, while high contrast is chosen, the system's.
struct Colors {
    bool plain;  // high contrast: no picture and no gradient behind a text

    Color ground, groundLight;  // of a window: most of it, and where light falls on it from above
    Color rim, rimLight;        // its two frames, from outside
    Color text, textHalo;       // labels; the two frames around what has the focus
    Color textOff;              // of what cannot be pressed now
    Color title, titleText;
    Color button, buttonText;      // of a button with a caption, where no picture is drawn
    Color card;                    // a pale plain field on the ground
    Color edge;                    // frames around fields
    Color field;                   // lists, trees, empty strips
    Color selected, selectedText;  // the chosen row of the control with the focus
    Color selectedElsewhere;       // ... of a control without it
    Color dropTarget;              // the row under a drag
    Color bar;                     // the filled part of a strip
    Color track;                   // behind a thumb; the lower part of a panel over a window
    Color headerLight, header;     // of a list, from above
    Color panelLight;              // the upper part of a panel
};

const Colors& colors();

// Looks at the system's settings again, after they have changed.
void refreshColors();
// Takes the skin's colours, or the system's as they are now.
void chooseColors(bool highContrast);

// A colour that an entry's or a label's text has been given, as it is to be painted now.
Color shownText(Color given);

// The same for a row of a tree or a list, with the ground that it lies on.
enum class RowState { Plain, Selected, SelectedElsewhere, DropTarget };
struct RowColors {
    Color ground, text;
};
RowColors rowColors(Color given, RowState state);

}  // namespace tunovka
