#pragma once

#include "platform/ime/InputMethodFramework.h"

#include <QSet>

class QDBusArgument;
class QDBusVariant;

// IBus with Mozc, over the connection Qt's own IBus input context keeps.
//
// IBus tells the input mode (Mozc's "InputMode" property: A, あ, ア, _ｱ, Ａ,
// _A) only to clients that ask for properties. Qt's input context does not
// ask, so on the first focus of each of its contexts we add the property
// capability over Qt's connection and let the engine announce its properties
// again (focus out and in). From then on the engine's property updates reach
// us as signals on that connection.
class IBusFramework : public InputMethodFramework
{
    Q_OBJECT

public:
    IBusFramework();

    // Whether Qt's IBus input context is connected to a daemon.
    static bool reachable();
    // The mode for a symbol of Mozc's "InputMode" property.
    static InputMode modeForSymbol(const QString &symbol);

    Kind kind() const override { return IBus; }
    bool connected() const override { return reachable(); }
    QString engineName() const override;
    QString engineDescription() const override;
    // IBus has no call for it: Mozc's own on/off key is pressed.
    void setOpen(bool open) override;
    void updateContentHints(Qt::InputMethodHints hints) override;

private slots:
    void focusChanged();
    void updateProperty(const QDBusVariant &property);
    void registerProperties(const QDBusVariant &properties);

private:
    void listen();
    void readProperty(const QDBusArgument &argument);

    QString m_context; // the focused input context's object path
    QSet<QString> m_upgradedContexts;
    bool m_listening = false;
};
