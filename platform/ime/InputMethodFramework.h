#pragma once

#include <QObject>
#include <QString>

#include <memory>

// One input-method framework of the desktop (IBus or Fcitx 5, each with
// Mozc) as this program needs it: which Japanese mode is on, switching the
// input method on and off, its name, and the content hints of the focused
// input context. This base class is the framework of a desktop without one:
// nothing is on and nothing can be switched.
class InputMethodFramework : public QObject
{
    Q_OBJECT

public:
    enum Kind { NoFramework,
                IBus,
                Fcitx5 };
    Q_ENUM(Kind)

    // The modes as the platform's IME status: 0 while no Japanese mode is on.
    enum class InputMode : int {
        Off = 0,
        Hiragana = 4,
        FullKatakana = 5,
        HalfKatakana = 6,
        FullAlphabet = 7,
        HalfAlphabet = 8,
    };
    Q_ENUM(InputMode)

    // Which framework serves a program with this Qt input module
    // (QT_IM_MODULE, or the one Qt loaded), given which frameworks own their
    // names on the session bus. The module Qt talks to wins; without one,
    // Fcitx 5 goes first, as it also answers to IBus's portal name.
    static Kind choose(const QString &imModule, bool fcitxOnBus, bool ibusOnBus);
    // The framework of the running desktop, chosen as above.
    static std::unique_ptr<InputMethodFramework> forThisDesktop();
    static std::unique_ptr<InputMethodFramework> create(Kind kind);

    // The symbol Mozc shows for a mode ("あ", "A" when off).
    static QString symbolFor(InputMode mode);

    explicit InputMethodFramework(QObject *parent = nullptr);

    virtual Kind kind() const { return NoFramework; }
    // Whether the framework runs and this program reaches it.
    virtual bool connected() const { return false; }
    virtual InputMode mode() const { return m_mode; }
    // False until the framework has told the mode of the focused context.
    virtual bool modeKnown() const { return m_modeKnown; }
    // The Japanese engine's short name ("mozc-jp", "mozc") and its long one
    // ("Mozc"); empty without one.
    virtual QString engineName() const { return {}; }
    virtual QString engineDescription() const { return {}; }
    // Switches the input method of the focused context on or off; the mode
    // changes once the framework has done it.
    virtual void setOpen(bool open) { Q_UNUSED(open); }
    // Hands the focused context the hints of its widget again (Qt forwards
    // them itself to some frameworks, not to all).
    virtual void updateContentHints(Qt::InputMethodHints hints) { Q_UNUSED(hints); }

signals:
    void modeChanged(InputMethodFramework::InputMode mode);

protected:
    void setMode(InputMode mode);

private:
    InputMode m_mode = InputMode::Off;
    bool m_modeKnown = false;
};
