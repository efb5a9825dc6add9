#include "platform/keys/KeyNotation.h"
#include "platform/RuntimeLog.h"

#include <QHash>

namespace {

// Where each printable ASCII character lies on a US keyboard (X keycodes of
// the evdev driver). The input method reads mostly the keysym; the keycode
// is filled in as a real keyboard would.
struct KeyPlace
{
    quint32 keycode;
    bool shifted;
};

const QHash<char16_t, KeyPlace> &asciiKeys()
{
    static const QHash<char16_t, KeyPlace> keys = [] {
        QHash<char16_t, KeyPlace> table;
        auto row = [&table](const char *plain, const char *shifted, quint32 firstKeycode) {
            for (quint32 i = 0; plain[i]; ++i) {
                table.insert(char16_t(plain[i]), {firstKeycode + i, false});
                table.insert(char16_t(shifted[i]), {firstKeycode + i, true});
            }
        };
        row("1234567890-=", "!@#$%^&*()_+", 10);
        row("qwertyuiop[]", "QWERTYUIOP{}", 24);
        row("asdfghjkl;'`", "ASDFGHJKL:\"~", 38);
        row("\\", "|", 51);
        row("zxcvbnm,./", "ZXCVBNM<>?", 52);
        table.insert(u' ', {65, false});
        return table;
    }();
    return keys;
}

char16_t shiftedCharacter(char16_t c)
{
    static const QString plain = QStringLiteral("1234567890-=[];'`\\,./");
    static const QString shifted = QStringLiteral("!@#$%^&*()_+{}:\"~|<>?");
    if (c >= u'a' && c <= u'z')
        return c - u'a' + u'A';
    const qsizetype at = plain.indexOf(QChar(c));
    return at < 0 ? c : shifted.at(at).unicode();
}

struct NamedKey
{
    int key;
    quint32 keysym;
    quint32 keycode;
    const char16_t *text;
};

const QHash<QString, NamedKey> &namedKeys()
{
    static const QHash<QString, NamedKey> keys = {
        {QStringLiteral("LEFT"), {Qt::Key_Left, 0xff51, 113, u""}},
        {QStringLiteral("RIGHT"), {Qt::Key_Right, 0xff53, 114, u""}},
        {QStringLiteral("UP"), {Qt::Key_Up, 0xff52, 111, u""}},
        {QStringLiteral("DOWN"), {Qt::Key_Down, 0xff54, 116, u""}},
        {QStringLiteral("HOME"), {Qt::Key_Home, 0xff50, 110, u""}},
        {QStringLiteral("END"), {Qt::Key_End, 0xff57, 115, u""}},
        {QStringLiteral("PGUP"), {Qt::Key_PageUp, 0xff55, 112, u""}},
        {QStringLiteral("PGDN"), {Qt::Key_PageDown, 0xff56, 117, u""}},
        {QStringLiteral("TAB"), {Qt::Key_Tab, 0xff09, 23, u"\t"}},
        {QStringLiteral("ENTER"), {Qt::Key_Return, 0xff0d, 36, u"\r"}},
        {QStringLiteral("ESC"), {Qt::Key_Escape, 0xff1b, 9, u"\x1b"}},
        {QStringLiteral("ESCAPE"), {Qt::Key_Escape, 0xff1b, 9, u"\x1b"}},
        {QStringLiteral("BACKSPACE"), {Qt::Key_Backspace, 0xff08, 22, u"\b"}},
        {QStringLiteral("BS"), {Qt::Key_Backspace, 0xff08, 22, u"\b"}},
        {QStringLiteral("BKSP"), {Qt::Key_Backspace, 0xff08, 22, u"\b"}},
        {QStringLiteral("DEL"), {Qt::Key_Delete, 0xffff, 119, u"\x7f"}},
        {QStringLiteral("DELETE"), {Qt::Key_Delete, 0xffff, 119, u"\x7f"}},
        {QStringLiteral("INS"), {Qt::Key_Insert, 0xff63, 118, u""}},
        {QStringLiteral("INSERT"), {Qt::Key_Insert, 0xff63, 118, u""}},
        {QStringLiteral("CAPSLOCK"), {Qt::Key_CapsLock, 0xffe5, 66, u""}},
        {QStringLiteral("PRTSC"), {Qt::Key_Print, 0xff61, 107, u""}},
        // The Japanese keyboard's own keys, as IBus and Mozc know them:
        // half-width/full-width turns the input method on and off.
        {QStringLiteral("KANJI"), {Qt::Key_Zenkaku_Hankaku, 0xff2a, 49, u""}},
        {QStringLiteral("CONVERT"), {Qt::Key_Henkan, 0xff23, 100, u""}},
        {QStringLiteral("NONCONVERT"), {Qt::Key_Muhenkan, 0xff22, 102, u""}},
        {QStringLiteral("KANA"), {Qt::Key_Hiragana_Katakana, 0xff27, 101, u""}},
        {QStringLiteral("F1"), {Qt::Key_F1, 0xffbe, 67, u""}},
        {QStringLiteral("F2"), {Qt::Key_F2, 0xffbf, 68, u""}},
        {QStringLiteral("F3"), {Qt::Key_F3, 0xffc0, 69, u""}},
        {QStringLiteral("F4"), {Qt::Key_F4, 0xffc1, 70, u""}},
        {QStringLiteral("F5"), {Qt::Key_F5, 0xffc2, 71, u""}},
        {QStringLiteral("F6"), {Qt::Key_F6, 0xffc3, 72, u""}},
        {QStringLiteral("F7"), {Qt::Key_F7, 0xffc4, 73, u""}},
        {QStringLiteral("F8"), {Qt::Key_F8, 0xffc5, 74, u""}},
        {QStringLiteral("F9"), {Qt::Key_F9, 0xffc6, 75, u""}},
        {QStringLiteral("F10"), {Qt::Key_F10, 0xffc7, 76, u""}},
        {QStringLiteral("F11"), {Qt::Key_F11, 0xffc8, 95, u""}},
        {QStringLiteral("F12"), {Qt::Key_F12, 0xffc9, 96, u""}},
    };
    return keys;
}

} // namespace

KeyStroke KeyNotation::character(char32_t c, Qt::KeyboardModifiers modifiers)
{
    KeyStroke stroke;
    stroke.modifiers = modifiers;
    if (c < 0x80) {
        char16_t ascii = char16_t(c);
        if (modifiers & Qt::ShiftModifier)
            ascii = shiftedCharacter(ascii);
        const auto place = asciiKeys().constFind(ascii);
        if (place != asciiKeys().constEnd()) {
            stroke.keycode = place->keycode;
            if (place->shifted)
                stroke.modifiers |= Qt::ShiftModifier;
        }
        stroke.keysym = ascii;
        stroke.key = (ascii >= u'a' && ascii <= u'z') ? int(ascii - u'a' + Qt::Key_A) : int(ascii);
        if (ascii == u' ')
            stroke.key = Qt::Key_Space;
        // Ctrl with a letter types the control character, as on the keyboard.
        if ((modifiers & Qt::ControlModifier) && stroke.key >= Qt::Key_A && stroke.key <= Qt::Key_Z)
            stroke.text = QChar(char16_t(stroke.key - Qt::Key_A + 1));
        else
            stroke.text = QChar(ascii);
        return stroke;
    }
    // No key types this character: it travels as text with a Unicode keysym.
    stroke.keysym = 0x01000000u + quint32(c);
    stroke.keycode = 0;
    stroke.text = QString::fromUcs4(&c, 1);
    const QString upper = stroke.text.toUpper();
    stroke.key = upper.size() == stroke.text.size() ? int(upper.toUcs4().value(0, c)) : int(c);
    return stroke;
}

bool KeyNotation::namedKey(const QString &name, Qt::KeyboardModifiers modifiers, KeyStroke &stroke)
{
    const auto found = namedKeys().constFind(name.toUpper());
    if (found == namedKeys().constEnd())
        return false;
    stroke = KeyStroke{found->key, found->keysym, found->keycode, modifiers,
                       QString::fromUtf16(found->text)};
    // Shift+Tab is the back-tab key, as the keyboard reports it.
    if (found->key == Qt::Key_Tab && (modifiers & Qt::ShiftModifier)) {
        stroke.key = Qt::Key_Backtab;
        stroke.keysym = 0xfe20;
    }
    return true;
}

QList<KeyStroke> KeyNotation::parse(const QString &keys)
{
    QList<KeyStroke> strokes;
    Qt::KeyboardModifiers held = Qt::NoModifier;
    const qsizetype size = keys.size();
    qsizetype i = 0;
    while (i < size) {
        const QChar c = keys.at(i);
        if (c == u'+') {
            held |= Qt::ShiftModifier;
            ++i;
            continue;
        }
        if (c == u'^') {
            held |= Qt::ControlModifier;
            ++i;
            continue;
        }
        if (c == u'~') {
            KeyStroke enter;
            namedKey(QStringLiteral("ENTER"), held, enter);
            strokes.append(enter);
        } else if (c == u'{') {
            // "{x}" is the character x itself, even for "{}}" and "{{}".
            if (i + 2 < size && keys.at(i + 2) == u'}') {
                strokes.append(character(keys.at(i + 1).unicode(), held));
                i += 3;
                held = Qt::NoModifier;
                continue;
            }
            const qsizetype close = keys.indexOf(u'}', i + 1);
            if (close < 0) {
                RuntimeLog::note("KeyNotation", QStringLiteral("unclosed brace in \"%1\"").arg(keys));
                break;
            }
            const QStringList parts = keys.mid(i + 1, close - i - 1).split(u' ', Qt::SkipEmptyParts);
            KeyStroke stroke;
            if (!parts.isEmpty() && namedKey(parts.first(), held, stroke)) {
                bool counted = false;
                const int count = parts.size() > 1 ? parts.at(1).toInt(&counted) : 1;
                for (int n = 0; n < (parts.size() > 1 && counted ? count : 1); ++n)
                    strokes.append(stroke);
            } else {
                RuntimeLog::note("KeyNotation", QStringLiteral("unknown key {%1}").arg(keys.mid(i + 1, close - i - 1)));
            }
            i = close + 1;
            held = Qt::NoModifier;
            continue;
        } else {
            char32_t code = c.unicode();
            if (c.isHighSurrogate() && i + 1 < size && keys.at(i + 1).isLowSurrogate()) {
                code = QChar::surrogateToUcs4(c, keys.at(i + 1));
                ++i;
            }
            strokes.append(character(code, held));
        }
        ++i;
        held = Qt::NoModifier;
    }
    return strokes;
}
