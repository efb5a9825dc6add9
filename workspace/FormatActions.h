#pragma once

#include "workspace/SideMenuBar.h"

class Applet;

// What the side bars' zoom and format buttons do to the open document, and
// the format bar showing the alignment and bullet of the paragraph at the
// caret.
class FormatActions
{
public:
    // Zoom goes by the document's own zoom (the applet answers "Zoom" with
    // its own value, which stays 100): only 100 and 200 change. Font sizes
    // step along a ladder; sizes off it stay.
    static void apply(Applet *applet, SideMenuBar::Action action, qint32 documentZoom);
    static void showProperties(Applet *applet, SideMenuBar *formatBar);
};
