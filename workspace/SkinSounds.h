#pragma once

#include <QList>
#include <QString>

class QObject;
class QWidget;

// The skin's sounds for the touch controls, all in the folder "SKIN" beside
// the program: each control is given its file by the name of its control
// array, and a button asks before it sounds whether music is on.
class SkinSounds
{
public:
    static QString folder();
    // A control array's name: the object name without its index.
    static QString arrayName(const QObject *control);

    // The suppress flag a button's sound query answers: box and side-bar
    // buttons and the main buttons are silent while music is off; the music
    // button (main button 5) is the other way round, so that it sounds as
    // music is switched on.
    static qint16 suppressFor(const QString &arrayName, int index);
    // Every button under root asks suppressFor before it sounds.
    static void answerSoundQueries(QWidget *root);

    // Gives every touch control under the roots its sound file; the music
    // panel gets its tune and plays while music is on.
    static void assign(QList<QWidget *> roots);
    // The same for every window of the program, `main` among them.
    static void assignEverywhere(QWidget *main);
};
