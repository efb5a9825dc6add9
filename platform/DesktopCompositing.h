#pragma once

// Whether a compositing manager blends translucent windows over the desktop.
// Without one (a bare X server) the transparent parts of a window show black,
// so windows with soft shapes cut themselves to their shape instead.
class DesktopCompositing
{
public:
    static bool active();
};
