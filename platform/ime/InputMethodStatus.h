#pragma once

#include "platform/ime/InputMethodFramework.h"

#include <QObject>
#include <QString>

#include <memory>

// What the system input method is doing for this program: the process-wide
// front of the desktop's framework (IBus or Fcitx 5, chosen once at first
// use; see InputMethodFramework). Where none runs the status stays 0.
class InputMethodStatus : public QObject
{
    Q_OBJECT

public:
    using InputMode = InputMethodFramework::InputMode;

    static InputMethodStatus &instance();

    // The mode as the platform's IME status: 0 when no Japanese mode is on;
    // Mozc's modes on: hiragana 4, full-width katakana 5, half-width
    // katakana 6, full-width alphabet 7, half-width alphabet 8.
    int status() const { return int(mode()); }
    InputMode mode() const { return m_framework->mode(); }
    bool isOpen() const { return mode() != InputMode::Off; }
    // Mozc's symbol for the mode ("A", "あ"), empty while unknown.
    QString modeSymbol() const;

    InputMethodFramework &framework() const { return *m_framework; }
    InputMethodFramework::Kind kind() const { return m_framework->kind(); }
    // Whether this program talks to a framework.
    bool connected() const { return m_framework->connected(); }
    // The input method's long name ("Mozc"); empty without one.
    QString engineDescription() const { return m_framework->engineDescription(); }
    // Its short name ("mozc-jp" under IBus, "mozc" under Fcitx 5).
    QString engineName() const { return m_framework->engineName(); }

signals:
    void modeChanged(InputMethodFramework::InputMode mode);

private:
    InputMethodStatus();

    std::unique_ptr<InputMethodFramework> m_framework;
};
