#include "platform/vb/VbStrConv.h"

namespace {

bool isWordSeparator(QChar c)
{
    switch (c.unicode()) {
    case 0x00: case 0x09: case 0x0A: case 0x0B: case 0x0C: case 0x0D: case 0x20: case 0x3000:
        return true;
    default:
        return false;
    }
}

} // namespace

QString VbStrConv::properCase(const QString &text)
{
    QString result;
    result.reserve(text.size());
    bool atWordStart = true;
    for (const QChar c : text) {
        if (isWordSeparator(c)) {
            result += c;
            atWordStart = true;
            continue;
        }
        result += atWordStart ? c.toUpper() : c.toLower();
        atWordStart = false;
    }
    return result;
}
