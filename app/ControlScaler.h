#pragma once

#include <QtGlobal>

class QWidget;

// Fits a window, a user control or a single control to a percentage of its
// designed size: position, size and font size of the object and of every
// control on it are multiplied by percent / 100. Controls whose size follows
// their contents keep doing so, because the layout that sizes them is left in
// charge. The percentage 0 asks for the default for this screen; Qt already
// draws in device-independent pixels, so that default is 100.
class ControlScaler
{
public:
    static QWidget *scale(QWidget *object, qint16 percent);
    static qint16 defaultPercent();
};
