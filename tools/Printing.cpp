#include "tools/Printing.h"

Printing::Printing(QObject *parent)
    : QObject(parent)
{
}
