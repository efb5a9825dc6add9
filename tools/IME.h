#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QInputMethodQueryEvent;
class QWidget;

// The bridge to the system input method (IBus or Fcitx 5 with Mozc, as the
// desktop runs; see InputMethodStatus): switches it on and off, presses its
// own keys for the input pad, reads its modes and sets the sentence mode,
// reads the last conversion and its reading, opens its settings tools, and
// starts or raises other programs. Like the input-method calls it stands
// for, no member reports a failure.
class IME : public QObject
{
    Q_OBJECT

public:
    explicit IME(QObject *parent = nullptr);
    ~IME() override;

    // The input method's own keys, as KeyPress codes.
    enum KeyCode : qint32 {
        NoKey = 0,
        KanaKey = 1,
        KanjiKey = 2, // on/off
        ConvertKey = 3,
        NonConvertKey = 4,
        EscapeKey = 5,
        PrintScreenKey = 6,
        ProcessEvents = -1,
    };

    // Sentence modes (bits), as Convert takes and returns them.
    enum SentenceMode : qint32 {
        NoSentenceMode = 0,
        PluralClause = 1,
        SingleConvert = 2,
        Automatic = 4,
        PhrasePredict = 8, // how Mozc converts: the mode it starts in
        Conversation = 16,
        ReadOnly = -1, // Convert only reads
    };

    // Conversion mode bits, read from the input method's mode.
    enum ConversionFlag : qint32 {
        Alphanumeric = 0,
        Native = 1,
        Katakana = 2,
        FullShape = 8,
        Roman = 16,
    };
    Q_DECLARE_FLAGS(ConversionMode, ConversionFlag)

    // Dialog modes: the input method's own tools.
    enum DialogMode : qint32 { SettingsDialog = 1,
                               WordRegistrationDialog = 2,
                               DictionaryDialog = 3 };

    // The framework and engine in use when the object was made
    // ("ibus:mozc-jp", "fcitx5:mozc"), empty without an input method.
    QString Layout;
    // The window the object is attached to.
    QPointer<QWidget> Window;
    // The window's input context: nonzero once a window is attached and an
    // input method serves it. Dissociate keeps it, so Associate can give it back.
    quintptr Context = 0;

    QString Description() const;
    quintptr Handle() const { return Context; }
    void setHandle(QWidget *window);

    void Dialog(qint32 mode, const QString &word = QString(), const QString &reading = QString());
    void Associate();
    void Dissociate();
    bool Enabled() const;
    void setEnabled(bool open);
    // Reads the sentence mode and, unless the argument is ReadOnly, gives
    // the input method the argument as its new one; returns the old one.
    qint32 Convert(qint32 mode);
    // The conversion mode of the input method's current mode.
    ConversionMode conversionMode() const;
    static ConversionMode conversionModeFor(int status);
    QString Read() const;
    void Activate(const QString &path, const QString &title, bool wait);
    void KeyPress(qint32 code, bool wait = false);

    // The platform's IME status: 4 to 8 while a Japanese input mode is on.
    static int IMEStatus();
    // The key string KeyPress sends for a code; empty for none.
    static QString keysFor(qint32 code);
    // The content hints that carry a sentence mode to the input context.
    static Qt::InputMethodHints hintsFor(qint32 sentenceMode);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool belongsToWindow(QObject *object) const;

    void answerHints(QObject *watched, QInputMethodQueryEvent *query);

    bool m_detached = false;
    // The sentence mode given to the input context, as its content hints.
    qint32 m_sentenceMode = PhrasePredict;
    bool m_answeringHints = false;
    QString m_reading; // the kana composed before the last result
    QString m_lastResult;
    QString m_lastReading;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(IME::ConversionMode)
