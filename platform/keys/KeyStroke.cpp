#include "platform/keys/KeyStroke.h"

quint32 KeyStroke::nativeModifiers() const
{
    quint32 state = 0;
    if (modifiers & Qt::ShiftModifier)
        state |= 1;
    if (modifiers & Qt::ControlModifier)
        state |= 4;
    return state;
}
