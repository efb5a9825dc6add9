#pragma once

#include <QObject>
#include <QSet>
#include <QString>

class QDBusArgument;
class QDBusVariant;

// What the system input method is doing for this program, read from IBus.
//
// IBus tells the input mode (Mozc's "InputMode" property: A, あ, ア, _ｱ, Ａ,
// _A) only to clients that ask for properties. Qt's own IBus input context
// does not ask, so on the first focus of each of its contexts we add the
// property capability over Qt's own connection to IBus and let the engine
// announce its properties again (focus out and in). From then on the engine's
// property updates reach us as signals on that connection.
//
// Where no IBus runs (another framework, or none) the status stays 0.
class InputMethodStatus : public QObject
{
    Q_OBJECT

public:
    static InputMethodStatus &instance();

    // The mode as the platform's IME status: 0 when no Japanese mode is on;
    // Mozc's modes on: hiragana 4, full-width katakana 5, half-width
    // katakana 6, full-width alphabet 7, half-width alphabet 8.
    int status() const;
    bool isOpen() const { return status() >= 4 && status() <= 8; }
    // The engine's symbol for its mode ("A", "あ"), empty while unknown.
    QString modeSymbol() const { return m_symbol; }
    static int statusForSymbol(const QString &symbol);

    // Whether this program talks to an IBus daemon.
    bool connected() const;
    // The input method's long name ("Mozc"); empty without one.
    QString engineDescription() const;
    // Its short name ("mozc-jp").
    QString engineName() const;

signals:
    void modeChanged(const QString &symbol);

private slots:
    void focusChanged();
    void updateProperty(const QDBusVariant &property);
    void registerProperties(const QDBusVariant &properties);

private:
    InputMethodStatus();
    void listen();
    void readProperty(const QDBusArgument &argument);
    void setSymbol(const QString &symbol);

    QString m_symbol;
    QSet<QString> m_upgradedContexts;
    bool m_listening = false;
};
