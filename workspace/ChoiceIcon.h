#pragma once

#include <QPixmap>

// Small drawn pictures for the settings box's changing-background buttons
// (106-110), so each choice can be told apart at a glance: a die for random,
// the four seasons, a week's calendar, a day's page, a computer screen.
class ChoiceIcon
{
public:
    // The picture for button `index`, `side` pixels square; a null pixmap for
    // any other button.
    static QPixmap draw(int index, int side);
};
