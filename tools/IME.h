#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QWidget;

// The bridge to the system input method (IBus with Mozc; see
// InputMethodStatus): switches it on and off, presses its own keys for the
// input pad, reads the last conversion and its reading, opens its settings
// tools, and starts or raises other programs. Like the input-method calls it
// stands for, no member reports a failure.
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
        KanjiKey = 2,       // on/off
        ConvertKey = 3,
        NonConvertKey = 4,
        EscapeKey = 5,
        PrintScreenKey = 6,
        ProcessEvents = -1,
    };

    // The framework and engine in use when the object was made ("ibus:mozc-jp"),
    // empty without an input method.
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
    qint32 Convert(qint32 mode);
    QString Read() const;
    void Activate(const QString &path, const QString &title, bool wait);
    void KeyPress(qint32 code, bool wait = false);

    // The platform's IME status: 4 to 8 while a Japanese input mode is on.
    static int IMEStatus();
    // The key string KeyPress sends for a code; empty for none.
    static QString keysFor(qint32 code);
    // The program and arguments that open the input method's tool for a
    // Dialog mode; empty when there is none.
    static QStringList dialogCommand(qint32 mode);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool belongsToWindow(QObject *object) const;

    bool m_detached = false;
    // Mozc keeps no sentence mode of its own: the value set is held here.
    qint32 m_sentenceMode = 8;   // phrase prediction, how Mozc converts
    QString m_reading;           // the kana composed before the last result
    QString m_lastResult;
    QString m_lastReading;
};
