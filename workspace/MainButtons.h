#pragma once

#include <QList>

class QWidget;
class TouchButton;

// The workspace's main buttons, Channels 0-9, with their captions and tips;
// each carries its index.
class MainButtons
{
public:
    static QList<TouchButton *> build(QWidget *parent);
};
