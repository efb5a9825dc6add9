#pragma once

#include <QWidget>

// The floating tool dialog: the character-input pad and the calculator pad.
class InfoDlg : public QWidget
{
    Q_OBJECT

public:
    explicit InfoDlg(QWidget *parent = nullptr);

    void Reload();
    // Opens (Begin) or closes (Finish) a pad: mode 0 the calculator, 1 the
    // character-input pad.
    void Begin(qint16 mode);
    void Finish(qint16 mode);

signals:
    void Status(qint16 first, qint16 second);
    void Quit(qint16 argument);
    void KeyCheck(qint32 &first, qint32 &second, QString &text);
    void HowTo(const QString &topic, const QString &content);
};
